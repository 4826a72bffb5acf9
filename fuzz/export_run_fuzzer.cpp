// An export specification of any bytes over two reports, parted by NULs, through the whole engine: titles, tables with
// period operators, consolidations.

#include "clsFuzzRecipe.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  const unsigned choice = fuzz.TakeByte();
  fuzz.options.bAllPeriods = (choice & 1) != 0;
  fuzz.options.bTrimFields = (choice & 2) != 0;
  fuzz.options.bSafeCsv = (choice & 4) != 0;
  if ((choice & 8) != 0) fuzz.recipe.WriteDataFormat = (choice & 16) != 0 ? "NearestCent" : "NearestDollar";
  fuzz.recipe.InputFileLast = (choice & 32) != 0 ? 2 : 1;
  const std::string sSpecs =
      "[Header]\nProduct=QLN\nFileType=EXPORT SPEC\nFileFormat=1.1\n" + std::string(fuzz.TakePart().substr(0, 1 << 16));
  fuzz.recipe.InputFileName[0] = fuzz.folder.Write("1.txt", fuzz.TakePart());
  fuzz.recipe.InputFileName[1] = fuzz.folder.Write("2.txt", fuzz.sInput);
  try {
    clsSectionFile file;
    file.OpenMemory(sSpecs, fuzz.options.RecipeText());
    fuzz.recipe.ExportSpecs.ReadFromFile(fuzz.context, file);
    fuzz.Csv();
    fuzz.Workbook("out.xlsx", kFormatXlsx);
    fuzz.Workbook("out.xls", kFormatXls);
  } catch (const UnhandledFailure&) {
  }
  return 0;
}
