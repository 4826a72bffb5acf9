#include "clsXlsGlobals.h"

#include <algorithm>

#include "modText.h"
#include "modXlsLayout.h"
#include "modXlsText.h"

namespace quillon {

namespace {

constexpr size_t kWindowFlags = 8, kActiveTab = 10;  // in WINDOW1
constexpr unsigned kHidden = 0x05;                   // hidden, or very hidden
constexpr uint16_t kOwnBook = 0x0401;                // in SUPBOOK
constexpr size_t kXfCount = 14, kXfCrcValue = 16;

}  // namespace

bool clsXlsGlobals::Parse(std::string_view sStream, OutputMessage& reason) {
  sStream_ = sStream;
  reason = OutputMessage::Damaged;
  clsXlsRecordReader reader(sStream, 0);
  XlsRecord record;
  if (!reader.Next(record) || record.sData.size() < 4) return false;
  if ((record.nId & 0xFF) == 0x09 && (record.nId != xls::kBof || GetU16(record.sData, 0) < xls::kBiff8)) {
    reason = OutputMessage::OldVersion;
    return false;
  }
  if (record.nId != xls::kBof || GetU16(record.sData, 0) != xls::kBiff8 || GetU16(record.sData, 2) != xls::kGlobals)
    return false;
  while (reader.Next(record)) {
    if (record.nId == xls::kEof) {
      nEnd_ = record.End();
      nOldXfs_ = formats_.XfCount();
      return !sheets_.empty() && nOldXfs_ > xls::kDefaultXf;
    }
    if (!Note(record, reason)) return false;
  }
  return false;
}

bool clsXlsGlobals::Note(const XlsRecord& record, OutputMessage& reason) {
  switch (record.nId) {
    case xls::kFilePass:
      reason = OutputMessage::Encrypted;
      return false;
    case xls::kBoundSheet:
      return NoteSheet(record);
    case xls::kFormat:
      formats_.AddExistingFormat(record.sData);
      nFormatsEnd_ = record.End();
      return true;
    case xls::kXf:
      formats_.AddExistingXf(record.sData);
      if (nFormatsEnd_ == 0) nFormatsEnd_ = record.nOffset;
      nXfsEnd_ = record.End();
      return record.sData.size() == 20;
    case xls::kXfExt:
      formats_.AddExistingXfExt(record.sData);
      nXfExtsEnd_ = record.End();
      return true;
    case xls::kSst:
      nSst_ = record.nOffset;
      return strings_.Parse(sStream_, record.nOffset);
    case xls::kWriteAccess:
      if (std::string sWriter; GetXlsString(record.sData, 0, 2, sWriter) && sWriter == xls::kOwnName)
        formats_.TakeAsOwn();
      return true;
    case xls::kSupBook:
      if (record.sData.size() == 4 && GetU16(record.sData, 2) == kOwnBook) nOwnBook_ = nBooks_;
      ++nBooks_;
      return true;
    case xls::kExternSheet:
      sReferences_ = record.sData;
      return true;
    case xls::kDateMode:
      b1904_ = GetU16(record.sData, 0) != 0;
      return true;
    case xls::kWindow1:
      if (nWindow1_ == 0) NoteWindow(record);
      return true;
    default:
      return true;
  }
}

void clsXlsGlobals::NoteWindow(const XlsRecord& record) {
  nWindow1_ = record.nOffset;
  nActive_ = GetU16(record.sData, kActiveTab) + 1;
  bHidden_ = (GetU16(record.sData, kWindowFlags) & kHidden) != 0;
}

bool clsXlsGlobals::NoteSheet(const XlsRecord& record) {
  XlsSheetEntry entry;
  entry.nOffset = GetU32(record.sData, 0);
  entry.bWorksheet = GetU8(record.sData, 5) == 0;
  if (!GetXlsString(record.sData, 6, 1, entry.sName)) return false;
  oldNames_.push_back(entry.sName);
  sheets_.push_back(std::move(entry));
  return true;
}

void clsXlsGlobals::Rename(int nSheet, std::string_view sName) {
  sheets_[static_cast<size_t>(nSheet) - 1].sName = sName;
}

std::string clsXlsGlobals::Rebuild(const clsXlsStrings& added, std::vector<size_t>& boundSheets) const {
  std::string sOut;
  sOut.reserve(nEnd_ + added.Entries().size() + 65536);
  clsXlsRecordReader reader(sStream_, 0);
  XlsRecord record;
  while (reader.Next(record)) {
    if (record.nOffset == nFormatsEnd_) sOut.append(formats_.AddedFormats());
    if (record.nOffset == nXfsEnd_) sOut.append(formats_.AddedXfs());
    if (record.nOffset == nXfExtsEnd_) sOut.append(formats_.AddedExtensions());
    if (record.nId == xls::kEof) break;
    if (record.nOffset >= nSst_ && record.nOffset < strings_.End()) {
      if (record.nOffset == nSst_) strings_.Write(added, 0, sOut);
      continue;
    }
    if (record.nId != xls::kExtSst) PutChanged(record, boundSheets, sOut);
  }
  if (nSst_ == 0 && added.Count() != 0) strings_.Write(added, 0, sOut);
  PutRecord(sOut, xls::kEof, {});
  return sOut;
}

void clsXlsGlobals::PutChanged(const XlsRecord& record, std::vector<size_t>& boundSheets, std::string& sOut) const {
  const size_t nData = sOut.size() + 4;
  switch (record.nId) {
    case xls::kBoundSheet:
      boundSheets.push_back(sOut.size());
      PutBoundSheet(record, boundSheets.size() - 1, sOut);
      if (boundSheets.size() < oldNames_.size()) return;
      for (size_t i = oldNames_.size(); i < sheets_.size(); ++i) {
        boundSheets.push_back(sOut.size());
        quillon::PutBoundSheet(sOut, sheets_[i].sName);
      }
      return;
    case xls::kTabId:
      return PutTabIds(record, sOut);
    case xls::kXfCrc:
      return PutXfCrc(record, sOut);
    case xls::kDconRef:
      return PutDconRef(record, sOut);
    case xls::kName:
      return PutName(record, sOut);
    default:
      PutRecord(sOut, record.nId, record.sData);
  }
  if (record.nId == xls::kWindow1 && record.nOffset == nWindow1_) {
    SetAt(sOut, nData + kWindowFlags, static_cast<uint16_t>(GetU16(record.sData, kWindowFlags) & ~kHidden));
    SetAt(sOut, nData + kActiveTab, static_cast<uint16_t>(nActive_ - 1));
  }
  // A file that was calculated by version 0 is calculated anew by every later one.
  // What the workbook says of itself among the books that formulas speak of: how many sheets it has.
  if (record.nId == xls::kSupBook && record.sData.size() == 4 && GetU16(record.sData, 2) == kOwnBook)
    SetAt(sOut, nData, static_cast<uint16_t>(sheets_.size()));
  if (record.nId == xls::kRecalcId) SetAt(sOut, nData + 4, uint32_t{0});
}

void clsXlsGlobals::PutTabIds(const XlsRecord& record, std::string& sOut) const {
  std::string sData(record.sData);
  unsigned nNext = 1;
  for (size_t i = 0; i + 2 <= sData.size(); i += 2) nNext = std::max(nNext, GetU16(sData, i) + 1U);
  for (size_t i = oldNames_.size(); i < sheets_.size(); ++i) PutU16(sData, nNext++);
  PutRecord(sOut, record.nId, sData);
}

void clsXlsGlobals::PutBoundSheet(const XlsRecord& record, size_t nSheet, std::string& sOut) const {
  if (sheets_[nSheet].sName == oldNames_[nSheet]) return PutRecord(sOut, record.nId, record.sData);
  std::string sData(record.sData.substr(0, 6));
  PutXlsString(sData, sheets_[nSheet].sName, 1);
  PutRecord(sOut, record.nId, sData);
}

/// Number, from 1, of the sheet of this workbook that a formula speaks of by that index; 0 for any other.
int clsXlsGlobals::SheetOfReference(unsigned nReference) const {
  const size_t nEntry = 2 + size_t{nReference} * 6;
  const bool bOwn = nEntry + 6 <= sReferences_.size() && GetU16(sReferences_, nEntry) == nOwnBook_ &&
                    GetU16(sReferences_, nEntry + 2) == GetU16(sReferences_, nEntry + 4);
  return bOwn ? GetU16(sReferences_, nEntry + 2) + 1 : 0;
}

/// A name that stands for one range of a sheet: print areas, filters and people's own.
void clsXlsGlobals::PutName(const XlsRecord& record, std::string& sOut) const {
  constexpr size_t kChars = 3, kTokenBytes = 4, kText = 14, kArea = 11;
  constexpr unsigned kColumnMask = 0xFF;
  const size_t nUnit = (GetU8(record.sData, kText) & 1) != 0 ? 2 : 1;
  const size_t nArea = kText + 1 + GetU8(record.sData, kChars) * nUnit;
  const size_t nData = sOut.size() + 4;
  PutRecord(sOut, record.nId, record.sData);
  const unsigned nToken = GetU8(record.sData, nArea);
  const bool bArea = GetU16(record.sData, kTokenBytes) == kArea && nArea + kArea <= record.sData.size() &&
                     (nToken == 0x3B || nToken == 0x5B || nToken == 0x7B);
  if (!bArea) return;
  const auto At = [&](size_t nField) { return unsigned{GetU16(record.sData, nArea + nField)}; };
  const CellRange range{At(3) + 1, (At(7) & kColumnMask) + 1, At(5) + 1, (At(9) & kColumnMask) + 1};
  for (const auto& [nSheet, move] : moves_) {
    const auto followed = SheetOfReference(At(1)) == nSheet ? Followed(range, move) : std::nullopt;
    if (!followed) continue;
    const auto Set = [&](size_t nField, int64_t nValue, unsigned nKept) {
      SetAt(sOut, nData + nArea + nField, static_cast<uint16_t>(static_cast<unsigned>(nValue - 1) | nKept));
    };
    Set(3, followed->nTop, 0);
    Set(5, followed->nBottom, 0);
    Set(7, followed->nLeft, At(7) & ~kColumnMask);
    Set(9, followed->nRight, At(9) & ~kColumnMask);
    return;
  }
}

/// The checksum tells readers that the extended formats still belong to the plain ones.
void clsXlsGlobals::PutXfCrc(const XlsRecord& record, std::string& sOut) const {
  const size_t nData = sOut.size() + 4;
  PutRecord(sOut, record.nId, record.sData);
  if (GetU32(record.sData, kXfCrcValue) != formats_.XfChecksum(nOldXfs_)) return;
  SetAt(sOut, nData + kXfCount, static_cast<uint16_t>(formats_.XfCount()));
  SetAt(sOut, nData + kXfCrcValue, formats_.XfChecksum(formats_.XfCount()));
}

/// The source of a pivot table names its sheet by text: a mark for the own workbook, then the name.
void clsXlsGlobals::PutDconRef(const XlsRecord& record, std::string& sOut) const {
  constexpr size_t kName = 6;
  constexpr char kOwnWorkbook = 2;
  std::string sSource;
  if (GetXlsString(record.sData, kName, 2, sSource) && sSource.size() > 1 && sSource[0] == kOwnWorkbook) {
    for (size_t i = 0; i < sheets_.size(); ++i) {
      if (!EqualNoCase(std::string_view(sSource).substr(1), oldNames_[i]) || sheets_[i].sName == oldNames_[i]) continue;
      std::string sData(record.sData.substr(0, kName));
      PutXlsString(sData, kOwnWorkbook + sheets_[i].sName, 2);
      return PutRecord(sOut, record.nId, sData.append("\0\0", 2));
    }
  }
  PutRecord(sOut, record.nId, record.sData);
}

}  // namespace quillon
