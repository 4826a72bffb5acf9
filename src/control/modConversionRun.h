#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "clsConversionOptions.h"
#include "clsHost.h"
#include "modEventLoop.h"
#include "modFailure.h"
#include "modRecipeGlobals.h"
#include "modRunLog.h"
#include "modRunMessages.h"

namespace quillon {

/// Fields of the main form that a run works with. They live here because a run needs no window.
struct clsRunFields {
  int64_t lTotalTimeStart = 0;  ///< Tick of the run's start
  bool bWarnedAboutTabsInFile =
      false;  ///< From the settings: the tab warning comes once in the life of an installation
  bool bTrimInputTextFilesPadCharacter = true;  ///< What the Profile method looks at
};

struct BatchOutput;

/// What only a window does for a run. All of it is called in a run with windows alone.
class clsRunWindow {
 public:
  virtual ~clsRunWindow() = default;
  virtual void GetOptionsFromGUI() = 0;
  virtual void UpdateFileControls() = 0;
  /// The focus goes to cmdEditOutput, then to cmdExploreOutputFolder, each if it is visible.
  virtual void FocusOutputButtons() = 0;
  virtual void DisableGUIForRunning() = 0;
  virtual void EnableGUIForRunning() = 0;
  virtual void UpdateMRUs() = 0;
  /// The busy pointer while files are searched.
  virtual void SetBusyPointer(bool bBusy) = 0;
  virtual const std::string& Caption() const = 0;
};

/// One file of a list that was made beforehand.
struct PlannedFile {
  std::string sInput, sOutput;
  int64_t lBytes = -1;  ///< Of the input, when the list was made; -1 if it could not be looked at
};

/// Other processes that convert the files of a list.
class clsOtherConverters {
 public:
  virtual ~clsOtherConverters() = default;
  /// Waits until the file (from 0) is converted. False: the run was interrupted before it was.
  virtual bool Wait(size_t nFile) = 0;
  /// Says of the file waited for last what its conversion said, which adds to the reasons of its outcome.
  virtual void Tell(FileOutcome& outcome) = 0;
};

/// What the long-option commands ask of a run beyond the job record.
struct RunExtras {
  bool bTouchSettings = true;      ///< The tab warning is stored there
  std::function<void()> tabsTold;  ///< Where it isn't: it was given
  bool bSheetTarget = false;       ///< The job's sheet is the one that is written
  bool bSayMore = false;           ///< Entries get third lines that a slash run's log doesn't have
  /// How recipes are read, if not as reports; null: each by its content.
  std::optional<const clsCodePage*> recipePage;
  /// Folders that a wildcard could not be searched in: the first and why.
  std::function<void(const std::string& sText)> notSearched;
  std::function<void()> jobAccepted;  ///< The checks are passed, nothing is converted yet
  std::function<void(size_t nFile, size_t nFiles, const std::string& sInput)> fileBegins;  ///< From 1
  /// Hands an output that was written on to where it is wanted. A failure makes the file a failed one.
  std::function<Failure(const FileOutcome&)> handOn;
  /// Takes the outcome of a file. Where it is set all reasons are said by who takes them, and a job or recipe that
  /// can't be gone on with fails its file alone.
  std::function<void(const FileOutcome&)> fileDone;
  /// Where it is set the files of a list are converted there, and only told here, in the order of the list.
  clsOtherConverters* pOthers = nullptr;
};

/// One run after another over the files of a job. The collaborators outlive it; pWindow is null in an unattended run.
/// A failure in one file is logged and counted, and the batch goes on. What nobody handles is thrown as
/// UnhandledFailure.
class clsConversionRun {
 public:
  clsConversionRun(clsHost& host, clsConversionOptions& options, clsRunLog& log, clsRunFields& fields,
                   clsRunWindow* pWindow, RunExtras extras = {});

  /// One whole run. lResult 0: the job was accepted and the last file gave no error code.
  void Go(int32_t& lResult);
  /// 0 or the code of the first rule that the job breaks, which is logged. Loads the job file of an unattended run.
  void ValidateOptions(int32_t& lResult);
  /// The code of the last file converted, or -1001.
  void BeginProcessing(int32_t& lResult);
  /// The files of a list, each to its own output whose folder is made, with the log and closing report of a batch.
  void ConvertList(const std::vector<PlannedFile>& files, int32_t& lResult);
  /// One of them by itself.
  const FileOutcome& ConvertPlanned(const PlannedFile& file);
  /// One input file to one output file by the method of the record; names as they stand in sInputFile and sOutputFile.
  /// An output that is the input file itself is refused with -1002 before anything is touched; a file that asks for
  /// more memory than there is ends with -1003, its output as it was. The outcome stands until the next file begins.
  const FileOutcome& ConvertFile();
  void ConvertByProfile(int32_t& lResult);
  void ConvertByRecipe(int32_t& lResult);
  /// The long-form recipe in sRecipeFile; sOutputFile overrules its output, and the inputs (at most twelve) take its
  /// file slots in order from the first. A report of the period that isn't there is -2002, and the output stays as it
  /// was.
  const FileOutcome& ConvertByLongRecipe(std::string_view sOutputFile, const std::vector<std::string>& inputs);
  void WarnAboutTabsInFile();

  /// The user stopped the run that was reported last.
  bool WasStopped() const { return bStopped_; }

 private:
  void LogLine(std::string_view sText);
  std::string ElapsedSeconds() const;

  int32_t RefuseUnread();
  int32_t Refuse(RunCode code, std::string_view sSubject = {});
  int32_t RefuseAndExplain(RunCode code, std::string_view sSubject, std::string sWhy);
  int32_t LoadJobFile();
  bool LogIsFileOfRun() const;
  int32_t MakeLogFolder();
  int32_t CheckInputAndOutput();
  int32_t CheckOutputType();
  int32_t CheckPeriodReports(const clsRecipe& recipe);
  void NameLongRun(clsRecipe& recipe, std::string_view sOutputFile, const std::vector<std::string>& inputs);

  void ConvertByMethod(int32_t& lResult);
  void RunLongRecipe(std::string_view sOutputFile, const std::vector<std::string>& inputs, int32_t& lResult);
  const FileOutcome& Convert(const std::function<void(int32_t& lResult)>& convert);
  /// Adds the reasons that stand in no entry, and the status.
  void CloseOutcome();
  void SayWhatNoLogTells();
  void AddUntold();
  void RunSpecs(RecipeContext& context, int32_t lFormat);
  clsEventLoop TakeEventLoop();
  void TellList(const std::vector<PlannedFile>& files, int32_t& lResult);
  void NameFile(const PlannedFile& file);
  bool NextFileMayBegin(size_t nFile, size_t nFiles, const std::string& sInput);
  void ConvertSingle(int32_t& lResult);
  void ConvertBatch(int32_t& lResult);
  bool ListFiles(std::vector<std::string>& clnFiles);
  /// Output of the file in hand; its folder is made unless it is sFolderMade, which it then is.
  void NameOutput(const BatchOutput& output, std::string& sFolderMade);
  void WarnOfSecondOutput();
  void ReportRun();

  /// 0 or the code of what is wrong with the profile.
  int32_t AssignProfile();
  int32_t ReportEngineStatus(int32_t lStatus, int32_t lQuotesResult);
  void TakeEngineAccount(int32_t lStatus, const CharacterLoss& loss);
  void SayWhatWasReplaced();
  bool RecipeRunCanStart(int32_t& lResult);
  /// 0 or the code of what keeps the recipe from being run.
  int32_t LoadSpecs(RecipeContext& context);
  void WarnIfTabsInFile(const RecipeContext& context);
  WorkbookOptions MakeWorkbookOptions() const;
  RecipeOptions MakeRecipeOptions() const;

  clsHost& host_;
  clsConversionOptions& options_;
  clsRunLog& log_;
  clsRunFields& fields_;
  clsRunWindow* pWindow_;
  RunExtras extras_;
  std::unordered_set<size_t> batchInputs_;  ///< Hashes of their path texts, in upper case
  FileOutcome outcome_;                     ///< Of the file in hand, or the last one
  std::string sFolderMade_;                 ///< Folder of the last output of a list
  bool bFilesLeft_ = false;                 ///< A pause ended the run between two files
  bool bStopped_ = false;
};

/// No part of the input's folder can be mirrored below the output's.
class OutputFolderTooLong : public UnhandledFailure {
 public:
  using UnhandledFailure::UnhandledFailure;
};

/// Names the output of one file of a batch: prefix of the output pattern, the mirrored part of the input's folder, base
/// name and extension. The mirrored part goes by the lengths of the two folders alone; an output folder longer than the
/// input's throws OutputFolderTooLong.
struct BatchOutput {
  explicit BatchOutput(std::string_view sOutputPattern);
  /// Folder and prefix in front of the base name.
  std::string TargetFor(std::string_view sInputFolder) const;

  std::string sOutputPrefix;     ///< The pattern up to its first "*"
  std::string sOutputFolder;     ///< Its parent folder and a separator
  std::string sOutputExtension;  ///< What stands between "*" and the extension is dropped
};

}  // namespace quillon
