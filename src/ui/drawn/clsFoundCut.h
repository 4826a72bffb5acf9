#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "clsReportCut.h"

namespace quillon {

class frmFindTables;

/// The tables that were found, drawn over the report to look at: nothing of them is changed by hand.
class clsFoundCut : public clsCutSource {
 public:
  explicit clsFoundCut(frmFindTables& form) : form_(form) {}

  CutPicture Look(const CutProposal* pProposal) override;
  void Change(const CutChange&) override {}
  void Take(const CutProposal&) override {}
  std::vector<CutProposal> WorkOut(std::string&) override { return {}; }
  bool OnlyShows() const override { return true; }
  PreviewRequest Report() override;
  std::string TidyRecipe() override;
  void Choose(int32_t lNumber) override;

 private:
  frmFindTables& form_;
};

}  // namespace quillon
