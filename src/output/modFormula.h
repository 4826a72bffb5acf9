#pragma once
// The grammar of formulas that may become formulas: operators, references (A1, ranges, other sheets, whole columns and
// rows), numbers, strings, errors and calls of known functions.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

enum class FormulaVerdict { WellFormed, NotAFormula, ReachesOutside };

/// sFormula without its "=". ReachesOutside: DDE, external workbooks, functions that fetch or call (WEBSERVICE,
/// HYPERLINK to another host ...). Recursion is bounded.
FormulaVerdict CheckFormula(std::string_view sFormula);

}  // namespace quillon
