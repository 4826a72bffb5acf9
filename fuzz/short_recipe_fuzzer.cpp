// A short recipe and a report of any bytes, parted by a NUL: the whole load of a run.

#include "clsFuzzRecipe.h"
#include "modFailure.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  const std::string sRecipe = fuzz.folder.Write("fuzz.rcp", fuzz.TakePart());
  gsInputFile = fuzz.folder.Write("fuzz.txt", fuzz.sInput);
  try {
    fuzz.recipe.LoadFromFileShort(fuzz.context, sRecipe);
    fuzz.recipe.ReadExportSpecs(fuzz.context);
  } catch (const UnhandledFailure&) {
  }
  return 0;
}
