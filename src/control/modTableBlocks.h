#pragma once
// Where the tables of an unknown report lie, and how they are cut.

#include <cstdint>
#include <string>
#include <vector>

#include "clsReportLines.h"

namespace quillon {

/// A stretch of lines that looks like a table. Lines are indexes of the report's lines.
struct TableBlock {
  size_t nFirst = 0, nLast = 0;
  std::vector<size_t> rows;  ///< Those of its lines that have the shape of rows, ascending; the others are captions
};

/// Stretches of consecutive lines whose figures and words stand under each other: rows, with captions between them that
/// stay inside one column. Blank lines, rules and page furniture end a stretch.
std::vector<TableBlock> FindTableBlocks(const clsReportLines& report);

/// The ruler of a block, worked out from the columns that are blank in all of its rows; "" if that gives fewer than two
/// columns. Blanks between columns go where a longer text or a larger number would need them.
std::string RulerOfBlock(const clsReportLines& report, const TableBlock& block);

}  // namespace quillon
