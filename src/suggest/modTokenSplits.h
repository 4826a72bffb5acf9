#pragma once
// Columns that no blank place parts, told by the words of their rows.

#include <cstdint>
#include <optional>
#include <span>

#include "clsReportSample.h"

namespace quillon {

/// Where a stretch of places is two columns. Places between the two belong to neither.
struct TokenSplit {
  int32_t lLeftLast = 0, lRightFirst = 0;
};

/// A text and a number behind it: in most rows a number ends at one place, with a blank in front of it.
std::optional<TokenSplit> SplitAtNumber(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst,
                                        int32_t lLast);
/// Values of one form at one place in all rows, with another value directly behind: 07/03/24TERM, 18.82-3285.89,
/// 132.24-P.
std::optional<TokenSplit> SplitBehindForm(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst,
                                          int32_t lLast);
/// Whether the texts at the right are nothing but further words of those at the left.
bool IsTail(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst, int32_t lLast,
            int32_t lRightFirst, int32_t lRightLast);

}  // namespace quillon
