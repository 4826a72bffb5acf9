#include "modRecipeGlobals.h"

#include "clsLineProcessor.h"
#include "clsRecipe.h"

namespace quillon {

std::string gsInputFile;
std::string gsOutputFile;
std::string gsRecipeFile;
int32_t glTabSize = 0;
bool gbPauseRequested = false;
bool gbAbandonOutput = false;
bool gbProcessing = false;

clsRecipe& gRecipe() {
  static clsRecipe recipe;
  return recipe;
}

void ResetRecipeGlobals() {
  gsInputFile.clear();
  gsOutputFile.clear();
  gsRecipeFile.clear();
  glTabSize = 0;
  gbPauseRequested = gbAbandonOutput = gbProcessing = false;
  gRecipe() = clsRecipe();
  for (clsRow& row : gLineProcessor().RowCollection) row.Clear();
}

}  // namespace quillon
