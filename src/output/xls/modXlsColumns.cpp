#include "modXlsColumns.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace quillon {

namespace {

constexpr size_t kColumns = 256;
constexpr unsigned kDefaultChars = 8;

struct Column {
  bool bThere = false;
  unsigned nWidth = 0;
  uint16_t nXf = 0, nFlags = 0;
  bool operator==(const Column&) const = default;
};
using Columns = std::array<Column, kColumns>;

void TakeColumns(std::string_view sData, Columns& columns) {
  for (size_t i = GetU16(sData, 0); i <= GetU16(sData, 2) && i < columns.size(); ++i)
    columns[i] = {true, GetU16(sData, 4), GetU16(sData, 6), GetU16(sData, 8)};
}

/// A width of our making, or one that another program has saved of ours, is nobody's choice.
bool IsOurs(unsigned nWidth) {
  constexpr int kTolerance = 16;
  return std::abs(static_cast<int>(nWidth % 256) - static_cast<int>(XlsColumnWidth(0))) <= kTolerance;
}

/// True if a column is to be of another width.
bool Widen(Columns& columns, std::span<const uint8_t> longest, unsigned nDefault, bool bAnew, uint16_t nXf) {
  constexpr unsigned kSame = 16;
  bool bChanged = false;
  for (size_t i = 0; i < longest.size() && i < columns.size(); ++i) {
    Column& column = columns[i];
    if (longest[i] == 0) continue;
    const unsigned nWanted = XlsColumnWidth(std::max<unsigned>(longest[i], kDefaultChars));
    const unsigned nHeld = column.bThere ? column.nWidth : nDefault;
    const bool bUsers = column.bThere && !IsOurs(column.nWidth) && column.nWidth != nDefault;
    const bool bGrows = longest[i] > kDefaultChars && nWanted > nHeld + kSame;
    if (bAnew ? nWanted == nHeld || (!column.bThere && !bGrows) : bUsers || !bGrows) continue;
    column = {true, nWanted, column.bThere ? column.nXf : nXf, column.nFlags};
    bChanged = true;
  }
  return bChanged;
}

void PutColumns(const Columns& columns, std::string& sOut) {
  for (size_t i = 0; i < columns.size();) {
    size_t nNext = i + 1;
    while (nNext < columns.size() && columns[nNext] == columns[i]) ++nNext;
    if (columns[i].bThere) {
      std::string sData;
      for (const size_t nValue :
           {i, nNext - 1, size_t{columns[i].nWidth}, size_t{columns[i].nXf}, size_t{columns[i].nFlags}, size_t{0}})
        PutU16(sData, static_cast<unsigned>(nValue));
      PutRecord(sOut, xls::kColInfo, sData);
    }
    i = nNext;
  }
}

}  // namespace

std::string WithColumnWidths(std::string_view sHead, std::span<const uint8_t> longest, bool bAnew, uint16_t nXf) {
  Columns columns;
  unsigned nDefault = XlsColumnWidth(kDefaultChars);
  size_t nPlace = sHead.size();
  bool bPlaced = false;
  XlsRecord record;
  for (clsXlsRecordReader reader(sHead, 0); reader.Next(record);) {
    if (record.nId == xls::kColInfo) TakeColumns(record.sData, columns);
    if (record.nId == xls::kDefColWidth) nDefault = XlsColumnWidth(GetU16(record.sData, 0));
    // They stand behind the default width, at the latest before the sheet's extent.
    const bool bHere = record.nId == xls::kColInfo || record.nId == xls::kDimensions;
    if (bPlaced || (!bHere && record.nId != xls::kDefColWidth)) continue;
    nPlace = bHere ? record.nOffset : record.End();
    bPlaced = bHere;
  }
  // Some programs state every column: the last one is of the default width.
  if (columns.back().bThere) nDefault = columns.back().nWidth;
  if (!Widen(columns, longest, nDefault, bAnew, nXf)) return std::string(sHead);
  std::string sOut;
  for (clsXlsRecordReader reader(sHead, 0); reader.Next(record);) {
    if (record.nOffset == nPlace) PutColumns(columns, sOut);
    if (record.nId != xls::kColInfo) PutRecord(sOut, record.nId, record.sData);
  }
  if (nPlace == sHead.size()) PutColumns(columns, sOut);
  return sOut;
}

}  // namespace quillon
