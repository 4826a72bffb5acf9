#include "modRecipeFailures.h"

#include <utility>

#include "modRecipeMessages.h"
#include "modTranslator.h"

namespace quillon {

namespace {

void ReportReason(RecipeContext& context, const Failure& failure) {
  if (std::exchange(context.account.bFailureTold, true)) return;
  ReportRecipe(context.host, -5006, {std::to_string(failure.nError), failure.sText});
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
  ++context.account.lCellsFailed;
  ReportReason(context, failure);
}

void ReportFileFailure(RecipeContext& context, const Failure& failure) {
  context.account.failure = failure;
  ReportReason(context, failure);
}

}  // namespace quillon
