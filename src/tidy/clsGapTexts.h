#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

enum class GapSide : uint8_t { InFront, Between, Behind };

/// Characters other than blanks that no column took.
struct GapCharacters {
  int64_t lInFront = 0, lBetween = 0, lBehind = 0;
  int64_t lFirstLine = 0;  ///< Of the first of them; 0 if there are none
  int64_t Sum() const { return lInFront + lBetween + lBehind; }
};

/// Tells what is lost in the gaps between columns from what a report prints there in every row, as bars and labels: the
/// same text in three quarters of the rows, and no piece of a value beside it.
class clsGapTexts {
 public:
  /// What stands in a gap of the row at hand, blanks around it aside. lCharacters: how many of it aren't blank.
  /// cBefore, cBehind: what stands right beside it, ' ' for nothing. Only ASCII counts there.
  void Take(size_t nGap, GapSide side, std::string_view sText, int64_t lCharacters, char cBefore, char cBehind,
            int64_t lLine);
  void RowEnds() { ++lRows_; }
  /// Rows that hold nothing in any gap.
  void RowsEnd(int64_t lRows) { lRows_ += lRows; }

  /// What is lost, and what is the same in every row.
  void Settle(GapCharacters& lost, GapCharacters& same) const;

 private:
  struct Piece {
    size_t nGap = 0;
    GapSide side = GapSide::Between;
    std::string sText;
    int64_t lCharacters = 0, lRows = 0, lFirstLine = 0;
  };
  static void Add(GapCharacters& sum, GapSide side, int64_t lCharacters, int64_t lLine);

  GapCharacters lost_;         ///< What is a piece of a value, or one text of too many
  std::vector<Piece> pieces_;  ///< Few for each gap
  int64_t lRows_ = 0;
};

}  // namespace quillon
