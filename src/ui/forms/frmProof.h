#pragma once

#include <string>

#include "clsForm.h"
#include "clsReportProof.h"
#include "modReportPreview.h"

namespace quillon {

class frmMain;

/// What became of the lines of the report that was converted last: the proof, and the report with its recipe drawn over
/// it, to go from one to the other.
class frmProof : public clsForm {
 public:
  /// Without a path in the report there is no drawing, as after a run over many files.
  frmProof(frmMain& owner, const ReportProof& proof, PreviewRequest report, std::string sRecipe);

  void Form_Load();
  bool KeyPressed(std::string_view sKey) override;

  const ReportProof& Proof() const { return proof_; }
  const PreviewRequest& Report() const { return report_; }
  const std::string& Recipe() const { return sRecipe_; }  ///< UTF-8

 private:
  frmMain& oOwner_;
  const ReportProof& proof_;
  PreviewRequest report_;
  std::string sRecipe_;
};

}  // namespace quillon
