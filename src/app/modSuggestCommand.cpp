// SuggestCommand of modLookCommands.

#include "clsConsoleHost.h"
#include "clsLook.h"
#include "clsOutputFile.h"
#include "modEventLoop.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modLookCommands.h"
#include "modNumbers.h"
#include "modSuggestRecipe.h"
#include "modSuggestTables.h"
#include "modText.h"

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

/// The recipe goes where it was asked for.
int WriteRecipe(clsLook& look, const LookRequest& request, const std::string& sText) {
  if (request.sOutput.empty()) {
    look.PrintText(sText);
    return look.Flush() ? kExitDone : kExitSomeFailed;
  }
  Failure failure;
  if (WriteWholeFile(request.sOutput, sText, failure)) return kExitDone;
  clsLook::Say(failure.sText);
  return kExitSomeFailed;
}

/// Sections between key texts.
int SuggestSections(clsLook& look, const LookRequest& request) {
  SuggestedRecipe recipe;
  Failure failure;
  if (!SuggestRecipe(look.preview.sInput, look.preview.text, look.preview.lTabSize, recipe, failure)) {
    clsLook::Say(failure.sText);
    return kExitSomeFailed;
  }
  SayWhatIsThere(recipe);
  return recipe.tables.empty() ? kExitSomeFailed : WriteRecipe(look, request, recipe.Text());
}

void SayWhatIsThere(const TableSuggestion& suggestion) {
  const auto nOthers = static_cast<int64_t>(suggestion.tables.size() - suggestion.Chosen());
  std::string sText = CountedText(static_cast<int64_t>(suggestion.Chosen()), "table", "tables") + " found";
  if (nOthers > 0) {
    sText += "; the recipe's comments hold " + CountedText(nOthers, "other stretch", "other stretches");
  }
  clsLook::Say(sText);
  if (!suggestion.LooksIncomplete()) return;
  const std::vector<std::string> reasons = suggestion.Reasons();
  clsLook::Say("looks incomplete" + (reasons.empty() ? std::string() : ": " + ShownText(reasons.front())));
  for (size_t i = 1; i < reasons.size(); ++i) clsLook::Say("  " + ShownText(reasons[i]));
}

int SuggestTidy(clsLook& look, const LookRequest& request) {
  TableSuggestion suggestion;
  Failure failure;
  clsConsoleHost host(clsConsoleHost::Voice::Mute);
  const SuggestProgress progress = [&](int64_t lDone, int64_t lTotal) {
    host.ShowProgress({look.preview.sInput, 0, lDone, lTotal});
  };
  host.StartProgress();
  const bool bFound = SuggestTables(look.preview.sInput, look.preview.text, look.preview.lTabSize,
                                    {request.tables, request.sHeadings}, suggestion, failure, progress);
  host.StopProgress();
  if (InterruptSignal() != 0) {
    clsLook::Say("interrupted; no recipe is written");
    return kExitInterrupted + InterruptSignal();
  }
  if (!bFound) {
    clsLook::Say(failure.sText);
    return kExitSomeFailed;
  }
  SayWhatIsThere(suggestion);
  if (suggestion.Chosen() == 0) return kExitSomeFailed;
  const int nStatus = WriteRecipe(look, request, suggestion.Text());
  return nStatus == kExitDone && request.bStrict && suggestion.LooksIncomplete() ? kExitIncomplete : nStatus;
}

/// A recipe that was drawn or written by hand isn't replaced without a word.
bool MayBecomeSuggestion(const std::string& sFile) {
  std::string sBytes;
  Failure unread;
  if (sFile.empty() || !IsFile(sFile)) return true;
  return ReadWholeFile(sFile, sBytes, clsSectionFile::kMaxBytes, unread) &&
         (sBytes.empty() || sBytes.starts_with(kSuggestionBegins));
}

}  // namespace

int SuggestCommand(const LookRequest& request) {
  CatchInterrupts();
  const clsEventLoop stopsAtSignals([] { return InterruptSignal() == 0; });
  clsLook look(request);
  if (!look.TakeInput()) return InterruptSignal() != 0 ? kExitInterrupted + InterruptSignal() : look.Refused();
  if (IsSameFile(look.preview.sInput, request.sOutput)) {
    clsLook::Say(request.sOutput + ": the recipe would replace the report");
    return kExitWrongUse;
  }
  if (!request.bForce && !MayBecomeSuggestion(request.sOutput)) {
    clsLook::Say(request.sOutput + ": suggest did not write this file; name another one, or replace it with --force");
    return kExitWrongUse;
  }
  return request.bToday ? SuggestSections(look, request) : SuggestTidy(look, request);
}

}  // namespace quillon
