#pragma once
// What one run of the recipe engine works with.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "clsHost.h"
#include "clsOutputFile.h"
#include "clsReport.h"
#include "clsWorkbook.h"
#include "modEventLoop.h"
#include "modFileOutcome.h"
#include "modPaths.h"
#include "modReportChange.h"

namespace quillon {

class clsRecipe;
class clsLineProcessor;
class clsWorkbook;

// The values that are one for the whole process.
extern std::string gsInputFile;  ///< Names of the file in hand
extern std::string gsOutputFile;
extern std::string gsRecipeFile;
extern int32_t glTabSize;      ///< Tab size in force; below 1: tabs stay
extern bool gbPauseRequested;  ///< Set by the pause command and by the closing of the window
extern bool gbPauseConfirmed;  ///< The user said that the run is to end
extern bool gbProcessing;      ///< True while sections run
clsRecipe& gRecipe();          ///< The one recipe
clsLineProcessor& gLineProcessor();

/// Puts the values above and gbAbandonOutput back to their start values.
void ResetRecipeGlobals();

/// Answers a pause that was requested: asks once whether the process is to be terminated. No takes the request back.
bool PauseEndsRun(clsHost& host);

/// What a job says to the engine.
struct RecipeOptions {
  TextFileOptions text;  ///< How reports are read
  /// How recipes are read and section files written; null: found by content, written as windows-1252.
  const clsCodePage* pRecipePage = &clsCodePage::Windows1252();
  int32_t lDelimitationCharacter = 44;
  bool bClearOutputFileBeforeProcessing = true;
  bool bTrimFields = false;     ///< Long options only: blanks around fields go
  bool bSafeCsv = false;        ///< Long options only: cells that a spreadsheet would run are made harmless
  bool bAllPeriods = false;     ///< Long options only: rows of every period's file, not of slot 1 alone
  WorkbookOptions workbook;     ///< Which sheet of a workbook, and what becomes of one that is there
  bool bStrict = false;         ///< What is lost or doesn't agree makes the file a failed one,
  bool bKeep = false;           ///< whose output is written all the same
  bool bSayMore = false;        ///< Entries get third lines that a slash run's log doesn't have
  int64_t lTotalTimeStart = 0;  ///< Tick of the run's start
  std::string sFormCaption;     ///< Of the main form, in a run with windows

  /// A third line where it may be said, else "".
  std::string More(std::string sText) const { return bSayMore ? std::move(sText) : std::string(); }
  /// How recipes and specifications of the user are read.
  TextFileOptions RecipeText() const { return {text.bUnix, pRecipePage}; }
  /// How section files are written, and those of our own making read back: never by a guess.
  TextFileOptions OwnText() const {
    return {text.bUnix, pRecipePage != nullptr ? pRecipePage : &clsCodePage::Windows1252()};
  }
};

/// The reports that a run reads, each opened once.
class clsReports {
 public:
  /// The report of that path; how it is read counts for the first call. Reports that are read side by side have slots
  /// of their own.
  clsReport& Of(const std::string& sPath, const TextFileOptions& options, int32_t lSlot = 0);
  /// How many times a report was asked for.
  int64_t Asked() const { return lAsked_; }
  void Close() { reports_.clear(); }

 private:
  std::map<std::pair<int32_t, std::string>, clsReport> reports_;
  int64_t lAsked_ = 0;
};

/// The collaborators of one run, handed to every section. Objects are owned by the caller and outlive the run.
struct RecipeContext {
  clsHost& host;
  const RecipeOptions& options;
  clsRecipe& recipe;
  clsLineProcessor& lineProcessor;
  FileAccount& account;
  /// Asked when the sections are done: True gives up what was written, and the old output stays.
  std::function<bool()> givesUp = {};
  clsWorkbook* pWorkbook = nullptr;  ///< Null in a CSV run
  /// Files beside the CSV report, for tables that have a sheet of their own; they are kept or given up with it.
  std::vector<std::unique_ptr<clsOutputFile>> furtherFiles = {};
  /// The reports with their states from before anything of them was read.
  std::vector<std::pair<std::string, FileState>> reports = {};
  std::shared_ptr<clsReports> pReports = std::make_shared<clsReports>();

  clsReport& Report(const std::string& sPath, int32_t lSlot = 0) const {
    return pReports->Of(sPath, options.text, lSlot);
  }
  void Watch(const std::string& sReport) { reports.emplace_back(sReport, FileState::Of(HostPath(sReport))); }
};

}  // namespace quillon
