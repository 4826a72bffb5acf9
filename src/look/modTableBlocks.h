#pragma once
// Where the tables of an unknown report lie, and how they are cut.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsReportLines.h"

namespace quillon {

/// A stretch of lines that looks like a table. Lines are indexes of the report's lines.
struct TableBlock {
  size_t nFirst = 0, nLast = 0;
  std::vector<size_t> rows;  ///< Those of its lines that have the shape of rows, ascending; the others are captions
};

/// Stretches of consecutive lines whose figures and words stand under each other: rows, with captions between them that
/// stay inside one column. Blank lines, rules and page furniture end a stretch. One or two rows make a stretch if there
/// is a heading over most of their fields.
std::vector<TableBlock> FindTableBlocks(const clsReportLines& report);

/// The pattern of the heading above a block, the lines from nAfter on looked at; "" if there is none.
std::string HeadingOfBlock(const clsReportLines& report, const TableBlock& block, std::string_view sRuler,
                           size_t nAfter);
/// True if most rows of the other block would be rows of this one.
bool HasShapeOf(const clsReportLines& report, const TableBlock& block, const TableBlock& other);

/// The ruler of blocks of one kind, worked out from the columns that are blank in all of their rows; "" if that gives
/// fewer than two columns. Blanks between columns go where a longer text or a larger number would need them.
std::string RulerOfBlocks(const clsReportLines& report, std::span<const TableBlock> parts);
int32_t ColumnsOfRuler(std::string_view sRuler);

}  // namespace quillon
