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

/// A full date of the calendar from 1900-03-01 on (the 1900 system counts a day too many before): year first with "-"
/// or
/// "/"; year last with "/" or "-" by the order asked for, and with "." where the day comes first. Of a year of two
/// digits 00 to 29 lie in this century.
bool TypeDate(std::string_view sText, bool bDayFirst, std::string& sScratch, TypedCell& cell);

}  // namespace quillon
