// A short recipe and a report of any bytes, parted by a NUL, through the whole engine: into CSV and into a workbook.
// The kind of line ends makes no difference.

#include "clsFuzzRecipe.h"
#include "modText.h"

using namespace quillon;

namespace {

std::string Converted(clsFuzzRecipe& fuzz, const std::string& sRecipe, std::string_view sReport) {
  ResetRecipeGlobals();
  gsInputFile = fuzz.folder.Write("fuzz.txt", sReport);
  fuzz.recipe.LoadFromFileShort(fuzz.context, sRecipe);
  fuzz.recipe.ReadExportSpecs(fuzz.context);
  return fuzz.Csv();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  const std::string sRecipe = fuzz.folder.Write("fuzz.rcp", fuzz.TakePart());
  glTabSize = 8;
  try {
    const std::string sCsv = Converted(fuzz, sRecipe, fuzz.sInput);
    const std::vector<int32_t> codes = fuzz.host.Codes();
    fuzz.Workbook("out.xlsx", kFormatXlsx);
    if (fuzz.sInput.find('\r') != std::string_view::npos) return 0;
    fuzz.host.reports.clear();
    Must(Converted(fuzz, sRecipe, ReplaceAll(fuzz.sInput, "\n", "\r\n")) == sCsv, "CR LF gives the same CSV as LF");
    Must(fuzz.host.Codes() == codes, "CR LF gives the same reports as LF");
  } catch (const UnhandledFailure&) {
  }
  return 0;
}
