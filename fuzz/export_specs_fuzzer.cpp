// Export specifications: all kinds of sections read from any bytes and written again.

#include "clsFuzzRecipe.h"
#include "modFailure.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzRecipe fuzz(pData, nSize);
  const std::string sFile =
      "[Header]\nProduct=QLN\nFileType=EXPORT SPEC\nFileFormat=1.1\n" + std::string(fuzz.sInput.substr(0, 1 << 16));
  clsSectionFile file;
  clsExportSpecs& specs = fuzz.recipe.ExportSpecs;
  try {
    file.OpenMemory(sFile, fuzz.options.RecipeText());
    specs.ReadFromFile(fuzz.context, file);
  } catch (const UnhandledFailure&) {
    return 0;
  }
  clsSectionWriter writer(*fuzz.options.OwnText().pCodePage);
  int32_t n = 0;
  for (const clsTitle& title : specs.TitlesCollection) title.WriteToFile(writer, ++n);
  for (const clsTable& table : specs.TablesCollection) table.WriteToFile(writer, ++n);
  for (const clsCon& con : specs.ConsolidateCollection) con.WriteToFile(writer, ++n);
  file.OpenMemory(writer.Bytes(), fuzz.options.OwnText());
  return 0;
}
