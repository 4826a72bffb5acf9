// Marks in a report of any bytes: the recipe made of them, loaded as its own.

#include "clsFuzzRecipe.h"
#include "modFailure.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  gsInputFile = fuzz.folder.Write("fuzz.txt", fuzz.sInput);
  try {
    fuzz.recipe.LoadFromMarks(fuzz.context);
    fuzz.recipe.ReadExportSpecs(fuzz.context);
  } catch (const UnhandledFailure&) {
  }
  return 0;
}
