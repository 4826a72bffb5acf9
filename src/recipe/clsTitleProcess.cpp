#include "clsRecipe.h"
#include "clsTitle.h"
#include "clsWorkbook.h"
#include "modColumnLetters.h"
#include "modRecipeFailures.h"

namespace quillon {

bool clsTitle::Process(RecipeContext& context) {
  clsExportSpecs& specs = context.recipe.ExportSpecs;
  const int32_t lPointer = specs.getWritePointer(context.host, WriteSheet);
  int64_t lRow = lPointer;
  for (const std::string& sLine : TextLines) {
    if (!sLine.empty()) {
      if (context.pWorkbook == nullptr) return EndWalk(context, "A title needs a workbook");
      Failure failure;
      const int32_t lColumn = AlphaToNum2(context.host, WriteColumn);
      if (!context.pWorkbook->WriteCell(WriteSheet, lRow, lColumn, sLine, failure)) {
        return EndWalkAtCell(context, failure);
      }
    }
    ++lRow;
  }
  specs.setWritePointer(context.host, WriteSheet, static_cast<int32_t>(lRow));
  return true;
}

}  // namespace quillon
