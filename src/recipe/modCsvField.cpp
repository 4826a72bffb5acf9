#include "modCsvField.h"

#include "modCsvSafety.h"
#include "modText.h"

namespace quillon {

void AppendCsvField(std::string_view sUtf8, const RecipeOptions& options, std::string& sOut,
                    std::string_view sSeparator) {
  if (options.bTrimFields) sUtf8 = TrimBlanks(sUtf8);
  const bool bHarmful = options.bSafeCsv && MayRunAsFormula(sUtf8);
  const bool bSplits = options.bSafeCsv && (sUtf8.find(sSeparator) != std::string_view::npos ||
                                            sUtf8.find_first_of("\r\n") != std::string_view::npos);
  if (!bHarmful && !bSplits && sUtf8.find_first_of(",\"") == std::string_view::npos) {
    sOut.append(sUtf8);
    return;
  }
  sOut.append(bHarmful ? "\"'" : "\"");
  for (const char c : sUtf8) sOut.append(c == '"' ? 2 : 1, c);
  sOut += '"';
}

}  // namespace quillon
