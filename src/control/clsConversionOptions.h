#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clsCodePage.h"

namespace quillon {

enum ConversionMethod : int32_t { kMethodProfile = 0, kMethodRecipe = 1, kMethodMarkup = 2 };

/// The record of one conversion job. Parser, long options, job file and window fill it; the run reads it and changes
/// it: tokens in its paths are expanded in place, and a run over many files puts each file's names into it. It also
/// carries the pending log entry from the place that finds an error to the log.
class clsConversionOptions {
 public:
  std::string sInputFile;   ///< With "*" or "?": a wildcard over many files; during their run the file in hand
  std::string sOutputFile;  ///< The extension decides the format; with many inputs it holds a "*"
  std::string sRecipeFile;
  int32_t lConversionMethod = kMethodMarkup;
  bool bDoSubfolders = false;
  bool bSaveInOriginalFolder = false;  ///< Each output lands beside its input
  std::string sLogFile;                ///< Receives the log of an unattended run; empty: none
  bool bVerbose = false;               ///< Unattended runs show message boxes
  bool bClearOutputFileBeforeProcessing = true;
  std::string sSheetTarget = "1";  ///< By name or number, "1" is unsaid; slash runs and the window keep it unread
  std::string sCLBatchJobFile;
  int32_t lDelimitationCharacter = 44;
  bool bOpenConversionJobOnly = false;  ///< The job is to be opened in the window, not run
  int32_t lTabSize = 8;
  bool bUnix = false;
  /// Of the reports: a name, one of EBCDIC too, or "auto"; empty: that of the recipe, else that of the settings (of the
  /// long options: "auto").
  std::string sCodePage;
  bool bReplaceWorkbook = false;    ///< A new workbook takes the place of one that is there
  bool bNoOverwrite = false;        ///< A sheet that holds something is left as it is, and the file fails
  bool bBackup = false;             ///< A workbook that is there stays as NAME~, too
  std::string sDateOrder;           ///< Of dates such as 1/2/24: mdy, dmy, ymd; "" is by column, then locale
  std::string sStartColRow = "A1";  ///< Profile method
  bool bTreatDataAsText = false;    ///< Profile method
  int32_t lUseDoubleQuotes = 1;     ///< Profile method: 0 never, 1 sometimes, 2 always
  bool bIsUnicode = false;          ///< Profile method
  std::string sFixedWidthProfile = "Default-Profile";
  bool bTrimInputTextFilesPadCharacter = true;  ///< Profile method
  bool bTrimFields = false;                     ///< Of recipes and marks: blanks around fields go
  // Of the long options alone; no job file keeps them.
  bool bSafeCsv = false;     ///< Cells that a spreadsheet would run are made harmless
  bool bKeep = false;        ///< What there is of a file that fails is written; else its old output stays
  bool bAllPeriods = false;  ///< Rows of every period's file, not of slot 1 alone
  bool bStrict = false;      ///< What is lost or doesn't agree makes a file a failed one
  int32_t lJobs = 0;         ///< Processes that share a batch; 0: as many as help
  // How reports lie in their files. A job file keeps those that say something.
  std::string sRecords = "auto";      ///< Where records end: lines, fixed, rdw, blocks
  int32_t lRecordLength = 0;          ///< Of fixed records; 0 is unsaid
  std::string sCarriageControl;       ///< First column: none, asa, machine, auto; "" is auto in EBCDIC, else none
  std::string sPrinterCodes = "off";  ///< Backspaces and escape sequences: off, on, auto
  std::string sPages;                 ///< Of a PDF, "2-5"
  int32_t lCommandLineExitCode = 0;   ///< Declared; nothing reads or writes it
  std::string sErr1, sErr2, sErr3;    ///< The pending log entry
  int32_t lErr = 0;                   ///< Its code; stays until the log is cleared
  std::string sReadMe, sReadMe2;      ///< Job notes of a run with windows
  std::string sReadMeCommandLine;     ///< Job note of an unattended run

  /// Reads the job file key by key. A missing file and missing keys give the file's defaults, two of which differ from
  /// those of a new record: lConversionMethod 0 and bClearOutputFileBeforeProcessing False. A decimal key that is no
  /// whole number of 32 bits throws UnhandledFailure.
  void OpenConversionJob(std::string_view sFile);
  /// Updates the job file in place: other keys stay, paths keep their tokens, bShowStatusMessages is always FALSE.
  /// False if it can't be written.
  bool SaveConversionJob(std::string_view sFile) const;
};

/// The current job, one for the whole process.
extern clsConversionOptions gConversionOptions;

/// Puts gConversionOptions back to a new record.
void ResetConversionOptions();

/// True if a job file's section has this key (case aside), be it a key of the record or a note.
bool IsJobKey(std::string_view sKey);

/// The page of job files, as clsIniFile takes it: that of the settings, but for windows-1252 the file's own bytes
/// decide, as people write jobs in editors that know UTF-8 alone.
const clsCodePage* JobCodePage();

constexpr std::string_view kJobSection = "QLN";

}  // namespace quillon
