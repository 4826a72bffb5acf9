#pragma once
// Texts that tell where a table begins and ends.

#include <vector>

#include "clsHeadingCandidates.h"
#include "clsReportSample.h"
#include "modTidyModel.h"

namespace quillon {

/// Words of lines that would be taken for rows and call themselves totals, unless rows hold them, too.
void DropTotals(const clsReportSample& report, const std::vector<size_t>& wrong, const std::vector<size_t>& rows,
                TidyTable& table);
/// Words of lines with figures between the rows, such as balances that are carried over pages: they are to be joined to
/// no row.
void DropBalances(const clsReportSample& report, const LineOwners& owners, const std::vector<size_t>& rows,
                  TidyTable& table);
/// Start and end texts that shut out lines elsewhere; none where that can't be had from words above and below.
void SetStretch(const clsReportSample& report, const LineOwners& owners, const std::vector<size_t>& wrong,
                const std::vector<size_t>& rows, const std::vector<size_t>& headingLines, TidyTable& table);

}  // namespace quillon
