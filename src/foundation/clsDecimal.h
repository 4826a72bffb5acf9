#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

/// A decimal number of any length, held as its digits: what stands between the text of a number and its value, so that
/// no rounding of binary numbers ever touches a sum.
class clsDecimal {
 public:
  enum class Halves { ToEven, AwayFromZero };

  clsDecimal() = default;

  /// Reads a numeric text (the forms of IsNumericText). False, and the number untouched, if the text is none. The
  /// number may be null for a bare test.
  static bool Scan(std::string_view sText, clsDecimal* pNumber);

  /// Rounds to nDecimals behind the point.
  void Round(int nDecimals, Halves halves);
  /// The number times 10^nDecimals; it must have been rounded so. False if it leaves 64 bits.
  bool ToScaledInteger(int nDecimals, int64_t& value) const;
  double ToDouble() const;
  /// "1,234.50" with exactly nDecimals; the number must have been rounded so.
  std::string GroupedText(int nDecimals) const;
  /// True if the digits can be written out without an exponent in a text of sane length.
  bool IsPlain() const { return nPoint_ <= 400 && nPoint_ >= -400; }

 private:
  /// Of digits with a point and separators among them.
  clsDecimal(std::string_view sNumber, int64_t nExponent, bool bNegative);
  char DigitAt(int64_t nPlace) const;  ///< Place 0 is the first digit kept; '0' outside

  bool bNegative_ = false;
  std::string sDigits_;  ///< No leading zeros; empty is zero
  int64_t nPoint_ = 0;   ///< Digits before the decimal point (may be negative or beyond the digits)
};

}  // namespace quillon
