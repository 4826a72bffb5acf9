// LayoutProfileEditor of modDialogLayouts.

#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "clsProfileCut.h"
#include "frmSpecifyFixedWidthText.h"
#include "modDialogLayouts.h"
#include "modEditorParts.h"

namespace quillon {

namespace {

using Grid = clsProfileGrid;

/// Keys and focus of the width box and the grid, which mean more to the profile editor than to other forms. It watches
/// them until the dialog has taken them down, when the binder is gone already.
class clsProfileKeys : public QObject {
 public:
  clsProfileKeys(frmSpecifyFixedWidthText& form, QWidget* pWidth, QWidget* pCancel, QObject* pParent)
      : QObject(pParent), form_(form), pWidth_(pWidth), pCancel_(pCancel) {}

 protected:
  bool eventFilter(QObject* pWatched, QEvent* pEvent) override {
    if (form_.IsUnloaded()) return QObject::eventFilter(pWatched, pEvent);
    const bool bWidth = pWatched == pWidth_;
    if (pEvent->type() == QEvent::KeyPress && bWidth) {
      const int nKey = static_cast<QKeyEvent*>(pEvent)->key();
      if (nKey == Qt::Key_Up || nKey == Qt::Key_Down) {
        form_.txtColumnWidth_ArrowKey(nKey == Qt::Key_Down);
        return true;
      }
    }
    // A digit is a width; the grid itself would go to the row of that number. It counts as it goes down, so that a
    // second one, pressed before the first is up, finds the width box.
    if (pEvent->type() == QEvent::KeyPress && !bWidth) {
      const int nKey = static_cast<QKeyEvent*>(pEvent)->key();
      const bool bDigit = nKey >= Qt::Key_0 && nKey <= Qt::Key_9;
      if (bDigit && nKey != Qt::Key_0) form_.fgGrid_KeyUp(static_cast<char>('1' + (nKey - Qt::Key_1)));
      if (bDigit) return true;
    }
    if (pEvent->type() == QEvent::FocusOut && bWidth && LeavesBox(static_cast<QFocusEvent*>(pEvent)->reason())) {
      form_.txtColumnWidth_LostFocus(pCancel_->hasFocus());
    }
    return QObject::eventFilter(pWatched, pEvent);
  }

 private:
  /// Another window, a message about the width itself and a menu give the focus back.
  static bool LeavesBox(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
  }

  frmSpecifyFixedWidthText& form_;
  QWidget* pWidth_;
  QWidget* pCancel_;
};

void ShowGrid(const frmSpecifyFixedWidthText& form, QTableWidget& table, bool bChanged) {
  const QSignalBlocker quiet(&table);
  const int nRows = form.fgGrid.Rows();
  if (table.rowCount() != nRows) table.setRowCount(nRows);
  for (int nRow = 0; nRow < nRows && bChanged; ++nRow) {
    for (int n = Grid::kNumber; n <= Grid::kPosition; ++n) {
      const QString sText = ToQt(form.fgGrid.Text(nRow, static_cast<Grid::Column>(n)));
      QTableWidgetItem* const pItem = table.item(nRow, n - 1);
      if (pItem == nullptr) {
        auto* const pNew = new QTableWidgetItem(sText);
        if (n <= Grid::kWidth) pNew->setTextAlignment(Qt::AlignCenter);
        table.setItem(nRow, n - 1, pNew);
      } else if (pItem->text() != sText) {
        pItem->setText(sText);
      }
    }
  }
  table.setColumnHidden(Grid::kRemove - 1, !form.AdvancedShown());
  table.setColumnHidden(Grid::kPosition - 1, !form.AdvancedShown());
  if (nRows > 0 && table.currentRow() != form.CurrentRow()) table.selectRow(form.CurrentRow());
}

QTableWidget* MakeGrid(frmSpecifyFixedWidthText& form, clsFormBinder& b) {
  auto* const pTable = b.As<QTableWidget>("fgGrid");
  pTable->setColumnCount(Grid::kPosition);
  QStringList titles;
  for (const char* const pTitle : {"Column", "Width", "Pad With", "Align", "Remove", "Position"}) {
    titles << ToQt(Translate(pTitle));
  }
  pTable->setHorizontalHeaderLabels(titles);
  pTable->verticalHeader()->hide();
  pTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
  pTable->setSelectionMode(QAbstractItemView::SingleSelection);
  pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
  pTable->setTabKeyNavigation(false);
  pTable->setMinimumHeight(220);
  QObject::connect(pTable, &QTableWidget::currentCellChanged, pTable, [&form](int nRow, int, int nOldRow, int) {
    if (nRow != nOldRow) form.fgGrid_Click(nRow);
  });
  QObject::connect(pTable, &QTableWidget::cellDoubleClicked, pTable, [&form] { form.fgGrid_DblClick(); });
  QObject::connect(pTable->verticalScrollBar(), &QScrollBar::valueChanged, pTable,
                   [&form](int nTop) { form.fgGrid_Scrolled(nTop); });
  return pTable;
}

QHBoxLayout* Line(clsFormBinder& b, std::initializer_list<const char*> names) {
  auto* const pRow = new QHBoxLayout;
  for (const char* const pName : names) pRow->addWidget(b.Widget(pName));
  return pRow;
}

/// What the part of the dialog without preview and buttons holds, from top to bottom.
void PlaceProfileControls(clsFormBinder& b, QTableWidget* pTable, QVBoxLayout* pAll) {
  pAll->setContentsMargins(0, 0, 0, 0);
  auto* const pTop = new QVBoxLayout(b.As<QGroupBox>("frameTop"));
  pTop->addLayout(Line(b, {"lblProfileName", "cbProfileList", "cmdSave", "cmdRenameProfile", "cmdDeleteProfile",
                           "cmdEditProfile", "cmdReloadProfile"}));
  pTop->addLayout(Line(b, {"lblNumOfColumns", "txtNumOfColumns", "cmdApplyNumberOfColumns"}));
  constexpr int kNameWidth = 190;
  b.Widget("cbProfileList")->setMinimumWidth(kNameWidth);
  for (const char* const pName : {"lblProfileName", "lblNumOfColumns"}) b.As<QLabel>(pName)->setWordWrap(false);
  pAll->addWidget(b.Widget("frameTop"));
  pAll->addWidget(pTable, 1);
  auto* const pBottom = new QVBoxLayout(b.As<QGroupBox>("frameBottom"));
  pBottom->addLayout(Line(b, {"lblColumn", "lblColumnNumber", "lblWidth", "txtColumnWidth", "lblPadWith",
                              "cbPadWithCharacter", "lblAlign", "cbJustification", "cmdColumnNext"}));
  pBottom->addWidget(b.Widget("cbAdvancedOptionsShow"));
  b.As<QGroupBox>("frameAdvancedOptions")->setLayout(Line(b, {"lblRemove", "cbRemove", "lblPosition", "cbPosition"}));
  pBottom->addWidget(b.Widget("frameAdvancedOptions"));
  pAll->addWidget(b.Widget("frameBottom"));
}

void ConnectProfileKeys(frmSpecifyFixedWidthText& form, clsFormBinder& b, QTableWidget* pTable, QDialog& dialog) {
  auto* const pKeys = new clsProfileKeys(form, b.Widget("txtColumnWidth"), b.Widget("cmdCancel"), &dialog);
  b.Widget("txtColumnWidth")->installEventFilter(pKeys);
  pTable->installEventFilter(pKeys);
  auto* const pWidth = b.As<QLineEdit>("txtColumnWidth");
  QObject::disconnect(pWidth, &QLineEdit::textEdited, nullptr, nullptr);
  QObject::connect(pWidth, &QLineEdit::textEdited, pWidth,
                   [&form](const QString& sText) { form.txtColumnWidth_KeyUp(FromQt(sText)); });
  // The Enter key is Next; in the number of columns it applies that number.
  auto* const pNext = b.As<QPushButton>("cmdColumnNext");
  pNext->setDefault(true);
  QObject::disconnect(pNext, &QAbstractButton::clicked, nullptr, nullptr);
  QObject::connect(pNext, &QAbstractButton::clicked, pNext,
                   [&form, &b] { form.cmdColumnNext_Click(b.Widget("txtNumOfColumns")->hasFocus()); });
}

/// The preview stands beside the editor's own width, and goes with it.
void SizeWithPreview(frmSpecifyFixedWidthText& form, QDialog& dialog, QSplitter* pSplitter, QWidget* pPreview,
                     QCheckBox* pShowPreview) {
  constexpr int kEditorWidth = 760;
  constexpr int kPreviewWidth = 720;
  constexpr int kFrame = 20;
  pSplitter->setSizes({kEditorWidth, kPreviewWidth});
  const int nRoom = dialog.screen()->availableGeometry().width() - kFrame;
  dialog.resize(std::min(kEditorWidth + kPreviewWidth, nRoom), static_cast<int>(form.Height / kTwipsPerPixel));
  QObject::connect(pShowPreview, &QCheckBox::toggled, &dialog, [&dialog, pSplitter, pPreview, nRoom](bool bShown) {
    const int nEditor = pSplitter->sizes().front();
    const int nMargins = dialog.width() - pSplitter->width();
    pPreview->setVisible(bShown);
    dialog.layout()->activate();  // else what is hidden would still want its room
    dialog.resize(std::min(nRoom, nEditor + nMargins + (bShown ? kPreviewWidth : 0)), dialog.height());
  });
  QObject::connect(&dialog, &QDialog::finished, &dialog,
                   [&form, &dialog] { form.Height = dialog.height() * kTwipsPerPixel; });
}

}  // namespace

void LayoutProfileEditor(clsForm& anyForm, clsFormBinder& b, QDialog& dialog) {
  auto& form = static_cast<frmSpecifyFixedWidthText&>(anyForm);
  auto* const pMenus = new QMenuBar(&dialog);
  b.MakeMenus(pMenus);
  QTableWidget* const pTable = MakeGrid(form, b);
  auto* const pEditor = new QWidget;
  PlaceProfileControls(b, pTable, new QVBoxLayout(pEditor));
  auto* const pPreview = MakeCutView<clsProfileCut>(form, dialog);
  auto* const pSplitter = new QSplitter(Qt::Horizontal);
  pSplitter->addWidget(pEditor);
  pSplitter->addWidget(pPreview);
  pSplitter->setChildrenCollapsible(false);
  pSplitter->setStretchFactor(1, 1);
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->setMenuBar(pMenus);
  pAll->addWidget(pSplitter, 1);
  QCheckBox* const pShowPreview = MakePreviewBox();
  auto* const pButtons = new QHBoxLayout;
  pButtons->addWidget(pShowPreview);
  pButtons->addStretch();
  pButtons->addWidget(b.Widget("cmdApply"));
  pButtons->addWidget(b.Widget("cmdCancel"));
  pAll->addLayout(pButtons);
  ConnectProfileKeys(form, b, pTable, dialog);

  auto* const pTimer = new QTimer(&dialog);
  QObject::connect(pTimer, &QTimer::timeout, &dialog, [&form] { form.Timer1_Timer(); });
  pTimer->start(frmSpecifyFixedWidthText::kTimerMilliseconds);
  b.onState = [&form, pTable, pPreview, nShown = uint64_t{0}]() mutable {
    const bool bChanged = std::exchange(nShown, form.fgGrid.Revision()) != form.fgGrid.Revision();
    ShowGrid(form, *pTable, bChanged);
    if (bChanged) pPreview->UpdateSoon();
  };
  SizeWithPreview(form, dialog, pSplitter, pPreview, pShowPreview);
  b.Widget("txtColumnWidth")->setFocus();
}

}  // namespace quillon
