#include "clsProofCut.h"

#include "clsRecipeCut.h"
#include "clsRecipeLook.h"
#include "frmProof.h"
#include "modCutPicture.h"

namespace quillon {

CutPicture clsProofCut::Look(const CutProposal*) {
  PreviewRequest request = form_.Report();
  request.text.lMostBytes = clsRecipeCut::kSearched;
  request.lTable = lTable_;
  request.lRows = clsRecipeCut::kLines;
  return OnlyShown(clsRecipeLook(request, form_.Recipe()).Look());
}

PreviewRequest clsProofCut::Report() {
  return form_.Report();
}

std::string clsProofCut::TidyRecipe() {
  return form_.Recipe();
}

}  // namespace quillon
