#include "modConversionRun.h"

#include <algorithm>
#include <new>
#include <utility>

#include "clsCodePageScope.h"
#include "clsEbcdicPage.h"
#include "clsKnownPaths.h"
#include "modFileListing.h"
#include "modFiles.h"
#include "modInputChoices.h"
#include "modNumbers.h"
#include "modPacked.h"
#include "modPaths.h"
#include "modRecipeInput.h"
#include "modReportPage.h"
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

/// Path texts that differ in case alone name one file.
size_t NameHash(std::string_view sPath) {
  return std::hash<std::string>()(UpperText(sPath));
}

/// The log tells the outcome of its entries for as long as this lives.
class clsTelling {
 public:
  clsTelling(clsRunLog& log, FileOutcome& outcome) : log_(log) { log.TellOutcome(&outcome); }
  clsTelling(const clsTelling&) = delete;
  clsTelling& operator=(const clsTelling&) = delete;
  ~clsTelling() { log_.TellOutcome(nullptr); }

 private:
  clsRunLog& log_;
};

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
clsEventLoop clsConversionRun::TakeEventLoop() {
  return clsEventLoop([this] {
    host_.LetEventsRun();
    return !gbAbandonOutput;
  });
}

void clsConversionRun::BeginProcessing(int32_t& lResult) {
  // The page is that of the job's reports; recipes are read as they would be without it.
  const bool bRecipe = options_.lConversionMethod == kMethodRecipe;
  if (bRecipe && options_.sCodePage.empty()) options_.sCodePage = PageOfRecipe(ExpandedPath(options_.sRecipeFile));
  if (bRecipe) TakeInputOfRecipeOrEnd(options_, ExpandedPath(options_.sRecipeFile));
  if (bRecipe && !options_.sCodePage.empty() && !extras_.recipePage) extras_.recipePage = SystemCodePage();
  // A report in EBCDIC is made into text before any page of 8-bit texts is asked.
  const bool bEbcdic = clsEbcdicPage::Find(options_.sCodePage) != nullptr;
  const clsCodePageScope page(bEbcdic ? std::string_view() : std::string_view(options_.sCodePage));
  const clsEventLoop loop = TakeEventLoop();
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
  const clsEventLoop loop = TakeEventLoop();
  fields_.lTotalTimeStart = host_.TickMilliseconds();
  LogLine(Translate("Processing:"));
  sFolderMade_.clear();
  if (extras_.pOthers != nullptr) {
    TellList(files, lResult);
  } else {
    for (size_t i = 0; i < files.size() && NextFileMayBegin(i + 1, files.size(), files[i].sInput); ++i) {
      if (files.size() <= kMostFilesLogged) LogLine("  " + WithoutControls(files[i].sInput));
      lResult = ConvertPlanned(files[i]).lResult;
    }
  }
  ReportRun();
  gbPauseRequested = false;
}

void clsConversionRun::NameFile(const PlannedFile& file) {
  options_.sInputFile = file.sInput;
  options_.sOutputFile = file.sOutput;
}

const FileOutcome& clsConversionRun::ConvertPlanned(const PlannedFile& file) {
  NameFile(file);
  std::string folder = ParentFolderOfPath(file.sOutput);
  if (folder != sFolderMade_) MakeFolderPath(folder);
  sFolderMade_ = std::move(folder);
  return ConvertFile();
}

// What was converted before an interrupt is told all the same.
void clsConversionRun::TellList(const std::vector<PlannedFile>& files, int32_t& lResult) {
  for (size_t i = 0; i < files.size(); ++i) {
    const bool converted = extras_.pOthers->Wait(i);
    host_.LetEventsRun();
    if (!converted) continue;
    NameFile(files[i]);
    if (extras_.fileBegins) extras_.fileBegins(i + 1, files.size(), files[i].sInput);
    if (files.size() <= kMostFilesLogged) LogLine("  " + WithoutControls(files[i].sInput));
    outcome_ = {};
    {
      const clsTelling telling(log_, outcome_);
      extras_.pOthers->Tell(outcome_);
    }
    if (extras_.fileDone) extras_.fileDone(outcome_);
    lResult = outcome_.lResult;
  }
}

bool clsConversionRun::ListFiles(std::vector<std::string>& clnFiles) {
  std::string error;
  std::string not_searched;
  bool ok = false;
  if (pWindow_ != nullptr) pWindow_->SetBusyPointer(true);
  BuildFileListing(options_.sInputFile, options_.bDoSubfolders, clnFiles, error, true, ok, &not_searched);
  if (pWindow_ != nullptr) pWindow_->SetBusyPointer(false);
  if (!not_searched.empty() && extras_.notSearched) extras_.notSearched(not_searched);
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

  for (const std::string& file : files) batchInputs_.insert(NameHash(file));
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
    const size_t written_as = NameHash(options_.sOutputFile);
    if (written.contains(written_as)) WarnOfSecondOutput();
    lResult = ConvertFile().lResult;
    if (outcome_.account.bOutputWritten) written.insert(written_as);
  }
  batchInputs_.clear();
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
  const clsKnownPaths known;
  ApplyInputChoices(options_);
  try {
    const clsTelling telling(log_, outcome_);
    convert(outcome_.lResult);
  } catch (const std::bad_alloc&) {
    const clsTelling telling(log_, outcome_);
    outcome_.account = {};
    gbProcessing = false;
    outcome_.lResult = Refuse(kNotEnoughMemory, outcome_.sInput);
  } catch (const UnhandledFailure& failure) {
    if (!extras_.fileDone) throw;
    outcome_.account = {};
    gbProcessing = false;
    outcome_.Fail(failure.what());
  }
  CloseOutcome();
  SayWhatNoLogTells();
  if (extras_.handOn && outcome_.account.bOutputWritten) {
    const Failure failure = extras_.handOn(outcome_);
    if (failure.Failed()) outcome_.Fail(failure.sText);
  }
  if (extras_.fileDone) extras_.fileDone(outcome_);
  ForgetReportTexts();
  return outcome_;
}

/// A slash run's log has no line for a walk of sections that ended early; whoever started it sees one all the same.
void clsConversionRun::SayWhatNoLogTells() {
  if (extras_.fileDone || outcome_.status == FileStatus::Stopped) return;
  const FileAccount& account = outcome_.account;
  std::vector<std::string> texts = account.leftOut;
  if (!account.sWalkEnded.empty() && !account.failure.Failed()) texts.push_back(account.sWalkEnded);
  for (const std::string& text : texts) {
    if (pWindow_ != nullptr) {
      LogLine(std::string(kLogIndent) + text);
    } else {
      host_.ShowMessage(text, WithoutControls(outcome_.sInput), MessageIcon::Critical, MessageButtons::Ok);
    }
  }
}

/// What ended the walk of sections, and what wrote nothing, become reasons of the outcome.
void clsConversionRun::AddUntold() {
  FileAccount& account = outcome_.account;
  const std::string ended = std::exchange(account.sWalkEnded, {});
  const bool told = account.failure.Failed() && ended.ends_with(account.failure.sText);
  if (!ended.empty() && !told) outcome_.Fail(ended, outcome_.sInput);
  for (const std::string& text : std::exchange(account.leftOut, {})) outcome_.Fail(text, outcome_.sInput);
}

void clsConversionRun::CloseOutcome() {
  const FileAccount& account = outcome_.account;
  const Failure& failure = account.failure;
  // The log takes -5006 once a run; a file that isn't written must not go under for that.
  if (failure.Failed() && !outcome_.HasLogged() && !extras_.fileDone) LogLine(std::string(kLogIndent) + failure.sText);
  const bool errors = outcome_.HasErrors();
  const bool stopped = gbAbandonOutput || gbPauseRequested;
  // The long form has no entry for it; another error may be but its consequence.
  const bool told = outcome_.TellsOf(failure.sText) ||
                    std::any_of(outcome_.reasons.begin(), outcome_.reasons.end(), [&failure](const FileReason& reason) {
                      return reason.sText.find(failure.sText) != std::string::npos;
                    });
  if (failure.Failed() && !told && (!errors || extras_.fileDone)) outcome_.Fail(failure.sText);
  if (extras_.fileDone) AddUntold();
  if (!account.sStrict.empty()) outcome_.Fail(account.sStrict, outcome_.sInput);
  if (!account.bOutputWritten && !failure.Failed() && !errors && !stopped && account.sStrict.empty())
    outcome_.Fail("not written", outcome_.sOutput);
  const bool whole = outcome_.lResult == 0 && !outcome_.HasErrors() && account.bOutputWritten && !failure.Failed() &&
                     account.lCellsFailed == 0 && account.sWalkEnded.empty() && account.leftOut.empty();
  outcome_.status = stopped ? FileStatus::Stopped : whole ? FileStatus::Converted : FileStatus::Failed;
}

void clsConversionRun::ConvertByMethod(int32_t& lResult) {
  const bool other_input = batchInputs_.contains(NameHash(options_.sOutputFile));
  if (other_input || IsSameFile(options_.sInputFile, options_.sOutputFile)) {
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
    // The long form closes with words of its own; what was stopped isn't complete.
    const bool stopped = extras_.fileDone && (gbAbandonOutput || gbPauseRequested);
    LogLine(errors + "    " + warnings + (stopped ? std::string() : std::string(kLineEnd) + closing));
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
