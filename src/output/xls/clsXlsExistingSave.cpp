// Saving an existing .xls workbook: the stream is put together from pieces of the old one and what was changed.

#include <algorithm>
#include <array>
#include <numeric>

#include "clsXlsExistingWorkbook.h"
#include "clsXlsNewWorkbook.h"
#include "modOutputMessages.h"
#include "modPaths.h"
#include "modXlsColumns.h"
#include "modXlsLayout.h"

namespace quillon {

namespace {

constexpr size_t kMaxStream = 0x7FFF0000;
constexpr uint8_t kDefaultWidth = 8;

}  // namespace

bool clsXlsExistingWorkbook::Save(std::string_view sPath, Failure& failure) {
  const bool bSameFile = FileState::Of(HostPath(sPath)) == FileState::Of(sHostPath_);
  if (bSameFile && !(FileState::Of(sHostPath_) == state_)) {
    failure = OutputFailure(sPath, OutputMessage::ChangedMeanwhile);
    return false;
  }
  if (bSameFile && !IsChanged()) return true;
  if (IsActivated()) SelectActive();
  Assemble();
  if (nBytes_ > kMaxStream) {
    failure = OutputFailure(sPath, OutputMessage::TooLarge);
    return false;
  }
  if (!SaveCompoundFile(sPath, file_.IsOpen() ? &file_ : nullptr, sStreamName_, pieces_, failure)) return false;
  if (bSameFile) state_ = FileState::Of(sHostPath_);
  return true;
}

void clsXlsExistingWorkbook::AddPiece(size_t nFrom, size_t nTo) {
  pieces_.push_back(std::string_view(sStream_).substr(nFrom, nTo - nFrom));
  nBytes_ += nTo - nFrom;
}

void clsXlsExistingWorkbook::AddPiece(std::string sBytes) {
  nBytes_ += sBytes.size();
  made_.push_back(std::move(sBytes));
  pieces_.push_back(made_.back());
}

void clsXlsExistingWorkbook::Assemble() {
  pieces_.clear();
  made_.clear();
  nBytes_ = 0;
  if (!IsChanged()) return AddPiece(0, sStream_.size());
  if (bChanged_) MarkFormulas();
  if (bChanged_) DropStrings();
  clsXlsStrings strings;
  clsXlsFormats formats = globals_.Formats();
  std::vector<clsXlsCellTable> tables = MergeTouched(strings);
  AddAll(strings, tables);
  globals_.Formats() = std::move(formats);
}

/// The cell tables of all sheets, those of untouched ones empty.
std::vector<clsXlsCellTable> clsXlsExistingWorkbook::MergeTouched(clsXlsStrings& strings) {
  clsXlsCellWriter writer(strings, globals_.Formats(), options_.typing);
  writer.SetBase(globals_.Is1904(), globals_.Strings().Count());
  std::vector<clsXlsCellTable> tables;
  for (const auto& sheet : sheets_) {
    if (sheet->bAdded || sheet->bAnew) {
      tables.emplace_back();
      FillXlsTable(sheet->written, sheet->typing, globals_.Formats().DefaultXf(), writer, tables.back());
      continue;
    }
    const bool bIndexed = sheet->existing && sheet->existing->IndexOffset() != clsXlsSheet::kNone;
    tables.emplace_back(sheet->existing ? sheet->existing->DefaultHeight() : 0, bIndexed);
    if (!sheet->bTouched) continue;
    sheet->existing->Merge(sheet->written, sheet->typing, globals_.Formats().DefaultXf(), writer, tables.back());
    const CellRange before = sheet->existing->ClearedData(), &now = sheet->typing.Used();
    if (!before.Empty() && !now.Empty()) globals_.FollowData(static_cast<int>(tables.size()), {before, now});
  }
  nRefused_ = writer.RefusedFormulas();
  nReformatted_ = writer.Reformatted();
  for (const auto& sheet : sheets_) bOrderTaken_ |= sheet->typing.OrderIsOpen();
  return tables;
}

/// Globals, then the sheets in the order of the old stream, with what stands between them.
void clsXlsExistingWorkbook::AddAll(const clsXlsStrings& strings, std::vector<clsXlsCellTable>& tables) {
  std::vector<size_t> boundSheets;
  AddPiece(globals_.Rebuild(strings, boundSheets));
  std::string& sGlobals = made_.front();
  std::vector<size_t> order(globals_.OldSheets());
  std::iota(order.begin(), order.end(), size_t{0});
  const auto Start = [this](size_t nSheet) { return globals_.Sheets()[nSheet].nOffset; };
  std::sort(order.begin(), order.end(), [&Start](size_t a, size_t b) { return Start(a) < Start(b); });
  size_t nDone = globals_.End();
  for (const size_t nSheet : order) {
    AddPiece(nDone, Start(nSheet));
    SetAt(sGlobals, boundSheets[nSheet] + 4, static_cast<uint32_t>(nBytes_));
    if (sheets_[nSheet]->bAnew)
      AddNew(static_cast<int>(nSheet) + 1, tables[nSheet]);
    else if (sheets_[nSheet]->bTouched)
      AddTouched(*sheets_[nSheet], tables[nSheet]);
    else
      AddUntouched(*sheets_[nSheet], Start(nSheet), nBytes_);
    nDone = sheets_[nSheet]->nEnd;
  }
  AddPiece(nDone, sStream_.size());
  for (size_t nSheet = globals_.OldSheets(); nSheet < sheets_.size(); ++nSheet) {
    SetAt(sGlobals, boundSheets[nSheet] + 4, static_cast<uint32_t>(nBytes_));
    AddNew(static_cast<int>(nSheet) + 1, tables[nSheet]);
  }
}

void clsXlsExistingWorkbook::AddNew(int nSheet, const clsXlsCellTable& table) {
  std::array<uint8_t, kMaxXlsColumns> widths{};
  const std::vector<uint8_t>& longest = At(nSheet).typing.Widths();
  for (size_t i = 0; i < std::min(longest.size(), widths.size()); ++i)
    if (longest[i] > kDefaultWidth) widths[i] = longest[i];
  const XlsSheetHead head =
      MakeSheetHead(widths, table.FirstRow(), table.RowsEnd(), table.FirstColumn(), table.ColumnsEnd());
  const size_t nRest = nBytes_ + head.sBof.size() + table.IndexBytes();
  AddPiece(head.sBof + table.Index(nRest + head.sRest.size(), nRest + head.nDefColWidth) + head.sRest);
  AddPiece(table.Bytes());
  AddPiece(MakeSheetTail(nActive_ == nSheet));
}

/// What stands before the cells of a touched sheet, from there on, with its columns wide enough.
std::string clsXlsExistingWorkbook::HeadFrom(const Sheet& sheet, size_t nFrom) {
  const std::string_view sHead = std::string_view(sStream_).substr(nFrom, sheet.existing->TableStart() - nFrom);
  const bool bAnew = globals_.Formats().IsOwn() && !sheet.existing->ClearedData().Empty();
  return WithColumnWidths(sHead, sheet.typing.Widths(), bAnew, globals_.Formats().DefaultXf());
}

void clsXlsExistingWorkbook::AddTouched(Sheet& sheet, clsXlsCellTable& table) {
  const clsXlsSheet& existing = *sheet.existing;
  if (const size_t nDimensions = existing.Dimensions(); nDimensions != clsXlsSheet::kNone && !table.Empty()) {
    const std::string_view sOld = std::string_view(sStream_).substr(nDimensions + 4, 14);
    const bool bWasEmpty = GetU32(sOld, 4) == 0;
    const std::string sNew =
        DimensionsData(bWasEmpty ? table.FirstRow() : std::min(table.FirstRow(), GetU32(sOld, 0)),
                       std::max(table.RowsEnd(), GetU32(sOld, 4)),
                       bWasEmpty ? table.FirstColumn() : std::min(table.FirstColumn(), unsigned{GetU16(sOld, 8)}),
                       std::max(table.ColumnsEnd(), unsigned{GetU16(sOld, 10)}));
    sStream_.replace(nDimensions + 4, std::min<size_t>(12, sOld.size()), sNew, 0, std::min<size_t>(12, sOld.size()));
  }
  const size_t nFrom = existing.Start();
  if (const size_t nIndex = existing.IndexOffset(); nIndex != clsXlsSheet::kNone) {
    const size_t nIndexEnd = nIndex + 4 + GetU16(sStream_, nIndex + 2);
    AddPiece(nFrom, nIndex);
    std::string sHead = HeadFrom(sheet, nIndexEnd);
    const size_t nBehind = nBytes_ + table.IndexBytes();
    const bool bHasWidth = existing.DefColWidth() != clsXlsSheet::kNone && existing.DefColWidth() >= nIndexEnd;
    AddPiece(table.Index(nBehind + sHead.size(), bHasWidth ? nBehind + existing.DefColWidth() - nIndexEnd : 0));
    AddPiece(std::move(sHead));
  } else {
    AddPiece(HeadFrom(sheet, nFrom));
  }
  AddPiece(table.TakeBytes());
  AddPiece(existing.TableEnd(), existing.End());
}

/// INDEX holds offsets of the whole stream, so it moves with its sheet.
void clsXlsExistingWorkbook::AddUntouched(const Sheet& sheet, size_t nStart, size_t nOffset) {
  const size_t nIndex = sheet.existing ? sheet.existing->IndexOffset() : clsXlsSheet::kNone;
  if (nIndex == clsXlsSheet::kNone || nOffset == nStart) return AddPiece(nStart, sheet.nEnd);
  const size_t nEnd = nIndex + 4 + GetU16(sStream_, nIndex + 2);
  std::string sIndex = sStream_.substr(nIndex, nEnd - nIndex);
  for (size_t i = 16; i + 4 <= sIndex.size(); i += 4)
    if (const uint32_t nOld = GetU32(sIndex, i); nOld != 0)
      SetAt(sIndex, i, static_cast<uint32_t>(nOld + nOffset - nStart));
  AddPiece(nStart, nIndex);
  AddPiece(std::move(sIndex));
  AddPiece(nEnd, sheet.nEnd);
}

/// Every formula may depend on a changed cell: it is to be calculated, and shows nothing until then. A result that is a
/// text stands in a record of its own behind the formula.
void clsXlsExistingWorkbook::MarkFormulas() {
  constexpr uint16_t kAlwaysAndOnLoad = 3;
  for (const auto& sheet : sheets_) {
    if (!sheet->existing || sheet->bAnew) continue;
    clsXlsRecordReader reader(std::string_view(sStream_).substr(0, sheet->nEnd), sheet->existing->Start());
    XlsRecord record;
    bool bText = false;
    while (reader.Next(record)) {
      if (record.nId == xls::kString && bText && record.sData.size() >= 3)
        sStream_.replace(record.nOffset + 4, 3, 3, '\0');
      if (record.nId != xls::kFormula || record.sData.size() < 22) continue;
      bText = record.sData.substr(6, 1) == std::string_view("\0", 1) && GetU16(record.sData, 12) == 0xFFFF;
      if (!bText) sStream_.replace(record.nOffset + 4 + 6, xls::kNoResult.size(), xls::kNoResult);
      const auto nFlags = static_cast<uint16_t>(GetU16(record.sData, 14) | kAlwaysAndOnLoad);
      SetAt(sStream_, record.nOffset + 4 + 14, nFlags);
    }
  }
}

/// What stood in cells that are gone, and in no other, doesn't stay in the file.
void clsXlsExistingWorkbook::DropStrings() {
  std::vector<bool> kept(globals_.Strings().Count());
  for (const auto& sheet : sheets_) {
    if (!sheet->existing || sheet->bAnew) continue;
    clsXlsRecordReader reader(std::string_view(sStream_).substr(0, sheet->nEnd), sheet->existing->Start());
    for (XlsRecord record; reader.Next(record);) {
      if (record.nId != xls::kLabelSst || record.sData.size() < 10) continue;
      const unsigned nRow = GetU16(record.sData, 0), nColumn = GetU16(record.sData, 2);
      const size_t nString = GetU32(record.sData, 6);
      std::string_view sIgnored;
      const bool bGone =
          sheet->bTouched && (sheet->existing->IsCleared(nRow, nColumn) ||
                              sheet->written.Read(int64_t{nRow} + 1, static_cast<int>(nColumn) + 1, sIgnored));
      if (!bGone && nString < kept.size()) kept[nString] = true;
    }
  }
  globals_.DropStrings(kept, sStream_);
}

/// The active sheet alone is selected and in front.
void clsXlsExistingWorkbook::SelectActive() {
  globals_.SetActiveSheet(nActive_);
  constexpr unsigned kSelectedAndInFront = 0x0600;
  for (size_t i = 0; i < sheets_.size(); ++i) {
    if (!sheets_[i]->existing || sheets_[i]->existing->Window2() == clsXlsSheet::kNone) continue;
    const size_t nFlags = sheets_[i]->existing->Window2() + 4;
    const unsigned nRest = GetU16(sStream_, nFlags) & ~kSelectedAndInFront;
    const bool bActive = static_cast<int>(i) + 1 == nActive_;
    SetAt(sStream_, nFlags, static_cast<uint16_t>(nRest | (bActive ? kSelectedAndInFront : 0)));
  }
}

}  // namespace quillon
