#pragma once
// Several records on one line: labels, lists in newspaper columns.

#include "modFindTables.h"

namespace quillon {

/// Parts the places of a table whose columns come again further right: the same kinds and widths at one distance, under
/// the same names; without names only where figures and texts make sure that it is no matrix, or in records of several
/// lines.
void PartSideBySide(const clsReportSample& report, FoundTable& table);

/// Sheets of labels: blocks of as many lines each, with blank lines between, whose texts begin at several places that
/// all lines have. A record is what stands below each other. Lines of the records are marked in taken.
std::vector<FoundTable> FindLabelSheets(const clsReportSample& report, std::vector<bool>& taken);

}  // namespace quillon
