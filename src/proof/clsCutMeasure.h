#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsGapTexts.h"
#include "modProofModel.h"

namespace quillon {

CharacterLoss LossOf(const GapCharacters& lost, const GapCharacters& same);

/// Measures rows, one way for all who cut.
class clsCutMeasure {
 public:
  /// Where columns touch, values may. They are among the cuts of a row all the same, for who marks them.
  enum class Touching : uint8_t { IsCut, IsNone };
  /// The places of the columns in any order; those that are none are passed over.
  explicit clsCutMeasure(std::span<const TidyPlace> places, Touching touching = Touching::IsCut);

  /// A row whose bytes are its characters. What is returned counts bars and labels, too: only all rows tell them.
  /// cBlank: a second byte that is a blank, such as the no-break space of a page.
  const CharacterLoss& Bytes(std::string_view sRow, int64_t lLine, char cBlank = ' ');
  /// A row of UTF-8.
  const CharacterLoss& Text(std::string_view sRow, int64_t lLine);
  /// Rows that weren't measured, as the columns hold all of them.
  void RowsWithin(int64_t lRows) { texts_.RowsEnd(lRows); }
  /// The last row's cuts: the characters, from 1, behind which a value goes on. A row of drawn lines has none.
  const std::vector<int32_t>& Cuts() const { return cuts_; }
  /// The sums of all rows so far.
  CharacterLoss Loss() const;

 private:
  template <typename Row>
  void Measure(const Row& row, int64_t lLine);
  template <typename Row>
  int64_t MeasureGap(const Row& row, size_t nGap, GapSide side, int64_t lLine);

  std::vector<TidyPlace> gaps_;    ///< What no column takes; the last goes to the end
  std::vector<int32_t> touching_;  ///< Those of the edges that are none; ascending
  std::vector<int32_t> edges_;     ///< Characters behind which a column ends or before which one begins, ascending
  int32_t nFirst_ = 0, nLast_ = 0;
  CharacterLoss row_;
  int64_t lCuts_ = 0, lFirstCutLine_ = 0;
  clsGapTexts texts_;
  std::string sPiece_;  ///< Kept for its memory
  std::vector<int32_t> cuts_;
  std::u32string characters_;  ///< Kept for its memory
};

}  // namespace quillon
