#pragma once
// The columns of a tidy table as a hand changes them.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modCutFields.h"
#include "modTidyModel.h"

namespace quillon {

/// True if the columns of its rows stand one behind the other, each once, so that boundaries can be moved.
bool CanMoveColumns(const TidyTable& table);
/// Takes an edit of the columns' places over; needs, names, types and the like go with their columns.
void ChangeColumns(TidyTable& table, const CutChange& change);

/// A column of the output: of the rows, of a heading or of a further line.
enum class ColumnSource : uint8_t { Row, Heading, Further };
struct PointedColumn {
  ColumnSource part = ColumnSource::Row;
  size_t nPart = 0;       ///< Which heading or further line, from 0
  TidyColumn column = 0;  ///< Of that part
};

/// The part that a column belongs to.
TidyPart& PartOf(TidyTable& table, const PointedColumn& column);
void NameColumn(TidyTable& table, const PointedColumn& column, std::string_view sName);
/// Of a date the form is needed.
void TypeColumn(TidyTable& table, const PointedColumn& column, const TidyTyping& typing);
/// An empty cell of the column takes the value above, or no longer. Of rows alone.
void FillColumn(TidyTable& table, TidyColumn column, bool bFill);

}  // namespace quillon
