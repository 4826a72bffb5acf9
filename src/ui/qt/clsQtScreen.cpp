#include "clsQtScreen.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFontDatabase>
#include <QFontDialog>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "clsFormBinder.h"
#include "modDialogLayouts.h"
#include "modFiles.h"
#include "modPaths.h"

namespace quillon {

namespace {

/// A dialog that asks its form before it closes and hands the form's keys on.
class clsFormDialog : public QDialog {
 public:
  clsFormDialog(clsForm& form, QWidget* pParent) : QDialog(pParent), form_(form) {}

 protected:
  void reject() override { form_.CloseRequested(); }
  void closeEvent(QCloseEvent* pEvent) override {
    if (!form_.IsUnloaded()) form_.CloseRequested();
    form_.IsUnloaded() ? QDialog::closeEvent(pEvent) : pEvent->ignore();
  }
  void keyPressEvent(QKeyEvent* pEvent) override {
    const std::string sKey = pEvent->key() == Qt::Key_Escape ? "Escape" : pEvent->key() == Qt::Key_F1 ? "F1" : "";
    if (!sKey.empty() && form_.KeyPressed(sKey)) return;
    const bool bEnter = pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter;
    // The button that has the keyboard, rather than the one that stands out as the dialog's own.
    if (auto* const pButton = qobject_cast<QPushButton*>(focusWidget()); bEnter && pButton != nullptr) {
      return pButton->click();
    }
    // It ended an entry that the user is to see corrected first.
    if (bEnter && form_.EntryReplaced() && qobject_cast<QLineEdit*>(focusWidget()) != nullptr) return;
    QDialog::keyPressEvent(pEvent);
  }
  void keyReleaseEvent(QKeyEvent* pEvent) override {
    form_.KeyReleased(static_cast<int32_t>(pEvent->nativeVirtualKey()));
    QDialog::keyReleaseEvent(pEvent);
  }

 private:
  clsForm& form_;
};

QSize RoomFor(const QDialog& dialog) {
  constexpr int kFrame = 40;
  return dialog.screen()->availableGeometry().size() - QSize(0, kFrame);
}

/// What stands in the dialog scrolls.
void PutIntoScrollArea(QDialog& dialog, int width) {
  auto* const pScroll = new QScrollArea;
  auto* const pContent = new QWidget;
  pContent->setLayout(dialog.layout());
  pScroll->setFrameShape(QFrame::NoFrame);
  pScroll->setFocusPolicy(Qt::NoFocus);
  pScroll->setWidgetResizable(true);
  pScroll->setWidget(pContent);
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->setContentsMargins(0, 0, 0, 0);
  pAll->addWidget(pScroll);
  dialog.setMinimumHeight(0);
  dialog.resize(std::min(width + pScroll->verticalScrollBar()->sizeHint().width(), RoomFor(dialog).width()),
                RoomFor(dialog).height());
}

/// As high as the texts need, or as the screen is.
void FitToTexts(QDialog& dialog) {
  const int width = std::max(dialog.sizeHint().width(), dialog.minimumWidth());
  const int height = dialog.layout()->totalHeightForWidth(width);
  height <= RoomFor(dialog).height() ? dialog.resize(width, height) : PutIntoScrollArea(dialog, width);
}

QString Filters(const FileQuestion& question, QString& sSelected) {
  QStringList all;
  for (const auto& [sLabel, sMasks] : question.filters) {
    // A label may bring its masks in brackets for the eye, behind others; the toolkit wants them there.
    const size_t nMasks = sLabel.rfind("(*");
    all << ToQt((nMasks == std::string::npos ? sLabel + " " : sLabel.substr(0, nMasks)) + "(" + sMasks + ")");
  }
  for (QString& sFilter : all) sFilter.replace("*.*", "*").replace(";", " ");
  const int nFirst = question.lFilterIndex - 1;
  if (nFirst >= 0 && nFirst < static_cast<int>(all.size())) sSelected = all[nFirst];
  return all.join(";;");
}

}  // namespace

void clsQtScreen::ShowModal(clsForm& form) {
  QWidget* const pParent =
      QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget() : pMainWindow_;
  clsFormDialog dialog(form, pParent);
  clsFormBinder binder(form);
  binder.onClose = [&dialog] { dialog.done(0); };
  LayoutDialog(form, binder, dialog, host_);
  binder.onState = [&form, &dialog, draw = std::move(binder.onState)] {
    dialog.setWindowTitle(ToQt(form.sCaption));
    if (draw) draw();
  };
  binder.ShowState();
  if (dialog.property(kFitsItsTexts).toBool()) {
    FitToTexts(dialog);
  } else if (dialog.layout() != nullptr && dialog.layout()->minimumSize().height() > RoomFor(dialog).height()) {
    PutIntoScrollArea(dialog, dialog.width());
  }
  dialog.exec();
  binder.onClose = nullptr;
}

std::shared_ptr<void> clsQtScreen::ShowAlong(clsForm& form) {
  struct Shown {
    Shown(clsForm& shown, QWidget* pParent) : dialog(shown, pParent), binder(shown) {}
    clsFormDialog dialog;
    clsFormBinder binder;
  };
  QWidget* const pModal = QApplication::activeModalWidget();
  auto shown = std::make_shared<Shown>(form, pModal != nullptr ? pModal : pMainWindow_);
  shown->dialog.setObjectName(ToQt(form.sFormName));
  LayoutDialog(form, shown->binder, shown->dialog, host_);
  shown->dialog.setWindowTitle(ToQt(form.sCaption));
  shown->binder.ShowState();
  shown->dialog.setModal(true);
  shown->dialog.show();
  return shown;
}

std::string clsQtScreen::AskFile(FileQuestion& question) {
  QString sSelected;
  const QString sFilters = Filters(question, sSelected);
  QString sStart = ToQt(question.sInitDir);
  if (!question.sFileName.empty()) {
    const bool bPath = HasSeparator(question.sFileName);
    sStart = bPath ? ToQt(HostPath(question.sFileName)) : sStart + "/" + ToQt(question.sFileName);
  }
  QWidget* const pParent =
      QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget() : pMainWindow_;
  const QFileDialog::Options options =
      question.bAsksToReplace ? QFileDialog::Options() : QFileDialog::DontConfirmOverwrite;
  const QString sChosen =
      question.bSave || question.bMayBeNew
          ? QFileDialog::getSaveFileName(pParent, ToQt(question.sTitle), sStart, sFilters, &sSelected, options)
          : QFileDialog::getOpenFileName(pParent, ToQt(question.sTitle), sStart, sFilters, &sSelected);
  const auto nIndex = sFilters.split(";;").indexOf(sSelected);
  question.lFilterIndex = static_cast<int>(nIndex) + 1;
  return FromQt(sChosen);
}

std::string clsQtScreen::AskFolder(std::string_view sTitle, std::string_view sStartFolder) {
  // The path of a file would be offered as the name of a folder.
  const QString sStart = ToQt(HostPath(DeepestExistingFolder(sStartFolder)));
  return FromQt(QFileDialog::getExistingDirectory(pMainWindow_, ToQt(sTitle), sStart));
}

std::string clsQtScreen::AskFont(std::string_view sFontName) {
  bool bChosen = false;
  const QFont start = sFontName.empty() ? QApplication::font() : QFont(ToQt(sFontName));
  const QFont font = QFontDialog::getFont(&bChosen, start, QApplication::activeModalWidget());
  return bChosen ? FromQt(font.family()) : std::string();
}

WindowPlacement clsQtScreen::MainPlacement() {
  WindowPlacement placement;
  if (pMainWindow_ == nullptr) return placement;
  placement.Left = pMainWindow_->x() * kTwipsPerPixel;
  placement.Top = pMainWindow_->y() * kTwipsPerPixel;
  return placement;
}

bool clsQtScreen::FontInstalled(std::string_view sFontName) {
  return QFontDatabase::families().contains(ToQt(sFontName), Qt::CaseInsensitive);
}

}  // namespace quillon
