#pragma once
// Numbers in text: one test and one form for sums for the whole system, whatever the locale.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// A number as sums hold it: a 64-bit integer scaled by 10,000.
using ScaledNumber = int64_t;
constexpr int64_t kNumberScale = 10000;

/// True if the whole text is a number: blanks around it, a sign in front or behind, thousands separators, one decimal
/// point, an exponent, a currency symbol, a negative in parentheses. Empty and blank texts are not numeric.
bool IsNumericText(std::string_view sText);
/// The number as a double; nothing if the text isn't numeric.
std::optional<double> NumericValue(std::string_view sText);

enum class ScaleStatus { Ok, NotNumeric, Overflow };
/// The number in scaled form, rounded half to even at the fourth decimal. Overflow: beyond the 64-bit range.
ScaleStatus ParseScaled(std::string_view sText, ScaledNumber& value);
/// a + b, or nothing if that leaves the 64-bit range.
std::optional<ScaledNumber> AddScaled(ScaledNumber a, ScaledNumber b);
/// The plain number: no grouping, no trailing zeros: 12.5
std::string ScaledText(ScaledNumber value);

/// "#,##0" and "#,##0.00" of a numeric text, halves away from zero; a text that isn't numeric comes back unchanged.
std::string FormatGrouped(std::string_view sNumber, int nDecimals);
/// "1 row", "2 rows".
std::string CountedText(int64_t lCount, std::string_view sOne, std::string_view sMany);
/// "##0.0": one decimal, no padding.
std::string FormatOneDecimal(double value);
/// The shortest text that reads back as the same double.
std::string ShortestDouble(double value);

/// Whole number of an option or key: a numeric text that fits 32 bits after rounding half to even; else nothing.
std::optional<int32_t> ParseWholeNumber(std::string_view sText);
/// Leading digits with a sign, as Val does it: "12x" is 12, "abc" is 0.
double LeadingNumber(std::string_view sText);

/// Text to double by the invariant rule; False if the text is no number.
bool TryParseDouble(std::string_view sText, double& value);
/// TryParseDouble, then once more with "," and "." exchanged, else the default.
double ParseDouble(std::string_view sText, double fallback);

}  // namespace quillon
