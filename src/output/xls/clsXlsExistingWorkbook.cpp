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
    if (globals_.Formats().IsOwn()) file_.CloseIfAlone();
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
  if (sheet.bAdded || sheet.bAnew || sheet.existing->Load()) return true;
  failure = OutputFailure(names_[static_cast<size_t>(nSheet) - 1], OutputMessage::Damaged);
  return false;
}

/// What a sheet of our own work says of its extent, before it is touched; nothing for any other.
std::optional<CellRange> clsXlsExistingWorkbook::OwnUsedRange(int nSheet) {
  const Sheet& sheet = At(nSheet);
  if (!globals_.Formats().IsOwn() || sheet.bTouched || !sheet.existing || sheet.existing->IsLoaded())
    return std::nullopt;
  const size_t nData = sheet.existing->Dimensions() + 4;
  if (sheet.existing->Dimensions() == clsXlsSheet::kNone) return std::nullopt;
  return CellRange{int64_t{GetU32(sStream_, nData)} + 1, GetU16(sStream_, nData + 8) + 1, GetU32(sStream_, nData + 4),
                   GetU16(sStream_, nData + 10)};
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
  if (sheet.existing && sheet.existing->IsProtected()) NoteProtected(nSheet);
  if (sheet.existing && !sheet.existing->Merged().Empty() && sStored.find_first_not_of(' ') != std::string_view::npos) {
    const CellRange* const pMerged = sheet.existing->Merged().At(nRow, nColumn);
    if (pMerged != nullptr && (pMerged->nTop != nRow || pMerged->nLeft != nColumn)) NoteMerged();
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
  if (At(nSheet).bAdded || At(nSheet).bAnew) return true;
  const clsXlsSheet& sheet = *At(nSheet).existing;
  const auto nRow0 = static_cast<uint32_t>(nRow - 1);
  const auto nColumn0 = static_cast<unsigned>(nColumn - 1);
  const XlsCell* const pCell = sheet.Find(nRow0, nColumn0);
  if (pCell != nullptr && !sheet.IsCleared(nRow0, nColumn0))
    sStored = ShownXlsCell(sStream_, *pCell, globals_, options_.typing.bDayFirst);
  return true;
}

std::optional<CellRange> clsXlsExistingWorkbook::UsedRange(int nSheet) {
  if (const auto own = OwnUsedRange(nSheet)) return own;
  Failure ignored;
  if (!Load(nSheet, ignored)) return std::nullopt;
  CellRange range = At(nSheet).written.Range();
  if (!At(nSheet).bAdded && !At(nSheet).bAnew) Include(range, At(nSheet).existing->UsedRange());
  return range;
}

SheetContent clsXlsExistingWorkbook::ContentOf(int nSheet) {
  Failure ignored;
  if (!CheckSheet(nSheet, ignored) || At(nSheet).bAdded || At(nSheet).bAnew) return {};
  if (const auto own = options_.bNoOverwrite ? std::nullopt : OwnUsedRange(nSheet)) return {*own};
  if (!Load(nSheet, ignored)) return {};
  SheetContent content{At(nSheet).existing->UsedRange()};
  for (const XlsCell& cell : At(nSheet).existing->Cells()) {
    content.nFilled += cell.IsBlank() ? 0 : 1;
    content.nFormulas += cell.nId == xls::kFormula ? 1 : 0;
  }
  return content;
}

bool clsXlsExistingWorkbook::ClearContents(int nSheet, const CellRange& range, Failure& failure) {
  if (!CheckSheet(nSheet, failure)) return false;
  const auto own = OwnUsedRange(nSheet);
  At(nSheet).bAnew |= own && !range.Empty() && Covers(range, *own);
  if (!Load(nSheet, failure)) return false;
  if (range.Empty()) return true;
  if (!At(nSheet).bAdded && !At(nSheet).bAnew && !At(nSheet).existing->Clear(range)) {
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
