// LayoutRecipeEditor of modDialogLayouts.

#include <QCheckBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

#include "clsRecipeCut.h"
#include "frmExportBuilder.h"
#include "modDialogLayouts.h"
#include "modEditorParts.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// What stands in the editor, with one character for a line end. The toolkit's own way turns no-break spaces into
/// blanks, and a key text that holds one would no longer be found.
QString TextOf(const QPlainTextEdit& editor) {
  QString sText = editor.document()->toRawText();
  for (const QChar::SpecialCharacter end : {QChar::ParagraphSeparator, QChar::LineSeparator}) {
    sText.replace(QChar(end), QChar('\n'));
  }
  return sText;
}

/// Shows the model's text. What the model changed is one step that the editor's undo takes back, unless another file
/// was loaded.
void ShowEditorText(QPlainTextEdit& editor, const QString& sShown, bool bLoaded) {
  const QString sNow = TextOf(editor);
  if (sNow == sShown) return;
  if (bLoaded || sNow.isEmpty()) return editor.setPlainText(sShown);
  const auto nShorter = std::min(sNow.size(), sShown.size());
  qsizetype nSame = 0;
  while (nSame < nShorter && sNow[nSame] == sShown[nSame]) ++nSame;
  qsizetype nSameEnd = 0;
  while (nSameEnd < nShorter - nSame && sNow[sNow.size() - 1 - nSameEnd] == sShown[sShown.size() - 1 - nSameEnd]) {
    ++nSameEnd;
  }
  QTextCursor cursor(editor.document());
  cursor.setPosition(static_cast<int>(nSame));
  cursor.setPosition(static_cast<int>(sNow.size() - nSameEnd), QTextCursor::KeepAnchor);
  cursor.insertText(sShown.mid(nSame, sShown.size() - nSame - nSameEnd));
}

/// Where the model wants the caret: at a place, or behind the last character.
void ShowCaret(QPlainTextEdit& editor, const clsControl& text) {
  QTextCursor cursor = editor.textCursor();
  if (text.lSelLength > 0) {
    cursor.movePosition(QTextCursor::End);
  } else {
    const auto nBytes = ByteOffset(text.sText, static_cast<size_t>(text.lSelStart) + 1);
    cursor.setPosition(static_cast<int>(ToQt(text.sText.substr(0, nBytes)).replace("\r\n", "\n").size()));
  }
  editor.setTextCursor(cursor);
  text.lSelLength > 0 ? editor.ensureCursorVisible() : editor.centerCursor();
}

/// The pane that shows the report's cut, for the splitter with the editor.
clsReportCutView* MakePreview(frmExportBuilder& form, QPlainTextEdit* pEditor, QDialog& dialog) {
  auto* const pView = MakeCutView<clsRecipeCut>(form, dialog);
  pView->onBeforeLook = [&form, pEditor] {
    const QString sBefore = TextOf(*pEditor).left(pEditor->textCursor().position());
    form.nCaret = FromQt(QString(sBefore).replace("\n", "\r\n")).size();
  };
  pView->onUndo = [pEditor] { pEditor->undo(); };
  pView->onRedo = [pEditor] { pEditor->redo(); };
  const auto later = [pView] { pView->UpdateSoon(); };
  QObject::connect(pEditor, &QPlainTextEdit::textChanged, pView, later);
  QObject::connect(pEditor, &QPlainTextEdit::cursorPositionChanged, pView, later);
  return pView;
}

QPlainTextEdit* MakeEditor(frmExportBuilder& form) {
  auto* const pEditor = new QPlainTextEdit;
  pEditor->setObjectName("txtFileEditor");
  pEditor->setAccessibleName(ToQt(Translate("Recipe")));
  pEditor->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  pEditor->setLineWrapMode(QPlainTextEdit::NoWrap);
  constexpr int kFewestLines = 3;
  pEditor->setMinimumHeight(kFewestLines * pEditor->fontMetrics().lineSpacing());
  // A recipe has no tabs, and the keyboard must get out again.
  pEditor->setTabChangesFocus(true);
  QObject::connect(pEditor, &QPlainTextEdit::textChanged, pEditor, [&form, pEditor] {
    form.TypeText("txtFileEditor", FromQt(TextOf(*pEditor).replace("\n", "\r\n")));
  });
  return pEditor;
}

void ShowState(frmExportBuilder& form, QPlainTextEdit* pEditor, clsReportCutView* pPreview) {
  clsControl& text = form.Get("txtFileEditor");
  const QSignalBlocker quiet(pEditor);
  ShowEditorText(*pEditor, ToQt(text.sText).replace("\r\n", "\n"), !form.bDirty);
  pPreview->UpdateSoon();
  if (text.lSelStart < 0) return;
  ShowCaret(*pEditor, text);
  text.lSelStart = -1;
}

constexpr int kPreviewHeight = 420;
int PreviewHeight(const QCheckBox* pShowPreview) {
  return pShowPreview->isChecked() ? kPreviewHeight : 0;
}

/// The dialog gets the editor's own place, and the preview's height below it.
void Place(const frmExportBuilder& form, int nPreviewHeight, QDialog& dialog) {
  constexpr int kFrame = 40;
  const QRect screen = dialog.screen()->availableGeometry();
  const auto nMinWidth = static_cast<int>(frmExportBuilder::kMinWidth / kTwipsPerPixel);
  const int nHeight = static_cast<int>(form.placement.Height / kTwipsPerPixel) + nPreviewHeight;
  dialog.setMinimumWidth(nMinWidth);
  dialog.resize(std::max(static_cast<int>(form.placement.Width / kTwipsPerPixel), nMinWidth),
                std::min(nHeight, screen.height() - kFrame));
  const QPoint place(static_cast<int>(form.placement.Left / kTwipsPerPixel),
                     static_cast<int>(form.placement.Top / kTwipsPerPixel));
  // It stays whole on the screen, as far as the place lets it.
  const int nLowest = std::max(screen.top(), screen.bottom() - kFrame - dialog.height());
  if (dialog.screen()->virtualGeometry().contains(place)) dialog.move(place.x(), std::min(place.y(), nLowest));
  if (form.placement.lWindowState == 2) dialog.setWindowState(Qt::WindowMaximized);
}

void KeepPlace(const QDialog& dialog, int nPreviewHeight, frmExportBuilder& form) {
  form.placement.lWindowState = dialog.isMaximized() ? 2 : 0;
  form.placement.Left = dialog.x() * kTwipsPerPixel;
  form.placement.Top = dialog.y() * kTwipsPerPixel;
  form.placement.Width = dialog.width() * kTwipsPerPixel;
  form.placement.Height = (dialog.height() - nPreviewHeight) * kTwipsPerPixel;
  form.SaveIniFile();
}

}  // namespace

void LayoutRecipeEditor(clsForm& anyForm, clsFormBinder& b, QDialog& dialog) {
  auto& form = static_cast<frmExportBuilder&>(anyForm);
  auto* const pAll = new QVBoxLayout(&dialog);
  QPlainTextEdit* const pEditor = MakeEditor(form);
  auto* const pButtons = new QVBoxLayout(b.As<QGroupBox>("frameButtons"));
  for (const char* const pName : {"cmdNew", "cmdLoadFile", "cmdSave", "cmdSaveAs", "cmdSaveAndClose", "cmdAddTable",
                                  "cmdFindTables", "cmdClose", "cmdCancel", "cmdHelp"}) {
    pButtons->addWidget(b.Widget(pName));
  }
  pButtons->addStretch();
  auto* const pSplitter = new QSplitter(Qt::Vertical);
  pSplitter->addWidget(pEditor);
  clsReportCutView* const pPreview = MakePreview(form, pEditor, dialog);
  pSplitter->addWidget(pPreview);
  pSplitter->setSizes({1, 2});
  pSplitter->setStretchFactor(0, 1);
  pSplitter->setStretchFactor(1, 2);
  QCheckBox* const pShowPreview = MakePreviewBox();
  auto* const pRow = new QHBoxLayout;
  pRow->addWidget(pSplitter, 1);
  pRow->addWidget(b.Widget("frameButtons"));
  pAll->addLayout(pRow, 1);
  pAll->addWidget(pShowPreview);
  pAll->addWidget(b.Widget("StatusBar1", 1));
  b.onState = [&form, pEditor, pPreview] { ShowState(form, pEditor, pPreview); };
  Place(form, PreviewHeight(pShowPreview), dialog);
  QObject::connect(pShowPreview, &QCheckBox::toggled, &dialog, [&dialog, pPreview](bool bShown) {
    pPreview->setVisible(bShown);
    dialog.resize(dialog.width(), dialog.height() + (bShown ? kPreviewHeight : -kPreviewHeight));
  });
  QObject::connect(&dialog, &QDialog::finished, &dialog,
                   [&form, &dialog, pShowPreview] { KeepPlace(dialog, PreviewHeight(pShowPreview), form); });
}

}  // namespace quillon
