#include "clsPeriodFiles.h"

#include "clsRecipe.h"
#include "modEventLoop.h"
#include "modFiles.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"

namespace quillon {

namespace {

/// Always False. A stop of the run (modEventLoop) is no failure of the report.
bool TellUnread(RecipeContext& context, const Failure& failure) {
  if (IsStopped(failure)) return false;
  ReportFileFailure(context, failure);
  return EndWalk(context, "A report could not be read", failure.sText);
}

}  // namespace

bool clsPeriodFiles::Open(RecipeContext& context, int64_t lFirstLine) {
  const clsRecipe& recipe = context.recipe;
  if (recipe.InputFileFirst < 1 || recipe.InputFileLast > clsLineProcessor::kPeriods ||
      recipe.InputFileLast < recipe.InputFileFirst) {
    return EndWalk(context, "The range of periods is none of 1 to 12");
  }
  nFirst_ = static_cast<size_t>(recipe.InputFileFirst) - 1;
  nLast_ = static_cast<size_t>(recipe.InputFileLast) - 1;
  for (size_t i = nFirst_; i <= nLast_; ++i) {
    const std::string& sName = recipe.InputFileName[i];
    reports_[i] = &context.Report(sName, static_cast<int32_t>(i) + 1);
    Failure failure;
    if (!PathExists(sName)) {
      ReportRecipe(context.host, kNoPeriodFile, {sName});
      continue;
    }
    if (!reports_[i]->Open(failure)) return TellUnread(context, failure);
    open_[i] = true;
    clsLineReader& reader = reports_[i]->Reader();
    reader.LeaveEventsToCaller(false);
    reports_[i]->SeekLine(lFirstLine);
    reader.LeaveEventsToCaller(true);
  }
  return true;
}

bool clsPeriodFiles::ReadRows(RecipeContext& context, int32_t tab_size) {
  auto& slots = context.lineProcessor.RowCollection;
  for (clsRow& slot : slots) slot.Clear();
  for (size_t i = nFirst_; i <= nLast_; ++i) {
    std::string_view sRow;
    clsLineReader& reader = reports_[i]->Reader();
    if (open_[i] && reader.ReadRow(sRow)) slots[i].SetView(sRow, reader.CodePage(), false);
    if (reader.LastFailure().Failed()) return TellUnread(context, reader.LastFailure());
    if (tab_size > 0 && !slots[i].Expand(tab_size)) return EndWalk(context, "The tabs of a row make it too long");
  }
  return true;
}

bool clsPeriodFiles::AtEnd() {
  for (size_t i = nFirst_; i <= nLast_; ++i) {
    if (open_[i] && !reports_[i]->Reader().AtEnd()) return false;
  }
  return true;
}

}  // namespace quillon
