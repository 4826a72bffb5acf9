// Any bytes as a sheet part: what is taken as one is still one after an edit, and shows what was written.
#include <cstdint>

#include "clsSheetMerger.h"
#include "modSheetValues.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
  using namespace quillon;
  const std::string_view sPart(reinterpret_cast<const char*>(pBytes), nBytes);
  SheetFacts facts;
  clsXmlScanner look(sPart);
  if (!ReadSheetFacts(look, facts)) return 0;
  SheetEdit edit{CellTypingOptions()};
  edit.cleared.push_back({2, 1, 3, 2});
  edit.cells.Write(1, 2, "text");
  edit.cells.Write(3, 1, "12");
  edit.cells.Write(900000, 3, "=A1");
  clsXlsxStyles styles;
  const std::vector<std::string> names = {"Sheet1"};
  clsCellWriter writer(styles, {}, names, false);
  const FormulaRenames renames{{{"Sheet1", "It's"}}, {}};
  std::string sNew;
  clsXmlScanner scanner(sPart);
  clsSheetMerger merger(scanner, edit, facts, writer, renames, [&](std::string_view sBytes) { sNew += sBytes; });
  if (!merger.Run()) __builtin_trap();
  SheetFacts factsAfter;
  clsXmlScanner lookAgain(sNew);
  if (!ReadSheetFacts(lookAgain, factsAfter)) __builtin_trap();
  clsCellStore shown;
  clsXmlScanner read(sNew);
  std::string_view sShown;
  if (!ReadSheetValues(read, {}, styles, {}, shown)) __builtin_trap();
  if (!shown.Read(1, 2, sShown) || sShown != "text") __builtin_trap();
  if (shown.Read(2, 1, sShown) && !sShown.empty()) __builtin_trap();
  return 0;
}
