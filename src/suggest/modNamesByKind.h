#pragma once
// Names for columns that have none in the report, by what they hold.

#include "modFindTables.h"

namespace quillon {

/// The names of the columns of the row and of each further line; those that have none are called "Date", "Time",
/// "Number" or "Text", with a number from the second one on, so that a heading row says where to look and the recipe
/// what to call better.
std::vector<std::vector<std::string>> NamesByKind(const clsReportSample& report, const FoundTable& table);

}  // namespace quillon
