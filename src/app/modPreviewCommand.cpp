// PreviewCommand and CheckCommand of modLookCommands.

#include <fmt/format.h>

#include <algorithm>

#include "clsLook.h"
#include "modConvertCommand.h"
#include "modFrontDoor.h"
#include "modLookCommands.h"
#include "modText.h"
#include "modTidyPreview.h"

namespace quillon {

namespace {

std::string CensusText(const CellCensus& census) {
  std::string sText;
  const auto add = [&](int64_t lCount, std::string_view sOne, std::string_view sMany) {
    if (lCount > 0) sText += (sText.empty() ? "" : ", ") + CountedText(lCount, sOne, sMany);
  };
  add(census.lNumbers, "number", "numbers");
  add(census.lDates, "date", "dates");
  add(census.lOthers, "truth value or formula", "truth values or formulas");
  add(census.lTexts, "text", "texts");
  add(census.lEmpty, "empty", "empty");
  if (census.lLikeNumbers == 0) return sText;
  return sText + fmt::format("; {} like a number: {} on line {}",
                             CountedText(census.lLikeNumbers, "text looks", "texts look"),
                             ShownText(census.sLikeNumber), census.lLikeNumberLine);
}

/// False if the table isn't there or loses something.
bool CheckTable(clsLook& look, const ReportPreview& preview) {
  look.PrintText(BoundsText(preview));
  if (!preview.sFault.empty()) {
    look.Print("  " + preview.sFault);
    return false;
  }
  look.Print(fmt::format("  lines {} to {}: {}, {}", preview.lFirstLine, preview.lFirstLine + preview.lRows - 1,
                         CountedText(preview.lRows, "row", "rows"),
                         CountedText(static_cast<int64_t>(preview.columns.size()), "column", "columns")));
  look.Print(fmt::format("  {} left out, {} of them behind the last column; {} cut{}",
                         CountedText(preview.lLeftOut, "character", "characters"), preview.lBehind,
                         CountedText(preview.lCuts, "value", "values"),
                         preview.Loses() ? fmt::format("; the first on line {}", preview.lFirstLossLine) : ""));
  for (const PreviewColumn& column : preview.columns) {
    look.Print(fmt::format("    {:<3} {:>4} to {:<4} {}", column.sLetters, column.lStart, column.lEnd,
                           CensusText(column.census)));
  }
  return !preview.Loses();
}

}  // namespace

int PreviewCommand(const LookRequest& request) {
  clsLook look(request);
  const bool bRecipe = !request.sRecipe.empty();
  if (!look.TakeInput() || (bRecipe && !look.OpenRecipe())) return kExitWrongUse;
  if (bRecipe && HasTidyTable(look.recipe, look.preview.lTable)) {
    const TidyPreview preview = PreviewTidyTable(look.preview, look.recipe);
    look.PrintText(TidyPreviewText(preview));
    const bool bShown = look.Flush();
    if (!preview.sFault.empty()) clsLook::Say(preview.sFault);
    return bShown && preview.sFault.empty() ? kExitDone : kExitSomeFailed;
  }
  const ReportPreview preview = bRecipe ? PreviewByRecipe(look.preview, look.recipe)
                                        : PreviewByProfile(look.preview, ProfileFor(request.sProfile));
  look.PrintText(PreviewText(preview));
  const bool bShown = look.Flush();
  if (!preview.sFault.empty()) clsLook::Say(preview.sFault);
  return bShown && preview.sFault.empty() ? kExitDone : kExitSomeFailed;
}

int CheckCommand(const LookRequest& request) {
  clsLook look(request);
  if (!look.TakeInput() || !look.OpenRecipe()) return kExitWrongUse;
  look.preview.lRows = 0;
  clsRecipeCheck check(look.preview, look.recipe);
  bool bGood = true;
  if (check.Tables() == 0) {
    clsLook::Say(request.sRecipe + ": no table in this recipe");
    return kExitSomeFailed;
  }
  for (int32_t lTable = 1; lTable <= check.Tables(); ++lTable) {
    const ReportPreview preview = check.Look(lTable);
    bGood = CheckTable(look, preview) && bGood;
    // A run ends at a key text that isn't there.
    const bool bMissing = preview.start.place == KeyPlace::Missing || preview.end.place == KeyPlace::Missing;
    if (bMissing && lTable < check.Tables()) {
      look.Print("  The tables behind this one would not be converted.");
    }
  }
  look.Print(bGood ? "Nothing is lost." : "Something is missing or lost.");
  return look.Flush() && bGood ? kExitDone : kExitSomeFailed;
}

}  // namespace quillon
