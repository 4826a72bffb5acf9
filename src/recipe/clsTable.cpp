#include "clsTable.h"

#include "clsRecipe.h"
#include "modRecipeKind.h"
#include "modRecipeMessages.h"
#include "modSettings.h"
#include "modShortTable.h"
#include "modTidyRecipe.h"

namespace quillon {

namespace {

/// A specification made of a short recipe has the keys that the recipe lacks, with no value: the recipe tells why.
std::string Why(const RecipeContext& context, const clsSectionFile& specs, const std::string& sSection,
                std::string_view sKey) {
  if (!context.options.bSayMore) return {};
  clsSectionFile file;
  Failure ignored;
  if (!file.Open(gsRecipeFile, context.options.RecipeText(), ignored) || CountShortTables(file) == 0) file = specs;
  return WhyMissing(file, sSection, sKey);
}

}  // namespace

void clsTable::ReadFromFile(RecipeContext& context, std::string_view file_name, int32_t table_number) {
  clsSectionFile file;
  Failure ignored;
  file.Open(file_name, context.options.RecipeText(), ignored);
  ReadFromFileSequentially(context, file, table_number);
}

void clsTable::ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t table_number) {
  const std::string sSection = "Table " + std::to_string(table_number);
  if (!ReadRequiredText(filehandle, sSection, "ReadStartLine", ReadStartLine)) {
    return ReportRecipe(context.host, kTableStartLine, {sSection}, true,
                        Why(context, filehandle, sSection, "ReadStartLine"));
  }
  const std::string sPlace = context.recipe.ExportSpecFileName + ": [" + sSection + "]";
  ReadStartLineOffset = ReadOffset(filehandle, sPlace, "ReadStartLineOffset");
  if (!ReadRequiredText(filehandle, {}, "ReadEndLine", ReadEndLine)) {
    return ReportRecipe(context.host, kTableEndLine, {sSection}, true,
                        Why(context, filehandle, sSection, "ReadEndLine"));
  }
  ReadEndLineOffset = ReadOffset(filehandle, sPlace, "ReadEndLineOffset");
  if (!ReadPositiveNumber(filehandle, {}, "TotalColumns", TotalColumns)) {
    return ReportRecipe(context.host, kTableColumns, {sSection}, true,
                        Why(context, filehandle, sSection, "TotalColumns"));
  }
  ColumnsCollection.clear();
  for (int32_t m = 1; m <= TotalColumns && filehandle.MayReadOn(); ++m) {
    ColumnsCollection.emplace_back().ReadFromFileSequentially(context, filehandle, table_number, m);
  }
  TotalColumns = static_cast<int32_t>(ColumnsCollection.size());
}

void clsTable::WriteToFile(clsSectionWriter& file, int32_t table_number) const {
  if (tidy) return WriteTidyTable(file, *tidy);
  const std::string sSection = "Table " + std::to_string(table_number);
  file.Set(sSection, "ReadStartLine", ReadStartLine);
  file.Set(sSection, "ReadStartLineOffset", ReadStartLineOffset);
  file.Set(sSection, "ReadEndLine", ReadEndLine);
  file.Set(sSection, "ReadEndLineOffset", ReadEndLineOffset);
  file.Set(sSection, "TotalColumns", TotalColumns);
  int32_t lColumn = 0;
  for (const clsColumn& column : ColumnsCollection) column.WriteToFile(file, table_number, ++lColumn);
}

}  // namespace quillon
