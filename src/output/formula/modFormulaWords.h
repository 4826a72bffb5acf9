#pragma once
// Words of a formula: corners of references, names of functions that reach outside.

#include <string_view>

#include "modFormula.h"

namespace quillon {

/// R1C1 notation, in which a sheet's name must be quoted.
bool LooksLikeR1C1(std::string_view sWord);
/// The reference of two corners of one kind, in order.
FormulaReference OrderedReference(FormulaCorner first, FormulaCorner second);
/// A function that fetches, calls or asks another program.
bool CallsOutside(std::string_view sName);

}  // namespace quillon
