#include "clsColumn.h"

#include "modNumbers.h"
#include "modRecipeMessages.h"
#include "modText.h"

namespace quillon {

namespace {

std::string SectionName(int32_t table_number, int32_t col_number) {
  return "Table " + std::to_string(table_number) + " Col " + std::to_string(col_number);
}

}  // namespace

void clsColumn::ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t table_number,
                                         int32_t col_number) {
  const std::string sSection = SectionName(table_number, col_number);
  const auto more = [&](std::string_view sKey) {
    return context.options.More("In section [" + sSection + "], key " + std::string(sKey));
  };
  if (!ReadPositiveNumber(filehandle, sSection, "ReadColumnStart", ReadColumnStart)) {
    return ReportRecipe(context.host, kReadColumnStart, {}, true, more("ReadColumnStart"));
  }
  if (!ReadPositiveNumber(filehandle, {}, "ReadColumnEnd", ReadColumnEnd)) {
    return ReportRecipe(context.host, kReadColumnEnd, {}, true, more("ReadColumnEnd"));
  }
  if (!ReadColumnLetters(filehandle, "WriteColumn", WriteColumn)) {
    return ReportRecipe(context.host, kWriteColumn, {sSection}, true, more("WriteColumn"));
  }
  const std::string sOperator = ReadSectionValue(filehandle, {}, "PeriodOperator", {});
  const std::string sUpper = UpperText(sOperator);
  if (!sUpper.empty() && sUpper != "SUM" && sUpper != "DUPLICATE") {
    return ReportRecipe(context.host, kPeriodOperator, {}, true, more("PeriodOperator"));
  }
  PeriodOperator = sOperator;
}

void clsColumn::WriteToFile(clsSectionWriter& file, int32_t table_number, int32_t col_number) const {
  const std::string sSection = SectionName(table_number, col_number);
  file.Set(sSection, "ReadColumnStart", ReadColumnStart);
  file.Set(sSection, "ReadColumnEnd", ReadColumnEnd);
  file.Set(sSection, "WriteColumn", WriteColumn);
  file.Set(sSection, "PeriodOperator", PeriodOperator);
}

}  // namespace quillon
