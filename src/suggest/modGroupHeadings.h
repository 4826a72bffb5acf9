#pragma once
// Values that stand once above a group of rows.

#include <span>
#include <vector>

#include "clsHeadingCandidates.h"
#include "clsReportSample.h"
#include "modTidyModel.h"

namespace quillon {

/// Headings of a table's groups, in the order of their lines: the same label with changing values, or a line of one
/// shape alone, in front of groups of rows. nNames: the last line of the column names; a label between them and the
/// first row is a heading even if its value never changes. bJoined: lines of one text go on with rows. columns: the
/// table's.
std::vector<TidyPart> FindGroupHeadings(const clsReportSample& report, std::span<const size_t> rows,
                                        const LineOwners& owners, size_t nNames, bool bJoined,
                                        std::span<const ShapeColumn> columns);

}  // namespace quillon
