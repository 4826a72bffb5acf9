#include "modCsvSafety.h"

#include "modNumbers.h"
#include "modText.h"

namespace quillon {

bool StartsFormula(char c) {
  return c == '=' || c == '+' || c == '-' || c == '@' || c == '\t' || c == '\r';
}

bool MayRunAsFormula(std::string_view sUtf8) {
  const std::string_view sTrimmed = TrimLeftBlanks(sUtf8);
  return !sTrimmed.empty() && StartsFormula(sTrimmed[0]) && !IsNumericText(sTrimmed);
}

}  // namespace quillon
