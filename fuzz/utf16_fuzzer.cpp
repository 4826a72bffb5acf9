// Any bytes as UTF-16 input: whatever comes in, the CSV file is valid UTF-8.
#include <cstdint>

#include "clsTempFolder.h"
#include "clsWorkbook.h"
#include "modCellwright_DLL.h"
#include "modText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
  using namespace quillon;
  static const clsTempFolder folder;
  OptInputFileSet(folder.Write("in.txt", {reinterpret_cast<const char*>(pBytes), nBytes}).c_str());
  OptOutputFileSet(folder.Path("out.csv").c_str());
  OptInputFileTypeSet(clsCellwright::kInputUtf16);
  OptOutputFileTypeSet(kFormatCsvUtf8);
  for (int16_t i = 1; i <= 3; ++i) {
    OptInputFixedWidthCharacterCountSet(i, 2 * i);
    OptInputFixedWidthPadCharacter(i, " ");
    OptInputFixedWidthJustification(i, static_cast<int16_t>(1 + i % 2));
  }
  if (ConvertFile() != 0 || !IsValidUtf8(folder.Read("out.csv"))) __builtin_trap();
  return 0;
}
