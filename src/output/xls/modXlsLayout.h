#pragma once
// The records of a new workbook around its cells, strings and formats.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsXlsFormats.h"

namespace quillon {

/// Number of the font that headings have in a new workbook.
constexpr uint16_t kXlsHeadingFont = 5;

/// The 16 cell formats that every workbook begins with; number kDefaultXf is that of plain cells.
void AddStandardXfs(clsXlsFormats& formats);

/// Globals up to the styles. nActiveSheet counts from 0.
void PutGlobalsHead(std::string& sOut, std::string_view sFont, int nSheets, int nActiveSheet,
                    const clsXlsFormats& formats);
/// BOUNDSHEET of one sheet. Its first four bytes of data take the offset of the sheet's BOF.
void PutBoundSheet(std::string& sOut, std::string_view sName);

/// What stands in front of a sheet's INDEX and between that and its cells.
struct XlsSheetHead {
  std::string sBof;
  std::string sRest;
  size_t nDefColWidth = 0;  ///< Offset of that record in sRest
};
/// Widths in characters by column, 0 for the standard width. DIMENSIONS takes the rows and columns used (ends behind).
XlsSheetHead MakeSheetHead(const std::array<uint8_t, 256>& widths, uint32_t nFirstRow, uint32_t nRowsEnd,
                           unsigned nFirstColumn, unsigned nColumnsEnd);
/// nHeadingRow: rows down to this one, from 1, stay in sight; 0 for none.
std::string MakeSheetTail(bool bActive, int64_t nHeadingRow = 0);

/// Data of a DIMENSIONS record.
std::string DimensionsData(uint32_t nFirstRow, uint32_t nRowsEnd, unsigned nFirstColumn, unsigned nColumnsEnd);
void PutEof(std::string& sOut);

}  // namespace quillon
