#include "modDialogLayouts.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>
#include <map>

#include "frmLanguage.h"

namespace quillon {

namespace {

using Layout = void (*)(clsForm&, clsFormBinder&, QDialog&);

constexpr int kNoteWidth = 420;

QHBoxLayout* Row(std::initializer_list<QWidget*> widgets) {
  auto* const pRow = new QHBoxLayout;
  for (QWidget* const pWidget : widgets) pRow->addWidget(pWidget);
  return pRow;
}

/// A frame with its contents one under the other.
QGroupBox* Group(clsFormBinder& binder, const char* pFrame, std::initializer_list<QWidget*> widgets, int nIndex = 0) {
  auto* const pBox = binder.As<QGroupBox>(pFrame, nIndex);
  auto* const pColumn = new QVBoxLayout(pBox);
  for (QWidget* const pWidget : widgets) pColumn->addWidget(pWidget);
  return pBox;
}

QLabel* Note(clsFormBinder& binder, const char* pLabel) {
  auto* const pNote = binder.As<QLabel>(pLabel);
  pNote->setWordWrap(true);
  pNote->setMinimumWidth(kNoteWidth);
  pNote->setForegroundRole(QPalette::PlaceholderText);
  return pNote;
}

QHBoxLayout* Buttons(clsFormBinder& binder, std::initializer_list<const char*> buttons) {
  auto* const pRow = new QHBoxLayout;
  pRow->addStretch();
  for (const char* const pName : buttons) pRow->addWidget(binder.Widget(pName));
  binder.As<QPushButton>(*buttons.begin())->setDefault(true);
  return pRow;
}

void LayoutOptions(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addWidget(b.Widget("tsDisplay"));
  auto* const pInput = b.As<QGroupBox>("FrameArray", 0);
  auto* const pInputColumn = new QVBoxLayout(pInput);
  auto* const pTab = Group(b, "frameRecipeInput", {});
  static_cast<QVBoxLayout*>(pTab->layout())->addLayout(Row({b.Widget("lblTabSize"), b.Widget("txtTabSize")}));
  pTab->layout()->addWidget(Note(b, "lblTabSizeNote"));
  pTab->layout()->addWidget(b.Widget("cbUnix"));
  pInputColumn->addWidget(pTab);
  auto* const pProfile = Group(b, "frameProfileInput", {});
  auto* const pFormat = b.As<QGroupBox>("frameInputFormat");
  pFormat->setLayout(Row({b.Widget("rbInputFileFormat", 0), b.Widget("rbInputFileFormat", 1)}));
  for (QWidget* const pWidget : {static_cast<QWidget*>(pFormat), b.Widget("cbTreatDataAsText"),
                                 static_cast<QWidget*>(Note(b, "lblTreatDataAsTextNote")), b.Widget("txtStartColRow"),
                                 static_cast<QWidget*>(Note(b, "lblStartColRowNote"))}) {
    pProfile->layout()->addWidget(pWidget);
  }
  pInputColumn->addWidget(pProfile);
  pInputColumn->addStretch();

  auto* const pOutput = b.As<QGroupBox>("FrameArray", 1);
  auto* const pOutputColumn = new QVBoxLayout(pOutput);
  pOutputColumn->addWidget(Group(b, "frameExcel",
                                 {b.Widget("cbClearOutputFileBeforeProcessing"), b.Widget("lblSheetTarget"),
                                  b.Widget("txtSheetTarget"), Note(b, "lblSheetTargetNote")}));
  pOutputColumn->addWidget(
      Group(b, "frameCsv", {b.Widget("lblCharacter1"), b.Widget("cbCharacter1"), Note(b, "lblCharacter1Note")}));
  auto* const pQuotes = b.As<QGroupBox>("frameQuotes");
  pQuotes->setLayout(
      Row({b.Widget("rbUseDoubleQuotes", 0), b.Widget("rbUseDoubleQuotes", 1), b.Widget("rbUseDoubleQuotes", 2)}));
  pOutputColumn->addWidget(Group(b, "frameProfileOutput", {b.Widget("cbRemoveExtraPadChars"), pQuotes}));
  pOutputColumn->addStretch();
  pAll->addWidget(pInput);
  pAll->addWidget(pOutput);
  pAll->addLayout(Buttons(b, {"cmdApply", "cmdCancel"}));
}

void LayoutGettingStarted(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  auto* const pTitle = b.As<QLabel>("Label1");
  QFont font = pTitle->font();
  font.setPointSizeF(font.pointSizeF() * 1.5);
  font.setBold(true);
  pTitle->setFont(font);
  pAll->addWidget(pTitle);
  pAll->addWidget(b.Widget("Label2"));
  pAll->addWidget(Group(b, "Frame1",
                        {b.Widget("Label6"), b.Widget("cmdLoadDemo1"), b.Widget("cmdLoadDemo2"),
                         b.Widget("cmdLoadDemo3"), b.Widget("cmdLoadDemo4")}));
  pAll->addWidget(Group(
      b, "Frame2",
      {b.Widget("Label3"), b.Widget("cmdHelpUserInterface"), b.Widget("cmdHelpCL"), b.Widget("cmdHelpAutomate")}));
  pAll->addWidget(Group(b, "Frame3",
                        {b.Widget("Label4"), b.Widget("cmdOpenBrowserToQLNFiles"), b.Widget("cmdOpenBrowserToDemo1bat"),
                         b.Widget("cmdOpenBrowserToDemo2bat"), b.Widget("cmdOpenBrowserToDemo3bat"),
                         b.Widget("cmdOpenBrowserToDemo4bat")}));
  pAll->addLayout(Buttons(b, {"cmdClose"}));
  dialog.setMinimumWidth(520);
}

void LayoutLanguage(clsForm& form, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addWidget(b.Widget("Label1"));
  auto* const pList = b.As<QListWidget>("List1");
  QObject::connect(pList, &QListWidget::itemDoubleClicked, pList,
                   [&form] { static_cast<frmLanguage&>(form).List1_DblClick(); });
  auto* const pButtons = new QVBoxLayout;
  for (const char* const pName : {"cmdDone", "cmdCancel", "cmdEditLanguageFile", "cmdSelectFont", "cmdHelpLanguage"}) {
    pButtons->addWidget(b.Widget(pName));
  }
  pButtons->addStretch();
  auto* const pRow = new QHBoxLayout;
  pRow->addWidget(pList);
  pRow->addLayout(pButtons);
  pAll->addLayout(pRow);
}

void LayoutTableBuilder(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addLayout(Row({b.Widget("lblTableNumber"), b.Widget("txtTableNumber")}));
  pAll->addWidget(Group(b, "frameTop",
                        {b.Widget("lblReadStartLine"), b.Widget("txtReadStartLine"), b.Widget("lblReadStartLineOffset"),
                         b.Widget("txtReadStartLineOffset")}));
  pAll->addWidget(Group(b, "frameBottom",
                        {b.Widget("lblReadEndLine"), b.Widget("txtReadEndLine"), b.Widget("lblReadEndLineOffset"),
                         b.Widget("txtReadEndLineOffset")}));
  pAll->addLayout(Row({b.Widget("lblColumnFields"), b.Widget("lblFields"), b.Widget("cmdAddColumn")}));
  pAll->addLayout(Buttons(b, {"cmdOK", "cmdCancel"}));
  const QWidget* const pEditor = dialog.parentWidget();
  if (pEditor == nullptr) return;
  // At the editor's top, right edge on right edge.
  dialog.adjustSize();
  const QRect editor = pEditor->frameGeometry();
  dialog.move(editor.right() - dialog.width(), editor.top());
}

void LayoutAddField(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addLayout(Row({b.Widget("lblFieldWidth"), b.Widget("txtFieldWidth"), b.Widget("lblCharacters")}));
  pAll->addWidget(b.Widget("obSingleDataField"));
  pAll->addWidget(b.Widget("Option1"));
  pAll->addLayout(Buttons(b, {"cmdOK", "cmdCancel"}));
  constexpr int kMoved = 27;  // 400 twips
  if (dialog.parentWidget() != nullptr) dialog.move(dialog.parentWidget()->pos() + QPoint(kMoved, kMoved));
}

void LayoutChooseText(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addWidget(b.Widget("Label1"));
  pAll->addWidget(b.Widget("txtChoose"));
  pAll->addLayout(Buttons(b, {"cmdApply", "cmdCancel"}));
  dialog.setMinimumWidth(320);
}

void LayoutColumn(clsForm& form, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  for (const auto& pControl : form.Controls()) pAll->addWidget(b.Widget(pControl->sName, pControl->nIndex));
}

}  // namespace

void LayoutDialog(clsForm& form, clsFormBinder& binder, QDialog& dialog, clsHost&) {
  static const std::map<std::string, Layout> layouts{{"frmQLNOptions", LayoutOptions},
                                                     {"frmGettingStarted", LayoutGettingStarted},
                                                     {"frmLanguage", LayoutLanguage},
                                                     {"frmTableBuilder", LayoutTableBuilder},
                                                     {"frmAddField", LayoutAddField},
                                                     {"frmChooseText", LayoutChooseText},
                                                     {"frmSpecifyFixedWidthText", LayoutProfileEditor},
                                                     {"frmExportBuilder", LayoutRecipeEditor}};
  const auto found = layouts.find(form.sFormName);
  (found == layouts.end() ? LayoutColumn : found->second)(form, binder, dialog);
}

}  // namespace quillon
