#include "modReportPage.h"

#include "clsCodePageScope.h"
#include "modFiles.h"
#include "modRecipeInput.h"
#include "modSectionFile.h"
#include "modSettings.h"
#include "modText.h"

namespace quillon {

std::string PageOfRecipe(std::string_view sRecipeFile) {
  if (sRecipeFile.empty() || !IsFile(sRecipeFile)) return {};
  return ReadKeyFromFile(sRecipeFile, TextFileOptions(), "Header", "CodePage", {});
}

void TakePageOfCall(clsConversionOptions& options, std::string_view sRecipeFile) {
  if (options.sCodePage.empty()) options.sCodePage = PageOfRecipe(sRecipeFile);
  TakeInputOfRecipeOrEnd(options, sRecipeFile);
  if (options.sCodePage.empty()) options.sCodePage = kFoundByContent;
  OverrideSystemCodePage(clsCodePage::Find(options.sCodePage), EqualNoCase(options.sCodePage, kFoundByContent));
}

}  // namespace quillon
