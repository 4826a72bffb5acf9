#include "frmProof.h"

#include <utility>

#include "frmMain.h"
#include "modFormTranslation.h"
#include "modHelp.h"

namespace quillon {

frmProof::frmProof(frmMain& owner, const ReportProof& proof, PreviewRequest report, std::string sRecipe)
    : clsForm("frmProof"), oOwner_(owner), proof_(proof), report_(std::move(report)), sRecipe_(std::move(sRecipe)) {
  sCaption = "Proof";
  Add(ControlKind::CommandButton, "cmdClose", "&Close");
  OnClick("cmdClose", [this] { Unloaded(); });
}

void frmProof::Form_Load() {
  TranslateForm(*this, oOwner_.Screen());
}

bool frmProof::KeyPressed(std::string_view sKey) {
  constexpr int kRecipeTopic = 13;
  if (sKey == "F1") OpenHelpTopic(oOwner_.Host(), kRecipeTopic);
  return sKey == "F1";
}

}  // namespace quillon
