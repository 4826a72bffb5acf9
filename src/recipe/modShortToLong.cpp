// FileConvertShortToLong of clsExportSpecs: a short recipe becomes an export specification by measuring the report.

#include "clsExportSpecs.h"
#include "clsTableParser.h"
#include "modColumnLetters.h"
#include "modFiles.h"
#include "modRecipeMessages.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

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

class clsTableConverter {
 public:
  clsTableConverter(RecipeContext& context, clsSectionFile& recipe, std::string_view textDataFile)
      : context_(context), recipe_(recipe), sTextFile_(textDataFile) {}

  /// False, with the report, if the table can't be found or has no columns.
  bool Convert(int32_t lTable, clsTable& table) {
    const std::string sSection = "Table " + std::to_string(lTable);
    ReadKeys(sSection, table);
    std::string sTemplate = UpperText(ReadKeyFromFileTrimmed(recipe_, sSection, "Parsing", {}, TrimMode::RightOnly));
    const std::string sWriteColumn = ReadKeyFromFile(recipe_, sSection, "WriteColumn", {});
    if (!FixTemplate(table, sTemplate)) return Fails(-5301, lTable);
    std::vector<int32_t> colStart;
    std::vector<int32_t> colEnd;
    std::vector<std::string> colOp;
    if (!clsTableParser::analyze_template(context_.host, sTemplate, colStart, colEnd, colOp)) {
      return Fails(-5302, lTable);
    }
    AddColumns(table, colStart, colEnd, AlphaToNum2(context_.host, sWriteColumn) - 1);
    return true;
  }

 private:
  bool Fails(int32_t lErr, int32_t lTable) {
    ReportRecipe(context_.host, lErr, {std::to_string(lTable)});
    return false;
  }

  void ReadKeys(std::string_view sSection, clsTable& table) {
    const auto offset = [&](std::string_view sKey) {
      return RequiredWholeNumber(sKey, ReadKeyFromFile(recipe_, sSection, sKey, "0"));
    };
    table.ReadStartLine = ReadKeyFromFile(recipe_, sSection, "ReadStartLine", {});
    table.ReadStartLineOffset = offset("ReadStartLineOffset");
    table.ReadEndLine = ReadKeyFromFile(recipe_, sSection, "ReadEndLine", {});
    table.ReadEndLineOffset = offset("ReadEndLineOffset");
  }

  /// Works out what the template leaves open. Nothing to do, and no look at the report, for a drawn one.
  bool FixTemplate(const clsTable& table, std::string& sTemplate) {
    const std::string_view sWord = TrimBlanks(sTemplate);
    if (sWord != "-" && sTemplate.find('=') == std::string::npos) return true;
    clsTableParser parser;
    parser.ReadFromFile(context_, sTextFile_, table.ReadStartLine, table.ReadStartLineOffset, table.ReadEndLine,
                        table.ReadEndLineOffset, glTabSize);
    if (parser.TableWidth < 1) return false;
    sTemplate = parser.VariableToFixedTemplate(context_.host,
                                               WideTemplate(sTemplate, sWord, static_cast<size_t>(parser.TableWidth)));
    return true;
  }

  void AddColumns(clsTable& table, const std::vector<int32_t>& colStart, const std::vector<int32_t>& colEnd,
                  int32_t lBase) {
    table.TotalColumns = static_cast<int32_t>(colStart.size());
    table.ColumnsCollection.resize(colStart.size());
    for (size_t j = 0; j < colStart.size(); ++j) {
      clsColumn& column = table.ColumnsCollection[j];
      column.ReadColumnStart = colStart[j];
      column.ReadColumnEnd = colEnd[j];
      column.WriteColumn = NumToAlpha2(context_.host, lBase + static_cast<int32_t>(j) + 1);
    }
  }

  RecipeContext& context_;
  clsSectionFile& recipe_;
  std::string_view sTextFile_;
};

}  // namespace

void clsExportSpecs::FileConvertShortToLong(RecipeContext& context, std::string_view short_file,
                                            std::string_view long_file, std::string_view textDataFile,
                                            const TextFileOptions* pShortOptions) {
  clsHost& host = context.host;
  clsSectionFile recipe;
  Failure ignored;
  if (!FileExists(short_file)) ReportRecipe(host, -5300, {}, true, "    " + std::string(short_file));
  recipe.Open(short_file, pShortOptions != nullptr ? *pShortOptions : context.options.RecipeText(), ignored);

  clsSectionWriter file(*context.options.OwnText().pCodePage);
  if (!file.Load(long_file, ignored)) return;
  file.Set("Header", "Product", FileHeader_Product);
  file.Set("Header", "FileType", FileHeader_FileType);
  file.Set("Header", "FileFormat", FileHeader_FileFormat);
  file.Set("General", "Name", "");

  const std::string sCaption = gbCommandLineMode ? std::string() : host.Caption();
  const int64_t lTables = CountMatchingLines(recipe, {.sNeedle1 = "[Table ", .sExclusion = "Col"});
  clsTableConverter converter(context, recipe, textDataFile);
  for (int32_t i = 1; i <= lTables && !gbAbandonOutput; ++i) {
    if (!gbCommandLineMode) {
      host.SetCaption(sCaption + Translate(" - Scanning ") + "Table " + std::to_string(i));
    }
    clsTable table;
    if (!converter.Convert(i, table)) break;
    table.WriteToFile(file, i);
    host.LetEventsRun();
  }
  if (!gbCommandLineMode) host.SetCaption(sCaption);
  file.Save(long_file, ignored);
}

}  // namespace quillon
