#include "clsReportCutView.h"

#include <QAbstractTableModel>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>

#include "clsFormBinder.h"
#include "modPreviewText.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

/// The cells of a picture, asked for one by one, so that only those on the screen become texts of the toolkit.
class clsReportCutView::clsCells : public QAbstractTableModel {
 public:
  clsCells(const clsReportCut& cut, QObject* pParent) : QAbstractTableModel(pParent), cut_(cut) {}

  void Refill() {
    beginResetModel();
    endResetModel();
  }
  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(cut_.Picture().cells.size());
  }
  int columnCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(cut_.Picture().titles.size());
  }
  QVariant data(const QModelIndex& index, int nRole) const override {
    const auto nTitle = static_cast<size_t>(index.column());
    const bool bNumbers = nTitle < cut_.Picture().numbers.size() && cut_.Picture().numbers[nTitle];
    if (nRole == Qt::TextAlignmentRole && bNumbers) return {Qt::AlignRight | Qt::AlignVCenter};
    if (nRole != Qt::DisplayRole) return {};
    const std::vector<std::string>& cells = cut_.Picture().cells[static_cast<size_t>(index.row())].cells;
    const auto nColumn = static_cast<size_t>(index.column());
    return nColumn < cells.size() ? ToQt(ShownText(CellText(cells[nColumn]))) : QVariant();
  }
  QVariant headerData(int nSection, Qt::Orientation orientation, int nRole) const override {
    if (nRole != Qt::DisplayRole) return {};
    const CutPicture& picture = cut_.Picture();
    const auto n = static_cast<size_t>(nSection);
    if (orientation == Qt::Horizontal) return ToQt(picture.titles[n]);
    return QString::number(picture.cells[n].lLine);
  }

 private:
  /// As the output will have it; blanks behind a text can't be seen.
  std::string_view CellText(std::string_view sCell) const {
    return cut_.Picture().bTrims ? TrimBlanks(sCell) : TrimRightBlanks(sCell);
  }
  const clsReportCut& cut_;
};

clsReportCutView::clsReportCutView(clsCutSource& source, QWidget* pParent) : QWidget(pParent), cut_(source) {
  pCanvas_ = new clsReportCanvas(cut_);
  MakeGrid();
  pProof_ = new clsProofTree;
  pProof_->onLine = [this](int64_t lLine) { pCanvas_->GoToLine(lLine); };
  MakeButtons();
  MakeFind();
  pNotes_ = new QLabel;
  pNotes_->setObjectName("lblCutNotes");
  pNotes_->setWordWrap(true);
  pNotes_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  pHint_ = new QLabel;
  pHint_->setObjectName("lblCutHint");
  pHint_->setWordWrap(true);
  LayOut();

  cut_.onChange = [this] { Show(); };
  work_.setInterval(0);
  connect(&work_, &QTimer::timeout, this, [this] { WorkOn(); });
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] { UpdateNow(); });
  pCanvas_->onBeforeHand = [this] {
    if (timer_.isActive()) UpdateNow();
  };
  pCanvas_->onUndo = [this] {
    if (onUndo) onUndo();
  };
  pCanvas_->onRedo = [this] {
    if (onRedo) onRedo();
  };
  Show();
}

void clsReportCutView::MakeGrid() {
  pCells_ = new clsCells(cut_, this);
  pGrid_ = new QTableView;
  pGrid_->setObjectName("gridCells");
  pGrid_->setAccessibleName(ToQt(Translate("Cells")));
  pGrid_->setModel(pCells_);
  pGrid_->setFont(pCanvas_->font());
  pGrid_->setAlternatingRowColors(true);
  pGrid_->setSelectionBehavior(QAbstractItemView::SelectRows);
  pGrid_->setTabKeyNavigation(false);
  constexpr int kFewestRows = 2;
  pGrid_->setMinimumHeight((kFewestRows + 1) * (QFontMetrics(pGrid_->font()).height() + 4) + 4);
  constexpr int kRowsMeasured = 30;
  pGrid_->horizontalHeader()->setResizeContentsPrecision(kRowsMeasured);
  pGrid_->verticalHeader()->setDefaultSectionSize(QFontMetrics(pGrid_->font()).height() + 4);
  QHeaderView* const pHeader = pGrid_->horizontalHeader();
  pHeader->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(pHeader, &QHeaderView::customContextMenuRequested, this, [this, pHeader](const QPoint& place) {
    ColumnMenu(pHeader->logicalIndexAt(place), pHeader->mapToGlobal(place));
  });
  pGrid_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(pGrid_, &QTableView::customContextMenuRequested, this, [this](const QPoint& place) {
    ColumnMenu(pGrid_->currentIndex().column(), pGrid_->viewport()->mapToGlobal(place));
  });
  connect(pGrid_, &QTableView::clicked, this, [this](const QModelIndex& index) {
    pCanvas_->ScrollToLine(cut_.Picture().cells[static_cast<size_t>(index.row())].lLine);
  });
}

void clsReportCutView::ColumnMenu(int nColumn, const QPoint& place) {
  const CutPicture& picture = cut_.Picture();
  if (!cut_.CanTeach() || nColumn < 0 || static_cast<size_t>(nColumn) >= picture.columns.size()) return;
  const PointedColumn& column = picture.columns[static_cast<size_t>(nColumn)];
  if (column.column == kNoTidyColumn) return;
  QMenu menu;
  pCanvas_->FillColumnMenu(menu, column, ToQt(picture.titles[static_cast<size_t>(nColumn)]));
  menu.exec(place);
}

void clsReportCutView::MakeButtons() {
  pLine_ = new QPushButton(ToQt(Translate("This line")));
  pLine_->setObjectName("cmdThisLine");
  pLine_->setAutoDefault(false);
  auto* const pMenu = new QMenu(pLine_);
  connect(pMenu, &QMenu::aboutToShow, this, [this, pMenu] {
    pMenu->clear();
    pCanvas_->FillLineMenu(*pMenu);
  });
  pLine_->setMenu(pMenu);
  pWorkOut_ = MakeButton("cmdWorkOut", Translate("Suggest columns"), [this] {
    cut_.WorkOut();
    // Enter and Escape are to mean the proposal now, not the dialog.
    if (cut_.HasProposal()) pCanvas_->setFocus();
  });
  pTake_ = MakeButton("cmdTakeCut", Translate("Use"), [this] { cut_.TakeProposal(); });
  pDrop_ = MakeButton("cmdDropCut", Translate("Discard"), [this] { cut_.DropProposal(); });
  pFurther_ = MakeButton("cmdLookFurther", Translate("Look further"), [this] { cut_.LookFurther(); });
}

/// A box that Ctrl+F opens and Escape closes.
void clsReportCutView::MakeFind() {
  pFind_ = new QLineEdit;
  pFind_->setObjectName("txtFindInReport");
  pFind_->setPlaceholderText(ToQt(Translate("Find in the report")));
  pFind_->setAccessibleName(pFind_->placeholderText());
  pFind_->setVisible(false);
  pFind_->installEventFilter(this);
  connect(pFind_, &QLineEdit::textEdited, this, [this] { Find(true); });
  pCanvas_->onFind = [this](bool bAsk, bool bForward) {
    if (!bAsk) return Find(bForward);
    pFind_->show();
    pFind_->setFocus();
    pFind_->selectAll();
  };
}

void clsReportCutView::Find(bool bForward) {
  const bool bFound = pCanvas_->FindNext(FromQt(pFind_->text()), bForward);
  pFind_->setStyleSheet(bFound || pFind_->text().isEmpty() ? "" : "color: palette(bright-text); background: #a00000");
}

/// Its keys are its own: to the dialog, Enter and Escape would mean the whole.
bool clsReportCutView::eventFilter(QObject* pWatched, QEvent* pEvent) {
  if (pWatched != pFind_ || pEvent->type() != QEvent::KeyPress) return QWidget::eventFilter(pWatched, pEvent);
  const auto* const pKey = static_cast<QKeyEvent*>(pEvent);
  const bool bNext = pKey->key() == Qt::Key_Return || pKey->key() == Qt::Key_Enter || pKey->key() == Qt::Key_F3;
  if (!bNext && pKey->key() != Qt::Key_Escape) return false;
  if (bNext) {
    Find(!pKey->modifiers().testFlag(Qt::ShiftModifier));
  } else {
    pCanvas_->setFocus();
    pFind_->hide();
  }
  return true;
}

void clsReportCutView::LayOut() {
  auto* const pButtons = new QHBoxLayout;
  for (QPushButton* const pButton : {pLine_, pWorkOut_, pTake_, pDrop_, pFurther_}) pButtons->addWidget(pButton);
  pButtons->addWidget(pHint_, 1);
  pButtons->addWidget(pFind_);
  auto* const pSplitter = new QSplitter(Qt::Vertical);
  pSplitter->addWidget(pCanvas_);
  pTabs_ = new QTabWidget;
  pTabs_->setObjectName("tabsCut");
  pTabs_->setDocumentMode(true);
  pTabs_->addTab(pGrid_, ToQt(Translate("Cells")));
  pTabs_->addTab(pProof_, ToQt(Translate("Proof")));
  connect(pTabs_, &QTabWidget::currentChanged, this, [this](int nTab) {
    if (nTab == 1) cut_.Prove();
  });
  pSplitter->addWidget(pTabs_);
  pSplitter->setStretchFactor(0, 3);
  pSplitter->setStretchFactor(1, 1);
  auto* const pAll = new QVBoxLayout(this);
  pAll->setContentsMargins(0, 0, 0, 0);
  pAll->addLayout(pButtons);
  pAll->addWidget(pSplitter, 1);
  pAll->addWidget(pNotes_);
}

QPushButton* clsReportCutView::MakeButton(const char* pName, std::string_view sCaption, std::function<void()> onClick) {
  auto* const pButton = new QPushButton(ToQt(sCaption));
  pButton->setObjectName(pName);
  pButton->setAutoDefault(false);
  connect(pButton, &QPushButton::clicked, this, [this, onClick = std::move(onClick)] {
    if (timer_.isActive()) UpdateNow();
    onClick();
  });
  return pButton;
}

void clsReportCutView::UpdateNow() {
  timer_.stop();
  if (!isVisible()) return;
  if (onBeforeLook) onBeforeLook();
  const auto top = [this] {
    const CutPicture& picture = cut_.Picture();
    return picture.cells.empty() ? int64_t{0} : picture.cells.front().lLine;
  };
  const int64_t lBefore = top();
  cut_.Update();
  if (top() != lBefore) pCanvas_->ScrollToLine(top());
}

/// Between the events of the hand: counts the report's lines, tells them apart, proves them.
void clsReportCutView::WorkOn() {
  const int64_t lBefore = cut_.Lines();
  const bool bMore = isVisible() && cut_.WorkOn(kSlice);
  if (!bMore) work_.stop();
  if (!bMore || cut_.Lines() != lBefore) pCanvas_->ShowLines();
}

void clsReportCutView::ShowProof() {
  const ReportProof* const pProof = bProof_ ? cut_.Proof() : nullptr;
  pTabs_->setTabVisible(1, bProof_ && (!cut_.Picture().kinds.empty() || cut_.MustAskForProof()));
  // One that must be asked for would be waited for after each change.
  if (pProof == nullptr && cut_.MustAskForProof()) pTabs_->setCurrentIndex(0);
  // The list is long and changes seldom, the picture with each key.
  if (std::exchange(nProofShown_, cut_.ProofNumber()) == cut_.ProofNumber()) return;
  pTabs_->setTabText(1, ToQt(Translate("Proof")) + (pProof != nullptr && IsProofBad(*pProof) ? " (!)" : ""));
  pProof_->Show(pProof == nullptr ? std::vector<ProofGroup>() : ListProof(*pProof));
}

void clsReportCutView::showEvent(QShowEvent* pEvent) {
  QWidget::showEvent(pEvent);
  UpdateSoon();
}

/// The report may have changed while another window had the keyboard. A proposal is left alone.
void clsReportCutView::changeEvent(QEvent* pEvent) {
  QWidget::changeEvent(pEvent);
  if (pEvent->type() == QEvent::ActivationChange && isActiveWindow() && !cut_.HasProposal()) UpdateSoon();
}

void clsReportCutView::Show() {
  pCanvas_->ShowPicture();
  pCells_->Refill();
  constexpr size_t kColumnsMeasured = 300;  // more would take longer than a hand waits
  if (cut_.Picture().titles.size() <= kColumnsMeasured) pGrid_->resizeColumnsToContents();
  pLine_->setVisible(cut_.CanTeach());
  pWorkOut_->setVisible(!cut_.OnlyShows() && !cut_.Picture().bTidy);
  pWorkOut_->setEnabled(cut_.CanWorkOut());
  pTake_->setVisible(cut_.HasProposal());
  pDrop_->setVisible(cut_.HasProposal());
  pFurther_->setVisible(cut_.CanLookFurther() && !cut_.OnlyShows());
  // Of what the hand did the picture is new already; a look a moment later would be the same again.
  if (cut_.ProofNumber() != nProofShown_ && cut_.Proof() == nullptr) timer_.stop();
  ShowProof();
  if (isVisible()) work_.start();
  pNotes_->setText(NotesText());
  pHint_->setText(HintText());
}

QString clsReportCutView::NotesText() const {
  const bool bDark = palette().color(QPalette::Window).lightness() < 128;
  const QString sWarning = bDark ? "#ff9a8c" : "#a00000";
  QStringList lines;
  if (!cut_.Picture().sFault.empty()) lines << ToQt(cut_.Picture().sFault).toHtmlEscaped();
  for (const CutNote& note : cut_.Picture().notes) {
    const QString sText = ToQt(note.sText).toHtmlEscaped().replace("  ", " &nbsp;");
    lines << (note.bWarning ? "<span style=\"color:" + sWarning + "\">" + sText + "</span>" : sText);
  }
  return lines.join("<br>");
}

QString clsReportCutView::HintText() {
  if (cut_.HasProposal()) return ToQt(cut_.Proposal().sName);
  if (cut_.Selected() >= 0) {
    const int32_t lAfter = cut_.Boundaries()[static_cast<size_t>(cut_.Selected())].lAfter;
    return ToQt(Translate("Boundary behind character")) + " " + QString::number(lAfter) + ": " +
           ToQt(Translate("arrow keys move it, Delete removes it, Insert adds one behind it."));
  }
  if (cut_.CanTeach() && pCanvas_->Cursor() == 0) {
    return ToQt(Translate("Click on a line or drag over a value; the button This line says what it is."));
  }
  if (!cut_.CanEdit()) return {};
  return ToQt(Translate("Click on the ruler to add a boundary, drag one to move it, double click to remove it."));
}

}  // namespace quillon
