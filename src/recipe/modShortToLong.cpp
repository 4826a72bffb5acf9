// FileConvertShortToLong of clsExportSpecs: a short recipe becomes an export specification by measuring the report.

#include <algorithm>
#include <utility>

#include "clsExportSpecs.h"
#include "clsTableParser.h"
#include "modColumnLetters.h"
#include "modFiles.h"
#include "modRecipeKind.h"
#include "modRecipeMessages.h"
#include "modSettings.h"
#include "modShortTable.h"
#include "modText.h"
#include "modTidyRecipe.h"
#include "modTranslator.h"

namespace quillon {

namespace {

class clsTableConverter {
 public:
  clsTableConverter(RecipeContext& context, clsSectionFile& recipe, const clsTidyTables& tidy,
                    std::string_view textDataFile, std::string_view sRecipeName)
      : context_(context), recipe_(recipe), tidy_(tidy), sTextFile_(textDataFile), sRecipeName_(sRecipeName) {}

  /// All tables, up to the first that can't be found or has no columns, which is reported.
  void ConvertAll(clsSectionWriter& file) {
    clsHost& host = context_.host;
    const std::string sCaption = gbCommandLineMode ? std::string() : host.Caption();
    lTables_ = CountShortTables(recipe_);
    for (int32_t i = 1; i <= lTables_ && !gbAbandonOutput; ++i) {
      if (!gbCommandLineMode) {
        host.SetCaption(context_.options.sFormCaption + Translate(" - Scanning ") + "Table " + std::to_string(i));
      }
      clsTable table;
      if (!(tidy_.Has(i) ? ConvertTidy(i, table) : Convert(i, table))) break;
      table.WriteToFile(file, i);
      host.LetEventsRun();
    }
    if (!gbCommandLineMode) host.SetCaption(sCaption);
  }

 private:
  /// So that one pass over the report finds the key texts of all tables.
  void ExpectKeyTexts() {
    if (std::exchange(bExpected_, true)) return;
    context_.Report(std::string(sTextFile_)).Expect(KeyTextsOf(recipe_, lTables_));
  }

  /// False, with the report, if the table can't be found or has no columns; without one if the run is given up.
  bool Convert(int32_t lTable, clsTable& table) {
    ShortTable keys = ReadShortTable(recipe_, lTable);
    table.ReadStartLine = keys.sStartLine;
    const std::string sPlace = std::string(sRecipeName_) + ": [Table " + std::to_string(lTable) + "]";
    table.ReadStartLineOffset = RequiredWholeNumber(sPlace, "ReadStartLineOffset", keys.sStartOffset);
    table.ReadEndLine = keys.sEndLine;
    table.ReadEndLineOffset = RequiredWholeNumber(sPlace, "ReadEndLineOffset", keys.sEndOffset);
    if (IsOpenTemplate(keys.sTemplate)) ExpectKeyTexts();
    if (!FixTemplate(context_, sTextFile_, glTabSize, table, keys.sTemplate)) {
      return !gbAbandonOutput && Fails(kTemplateNotFound, lTable);
    }
    std::vector<int32_t> colStart;
    std::vector<int32_t> colEnd;
    std::vector<std::string> colOp;
    if (!clsTableParser::analyze_template(context_.host, keys.sTemplate, colStart, colEnd, colOp)) {
      return Fails(kNoTemplateRuler, lTable);
    }
    if (!IsColumnRight(lTable, keys.sWriteColumn)) return false;
    AddColumns(table, colStart, colEnd, AlphaToNum2(context_.host, keys.sWriteColumn) - 1);
    return true;
  }

  bool ConvertTidy(int32_t lTable, clsTable& table) {
    TidyFault fault;
    table.tidy.emplace();
    if (tidy_.Read(lTable, *table.tidy, fault) && PlaceRuler(context_, sTextFile_, *table.tidy, fault)) return true;
    if (gbAbandonOutput) return false;
    if (!fault.IsSet()) return Fails(kTemplateNotFound, lTable);
    ReportTidyFault(context_.host, sRecipeName_, fault);
    return false;
  }

  /// A letter that is none would be told by its cells, and in the words of the specification.
  bool IsColumnRight(int32_t lTable, const std::string& sColumn) {
    const bool bLetters = !sColumn.empty() && std::all_of(sColumn.begin(), sColumn.end(), IsAsciiLetter);
    if (!context_.options.bSayMore || context_.options.bKeep || (bLetters && IsColumnText(sColumn))) return true;
    const std::string sSection = "Table " + std::to_string(lTable);
    ReportRecipe(context_.host, kWriteColumn, {sSection}, true,
                 sColumn.empty() ? WhyMissing(recipe_, sSection, "WriteColumn") : "WriteColumn=" + sColumn);
    return false;
  }

  std::string WhyNoRuler(int32_t lTable) {
    const std::string sSection = "Table " + std::to_string(lTable);
    const bool bThere = !ReadKeyFromFile(recipe_, sSection, "Parsing", {}).empty();
    return bThere ? "[" + sSection + "]: " + Translate("Parsing gives no columns")
                  : WhyMissing(recipe_, sSection, "Parsing");
  }

  bool Fails(RecipeCode code, int32_t lTable) {
    const bool bNoRuler = code == kNoTemplateRuler;
    ReportRecipe(context_.host, code, {std::to_string(lTable)}, true,
                 bNoRuler ? context_.options.More(WhyNoRuler(lTable)) : std::string());
    return false;
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
  const clsTidyTables& tidy_;
  std::string_view sTextFile_;
  std::string_view sRecipeName_;
  int64_t lTables_ = 0;
  bool bExpected_ = false;
};

/// A missing recipe has no tables.
void OpenShort(RecipeContext& context, std::string_view short_file, const OwnShortRecipe* pOwn,
               clsSectionFile& recipe) {
  Failure failure;
  const bool bExists = IsFile(short_file);
  if (!bExists) {
    const std::string sName = pOwn != nullptr ? pOwn->sShownName : std::string(short_file);
    ReportRecipe(context.host, kNoShortRecipe, {}, true, "    " + sName);
  }
  const TextFileOptions text = pOwn != nullptr ? pOwn->text : context.options.RecipeText();
  if (recipe.Open(short_file, text, failure) || !bExists) return;
  ReportRecipe(context.host, kShortRecipeUnreadable, {failure.sText});
  context.account.failure = failure;  // so that nothing is written over
}

}  // namespace

Failure clsExportSpecs::FileConvertShortToLong(RecipeContext& context, std::string_view short_file,
                                               std::string_view long_file, std::string_view textDataFile,
                                               const OwnShortRecipe* pOwn) {
  clsSectionFile recipe;
  Failure failure;
  OpenShort(context, short_file, pOwn, recipe);
  if (context.account.failure.Failed()) return failure;
  const std::string sRecipeName = pOwn != nullptr ? pOwn->sShownName : std::string(short_file);
  const clsTidyTables tidy(recipe);
  TidyFault fault;
  if (!tidy.Check(static_cast<int32_t>(CountShortTables(recipe)), fault)) {
    ReportTidyFault(context.host, sRecipeName, fault);
    context.account.failure = OwnFailure(sRecipeName, fault.sText);  // so that nothing is written over
    return failure;
  }

  DateOrder order = DateOrder::ByColumn;
  if (!ReadDateOrder(context, recipe, sRecipeName, order)) return failure;

  clsSectionWriter file(*context.options.OwnText().pCodePage);
  if (!file.Load(long_file, failure)) return failure;
  file.Set("Header", "Product", FileHeader_Product);
  file.Set("Header", "FileType", FileHeader_FileType);
  file.Set("Header", "FileFormat", FileHeader_FileFormat);
  file.Set("General", "Name", "");
  if (order != DateOrder::ByColumn) {
    file.Set("General", kDateOrderKey, ReadKeyFromFile(recipe, "General", kDateOrderKey, {}));
  }

  clsTableConverter(context, recipe, tidy, textDataFile, sRecipeName).ConvertAll(file);
  file.Save(long_file, failure);
  return failure;
}

}  // namespace quillon
