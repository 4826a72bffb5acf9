#pragma once
// Lines that are titles of groups of a table's rows, though they share edges as rows do.

#include <span>
#include <vector>

#include "clsReportSample.h"

namespace quillon {

/// True for lines of which most are titles of groups of a larger table's rows: they begin with the same word, and rows
/// of that table follow nearly each of them.
bool AreTitlesOf(const clsReportSample& report, std::span<const size_t> lines, std::span<const size_t> rows);
/// True for lines that all begin with the same word, each above rows of its own of several tables: SECTION 1 - STOCK.
/// rows: those of all tables that the lines may be titles of, ascending.
bool AreTitlesOfTables(const clsReportSample& report, std::span<const size_t> lines, std::span<const size_t> rows);

/// Lines without decimals among lines of which most have some, if nearly each of them stands in front of a group: a
/// customer with number and phone above the open items.
std::vector<size_t> TitlesAmong(const clsReportSample& report, std::span<const size_t> lines);

}  // namespace quillon
