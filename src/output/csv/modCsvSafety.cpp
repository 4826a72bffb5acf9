#include "modCsvSafety.h"

#include "modNumbers.h"
#include "modText.h"

namespace quillon {

bool MayRunAsFormula(std::string_view sUtf8) {
  constexpr std::u32string_view kFirst = U"=+-@\uFF1D\uFF0B\uFF0D\uFF20";
  const std::string_view sTrimmed = TrimLeftBlanks(sUtf8);
  if (sTrimmed.empty()) return false;
  size_t nPos = 0;
  const char32_t first = DecodeUtf8(sTrimmed, nPos);
  return (first < 0x20 || kFirst.find(first) != kFirst.npos) && !IsNumericText(sTrimmed);
}

}  // namespace quillon
