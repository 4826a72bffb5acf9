#pragma once

#include <vector>

#include "clsWorkbook.h"

namespace quillon {

inline bool Contains(const CellRange& range, int64_t nRow, int64_t nColumn) {
  return nRow >= range.nTop && nRow <= range.nBottom && nColumn >= range.nLeft && nColumn <= range.nRight;
}
inline bool Covers(const CellRange& outer, const CellRange& inner) {
  return outer.nTop <= inner.nTop && outer.nBottom >= inner.nBottom && outer.nLeft <= inner.nLeft &&
         outer.nRight >= inner.nRight;
}
inline bool Meet(const CellRange& a, const CellRange& b) {
  return a.nTop <= b.nBottom && b.nTop <= a.nBottom && a.nLeft <= b.nRight && b.nLeft <= a.nRight;
}

/// Makes the range the smallest one that holds both.
void Include(CellRange& range, const CellRange& other);

/// Ranges of a sheet that are looked up by cell. As long as few of them share rows a look costs the same however many
/// there are.
class clsCellRanges {
 public:
  bool Empty() const { return ranges_.empty(); }
  void Clear() { *this = clsCellRanges(); }
  /// Sort is to follow the last one.
  void Add(const CellRange& range) { ranges_.push_back(range); }
  void Sort();
  /// The range that holds the cell; null if none does.
  const CellRange* At(int64_t nRow, int64_t nColumn) const;
  /// True if the other range takes a part of one and leaves another.
  bool AreCutBy(const CellRange& other) const;
  void DropCovered(const CellRange& outer);

 private:
  std::vector<CellRange> ranges_;  ///< By their top
  std::vector<int64_t> lowest_;    ///< The lowest bottom of each range and those before it
};

}  // namespace quillon
