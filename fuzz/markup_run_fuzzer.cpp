// Marks in a report of any bytes, through the whole engine.

#include "clsFuzzRecipe.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  gsInputFile = fuzz.folder.Write("fuzz.txt", fuzz.sInput);
  try {
    fuzz.recipe.LoadFromMarks(fuzz.context);
    fuzz.recipe.ReadExportSpecs(fuzz.context);
    const std::string sCsv = fuzz.Csv();
    Must(fuzz.Csv() == sCsv, "a second run gives the same");
    fuzz.Workbook("out.xls", kFormatXls);
  } catch (const UnhandledFailure&) {
  }
  return 0;
}
