#pragma once
// The world around the program, as the core asks for it.

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

namespace quillon {

enum class MessageIcon { None, Information, Warning, Question, Critical };
/// YesNo stands at Yes, NoYes at No: at the answer that loses nothing.
enum class MessageButtons { Ok, YesNo, NoYes };
enum class MessageAnswer { Ok, Yes, No };

/// Kind of a run-log entry. Other is logged and counted nowhere.
enum class EntryType { Warning = 1, Error = 2, Other = 3 };

/// One entry for the run log: its code (negative) and up to three lines, already translated.
struct ReportEntry {
  int32_t lErr = 0;
  std::string sErr1;  ///< Word, code and at times a headline: "Error [-5604]"
  std::string sErr2;  ///< The message
  std::string sErr3;  ///< Optional third line
  EntryType type = EntryType::Error;
  bool bShowMessageBox = true;  ///< Wanted in a run with windows; an unattended run goes by bVerbose alone
  std::string sCause = {};      ///< The system's failure that it tells of, "path: reason", if it is one
};

enum class StatusBar { Main, CurrentFile };
enum class OpenVerb { Open, Explore, Edit };

/// How far a conversion has come; total 0 means that it isn't known.
struct RunProgress {
  std::string_view sFile;
  int64_t lRow = 0;  ///< Row of the input in hand, from 1
  int64_t lBytesDone = 0;
  int64_t lBytesTotal = 0;
};

/// All that the core asks of a screen, a clock or the desktop. The command line, the desktop program and the tests each
/// implement it whole; there are no default answers that could be forgotten.
class clsHost {
 public:
  clsHost() = default;
  clsHost(const clsHost&) = delete;
  clsHost& operator=(const clsHost&) = delete;
  virtual ~clsHost() = default;

  /// Shows a text and waits for the answer. Unattended: one line on standard error; a Yes/No question answers Yes.
  virtual MessageAnswer ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                                    MessageButtons buttons) = 0;
  /// Puts an entry into the run log, which counts it and decides about a message box.
  virtual void Report(const ReportEntry& entry) = 0;
  /// Runs pending events. The only way in which a pause or the closing of the window reaches a run.
  virtual void LetEventsRun() = 0;

  virtual std::string Caption() const = 0;
  virtual void SetCaption(std::string_view sText) = 0;
  /// Panels count from 1.
  virtual void SetStatusPanel(StatusBar bar, int nPanel, std::string_view sText) = 0;
  virtual void ShowProgress(const RunProgress& progress) = 0;

  virtual void Wait(int nMilliseconds) = 0;
  /// Hands a host path or an address to the desktop; False if that failed.
  virtual bool OpenPath(std::string_view sPath, OpenVerb verb) = 0;

  virtual std::time_t Now() = 0;
  virtual int64_t TickMilliseconds() = 0;
};

}  // namespace quillon
