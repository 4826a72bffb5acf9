#pragma once
// The columns of tidy tables, as the proof takes them.

#include <vector>

#include "clsTidyReport.h"
#include "modLineNumbers.h"

namespace quillon {

/// Columns of this kind may hold numbers that add up.
bool MaySum(const TidyTyping& typing);

std::vector<ProofColumn> ProofColumnsOf(const std::vector<TidyColumnInfo>& columns);

/// Characters from the beginning of a column to that of the next; without end where columns overlap or none follows.
size_t RoomOf(const std::vector<TidyColumnInfo>& columns, size_t nColumn);

}  // namespace quillon
