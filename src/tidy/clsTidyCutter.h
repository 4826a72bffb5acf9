#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsGapTexts.h"
#include "clsTidyLine.h"
#include "clsTidyReport.h"
#include "modTidyModel.h"

namespace quillon {

/// Cuts the cells of a line by places or by separators, by the columns' own kinds: wide values go on into a gap, and a
/// sign of currency belongs to the number behind it.
class clsTidyCutter {
 public:
  /// Nothing of the part is kept.
  explicit clsTidyCutter(const TidyPart& part);

  /// Records that a line may have, side by side.
  size_t Groups() const { return groups_.empty() ? 1 : groups_.size(); }
  size_t Columns() const { return nColumns_; }

  /// The cells of record nGroup: trimmed, as many as Columns(); views into the line's text.
  void Cut(const clsTidyLine& line, size_t nGroup, std::vector<std::string_view>& cells) const;
  /// The same from a text by separators alone.
  void Split(std::string_view sText, std::vector<std::string_view>& cells) const;
  bool IsSplit() const { return split_ != TidySplit::None; }
  bool IsSplitAtText() const { return split_ == TidySplit::AtText; }
  /// True if a letter or digit stands behind the first column where no column is. The line must have been cut last.
  bool LastCutLeavesText(const clsTidyLine& line) const;
  /// Adds what a row leaves beside the columns of its records, and words that touching ones share. True if
  /// characters are left.
  bool AddLeft(const clsTidyLine& line, int64_t lLine, const std::vector<size_t>& records, clsGapTexts& gaps,
               TidyLeft& left) const;
  /// First and last position of a column (from 0, the last not included; npos: open); both 0 where there are no places.
  std::pair<size_t, size_t> Range(TidyColumn column) const { return ranges_[column]; }
  bool IsNumberColumn(TidyColumn column) const { return column < numbers_.size() && numbers_[column]; }
  /// True for a column that holds text rather than a number or date.
  bool IsTextColumn(TidyColumn column) const { return column < texts_.size() && texts_[column]; }

  static constexpr size_t kOpen = static_cast<size_t>(-1);

 private:
  struct Place {
    TidyColumn column;
    size_t nFrom, nEnd;  ///< From 0, the end not included; kOpen
    size_t nGapEnd;      ///< Where the next column begins; kOpen: none does
    size_t nGapStart;    ///< Behind the last column before it
    bool bGap;           ///< There is a gap behind it
    bool bGapBefore;     ///< And one in front, with a column on its other side
    bool bNumberBehind;  ///< The next column holds numbers
    bool bNumber;        ///< This one does
  };
  struct Span {
    size_t nFrom, nEnd;
  };
  using Group = std::vector<Place>;  ///< By position

  void AddGroup(const std::vector<TidyPlace>& places);
  void SetGaps();
  size_t WideEnd(const clsTidyLine& line, const Place& place) const;
  size_t EarlyStart(const clsTidyLine& line, const Place& place, size_t nTaken) const;
  size_t Spans(const clsTidyLine& line, const Group& group, size_t nTaken, std::vector<Span>& spans) const;
  static bool TakeGap(const clsTidyLine& line, int64_t lLine, size_t nGap, GapSide side, Span gap, clsGapTexts& gaps);
  void AddDivided(const clsTidyLine& line, int64_t lLine, TidyLeft& left) const;
  void FindClear();
  bool IsClear(const clsTidyLine& line) const;
  const std::vector<Span>& SpansOf(const clsTidyLine& line, const std::vector<size_t>& records) const;
  void MoveCurrency(std::vector<std::string_view>& cells) const;

  std::vector<Group> groups_;
  size_t nColumns_ = 1;
  TidySplit split_ = TidySplit::None;
  std::string sSplit_;
  std::vector<bool> numbers_, texts_;
  std::vector<TidyColumn> order_;                  ///< Columns by position, of the first group
  std::vector<std::pair<size_t, size_t>> ranges_;  ///< By column, of the first group
  bool bMovesCurrency_ = false;
  mutable std::vector<Span> spans_, left_;  ///< Kept for their memory

  bool bOrderly_ = false;            ///< One record a line, and no column overlaps another
  std::vector<uint64_t> gapMap_;     ///< By position: no column is there; of orderly ones
  uint64_t nGapBehind_ = 0;          ///< The same of all words behind the map
  std::vector<size_t> touches_;      ///< Where a column begins right behind another
  mutable bool bLastClear_ = false;  ///< The line cut last has nothing in the gaps, so spans_ weren't needed
};

}  // namespace quillon
