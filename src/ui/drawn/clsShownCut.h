#pragma once

#include <string>
#include <vector>

#include "clsReportCut.h"

namespace quillon {

/// A cut that is drawn to look at: nothing of it is changed by hand.
class clsShownCut : public clsCutSource {
 public:
  void Change(const CutChange&) override {}
  void Take(const CutProposal&) override {}
  std::vector<CutProposal> WorkOut(std::string&) override { return {}; }
  bool OnlyShows() const override { return true; }
};

}  // namespace quillon
