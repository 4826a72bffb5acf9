#pragma once
// Columns of digits that touch, as in files that are made for programs.

#include "modTokenSplits.h"

namespace quillon {

/// A date as YYYYMMDD inside of digits that all rows have, in front of other digits or behind them.
std::optional<TokenSplit> SplitAtPlainDate(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst,
                                           int32_t lLast);

}  // namespace quillon
