#include "clsQtHost.h"

#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <ctime>
#include <iostream>
#include <utility>

#include "clsFormBinder.h"
#include "modRecipeGlobals.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr qint64 kMillisecond = 1'000'000;  // in nanoseconds
constexpr qint64 kBetweenEvents = 30 * kMillisecond;
constexpr qint64 kQuick = kMillisecond / 10;  // from one look at the clock to the next
constexpr int kMostSkipped = 32;

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Information:
      return QMessageBox::Information;
    case MessageIcon::Warning:
      return QMessageBox::Warning;
    case MessageIcon::Question:
      return QMessageBox::Question;
    case MessageIcon::Critical:
      return QMessageBox::Critical;
    default:
      return QMessageBox::NoIcon;
  }
}

}  // namespace

clsQtHost::clsQtHost() {
  sinceEvents_.start();
}

MessageAnswer clsQtHost::ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                                     MessageButtons buttons) {
  // Nobody sits at an unattended run: a box would hold it for ever.
  if (gbCommandLineMode) std::cerr << sTitle << ": " << sText << '\n';
  if (gbCommandLineMode || bClosing) return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Yes;
  QWidget* const pParent =
      QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget() : QApplication::activeWindow();
  QMessageBox box(IconOf(icon), ToQt(sTitle), ToQt(sText).replace("\r\n", "\n"), QMessageBox::NoButton, pParent);
  // Names of files and lines of reports may look like markup.
  box.setTextFormat(Qt::PlainText);
  if (buttons == MessageButtons::Ok) {
    box.addButton(ToQt(Translate("OK")), QMessageBox::AcceptRole);
    box.exec();
    return MessageAnswer::Ok;
  }
  // Of one role, so that Escape means neither: where it closes an editor, a second one must not drop what was typed.
  QPushButton* const pYes = box.addButton(ToQt(Translate("&Yes")), QMessageBox::YesRole);
  QPushButton* const pNo = box.addButton(ToQt(Translate("&No")), QMessageBox::YesRole);
  // Else the first button of the desktop's own order would be the one that Enter presses.
  box.setDefaultButton(buttons == MessageButtons::NoYes ? pNo : pYes);
  box.exec();
  return box.clickedButton() == pYes ? MessageAnswer::Yes : MessageAnswer::No;
}

void clsQtHost::Report(const ReportEntry& entry) {
  if (pLog_ != nullptr) pLog_->Report(entry);
}

// Called for each row, some millions a second: then even the clock costs, and is asked at every 32nd call.
void clsQtHost::LetEventsRun() {
  if (bInEvents_ || ++nSkipped_ < nCallsToSkip_) return;
  const qint64 before = std::exchange(lLastAsked_, sinceEvents_.nsecsElapsed());
  nSkipped_ = 0;
  nCallsToSkip_ = lLastAsked_ - before < kQuick ? kMostSkipped : 0;
  if (lLastAsked_ < kBetweenEvents) return;
  bInEvents_ = true;
  if (beforeEvents) beforeEvents();
  QApplication::processEvents();
  bInEvents_ = false;
  sinceEvents_.restart();
  lLastAsked_ = 0;
  // Again each time, as a section that begins forgets a pause.
  if (bClosing) gbPauseRequested = gbAbandonOutput = true;
}

void clsQtHost::SetCaption(std::string_view sText) {
  sCaption_ = sText;
  if (onCaption) onCaption(sText);
}

void clsQtHost::SetStatusPanel(StatusBar bar, int nPanel, std::string_view sText) {
  if (onStatusPanel) onStatusPanel(bar, nPanel, sText);
}

void clsQtHost::ShowProgress(const RunProgress& progress) {
  if (onProgress) onProgress(progress);
}

void clsQtHost::Wait(int nMilliseconds) {
  QEventLoop loop;
  QTimer::singleShot(nMilliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

bool clsQtHost::OpenPath(std::string_view sPath, OpenVerb) {
  const QString sText = ToQt(sPath);
  const QUrl address = sText.startsWith("file://") ? QUrl(sText) : QUrl::fromLocalFile(sText);
  // The desktop's own opener: it finds the text editor, the browser and the file manager alike. It outlives us.
  auto* const pOpener = new QProcess;
  QObject::connect(pOpener, &QProcess::finished, pOpener, [this, pOpener, sText](int nStatus) {
    constexpr int kNoTool = 3, kToolFailed = 4;
    pOpener->deleteLater();
    if (nStatus != kNoTool && nStatus != kToolFailed) return;
    ShowMessage(Translate("No program of the desktop opens this:") + "\r\n\r\n" + FromQt(sText), Translate("Error"),
                MessageIcon::Warning, MessageButtons::Ok);
  });
  pOpener->setStandardOutputFile(QProcess::nullDevice());
  pOpener->setStandardErrorFile(QProcess::nullDevice());
  pOpener->start("xdg-open", {sText});
  if (pOpener->waitForStarted()) return true;
  pOpener->deleteLater();
  return QDesktopServices::openUrl(address);
}

std::time_t clsQtHost::Now() {
  return std::time(nullptr);
}

int64_t clsQtHost::TickMilliseconds() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

}  // namespace quillon
