#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "clsConversionOptions.h"
#include "clsHost.h"
#include "modFileOutcome.h"

namespace quillon {

/// Who shows the log while it grows. Called after each change.
class clsRunLogView {
 public:
  virtual ~clsRunLogView() = default;
  /// The log is this text now, nothing else.
  virtual void LogReplaced(std::string_view sText) = 0;
  /// These bytes (a line end in front where the log wasn't empty) came to the log's end; show its last line.
  virtual void LogAppended(std::string_view sBytes) = 0;
};

/// The run log: one text of lines, with the counts of its warnings and errors. It holds one run, from its time stamp
/// on, and reaches the disk only at the end of an unattended run. Appending costs what the new text costs.
class clsRunLog {
 public:
  /// The pending entry stands in the options (sErr1, sErr2, sErr3, lErr). Both must outlive the log.
  clsRunLog(clsHost& host, clsConversionOptions& options) : host_(host), options_(options) {}
  clsRunLog(const clsRunLog&) = delete;
  clsRunLog& operator=(const clsRunLog&) = delete;

  void SetView(clsRunLogView* pView) { pView_ = pView; }
  const std::string& txtLog() const { return sText_; }
  /// The first entry of the run that is an error, if there is one.
  const std::optional<ReportEntry>& FirstError() const { return firstError_; }

  /// Makes the entry the pending one and reports it: what a host does with clsHost::Report. False if it was one of the
  /// two codes that are reported once a run, and had been.
  bool Report(const ReportEntry& entry);
  /// Reports the pending entry: counts it, shows a message box where one is due, appends its lines and empties its
  /// texts.
  bool LogAddEntry(EntryType type, bool bShowMessageBox);
  /// Appends a text, each "%lf%" in it a line end.
  void LogAddEntryHelper(std::string_view sAddString);
  /// The same; in a verbose unattended run a message box too.
  void LogAddText(std::string_view sAddString);
  /// From here on each entry that is logged becomes a reason in this outcome, too; null: no longer.
  void TellOutcome(FileOutcome* pOutcome) { pOutcome_ = pOutcome; }
  /// What is reported once a run is reported again when it comes again.
  void ForgetWhatIsSaidOnce() { bToldOfEqualSign_ = bToldOfCells_ = false; }
  /// Empties the log and the pending entry; a run's log begins with a time stamp.
  void LogClear(bool bAddTimeStamp);

  int32_t lWarningCount = 0;
  int32_t lErrorCount = 0;

 private:
  bool AlreadyReported();
  void ShowEntry();

  clsHost& host_;
  clsConversionOptions& options_;
  clsRunLogView* pView_ = nullptr;
  FileOutcome* pOutcome_ = nullptr;
  std::string sText_;
  std::optional<ReportEntry> firstError_;
  bool bToldOfEqualSign_ = false;
  bool bToldOfCells_ = false;
};

/// True unless an ordinary file is there that holds anything but the log of an earlier run: then another use of its
/// name was meant.
bool MayBecomeLog(std::string_view sPath);

/// "Quillon Log [date time]" in the locale's short forms.
std::string LogTimeStamp(std::time_t moment);

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kLogIndent = "    ";

}  // namespace quillon
