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

constexpr bool IsBlankPlace(char32_t ch) {
  return ch <= U' ' || ch == 0xA0 || ch == 0x7F;
}
/// A picture (Like=) that fits this text alone; what no value of a key may hold fits anything that isn't blank.
std::string PictureOfText(std::u32string_view sText);
constexpr bool IsDigitPlace(char32_t ch) {
  return ch >= U'0' && ch <= U'9';
}
constexpr bool IsLetterPlace(char32_t ch) {
  return (ch >= U'A' && ch <= U'Z') || (ch >= U'a' && ch <= U'z') || (ch >= 0xC0 && (ch < 0x2000 || ch > 0x2BFF));
}
bool IsCurrencyPlace(char32_t ch);

/// The marks of a line, first to last.
void FindMarks(std::u32string_view sLine, std::vector<LineMark>& marks);
/// True for strokes only (-----, ===== ====), three of them at least.
bool IsDrawn(std::u32string_view sLine);
constexpr std::u32string_view TrimPlaces(std::u32string_view sText) {
  while (!sText.empty() && IsBlankPlace(sText.front())) sText.remove_prefix(1);
  while (!sText.empty() && IsBlankPlace(sText.back())) sText.remove_suffix(1);
  return sText;
}

}  // namespace quillon
