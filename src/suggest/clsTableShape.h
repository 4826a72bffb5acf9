#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "clsReportSample.h"
#include "modCellKinds.h"
#include "modColumnParts.h"

namespace quillon {

/// A column of a table. Places count from 0.
struct ShapeColumn {
  int32_t lFirst = 0, lLast = 0;            ///< Where its values were seen
  int32_t lPlaceFirst = 0, lPlaceLast = 0;  ///< With the room that longer values would take
  bool bNumber = false;                     ///< Most of its values are numbers
  bool bFigures = false;                    ///< Most of its values hold a digit
};

/// The columns of rows that have their edges in common.
class clsTableShape {
 public:
  /// Works them out from the places that are blank in all rows, or in nearly all beside a common edge.
  /// headingLines: lines with the names of the columns, whose ends tell columns that touch in many rows.
  clsTableShape(const clsReportSample& report, std::span<const size_t> rows, std::span<const size_t> headingLines = {});

  const std::vector<ShapeColumn>& Columns() const { return columns_; }
  /// The cells of a line, as many as there are columns, blanks around them dropped.
  void Cut(std::u32string_view sLine, std::vector<std::u32string_view>& cells) const;

 private:
  using Parts = std::vector<ColumnPart>;

  void CountPlaces();
  void FindPartingPlaces();
  Parts PartsOfPlaces() const;
  void SplitParts(Parts& parts) const;
  bool CutsNumber(int32_t lPlace) const;
  bool CutsWords(int32_t lPlace, const ColumnPart& right) const;
  bool SplitAfterDigits(const ColumnPart& part, Parts& into) const;
  bool GoesOnFrom(const ColumnPart& left, const ColumnPart& right) const;
  bool SplitAtTokens(const ColumnPart& part, Parts& into) const;
  bool SplitPart(const ColumnPart& part, Parts& into) const;
  void SetPlaces();
  void StopAtPartingPlaces(ShapeColumn& column) const;

  const clsReportSample& report_;
  std::vector<size_t> rows_;
  std::span<const LineMark> names_;  ///< Words of the names directly above the rows
  std::vector<LineMark> allNames_;   ///< Words of all lines of names
  std::set<int32_t> nameEnds_;       ///< Where the words of the names end
  std::vector<uint32_t> filled_;     ///< Rows that aren't blank at each place
  std::vector<bool> parting_;        ///< Places that hold a bar or the like to part columns
  bool bByMarks_ = false;            ///< Commas or bars part all columns
  int32_t lEquals_ = -1;             ///< Place of an equals sign that all rows have: a label stands in front of it
  std::vector<ShapeColumn> columns_;
};

}  // namespace quillon
