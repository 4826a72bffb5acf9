#include "clsPeriodFiles.h"

#include "clsRecipe.h"
#include "modFiles.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"
#include "modTurns.h"

namespace quillon {

namespace {

/// Always False. A stop of the run (modTurns) is no failure of the report.
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
    Failure failure;
    if (!PathExists(sName)) {
      ReportRecipe(context.host, -5401, {sName});
      continue;
    }
    if (!readers_[i].Open(sName, context.options.text, failure)) {
      return TellUnread(context, failure);
    }
    open_[i] = true;
    readers_[i].SkipRows(lFirstLine - 1);
    readers_[i].LeaveTurnsToCaller(true);
  }
  return true;
}

bool clsPeriodFiles::ReadRows(RecipeContext& context, int32_t tab_size) {
  auto& slots = context.lineProcessor.RowCollection;
  for (clsRow& slot : slots) slot.Clear();
  for (size_t i = nFirst_; i <= nLast_; ++i) {
    std::string_view sRow;
    if (open_[i] && readers_[i].ReadRow(sRow)) slots[i].SetView(sRow, readers_[i].CodePage(), false);
    if (readers_[i].LastFailure().Failed()) {
      return TellUnread(context, readers_[i].LastFailure());
    }
    if (tab_size > 0 && !slots[i].Expand(tab_size)) return EndWalk(context, "The tabs of a row make it too long");
  }
  return true;
}

bool clsPeriodFiles::AtEnd() {
  for (size_t i = nFirst_; i <= nLast_; ++i) {
    if (open_[i] && !readers_[i].AtEnd()) return false;
  }
  return true;
}

}  // namespace quillon
