#pragma once
// Lines that belong to a row without being one: wrapped texts, further lines of a record, levels by indentation.

#include <span>

#include "clsHeadingCandidates.h"
#include "clsTableShape.h"
#include "modTidyModel.h"

namespace quillon {

/// Sets Join, Levels and further lines of the table by what stands between its rows.
void FindFurtherLines(const clsReportSample& report, const clsTableShape& shape, std::span<const size_t> rows,
                      const LineOwners& owners, TidyTable& table);

/// Lines of one text further out than all rows become levels. To be called before rows are mended: a title looks like a
/// row whose values lack. The titles, no line otherwise.
std::vector<size_t> FindIndentedTitles(const clsReportSample& report, const clsTableShape& shape,
                                       std::span<const size_t> rows, const LineOwners& owners, TidyTable& table);

}  // namespace quillon
