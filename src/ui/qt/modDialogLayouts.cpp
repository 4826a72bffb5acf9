#include "modDialogLayouts.h"

#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>
#include <map>

#include "frmLanguage.h"
#include "frmTextDisplay.h"
#include "frmWorking.h"

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

/// A box for a few characters at the left of its row.
QHBoxLayout* Short(QWidget* pBox) {
  constexpr int kWidth = 120;
  pBox->setMaximumWidth(kWidth);
  QHBoxLayout* const pRow = Row({pBox});
  pRow->addStretch();
  return pRow;
}

QVBoxLayout* ColumnOf(QWidget* pBox) {
  return static_cast<QVBoxLayout*>(pBox->layout());
}

void LayoutInputOptions(clsFormBinder& b, QWidget* pTab) {
  auto* const pColumn = new QVBoxLayout(pTab);
  QGroupBox* const pRecipe = Group(b, "frameRecipeInput", {});
  QHBoxLayout* const pTabSize = Row({b.Widget("lblTabSize")});
  pTabSize->addLayout(Short(b.Widget("txtTabSize")), 1);
  ColumnOf(pRecipe)->addLayout(pTabSize);
  ColumnOf(pRecipe)->addWidget(Note(b, "lblTabSizeNote"));
  ColumnOf(pRecipe)->addWidget(b.Widget("cbUnix"));
  ColumnOf(pRecipe)->addWidget(b.Widget("cbTrimFields"));
  pColumn->addWidget(pRecipe);
  QWidget* const pFormat = b.Widget("frameInputFormat");
  pFormat->setLayout(Row({b.Widget("rbInputFileFormat", 0), b.Widget("rbInputFileFormat", 1)}));
  QGroupBox* const pProfile = Group(
      b, "frameProfileInput",
      {pFormat, b.Widget("cbTreatDataAsText"), Note(b, "lblTreatDataAsTextNote"), b.Widget("lblStartColRowNote")});
  ColumnOf(pProfile)->addLayout(Short(b.Widget("txtStartColRow")));
  pColumn->addWidget(pProfile);
  pColumn->addStretch();
}

void LayoutOutputOptions(clsFormBinder& b, QWidget* pTab) {
  auto* const pColumn = new QVBoxLayout(pTab);
  pColumn->addWidget(Group(b, "frameExcel",
                           {b.Widget("cbClearOutputFileBeforeProcessing"), b.Widget("lblSheetTarget"),
                            b.Widget("txtSheetTarget"), Note(b, "lblSheetTargetNote")}));
  pColumn->addWidget(
      Group(b, "frameCsv", {b.Widget("lblCharacter1"), b.Widget("cbCharacter1"), Note(b, "lblCharacter1Note")}));
  QWidget* const pQuotes = b.Widget("frameQuotes");
  pQuotes->setLayout(
      Row({b.Widget("rbUseDoubleQuotes", 0), b.Widget("rbUseDoubleQuotes", 1), b.Widget("rbUseDoubleQuotes", 2)}));
  pColumn->addWidget(Group(b, "frameProfileOutput", {b.Widget("cbRemoveExtraPadChars"), pQuotes}));
  pColumn->addStretch();
}

/// The tabs lie on top of each other, and the dialog is as large as the larger one needs.
void LayoutOptions(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addWidget(b.Widget("tsDisplay"));
  auto* const pTabs = new QGridLayout;
  for (int i = 0; i < 2; ++i) {
    QWidget* const pTab = b.Widget("FrameArray", i);
    (i == 0 ? LayoutInputOptions : LayoutOutputOptions)(b, pTab);
    QSizePolicy policy = pTab->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    pTab->setSizePolicy(policy);
    pTabs->addWidget(pTab, 0, 0);
  }
  pAll->addLayout(pTabs);
  pAll->addStretch();
  dialog.setProperty(kFitsItsTexts, true);
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
  pAll->addStretch(1);
  pAll->addLayout(Buttons(b, {"cmdClose"}));
  dialog.setStyleSheet("QGroupBox { font-weight: bold }");
  dialog.setProperty(kFitsItsTexts, true);
  dialog.setMinimumWidth(520);
  b.Widget("cmdLoadDemo1")->setFocus();
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
  b.As<QPushButton>("cmdDone")->setDefault(true);
  auto* const pRow = new QHBoxLayout;
  pRow->addWidget(pList);
  pRow->addLayout(pButtons);
  pAll->addLayout(pRow);
}

void LayoutTableBuilder(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  for (const char* const pName : {"lblTableNumber", "lblColumnFields"}) b.As<QLabel>(pName)->setWordWrap(false);
  pAll->addLayout(Row({b.Widget("lblTableNumber"), b.Widget("txtTableNumber")}));
  pAll->addWidget(Group(b, "frameTop",
                        {b.Widget("lblReadStartLine"), b.Widget("txtReadStartLine"), b.Widget("lblReadStartLineOffset"),
                         b.Widget("txtReadStartLineOffset")}));
  pAll->addWidget(Group(b, "frameBottom",
                        {b.Widget("lblReadEndLine"), b.Widget("txtReadEndLine"), b.Widget("lblReadEndLineOffset"),
                         b.Widget("txtReadEndLineOffset")}));
  pAll->addLayout(Row({b.Widget("lblColumnFields"), b.Widget("lblFields"), b.Widget("cmdAddColumn")}));
  pAll->addLayout(Buttons(b, {"cmdOK", "cmdCancel"}));
  dialog.setProperty(kFitsItsTexts, true);
  const QWidget* const pEditor = dialog.parentWidget();
  if (pEditor == nullptr) return;
  // At the editor's top, right edge on right edge; the texts make its width.
  b.ShowState();
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
  constexpr int kMoved = static_cast<int>(400 / kTwipsPerPixel);
  if (dialog.parentWidget() != nullptr) dialog.move(dialog.parentWidget()->pos() + QPoint(kMoved, kMoved));
}

void LayoutChooseText(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addWidget(b.Widget("Label1"));
  pAll->addWidget(b.Widget("txtChoose"));
  pAll->addLayout(Buttons(b, {"cmdApply", "cmdCancel"}));
  dialog.setMinimumWidth(320);
}

void LayoutTextDisplay(clsForm&, clsFormBinder& b, QDialog& dialog) {
  auto* const pAll = new QVBoxLayout(&dialog);
  b.Widget("lstData")->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  pAll->addWidget(b.Widget("lstData"));
  pAll->addLayout(Buttons(b, {"cmdClose"}));
  dialog.resize(kNoteWidth * 2, kNoteWidth);
  if (dialog.parentWidget() == nullptr) return;
  const QPoint moved(static_cast<int>(frmTextDisplay::kRightOfMain / kTwipsPerPixel),
                     static_cast<int>(frmTextDisplay::kBelowMain / kTwipsPerPixel));
  dialog.move(dialog.parentWidget()->pos() + moved);
}

void LayoutWorking(clsForm& anyForm, clsFormBinder& b, QDialog& dialog) {
  auto& form = static_cast<frmWorking&>(anyForm);
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addWidget(b.Widget("lblWhat"));
  auto* const pBar = new QProgressBar;
  pBar->setObjectName("barWorking");
  pBar->setAccessibleName(ToQt(form.sCaption));
  pAll->addWidget(pBar);
  pAll->addLayout(Buttons(b, {"cmdCancel"}));
  constexpr int kAll = 100;
  b.onState = [&form, pBar] {
    pBar->setRange(0, form.Percent() < 0 ? 0 : kAll);
    pBar->setValue(form.Percent());
  };
  dialog.setMinimumWidth(kNoteWidth);
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
                                                     {"frmTextDisplay", LayoutTextDisplay},
                                                     {"frmSpecifyFixedWidthText", LayoutProfileEditor},
                                                     {"frmExportBuilder", LayoutRecipeEditor},
                                                     {"frmFindTables", LayoutFindTables},
                                                     {"frmWorking", LayoutWorking},
                                                     {"frmProof", LayoutProof}};
  const auto found = layouts.find(form.sFormName);
  (found == layouts.end() ? LayoutColumn : found->second)(form, binder, dialog);
}

}  // namespace quillon
