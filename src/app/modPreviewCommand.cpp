// PreviewCommand of modLookCommands.

#include "clsLook.h"
#include "modConvertCommand.h"
#include "modFrontDoor.h"
#include "modLookCommands.h"
#include "modTidyPreview.h"

namespace quillon {

int PreviewCommand(const LookRequest& request) {
  clsLook look(request);
  const bool bRecipe = request.sProfile.empty();
  if (!look.TakeInput() || (bRecipe && !look.OpenRecipe())) return look.Refused();
  if (bRecipe) look.SayHints();
  if (bRecipe && HasTidyTable(look.recipe, look.preview.lTable)) {
    const TidyPreview preview = PreviewTidyTable(look.preview, look.recipe);
    look.PrintText(TidyPreviewText(preview));
    const bool bShown = look.Flush();
    if (!preview.sFault.empty()) clsLook::Say(preview.sFault);
    return bShown && preview.sFault.empty() ? kExitDone : kExitSomeFailed;
  }
  const ReportPreview preview = bRecipe ? PreviewByRecipe(look.preview, look.recipe, look.Specs())
                                        : PreviewByProfile(look.preview, ProfileFor(request.sProfile));
  look.PrintText(PreviewText(preview));
  const bool bShown = look.Flush();
  if (!preview.sFault.empty()) clsLook::Say(preview.sFault);
  return bShown && preview.sFault.empty() ? kExitDone : kExitSomeFailed;
}

}  // namespace quillon
