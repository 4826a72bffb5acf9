#pragma once
// What must be known of an existing sheet before it is written to.

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "clsSheetCursor.h"

namespace quillon {

/// A formula that other cells share.
struct SharedFormula {
  std::string sFormula;
  CellPlace master;
  CellRange range;
};

struct SheetFacts {
  SheetContent content;
  CellRange filled;         ///< Cells with a value or formula
  bool bProtected = false;  ///< Its cells are
  CellRange filter;         ///< Of the sheet's own filter
  clsCellRanges merged;     ///< No more than kMostMerged: a look at them is to stay quick
  size_t nMerged = 0;
  static constexpr size_t kMostMerged = 2000;
  clsCellRanges arrays;                                ///< Array formulas and data tables of more than one cell
  std::unordered_map<uint32_t, SharedFormula> shared;  ///< By "si", the first of each
  std::vector<uint32_t> columnStyles;                  ///< By column - 1; empty if no column has a format

  bool HasFormulas() const { return content.nFormulas > 0; }
  uint32_t StyleOfColumn(int nColumn) const {
    return columnStyles.empty() ? 0 : columnStyles[static_cast<size_t>(nColumn) - 1];
  }
  /// True if the cell is part of an array formula that none of the cleared ranges has taken away.
  bool InArray(int64_t nRow, int nColumn, const std::vector<CellRange>& cleared) const;
};

/// Reads a whole sheet part. False if it is damaged: a spreadsheet would have to repair it.
bool ReadSheetFacts(clsXmlScanner& scanner, SheetFacts& facts);

}  // namespace quillon
