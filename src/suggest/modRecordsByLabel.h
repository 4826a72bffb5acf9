#pragma once
// Forms: records whose lines begin with labels, as in "Name: Dietz" or "CITY ..... : Oslo     POSTED: 1 May".

#include <vector>

#include "modFindTables.h"

namespace quillon {

/// Tables of one row a record. A label that comes once a record, and first, begins it; the others may lack. Labels
/// that stand further right in a line are found where they have the same place in all such lines. Lines of the records
/// are marked in taken, which has as many entries as the sample has lines.
std::vector<FoundTable> FindRecordsByLabel(const clsReportSample& report, std::vector<bool>& taken);

/// Lines of one label and one value that come again, never two below each other: they are no rows, though they share
/// their edges.
std::vector<size_t> FindLoneLabels(const clsReportSample& report, const std::vector<bool>& taken);

/// Gives a table the lines with labels that stand below its rows. False if there are none, or too much else.
bool AttachLabelledLines(const clsReportSample& report, const std::vector<bool>& taken, FoundTable& table);

/// Labels with one value each, one below the other: a table of two columns, if they are most of the
/// report; elsewhere they are headings.
std::vector<FoundTable> FindLabelLists(const clsReportSample& report, std::vector<bool>& taken);

}  // namespace quillon
