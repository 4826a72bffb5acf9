// The two editors: what their views have beside plain controls.

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "frmExportBuilder.h"
#include "frmSpecifyFixedWidthText.h"
#include "modDialogLayouts.h"
#include "modEditorPreview.h"
#include "modTranslator.h"

namespace quillon {

namespace {

using Grid = clsProfileGrid;

constexpr double kTwipsPerPixel = 15;

/// Keys and focus of the width box and the grid, which mean more to the profile editor than to other forms.
class clsProfileKeys : public QObject {
 public:
  clsProfileKeys(frmSpecifyFixedWidthText& form, clsFormBinder& binder, QObject* pParent)
      : QObject(pParent), form_(form), binder_(binder) {}

 protected:
  bool eventFilter(QObject* pWatched, QEvent* pEvent) override {
    const bool bWidth = pWatched == binder_.Widget("txtColumnWidth");
    if (pEvent->type() == QEvent::KeyPress && bWidth) {
      const int nKey = static_cast<QKeyEvent*>(pEvent)->key();
      if (nKey == Qt::Key_Up || nKey == Qt::Key_Down) {
        form_.txtColumnWidth_ArrowKey(nKey == Qt::Key_Down);
        return true;
      }
    }
    if (pEvent->type() == QEvent::KeyRelease && !bWidth) {
      const int nKey = static_cast<QKeyEvent*>(pEvent)->key();
      if (nKey >= Qt::Key_1 && nKey <= Qt::Key_9) form_.fgGrid_KeyUp(static_cast<char>('1' + (nKey - Qt::Key_1)));
    }
    if (pEvent->type() == QEvent::FocusOut && bWidth) {
      form_.txtColumnWidth_LostFocus(binder_.Widget("cmdCancel")->hasFocus());
    }
    return QObject::eventFilter(pWatched, pEvent);
  }

 private:
  frmSpecifyFixedWidthText& form_;
  clsFormBinder& binder_;
};

void ShowGrid(const frmSpecifyFixedWidthText& form, QTableWidget& table) {
  const QSignalBlocker quiet(&table);
  const int nRows = form.fgGrid.Rows();
  if (table.rowCount() != nRows) table.setRowCount(nRows);
  for (int nRow = 0; nRow < nRows; ++nRow) {
    for (int n = Grid::kNumber; n <= Grid::kPosition; ++n) {
      const QString sText = ToQt(form.fgGrid.Text(nRow, static_cast<Grid::Column>(n)));
      QTableWidgetItem* const pItem = table.item(nRow, n - 1);
      if (pItem == nullptr) {
        table.setItem(nRow, n - 1, new QTableWidgetItem(sText));
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

/// The pane below the recipe editor, brought up to date a moment after the last key, and the box that closes it.
QCheckBox* MakePreview(frmExportBuilder& form, QPlainTextEdit* pEditor, QSplitter* pSplitter) {
  constexpr int kMoment = 120;  // milliseconds
  auto* const pPane = new QPlainTextEdit;
  pPane->setObjectName("txtPreview");
  pPane->setFont(pEditor->font());
  pPane->setLineWrapMode(QPlainTextEdit::NoWrap);
  pPane->setReadOnly(true);
  pSplitter->addWidget(pPane);
  auto* const pBox = new QCheckBox(ToQt(Translate("Show how the input file is cut")));
  pBox->setObjectName("cbShowPreview");
  pBox->setChecked(true);
  auto* const pTimer = new QTimer(pEditor);
  pTimer->setSingleShot(true);
  QObject::connect(pTimer, &QTimer::timeout, pPane, [&form, pEditor, pPane] {
    if (!pPane->isVisible()) return;
    const QString sText = pEditor->toPlainText();
    const auto nCaret = static_cast<size_t>(sText.left(pEditor->textCursor().position()).toUtf8().size());
    const QString sShown = ToQt(EditorPreview(form, FromQt(sText), nCaret));
    if (pPane->toPlainText() != sShown) pPane->setPlainText(sShown);
  });
  const auto later = [pTimer] { pTimer->start(kMoment); };
  QObject::connect(pEditor, &QPlainTextEdit::textChanged, pTimer, later);
  QObject::connect(pEditor, &QPlainTextEdit::cursorPositionChanged, pTimer, later);
  QObject::connect(pBox, &QCheckBox::toggled, pPane, [pPane, later](bool bShown) {
    pPane->setVisible(bShown);
    later();
  });
  later();
  return pBox;
}

}  // namespace

void LayoutProfileEditor(clsForm& anyForm, clsFormBinder& b, QDialog& dialog) {
  auto& form = static_cast<frmSpecifyFixedWidthText&>(anyForm);
  auto* const pAll = new QVBoxLayout(&dialog);
  auto* const pMenus = new QMenuBar(&dialog);
  pAll->setMenuBar(pMenus);
  b.MakeMenus(pMenus);
  auto* const pTop = new QVBoxLayout(b.As<QGroupBox>("frameTop"));
  pTop->addLayout(Line(b, {"lblProfileName", "cbProfileList", "cmdSave", "cmdRenameProfile", "cmdDeleteProfile",
                           "cmdEditProfile", "cmdReloadProfile"}));
  pTop->addLayout(Line(b, {"lblNumOfColumns", "txtNumOfColumns", "cmdApplyNumberOfColumns"}));
  constexpr int kNameWidth = 190;
  b.Widget("cbProfileList")->setMinimumWidth(kNameWidth);
  b.As<QLabel>("lblNumOfColumns")->setWordWrap(false);
  pAll->addWidget(b.Widget("frameTop"));
  QTableWidget* const pTable = MakeGrid(form, b);
  pAll->addWidget(pTable, 1);
  auto* const pBottom = new QVBoxLayout(b.As<QGroupBox>("frameBottom"));
  pBottom->addLayout(Line(b, {"lblColumn", "lblColumnNumber", "lblWidth", "txtColumnWidth", "lblPadWith",
                              "cbPadWithCharacter", "lblAlign", "cbJustification", "cmdColumnNext"}));
  pBottom->addWidget(b.Widget("cbAdvancedOptionsShow"));
  b.As<QGroupBox>("frameAdvancedOptions")->setLayout(Line(b, {"lblRemove", "cbRemove", "lblPosition", "cbPosition"}));
  pBottom->addWidget(b.Widget("frameAdvancedOptions"));
  pAll->addWidget(b.Widget("frameBottom"));
  auto* const pButtons = new QHBoxLayout;
  pButtons->addStretch();
  pButtons->addWidget(b.Widget("cmdApply"));
  pButtons->addWidget(b.Widget("cmdCancel"));
  pAll->addLayout(pButtons);

  auto* const pKeys = new clsProfileKeys(form, b, &dialog);
  b.Widget("txtColumnWidth")->installEventFilter(pKeys);
  pTable->installEventFilter(pKeys);
  auto* const pWidth = b.As<QLineEdit>("txtColumnWidth");
  QObject::disconnect(pWidth, &QLineEdit::textEdited, nullptr, nullptr);
  QObject::connect(pWidth, &QLineEdit::textEdited, pWidth,
                   [&form](const QString& sText) { form.txtColumnWidth_KeyUp(FromQt(sText)); });
  auto* const pTimer = new QTimer(&dialog);
  QObject::connect(pTimer, &QTimer::timeout, &dialog, [&form] { form.Timer1_Timer(); });
  pTimer->start(frmSpecifyFixedWidthText::kTimerMilliseconds);
  b.onState = [&form, pTable] { ShowGrid(form, *pTable); };
  dialog.resize(760, static_cast<int>(form.Height / kTwipsPerPixel));
  QObject::connect(&dialog, &QDialog::finished, &dialog,
                   [&form, &dialog] { form.Height = dialog.height() * kTwipsPerPixel; });
}

void LayoutRecipeEditor(clsForm& anyForm, clsFormBinder& b, QDialog& dialog) {
  auto& form = static_cast<frmExportBuilder&>(anyForm);
  auto* const pAll = new QVBoxLayout(&dialog);
  auto* const pEditor = new QPlainTextEdit;
  pEditor->setObjectName("txtFileEditor");
  pEditor->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  pEditor->setLineWrapMode(QPlainTextEdit::NoWrap);
  QObject::connect(pEditor, &QPlainTextEdit::textChanged, pEditor, [&form, pEditor] {
    form.TypeText("txtFileEditor", FromQt(pEditor->toPlainText().replace("\n", "\r\n")));
  });
  auto* const pButtons = new QVBoxLayout(b.As<QGroupBox>("frameButtons"));
  for (const char* const pName : {"cmdNew", "cmdLoadFile", "cmdSave", "cmdSaveAs", "cmdSaveAndClose", "cmdAddTable",
                                  "cmdClose", "cmdCancel", "cmdHelp"}) {
    pButtons->addWidget(b.Widget(pName));
  }
  pButtons->addStretch();
  auto* const pRow = new QHBoxLayout;
  auto* const pSplitter = new QSplitter(Qt::Vertical);
  pSplitter->addWidget(pEditor);
  QCheckBox* const pShowPreview = MakePreview(form, pEditor, pSplitter);
  pRow->addWidget(pSplitter, 1);
  pRow->addWidget(b.Widget("frameButtons"));
  pAll->addLayout(pRow, 1);
  pAll->addWidget(pShowPreview);
  pAll->addWidget(b.Widget("StatusBar1", 1));
  b.onState = [&form, &dialog, pEditor] {
    clsControl& text = form.Get("txtFileEditor");
    dialog.setWindowTitle(ToQt(form.sCaption));
    const QString sShown = ToQt(text.sText).replace("\r\n", "\n");
    const QSignalBlocker quiet(pEditor);
    if (pEditor->toPlainText() != sShown) pEditor->setPlainText(sShown);
    if (text.lSelStart < 0) return;
    QTextCursor cursor = pEditor->textCursor();
    cursor.movePosition(text.lSelLength == 0 ? QTextCursor::Start : QTextCursor::End);
    pEditor->setTextCursor(cursor);
    text.lSelStart = -1;
  };
  dialog.resize(static_cast<int>(std::max(form.placement.Width, frmExportBuilder::kMinWidth) / kTwipsPerPixel),
                static_cast<int>(form.placement.Height / kTwipsPerPixel));
  dialog.setMinimumWidth(static_cast<int>(frmExportBuilder::kMinWidth / kTwipsPerPixel));
  QObject::connect(&dialog, &QDialog::finished, &dialog, [&form, &dialog] {
    form.placement.Width = dialog.width() * kTwipsPerPixel;
    form.placement.Height = dialog.height() * kTwipsPerPixel;
    form.SaveIniFile();
  });
}

}  // namespace quillon
