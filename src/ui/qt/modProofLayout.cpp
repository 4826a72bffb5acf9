// LayoutProof of modDialogLayouts.

#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>

#include "clsProofCut.h"
#include "clsProofTree.h"
#include "frmProof.h"
#include "modDialogLayouts.h"
#include "modEditorParts.h"

namespace quillon {

void LayoutProof(clsForm& anyForm, clsFormBinder& b, QDialog& dialog) {
  auto& form = static_cast<frmProof&>(anyForm);
  auto* const pAll = new QVBoxLayout(&dialog);
  auto* const pSplitter = new QSplitter(Qt::Vertical);
  auto* const pTree = new clsProofTree;
  pTree->setObjectName("treeProofOfRun");
  pTree->Show(ListProof(form.Proof()));
  pSplitter->addWidget(pTree);
  if (!form.Report().sInput.empty()) {
    clsReportCutView* const pView = MakeCutView<clsProofCut>(form, dialog);
    pView->HideProof();
    pTree->onLine = [pView](int64_t lLine) { pView->Canvas().GoToLine(lLine); };
    pSplitter->addWidget(pView);
    pSplitter->setStretchFactor(1, 2);
  }
  pAll->addWidget(pSplitter, 1);
  auto* const pButtons = new QHBoxLayout;
  pButtons->addStretch();
  pButtons->addWidget(b.Widget("cmdClose"));
  pAll->addLayout(pButtons);
  constexpr int kWidth = 1000, kHeight = 720, kFrame = 40;
  dialog.resize(QSize(kWidth, kHeight).boundedTo(dialog.screen()->availableGeometry().size() - QSize(0, kFrame)));
  pTree->setFocus();
}

}  // namespace quillon
