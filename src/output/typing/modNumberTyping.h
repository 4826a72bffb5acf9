#pragma once
// The two hard halves of the typing rule: numbers and dates with the format that shows them as they were written.

#include <string>
#include <string_view>

#include "modCellTyping.h"

namespace quillon {

/// A number with all that reports put around one: a sign in front or behind, parentheses, thousands separators, one of
/// $ £ € ¥ in front, a percent sign, an exponent; blanks between these parts count as one. sText has no blanks around
/// it. False, with the cell unchanged, where no number and format show the same characters: misplaced separators,
/// leading zeros, more than 15 digits.
bool TypeNumber(std::string_view sText, bool bDropLeadingZeros, std::string& sScratch, TypedCell& cell);

/// "5.", with a point that its format has in quotes.
bool TypePointBehind(std::string_view sText, std::string& sScratch, TypedCell& cell);

/// What a text that is no number by itself says of its column's numbers.
enum class NumberLikeness : uint8_t {
  None,
  Code,         ///< Digits alone, the first a zero, or more than a number has
  PointBehind,  ///< "5."
  Unshown       ///< A number, but no format shows it as it is written: "0.5E+01", "1.234,56", "0012.50"
};
NumberLikeness LikenessOf(std::string_view sText);

/// A full date of the calendar from 1900-03-01 on (the 1900 system counts a day too many before), read by its form. Of
/// a year of two digits 00 to 29 lie in this century.
bool TypeDate(std::string_view sText, const std::array<DateReading, kDateForms>& readings, std::string& sScratch,
              TypedCell& cell);

/// What three runs of digits can be.
struct DateLikeness {
  int nForm = -1;  ///< Which of the kDateForms, below 0 for another text
  bool bMonthFirst = false, bDayFirst = false, bYearFirst = false;
};
DateLikeness DateLikenessOf(std::string_view sText);

}  // namespace quillon
