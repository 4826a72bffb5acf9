// Any bytes as a recipe of the long form: read, saved and read again, it is the same recipe.

#include <array>

#include "clsFuzzRecipe.h"

using namespace quillon;

namespace {

/// A section file ends a value at ";", a section at any "[", and takes a line that holds a key's name for that key's.
bool IsPlain(std::string_view sValue) {
  constexpr std::array<std::string_view, 5> kNames{"Title", "File", "Format", "Sheet", "Name"};
  return sValue.find_first_of("[;\r\n\"'") == std::string_view::npos &&
         std::none_of(kNames.begin(), kNames.end(), [&](std::string_view s) { return sValue.find(s) != s.npos; });
}

bool IsPlain(const clsRecipe& recipe) {
  bool bPlain = IsPlain(recipe.OutputFileTitle) && IsPlain(recipe.OutputFileName) && IsPlain(recipe.Sheet1Name) &&
                IsPlain(recipe.Sheet2Name);
  for (size_t i = 0; i < clsRecipe::kFileSlots; ++i) {
    bPlain = bPlain && IsPlain(recipe.InputFileTitle[i]) && IsPlain(recipe.InputFileName[i]);
  }
  return bPlain;
}

bool Same(const clsRecipe& a, const clsRecipe& b) {
  return a.OutputFileTitle == b.OutputFileTitle && a.OutputFileName == b.OutputFileName &&
         a.InputFileFirst == b.InputFileFirst && a.InputFileLast == b.InputFileLast &&
         a.WriteDataFormat == b.WriteDataFormat && a.Sheet1Name == b.Sheet1Name && a.Sheet2Name == b.Sheet2Name &&
         a.InputFileTitle == b.InputFileTitle && a.InputFileName == b.InputFileName;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  const std::string sFile = fuzz.folder.Write("fuzz.rcp", fuzz.sInput);
  try {
    fuzz.recipe.LoadFromFile(fuzz.context, sFile);
    Must(fuzz.recipe.InputFileTitle.size() == clsRecipe::kFileSlots, "twelve slots");
    Must(fuzz.recipe.InputFileName.size() == clsRecipe::kFileSlots, "twelve slots");
    // The specification goes to the path that the recipe names.
    fuzz.recipe.ExportSpecFileName = fuzz.folder.Write("fuzz.t2x", "");
    Failure failure;
    const std::string sSaved = fuzz.folder.Write("saved.rcp", "");
    Must(fuzz.recipe.SaveToFile(fuzz.context, sSaved, failure), "a recipe that was read can be saved");
    if (!IsPlain(fuzz.recipe)) return 0;
    clsRecipe again;
    RecipeContext context{fuzz.host, fuzz.options, again, gLineProcessor(), fuzz.account};
    again.LoadFromFile(context, sSaved);
    Must(Same(fuzz.recipe, again), "a saved recipe is the recipe");
  } catch (const UnhandledFailure&) {
  }
  return 0;
}
