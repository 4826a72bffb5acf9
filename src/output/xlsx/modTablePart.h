#pragma once
// The part of a table (list object): read, and written with other names and rows.

#include <string>
#include <string_view>
#include <vector>

#include "clsSheetCursor.h"

namespace quillon {

struct XlsxTableColumn {
  std::string sName;
  std::string sFormula;                                       ///< That each of its rows holds; "" for none
  std::string sTotalsLabel, sTotalsFunction, sTotalsFormula;  ///< Of the totals row; "" for none
};

struct XlsxTable {
  std::string sName;
  CellRange range;  ///< Headings and totals included
  bool bHeading = true;
  bool bTotals = false;
  std::vector<XlsxTableColumn> columns;

  int64_t FirstRow() const { return range.nTop + (bHeading ? 1 : 0); }   ///< Of its data
  int64_t LastRow() const { return range.nBottom - (bTotals ? 1 : 0); }  ///< Of its data
};

/// False for what is no table, or has other columns than its range: a cell beside it would be taken for its heading.
bool ReadTablePart(std::string_view sBytes, XlsxTable& table);
/// The part's bytes with the names and the range of the table.
std::string ChangedTablePart(std::string_view sBytes, const XlsxTable& table);
/// What the totals row has in a column, without its "="; "" if that is no formula.
std::string TotalsFormula(const XlsxTable& table, const XlsxTableColumn& column);

}  // namespace quillon
