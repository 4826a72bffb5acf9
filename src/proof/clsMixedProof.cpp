#include "clsMixedProof.h"

#include <utility>

#include "modText.h"

namespace quillon {

namespace {

std::vector<TidyColumnInfo> ColumnsOf(const CutTable& cut) {
  std::vector<TidyColumnInfo> columns;
  for (size_t i = 0; i < cut.places.size(); ++i) {
    TidyColumnInfo& column = columns.emplace_back();
    column.column = i;
    column.sName = i < cut.names.size() ? cut.names[i] : "";
    column.nStart = cut.places[i].nStart;
    column.nEnd = cut.places[i].nEnd;
  }
  return columns;
}

std::vector<TidyTable> AllTables(const std::vector<TidyTable>& tidy, const std::vector<CutTable>& cuts) {
  std::vector<TidyTable> tables = tidy;
  for (const CutTable& cut : cuts) tables.emplace_back().lNumber = cut.lNumber;
  return tables;
}

}  // namespace

clsMixedProof::clsMixedProof(const std::vector<TidyTable>& tidy, std::vector<CutTable> cuts,
                             clsPrintedTotals::Limits limits, clsLineFollower* pFollower)
    : cuts_(std::move(cuts)),
      nTidy_(tidy.size()),
      tables_(AllTables(tidy, cuts_)),
      pFollower_(pFollower),
      proof_(tables_, limits) {
  for (const CutTable& cut : cuts_) {
    std::vector<ProofColumn> columns;
    for (const TidyPlace& place : cut.places) columns.push_back({"", place.nStart, place.nEnd, false, {}});
    profiles_.emplace_back(std::move(columns));
  }
}

bool clsMixedProof::CutOf(int64_t lLine, size_t& nCut) const {
  for (nCut = 0; nCut < cuts_.size(); ++nCut) {
    if (lLine >= cuts_[nCut].lFirstLine && lLine <= cuts_[nCut].lLastLine) return true;
  }
  return false;
}

void clsMixedProof::Learn(int64_t lLine, std::string_view sLine) {
  size_t nCut = 0;
  if (!TrimBlanks(sLine).empty() && CutOf(lLine, nCut)) profiles_[nCut].Row(sLine);
}

void clsMixedProof::LearnedAll() {
  for (size_t i = 0; i < cuts_.size(); ++i) proof_.TableStarts(nTidy_ + i, ColumnsOf(cuts_[i]));
}

void clsMixedProof::TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) {
  proof_.TableStarts(nTable, columns);
}

void clsMixedProof::HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) {
  proof_.HeadingChanges(nTable, nHeading, lLine);
}

void clsMixedProof::CutRow(size_t nCut, int64_t lLine, std::string_view sLine) {
  if (!profiles_[nCut].LooksLikeRow(sLine)) return proof_.MayBeTotal(lLine, sLine);
  record_.nTable = nTidy_ + nCut;
  record_.lLine = lLine;
  record_.cells.clear();
  for (const TidyPlace& place : cuts_[nCut].places) {
    const std::string_view sCell = TrimBlanks(MidChars(sLine, place.nStart, place.nEnd - place.nStart + 1));
    record_.cells.push_back({sCell.empty() ? TidyCellKind::Empty : TidyCellKind::Text, sCell, sCell});
  }
  proof_.Row(record_);
}

void clsMixedProof::Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) {
  size_t nCut = 0;
  const bool bFree = kind == TidyLineKind::Outside || kind == TidyLineKind::LeftOut;
  if (bFree && CutOf(lLine, nCut)) {
    CutRow(nCut, lLine, sLine);
    kind = TidyLineKind::Row;
    nTable = nTidy_ + nCut;
  }
  proof_.Line(lLine, sLine, kind, nTable);
  if (pFollower_ != nullptr) pFollower_->Line(lLine, sLine, kind, nTable);
}

void clsMixedProof::Line(int64_t lLine, std::string_view sLine) {
  const bool bBlank = TrimBlanks(sLine).empty();
  Line(lLine, sLine, bBlank ? TidyLineKind::Blank : TidyLineKind::Outside, 0);
}

}  // namespace quillon
