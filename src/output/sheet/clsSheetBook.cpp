#include "clsSheetBook.h"

#include <algorithm>

#include "clsCellRanges.h"
#include "modOutputMessages.h"
#include "modSettledCell.h"
#include "modSheetNames.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

bool clsSheetBook::WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) {
  return CheckPlace(nSheet, nRow, nColumn, failure) && CheckText(nSheet, nRow, nColumn, sText, failure) &&
         PutText(nSheet, nRow, nColumn, sText, failure);
}

bool clsSheetBook::WriteSettled(int nSheet, int64_t nRow, int nColumn, const SettledCell& cell, Failure& failure) {
  return CheckPlace(nSheet, nRow, nColumn, failure) && CheckText(nSheet, nRow, nColumn, cell.sShown, failure) &&
         PutText(nSheet, nRow, nColumn, cell.sShown.empty() ? "" : StoredForm(cell), failure);
}

bool clsSheetBook::ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) {
  sText.clear();
  if (!CheckPlace(nSheet, nRow, nColumn, failure) || !GetText(nSheet, nRow, nColumn, sText, failure)) return false;
  if (IsSettled(sText)) sText = std::string(ShownOf(sText));
  return true;
}

bool clsSheetBook::CheckPlace(int nSheet, int64_t nRow, int nColumn, Failure& failure) const {
  const bool bInside = nRow >= 1 && nRow <= form_.nRows && nColumn >= 1 && nColumn <= form_.nColumns;
  const bool bThere = HasSheet(nSheet) && IsWorksheet(nSheet);
  if (bInside && bThere) return true;
  failure = CellFailure(nSheet, nRow, nColumn, bThere ? OutputMessage::OutsideSheet : OutputMessage::NoSuchSheet);
  return false;
}

/// Few texts are long enough to be counted: a character has at least one byte.
bool clsSheetBook::CheckText(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) const {
  if (sText.size() <= kMaxCellChars || Utf16Count(sText) <= kMaxCellChars) return true;
  failure = CellFailure(nSheet, nRow, nColumn, OutputMessage::TextTooLong);
  return false;
}

bool clsSheetBook::CheckSheet(int nSheet, Failure& failure) const {
  if (HasSheet(nSheet) && IsWorksheet(nSheet)) return true;
  failure = OutputFailure(Translate("Sheet") + " " + std::to_string(nSheet), OutputMessage::NoSuchSheet);
  return false;
}

bool clsSheetBook::SetSheetName(int nSheet, std::string_view sName, Failure& failure) {
  if (HasSheet(nSheet) && SheetName(nSheet) == sName) return true;
  std::optional<OutputMessage> refusal = OutputMessage::NoSuchSheet;
  if (HasSheet(nSheet)) refusal = RefusalOfSheetName(sName, names_, nSheet);
  if (refusal) {
    failure = OutputFailure(sName, *refusal);
    return false;
  }
  names_[static_cast<size_t>(nSheet) - 1] = sName;
  NamesChanged();
  return true;
}

std::string clsSheetBook::SheetName(int nSheet) const {
  return HasSheet(nSheet) ? names_[static_cast<size_t>(nSheet) - 1] : std::string();
}

int clsSheetBook::FindSheet(std::string_view sName) const {
  const auto it = std::find_if(names_.begin(), names_.end(), [sName](const auto& s) { return EqualNoCase(s, sName); });
  return it == names_.end() ? 0 : static_cast<int>(it - names_.begin()) + 1;
}

int clsSheetBook::SheetNamed(std::string_view sName, Failure& failure) {
  if (const int nFound = FindSheet(sName); nFound != 0) return CheckSheet(nFound, failure) ? nFound : 0;
  if (const auto refusal = RefusalOfSheetName(sName, names_, SheetCount() + 1)) {
    failure = OutputFailure(sName, *refusal);
    return 0;
  }
  AddSheet();
  names_.emplace_back(sName);
  NamesChanged();
  return SheetCount();
}

bool clsSheetBook::ActivateSheet(std::string_view sName) {
  return ActivateSheet(FindSheet(sName));
}

bool clsSheetBook::ActivateSheet(int nSheet) {
  if (!HasSheet(nSheet) || !IsWorksheet(nSheet)) return false;
  nActive_ = nSheet;
  return true;
}

std::optional<CellRange> clsSheetBook::ActiveUsedRange() {
  if (!IsWorksheet(nActive_)) return std::nullopt;
  const auto range = UsedRange(nActive_);
  // A sheet with nothing in it has its first cell in use.
  return range && range->Empty() ? CellRange{1, 1, 1, 1} : range;
}

void clsSheetBook::NoteCleared(int nSheet, const CellRange& range, bool bOwnWork) {
  constexpr int64_t kFewCells = 50;
  const SheetContent content = ContentOf(nSheet);
  if (bOwnWork || !Meet(range, content.used) || (content.nFilled <= kFewCells && content.nFormulas == 0)) return;
  std::string sNote = Translate("Sheet") + " \"" + SheetName(nSheet) + "\" " +
                      Translate("was emptied, which Quillon was not the last to save; cells that it held:") + " " +
                      std::to_string(content.nFilled);
  if (content.nFormulas > 0) sNote += ", " + Translate("formulas:") + " " + std::to_string(content.nFormulas);
  notes_.push_back(std::move(sNote));
}

void clsSheetBook::NoteProtected(int nSheet) {
  if (!protected_.insert(nSheet).second) return;
  notes_.push_back(Translate("Sheet") + " \"" + SheetName(nSheet) + "\" " +
                   Translate("is protected, and was written all the same"));
}

std::vector<std::string> clsSheetBook::Notes() const {
  std::vector<std::string> notes = notes_;
  if (bOrderTaken_ && options_.typing.bDayFirst)
    notes.push_back(Translate("Dates that can be read both ways were taken as day before month, as is usual here"));
  if (bOrderTaken_ && !options_.typing.bDayFirst)
    notes.push_back(Translate("Dates that can be read both ways were taken as month before day, as is usual here"));
  const auto count = [&notes](std::string sText, int64_t nCount) {
    if (nCount > 0) notes.push_back(std::move(sText) + " " + std::to_string(nCount));
  };
  count(Translate("Values that lie in merged cells, where only the first is seen:"), nMerged_);
  count(Translate("Rows that lie behind the end of a table:"), nBehindTables_);
  count(Translate("Cells that got another number format, as theirs would not show what the report does:"),
        nReformatted_);
  return notes;
}

bool clsSheetBook::SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) {
  if (lFormat == form_.lFormat) return Save(sPath, failure);
  failure = OutputFailure(sPath, OutputMessage::OtherFormat);
  return false;
}

}  // namespace quillon
