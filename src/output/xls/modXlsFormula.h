#pragma once
// Formulas as the postfix tokens of .xls files.

#include <string>
#include <string_view>

namespace quillon {

/// Appends the tokens of a well-formed formula (without its "="), their length (2 bytes) in front. False, with nothing
/// appended, for what an .xls file can't hold or what isn't written by us: other sheets, array constants, functions
/// newer than the format, cells beyond its sheet, texts over 255 characters.
bool AppendXlsFormula(std::string_view sFormula, std::string& sOut);

/// Code of an error word ("#N/A"), or -1; and back, "" for an unknown code.
int XlsErrorCode(std::string_view sWord);
std::string_view XlsErrorWord(unsigned nCode);

}  // namespace quillon
