#include "modJobCommand.h"

#include "clsIniFile.h"
#include "clsLineReader.h"
#include "clsLongRun.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modOptionTable.h"
#include "modPaths.h"
#include "modStrings.h"
#include "modText.h"

namespace quillon {

namespace {

using O = clsConversionOptions;

/// Tells what a job holds and its run doesn't look at, where the value isn't the one that a new job has.
void TellWhatIsIgnored(const O& options, clsLongRun& run) {
  const bool one_file = !HasWildcards(options.sInputFile);
  const std::string_view sOneFile = one_file ? "the input is one file" : "";
  const bool csv = UpperText(ExtensionOfPath(options.sOutputFile)) == "CSV";
  const OptionUse use{options.lConversionMethod, csv, !csv, false, sOneFile, sOneFile};
  for (const Option& option : OptionTable()) {
    if (option.bInJob && IsOptionSet(option, options)) run.NoteIgnored(option.sName, WhyIgnored(option, use));
  }
  if (options.bSaveInOriginalFolder && !one_file) {
    run.NoteIgnored("sOutputFile", "only its extension counts, as outputs are written beside their inputs");
  }
}

/// A misspelt key would be passed over without a word.
void TellUnknownKeys(const std::string& sJobFile, clsLongRun& run) {
  std::vector<std::string> rows;
  Failure ignored;
  if (!ReadAllRows(sJobFile, {true, JobCodePage()}, rows, ignored)) return;
  bool in_job = false;
  for (const std::string& row : rows) {
    const std::string_view line = TrimBlanks(row);
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      in_job = EqualNoCase(line, "[" + std::string(kJobSection) + "]");
      continue;
    }
    const std::string_view key = TrimBlanks(line.substr(0, line.find('=')));
    if (in_job && !IsJobKey(key)) run.Note(std::string(key) + " is no key of a conversion job");
  }
}

}  // namespace

bool IsJob(const std::string& sJobFile, clsLongRun& run) {
  if (!IsFile(sJobFile)) return true;  // The run tells of it.
  clsIniFile file(JobCodePage());
  Failure failure;
  if (file.Load(sJobFile, failure) && file.HasSection(kJobSection)) return true;
  run.Say(failure.Failed() ? failure.sText : sJobFile + ": no conversion job, as it has no section [QLN]");
  return false;
}

namespace {

int RunJob(const JobRequest& request, clsLongRun& run) {
  O& options = gConversionOptions;
  run.log.LogClear(true);
  if (!run.CheckLog()) return run.Refused();
  if (request.sJobFile.empty()) {
    run.Say("the name of the job file is empty");
    return run.Refused();
  }
  if (!IsJob(ExpandedPath(request.sJobFile), run)) return run.Refused();
  options.sCLBatchJobFile = request.sJobFile;
  RunExtras extras = run.Extras();
  extras.jobAccepted = [&run, &options, &request] {
    options.bStrict = request.bStrict;
    options.bKeep = request.bKeep;
    options.bVerbose = false;  // Every entry is printed already.
    TellWhatIsIgnored(options, run);
    TellUnknownKeys(options.sCLBatchJobFile, run);
  };
  extras.notSearched = [&run, &options](const std::string& sWhy) {
    run.Say(options.sInputFile + ": not all of it could be searched (" + sWhy + ")");
    ++run.totals.lFilesFailed;
  };
  clsConversionRun conversion(run.host, options, run.log, run.fields, nullptr, extras);
  int32_t result = 0;
  conversion.Go(result);
  if (result == kLogIsFileOfRun) options.sLogFile.clear();
  const bool nothing_done = run.totals.lFilesConverted + run.totals.lFilesFailed == 0 && InterruptSignal() == 0;
  if (nothing_done) ++run.totals.lFilesFailed;
  if (nothing_done && result == 0) run.Say(options.sInputFile + ": no file found");
  const bool wrong_use = result == kNoJobFile || result == kNoLogFolder || result == kLogIsFileOfRun ||
                         result == kOutputNeedsWildcard || result == kOutputHasWildcard || result == kOutputType;
  if (wrong_use) return run.Refused();
  return run.Finish();
}

}  // namespace

int JobCommand(const JobRequest& request, const TalkRequest& talk) {
  clsLongRun run(talk);
  return run.Guarded([&] { return RunJob(request, run); });
}

}  // namespace quillon
