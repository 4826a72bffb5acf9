#include "modRecipeGlobals.h"

#include "clsLineProcessor.h"
#include "clsRecipe.h"
#include "modTranslator.h"

namespace quillon {

std::string gsInputFile;
std::string gsOutputFile;
std::string gsRecipeFile;
int32_t glTabSize = 0;
bool gbPauseRequested = false;
bool gbPauseConfirmed = false;
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
  gbPauseRequested = gbPauseConfirmed = gbAbandonOutput = gbProcessing = false;
  gRecipe() = clsRecipe();
  for (clsRow& row : gLineProcessor().RowCollection) row.Clear();
}

clsReport& clsReports::Of(const std::string& sPath, const TextFileOptions& options, int32_t lSlot) {
  ++lAsked_;
  return reports_.try_emplace({lSlot, sPath}, sPath, options).first->second;
}

bool PauseEndsRun(clsHost& host) {
  if (gbAbandonOutput || gbPauseConfirmed) return true;
  const MessageAnswer answer = host.ShowMessage(Translate("Do you want to terminate the process?"), "Quillon",
                                                MessageIcon::Question, MessageButtons::NoYes);
  gbPauseConfirmed = gbPauseRequested = answer == MessageAnswer::Yes;
  return gbPauseConfirmed;
}

}  // namespace quillon
