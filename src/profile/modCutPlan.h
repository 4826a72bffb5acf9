#pragma once
// How a row is cut, worked out once per file from the options of its columns.

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsCodePage.h"

namespace quillon {

/// Options of one input column, as the engine holds them between conversions.
struct CellwrightColumn {
  static constexpr unsigned char kNoPad = 255;  ///< The pad character that trims nothing
  static constexpr int32_t kNoOrder = std::numeric_limits<int32_t>::min();

  int32_t lCount = 0;  ///< Characters; negative: cut but left out; 0: never set
  unsigned char inputPad = kNoPad;
  int32_t lInputSide = 0;     ///< Where trimming starts: 1 left, 2 right; anything else trims nothing
  int32_t lOrder = kNoOrder;  ///< Place in the output; never set: the column's own number stands for it
  unsigned char pad = ' ';    ///< Pad and side of fixed-width output, which is held and has no effect on CSV and sheets
  int32_t lSide = 0;
  int32_t lOutputWidth = 0;
};

/// First cell to gather: rows above and input columns before it are left out. Both from 1.
struct StartCell {
  int64_t nRow = 1;
  int32_t nColumn = 1;
};
/// "B4" in either case, blanks around it and "$" in front of its parts allowed; columns up to XFD. False, leaving A1,
/// for anything else.
bool ParseStartCell(std::string_view sText, StartCell& cell);

enum class TrimSide : uint8_t { None, Left, Right };

/// One column of the output.
struct PlanColumn {
  size_t nInput = 0;   ///< Index of the input column, and of its first edge
  int64_t nStart = 0;  ///< First character, from 0
  int64_t nCount = 0;  ///< Characters
  TrimSide side = TrimSide::None;
  std::string sPad;  ///< The pad character in the rows' encoding
};

struct CutPlan {
  static constexpr int64_t kWholeLine = std::numeric_limits<int64_t>::max();

  std::vector<PlanColumn> columns;  ///< In output order
  std::vector<int64_t> edges{0};    ///< Character offsets of the input columns: column i is edges[i] up to edges[i + 1]
};

/// Counts of -1 at the end close the list; with none left, or without a count for column 1, a line is one column.
/// Columns before nFirstColumn (from 1, in input order) are left out; the others stand by their order, equal ones as in
/// the input. The page is that of the rows; UTF-8 for what is no single-byte text.
CutPlan MakeCutPlan(std::span<const CellwrightColumn> columns, int32_t nFirstColumn, const clsCodePage& page);

}  // namespace quillon
