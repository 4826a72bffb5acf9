// Any bytes as the part of styles: what is taken as one is still one with a format added.
#include <cstdint>

#include "clsXlsxStyles.h"
#include "modSheetValues.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
  using namespace quillon;
  const std::string sPart(reinterpret_cast<const char*>(pBytes), nBytes);
  KindOfFormatCode(sPart);
  clsXlsxStyles styles;
  if (!styles.Load(sPart)) return 0;
  const size_t nBefore = styles.Count();
  for (const char* pCode : {"0.00", "\"<&>\" 0", "mm/dd"})
    if (styles.Derive(0, pCode) >= static_cast<int64_t>(styles.Count())) __builtin_trap();
  if (!styles.Changed()) return 0;
  clsXlsxStyles again;
  if (!again.Load(styles.Bytes()) || again.Count() != styles.Count() || again.Count() < nBefore) __builtin_trap();
  ShownNumber(45657.5, again.KindOf(0), {});
  return 0;
}
