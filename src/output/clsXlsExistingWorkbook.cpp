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
  for (const XlsSheetEntry& entry : globals_.Sheets()) {
    auto sheet = std::make_unique<Sheet>();
    auto existing = std::make_unique<clsXlsSheet>();
    if (!existing->Check(sStream_, entry.nOffset)) return false;
    sheet->nEnd = existing->End();
    if (entry.bWorksheet) sheet->existing = std::move(existing);
    sheets_.push_back(std::move(sheet));
  }
  return CheckSheets();
}

/// Sheets lie behind the globals and none in another.
bool clsXlsExistingWorkbook::CheckSheets() {
  std::vector<std::pair<size_t, size_t>> places = {{0, globals_.End()}};
  for (size_t i = 0; i < sheets_.size(); ++i) places.emplace_back(globals_.Sheets()[i].nOffset, sheets_[i]->nEnd);
  std::sort(places.begin(), places.end());
  for (size_t i = 1; i < places.size(); ++i)
    if (places[i].first < places[i - 1].second) return false;
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
