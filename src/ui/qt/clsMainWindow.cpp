#include "clsMainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>
#include <QTextBlock>
#include <QTimer>
#include <QUrl>
#include <cmath>

#include "modRecipeGlobals.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr double kTwipsPerPixel = 15;
constexpr int kOpenScreenMargin = 40;  ///< Pixels of a window that must be on a screen for it to be reached

}  // namespace

clsMainWindow::~clsMainWindow() {
  log_.SetView(nullptr);
}

void clsMainWindow::ApplyPlacement() {
  const WindowPlacement& p = frame_.placement;
  QRect place(static_cast<int>(p.Left / kTwipsPerPixel), static_cast<int>(p.Top / kTwipsPerPixel),
              static_cast<int>(p.Width / kTwipsPerPixel), static_cast<int>(p.Height / kTwipsPerPixel));
  bool bReachable = false;
  for (const QScreen* const pScreen : QApplication::screens()) {
    const QRect shared = pScreen->availableGeometry().intersected(place);
    bReachable = bReachable || (shared.width() > kOpenScreenMargin && shared.height() > kOpenScreenMargin);
  }
  const QRect screen = QApplication::primaryScreen()->availableGeometry();
  if (!bReachable) place.moveTopLeft(screen.topLeft());
  place.setSize(place.size().boundedTo(screen.size()));
  // The place is that of the frame around the window, title bar included.
  move(place.topLeft());
  resize(place.size());
  setMinimumSize(QSize(static_cast<int>(frmMainMDI::kMinWidth / kTwipsPerPixel),
                       static_cast<int>(frmMainMDI::kMinHeight / kTwipsPerPixel))
                     .boundedTo(screen.size()));
  if (p.lWindowState == 2) setWindowState(Qt::WindowMaximized);
}

void clsMainWindow::NotePlacement() {
  WindowPlacement& p = frame_.placement;
  p.lWindowState = isMinimized() ? 1 : isMaximized() ? 2 : 0;
  if (p.lWindowState != 0 || !isVisible()) return;
  p.Left = pos().x() * kTwipsPerPixel;
  p.Top = pos().y() * kTwipsPerPixel;
  p.Width = width() * kTwipsPerPixel;
  p.Height = height() * kTwipsPerPixel;
}

void clsMainWindow::resizeEvent(QResizeEvent* pEvent) {
  QMainWindow::resizeEvent(pEvent);
  NotePlacement();
}

void clsMainWindow::moveEvent(QMoveEvent* pEvent) {
  QMainWindow::moveEvent(pEvent);
  NotePlacement();
}

void clsMainWindow::changeEvent(QEvent* pEvent) {
  QMainWindow::changeEvent(pEvent);
  if (pEvent->type() == QEvent::WindowStateChange) NotePlacement();
}

// A run goes on below this event on the stack, so the window stays until the run has stopped.
void clsMainWindow::closeEvent(QCloseEvent* pEvent) {
  if (form_.IsRunning()) {
    host_.bClosing = true;
    gbPauseRequested = true;
    pEvent->ignore();
    CloseWhenIdle();
    return;
  }
  NotePlacement();
  if (!bUnloaded_) {
    bUnloaded_ = true;
    form_.Form_Unload();
    frame_.SaveIniFile(false);
    frame_.NoteFirstStartEnded();
  }
  pEvent->accept();
  QApplication::quit();
}

void clsMainWindow::CloseWhenIdle() {
  constexpr int kLookAgain = 50;
  QTimer::singleShot(kLookAgain, this, [this] { form_.IsRunning() ? CloseWhenIdle() : static_cast<void>(close()); });
}

void clsMainWindow::dragEnterEvent(QDragEnterEvent* pEvent) {
  if (pEvent->mimeData()->hasUrls() && !form_.IsRunning()) pEvent->acceptProposedAction();
}

void clsMainWindow::dropEvent(QDropEvent* pEvent) {
  if (pEvent->mimeData()->urls().isEmpty()) return;
  const QString sPath = pEvent->mimeData()->urls().first().toLocalFile();
  if (sPath.isEmpty()) return;
  if (sPath.endsWith(".qln", Qt::CaseInsensitive)) {
    form_.ConversionJobOpen(FromQt(sPath));
  } else if (sPath.endsWith(".rcp", Qt::CaseInsensitive)) {
    form_.Click("rbConversionMethod", 1);
    form_.TypeText("cbRecipeFile", FromQt(sPath));
  } else {
    form_.TypeText("cbInputFile", FromQt(QFileInfo(sPath).isDir() ? sPath + "/*.TXT" : sPath));
  }
  binder_.ShowState();
}

/// A double click on a line of the log that is a path opens it.
bool clsMainWindow::eventFilter(QObject* pWatched, QEvent* pEvent) {
  if (pEvent->type() == QEvent::MouseButtonDblClick && pWatched == pLog_->viewport()) {
    const QTextCursor cursor = pLog_->cursorForPosition(static_cast<QMouseEvent*>(pEvent)->pos());
    const QString sLine = cursor.block().text().section(':', -1).trimmed();
    const QString sWhole = cursor.block().text().trimmed();
    for (const QString& sPath : {sWhole, sLine}) {
      if (sPath.contains('/') || sPath.contains('\\')) {
        form_.LaunchFile(FromQt(sPath));
        return true;
      }
    }
  }
  return QMainWindow::eventFilter(pWatched, pEvent);
}

void clsMainWindow::LogReplaced(std::string_view sText) {
  pLog_->setPlainText(ToQt(sText).replace("\r\n", "\n"));
}

void clsMainWindow::LogAppended(std::string_view sBytes) {
  QTextCursor cursor(pLog_->document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(ToQt(sBytes).replace("\r\n", "\n"));
  pLog_->moveCursor(QTextCursor::End);
  pLog_->ensureCursorVisible();
}

void clsMainWindow::ShowRunProgress(const RunProgress& progress) {
  if (progress.lBytesTotal <= 0) return;
  constexpr int kParts = 1000;
  if (!pProgress_->isVisible()) runTime_.start();
  pProgress_->setVisible(true);
  pProgress_->setRange(0, kParts);
  const double share = static_cast<double>(progress.lBytesDone) / static_cast<double>(progress.lBytesTotal);
  pProgress_->setValue(static_cast<int>(share * kParts));
  QString sText = ToQt(Translate("Row:")) + " " + QString::number(progress.lRow);
  constexpr double kEnoughToGuess = 0.02;
  if (share > kEnoughToGuess) {
    const double left = static_cast<double>(runTime_.elapsed()) / 1000 * (1 - share) / share;
    sText += "  " + QString::number(std::ceil(left)) + " s";
  }
  pProgress_->setFormat(sText);
}

}  // namespace quillon
