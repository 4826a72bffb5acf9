#include "modRecipeFailures.h"

#include "modRecipeMessages.h"
#include "modTranslator.h"

namespace quillon {

namespace {

void ReportReason(RecipeContext& context, const Failure& failure) {
  ReportEntry entry = RecipeEntry(kCellsFailed, {std::to_string(failure.nError), failure.sText});
  entry.sCause = failure.sText;
  context.host.Report(entry);
}

}  // namespace

bool EndWalk(RecipeContext& context, std::string_view sReason, std::string_view sPlace) {
  context.account.sWalkEnded = Translate(sReason);
  if (!sPlace.empty()) context.account.sWalkEnded.append(": ").append(sPlace);
  return false;
}

bool EndWalkAtCell(RecipeContext& context, const Failure& failure) {
  ++context.account.lCellsFailed;
  context.account.sWalkEnded = failure.sText;
  return false;
}

void ReportCellFailure(RecipeContext& context, const Failure& failure) {
  if (context.account.lCellsFailed++ == 0) ReportReason(context, failure);
}

void ReportFileFailure(RecipeContext& context, const Failure& failure) {
  context.account.failure = failure;
  if (context.options.bSayMore) return;
  ReportEntry entry = RecipeEntry(kCellsFailed, {std::to_string(failure.nError), failure.sText});
  entry.sErr2 = entry.sCause = failure.sText;
  context.host.Report(entry);
}

}  // namespace quillon
