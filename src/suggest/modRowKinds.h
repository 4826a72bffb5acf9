#pragma once
// Which lines of a cluster are rows, by the kinds of values in its columns.

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "clsTableShape.h"

namespace quillon {

/// What the cells of one column hold.
struct ColumnKinds {
  std::array<size_t, 6> counts{};                       ///< By FieldKind
  std::map<std::u32string, size_t, std::less<>> marks;  ///< Short texts that come again: M, T, ---, N/A
  size_t nRows = 0;
  size_t nFigures = 0;     ///< Cells that hold a digit
  size_t nCapitals = 0;    ///< Cells with capital letters alone
  size_t nBlankMarks = 0;  ///< Cells that say that nothing is there

  void Add(std::u32string_view sCell);
  size_t Count(FieldKind kind) const { return counts[static_cast<size_t>(kind)]; }
  size_t Filled() const { return nRows - Count(FieldKind::Blank); }
  double Share(FieldKind kind) const {
    return nRows == 0 ? 0 : static_cast<double>(Count(kind)) / static_cast<double>(nRows);
  }
  /// Digits and Number are one usual kind here.
  bool IsNumeric() const;
  bool IsDate() const;
  /// A mark: short, and seen more than once beside the usual values.
  bool IsMark(std::u32string_view sCell) const;
  /// Whether a cell is what the column usually holds.
  bool IsUsual(std::u32string_view sCell) const;
};

std::vector<ColumnKinds> KindsOfRows(const clsReportSample& report, const clsTableShape& shape,
                                     std::span<const size_t> rows);
/// The rows whose cells are what their columns usually hold: three quarters of them, and all of them in a line that
/// calls itself a total.
std::vector<size_t> RowsOfKinds(const clsReportSample& report, const clsTableShape& shape,
                                const std::vector<ColumnKinds>& kinds, std::span<const size_t> rows);
/// Whether a row's cells are the names of the columns: words without a digit where nearly all others hold one, or
/// capitals where the others have small letters.
bool AreNamesOfKinds(const std::vector<ColumnKinds>& kinds, const std::vector<std::u32string_view>& cells);
/// A text that means nothing is there: ---, *, N/A.
bool IsBlankMark(std::u32string_view sCell);
bool SaysTotal(std::u32string_view sLine);
bool SaysTotal(std::string_view sUtf8);
/// Words that heads and feet of pages hold.
bool SaysPage(std::u32string_view sText);

}  // namespace quillon
