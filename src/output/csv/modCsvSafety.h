#pragma once
// Values of a CSV file that a spreadsheet would run as formulas.

#include <string_view>

namespace quillon {

/// True for a field that begins (blanks aside) with "=", "+", "-", "@", one of their full-width forms or a control
/// character, and is no plain number: "-12.50" is worth more as a number than it could do harm.
bool MayRunAsFormula(std::string_view sUtf8);

}  // namespace quillon
