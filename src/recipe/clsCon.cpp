#include "clsCon.h"

#include "clsRecipe.h"
#include "modRecipeMessages.h"

namespace quillon {

void clsCon::PropertyPrint() const {
  for (const clsDepartment& department : DepartmentsCollection) department.PropertyPrint();
}

void clsCon::ReadFromFile(RecipeContext& context, std::string_view file_name, int32_t con_number) {
  clsSectionFile file;
  Failure ignored;
  if (file.Open(file_name, context.options.RecipeText(), ignored)) ReadFromFileSequentially(context, file, con_number);
}

void clsCon::ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t con_number) {
  const std::string sSection = "Consolidate " + std::to_string(con_number);
  int32_t lTable = 0;
  if (!ReadPositiveNumber(filehandle, sSection, "Table", lTable)) {
    return ReportRecipe(context.host, kConTableNumber, {sSection});
  }
  if (context.recipe.ExportSpecs.TablesCollection.size() < static_cast<size_t>(lTable)) {
    return ReportRecipe(context.host, kConNoSuchTable, {sSection, std::to_string(lTable)});
  }
  Table = lTable;
  if (!ReadPositiveNumber(filehandle, {}, "ReadAccountsColumn", ReadAccountsColumn)) {
    return ReportRecipe(context.host, kConAccountsColumn, {sSection});
  }
  TotalDepartments = RequiredWholeNumber(context.recipe.ExportSpecFileName + ": [" + sSection + "]", "TotalDepartments",
                                         ReadSectionValue(filehandle, {}, "TotalDepartments", "0"));
  DepartmentsCollection.clear();
  for (int32_t d = 1; d <= TotalDepartments && filehandle.MayReadOn(); ++d) {
    DepartmentsCollection.emplace_back().ReadFromFileSequentially(context, filehandle, con_number, d);
  }
  TotalDepartments = static_cast<int32_t>(DepartmentsCollection.size());
}

void clsCon::WriteToFile(clsSectionWriter& file, int32_t con_number) const {
  const std::string sSection = "Consolidate " + std::to_string(con_number);
  file.Set(sSection, "Table", Table);
  file.Set(sSection, "ReadAccountsColumn", ReadAccountsColumn);
  file.Set(sSection, "TotalDepartments", TotalDepartments);
  int32_t lDepartment = 0;
  for (const clsDepartment& department : DepartmentsCollection) {
    department.WriteToFile(file, con_number, ++lDepartment);
  }
}

}  // namespace quillon
