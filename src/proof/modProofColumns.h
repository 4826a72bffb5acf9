#pragma once
// The columns of tidy tables and their numbers, as the proof takes them.

#include <string_view>
#include <vector>

#include "clsTidyReport.h"
#include "modLineNumbers.h"

namespace quillon {

/// Columns of this kind may hold numbers that add up.
bool MaySum(const TidyTyping& typing);

std::vector<ProofColumn> ProofColumnsOf(const std::vector<TidyColumnInfo>& columns);

/// Characters from the beginning of a column to that of the next; without end where columns overlap or none follows.
size_t RoomOf(const std::vector<TidyColumnInfo>& columns, size_t nColumn);

/// A number in plain form, "-1234.50". None with bScaled if no integer of 64 bits holds it.
TidyNumber PlainNumber(std::string_view sPlain);

}  // namespace quillon
