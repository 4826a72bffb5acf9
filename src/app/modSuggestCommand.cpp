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
  int64_t lSections = 0;
  int64_t lDoubtful = 0;
  bool bFurniture = false;
  for (const SuggestedTable& table : recipe.tables) {
    lSections += static_cast<int64_t>(table.sections.size());
    lDoubtful += table.bDoubtful ? 1 : 0;
    bFurniture = bFurniture || table.bWithFurniture;
  }
  std::string sText = CountedText(static_cast<int64_t>(recipe.tables.size()), "table", "tables") + " found";
  if (lDoubtful > 0) sText += ", " + std::to_string(lDoubtful) + " of them doubtful";
  if (lSections > static_cast<int64_t>(recipe.tables.size())) {
    sText += ", in " + CountedText(lSections, "section", "sections");
  }
  clsLook::Say(sText);
  if (bFurniture) clsLook::Say("a table goes over too many pages: the headings of its pages come along as rows");
  if (!recipe.leftOut.empty()) {
    clsLook::Say(CountedText(static_cast<int64_t>(recipe.leftOut.size()), "stretch is", "stretches are") +
                 " left out; the recipe's comments tell which and why");
  }
  if (!recipe.bWholeReport) {
    clsLook::Say("only the first " + CountedText(recipe.lLinesLookedAt, "line", "lines") +
                 " of the report were looked at: tables behind them are missing");
  }
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
