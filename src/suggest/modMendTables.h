#pragma once
// Holds what a recipe would take against the rows that were found, and mends it.

#include "modFindTables.h"

namespace quillon {

/// Lines (indexes of the sample) that the table takes as rows when it is run over the sample.
std::vector<size_t> RowsTaken(const clsReportSample& report, const TidyTable& table);

/// Loosens needs that rows don't meet, drops total lines, and gives the table texts where it begins and ends if lines
/// elsewhere would be taken for rows. What it then takes are the table's rows.
void MendTable(const clsReportSample& report, const LineOwners& owners, uint32_t lOwner, FoundTable& table);

}  // namespace quillon
