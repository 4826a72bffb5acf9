#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "modTidyModel.h"

namespace quillon {

/// What the columns of a cut leave of rows. Blanks are no loss.
struct CharacterLoss {
  int64_t lInFront = 0;    ///< Characters in front of the first column
  int64_t lBetween = 0;    ///< In gaps between columns
  int64_t lBehind = 0;     ///< Behind the last column
  int64_t lCuts = 0;       ///< Edges of columns with a character on both sides: a value was cut there
  int64_t lFirstLine = 0;  ///< The first line that loses something

  int64_t Characters() const { return lInFront + lBetween + lBehind; }
  bool Any() const { return Characters() > 0 || lCuts > 0; }
  void Add(const CharacterLoss& other);
};

/// Measures rows, one way for all who cut.
class clsCutMeasure {
 public:
  /// The places of the columns in any order; those that are none are passed over.
  explicit clsCutMeasure(std::span<const TidyPlace> places);

  /// A row whose bytes are its characters. cBlank: a second byte that is a blank, such as the no-break space of a page.
  const CharacterLoss& Bytes(std::string_view sRow, int64_t lLine, char cBlank = ' ');
  /// A row of UTF-8.
  const CharacterLoss& Text(std::string_view sRow, int64_t lLine);
  /// The last row's cuts: the characters, from 1, behind which a value goes on. A row of drawn lines has none.
  const std::vector<int32_t>& Cuts() const { return cuts_; }
  /// The sums of all rows.
  const CharacterLoss& Loss() const { return loss_; }

 private:
  template <typename Row>
  void Measure(const Row& row, int64_t lLine);

  std::vector<TidyPlace> gaps_;  ///< What no column takes; the last goes to the end
  std::vector<int32_t> edges_;   ///< Characters behind which a column ends or before which one begins, ascending
  int32_t nFirst_ = 0, nLast_ = 0;
  CharacterLoss row_, loss_;
  std::vector<int32_t> cuts_;
  std::u32string characters_;  ///< Kept for its memory
};

}  // namespace quillon
