#include "clsSheetMerger.h"

#include <algorithm>

#include "modXmlReading.h"

namespace quillon {

namespace {

constexpr std::string_view kValue = "<v>", kValueEnd = "</v>";

}  // namespace

void StringUse::Note(std::vector<bool>& strings, std::string_view sIndex) {
  constexpr uint32_t kMostStrings = 1U << 28;
  const auto nIndex = ParseIndex(sIndex);
  if (!nIndex || *nIndex >= kMostStrings) return;
  if (strings.size() <= *nIndex) strings.resize(std::max(size_t{*nIndex} + 1, strings.size() * 2));
  strings[*nIndex] = true;
}

bool SheetEdit::Cleared(int64_t nRow, int nColumn) const {
  return std::any_of(cleared.begin(), cleared.end(),
                     [&](const CellRange& range) { return Contains(range, nRow, nColumn); });
}

clsSheetMerger::clsSheetMerger(clsXmlScanner& scanner, SheetEdit& edit, const SheetFacts& facts, clsCellWriter& writer,
                               const FormulaRenames& renames, ByteSink sink)
    : scanner_(scanner),
      edit_(edit),
      facts_(facts),
      writer_(writer),
      renames_(renames),
      copier_(scanner, renames, std::move(sink)),
      widths_(edit.typing.Widths(), edit.bWidthsAnew) {
  for (const auto& [nIndex, formula] : facts.shared) {
    std::string_view sIgnored;
    const auto [nRow, nColumn] = formula.master;
    shared_[nIndex] = {formula, edit_.Cleared(nRow, nColumn) || edit_.cells.Read(nRow, nColumn, sIgnored)};
  }
}

bool clsSheetMerger::Run() {
  edit_.typing.Decide();
  while (scanner_.Next() != XmlToken::End)
    if (scanner_.Token() == XmlToken::Failed || !MergeToken()) return false;
  copier_.Flush();
  return true;
}

bool clsSheetMerger::MergeToken() {
  switch (cursor_.Look(scanner_)) {
    case clsSheetCursor::Event::Damaged:
      return false;
    case clsSheetCursor::Event::SheetData:
      BeginSheetData();
      return true;
    case clsSheetCursor::Event::SheetDataEnd:
      PutRowsBefore(kMaxSheetRows + 1);
      copier_.CopyToken();
      return true;
    case clsSheetCursor::Event::Row:
      BeginRow();
      return true;
    case clsSheetCursor::Event::RowEnd:
      EndRow();
      return true;
    case clsSheetCursor::Event::Cell:
      return MergeCell();
    default:
      return MergeOther();
  }
}

bool clsSheetMerger::MergeOther() {
  if (scanner_.IsOpening() && scanner_.Depth() == 2 && scanner_.IsMain("dimension")) return MergeDimension(), true;
  if (scanner_.IsOpening() && scanner_.Depth() == 2 && !widths_.Empty() && scanner_.IsMain("cols")) {
    std::string sColumns;
    bWidthsDone_ = true;
    if (!widths_.Rewrite(scanner_, sColumns)) return false;
    copier_.Put(sColumns);
    return true;
  }
  if (scanner_.IsOpening() && scanner_.Depth() == 2 && edit_.filter && scanner_.IsMain("autoFilter"))
    return copier_.Put(WithAttribute(scanner_.Raw(), "ref", CellRangeText(*edit_.filter))), true;
  if (scanner_.IsOpening() && scanner_.Depth() == 3 && edit_.bSelected && scanner_.IsMain("sheetView"))
    return MergeView(), true;
  // What else a row holds stands behind its cells.
  if (scanner_.IsOpening() && scanner_.Depth() == 4 && cursor_.InSheetData()) PutCellsBefore(kMaxSheetColumns + 1);
  copier_.CopyToken();
  return true;
}

void clsSheetMerger::MergeDimension() {
  auto range = ParseCellRange(scanner_.Attribute("ref").value_or(""));
  if (!range || edit_.cells.Empty()) return copier_.CopyToken();
  Include(*range, edit_.cells.Range());
  copier_.Put(WithAttribute(scanner_.Raw(), "ref", CellRangeText(*range)));
}

void clsSheetMerger::MergeView() {
  copier_.Put(*edit_.bSelected ? WithAttribute(scanner_.Raw(), "tabSelected", "1")
                               : WithoutAttribute(scanner_.Raw(), "tabSelected"));
}

void clsSheetMerger::PutElementEnd(std::string_view sName) {
  copier_.Put("</");
  copier_.Put(sPrefix_);
  copier_.Put(sName);
  copier_.Put(">");
}

void clsSheetMerger::BeginSheetData() {
  sPrefix_ = scanner_.Prefix();
  if (!sPrefix_.empty()) sPrefix_ += ':';
  if (!bWidthsDone_) copier_.Put(widths_.NewList(sPrefix_));
  if (scanner_.Token() == XmlToken::StartTag || edit_.cells.Empty()) return copier_.CopyToken();
  copier_.Put(AsStartTag(scanner_.Raw()));
  PutRowsBefore(kMaxSheetRows + 1);
  PutElementEnd("sheetData");
}

/// Whole rows that the sheet doesn't have yet.
void clsSheetMerger::PutRowsBefore(int64_t nRow) {
  const int64_t nEnd = std::min(nRow, edit_.cells.LastRow() + 1);
  nRowStyle_.reset();
  for (nNextRow_ = std::max(nNextRow_, edit_.cells.Range().nTop); nNextRow_ < nEnd; ++nNextRow_) {
    edit_.cells.Row(nNextRow_, cells_);
    if (std::all_of(cells_.begin(), cells_.end(),
                    [&](const StoredCell& cell) { return writer_.LeavesEmpty(cell.sText); }))
      continue;
    nRow_ = nNextRow_;
    copier_.Put("<");
    copier_.Put(sPrefix_);
    copier_.Put("row r=\"");
    copier_.Put(std::to_string(nRow_));
    copier_.Put("\">");
    nNextCell_ = 0;
    PutCellsBefore(kMaxSheetColumns + 1);
    PutElementEnd("row");
    bRowsAdded_ = true;
  }
  nNextRow_ = std::max(nNextRow_, nRow);
}

void clsSheetMerger::BeginRow() {
  PutRowsBefore(cursor_.Row());
  nRow_ = cursor_.Row();
  nNextRow_ = nRow_ + 1;
  bCellsMoved_ = false;
  nNextCell_ = 0;
  cells_.clear();
  if (!edit_.cells.Empty() && nRow_ <= edit_.cells.LastRow()) edit_.cells.Row(nRow_, cells_);
  const std::string_view sCustom = scanner_.Attribute("customFormat").value_or("0");
  if (sCustom == "1" || sCustom == "true") nRowStyle_ = ParseIndex(scanner_.Attribute("s").value_or("0"));
  std::string sTag;
  if (!cells_.empty()) sTag = WithoutAttribute(scanner_.Raw(), "spans");
  if (bRowsAdded_ && !scanner_.Attribute("r"))
    sTag = WithAttribute(sTag.empty() ? scanner_.Raw() : sTag, "r", std::to_string(nRow_));
  if (sTag.empty()) sTag = scanner_.Raw();
  if (scanner_.Token() == XmlToken::StartTag || cells_.empty()) return copier_.Put(sTag);
  copier_.Put(AsStartTag(sTag));
  PutCellsBefore(kMaxSheetColumns + 1);
  PutElementEnd("row");
}

void clsSheetMerger::EndRow() {
  PutCellsBefore(kMaxSheetColumns + 1);
  copier_.CopyToken();
}

uint32_t clsSheetMerger::StyleOf(int nColumn, uint32_t nStyle) const {
  if (edit_.styles.empty()) return nStyle;
  const auto found = edit_.styles.find(nRow_ * kMaxSheetColumns + nColumn);
  return found == edit_.styles.end() ? nStyle : found->second;
}

uint32_t clsSheetMerger::InheritedStyle(int nColumn) const {
  return nRowStyle_ ? *nRowStyle_ : facts_.StyleOfColumn(nColumn);
}

/// Written cells that the row doesn't have yet.
void clsSheetMerger::PutCellsBefore(int nColumn) {
  for (; nNextCell_ < cells_.size() && cells_[nNextCell_].nColumn < nColumn; ++nNextCell_) {
    const StoredCell& cell = cells_[nNextCell_];
    if (writer_.LeavesEmpty(cell.sText)) continue;
    PutCell(cell, StyleOf(cell.nColumn, InheritedStyle(cell.nColumn)), {});
    bCellsMoved_ = true;
  }
}

/// False if the cell has no formula of our making.
bool clsSheetMerger::PutFormula(uint32_t nStyle, int nColumn) {
  const auto found = edit_.formulas.find(nRow_ * kMaxSheetColumns + nColumn);
  if (found == edit_.formulas.end()) return false;
  sPiece_.clear();
  clsCellWriter::AppendFormula({nRow_, nColumn, nStyle, sPrefix_, {}}, found->second, sPiece_);
  copier_.Put(sPiece_);
  return true;
}

void clsSheetMerger::PutCell(const StoredCell& cell, uint32_t nStyle, std::string_view sChildren, bool bValueDecides) {
  if (!edit_.formulas.empty() && PutFormula(nStyle, cell.nColumn)) return;
  const bool bStaysText = !edit_.textCells.empty() && edit_.textCells.contains(nRow_ * kMaxSheetColumns + cell.nColumn);
  sPiece_.clear();
  writer_.Append({nRow_, cell.nColumn, nStyle, sPrefix_, sChildren, bValueDecides}, cell.sText, bStaysText,
                 edit_.typing.RuleOf(nRow_, cell.nColumn), sPiece_);
  copier_.Put(sPiece_);
}

bool clsSheetMerger::MergeCell() {
  const int nColumn = cursor_.Column();
  PutCellsBefore(nColumn);
  if (nNextCell_ < cells_.size() && cells_[nNextCell_].nColumn == nColumn) return ReplaceCell(&cells_[nNextCell_++]);
  if (edit_.Cleared(nRow_, nColumn)) return ReplaceCell(nullptr);
  return CopyCell(scanner_.Attribute("r").has_value());
}

bool clsSheetMerger::ReplaceCell(const StoredCell* pCell) {
  const int nColumn = cursor_.Column();
  const uint32_t nStyle = StyleOf(nColumn, cursor_.Style());
  std::string sKept;
  if (!ReadCellChildren(sKept)) return false;
  bCellsMoved_ = true;
  if (pCell != nullptr && !writer_.LeavesEmpty(pCell->sText)) {
    // The format of a value that was cleared is no user's choice, unless he has it in the whole column.
    const bool bValueDecides =
        edit_.Cleared(nRow_, nColumn) && !writer_.SameCode(nStyle, facts_.StyleOfColumn(nColumn));
    PutCell(*pCell, nStyle, sKept, bValueDecides);
  } else if (nStyle != 0 || InheritedStyle(nColumn) != 0 || !sKept.empty()) {
    sPiece_.clear();
    clsCellWriter::AppendEmpty({nRow_, nColumn, nStyle, sPrefix_, sKept}, sPiece_);
    copier_.Put(sPiece_);
  }
  return true;
}

/// Passes over the cell's formula and value and keeps its other children.
bool clsSheetMerger::ReadCellChildren(std::string& sKept) {
  const int nDepth = scanner_.Depth();
  const bool bShared = edit_.pStrings != nullptr && scanner_.Attribute("t") == "s";
  if (const auto sPlain = scanner_.TakePlainValue()) {
    if (bShared) StringUse::Note(edit_.pStrings->dropped, *sPlain);
    return true;
  }
  bool bKeep = false;
  std::string sIndex;
  while (scanner_.Token() != XmlToken::EmptyTag || scanner_.Depth() != nDepth) {
    if (scanner_.Next() == XmlToken::Failed) return false;
    if (scanner_.Token() == XmlToken::EndTag && scanner_.Depth() == nDepth) break;
    if (scanner_.IsOpening() && scanner_.Depth() == nDepth + 1) {
      bKeep = !scanner_.IsMain("f") && !scanner_.IsMain("v") && !scanner_.IsMain("is");
      if (scanner_.IsMain("f") && scanner_.Attribute("t") == "shared" && scanner_.Attribute("ref") &&
          !TakeSharedFormula(true))
        return false;
    }
    if (bShared && scanner_.Token() == XmlToken::Text && scanner_.Parent() == "v") scanner_.AppendText(sIndex);
    if (bKeep) sKept += scanner_.Raw();
    if (scanner_.Token() == XmlToken::EndTag && scanner_.Depth() == nDepth + 1) bKeep = false;
  }
  if (bShared) StringUse::Note(edit_.pStrings->dropped, sIndex);
  return true;
}

/// From the formula's tag: notes the cell as the first of those that share it. A formula of a cell that stays is
/// copied.
bool clsSheetMerger::TakeSharedFormula(bool bGone) {
  const auto nIndex = ParseIndex(scanner_.Attribute("si").value_or(""));
  const auto range = ParseCellRange(scanner_.Attribute("ref").value_or(""));
  const int nDepth = scanner_.Depth();
  SharedState shared{{{}, {cursor_.Row(), cursor_.Column()}, range.value_or(CellRange())}, bGone};
  if (!bGone) copier_.CopyToken();
  while (scanner_.Token() != XmlToken::EmptyTag || scanner_.Depth() != nDepth) {
    if (scanner_.Next() == XmlToken::Failed) return false;
    if (!bGone) copier_.CopyToken();
    if (scanner_.Token() == XmlToken::Text) scanner_.AppendText(shared.formula.sFormula);
    if (scanner_.Token() == XmlToken::EndTag && scanner_.Depth() == nDepth) break;
  }
  if (nIndex && range) shared_.insert_or_assign(*nIndex, std::move(shared));
  return true;
}

/// From the formula's tag: makes the cell the first of those that share the formula.
bool clsSheetMerger::TakeOver(SharedState& shared) {
  const auto [nRow, nColumn] = shared.formula.master;
  const CellPlace here{cursor_.Row(), cursor_.Column()};
  shared.formula.sFormula = ShiftedFormula(shared.formula.sFormula, here.nRow - nRow, here.nColumn - nColumn);
  shared.formula.master = here;
  shared.bOrphaned = false;
  CellRange& range = shared.formula.range;
  Include(range, {here.nRow, here.nColumn, here.nRow, here.nColumn});
  range.nTop = here.nRow;
  copier_.Put(WithAttribute(AsStartTag(scanner_.Raw()), "ref", CellRangeText(range)));
  sPiece_.clear();
  AppendEscaped(RenamedFormula(shared.formula.sFormula, renames_), sPiece_);
  copier_.Put(sPiece_);
  PutElementEnd("f");
  return scanner_.SkipElement();
}

bool clsSheetMerger::CopyCell(bool bNumbered) {
  const int nDepth = scanner_.Depth();
  const bool bEmpty = scanner_.Token() == XmlToken::EmptyTag;
  const bool bShared = edit_.pStrings != nullptr && scanner_.Attribute("t") == "s";
  std::string sTag(scanner_.Raw()), sIndex;
  if (!bNumbered && bCellsMoved_)
    sTag = WithAttribute(sTag, "r", CellRangeText({nRow_, cursor_.Column(), nRow_, cursor_.Column()}));
  if (const auto sPlain = scanner_.TakePlainValue()) {
    if (bShared) StringUse::Note(edit_.pStrings->kept, *sPlain);
    for (const std::string_view sPiece : {std::string_view(sTag), kValue, *sPlain, kValueEnd, scanner_.Raw()})
      copier_.Put(sPiece);
    return true;
  }
  bool bFormula = false;
  std::string sLead;
  const auto PutTag = [&] {
    copier_.Put(sTag);
    copier_.Put(sLead);
    sTag.clear();
    sLead.clear();
  };
  // The start tag waits for the cell's first element: a result that goes takes its type with it.
  while (!bEmpty) {
    if (scanner_.Next() == XmlToken::Failed) return false;
    const bool bChild = scanner_.IsOpening() && scanner_.Depth() == nDepth + 1;
    if (bChild && scanner_.IsMain("f")) {
      bFormula = true;
      if (edit_.bDropResults && !sTag.empty()) sTag = WithoutAttribute(sTag, "t");
      PutTag();
      if (!CopyFormula()) return false;
      continue;
    }
    if (bChild && bFormula && edit_.bDropResults && scanner_.IsMain("v")) {
      if (!scanner_.SkipElement()) return false;
      continue;
    }
    if (!sTag.empty() && scanner_.Token() == XmlToken::Text) {
      sLead += scanner_.Raw();
      continue;
    }
    PutTag();
    copier_.CopyToken();
    if (bShared && scanner_.Token() == XmlToken::Text && scanner_.Parent() == "v") scanner_.AppendText(sIndex);
    if (scanner_.Token() == XmlToken::EndTag && scanner_.Depth() == nDepth) break;
  }
  PutTag();
  if (bShared) StringUse::Note(edit_.pStrings->kept, sIndex);
  return true;
}

/// From a formula's tag to its end.
bool clsSheetMerger::CopyFormula() {
  const bool bShared = scanner_.Attribute("t") == "shared";
  if (bShared && scanner_.Attribute("ref")) return TakeSharedFormula(false);
  const auto shared =
      bShared ? shared_.find(ParseIndex(scanner_.Attribute("si").value_or("")).value_or(UINT32_MAX)) : shared_.end();
  if (shared != shared_.end() && shared->second.bOrphaned) return TakeOver(shared->second);
  const int nDepth = scanner_.Depth();
  for (copier_.CopyToken(); scanner_.Token() != XmlToken::EmptyTag || scanner_.Depth() != nDepth; copier_.CopyToken()) {
    if (scanner_.Token() == XmlToken::EndTag && scanner_.Depth() == nDepth) break;
    if (scanner_.Next() == XmlToken::Failed) return false;
  }
  return true;
}

}  // namespace quillon
