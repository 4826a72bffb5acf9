#include "clsXlsExistingWorkbook.h"

#include <algorithm>
#include <numeric>

#include "clsXlsNewWorkbook.h"
#include "clsXlsWorkbook.h"
#include "modOutputMessages.h"
#include "modSheetNames.h"
#include "modText.h"
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
    sheets_.push_back(std::make_unique<Sheet>());
    sheets_.back()->nEnd = existing->End();
    if (entry.bWorksheet) sheets_.back()->existing = std::move(existing);
  }
  return true;
}

clsXlsSheet* clsXlsExistingWorkbook::Worksheet(int nSheet, int64_t nRow, int nColumn, Failure& failure) {
  if (!CheckXlsCell(SheetCount(), nSheet, nRow, nColumn, failure)) return nullptr;
  clsXlsSheet* pSheet = At(nSheet).existing.get();
  if (pSheet != nullptr && pSheet->Load()) return pSheet;
  const OutputMessage reason = pSheet == nullptr ? OutputMessage::NoSuchSheet : OutputMessage::Damaged;
  failure = CellFailure(nSheet, nRow, nColumn, reason);
  return nullptr;
}

bool clsXlsExistingWorkbook::WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText,
                                       Failure& failure) {
  clsXlsSheet* pSheet = Worksheet(nSheet, nRow, nColumn, failure);
  if (pSheet == nullptr || !CheckXlsText(nSheet, nRow, nColumn, sText, failure)) return false;
  if (pSheet->IsPartOfArray(nRow, nColumn)) {
    failure = CellFailure(nSheet, nRow, nColumn, OutputMessage::PartOfArray);
    return false;
  }
  At(nSheet).written.Write(nRow, nColumn, sText);
  At(nSheet).bTouched = bChanged_ = true;
  return true;
}

bool clsXlsExistingWorkbook::ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) {
  const clsXlsSheet* pSheet = Worksheet(nSheet, nRow, nColumn, failure);
  if (pSheet == nullptr) return false;
  const auto nRow0 = static_cast<uint32_t>(nRow - 1);
  const auto nColumn0 = static_cast<unsigned>(nColumn - 1);
  std::string_view sWritten;
  sText.clear();
  if (At(nSheet).written.Read(nRow, nColumn, sWritten))
    sText = sWritten;
  else if (const XlsCell* pCell = pSheet->Find(nRow0, nColumn0);
           pCell != nullptr && !pSheet->IsCleared(nRow0, nColumn0))
    sText = ShownXlsCell(sStream_, *pCell, globals_, options_.typing.bDayFirst);
  return true;
}

bool clsXlsExistingWorkbook::SetSheetName(int nSheet, std::string_view sName, Failure& failure) {
  std::vector<std::string> names;
  for (const XlsSheetEntry& entry : globals_.Sheets()) names.push_back(entry.sName);
  std::optional<OutputMessage> refusal = OutputMessage::NoSuchSheet;
  if (Has(nSheet)) refusal = RefusalOfSheetName(sName, names, nSheet);
  if (refusal) {
    failure = OutputFailure(sName, *refusal);
    return false;
  }
  bChanged_ = bChanged_ || SheetName(nSheet) != sName;
  globals_.Rename(nSheet, sName);
  return true;
}

std::string clsXlsExistingWorkbook::SheetName(int nSheet) const {
  return Has(nSheet) ? globals_.Sheets()[static_cast<size_t>(nSheet) - 1].sName : std::string{};
}

std::optional<CellRange> clsXlsExistingWorkbook::ActiveUsedRange() {
  Failure failure;
  const int nActive = globals_.ActiveSheet();
  const clsXlsSheet* pSheet = Worksheet(nActive, 1, 1, failure);
  if (pSheet == nullptr) return std::nullopt;
  const CellRange existing = pSheet->UsedRange(), written = At(nActive).written.Range();
  if (existing.Empty() && written.Empty()) return CellRange{1, 1, 1, 1};
  if (existing.Empty() || written.Empty()) return existing.Empty() ? written : existing;
  return CellRange{std::min(existing.nTop, written.nTop), std::min(existing.nLeft, written.nLeft),
                   std::max(existing.nBottom, written.nBottom), std::max(existing.nRight, written.nRight)};
}

bool clsXlsExistingWorkbook::ClearContents(int nSheet, const CellRange& range, Failure& failure) {
  clsXlsSheet* pSheet = Worksheet(nSheet, 1, 1, failure);
  if (pSheet == nullptr || range.Empty()) return pSheet != nullptr;
  if (!pSheet->Clear(range)) {
    failure = CellFailure(nSheet, range.nTop, static_cast<int>(range.nLeft), OutputMessage::PartOfArray);
    return false;
  }
  ClearWritten(At(nSheet).written, range);
  At(nSheet).bTouched = bChanged_ = true;
  return true;
}

bool clsXlsExistingWorkbook::ActivateSheet(std::string_view sName) {
  for (int i = 1; i <= SheetCount(); ++i)
    if (EqualNoCase(SheetName(i), sName)) return ActivateSheet(i);
  return false;
}

bool clsXlsExistingWorkbook::ActivateSheet(int nSheet) {
  if (!Has(nSheet)) return false;
  bActivated_ = bActivated_ || globals_.ActiveSheet() != nSheet;
  globals_.SetActiveSheet(nSheet);
  return true;
}

std::unique_ptr<clsWorkbook> OpenXlsWorkbook(std::string_view sHostPath, const WorkbookOptions& options,
                                             Failure& failure) {
  auto workbook = std::make_unique<clsXlsExistingWorkbook>(options);
  if (!workbook->Open(std::string(sHostPath), failure)) return nullptr;
  return workbook;
}

}  // namespace quillon
