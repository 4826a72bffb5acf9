#pragma once
// What covered exactly the data of a sheet covers exactly the data that took its place.

#include <algorithm>
#include <optional>

#include "clsCellRanges.h"

namespace quillon {

/// Where the data of a sheet stood when the file was opened, and where it stands now.
struct DataMove {
  CellRange before, now;
};

/// The range as it is to be if it covered the old rows, with or without the first of them, in some or all columns of
/// the data; nothing if it didn't or stays as it is.
inline std::optional<CellRange> Followed(const CellRange& range, const DataMove& move) {
  const CellRange &before = move.before, &now = move.now;
  const int64_t nBelow = range.nTop - before.nTop;
  const bool bCovers = range.nBottom == before.nBottom && (nBelow == 0 || nBelow == 1) && range.nBottom > before.nTop &&
                       range.nLeft >= before.nLeft && range.nRight <= before.nRight;
  if (!bCovers || now.Empty()) return std::nullopt;
  const bool bAllColumns = range.nLeft == before.nLeft && range.nRight == before.nRight;
  CellRange followed = range;
  followed.nTop = now.nTop + nBelow;
  followed.nBottom = std::max(now.nBottom, followed.nTop);
  if (bAllColumns) {
    followed.nLeft = now.nLeft;
    followed.nRight = now.nRight;
  }
  const bool bSame = Covers(followed, range) && Covers(range, followed);
  return bSame ? std::nullopt : std::optional(followed);
}

}  // namespace quillon
