#include "modProveReport.h"

#include <vector>

#include "clsSectionFile.h"
#include "clsSectionWriter.h"
#include "modEventLoop.h"
#include "modMarkup.h"
#include "modReportCheck.h"

namespace quillon {

bool ProveReport(const PreviewRequest& report, std::string_view sRecipe, ReportProof& proof, std::string& sFault) {
  clsSectionFile recipe;
  recipe.OpenMemory(sRecipe, {.bUnix = false, .pCodePage = &clsCodePage::Utf8()});
  PreviewRequest whole = report;
  whole.text.lMostBytes = 0;
  whole.lRows = 0;
  clsRecipeCheck tables(whole, recipe);
  const std::set<int32_t> tidy = TidyTablesIn(recipe);
  std::vector<ReportPreview> cutTables;
  for (int32_t lTable = 1; lTable <= tables.Tables() && RunEvents(); ++lTable) {
    if (!tidy.contains(lTable)) cutTables.push_back(tables.Look(lTable));
  }
  if (!RunEvents()) return false;
  ReportCheck check = CheckReport(whole, recipe, cutTables, nullptr);
  proof = std::move(check.proof);
  for (const ReportPreview& table : cutTables) {
    proof.loss.Add({.lBetween = table.lLeftOut - table.lBehind,
                    .lBehind = table.lBehind,
                    .lCuts = table.lCuts,
                    .lFirstLine = table.lFirstLossLine});
  }
  sFault = check.sFault;
  return sFault.empty();
}

std::string RecipeOfMarks(const PreviewRequest& report) {
  clsLineReader reader;
  TextFileOptions text = report.text;
  text.lMostBytes = 0;
  Failure failure;
  if (!reader.Open(report.sInput, text, failure)) return {};
  clsSectionWriter recipe(clsCodePage::Utf8());
  int64_t lWithoutEnd = 0;
  const bool bAny = WriteRecipeOfMarks(reader, recipe, lWithoutEnd) > 0;
  return bAny && !reader.LastFailure().Failed() ? recipe.Bytes() : std::string();
}

}  // namespace quillon
