// Any bytes as the part of shared strings, and as a sheet that uses them.
#include <cstdint>

#include "modSheetValues.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
  using namespace quillon;
  const std::string_view sPart(reinterpret_cast<const char*>(pBytes), nBytes);
  clsSharedStrings strings;
  clsXmlScanner scanner(sPart);
  strings.Load(scanner);
  clsCellStore store;
  clsXmlScanner sheet(sPart);
  ReadSheetValues(sheet, strings, {}, {true, true}, store);
  return 0;
}
