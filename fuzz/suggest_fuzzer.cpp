// A report of any bytes without a recipe: what is suggested converts as it stands, table by table.

#include "clsFuzzRecipe.h"
#include "modSuggestRecipe.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  glTabSize = 8;
  fuzz.options.pRecipePage = &clsCodePage::Utf8();
  gsInputFile = fuzz.folder.Write("fuzz.txt", fuzz.sInput);
  SuggestedRecipe suggested;
  Failure failure;
  if (!SuggestRecipe(gsInputFile, fuzz.options.text, glTabSize, suggested, failure)) return 0;
  const std::string sRecipe = fuzz.folder.Write("fuzz.rcp", suggested.Text());
  if (suggested.tables.empty()) return 0;
  fuzz.recipe.LoadFromFileShort(fuzz.context, sRecipe);
  fuzz.recipe.ReadExportSpecs(fuzz.context);
  fuzz.Csv();
  Must(fuzz.account.tables.size() == suggested.tables.size(), "each table is converted");
  for (size_t i = 0; i < suggested.tables.size(); ++i) {
    Must(fuzz.account.tables[i].lFirstLine == suggested.tables[i].lFirstLine, "from its first line");
    Must(fuzz.account.tables[i].lLastLine == suggested.tables[i].lLastLine, "to its last");
  }
  return 0;
}
