#include "modXlsLayout.h"

#include "modXlsColumns.h"
#include "modXlsText.h"

namespace quillon {

namespace {

using namespace std::string_view_literals;

struct FixedRecord {
  uint16_t nId;
  std::string_view sData;
};

constexpr auto kBeforeFonts = std::to_array<FixedRecord>({
    {xls::kCodePage, "\xB0\x04"sv},
    {xls::kDsf, "\0\0"sv},
});
constexpr auto kProtection = std::to_array<FixedRecord>({
    {xls::kWinProtect, "\0\0"sv},
    {xls::kProtect, "\0\0"sv},
    {xls::kPassword, "\0\0"sv},
    {xls::kProt4Rev, "\0\0"sv},
    {xls::kProt4RevPass, "\0\0"sv},
});
constexpr auto kBehindWindow = std::to_array<FixedRecord>({
    {xls::kBackup, "\0\0"sv},
    {xls::kHideObj, "\0\0"sv},
    {xls::kDateMode, "\0\0"sv},
    {xls::kPrecision, "\1\0"sv},
    {xls::kRefreshAll, "\0\0"sv},
    {xls::kBookBool, "\0\0"sv},
});
/// Calculation and printing as a spreadsheet has them by default.
constexpr auto kSheetSettings = std::to_array<FixedRecord>({
    {xls::kCalcMode, "\1\0"sv},
    {xls::kCalcCount, "\x64\0"sv},
    {xls::kRefMode, "\1\0"sv},
    {xls::kIteration, "\0\0"sv},
    {xls::kDelta, "\xFC\xA9\xF1\xD2\x4D\x62\x50\x3F"sv},
    {xls::kSaveRecalc, "\1\0"sv},
    {xls::kPrintHeaders, "\0\0"sv},
    {xls::kPrintGridlines, "\0\0"sv},
    {xls::kGridSet, "\1\0"sv},
    {xls::kGuts, "\0\0\0\0\0\0\0\0"sv},
    {xls::kDefaultRowHeight, "\0\0\xFF\0"sv},
    {xls::kWsBool, "\xC1\x04"sv},
    {xls::kHeader, ""sv},
    {xls::kFooter, ""sv},
    {xls::kHCenter, "\0\0"sv},
    {xls::kVCenter, "\0\0"sv},
});

void PutAll(std::string& sOut, const auto& records) {
  for (const FixedRecord& record : records) PutRecord(sOut, record.nId, record.sData);
}

void PutBof(std::string& sOut, uint16_t nKind) {
  std::string sData;
  PutU16(sData, xls::kBiff8);
  PutU16(sData, nKind);
  PutU16(sData, 0x1FD2);  // build and year of a version that all readers know
  PutU16(sData, 0x07CD);
  PutU32(sData, 0x000080C1);
  PutU32(sData, 0x00000406);
  PutRecord(sOut, xls::kBof, sData);
}

void PutWriteAccess(std::string& sOut) {
  constexpr size_t kBytes = 112;
  std::string sData;
  PutXlsString(sData, xls::kOwnName, 2);
  sData.resize(kBytes, ' ');
  PutRecord(sOut, xls::kWriteAccess, sData);
}

void PutTabIds(std::string& sOut, int nSheets) {
  std::string sData;
  for (int i = 1; i <= nSheets; ++i) PutU16(sData, static_cast<unsigned>(i));
  PutRecord(sOut, xls::kTabId, sData);
}

void PutWindow1(std::string& sOut, int nActiveSheet) {
  std::string sData;
  for (const unsigned nValue : {360U, 270U, 14940U, 9150U, 0x38U, static_cast<unsigned>(nActiveSheet), 0U, 1U, 600U})
    PutU16(sData, nValue);
  PutRecord(sOut, xls::kWindow1, sData);
}

void PutFont(std::string& sOut, std::string_view sName, unsigned nWeight) {
  std::string sData;
  for (const unsigned nValue : {200U, 0U, 0x7FFFU, nWeight, 0U, 0x0300U, 0U}) PutU16(sData, nValue);
  PutXlsString(sData, sName, 1);
  PutRecord(sOut, xls::kFont, sData);
}

void PutSetup(std::string& sOut) {
  std::string sData;
  // No paper chosen: the printer's own.
  for (const unsigned nValue : {0U, 100U, 1U, 1U, 1U, 0x04U, 600U, 600U}) PutU16(sData, nValue);
  Put(sData, 0.5);
  Put(sData, 0.5);
  PutU16(sData, 1);
  PutRecord(sOut, xls::kSetup, sData);
}

void PutColumn(std::string& sOut, unsigned nColumn, unsigned nWidth) {
  std::string sData;
  for (const unsigned nValue : {nColumn, nColumn, XlsColumnWidth(nWidth), unsigned{xls::kDefaultXf}, 0U, 0U})
    PutU16(sData, nValue);
  PutRecord(sOut, xls::kColInfo, sData);
}

std::string XfData(unsigned nFont, unsigned nKind, unsigned nUsed) {
  std::string sData;
  for (const unsigned nValue : {nFont, 0U, nKind, 0x20U, nUsed << 8, 0U, 0U, 0U, 0U, 0x20C0U}) PutU16(sData, nValue);
  return sData;
}

}  // namespace

void AddStandardXfs(clsXlsFormats& formats) {
  constexpr unsigned kStyle = 0xFFF5, kCell = 0x0001;
  constexpr std::array<unsigned, 15> kFonts = {0, 1, 1, 2, 2};
  for (size_t i = 0; i < kFonts.size(); ++i) formats.AddExistingXf(XfData(kFonts[i], kStyle, i == 0 ? 0 : 0xF4));
  formats.AddExistingXf(XfData(0, kCell, 0));
}

void PutGlobalsHead(std::string& sOut, std::string_view sFont, int nSheets, int nActiveSheet,
                    const clsXlsFormats& formats) {
  PutBof(sOut, xls::kGlobals);
  PutRecord(sOut, xls::kInterfaceHdr, "\xB0\x04"sv);
  PutRecord(sOut, xls::kMms, "\0\0"sv);
  PutRecord(sOut, xls::kInterfaceEnd, {});
  PutWriteAccess(sOut);
  PutAll(sOut, kBeforeFonts);
  PutTabIds(sOut, nSheets);
  PutAll(sOut, kProtection);
  PutWindow1(sOut, nActiveSheet);
  PutAll(sOut, kBehindWindow);
  constexpr unsigned kNormal = 400, kBold = 700;
  for (int i = 0; i < 4; ++i) PutFont(sOut, sFont, kNormal);
  if (formats.HasHeadings()) PutFont(sOut, sFont, kBold);  // No font has the number 4.
  sOut.append(formats.AddedFormats());
  for (size_t i = 0; i <= xls::kDefaultXf; ++i) PutRecord(sOut, xls::kXf, formats.XfData(i));
  sOut.append(formats.AddedXfs());
  PutRecord(sOut, xls::kStyle, "\0\x80\0\xFF"sv);
  PutRecord(sOut, xls::kUsesElfs, "\0\0"sv);
}

void PutBoundSheet(std::string& sOut, std::string_view sName) {
  std::string sData(6, '\0');
  PutXlsString(sData, sName, 1);
  PutRecord(sOut, xls::kBoundSheet, sData);
}

XlsSheetHead MakeSheetHead(const std::array<uint8_t, 256>& widths, uint32_t nFirstRow, uint32_t nRowsEnd,
                           unsigned nFirstColumn, unsigned nColumnsEnd) {
  XlsSheetHead head;
  PutBof(head.sBof, xls::kWorksheet);
  PutAll(head.sRest, kSheetSettings);
  PutSetup(head.sRest);
  head.nDefColWidth = head.sRest.size();
  PutRecord(head.sRest, xls::kDefColWidth, "\x08\0"sv);
  for (unsigned i = 0; i < widths.size(); ++i)
    if (widths[i] != 0) PutColumn(head.sRest, i, widths[i]);
  PutRecord(head.sRest, xls::kDimensions, DimensionsData(nFirstRow, nRowsEnd, nFirstColumn, nColumnsEnd));
  return head;
}

std::string DimensionsData(uint32_t nFirstRow, uint32_t nRowsEnd, unsigned nFirstColumn, unsigned nColumnsEnd) {
  std::string sData;
  PutU32(sData, nFirstRow);
  PutU32(sData, nRowsEnd);
  PutU16(sData, nFirstColumn);
  PutU16(sData, nColumnsEnd);
  PutU16(sData, 0);
  return sData;
}

std::string MakeSheetTail(bool bActive, int64_t nHeadingRow) {
  constexpr unsigned kShown = 0x00B6, kSelected = 0x0600, kFrozen = 0x0108, kBelow = 2;
  std::string sTail, sData;
  PutU16(sData, kShown | (bActive ? kSelected : 0) | (nHeadingRow > 0 ? kFrozen : 0));
  for (const unsigned nValue : {0U, 0U, 0x40U, 0U, 0U, 0U, 0U, 0U}) PutU16(sData, nValue);
  PutRecord(sTail, xls::kWindow2, sData);
  if (nHeadingRow > 0) {
    sData.clear();
    for (const unsigned nValue :
         {0U, static_cast<unsigned>(nHeadingRow), static_cast<unsigned>(nHeadingRow), 0U, kBelow})
      PutU16(sData, nValue);
    PutRecord(sTail, xls::kPane, sData);
    sData = "\2\0\0\0\0\0\0\1\0\0\0\0\0\0\0"sv;
    for (const size_t nOffset : {size_t{1}, size_t{9}, size_t{11}})
      SetAt(sData, nOffset, static_cast<uint16_t>(nHeadingRow));
    PutRecord(sTail, xls::kSelection, sData);
  }
  PutRecord(sTail, xls::kSelection, "\3\0\0\0\0\0\0\1\0\0\0\0\0\0\0"sv);
  PutEof(sTail);
  return sTail;
}

void PutEof(std::string& sOut) {
  PutRecord(sOut, xls::kEof, {});
}

}  // namespace quillon
