#pragma once

#include <QElapsedTimer>
#include <functional>

#include "clsHost.h"
#include "modRunLog.h"

namespace quillon {

/// The host of the desktop program. Events of a run are let run some thirty times a second, however fast its rows are,
/// and none inside another.
class clsQtHost : public clsHost {
 public:
  clsQtHost();

  /// The log that entries go to; it must be set before anything is reported.
  void SetLog(clsRunLog* pLog) { pLog_ = pLog; }
  std::function<void(StatusBar, int, std::string_view)> onStatusPanel;
  std::function<void(std::string_view)> onCaption;
  std::function<void(const RunProgress&)> onProgress;
  std::function<void()> beforeEvents;  ///< Called just before the events of a run
  /// The window is closing: the run in hand is given up at its next look at events, and shows no box.
  bool bClosing = false;

  MessageAnswer ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                            MessageButtons buttons) override;
  void Report(const ReportEntry& entry) override;
  void LetEventsRun() override;
  std::string Caption() const override { return sCaption_; }
  void SetCaption(std::string_view sText) override;
  void SetStatusPanel(StatusBar bar, int nPanel, std::string_view sText) override;
  void ShowProgress(const RunProgress& progress) override;
  void Wait(int nMilliseconds) override;
  bool OpenPath(std::string_view sPath, OpenVerb verb) override;
  std::time_t Now() override;
  int64_t TickMilliseconds() override;

 private:
  clsRunLog* pLog_ = nullptr;
  std::string sCaption_;
  QElapsedTimer sinceEvents_;
  bool bInEvents_ = false;
  qint64 lLastAsked_ = 0;                ///< Of sinceEvents_, in nanoseconds
  int nCallsToSkip_ = 0, nSkipped_ = 0;  ///< Calls that come so fast that the clock needn't be asked at each
};

}  // namespace quillon
