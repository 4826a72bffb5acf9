#pragma once
// Values of a CSV file that a spreadsheet would run as formulas.

#include <string_view>

namespace quillon {

/// True for a field that begins (blanks aside) with "=", "+", "-", "@", a tab or a CR and is no plain number.
bool MayRunAsFormula(std::string_view sUtf8);
/// True for the first characters of such fields.
bool StartsFormula(char c);

}  // namespace quillon
