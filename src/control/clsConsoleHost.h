#pragma once

#include <chrono>
#include <cstdio>
#include <set>
#include <string>
#include <string_view>

#include "clsHost.h"
#include "modRunLog.h"

namespace quillon {

/// The host of a run at a terminal or in a script. A message box is one line on standard error, a Yes/No question
/// answers Yes; captions and panels are kept and shown nowhere. Log entries go to the attached log; a talking host also
/// prints each entry's lines on standard error.
class clsConsoleHost : public clsHost {
 public:
  /// What is printed of log entries.
  enum class Voice {
    Mute,  ///< Nothing but what can't be told by the output file: -5006
    ErrorsOnly,
    AllEntries,
  };

  explicit clsConsoleHost(Voice voice) : voice_(voice) {}
  void AttachLog(clsRunLog& log) { pLog_ = &log; }
  /// From now on the hint at tabs is logged and printed no more.
  void PrintNoTabHint() { bTabHint_ = false; }

  /// Prints a line on standard error, behind the progress line if there is one.
  void Say(std::string_view sText);

  /// A progress line with rate and time left. Shown only if standard error is a terminal.
  void StartProgress();
  void StopProgress();
  /// The run is at file nFile (from 1) of nFiles; entries name it if there are several.
  void SetFilePlace(size_t nFile, size_t nFiles, std::string sFile);

  MessageAnswer ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                            MessageButtons buttons) override;
  void Report(const ReportEntry& entry) override;
  void LetEventsRun() override;
  std::string Caption() const override { return sCaption_; }
  void SetCaption(std::string_view sText) override { sCaption_ = sText; }
  void SetStatusPanel(StatusBar bar, int nPanel, std::string_view sText) override;
  void ShowProgress(const RunProgress& progress) override;
  void Wait(int nMilliseconds) override;
  bool OpenPath(std::string_view sPath, OpenVerb verb) override;
  std::time_t Now() override;
  int64_t TickMilliseconds() override;

 private:
  using Clock = std::chrono::steady_clock;
  void EraseProgress();
  void PrintEntry(const ReportEntry& entry);
  bool IsToldOfColumn(const ReportEntry& entry);

  const Voice voice_;
  clsRunLog* pLog_ = nullptr;
  std::string sCaption_, sLastMessage_;
  bool bProgress_ = false;  ///< Wanted, and standard error is a terminal
  bool bProgressShown_ = false;
  bool bTabHint_ = true;
  std::set<std::string> columnsTold_;  ///< What was said of columns of the present file
  size_t nFile_ = 0, nFiles_ = 0;
  std::string sFile_;
  Clock::time_point started_, drawn_;
};

/// A standard stream that the caller closed gets a place of its own, where reading or writing fails as on a closed one:
/// else the next file opened would take its number, and what is said would be written into that file.
void HoldStandardStreams();

/// From here on SIGINT and SIGTERM end the run after the row in hand, with no half-written output. A second signal of
/// the same kind ends the process at once. A reader that goes away (SIGPIPE) and a file that may
/// grow no more (SIGXFSZ) are ordinary failures of writing.
void CatchInterrupts();
/// The signal that came, or 0.
int InterruptSignal();

/// True if colours may be used on standard error: a terminal, and NO_COLOR isn't set.
bool UseColours();

/// One line: line ends become blanks, runs of blanks one.
std::string OneLine(std::string_view sText);

}  // namespace quillon
