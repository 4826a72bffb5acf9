#include "modJobCommand.h"

#include <array>

#include "clsIniFile.h"
#include "clsLineReader.h"
#include "clsLongRun.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modPaths.h"
#include "modStrings.h"
#include "modText.h"

namespace quillon {

namespace {

using O = clsConversionOptions;

bool OneFile(const O& options) {
  return !HasWildcards(options.sInputFile);
}
bool ByProfile(const O& options) {
  return options.lConversionMethod == kMethodProfile;
}
bool ToCsv(const O& options) {
  return UpperText(ExtensionOfPath(options.sOutputFile)) == "CSV";
}

/// What a job holds and its run doesn't look at, where the value isn't the one that a new job has.
struct IgnoredKey {
  std::string_view sKey;
  bool (*when)(const O&);
  std::string_view sWhy;
};
constexpr std::array<IgnoredKey, 12> kIgnored{{
    {"sSheetTarget", [](const O& o) { return o.sSheetTarget != "1"; }, "no conversion reads it"},
    {"bDoSubfolders", [](const O& o) { return o.bDoSubfolders && OneFile(o); }, "the input is one file"},
    {"bSaveInOriginalFolder", [](const O& o) { return o.bSaveInOriginalFolder && OneFile(o); },
     "the input is one file"},
    {"sOutputFile", [](const O& o) { return o.bSaveInOriginalFolder && !OneFile(o); },
     "only its extension counts, as outputs are written beside their inputs"},
    {"sRecipeFile", [](const O& o) { return !o.sRecipeFile.empty() && o.lConversionMethod != kMethodRecipe; },
     "it serves the Recipe method"},
    {"sStartColRow", [](const O& o) { return o.sStartColRow != "A1" && !ByProfile(o); },
     "it serves the Profile method"},
    {"bTreatDataAsText", [](const O& o) { return o.bTreatDataAsText && !ByProfile(o); },
     "it serves the Profile method"},
    {"bIsUnicode", [](const O& o) { return o.bIsUnicode && !ByProfile(o); }, "it serves the Profile method"},
    {"lUseDoubleQuotes", [](const O& o) { return o.lUseDoubleQuotes != 1 && !(ByProfile(o) && ToCsv(o)); },
     "it serves CSV output of the Profile method"},
    {"lDelimitationCharacter", [](const O& o) { return o.lDelimitationCharacter != 44 && !ToCsv(o); },
     "it serves CSV output"},
    {"lTabSize", [](const O& o) { return o.lTabSize != 8 && ByProfile(o); }, "it serves the Recipe and Markup methods"},
    {"bUnix", [](const O& o) { return o.bUnix && ByProfile(o); }, "it serves the Recipe and Markup methods"},
}};

void TellWhatIsIgnored(const O& options, clsLongRun& run) {
  for (const IgnoredKey& key : kIgnored) {
    if (key.when(options)) run.Note(std::string(key.sKey) + " has no effect here: " + std::string(key.sWhy));
  }
}

/// Says what keeps a file that is there from being a job: it would be run as one that names no input.
bool IsJob(const std::string& sJobFile, clsLongRun& run) {
  if (!IsFile(sJobFile)) return true;  // The run tells of it.
  clsIniFile file(JobCodePage());
  Failure failure;
  if (file.Load(sJobFile, failure) && file.HasSection(kJobSection)) return true;
  run.Say(failure.Failed() ? failure.sText : sJobFile + ": no conversion job, as it has no section [QLN]");
  return false;
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

int JobCommand(const JobRequest& request, const TalkRequest& talk) {
  clsLongRun run(talk);
  O& options = gConversionOptions;
  if (!run.CheckLog()) return run.Refused();
  if (!IsJob(ExpandedPath(request.sJobFile), run)) return run.Refused();
  options.sCLBatchJobFile = request.sJobFile;
  RunExtras extras = run.Extras();
  extras.jobAccepted = [&run, &options] {
    options.bVerbose = false;  // Every entry is printed already.
    TellWhatIsIgnored(options, run);
    TellUnknownKeys(options.sCLBatchJobFile, run);
  };
  clsConversionRun conversion(run.host, options, run.log, run.fields, nullptr, extras);
  int32_t result = 0;
  conversion.Go(result);
  const bool nothing_done = run.totals.lFilesConverted + run.totals.lFilesFailed == 0 && InterruptSignal() == 0;
  if (nothing_done) ++run.totals.lFilesFailed;
  if (nothing_done && result == 0) run.Say(options.sInputFile + ": no file found");
  const bool wrong_use = result == kNoJobFile || result == kNoLogFolder || result == kOutputNeedsWildcard ||
                         result == kOutputHasWildcard || result == kOutputType;
  if (wrong_use) return run.Refused();
  return run.Finish();
}

}  // namespace quillon
