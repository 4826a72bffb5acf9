#pragma once
// Lines of several values in front of groups of rows: an order with its number, customer and date above its items.

#include <optional>
#include <set>
#include <span>

#include "clsHeadingCandidates.h"
#include "modTidyModel.h"

namespace quillon {

/// The heading that such lines are, its columns named by what is printed above the first of them. None if the groups
/// have no such lines, if others look like them, or if one of them is in taken.
std::optional<TidyPart> FindRecordHeading(const clsReportSample& report, std::span<const size_t> rows,
                                          const LineOwners& owners, const std::set<size_t>& taken);

}  // namespace quillon
