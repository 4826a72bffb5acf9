#pragma once
// Records of several lines without labels, each line at the same distance below the first one.

#include <vector>

#include "modFindTables.h"

namespace quillon {

/// Makes one table of those whose rows stand at one distance below each other, and gives a table the lines below its
/// rows that all of them have. Lines that only some rows have are left: they are wrapped texts most often.
void JoinDistantLines(const clsReportSample& report, std::vector<FoundTable>& tables);

}  // namespace quillon
