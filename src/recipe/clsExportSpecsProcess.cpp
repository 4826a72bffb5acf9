#include <utility>

#include "clsExportSpecs.h"
#include "clsRecipe.h"
#include "clsTidyRun.h"
#include "clsWorkbook.h"
#include "modNumbers.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

std::string PeriodText(const clsRecipe& recipe) {
  std::string sPeriod = std::to_string(recipe.InputFileFirst);
  if (recipe.InputFileLast > recipe.InputFileFirst) sPeriod += "-" + std::to_string(recipe.InputFileLast);
  return sPeriod;
}

/// A name that a spreadsheet refuses is left out; the run goes on.
void NameSheets(RecipeContext& context) {
  const std::string sBehind = " (P" + PeriodText(context.recipe) + ")";
  const auto name = [&](int nSheet, const std::string& sName) {
    Failure failure;
    if (TrimBlanks(sName).empty() || context.pWorkbook->SetSheetName(nSheet, sName + sBehind, failure)) return;
    context.account.namesRefused.push_back(failure.sText);
  };
  if (context.pWorkbook == nullptr) return;
  name(1, context.recipe.Sheet1Name);
  name(2, context.recipe.Sheet2Name);
  context.pWorkbook->SetStandardFont("Courier New");
}

/// So that one pass over the report finds the key texts of all tables.
void ExpectKeyTexts(RecipeContext& context, const std::vector<clsTable>& tables) {
  std::vector<std::string> texts;
  for (const clsTable& table : tables) {
    texts.push_back(table.tidy ? table.tidy->sStartLine : table.ReadStartLine);
    texts.push_back(table.tidy ? table.tidy->sEndLine : table.ReadEndLine);
  }
  context.Report(context.recipe.InputFileNameOf(context.recipe.InputFileFirst)).Expect(texts);
}

void ShowTime(RecipeContext& context) {
  const int64_t lTicks = context.host.TickMilliseconds() - context.options.lTotalTimeStart;
  context.host.SetStatusPanel(StatusBar::Main, 6, FormatOneDecimal(static_cast<double>(lTicks) / 1000));
}

}  // namespace

void clsExportSpecs::Process(RecipeContext& context, clsOutputFile* csv_file_handle) {
  if (static_cast<int64_t>(SectionSequenceCollection.size()) != lTitles_ + lTables_ + lConsolidates_) {
    return ReportRecipe(context.host, kSectionCount, {}, true,
                        context.options.More("The lines that look like the header of a section don't agree with the "
                                             "sections [Title n], [Table n] and [Consolidate n]"));
  }
  if (csv_file_handle == nullptr) NameSheets(context);
  ExpectKeyTexts(context, TablesCollection);
  writePointers_ = {1, 1};
  ProcessedTables = 0;
  FatalProcessError = gbPauseRequested = gbPauseConfirmed = false;
  gbProcessing = true;
  const clsEventLoop loop([&host = context.host] {
    host.LetEventsRun();
    return !gbAbandonOutput && !(gbPauseRequested && PauseEndsRun(host));
  });
  SectionIndexes indexes;
  for (const std::string& sKind : SectionSequenceCollection) {
    ShowTime(context);
    context.host.LetEventsRun();
    // A section that died leaves gbProcessing as it is, like one that failed.
    if (!ProcessSection(context, csv_file_handle, sKind, indexes) || FatalProcessError) return;
    if (gbPauseRequested || gbAbandonOutput) break;
  }
  gbProcessing = false;
}

/// Runs the next section of its kind. False ends the walk.
bool clsExportSpecs::ProcessSection(RecipeContext& context, clsOutputFile* csv_file_handle, const std::string& sKind,
                                    SectionIndexes& indexes) {
  const auto missing = [&] { return EndWalk(context, "A section of the specification could not be read", sKind); };
  if (sKind == "Title") {
    const size_t n = indexes.nTitle++;
    context.host.SetCaption(Translate("Writing Title ") + std::to_string(n + 1) + Translate("  Please wait..."));
    return n < TitlesCollection.size() ? TitlesCollection[n].Process(context) : missing();
  }
  if (sKind == "Table") {
    const size_t n = indexes.nTable++;
    context.host.SetCaption(Translate(" Exporting Table ") + std::to_string(n + 1) + ":");
    if (n >= TablesCollection.size()) return missing();
    if (TablesCollection[n].tidy) {
      ++ProcessedTables;
      return std::exchange(indexes.bTidyRan, true) || RunTidyTables(context, csv_file_handle);
    }
    TablesCollection[n].lDelimitationChar = context.options.lDelimitationCharacter;
    if (!TablesCollection[n].Process(context, csv_file_handle)) return false;
    if (!FatalProcessError) ++ProcessedTables;
    return true;
  }
  if (sKind == "Consolidate") {
    const size_t n = indexes.nConsolidate++;
    return n < ConsolidateCollection.size() ? ConsolidateCollection[n].Process(context) : missing();
  }
  ReportRecipe(context.host, kSectionType);
  return false;
}

}  // namespace quillon
