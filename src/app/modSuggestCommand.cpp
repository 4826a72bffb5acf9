// SuggestCommand of modLookCommands.

#include "clsLook.h"
#include "clsOutputFile.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modLookCommands.h"
#include "modSuggestRecipe.h"

namespace quillon {

namespace {

/// What was found, for a person.
void SayWhatIsThere(const SuggestedRecipe& recipe) {
  clsLook::Say(CountedText(static_cast<int64_t>(recipe.tables.size()), "table", "tables") + " found");
  if (!recipe.unreachable.empty()) {
    clsLook::Say(CountedText(static_cast<int64_t>(recipe.unreachable.size()), "table has", "tables have") +
                 " no key text near that is new in the report, and is left out");
  }
  if (!recipe.bWholeReport) clsLook::Say("only the beginning of the report was looked at");
}

}  // namespace

int SuggestCommand(const LookRequest& request) {
  clsLook look(request);
  if (!look.TakeInput()) return kExitWrongUse;
  if (IsSameFile(look.preview.sInput, request.sOutput)) {
    clsLook::Say(request.sOutput + ": the recipe would replace the report");
    return kExitWrongUse;
  }
  SuggestedRecipe recipe;
  Failure failure;
  if (!SuggestRecipe(look.preview.sInput, look.preview.text, look.preview.lTabSize, recipe, failure)) {
    clsLook::Say(failure.sText);
    return kExitSomeFailed;
  }
  SayWhatIsThere(recipe);
  if (recipe.tables.empty()) return kExitSomeFailed;
  if (request.sOutput.empty()) {
    look.PrintText(recipe.Text());
    return look.Flush() ? kExitDone : kExitSomeFailed;
  }
  if (WriteWholeFile(request.sOutput, recipe.Text(), failure)) return kExitDone;
  clsLook::Say(failure.sText);
  return kExitSomeFailed;
}

}  // namespace quillon
