#include "modCsvField.h"

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

void AppendCsvField(std::string_view sUtf8, const RecipeOptions& options, std::string& sOut) {
  if (options.bTrimFields) sUtf8 = TrimBlanks(sUtf8);
  const bool bHarmful = options.bSafeCsv && MayRunAsFormula(sUtf8);
  if (!bHarmful && sUtf8.find_first_of(",\"") == std::string_view::npos) {
    sOut.append(sUtf8);
    return;
  }
  sOut.append(bHarmful ? "\"'" : "\"");
  for (const char c : sUtf8) sOut.append(c == '"' ? 2 : 1, c);
  sOut += '"';
}

}  // namespace quillon
