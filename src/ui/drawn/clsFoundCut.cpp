#include "clsFoundCut.h"

#include "clsRecipeCut.h"
#include "clsRecipeLook.h"
#include "frmFindTables.h"
#include "frmMain.h"
#include "modCutPicture.h"

namespace quillon {

CutPicture clsFoundCut::Look(const CutProposal*) {
  PreviewRequest request = form_.Owner().Report();
  request.text.lMostBytes = clsRecipeCut::kSearched;
  request.lRows = clsRecipeCut::kLines;
  const std::string sRecipe = form_.Finder().RecipeWith(form_.Selected(), request.lTable);
  return OnlyShown(clsRecipeLook(request, sRecipe).Look());
}

PreviewRequest clsFoundCut::Report() {
  return form_.Owner().Report();
}

std::string clsFoundCut::TidyRecipe() {
  int32_t lIgnored = 0;
  return form_.Finder().RecipeWith(form_.Selected(), lIgnored);
}

/// The number counts the ticked tables and the selected one.
void clsFoundCut::Choose(int32_t lNumber) {
  for (size_t n = 0; n < form_.Tables().size(); ++n) {
    const bool bDrawn = form_.Tables()[n].bTicked || n == form_.Selected();
    if (bDrawn && --lNumber == 0) return form_.Select(n);
  }
}

}  // namespace quillon
