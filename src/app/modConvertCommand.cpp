#include "modConvertCommand.h"

#include <algorithm>

#include "clsCodePageScope.h"
#include "clsLongRun.h"
#include "clsOutputFile.h"
#include "clsRecipe.h"
#include "clsResultRecorder.h"
#include "clsSharedBatch.h"
#include "modBatchPlan.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modLinkThreads.h"
#include "modOptionTable.h"
#include "modPaths.h"
#include "modProfileFile.h"
#include "modRecipeKind.h"
#include "modReportPage.h"
#include "modSectionFile.h"
#include "modSettings.h"
#include "modStandardStreams.h"
#include "modStrings.h"
#include "modText.h"
#include "modTidyKeys.h"

namespace quillon {

namespace {

constexpr std::string_view kStandardStream = "-";

bool ByProfile(const ConvertRequest& request) {
  return !request.sProfile.empty();
}
bool BySpecification(const ConvertRequest& request) {
  return !request.sSpecification.empty();
}
bool IsGiven(const ConvertRequest& request, std::string_view sLong) {
  return std::find(request.given.begin(), request.given.end(), sLong) != request.given.end();
}

OptionUse UseOf(const ConvertRequest& request) {
  const bool csv = request.sOutput == kStandardStream || UpperText(ExtensionOfPath(request.sOutput)) == "CSV";
  const bool searches = std::any_of(request.inputs.begin(), request.inputs.end(), [](const std::string& sInput) {
    return HasWildcards(sInput) || FolderExists(sInput);
  });
  return {request.options.lConversionMethod,
          csv,
          !csv && !request.sOutput.empty(),
          BySpecification(request),
          searches ? "" : "no input is a pattern or a folder",
          BySpecification(request) ? "a specification makes one output of all inputs" : ""};
}

void TellWhatIsIgnored(const ConvertRequest& request, clsLongRun& run) {
  const OptionUse use = UseOf(request);
  for (const Option& option : OptionTable()) {
    if (!option.sLong.empty() && IsGiven(request, option.sLong)) {
      run.NoteIgnored("--" + std::string(option.sLong), WhyIgnored(option, use));
    }
  }
  if (request.options.bSaveInOriginalFolder && HasSeparator(request.sOutput)) {
    run.NoteIgnored("the folder of OUTPUT", "each output is written beside its input");
  }
}

/// The options of the call with what its method says.
void FillRecord(const ConvertRequest& request, clsConversionOptions& options) {
  const std::string log = options.sLogFile;
  options = request.options;
  options.sLogFile = log;
  options.sRecipeFile = BySpecification(request) ? request.sSpecification : request.sRecipe;
  if (ByProfile(request)) options.sFixedWidthProfile = ProfileFor(request.sProfile);
}

/// A recipe beside a report of a named page is UTF-8 if it looks so, else of the same page.
std::optional<const clsCodePage*> RecipePage(const ConvertRequest& request) {
  constexpr size_t kLargestRecipe = size_t{16} << 20;
  std::string bytes;
  Failure ignored;
  const bool named = !EqualNoCase(request.options.sCodePage, kFoundByContent);
  if (!named || !ReadWholeFile(request.sRecipe, bytes, kLargestRecipe, ignored)) return std::nullopt;
  if (&DetectCodePage(bytes) == &clsCodePage::Utf8()) return &clsCodePage::Utf8();
  return std::nullopt;
}

Failure ToStandardOutput(const FileOutcome& outcome) {
  Failure failure;
  if (InterruptSignal() == 0) FileToStandardOutput(outcome.sOutput, failure);
  return failure;
}

RunExtras ExtrasFor(const ConvertRequest& request, clsLongRun& run) {
  RunExtras extras = run.Extras();
  extras.recipePage = RecipePage(request);
  if (request.sOutput == kStandardStream) extras.handOn = ToStandardOutput;
  return extras;
}

int WrongUse(clsLongRun& run, std::string_view sText) {
  run.Say(sText);
  return run.Refused();
}

/// Options that several processes or runs share a batch by, and what they don't go with. "" if all is well.
std::string_view BatchOptionsFault(const ConvertRequest& request) {
  const bool bAny = request.shard || !request.sReport.empty() || request.bSkipDone;
  if (bAny && !request.sSpecification.empty()) {
    return "--shard, --report and --skip-done go with an output for each input; a specification makes one of all";
  }
  if (request.bSkipDone && request.sReport.empty())
    return "--skip-done goes with --report, whose file tells what is done";
  const bool bStream = request.sOutput == kStandardStream ||
                       std::find(request.inputs.begin(), request.inputs.end(), kStandardStream) != request.inputs.end();
  if (bStream && (request.shard || request.bSkipDone)) return "--shard and --skip-done go with files, not with -";
  return {};
}

/// False for wrong use, which it tells.
bool ConvertBySpecification(const ConvertRequest& request, clsLongRun& run, const RunExtras& extras) {
  constexpr size_t kSlots = 12;
  if (request.inputs.size() > kSlots) {
    run.Say("a long-form recipe has twelve file slots; name no more inputs");
    return false;
  }
  if (HasWildcards(request.sOutput)) {
    run.Say("a long-form recipe makes one output; name it without * and ?");
    return false;
  }
  if (!IsFile(request.sSpecification)) {
    run.host.Report(RunEntry(kRecipeRunNoRecipe, request.sSpecification));
    ++run.totals.lFilesFailed;
    return true;
  }
  clsConversionRun conversion(run.host, gConversionOptions, run.log, run.fields, nullptr, extras);
  const FileOutcome& outcome = conversion.ConvertByLongRecipe(request.sOutput, request.inputs);
  const int32_t lLast = gRecipe().InputFileLast;
  if (!request.options.bAllPeriods && outcome.account.bOutputWritten && lLast > 1) {
    run.Note("columns are taken from file " + std::to_string(lLast) +
             " of the period, and without --all-periods only file 1 is read: they stay empty");
  }
  return true;
}

/// False, told, if the batch can't be planned or its result list not be kept.
bool ConvertEach(const ConvertRequest& request, clsLongRun& run, clsResultRecorder& recorder, RunExtras extras) {
  std::vector<PlannedFile> files;
  if (!PlanBatch(request, run, files) || !recorder.Start(files)) return false;
  recorder.DropDone(files);
  extras = recorder.Joined(std::move(extras));
  if (request.options.lJobs == 1 || request.shard) PackOnSecondThread(false);
  clsSharedBatch batch(request, run, recorder, extras);
  extras.pOthers = batch.Start(files) ? &batch : nullptr;
  clsConversionRun conversion(run.host, gConversionOptions, run.log, run.fields, nullptr, extras);
  int32_t result = 0;
  conversion.ConvertList(files, result);
  return true;
}

bool HasPrivateFolder(clsLongRun& run) {
  if (!run.privateFolder.PathOf("").empty()) return true;
  run.Say(clsPrivateFolder::kNoPlace);
  ++run.totals.lFilesFailed;
  return false;
}

/// False, said, if the recipe is none for the option that names it. What of it isn't read as it looks is noted. A
/// recipe that can't be read its run tells of.
bool LookAtRecipe(const ConvertRequest& request, clsLongRun& run) {
  clsSectionFile file;
  Failure ignored;
  const bool bLong = BySpecification(request);
  const std::string& sRecipe = bLong ? request.sSpecification : request.sRecipe;
  if (!IsFile(sRecipe) || !file.Open(sRecipe, {false, nullptr}, ignored)) return true;
  const std::string sWrong = WrongKindOfRecipe(file, sRecipe, bLong);
  if (!sWrong.empty()) run.Say(sWrong);
  if (sWrong.empty() && !bLong) {
    for (const std::string& sHint : RecipeHints(file)) run.Note(sRecipe + ": " + sHint);
  }
  return sWrong.empty();
}

/// Which table of the recipe asks for a file of its own, which standard output can't be; "" if none does.
std::string SheetForStandardOutput(const ConvertRequest& request) {
  if (request.sOutput != kStandardStream || request.sRecipe.empty() || request.options.bKeep) return {};
  constexpr size_t kMostBytes = size_t{1} << 26;
  std::string sText;
  Failure ignored;
  std::vector<TidyTable> tables;
  TidyFault told;  // by the run
  if (!ReadWholeFile(request.sRecipe, sText, kMostBytes, ignored) || !ReadTidyRecipe(sText, tables, told)) return {};
  for (const TidyTable& table : tables) {
    if (table.sSheet.empty()) continue;
    return "[Table " + std::to_string(table.lNumber) + "] goes to a file of its own (Sheet=" + table.sSheet +
           "), which standard output is none for; name a file with -o, or --keep what standard output takes";
  }
  return {};
}

/// Replaces "-" by files of our own. False, told, for wrong use, or for an input, counted as failed, that can't be
/// read.
bool TakeStandardStreams(ConvertRequest& request, clsLongRun& run) {
  Failure failure;
  for (std::string& input : request.inputs) {
    if (input != kStandardStream) continue;
    if (request.inputs.size() > 1 || request.options.bSaveInOriginalFolder) {
      run.Say("- as input goes with no other input and not with --beside-input");
      return false;
    }
    if (!HasPrivateFolder(run)) return false;
    input = run.privateFolder.InputFile();
    if (!StandardInputToFile(input, failure)) {
      run.Say(failure.sText);
      ++run.totals.lFilesFailed;
      return false;
    }
  }
  if (request.sOutput != kStandardStream) return true;
  if (!HasPrivateFolder(run)) return false;
  request.sOutput = run.privateFolder.OutputFile();
  return true;
}

}  // namespace

std::string ProfileFor(const std::string& sName) {
  if (!FindProfile(sName).empty()) return sName;
  const std::string shipped = ShippedPath("Profiles/" + sName + ".txt");
  return IsFile(shipped) ? shipped : sName;
}

namespace {

int Convert(ConvertRequest request, clsLongRun& run) {
  request.options.lConversionMethod = ByProfile(request) ? kMethodProfile
                                      : request.bMarkup  ? kMethodMarkup
                                                         : kMethodRecipe;
  TakePageOfCall(request.options, request.sRecipe);
  FillRecord(request, gConversionOptions);
  // Who names a tab stop needs no hint at tabs.
  if (IsGiven(request, "tab-size")) run.fields.bWarnedAboutTabsInFile = true;
  if (!request.sReport.empty()) request.sReport = AbsolutePath(ExpandedPath(request.sReport));
  // Machines that share a home would take each other's work files for their own.
  if (request.shard) gsAppDataFolder = run.privateFolder.PathOf("");
  clsResultRecorder recorder(request, run);
  const RunExtras extras = ExtrasFor(request, run);
  run.log.LogClear(true);
  TellWhatIsIgnored(request, run);

  if (!run.CheckLog()) return run.Refused();
  std::string& log = gConversionOptions.sLogFile;
  if (!log.empty() && (EqualNoCase(log, request.sReport) || IsSameFile(log, request.sReport))) {
    log.clear();
    return WrongUse(run, request.sReport + " is the result list; choose another log");
  }
  const std::string_view fault = BatchOptionsFault(request);
  if (!fault.empty()) return WrongUse(run, fault);
  const bool by_specification = BySpecification(request);
  if (!by_specification && request.inputs.empty())
    return WrongUse(run, "INPUT is missing: name files, a quoted pattern, or - (see --help)");
  if (!by_specification && request.sOutput.empty()) return WrongUse(run, "-o OUTPUT is missing (see --help)");
  if (!ByProfile(request) && !by_specification && !request.bMarkup && request.sRecipe.empty())
    return WrongUse(run, "the name behind --recipe, --profile or --specification is empty");
  if (!LookAtRecipe(request, run)) {
    ++run.totals.lFilesFailed;
    return run.Finish();
  }
  if (const std::string sheet = SheetForStandardOutput(request); !sheet.empty()) return WrongUse(run, sheet);
  if (!TakeStandardStreams(request, run)) return run.totals.lFilesFailed > 0 ? run.Finish() : run.Refused();
  const bool ran =
      by_specification ? ConvertBySpecification(request, run, extras) : ConvertEach(request, run, recorder, extras);
  if (!ran) return run.Refused();
  return run.Finish();
}

}  // namespace

int ConvertCommand(const ConvertRequest& request, const TalkRequest& talk) {
  clsLongRun run(talk);
  return run.Guarded([&] { return Convert(request, run); });
}

}  // namespace quillon
