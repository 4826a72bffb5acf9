#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "clsReportCut.h"
#include "modReportPreview.h"

namespace quillon {

class frmSpecifyFixedWidthText;

/// The profile as it stands in the profile editor's grid, over the input file of the main window. Its columns touch
/// each other; a change goes into the rows of the grid.
class clsProfileCut : public clsCutSource {
 public:
  static constexpr int64_t kLines = 1000;              ///< Lines of the report that are shown
  static constexpr int64_t kCells = 200000;            ///< Cells that are shown: of so many columns fewer lines
  static constexpr size_t kCharacters = 2000;          ///< Characters of a line that are shown
  static constexpr int64_t kBytes = int64_t{4} << 20;  ///< Bytes of the report that are read

  explicit clsProfileCut(frmSpecifyFixedWidthText& form) : form_(form) {}

  CutPicture Look(const CutProposal* pProposal) override;
  void Change(const CutChange& change) override;
  void Take(const CutProposal& proposal) override;
  std::vector<CutProposal> WorkOut(std::string& sFault) override;
  PreviewRequest Report() override;

 private:
  PreviewRequest Request() const;
  ProfileCut Cut(const CutProposal* pProposal) const;

  frmSpecifyFixedWidthText& form_;
};

}  // namespace quillon
