#pragma once
// Numbers and dates as reports print them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "modTidyModel.h"

namespace quillon {

/// A printed number in figures: nValue / 10^nDecimals.
struct TidyNumber {
  int64_t nValue = 0;
  int nDecimals = 0;     ///< As printed, implied ones included
  bool bScaled = false;  ///< nValue holds it; False for an exponent and for more than 18 digits
};

/// Reads one number: a sign in front or behind, parentheses, CR (minus) and DR (plus), one currency sign, thousands
/// separators, a percent sign, stars of protection, a footnote mark ("1/ 12,345"), an exponent (E or D). Nothing if the
/// text, blanks around it aside, is anything else. pPlain, if given, gets it in plain form: "-1234.50".
std::optional<TidyNumber> ReadTidyNumber(std::string_view sText, const TidyTyping& typing, std::string* pPlain);
/// The same for many cells: false, and the number untouched, if it is none.
bool ReadTidyNumber(std::string_view sText, const TidyTyping& typing, std::string* pPlain, TidyNumber& number);

/// Reads a date, with a time where the form has one, into "2024-12-31" or "2024-12-31 23:59:00". An empty form takes
/// any usual one of a full date. False, and sPlain untouched, if the text is none of the calendar.
bool ReadTidyDate(std::string_view sText, std::string_view sForm, std::string& sPlain);

}  // namespace quillon
