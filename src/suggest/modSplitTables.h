#pragma once
// Tables whose columns stand at no places: values parted by a character, by blanks, or by gaps of several blanks.

#include <vector>

#include "modFindTables.h"

namespace quillon {

/// Tables whose values a comma, a bar or the like parts. Lines of the tables are marked in taken, which has as many
/// entries as the sample has lines.
std::vector<FoundTable> FindMarkedTables(const clsReportSample& report, std::vector<bool>& taken);
/// Adds tables whose values blanks or gaps part, in place of those that tell fewer columns of figures in the same
/// lines. What stands at common places is left alone: there values may lack and texts may have blanks.
void FindSplitTables(const clsReportSample& report, std::vector<bool>& taken, std::vector<FoundTable>& tables);

}  // namespace quillon
