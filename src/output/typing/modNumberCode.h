#pragma once
// The parts of a number in text, and the format code that shows them as they were written.

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

constexpr int kMaxDecimals = 15;

constexpr bool IsNumberDigit(char ch) {
  return static_cast<unsigned char>(ch - '0') < 10;
}
/// The figures of a number: whole part, decimals, exponent.
struct NumberFigures {
  size_t nStart = 0, nEnd = 0;  ///< Of whole part and decimals in the text
  uint64_t nMantissa = 0;
  int nWhole = 0;     ///< Digits before the point
  int nDecimals = 0;  ///< Digits behind it
  int nSignificant = 0;
  bool bPoint = false;
  bool bGrouped = false;
  bool bLeadingZeros = false;  ///< More than the one in front of the point
  bool bZeroInFront = false;   ///< The first digit
  std::string_view sExponent;  ///< "E+03"
  bool ExponentIsZero() const {
    return sExponent.size() > 1 && sExponent.find_first_not_of("+-0", 1) == std::string_view::npos;
  }
};

/// All that stands around the figures.
struct NumberSurroundings {
  char sign = '\0';  ///< '-', '+' or '('
  bool bSignPlainInFront = false;
  bool bPercent = false;
  std::string_view sCurrency;
  std::string_view sBefore, sBehind;
};

/// "0.00" and "#,##0.00" with up to kMaxDecimals decimals, in static storage.
std::string_view PlainCode(size_t nDecimals);
std::string_view GroupedCode(size_t nDecimals);

/// Appends the code: sections for positive numbers, negative ones and, for a zero with a minus, zeros.
void BuildNumberCode(std::string& sOut, const NumberFigures& figures, const NumberSurroundings& around);
/// Appends the number as a file has it: sign, digits, point, exponent; a percent's point moved by two places.
void BuildNumberDigits(std::string& sOut, std::string_view sText, const NumberFigures& figures,
                       const NumberSurroundings& around);

}  // namespace quillon
