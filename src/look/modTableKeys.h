#pragma once

#include <optional>
#include <string>

#include "clsReportLines.h"

namespace quillon {

/// A text whose first occurrence in the report is on the line meant (an index), so that a recipe can count from it.
struct TableKey {
  std::string sText;
  size_t nLine = 0;
  bool bFar = false;     ///< Not near the table: right only as long as what lies between keeps its length
  bool bInRows = false;  ///< Taken from the table's rows, so that the next report may not have it
};

/// The key for the top of the table from line nFirst to nLast: from just above it down to line nAfter, where the table
/// before it ended, then in its first rows, then far away. Nothing: no text of the report will do.
std::optional<TableKey> FindStartKey(const clsReportLines& report, size_t nFirst, size_t nLast, size_t nAfter);
/// The key for its bottom: below it up to line nBefore, where the next one starts, then in its last rows.
std::optional<TableKey> FindEndKey(const clsReportLines& report, size_t nFirst, size_t nLast, size_t nBefore);

}  // namespace quillon
