#include "clsXlsExistingWorkbook.h"

#include <algorithm>
#include <numeric>

#include "clsCellRanges.h"
#include "clsXlsNewWorkbook.h"
#include "clsXlsWorkbook.h"
#include "modOutputMessages.h"
#include "modXlsShown.h"

namespace quillon {

bool clsXlsExistingWorkbook::Open(const std::string& sHostPath, Failure& failure) {
  sHostPath_ = sHostPath;
  state_ = FileState::Of(sHostPath);
  if (!file_.Open(sHostPath, failure)) return false;
  OutputMessage reason = OutputMessage::Damaged;
  sStreamName_ = file_.FindStream("Workbook");
  if (sStreamName_.empty()) {
    reason = !file_.FindStream("Book").empty()               ? OutputMessage::OldVersion
             : !file_.FindStream("EncryptedPackage").empty() ? OutputMessage::Encrypted
                                                             : OutputMessage::NotAWorkbook;
  } else if (file_.ReadStream(sStreamName_, sStream_) && ParseStream(reason)) {
    return true;
  }
  failure = OutputFailure(sHostPath, reason);
  return false;
}

bool clsXlsExistingWorkbook::ParseStream(OutputMessage& reason) {
  if (!globals_.Parse(sStream_, reason)) return false;
  reason = OutputMessage::Damaged;
  nActive_ = globals_.ActiveSheet() <= static_cast<int>(globals_.Sheets().size()) ? globals_.ActiveSheet() : 1;
  for (const XlsSheetEntry& entry : globals_.Sheets()) names_.push_back(entry.sName);
  return CheckSheets();
}

/// Sheets lie behind the globals, and none reaches into the next: so looking over all of them is one pass.
bool clsXlsExistingWorkbook::CheckSheets() {
  const std::vector<XlsSheetEntry>& entries = globals_.Sheets();
  std::vector<size_t> starts;
  for (const XlsSheetEntry& entry : entries) starts.push_back(entry.nOffset);
  std::sort(starts.begin(), starts.end());
  if (starts.front() < globals_.End() || std::adjacent_find(starts.begin(), starts.end()) != starts.end()) return false;
  starts.push_back(sStream_.size());
  for (const XlsSheetEntry& entry : entries) {
    const size_t nEnd = *std::upper_bound(starts.begin(), starts.end() - 1, entry.nOffset);
    auto existing = std::make_unique<clsXlsSheet>();
    if (!existing->Check(std::string_view(sStream_).substr(0, nEnd), entry.nOffset)) return false;
    sheets_.push_back(std::make_unique<Sheet>(options_.typing));
    sheets_.back()->nEnd = existing->End();
    if (entry.bWorksheet) sheets_.back()->existing = std::move(existing);
  }
  return true;
}

/// Looks through the sheet before its cells are touched.
bool clsXlsExistingWorkbook::Load(int nSheet, Failure& failure) {
  const Sheet& sheet = At(nSheet);
  if (sheet.bAdded || sheet.existing->Load()) return true;
  failure = OutputFailure(names_[static_cast<size_t>(nSheet) - 1], OutputMessage::Damaged);
  return false;
}

void clsXlsExistingWorkbook::AddSheet() {
  sheets_.push_back(std::make_unique<Sheet>(options_.typing));
  sheets_.back()->bAdded = true;
  globals_.AddSheet();
}

void clsXlsExistingWorkbook::NamesChanged() {
  bChanged_ = true;
  for (int nSheet = 1; nSheet <= SheetCount(); ++nSheet) globals_.Rename(nSheet, SheetName(nSheet));
}

bool clsXlsExistingWorkbook::PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored,
                                     Failure& failure) {
  if (!Load(nSheet, failure)) return false;
  Sheet& sheet = At(nSheet);
  if (!sheet.bAdded && sheet.existing->IsPartOfArray(nRow, nColumn)) {
    failure = CellFailure(nSheet, nRow, nColumn, OutputMessage::PartOfArray);
    return false;
  }
  sheet.written.Write(nRow, nColumn, sStored);
  sheet.bTouched = bChanged_ = true;
  return true;
}

bool clsXlsExistingWorkbook::GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure& failure) {
  if (!Load(nSheet, failure)) return false;
  std::string_view sWritten;
  if (At(nSheet).written.Read(nRow, nColumn, sWritten)) {
    sStored = sWritten;
    return true;
  }
  if (At(nSheet).bAdded) return true;
  const clsXlsSheet& sheet = *At(nSheet).existing;
  const auto nRow0 = static_cast<uint32_t>(nRow - 1);
  const auto nColumn0 = static_cast<unsigned>(nColumn - 1);
  const XlsCell* const pCell = sheet.Find(nRow0, nColumn0);
  if (pCell != nullptr && !sheet.IsCleared(nRow0, nColumn0))
    sStored = ShownXlsCell(sStream_, *pCell, globals_, options_.typing.bDayFirst);
  return true;
}

std::optional<CellRange> clsXlsExistingWorkbook::UsedRange(int nSheet) {
  Failure ignored;
  if (!Load(nSheet, ignored)) return std::nullopt;
  CellRange range = At(nSheet).written.Range();
  if (!At(nSheet).bAdded) Include(range, At(nSheet).existing->UsedRange());
  return range;
}

SheetContent clsXlsExistingWorkbook::ContentOf(int nSheet) {
  Failure ignored;
  if (!CheckSheet(nSheet, ignored) || !Load(nSheet, ignored) || At(nSheet).bAdded) return {};
  SheetContent content{At(nSheet).existing->UsedRange()};
  for (const XlsCell& cell : At(nSheet).existing->Cells()) {
    content.nFilled += cell.IsBlank() ? 0 : 1;
    content.nFormulas += cell.nId == xls::kFormula ? 1 : 0;
  }
  return content;
}

bool clsXlsExistingWorkbook::ClearContents(int nSheet, const CellRange& range, Failure& failure) {
  if (!CheckSheet(nSheet, failure) || !Load(nSheet, failure)) return false;
  if (range.Empty()) return true;
  if (!At(nSheet).bAdded && !At(nSheet).existing->Clear(range)) {
    failure = CellFailure(nSheet, range.nTop, static_cast<int>(range.nLeft), OutputMessage::PartOfArray);
    return false;
  }
  NoteCleared(nSheet, range, globals_.Formats().IsOwn());
  ClearWritten(At(nSheet).written, range);
  At(nSheet).bTouched = bChanged_ = true;
  return true;
}

std::unique_ptr<clsWorkbook> OpenXlsWorkbook(std::string_view sHostPath, const WorkbookOptions& options,
                                             Failure& failure) {
  auto workbook = std::make_unique<clsXlsExistingWorkbook>(options);
  if (!workbook->Open(std::string(sHostPath), failure)) return nullptr;
  return workbook;
}

}  // namespace quillon
