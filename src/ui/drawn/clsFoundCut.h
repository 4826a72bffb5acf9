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
  static constexpr int64_t kLines = 1000;  ///< Lines of a stretch that are shown

  explicit clsFoundCut(frmFindTables& form) : form_(form) {}

  CutPicture Look(const CutProposal* pProposal) override;
  void Change(const CutChange&) override {}
  void Take(const CutProposal&) override {}
  std::vector<CutProposal> WorkOut(std::string&) override { return {}; }
  bool OnlyShows() const override { return true; }
  void Choose(int32_t lNumber) override;

 private:
  void DrawTables(CutPicture& picture) const;
  void CutCells(CutPicture& picture) const;

  frmFindTables& form_;
};

}  // namespace quillon
