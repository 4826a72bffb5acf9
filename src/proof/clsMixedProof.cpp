#include "clsMixedProof.h"

#include <algorithm>
#include <set>
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
      stretches_(StretchesOf(cuts_)),
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

/// Nothing but blanks, and form feeds in front.
bool clsMixedProof::IsBlank(std::string_view sLine) {
  sLine.remove_prefix(std::min(sLine.find_first_not_of('\f'), sLine.size()));
  return TrimBlanks(sLine).empty();
}

std::vector<clsMixedProof::Stretch> clsMixedProof::StretchesOf(const std::vector<CutTable>& cuts) {
  struct Edge {
    int64_t lLine;
    size_t nCut;
    bool bBegins;
  };
  std::vector<Edge> edges;
  for (size_t i = 0; i < cuts.size(); ++i) {
    if (cuts[i].lFirstLine < 1 || cuts[i].lLastLine < cuts[i].lFirstLine) continue;
    edges.push_back({cuts[i].lFirstLine, i, true});
    edges.push_back({cuts[i].lLastLine + 1, i, false});
  }
  std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.lLine < b.lLine; });
  std::vector<Stretch> stretches;
  std::set<size_t> taking;
  int64_t lFrom = 0;
  for (const Edge& edge : edges) {
    if (!taking.empty() && edge.lLine > lFrom) stretches.push_back({lFrom, edge.lLine - 1, *taking.begin()});
    lFrom = edge.lLine;
    if (edge.bBegins) {
      taking.insert(edge.nCut);
    } else {
      taking.erase(edge.nCut);
    }
  }
  return stretches;
}

bool clsMixedProof::CutOf(int64_t lLine, size_t& nCut) const {
  const auto stretch = std::lower_bound(stretches_.begin(), stretches_.end(), lLine,
                                        [](const Stretch& each, int64_t lAt) { return each.lLast < lAt; });
  if (stretch == stretches_.end() || stretch->lFirst > lLine) return false;
  nCut = stretch->nCut;
  return true;
}

void clsMixedProof::Learn(int64_t lLine, std::string_view sLine) {
  size_t nCut = 0;
  if (!IsBlank(sLine) && CutOf(lLine, nCut)) profiles_[nCut].Row(sLine);
}

void clsMixedProof::LearnedAll() {
  for (size_t i = 0; i < cuts_.size(); ++i) {
    proof_.TableStarts(nTidy_ + i, ColumnsOf(cuts_[i]));
    if (cuts_[i].lFirstLine < 1) continue;
    proof_.StretchStarts(nTidy_ + i, cuts_[i].lFirstLine);
    proof_.StretchEnds(nTidy_ + i, cuts_[i].lLastLine);
  }
}

void clsMixedProof::TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) {
  proof_.TableStarts(nTable, columns);
}

void clsMixedProof::HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) {
  proof_.HeadingChanges(nTable, nHeading, lLine);
}

void clsMixedProof::CutRow(size_t nCut, int64_t lLine, std::string_view sLine) {
  // A total lacks what tells one row from another.
  const bool bRow = profiles_[nCut].IsLikeRow(sLine) ||
                    (profiles_[nCut].LooksLikeRow(sLine) && !proof_.IsOfSums(nTidy_ + nCut, lLine, sLine));
  if (!bRow) return proof_.MayBeTotal(lLine, sLine);
  record_.nTable = nTidy_ + nCut;
  record_.lLine = lLine;
  record_.cells.clear();
  const bool bAscii = IsAscii(sLine);
  for (const TidyPlace& place : cuts_[nCut].places) {
    const auto nFrom = static_cast<size_t>(place.nStart - 1);
    const int64_t lCount = place.nEnd - place.nStart + 1;
    const std::string_view sPiece = !bAscii ? MidChars(sLine, place.nStart, lCount)
                                    : nFrom < sLine.size() && lCount > 0
                                        ? sLine.substr(nFrom, static_cast<size_t>(lCount))
                                        : std::string_view();
    const std::string_view sCell = TrimBlanks(sPiece);
    record_.cells.push_back({sCell.empty() ? TidyCellKind::Empty : TidyCellKind::Text, sCell, sCell, {}});
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
  Line(lLine, sLine, IsBlank(sLine) ? TidyLineKind::Blank : TidyLineKind::Outside, 0);
}

}  // namespace quillon
