// How the main window is arranged.

#include <QApplication>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QSyntaxHighlighter>
#include <QToolBar>
#include <QVBoxLayout>
#include <utility>

#include "clsMainWindow.h"
#include "modIcons.h"
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

/// The hints, the buttons beside the boxes and the help at the right edge stand in columns of their own in each step.
constexpr int kBoxColumn = 0, kButtonColumn = 1, kHelpColumn = 3, kColumns = 4;

QWidget* HelpButton(clsFormBinder& b, const char* pName) {
  QWidget* const pButton = b.Widget(pName);
  constexpr int kWidth = 28;
  pButton->setFixedWidth(kWidth);
  return pButton;
}

QGridLayout* StepGrid(QWidget* pBox) {
  auto* const pGrid = new QGridLayout(pBox);
  pGrid->setColumnStretch(kBoxColumn, 1);
  return pGrid;
}

QHBoxLayout* Row(std::initializer_list<QWidget*> widgets) {
  auto* const pRow = new QHBoxLayout;
  for (QWidget* const pWidget : widgets) pRow->addWidget(pWidget);
  return pRow;
}

void AddHint(QGridLayout* pGrid, QWidget* pHint) {
  pHint->setForegroundRole(QPalette::PlaceholderText);
  pGrid->addWidget(pHint, pGrid->rowCount(), kBoxColumn, 1, kColumns);
}

/// A check box and what stands beside it, and at the right the buttons of which one shows at a time.
void AddLastRow(QGridLayout* pGrid, QHBoxLayout* pLeft, QWidget* pEdit, QWidget* pExplore) {
  const int nRow = pGrid->rowCount();
  pLeft->addStretch(1);
  pGrid->addLayout(pLeft, nRow, kBoxColumn);
  for (QWidget* const pButton : {pEdit, pExplore}) {
    pGrid->addWidget(pButton, nRow, kButtonColumn, 1, kColumns - kButtonColumn);
  }
}

constexpr int kPanels = 6;

}  // namespace

clsMainWindow::clsMainWindow(clsQtHost& host, frmMainMDI& frame, frmMain& form, clsRunLog& log)
    : host_(host), frame_(frame), form_(form), log_(log), binder_(form) {
  setAcceptDrops(true);
  auto* const pCentral = new QWidget;
  // The captions of the steps lead the eye; what is in them inherits nothing of it.
  pCentral->setStyleSheet("QGroupBox { font-weight: bold } QGroupBox QGroupBox { font-weight: normal; border: 0 }");
  auto* const pColumn = new QVBoxLayout(pCentral);
  pColumn->addWidget(MakeStep1());
  pColumn->addWidget(MakeStep2());
  pColumn->addWidget(MakeStep3());
  pColumn->addWidget(MakeLine("lblOptionsInForce", {"cmdChangeOptions", "cmdClearOptions"}));
  pColumn->addWidget(MakeLine("lblClosing", {"cmdOpenResult", "cmdShowResult", "cmdProof"}));
  pColumn->addWidget(MakeLog(), 1);
  // A screen that is smaller than the steps shows them through a window that scrolls.
  auto* const pScroll = new QScrollArea;
  pScroll->setFrameShape(QFrame::NoFrame);
  pScroll->setFocusPolicy(Qt::NoFocus);
  pScroll->setWidgetResizable(true);
  pScroll->setWidget(pCentral);
  setCentralWidget(pScroll);
  MakeToolBar();
  MakeIcons();
  MakeStatusBars();
  binder_.MakeMenus(menuBar());
  binder_.onState = [this] {
    const QString sJob = ToQt(form_.sCaption);
    setWindowTitle(sJob == "Quillon" ? ToQt(frame_.sCaption) : sJob + " - Quillon");
    AlignSteps();
    NameControls();
    for (const char* const pLine : {"lblOptionsInForce", "lblClosing"}) {
      binder_.Widget(pLine)->parentWidget()->setVisible(form_.Get(pLine).bVisible);
    }
    if (std::exchange(bBusyShown_, form_.bBusyPointer) != form_.bBusyPointer) {
      form_.bBusyPointer ? QApplication::setOverrideCursor(Qt::WaitCursor) : QApplication::restoreOverrideCursor();
    }
    PaintProgress();
    if (!form_.IsRunning()) HideProgress();
  };
  host_.onStatusPanel = [this](StatusBar bar, int nPanel, std::string_view sText) {
    panelTexts_[{bar == StatusBar::Main ? 0 : 1, nPanel}] = ToQt(sText);
    if (!form_.IsRunning()) PaintProgress();
  };
  host_.beforeEvents = [this] { PaintProgress(); };
  host_.onCaption = [this](std::string_view sText) { setWindowTitle(ToQt(sText)); };
  host_.SetCaption(frame_.sCaption);
  host_.onProgress = [this](const RunProgress& progress) { ShowRunProgress(progress); };
  form_.onTrouble = [pScroll, this] { pScroll->ensureWidgetVisible(pLog_); };
  form_.onExit = [this] { close(); };
  log_.SetView(this);
}

QWidget* clsMainWindow::MakeStep1() {
  auto* const pBox = binder_.As<QGroupBox>("frameGUI", 0);
  QGridLayout* const pGrid = StepGrid(pBox);
  pGrid->addWidget(binder_.Widget("cbInputFile"), 0, kBoxColumn);
  pGrid->addWidget(binder_.Widget("cmdInputBrowse"), 0, kButtonColumn);
  pGrid->addWidget(binder_.Widget("cmdSelectInputFolder"), 0, kButtonColumn + 1);
  pGrid->addWidget(HelpButton(binder_, "cmdHelpInputFile"), 0, kHelpColumn);
  AddHint(pGrid, binder_.Widget("Label1"));
  binder_.As<QLabel>("lblCodePage")->setWordWrap(false);
  constexpr int kBetween = 24;
  auto* const pLeft = Row({binder_.Widget("cbDoSubfolders")});
  pLeft->addSpacing(kBetween);
  pLeft->addWidget(binder_.Widget("lblCodePage"));
  pLeft->addWidget(binder_.Widget("cbCodePage"));
  auto* const pPages = binder_.As<QComboBox>("cbCodePage");
  pPages->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  constexpr int kMostCharacters = 60;
  pPages->setMaximumWidth(kMostCharacters * pPages->fontMetrics().averageCharWidth());
  AddLastRow(pGrid, pLeft, binder_.Widget("cmdEditInput"), binder_.Widget("cmdExploreInputFolder"));
  return pBox;
}

QWidget* clsMainWindow::MakeStep2() {
  auto* const pBox = binder_.As<QGroupBox>("frameGUI", 1);
  QGridLayout* const pGrid = StepGrid(pBox);
  pGrid->addWidget(binder_.Widget("cbOutputFile"), 0, kBoxColumn);
  for (const char* const pName : {"cmdOutputBrowse", "cmdSelectOutputFolder"}) {
    pGrid->addWidget(binder_.Widget(pName), 0, kButtonColumn, 1, 2);
  }
  pGrid->addWidget(HelpButton(binder_, "cmdHelpOutputFile"), 0, kHelpColumn);
  for (const char* const pHint : {"Label5", "Label2", "lblOutputPath"}) AddHint(pGrid, binder_.Widget(pHint));
  AddLastRow(pGrid, Row({binder_.Widget("cbSaveToOriginalFolder")}), binder_.Widget("cmdEditOutput"),
             binder_.Widget("cmdExploreOutputFolder"));
  return pBox;
}

QWidget* clsMainWindow::MakeStep3() {
  auto* const pBox = binder_.As<QGroupBox>("frameGUI", 2);
  auto* const pColumn = new QVBoxLayout(pBox);
  QHBoxLayout* const pMethods = Row({binder_.Widget("rbConversionMethod", 0), binder_.Widget("rbConversionMethod", 1),
                                     binder_.Widget("rbConversionMethod", 2)});
  constexpr int kBetweenMethods = 18;
  pMethods->setSpacing(kBetweenMethods);
  pMethods->addStretch();
  pMethods->addWidget(binder_.Widget("cmdFindTables"));
  pMethods->addWidget(HelpButton(binder_, "cmdHelpConversionMethod"));
  pColumn->addLayout(pMethods);
  const int titleHeight = fontMetrics().height() * 4 / 3;
  const auto method = [&](int nIndex, std::initializer_list<const char*> names, int nStretched, const char* pHelp) {
    QWidget* const pFrame = binder_.Widget("frameInnerGUI", nIndex);
    auto* const pRow = new QHBoxLayout(pFrame);
    // Its row stands in line with those of the other steps.
    pRow->setContentsMargins(0, titleHeight, 0, 0);
    for (const char* const pName : names) pRow->addWidget(binder_.Widget(pName));
    pRow->setStretch(nStretched, 1);
    pRow->addWidget(HelpButton(binder_, pHelp));
    pColumn->addWidget(pFrame);
  };
  for (const char* const pName : {"Label6", "Label3"}) binder_.As<QLabel>(pName)->setWordWrap(false);
  method(0, {"Label6", "cbFixedWidthProfileList", "cmdEditProfile"}, 1, "cmdHelpProfileFile");
  method(1, {"Label3", "cbRecipeFile", "cmdRecipeBrowse", "cmdEditRecipe"}, 1, "cmdHelpRecipeFile");
  method(2, {"Label4"}, 0, "cmdHelpMarkup");
  return pBox;
}

/// A text that shows at times, and what can be done about it.
QWidget* clsMainWindow::MakeLine(const char* pText, std::initializer_list<const char*> links) {
  auto* const pLine = new QWidget;
  auto* const pRow = Row({binder_.Widget(pText)});
  for (const char* const pName : links) pRow->addWidget(binder_.Widget(pName));
  pRow->setContentsMargins(0, 0, 0, 0);
  pRow->setStretch(0, 1);
  pLine->setLayout(pRow);
  for (const char* const pName : links) {
    auto* const pLink = binder_.As<QPushButton>(pName);
    pLink->setFlat(true);
    pLink->setStyleSheet("color: palette(link); text-decoration: underline");
  }
  return pLine;
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
  pLogColours_ = new clsLogColours(pLog_);
  pColumn->addWidget(pLog_);
  return pBox;
}

void clsMainWindow::MakeToolBar() {
  QToolBar* const pBar = addToolBar("tbMain");
  pBar->setObjectName("tbMain");
  pBar->setMovable(false);
  pBar->setContextMenuPolicy(Qt::PreventContextMenu);
  pBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  for (const char* const pName : {"keyConvert", "keyPause", "KeyOptions"}) pBar->addAction(binder_.Action(pName));
}

/// The buttons of the second step stand below those of the first, once their captions are known.
void clsMainWindow::AlignSteps() {
  auto* const pGrid = static_cast<QGridLayout*>(binder_.Widget("frameGUI", 1)->layout());
  int nColumn = kButtonColumn;
  for (const char* const pName : {"cmdInputBrowse", "cmdSelectInputFolder"}) {
    pGrid->setColumnMinimumWidth(nColumn++, binder_.Widget(pName)->sizeHint().width());
  }
}

/// In the colours of the palette, which may change while the window stands.
void clsMainWindow::MakeIcons() {
  const auto icon = [this](Icon which) { return MakeIcon(which, palette()); };
  binder_.Action("keyConvert")->setIcon(icon(Icon::Convert));
  binder_.Action("keyPause")->setIcon(icon(Icon::Pause));
  binder_.Action("KeyOptions")->setIcon(icon(Icon::Options));
  for (const char* const pName : {"cmdInputBrowse", "cmdOutputBrowse", "cmdRecipeBrowse"}) {
    binder_.As<QPushButton>(pName)->setIcon(icon(Icon::File));
  }
  for (const char* const pName : {"cmdSelectInputFolder", "cmdSelectOutputFolder"}) {
    binder_.As<QPushButton>(pName)->setIcon(icon(Icon::Folder));
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
      pPanel->setTextFormat(Qt::PlainText);
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
