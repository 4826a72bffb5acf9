#include "modConversionRun.h"

#include <new>
#include <unordered_set>

#include "clsCodePageScope.h"
#include "modFileListing.h"
#include "modFiles.h"
#include "modInputChoices.h"
#include "modNumbers.h"
#include "modPacked.h"
#include "modPaths.h"
#include "modReportText.h"
#include "modSettings.h"
#include "modStrings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

// Longer lists log no line per file, which keeps the log of a long batch short.
constexpr size_t kMostFilesLogged = 100;
constexpr int kPanelCurrent = 3;
constexpr int kPanelTime = 6;

std::string FolderAndSeparator(std::string_view sPath) {
  std::string folder = ParentFolderOfPath(sPath);
  if (folder.empty() || BehindLastSeparator(folder) != folder.size()) folder += SeparatorFor(sPath);
  return folder;
}

}  // namespace

clsConversionRun::clsConversionRun(clsHost& host, clsConversionOptions& options, clsRunLog& log, clsRunFields& fields,
                                   clsRunWindow* pWindow, RunExtras extras)
    : host_(host), options_(options), log_(log), fields_(fields), pWindow_(pWindow), extras_(std::move(extras)) {}

void clsConversionRun::LogLine(std::string_view sText) {
  log_.LogAddText(sText);
}

std::string clsConversionRun::ElapsedSeconds() const {
  constexpr double kMillisecond = 0.001;
  return FormatOneDecimal(static_cast<double>(host_.TickMilliseconds() - fields_.lTotalTimeStart) * kMillisecond);
}

void clsConversionRun::Go(int32_t& lResult) {
  if (pWindow_ != nullptr) pWindow_->GetOptionsFromGUI();
  log_.lWarningCount = log_.lErrorCount = 0;
  ValidateOptions(lResult);
  if (lResult != 0) return;
  if (extras_.jobAccepted) extras_.jobAccepted();
  BeginProcessing(lResult);
  if (pWindow_ != nullptr) {
    pWindow_->UpdateFileControls();
    pWindow_->FocusOutputButtons();
  }
}

/// Outside the sections, which ask about a pause, only a run that is given up stops.
clsTurns clsConversionRun::TakeTurns() {
  return clsTurns([this] {
    host_.LetEventsRun();
    return !gbAbandonOutput;
  });
}

void clsConversionRun::BeginProcessing(int32_t& lResult) {
  // The job's page is that of its reports; recipes are read as they would be without it.
  const bool bRecipe = options_.lConversionMethod == kMethodRecipe && !options_.sCodePage.empty();
  if (bRecipe && !extras_.recipePage) extras_.recipePage = SystemCodePage();
  const clsCodePageScope page(options_.sCodePage);
  const clsTurns turns = TakeTurns();
  if (pWindow_ != nullptr) LogLine(Translate("Starting conversion..."));
  fields_.lTotalTimeStart = host_.TickMilliseconds();
  if (pWindow_ != nullptr) pWindow_->DisableGUIForRunning();
  ExpandFolderTokens(options_.sInputFile);
  ExpandFolderTokens(options_.sOutputFile);
  ExpandFolderTokens(options_.sRecipeFile);
  lResult = 0;
  if (HasWildcards(options_.sInputFile)) {
    ConvertBatch(lResult);
  } else {
    ConvertSingle(lResult);
  }
  ReportRun();
  gbPauseRequested = false;
}

void clsConversionRun::ConvertSingle(int32_t& lResult) {
  if (pWindow_ != nullptr) {
    LogLine(Translate("Processing:") + "  " + WithoutControls(options_.sInputFile));
    host_.SetStatusPanel(StatusBar::CurrentFile, kPanelCurrent, options_.sInputFile);
  }
  lResult = ConvertFile().lResult;
}

bool clsConversionRun::NextFileMayBegin(size_t nFile, size_t nFiles, const std::string& sInput) {
  host_.LetEventsRun();
  if (gbPauseRequested) {
    bFilesLeft_ = true;
    return false;
  }
  if (extras_.fileBegins) extras_.fileBegins(nFile, nFiles, sInput);
  return true;
}

void clsConversionRun::ConvertList(const std::vector<PlannedFile>& files, int32_t& lResult) {
  const clsTurns turns = TakeTurns();
  fields_.lTotalTimeStart = host_.TickMilliseconds();
  LogLine(Translate("Processing:"));
  std::string folder_made;
  for (size_t i = 0; i < files.size() && NextFileMayBegin(i + 1, files.size(), files[i].sInput); ++i) {
    options_.sInputFile = files[i].sInput;
    options_.sOutputFile = files[i].sOutput;
    if (files.size() <= kMostFilesLogged) LogLine("  " + WithoutControls(options_.sInputFile));
    std::string folder = ParentFolderOfPath(options_.sOutputFile);
    if (folder != folder_made) MakeFolderPath(folder);
    folder_made = std::move(folder);
    lResult = ConvertFile().lResult;
  }
  ReportRun();
  gbPauseRequested = false;
}

bool clsConversionRun::ListFiles(std::vector<std::string>& clnFiles) {
  std::string error;
  bool ok = false;
  if (pWindow_ != nullptr) pWindow_->SetBusyPointer(true);
  BuildFileListing(options_.sInputFile, options_.bDoSubfolders, clnFiles, error, true, ok);
  if (pWindow_ != nullptr) pWindow_->SetBusyPointer(false);
  return ok;
}

void clsConversionRun::ConvertBatch(int32_t& lResult) {
  std::vector<std::string> files;
  if (!ListFiles(files)) {
    lResult = Refuse(kNoFileList);
    return;
  }
  const BatchOutput output(options_.sOutputFile);
  const bool log_each = files.size() <= kMostFilesLogged;
  LogLine(Translate("Processing:"));
  if (!log_each) LogLine("  " + WithoutControls(options_.sInputFile));

  std::string folder_made;
  std::unordered_set<size_t> written;  // Hashes, as a batch may have a million outputs
  for (size_t i = 0; i < files.size(); ++i) {
    if (!NextFileMayBegin(i + 1, files.size(), files[i])) break;
    options_.sInputFile = files[i];
    if (log_each) LogLine("  " + WithoutControls(options_.sInputFile));
    NameOutput(output, folder_made);
    if (pWindow_ != nullptr) {
      host_.SetStatusPanel(StatusBar::CurrentFile, kPanelCurrent,
                           options_.sInputFile + "   [" + std::to_string(i + 1) + " " + Translate("of") + " " +
                               std::to_string(files.size()) + " " + Translate("files") + "]");
    }
    // Path texts that differ in case alone name one file.
    const size_t written_as = std::hash<std::string>()(UpperText(options_.sOutputFile));
    if (written.contains(written_as)) WarnOfSecondOutput();
    lResult = ConvertFile().lResult;
    if (outcome_.account.bOutputWritten) written.insert(written_as);
  }
}

void clsConversionRun::NameOutput(const BatchOutput& output, std::string& sFolderMade) {
  const std::string input_folder = FolderAndSeparator(options_.sInputFile);
  std::string target = input_folder;
  if (!options_.bSaveInOriginalFolder) {
    target = output.TargetFor(input_folder);
    if (target != sFolderMade) MakeFolderPath(target);
    sFolderMade = target;
  }
  options_.sOutputFile = target + BaseNameOfReport(options_.sInputFile) + "." + output.sOutputExtension;
}

void clsConversionRun::WarnOfSecondOutput() {
  ReportEntry entry = RunEntry(kOutputTwice, options_.sOutputFile);
  entry.bShowMessageBox = false;  // It would come for each of many files.
  host_.Report(entry);
}

const FileOutcome& clsConversionRun::ConvertFile() {
  return Convert([this](int32_t& lResult) { ConvertByMethod(lResult); });
}

// What one file asks for beyond the memory there is must not end a batch. All that it held is free again here.
const FileOutcome& clsConversionRun::Convert(const std::function<void(int32_t& lResult)>& convert) {
  outcome_ = {};
  outcome_.sInput = options_.sInputFile;
  outcome_.sOutput = options_.sOutputFile;
  log_.TellOutcome(&outcome_);
  ApplyInputChoices(options_);
  try {
    convert(outcome_.lResult);
  } catch (const std::bad_alloc&) {
    outcome_.account = {};
    gbProcessing = false;
    outcome_.lResult = Refuse(kNotEnoughMemory, outcome_.sInput);
  }
  log_.TellOutcome(nullptr);
  CloseOutcome();
  if (extras_.handOn && outcome_.account.bOutputWritten) {
    const Failure failure = extras_.handOn(outcome_);
    if (failure.Failed()) outcome_.Fail(failure.sText);
  }
  if (extras_.fileDone) extras_.fileDone(outcome_);
  ForgetReportTexts();
  return outcome_;
}

void clsConversionRun::CloseOutcome() {
  const FileAccount& account = outcome_.account;
  const Failure& failure = account.failure;
  // The log takes -5006 once a run; a file that isn't written must not go under for that.
  if (failure.Failed() && outcome_.reasons.empty() && !extras_.fileDone)
    LogLine(std::string(kLogIndent) + failure.sText);
  const bool errors = outcome_.HasErrors();
  const bool stopped = gbAbandonOutput || gbPauseRequested;
  if (failure.Failed() && !errors && !outcome_.Tells(failure)) outcome_.Fail(failure.sText);
  if (!account.sWalkEnded.empty() && account.sWalkEnded != failure.sText) {
    outcome_.Fail(account.sWalkEnded, outcome_.sInput);
  }
  if (!account.sStrict.empty()) outcome_.Fail(account.sStrict, outcome_.sInput);
  if (!account.bOutputWritten && !failure.Failed() && !errors && !stopped && account.sStrict.empty())
    outcome_.Fail("not written", outcome_.sOutput);
  const bool whole = outcome_.lResult == 0 && !outcome_.HasErrors() && account.bOutputWritten && !failure.Failed();
  outcome_.status = stopped ? FileStatus::Stopped : whole ? FileStatus::Converted : FileStatus::Failed;
}

void clsConversionRun::ConvertByMethod(int32_t& lResult) {
  if (IsSameFile(options_.sInputFile, options_.sOutputFile)) {
    lResult = Refuse(kOutputIsInput, options_.sOutputFile);
  } else if (options_.lConversionMethod == kMethodProfile) {
    ConvertByProfile(lResult);
  } else {
    ConvertByRecipe(lResult);
  }
}

BatchOutput::BatchOutput(std::string_view sOutputPattern)
    : sOutputPrefix(sOutputPattern.substr(0, sOutputPattern.find('*'))),
      sOutputFolder(FolderAndSeparator(sOutputPattern)),
      sOutputExtension(ExtensionOfPath(sOutputPattern)) {}

std::string BatchOutput::TargetFor(std::string_view sInputFolder) const {
  const size_t input = CharCount(sInputFolder);
  const size_t output = CharCount(sOutputFolder);
  if (input < output) {
    throw OutputFolderTooLong("The output folder " + sOutputFolder +
                              " has a longer name than the folder of the input file, " + std::string(sInputFolder) +
                              ": no part of it can be mirrored.");
  }
  return sOutputPrefix + std::string(sInputFolder.substr(ByteOffset(sInputFolder, output + 1)));
}

void clsConversionRun::ReportRun() {
  const std::string seconds = ElapsedSeconds();
  const std::string errors = Translate("Errors: ") + std::to_string(log_.lErrorCount);
  const std::string warnings = Translate("Warnings: ") + std::to_string(log_.lWarningCount);
  const std::string closing =
      Translate("Conversion Complete. Total Time:") + " " + seconds + " " + Translate("seconds");
  if (pWindow_ == nullptr) {
    LogLine(errors + "    " + warnings + std::string(kLineEnd) + closing);
    return;
  }
  bStopped_ = bFilesLeft_ || outcome_.status == FileStatus::Stopped;
  host_.SetStatusPanel(StatusBar::Main, kPanelCurrent,
                       bStopped_ ? Translate("Conversion stopped") : Translate("Conversion Complete"));
  host_.SetStatusPanel(StatusBar::Main, kPanelTime, seconds);
  pWindow_->EnableGUIForRunning();
  LogLine(errors);
  LogLine(warnings);
  LogLine(bStopped_ ? Translate("Conversion stopped. Total Time:") + " " + seconds + " " + Translate("seconds")
                    : closing);
}

}  // namespace quillon
