#pragma once
// What a recipe says of columns: where they stand, what they must hold, their types.

#include <span>

#include "clsTableShape.h"
#include "modRowKinds.h"
#include "modTidyModel.h"

namespace quillon {

/// Places, needs, types and blank marks of a table, from its rows. Names are left empty.
TidyPart TidyOfShape(const clsReportSample& report, const clsTableShape& shape, std::span<const size_t> rows);
/// Needs, types and blank marks of a table whose rows are parted into these cells, as many in each row.
TidyPart TidyOfCells(const clsReportSample& report, const std::vector<std::vector<std::u32string_view>>& rows);
/// The type of a column with these cells; texts that mean nothing is there are added to blanks.
TidyTyping TypingOfValues(const clsReportSample& report, std::span<const std::u32string_view> cells,
                          std::vector<std::string>& blanks);
/// Columns at the front that are blank in rows below the first of a group: printed once, meant for all.
std::vector<TidyColumn> FilledFromAbove(const clsReportSample& report, const clsTableShape& shape,
                                        std::span<const size_t> rows);

}  // namespace quillon
