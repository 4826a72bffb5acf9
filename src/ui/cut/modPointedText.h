#pragma once
// What a person means by a line or by characters of it: its pieces, its words, a value and the label in front of it.
// Places are characters from 1, both ends inside.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "modTidyModel.h"

namespace quillon {

/// Characters without two blanks in a row.
struct TextPiece {
  int32_t lFirst = 0, lLast = 0;
  std::u32string_view sText;
};

std::vector<TextPiece> PiecesOf(std::u32string_view sLine);
std::u32string_view Characters(std::u32string_view sLine, int32_t lFirst, int32_t lLast);
/// The columns that the pieces of a line cover; the last one is open.
std::vector<TidyPlace> PlacesOfPieces(std::u32string_view sLine);
/// The column (index) that a piece stands over or is nearest to with its text; a piece over several columns goes to
/// them word by word.
std::vector<std::pair<size_t, std::string>> PartsOver(const TextPiece& piece, const std::vector<TidyPlace>& places);
/// Runs of words without a digit, the longest first.
std::vector<std::u32string> WordsOf(std::u32string_view sLine);
/// The picture (Like=) of a line's first nLength characters.
std::string PictureOf(std::u32string_view sLine, size_t nLength);

/// A value that was pointed at.
struct PointedValue {
  std::u32string sLabel;     ///< Words in front of it; "" if there are none
  bool bBehindLabel = true;  ///< It is all that stands behind the label up to two blanks
  int32_t lFirst = 1;
  int32_t lLast = 0;  ///< With the room for longer values; 0: to the line's end
  std::string sLike;  ///< Of the line, where no label finds it
};
/// lFirst 0: nothing is selected, so the value is what stands behind the line's first label, or its last piece.
PointedValue ValueAt(std::u32string_view sLine, int32_t lFirst, int32_t lLast);
/// A label without the colon or dots at its end.
std::u32string_view WithoutColon(std::u32string_view sLabel);

}  // namespace quillon
