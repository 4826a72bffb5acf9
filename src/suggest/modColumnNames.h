#pragma once
// The names that are printed above the columns of a table.

#include <string>
#include <vector>

#include "clsTableShape.h"

namespace quillon {

/// The lines that hold the column names of the rows from line nRow (an index) on, top down; none if there are none.
/// Lines from nAfter on are looked at.
std::vector<size_t> HeadingLines(const clsReportSample& report, const clsTableShape& shape, size_t nRow, size_t nAfter);
/// One name for each column, "" where nothing stands above it.
std::vector<std::u32string> NamesOfColumns(const clsReportSample& report, const clsTableShape& shape,
                                           const std::vector<size_t>& headingLines);

}  // namespace quillon
