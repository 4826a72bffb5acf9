#pragma once
// Tables whose columns stand at no places: values parted by a character, by blanks, or by gaps of several blanks.

#include <vector>

#include "modFindTables.h"

namespace quillon {

/// Tables that Split= takes and places don't. What stands at common places is left alone: there values may lack and
/// texts may have blanks. Lines of the tables are marked in taken, which has as many entries as the sample has lines.
std::vector<FoundTable> FindSplitTables(const clsReportSample& report, std::vector<bool>& taken);

}  // namespace quillon
