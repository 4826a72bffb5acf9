#pragma once

#include <cstdint>
#include <string>

#include "clsShownCut.h"

namespace quillon {

class frmFindTables;

/// The tables that were found, drawn over the report to look at.
class clsFoundCut : public clsShownCut {
 public:
  explicit clsFoundCut(frmFindTables& form) : form_(form) {}

  CutPicture Look(const CutProposal* pProposal) override;
  PreviewRequest Report() override;
  std::string TidyRecipe() override;
  void Choose(int32_t lNumber) override;

 private:
  frmFindTables& form_;
};

}  // namespace quillon
