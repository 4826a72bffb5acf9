// A report of any bytes without a recipe: what is suggested converts as it stands, table by table.

#include <set>

#include "clsFuzzRecipe.h"
#include "modSuggestRecipe.h"

using namespace quillon;

using Lines = std::multiset<std::pair<int64_t, int64_t>>;

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
  Lines made, meant;
  for (const TableAccount& table : fuzz.account.tables) made.emplace(table.lFirstLine, table.lLastLine);
  for (const SuggestedTable& table : suggested.tables) {
    for (const SuggestedSection& section : table.sections) meant.emplace(section.lFirstLine, section.lLastLine);
  }
  Must(made == meant, "each section is converted, from its first line to its last");
  return 0;
}
