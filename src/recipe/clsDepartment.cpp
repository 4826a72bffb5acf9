#include "clsDepartment.h"

#include "clsRecipe.h"
#include "modRecipeMessages.h"

namespace quillon {

namespace {

std::string SectionName(int32_t con_number, int32_t dept_number) {
  return "Con " + std::to_string(con_number) + " Dept " + std::to_string(dept_number);
}

}  // namespace

void clsDepartment::ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t con_number,
                                             int32_t dept_number) {
  const std::string sSection = SectionName(con_number, dept_number);
  const std::string sPlace = context.recipe.ExportSpecFileName + ": [" + sSection + "]";
  if (!ReadRequiredText(filehandle, sSection, "ReadStartLine", ReadStartLine)) {
    return ReportRecipe(context.host, kDepartmentNoStartText, {sSection});
  }
  ReadStartLineOffset = ReadOffset(filehandle, sPlace, "ReadStartLineOffset");
  if (!ReadRequiredText(filehandle, {}, "ReadEndLine", ReadEndLine)) {
    return ReportRecipe(context.host, kDepartmentNoEndText, {sSection});
  }
  ReadEndLineOffset = ReadOffset(filehandle, sPlace, "ReadEndLineOffset");
}

void clsDepartment::WriteToFile(clsSectionWriter& file, int32_t con_number, int32_t dept_number) const {
  const std::string sSection = SectionName(con_number, dept_number);
  file.Set(sSection, "ReadStartLine", ReadStartLine);
  file.Set(sSection, "ReadStartLineOffset", ReadStartLineOffset);
  file.Set(sSection, "ReadEndLine", ReadEndLine);
  file.Set(sSection, "ReadEndLineOffset", ReadEndLineOffset);
}

}  // namespace quillon
