#pragma once
// Which lines of a cluster are rows, and of how many tables.

#include <span>
#include <vector>

#include "clsReportSample.h"

namespace quillon {

/// The rows of each table that a cluster's lines are. Lines that only look alike, such as titles and totals, are left
/// out.
std::vector<std::vector<size_t>> RowsOfCluster(const clsReportSample& report, const std::vector<size_t>& lines);

}  // namespace quillon
