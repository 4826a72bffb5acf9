#include "clsTitle.h"

#include "modNumbers.h"
#include "modRecipeMessages.h"
#include "modText.h"

namespace quillon {

void clsTitle::ReadFromFile(RecipeContext& context, std::string_view file_name, int32_t title_number) {
  clsSectionFile file;
  Failure ignored;
  file.Open(file_name, context.options.RecipeText(), ignored);
  ReadFromFileSequentially(context, file, title_number);
}

void clsTitle::ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t title_number) {
  const std::string sSection = "Title " + std::to_string(title_number);
  int32_t lLines = 0;
  if (!ReadPositiveNumber(filehandle, sSection, "WriteSheet", WriteSheet)) {
    return ReportRecipe(context.host, kTitleSheet, {sSection});
  }
  if (!ReadColumnLetters(filehandle, "WriteColumn", WriteColumn)) {
    return ReportRecipe(context.host, kTitleColumn, {sSection});
  }
  if (!ReadPositiveNumber(filehandle, {}, "TotalLines", lLines)) {
    return ReportRecipe(context.host, kTitleLines, {sSection});
  }
  TextLines.clear();
  for (int32_t i = 1; i <= lLines && filehandle.MayReadOn(); ++i) {
    TextLines.push_back(ReadSectionValue(filehandle, {}, "Text" + std::to_string(i), {}));
  }
}

void clsTitle::WriteToFile(clsSectionWriter& file, int32_t title_number) const {
  const std::string sSection = "Title " + std::to_string(title_number);
  file.Set(sSection, "WriteSheet", WriteSheet);
  file.Set(sSection, "WriteColumn", WriteColumn);
  file.Set(sSection, "TotalLines", static_cast<int32_t>(TextLines.size()));
  int32_t lLine = 0;
  for (const std::string& sLine : TextLines) file.Set(sSection, "Text" + std::to_string(++lLine), sLine);
}

void clsTitle::ParseSheetRowColumn(clsHost& host, std::string_view sCode, int32_t& lSheet, int32_t& lRow,
                                   std::string& sColumn) {
  const size_t nFirst = sCode.find(',');
  const size_t nSecond = nFirst == std::string_view::npos ? nFirst : sCode.find(',', nFirst + 1);
  const auto part = [&](size_t nFrom, size_t nEnd) {
    return nFrom > sCode.size() ? std::string_view{} : sCode.substr(nFrom, nEnd - nFrom);
  };
  const auto behind = [](size_t nComma) { return nComma == std::string_view::npos ? nComma : nComma + 1; };
  lSheet = ParseWholeNumber(part(0, nFirst)).value_or(0);
  lRow = ParseWholeNumber(part(behind(nFirst), nSecond)).value_or(0);
  sColumn = TrimBlanks(part(behind(nSecond), std::string_view::npos));
  const bool bRight = lSheet >= 1 && lRow >= 1 && IsColumnText(sColumn);
  if (lSheet < 1) lSheet = 1;
  if (lRow < 1) lRow = 1;
  if (!IsColumnText(sColumn)) sColumn = "A";
  if (!bRight) ReportRecipe(host, kSheetRowColumn);
}

}  // namespace quillon
