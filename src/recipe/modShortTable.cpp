#include "modShortTable.h"

#include "clsTableParser.h"
#include "modText.h"

namespace quillon {

namespace {

/// A free template brought to the width of the table: one that is longer keeps its last character, which may say how
/// to justify.
std::string FitTemplate(const std::string& sTemplate, size_t nWidth) {
  const size_t nLength = CharCount(sTemplate);
  if (nLength <= nWidth) return sTemplate;
  const size_t nLast = ByteOffset(sTemplate, nLength);
  return sTemplate.substr(0, ByteOffset(sTemplate, nWidth)) + sTemplate.substr(nLast);
}

/// The template as wide as the table, for the words "=", "=L", "=R", "-" as for rulers with a "=" in them.
std::string WideTemplate(const std::string& sTemplate, std::string_view sWord, size_t nWidth) {
  if (sWord == "-" || sWord == "=") return std::string(nWidth, sWord.front());
  if (sWord == "=L" || sWord == "=R") return std::string(nWidth - 1, '=') + sWord.back();
  return FitTemplate(sTemplate, nWidth);
}

}  // namespace

int64_t CountShortTables(clsSectionFile& recipe) {
  return CountMatchingLines(recipe, {.sNeedle1 = "[Table ", .sExclusion = "Col"});
}

ShortTable ReadShortTable(clsSectionFile& recipe, int32_t lTable) {
  const std::string sSection = "Table " + std::to_string(lTable);
  const auto key = [&](std::string_view sKey, std::string_view sDefault) {
    return ReadKeyFromFile(recipe, sSection, sKey, sDefault);
  };
  ShortTable keys;
  keys.sStartLine = key("ReadStartLine", {});
  keys.sStartOffset = key("ReadStartLineOffset", "0");
  keys.sEndLine = key("ReadEndLine", {});
  keys.sEndOffset = key("ReadEndLineOffset", "0");
  keys.sTemplate = UpperText(ReadKeyFromFileTrimmed(recipe, sSection, "Parsing", {}, TrimMode::RightOnly));
  keys.sWriteColumn = key("WriteColumn", {});
  return keys;
}

std::vector<std::string> KeyTextsOf(clsSectionFile& recipe, int64_t lTables) {
  std::vector<std::string> texts;
  for (int32_t i = 1; i <= lTables && recipe.MayReadOn(); ++i) {
    const std::string sSection = "Table " + std::to_string(i);
    for (const std::string_view sKey : {"ReadStartLine", "ReadEndLine"}) {
      texts.push_back(ReadKeyFromFile(recipe, sSection, sKey, {}));
    }
  }
  return texts;
}

bool IsOpenTemplate(std::string_view sTemplate) {
  return TrimBlanks(sTemplate) == "-" || sTemplate.find('=') != std::string_view::npos;
}

bool FixTemplate(RecipeContext& context, std::string_view sTextFile, int32_t lTabSize, const clsTable& table,
                 std::string& sTemplate) {
  if (!IsOpenTemplate(sTemplate)) return true;
  const std::string_view sWord = TrimBlanks(sTemplate);
  clsTableParser parser;
  parser.ReadFromFile(context, sTextFile, table.ReadStartLine, table.ReadStartLineOffset, table.ReadEndLine,
                      table.ReadEndLineOffset, lTabSize);
  if (parser.TableWidth < 1) return false;
  sTemplate = parser.VariableToFixedTemplate(context.host,
                                             WideTemplate(sTemplate, sWord, static_cast<size_t>(parser.TableWidth)));
  return true;
}

}  // namespace quillon
