#include "clsCellRanges.h"

#include <algorithm>

namespace quillon {

void Include(CellRange& range, const CellRange& other) {
  if (other.Empty()) return;
  if (range.Empty()) range = other;
  range.nTop = std::min(range.nTop, other.nTop);
  range.nLeft = std::min(range.nLeft, other.nLeft);
  range.nBottom = std::max(range.nBottom, other.nBottom);
  range.nRight = std::max(range.nRight, other.nRight);
}

void clsCellRanges::Sort() {
  std::stable_sort(ranges_.begin(), ranges_.end(),
                   [](const CellRange& a, const CellRange& b) { return a.nTop < b.nTop; });
  lowest_.clear();
  for (const CellRange& range : ranges_)
    lowest_.push_back(lowest_.empty() ? range.nBottom : std::max(lowest_.back(), range.nBottom));
}

const CellRange* clsCellRanges::At(int64_t nRow, int64_t nColumn) const {
  const auto behind = std::upper_bound(ranges_.begin(), ranges_.end(), nRow,
                                       [](int64_t nWanted, const CellRange& range) { return nWanted < range.nTop; });
  for (auto i = static_cast<size_t>(behind - ranges_.begin()); i > 0 && lowest_[i - 1] >= nRow; --i)
    if (Contains(ranges_[i - 1], nRow, nColumn)) return &ranges_[i - 1];
  return nullptr;
}

bool clsCellRanges::AreCutBy(const CellRange& other) const {
  return std::any_of(ranges_.begin(), ranges_.end(),
                     [&](const CellRange& range) { return Meet(range, other) && !Covers(other, range); });
}

void clsCellRanges::DropCovered(const CellRange& outer) {
  std::erase_if(ranges_, [&](const CellRange& range) { return Covers(outer, range); });
  Sort();
}

}  // namespace quillon
