#pragma once

#include <cstdint>
#include <string>

#include "clsShownCut.h"

namespace quillon {

class frmProof;

/// The report of a run with its recipe, drawn to look at.
class clsProofCut : public clsShownCut {
 public:
  explicit clsProofCut(frmProof& form) : form_(form) {}

  CutPicture Look(const CutProposal* pProposal) override;
  PreviewRequest Report() override;
  std::string TidyRecipe() override;
  void Choose(int32_t lNumber) override { lTable_ = lNumber; }

 private:
  frmProof& form_;
  int32_t lTable_ = 1;
};

}  // namespace quillon
