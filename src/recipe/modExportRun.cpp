#include "modExportRun.h"

#include <algorithm>

#include "clsOutputFile.h"
#include "clsRecipe.h"
#include "modCellTyping.h"
#include "modExcelLink.h"
#include "modProofRun.h"
#include "modRecipeFailures.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr std::string_view kCaption = "Quillon - Text to Excel/CSV File Conversion";

/// A strict run gives up an output that lacks something, or whose totals don't agree.
bool StrictGivesUp(RecipeContext& context) {
  if (!context.options.bStrict || gbAbandonOutput || gbPauseRequested) return false;
  if (!context.account.tidy.bRan) ProveBlocks(context);
  context.account.sStrict = StrictFault(context.account);
  return !context.account.sStrict.empty() && !context.options.bKeep;
}

/// All lines of the report, unless they are counted.
void CountLines(RecipeContext& context) {
  if (context.account.lLinesRead > 0 || gbAbandonOutput || gbPauseRequested) return;
  clsReport& report = context.Report(context.recipe.InputFileNameOf(1));
  Failure ignored;
  if (report.Open(ignored)) context.account.lLinesRead = report.CountLines();
}

/// An interrupted run, and a report or disk that failed in the middle or changed: the old output is worth more than
/// half a new one.
bool OutputGivenUp(RecipeContext& context) {
  if (!context.account.tables.empty()) CountLines(context);
  for (const auto& [sReport, state] : context.reports) {
    const Failure change = ReportChange(sReport, state);
    if (change.Failed() && !context.account.failure.Failed()) ReportFileFailure(context, change);
  }
  return gbAbandonOutput || context.account.failure.Failed() || StrictGivesUp(context) ||
         (context.givesUp && context.givesUp());
}

void RunCsv(RecipeContext& context) {
  context.host.SetCaption(Translate("Writing report to CSV file. Please wait..."));
  clsOutputFile file;
  Failure failure;
  if (!file.Open(gsOutputFile, failure)) return ReportFileFailure(context, failure);
  context.recipe.ExportSpecs.Process(context, &file);
  if (OutputGivenUp(context)) {
    context.furtherFiles.clear();
    return file.Discard();
  }
  bool bWritten = true;
  for (const auto& further : context.furtherFiles) bWritten = bWritten && further->Commit(failure);
  context.account.bOutputWritten = bWritten && file.Commit(failure);
  context.furtherFiles.clear();
  if (!context.account.bOutputWritten && !IsStopped(failure)) ReportFileFailure(context, failure);
}

void ClearOutput(RecipeContext& context, clsWorkbook& workbook) {
  Failure ignored;
  // The range is that of the active sheet, whichever it is; it is cleared on sheet 1.
  const auto range = workbook.ActiveUsedRange();
  if (!range || !workbook.ClearContents(1, *range, ignored)) return;
  const CellRange used = workbook.ContentOf(1).used;
  const bool bAll = used.Empty() || (range->nTop <= used.nTop && range->nLeft <= used.nLeft &&
                                     range->nBottom >= used.nBottom && range->nRight >= used.nRight);
  if (bAll) return;
  context.account.workbookNotes.push_back(
      Translate("Another sheet is in front, and only as many cells were emptied as it has; with --sheet and the name "
                "of this one all are:") +
      " " + workbook.SheetName(1));
}

void RunWorkbook(RecipeContext& context, int32_t lFormat) {
  context.host.SetCaption(Translate("Writing data to Microsoft Excel. Please wait..."));
  WorkbookOptions options = context.options.workbook;
  if (options.typing.order == DateOrder::ByColumn) options.typing.order = context.recipe.ExportSpecs.dateOrder;
  options.typing.bDayFirst = LocaleIsDayFirst();
  options.bReadBack = !context.recipe.ExportSpecs.ConsolidateCollection.empty();
  std::unique_ptr<clsWorkbook> workbook = OpenExcelWorkbook(gsOutputFile, options);
  context.pWorkbook = workbook.get();
  if (context.options.bClearOutputFileBeforeProcessing) ClearOutput(context, *workbook);
  context.recipe.ExportSpecs.Process(context, nullptr);
  if (!OutputGivenUp(context)) {
    Failure failure;
    context.account.bOutputWritten = SaveExcelWorkbookAs(*workbook, gsOutputFile, lFormat, failure);
    if (!context.account.bOutputWritten && !IsStopped(failure)) ReportFileFailure(context, failure);
  }
  context.account.lFormulasRefused = workbook->RefusedFormulas();
  for (std::string& sNote : workbook->Notes()) context.account.workbookNotes.push_back(std::move(sNote));
  context.pWorkbook = nullptr;
  CloseExcelWorkbook(workbook);
}

/// Distinct lines of the tables, which may overlap.
int64_t LinesOf(const std::vector<TableAccount>& tables) {
  std::vector<std::pair<int64_t, int64_t>> blocks;
  for (const TableAccount& table : tables) {
    if (table.lFirstLine > 0) blocks.emplace_back(table.lFirstLine, table.lLastLine);
  }
  std::sort(blocks.begin(), blocks.end());
  int64_t lLines = 0;
  int64_t lDone = 0;
  for (const auto& [lFirst, lLast] : blocks) {
    lLines += std::max<int64_t>(0, lLast - std::max(lFirst - 1, lDone));
    lDone = std::max(lDone, lLast);
  }
  return lLines;
}

}  // namespace

void RunRecipe(RecipeContext& context, int32_t lFormat) {
  std::vector<std::string> leftOut = std::move(context.account.leftOut);  // By the marks
  context.account = FileAccount();
  context.account.leftOut = std::move(leftOut);
  if (lFormat == kFormatCsv) {
    RunCsv(context);
  } else {
    RunWorkbook(context, lFormat);
  }
  CountLines(context);
  context.pReports->Close();
  context.account.lLinesInTables = LinesOf(context.account.tables);
  context.host.SetCaption(Translate(kCaption));
}

}  // namespace quillon
