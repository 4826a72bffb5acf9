#pragma once
// Totals that are marked with stars: ** CITY, *** STATE, the more of them the wider.

#include <vector>

#include "clsReportSample.h"

namespace quillon {

/// Lines (indexes) that begin with stars and have the sums of the rows above them; none if most don't add up, since
/// stars may mark rows as well.
std::vector<size_t> FindStarTotals(const clsReportSample& report);
/// The stars that a line begins with and a blank ends; 0 if there are none.
size_t StarsInFront(const SampleLine& line);

}  // namespace quillon
