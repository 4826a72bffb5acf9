// What a screen reader calls the controls of the main window: a box by the label beside it, a help button by its step.

#include <QComboBox>
#include <QLineEdit>
#include <array>

#include "clsMainWindow.h"
#include "modTranslator.h"

namespace quillon {

namespace {

struct NamedControl {
  const char *pControl, *pLabel;
  int nIndex = 0;  ///< Of the label
};
constexpr std::array kNamed{NamedControl{"cbInputFile", "frameGUI", 0},
                            NamedControl{"cbCodePage", "lblCodePage"},
                            NamedControl{"cbOutputFile", "frameGUI", 1},
                            NamedControl{"cbRecipeFile", "Label3"},
                            NamedControl{"cbFixedWidthProfileList", "Label6"},
                            NamedControl{"cmdHelpInputFile", "frameGUI", 0},
                            NamedControl{"cmdHelpOutputFile", "frameGUI", 1},
                            NamedControl{"cmdHelpConversionMethod", "frameGUI", 2},
                            NamedControl{"cmdHelpProfileFile", "Label6"},
                            NamedControl{"cmdHelpRecipeFile", "Label3"},
                            NamedControl{"cmdHelpMarkup", "rbConversionMethod", 2}};

}  // namespace

void clsMainWindow::NameControls() {
  for (const NamedControl& named : kNamed) {
    QWidget* const pWidget = binder_.Widget(named.pControl);
    QString sName = ToQt(form_.Get(named.pLabel, named.nIndex).sCaption).remove('&');
    auto* const pCombo = qobject_cast<QComboBox*>(pWidget);
    if (pCombo == nullptr) sName = ToQt(Translate("Help")) + ": " + sName;
    if (pWidget->accessibleName() == sName) continue;
    pWidget->setAccessibleName(sName);
    if (pCombo != nullptr && pCombo->lineEdit() != nullptr) pCombo->lineEdit()->setAccessibleName(sName);
  }
}

}  // namespace quillon
