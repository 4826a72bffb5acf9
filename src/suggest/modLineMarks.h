#pragma once
// What stands where on a line of a report.

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillon {

enum class MarkKind : uint8_t { Word, Number, Sign };

/// A stretch of characters without a blank. Places count from 0.
struct LineMark {
  int32_t lStart = 0, lEnd = 0;  ///< Its first and its last character
  int32_t lFigure = 0;           ///< Of a number: its last digit, signs behind it aside
  int32_t lPoint = 0;            ///< Of a number: its decimal point, or the place behind its last digit
  MarkKind kind = MarkKind::Word;
  bool bGoesOn = false;  ///< A word one blank behind another: most often the same text
};

bool IsBlankPlace(char32_t ch);
/// A picture (Like=) that fits this text alone; what no value of a key may hold fits anything that isn't blank.
std::string PictureOfText(std::u32string_view sText);
bool IsDigitPlace(char32_t ch);
bool IsLetterPlace(char32_t ch);
bool IsCurrencyPlace(char32_t ch);

/// The marks of a line, first to last.
void FindMarks(std::u32string_view sLine, std::vector<LineMark>& marks);
/// True for strokes only (-----, ===== ====), three of them at least.
bool IsDrawn(std::u32string_view sLine);
std::u32string_view TrimPlaces(std::u32string_view sText);

}  // namespace quillon
