#pragma once
// What a sheet shows of a number in a format of its own.

#include <string>
#include <string_view>

namespace quillon {

/// Appends what a number (as files have it: "-1234.50", a date as the number of its day) shows by a format code, in the
/// form of the codes themselves: "." and "," whatever the viewer's locale. False, with nothing appended, for a code
/// with parts that aren't known for sure: fractions, conditions, fills, scales of thousands.
bool AppendShownByCode(std::string_view sDigits, std::string_view sCode, std::string& sOut);
/// True if that is the text, blanks aside.
bool ShowsTheSame(std::string_view sDigits, std::string_view sCode, std::string_view sText);

}  // namespace quillon
