#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "clsConsoleHost.h"
#include "clsPrivateFolder.h"
#include "modConversionRun.h"
#include "modLongOptions.h"
#include "modRunLog.h"

namespace quillon {

/// What became of all lines of a run.
struct RunTotals {
  int64_t lFilesConverted = 0, lFilesFailed = 0;
  int64_t lFilesSkipped = 0;  ///< Done by an earlier run
  int64_t lTables = 0;
  int64_t lLinesRead = 0, lLinesInTables = 0;
  ReportProof proof;  ///< Lines by kind and totals, of reports that have such an account; loss of all
  int64_t lCellsFailed = 0;
  int64_t lCharactersLost = 0, lFormulasRefused = 0;

  void Add(const FileOutcome& outcome);
};

/// The run of a long-option command: messages on standard error, every line accounted for, the settings left alone.
class clsLongRun {
 public:
  /// Sets the process up for the run.
  explicit clsLongRun(const TalkRequest& talk);
  ~clsLongRun();
  clsLongRun(const clsLongRun&) = delete;
  clsLongRun& operator=(const clsLongRun&) = delete;

  clsConsoleHost host;
  clsRunLog log;
  clsRunFields fields;
  clsPrivateFolder privateFolder;
  RunTotals totals;
  /// What was found out about a report that was just converted.
  std::function<std::vector<std::string>(const std::string& sInput)> reportNotes;

  /// Extras that report each file to this object.
  RunExtras Extras();
  /// "quillon: text" on standard error, and the text in the log.
  void Say(std::string_view sText);
  /// Something that is no failure; a quiet run has it in the log alone.
  void Note(std::string_view sText);
  /// Notes that an option has no effect; nothing for an empty reason.
  void NoteIgnored(std::string_view sName, std::string_view sWhy);

  /// A path for a person: the files that stand in for the standard streams by their names.
  std::string Shown(const std::string& sPath);
  /// The same for a terminal or a log.
  std::string Printed(const std::string& sPath);

  /// A reason that no entry tells, as it is said.
  std::string Said(const FileReason& reason);
  /// A file that an earlier run did.
  void Skip(const PlannedFile& file);

  /// False, told, if the log's name is that of a file that is no log; no log is written then.
  bool CheckLog();
  /// Something failed that is no file's conversion: the run can't end with 0.
  void FailBeside() { bFailedBeside_ = true; }

  /// The command's own work. What a job or recipe holds that can't be gone on with ends it with 1, a fault of the
  /// program with 70; either is said and logged.
  int Guarded(const std::function<int()>& body);
  /// Says the closing line, writes the log file and gives the exit status.
  int Finish();
  /// The same for a run that was refused before it began.
  int Refused();

 private:
  void FileDone(const FileOutcome& outcome);
  void SayAccount(const FileOutcome& outcome);
  std::string ClosingLine();
  void WriteLog();
  void TakeUpTabHint();
  void TabsTold();

  TalkRequest talk_;
  std::string sTabsTold_;  ///< The file that keeps that the hint at tabs was given; "" if there is no place for one
  bool bFailedBeside_ = false;
  int64_t lStart_ = 0;
};

}  // namespace quillon
