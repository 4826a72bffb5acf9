#pragma once
// What the views of the two editors have in common.

#include <QCheckBox>
#include <QDialog>
#include <memory>

#include "clsFormBinder.h"
#include "clsReportCutView.h"
#include "modTranslator.h"

namespace quillon {

/// The pane with a source of its own, which goes with the dialog, after its children.
template <typename Source, typename Form>
clsReportCutView* MakeCutView(Form& form, QDialog& dialog) {
  auto pSource = std::make_shared<Source>(form);
  auto* const pView = new clsReportCutView(*pSource);
  pView->setObjectName("paneReportCut");
  QObject::connect(&dialog, &QObject::destroyed, [pSource] {});
  return pView;
}

/// The box that closes the pane.
inline QCheckBox* MakePreviewBox() {
  auto* const pBox = new QCheckBox(ToQt(Translate("Show how the input file is cut")));
  pBox->setObjectName("cbShowPreview");
  pBox->setChecked(true);
  return pBox;
}

}  // namespace quillon
