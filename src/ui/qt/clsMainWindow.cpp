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
#include <utility>

#include "modFiles.h"
#include "modPaths.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int kTitleBar = 36;          ///< Pixels that the frame around a window may take
constexpr int kOpenScreenMargin = 40;  ///< Pixels of a window that must be on a screen for it to be reached

}  // namespace

clsMainWindow::~clsMainWindow() {
  log_.SetView(nullptr);
}

void clsMainWindow::ApplyPlacement() {
  const WindowPlacement& p = frame_.placement;
  QRect place(static_cast<int>(p.Left / kTwipsPerPixel), static_cast<int>(p.Top / kTwipsPerPixel),
              static_cast<int>(p.Width / kTwipsPerPixel), static_cast<int>(p.Height / kTwipsPerPixel));
  const auto room = [](const QScreen* pScreen) { return pScreen->availableGeometry().adjusted(0, 0, 0, -kTitleBar); };
  bool bReachable = false;
  QRect screen = room(QApplication::primaryScreen());
  for (const QScreen* const pScreen : QApplication::screens()) {
    const QRect shared = room(pScreen).intersected(place);
    if (shared.width() <= kOpenScreenMargin || shared.height() <= kOpenScreenMargin) continue;
    screen = room(pScreen);
    bReachable = true;
  }
  if (!bReachable) place.moveTopLeft(screen.topLeft());
  place.setSize(place.size().boundedTo(screen.size()));
  // Below the screen's edge nobody would see what is going on.
  if (place.bottom() > screen.bottom()) place.moveBottom(screen.bottom());
  if (place.right() > screen.right()) place.moveRight(screen.right());
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
  if (pEvent->type() == QEvent::PaletteChange && pLogColours_ != nullptr) {
    MakeIcons();
    pLogColours_->rehighlight();
  }
}

// A run goes on below this event on the stack, so the window stays until the run has stopped.
void clsMainWindow::closeEvent(QCloseEvent* pEvent) {
  if (form_.IsRunning()) {
    host_.bClosing = true;
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
  QTimer::singleShot(kLookAgain, this, [this] {
    if (form_.IsRunning()) return CloseWhenIdle();
    // From here on boxes are shown again: a changed job is asked about.
    host_.bClosing = false;
    close();
  });
}

void clsMainWindow::dragEnterEvent(QDragEnterEvent* pEvent) {
  if (pEvent->mimeData()->hasUrls() && !form_.IsRunning()) pEvent->acceptProposedAction();
}

void clsMainWindow::dropEvent(QDropEvent* pEvent) {
  if (pEvent->mimeData()->urls().isEmpty()) return;
  const QString sPath = pEvent->mimeData()->urls().first().toLocalFile();
  if (!sPath.isEmpty()) TakeFile(sPath);
}

void clsMainWindow::TakeFile(const QString& sPath) {
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

/// A double click on a line of the log that names a file or folder opens it.
bool clsMainWindow::eventFilter(QObject* pWatched, QEvent* pEvent) {
  if (pEvent->type() == QEvent::MouseButtonDblClick && pWatched == pLog_->viewport()) {
    const QTextCursor cursor = pLog_->cursorForPosition(static_cast<QMouseEvent*>(pEvent)->pos());
    const QString sLine = cursor.block().text();
    // Whole, or behind a word with a colon; a drive has one too.
    for (const QString& sPart : {sLine, sLine.section(':', 1), sLine.section(':', -1)}) {
      const std::string sPath = FromQt(sPart.trimmed());
      const bool bPath = sPath.find_first_of("/\\") != std::string::npos;
      if (!bPath || !PathExists(ExpandedPath(sPath))) continue;
      form_.LaunchFile(sPath);
      return true;
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

/// A run shows a bar that only moves until its first rows tell how far they are.
void clsMainWindow::ShowBusy() {
  if (!form_.IsRunning() || pProgress_->isVisible()) return;
  pProgress_->setRange(0, 0);
  pProgress_->setVisible(true);
}

/// Of several files each counts the same: their sizes aren't known before they are opened.
void clsMainWindow::ShowRunProgress(const RunProgress& progress) {
  if (progress.lBytesTotal <= 0) return;
  const double part = static_cast<double>(progress.lBytesDone) / static_cast<double>(progress.lBytesTotal);
  const double files = std::max<double>(1, static_cast<double>(form_.Files()));
  const double share = (std::max<double>(1, static_cast<double>(form_.FileInHand())) - 1 + part) / files;
  if (!runTime_.isValid()) {
    runTime_.start();
    startShare_ = share;
  }
  progress_ = {share, progress.lRow};
}

void clsMainWindow::PaintProgress() {
  ShowBusy();
  for (const auto& [place, sText] : std::exchange(panelTexts_, {})) {
    const bool bTime = place == std::pair(0, 6) && !sText.isEmpty();
    panels_[place]->setText(bTime ? sText + " s" : sText);
  }
  if (!progress_ || !form_.IsRunning()) return;
  constexpr int kParts = 1000;
  pProgress_->setRange(0, kParts);
  pProgress_->setValue(static_cast<int>(progress_->share * kParts));
  QString sText = ToQt(Translate("Row:")) + " " + QString::number(progress_->lRow);
  constexpr double kEnoughToGuess = 0.02;
  constexpr int kMinute = 60;
  const double done = progress_->share - startShare_;
  if (done > kEnoughToGuess) {
    const double seconds = static_cast<double>(runTime_.elapsed()) / 1000 * (1 - progress_->share) / done;
    const auto left = static_cast<qint64>(std::ceil(seconds));
    sText += "   " + ToQt(Translate("Time left:")) +
             QStringLiteral(" %1:%2").arg(left / kMinute).arg(left % kMinute, 2, 10, QLatin1Char('0'));
  }
  pProgress_->setFormat(sText);
}

/// Back to idle.
void clsMainWindow::HideProgress() {
  pProgress_->setVisible(false);
  progress_.reset();
  runTime_.invalidate();
}

}  // namespace quillon
