// How the main window is arranged.

#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QSyntaxHighlighter>
#include <QToolBar>
#include <QVBoxLayout>

#include "clsMainWindow.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// Colours the heads of warnings and errors, readable on light and dark grounds.
class clsLogColours : public QSyntaxHighlighter {
 public:
  explicit clsLogColours(QPlainTextEdit* pLog) : QSyntaxHighlighter(pLog->document()), pLog_(pLog) {}

 protected:
  void highlightBlock(const QString& sText) override {
    if (!sText.startsWith("!!!!!!!!!! ")) return;
    constexpr int kMiddle = 128;
    const bool bDark = pLog_->palette().base().color().lightness() < kMiddle;
    const bool bWarning = sText.contains(ToQt(Translate("Warning")));
    const QColor error = bDark ? QColor(255, 120, 120) : QColor(180, 0, 0);
    const QColor warning = bDark ? QColor(255, 190, 90) : QColor(150, 85, 0);
    setFormat(0, static_cast<int>(sText.size()), bWarning ? warning : error);
  }

 private:
  QPlainTextEdit* pLog_;
};

QPushButton* HelpButton(clsFormBinder& b, const char* pName) {
  auto* const pButton = b.As<QPushButton>(pName);
  constexpr int kWidth = 28;
  pButton->setFixedWidth(kWidth);
  return pButton;
}

QHBoxLayout* Row(std::initializer_list<QWidget*> widgets) {
  auto* const pRow = new QHBoxLayout;
  for (QWidget* const pWidget : widgets) pRow->addWidget(pWidget);
  pRow->addStretch();
  return pRow;
}

void Dim(QWidget* pHint) {
  pHint->setForegroundRole(QPalette::PlaceholderText);
}

constexpr int kPanels = 6;

}  // namespace

clsMainWindow::clsMainWindow(clsQtHost& host, frmMainMDI& frame, frmMain& form, clsRunLog& log)
    : host_(host), frame_(frame), form_(form), log_(log), binder_(form) {
  setAcceptDrops(true);
  auto* const pCentral = new QWidget;
  auto* const pColumn = new QVBoxLayout(pCentral);
  pColumn->addWidget(MakeStep1());
  pColumn->addWidget(MakeStep2());
  pColumn->addWidget(MakeStep3());
  pColumn->addWidget(MakeLog(), 1);
  setCentralWidget(pCentral);
  MakeToolBar();
  MakeStatusBars();
  binder_.MakeMenus(menuBar());
  binder_.onState = [this] {
    const QString sJob = ToQt(form_.sCaption);
    setWindowTitle(sJob == "Quillon" ? ToQt(frame_.sCaption) : sJob + " - Quillon");
    PaintProgress();
    if (!form_.IsRunning()) HideProgress();
  };
  host_.onStatusPanel = [this](StatusBar bar, int nPanel, std::string_view sText) {
    panelTexts_[{bar == StatusBar::Main ? 0 : 1, nPanel}] = ToQt(sText);
    if (!form_.IsRunning()) PaintProgress();
  };
  host_.onTurn = [this] { PaintProgress(); };
  host_.onCaption = [this](std::string_view sText) { setWindowTitle(ToQt(sText)); };
  host_.SetCaption(frame_.sCaption);
  host_.onProgress = [this](const RunProgress& progress) { ShowRunProgress(progress); };
  form_.onExit = [this] { close(); };
  log_.SetView(this);
}

QWidget* clsMainWindow::MakeStep1() {
  auto* const pBox = binder_.As<QGroupBox>("frameGUI", 0);
  auto* const pGrid = new QGridLayout(pBox);
  pGrid->addWidget(binder_.Widget("cbInputFile"), 0, 0);
  pGrid->addWidget(binder_.Widget("cmdInputBrowse"), 0, 1);
  pGrid->addWidget(binder_.Widget("cmdSelectInputFolder"), 0, 2);
  pGrid->addWidget(HelpButton(binder_, "cmdHelpInputFile"), 0, 3);
  pGrid->setColumnStretch(0, 1);
  Dim(binder_.Widget("Label1"));
  pGrid->addWidget(binder_.Widget("Label1"), 1, 0, 1, 4);
  pGrid->addLayout(
      Row({binder_.Widget("cbDoSubfolders"), binder_.Widget("cmdEditInput"), binder_.Widget("cmdExploreInputFolder")}),
      2, 0, 1, 4);
  return pBox;
}

QWidget* clsMainWindow::MakeStep2() {
  auto* const pBox = binder_.As<QGroupBox>("frameGUI", 1);
  auto* const pGrid = new QGridLayout(pBox);
  pGrid->addWidget(binder_.Widget("cbOutputFile"), 0, 0);
  pGrid->addWidget(binder_.Widget("cmdOutputBrowse"), 0, 1);
  pGrid->addWidget(binder_.Widget("cmdSelectOutputFolder"), 0, 2);
  pGrid->addWidget(HelpButton(binder_, "cmdHelpOutputFile"), 0, 3);
  pGrid->setColumnStretch(0, 1);
  for (const char* const pHint : {"Label5", "Label2"}) Dim(binder_.Widget(pHint));
  pGrid->addWidget(binder_.Widget("Label5"), 1, 0, 1, 4);
  pGrid->addWidget(binder_.Widget("Label2"), 2, 0, 1, 4);
  pGrid->addLayout(Row({binder_.Widget("cbSaveToOriginalFolder"), binder_.Widget("cmdEditOutput"),
                        binder_.Widget("cmdExploreOutputFolder")}),
                   3, 0, 1, 4);
  return pBox;
}

QWidget* clsMainWindow::MakeStep3() {
  auto* const pBox = binder_.As<QGroupBox>("frameGUI", 2);
  auto* const pColumn = new QVBoxLayout(pBox);
  pColumn->addLayout(Row({binder_.Widget("rbConversionMethod", 0), binder_.Widget("rbConversionMethod", 1),
                          binder_.Widget("rbConversionMethod", 2), HelpButton(binder_, "cmdHelpConversionMethod")}));
  auto* const pProfile = binder_.As<QGroupBox>("frameInnerGUI", 0);
  pProfile->setLayout(Row({binder_.Widget("Label6"), binder_.Widget("cbFixedWidthProfileList"),
                           binder_.Widget("cmdEditProfile"), HelpButton(binder_, "cmdHelpProfileFile")}));
  constexpr int kListWidth = 260;
  binder_.Widget("cbFixedWidthProfileList")->setMinimumWidth(kListWidth);
  auto* const pRecipe = binder_.As<QGroupBox>("frameInnerGUI", 1);
  auto* const pRow = new QHBoxLayout(pRecipe);
  for (const char* const pName : {"Label3", "cbRecipeFile", "cmdRecipeBrowse", "cmdEditRecipe"}) {
    pRow->addWidget(binder_.Widget(pName));
  }
  pRow->addWidget(HelpButton(binder_, "cmdHelpRecipeFile"));
  pRow->setStretch(1, 1);
  auto* const pMarkup = binder_.As<QGroupBox>("frameInnerGUI", 2);
  pMarkup->setLayout(Row({binder_.Widget("Label4"), HelpButton(binder_, "cmdHelpMarkup")}));
  for (QWidget* const pFrame : {pProfile, pRecipe, pMarkup}) pColumn->addWidget(pFrame);
  return pBox;
}

QWidget* clsMainWindow::MakeLog() {
  auto* const pBox = binder_.As<QGroupBox>("frameLog");
  auto* const pColumn = new QVBoxLayout(pBox);
  pLog_ = new QPlainTextEdit;
  pLog_->setObjectName("txtLog");
  pLog_->setReadOnly(true);
  pLog_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  pLog_->setLineWrapMode(QPlainTextEdit::NoWrap);
  constexpr int kLogHeight = 120;
  pLog_->setMinimumHeight(kLogHeight);
  pLog_->viewport()->installEventFilter(this);
  new clsLogColours(pLog_);
  pColumn->addWidget(pLog_);
  return pBox;
}

void clsMainWindow::MakeToolBar() {
  QToolBar* const pBar = addToolBar("tbMain");
  pBar->setObjectName("tbMain");
  pBar->setMovable(false);
  pBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  struct Button {
    const char* pName;
    QStyle::StandardPixmap icon;
  };
  for (const Button& button : {Button{"keyConvert", QStyle::SP_MediaPlay}, Button{"keyPause", QStyle::SP_MediaPause},
                               Button{"KeyOptions", QStyle::SP_FileDialogDetailedView}}) {
    QAction* const pAction = binder_.Action(button.pName);
    pAction->setIcon(style()->standardIcon(button.icon));
    pBar->addAction(pAction);
  }
}

void clsMainWindow::MakeStatusBars() {
  QStatusBar* const pBar = statusBar();
  pProgress_ = new QProgressBar;
  pProgress_->setVisible(false);
  constexpr int kProgressWidth = 220;
  pProgress_->setFixedWidth(kProgressWidth);
  // Panel 3 of either bar and panel 6 of the first are the ones that ever show a text.
  for (int nBar = 1; nBar >= 0; --nBar) {
    for (int nPanel = 1; nPanel <= kPanels; ++nPanel) {
      auto* const pPanel = new QLabel;
      panels_[{nBar, nPanel}] = pPanel;
      if (nPanel == 3)
        pBar->addWidget(pPanel, nBar == 1 ? 2 : 1);
      else if (nPanel == kPanels && nBar == 0)
        pBar->addPermanentWidget(pPanel);
      else
        pPanel->setParent(this), pPanel->hide();
    }
  }
  pBar->addPermanentWidget(pProgress_);
}

}  // namespace quillon
