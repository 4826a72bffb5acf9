#include "clsTidyLook.h"

#include <algorithm>

#include "clsLineReader.h"
#include "clsRecipeCut.h"
#include "clsTidyLines.h"
#include "modColumnLetters.h"
#include "modCutPicture.h"
#include "modProofList.h"
#include "modText.h"
#include "modTidyTablesOf.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// In the order of the report, as the drawing wants them; neighbours that overlap show the first one whole.
std::vector<CutField> FieldsOf(const TidyCut& cut, int32_t lOpenEnd) {
  std::vector<CutField> fields;
  if (cut.places.empty()) return fields;
  for (const TidyPlace& place : cut.places.front()) {
    fields.push_back({place.nStart, place.nEnd > 0 ? place.nEnd : std::max(lOpenEnd, place.nStart)});
  }
  std::sort(fields.begin(), fields.end(), [](const CutField& a, const CutField& b) { return a.lStart < b.lStart; });
  int32_t lDone = 0;
  std::erase_if(fields, [&](const CutField& field) {
    const bool bUnder = field.lStart <= lDone;
    if (!bUnder) lDone = field.lEnd;
    return bUnder;
  });
  return fields;
}

/// The column of a level has no section of its own.
PointedColumn PointedOf(const TidyColumnInfo& column) {
  switch (column.source) {
    case TidySource::Heading:
      return {ColumnSource::Heading, column.nPart, column.column};
    case TidySource::Further:
      return {ColumnSource::Further, column.nPart, column.column};
    case TidySource::Level:
      return {ColumnSource::Row, 0, kNoTidyColumn};
    default:
      return {ColumnSource::Row, 0, column.column};
  }
}

}  // namespace

clsTidyLook::clsTidyLook(const PreviewRequest& request, clsSectionFile& recipe) : request_(request), recipe_(recipe) {}

bool clsTidyLook::ReadTables() {
  if (!ReadTidyTablesOf(request_, recipe_, tables_, sFault_)) return false;
  for (size_t i = 0; i < tables_.size(); ++i) {
    if (tables_[i].lNumber <= request_.lTable) nCurrent_ = i;
  }
  return true;
}

bool clsTidyLook::Look(CutPicture& picture) {
  if (!ReadTables()) return false;
  if (!sFault_.empty()) picture.notes.push_back({sFault_, true});
  if (!sFault_.empty() || tables_.empty()) {
    DrawStretches(ReadStretches(request_, {{1, clsRecipeCut::kLines}}, clsRecipeCut::kCharacters), picture);
    return true;
  }
  ReadReport(picture);
  return true;
}

void clsTidyLook::ReadReport(CutPicture& picture) {
  clsLineReader reader;
  Failure failure;
  // Every line is looked at in all its cells, which a key press waits for: less of the report than key texts need.
  constexpr int64_t kShare = 8;
  TextFileOptions text = request_.text;
  text.lMostBytes /= kShare;
  if (!reader.Open(request_.sInput, text, failure)) {
    picture.sFault = failure.sText;
    return;
  }
  clsTidyReport report(tables_, *this);
  clsTidyLines lines(reader, request_.lTabSize);
  for (std::string_view sLine; lines.Next(sLine);) report.Line(sLine);
  report.End();
  std::vector<LineRange> ranges{{1, clsRecipeCut::kLines}};
  constexpr int64_t kAbove = 8;
  if (lFirstRow_ > clsRecipeCut::kLines) {
    ranges.push_back({std::max(ranges[0].lLast + 1, lFirstRow_ - kAbove), lFirstRow_ + clsRecipeCut::kLines});
  }
  if (!DrawStretches(ReadStretches(request_, ranges, clsRecipeCut::kCharacters), picture)) return;
  picture.bSearchedShort = reader.IsCutShort();
  DrawTables(picture);
  NoteKinds(report, picture);
}

void clsTidyLook::DrawTables(CutPicture& picture) const {
  size_t nWidest = 1;
  for (const CutLine& line : picture.lines) nWidest = std::max(nWidest, CharCount(line.sText));
  for (const TidyTable& table : tables_) {
    DrawnTable& drawn = picture.tables.emplace_back();
    drawn.lNumber = table.lNumber;
    drawn.fields = FieldsOf(table.row.cut, static_cast<int32_t>(nWidest));
    const std::vector<std::string> names = table.row.ColumnNames();
    for (size_t i = 0; i < drawn.fields.size(); ++i) {
      const bool bNamed = i < names.size() && !names[i].empty() && names[i] != "^";
      drawn.letters.push_back(bNamed ? names[i] : ColumnLetters(static_cast<int>(i) + 1));
    }
  }
  for (const SeenLine& seen : seen_) picture.kinds.push_back(CutKindOf(seen.kind));
  for (CutLine& line : picture.lines) {
    if (line.lLine > static_cast<int64_t>(seen_.size())) continue;
    const SeenLine& seen = seen_[static_cast<size_t>(line.lLine) - 1];
    line.kind = CutKindOf(seen.kind);
    if (line.kind == CutKind::Row) line.nTable = static_cast<int>(seen.nTable);
  }
  picture.bTidy = true;
  picture.nShown = static_cast<int>(nCurrent_);
  picture.rules = {.bGaps = true, .bEmpty = false, .lNarrowest = 1};
  if (CanMoveColumns(tables_[nCurrent_])) picture.nCurrent = picture.nShown;
  picture.columns = columns_;
  picture.numbers = numbers_;
  picture.titles = titles_;
  picture.cells = records_;
}

void clsTidyLook::NoteKinds(const clsTidyReport& report, CutPicture& picture) const {
  const TidyTableState& state = report.State(nCurrent_);
  const auto counted = [](const std::string& sWhat, int64_t lCount) { return sWhat + " " + std::to_string(lCount); };
  std::string sRecords =
      counted(Translate("Table"), tables_[nCurrent_].lNumber) + ": " + counted(Translate("Records:"), state.lRecords);
  if (picture.bSearchedShort) {
    sRecords += "; " + counted(Translate("counted up to line"), static_cast<int64_t>(seen_.size())) + ", " +
                Translate("the proof counts all");
  }
  picture.notes.push_back({std::move(sRecords), state.lRecords == 0});
  std::string sKinds;
  for (const std::string& sText : KindTexts([&](TidyLineKind kind) { return report.Lines(kind); }))
    sKinds += (sKinds.empty() ? "" : ";  ") + sText;
  picture.notes.push_back({sKinds, false});
  if (state.lMisfits > 0) {
    picture.notes.push_back({counted(Translate("Cells that are not of their column's kind:"), state.lMisfits) + "; " +
                                 counted(Translate("First on line:"), state.lMisfitLine),
                             true});
  }
}

void clsTidyLook::TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) {
  if (nTable != nCurrent_) return;
  for (size_t i = 0; i < columns.size(); ++i) {
    columns_.push_back(PointedOf(columns[i]));
    numbers_.push_back(columns[i].typing.type == TidyType::Number);
    const std::string& sName = columns[i].sName;
    titles_.push_back(sName.empty() || sName == "^" ? ColumnLetters(static_cast<int>(i) + 1) : sName);
  }
}

void clsTidyLook::Record(const TidyRecord& record) {
  if (record.nTable != nCurrent_) return;
  if (lFirstRow_ == 0) lFirstRow_ = record.lLine;
  if (records_.size() >= static_cast<size_t>(clsRecipeCut::kLines)) return;
  PreviewRow& row = records_.emplace_back();
  row.lLine = record.lLine;
  for (const TidyCell& cell : record.cells) row.cells.emplace_back(cell.sPrinted);
}

void clsTidyLook::Line(int64_t, std::string_view, TidyLineKind kind, size_t nTable) {
  seen_.push_back({kind, nTable});
}

}  // namespace quillon
