#pragma once

#include <string>
#include <vector>

#include "clsReportCut.h"

namespace quillon {

class frmProof;

/// The report of a run with its recipe, drawn to look at.
class clsProofCut : public clsCutSource {
 public:
  explicit clsProofCut(frmProof& form) : form_(form) {}

  CutPicture Look(const CutProposal* pProposal) override;
  void Change(const CutChange&) override {}
  void Take(const CutProposal&) override {}
  std::vector<CutProposal> WorkOut(std::string&) override { return {}; }
  bool OnlyShows() const override { return true; }
  PreviewRequest Report() override;
  std::string TidyRecipe() override;
  void Choose(int32_t lNumber) override { lTable_ = lNumber; }

 private:
  frmProof& form_;
  int32_t lTable_ = 1;
};

}  // namespace quillon
