#include "MainModule.h"

#include <array>

#include "clsFileLock.h"
#include "clsIniFile.h"
#include "clsOutputFile.h"
#include "modFiles.h"
#include "modParseCommandLine.h"
#include "modPaths.h"
#include "modProfileList.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int32_t kDefaultTabSize = 8;
constexpr std::string_view kStoreSection = "Settings";
constexpr std::string_view kInstalledKey = "bDInstalled";

constexpr std::array<std::string_view, 6> kExampleFolders{"Example1-Profile Method", "Example2-Recipe Method",
                                                          "Example3-Recipe Method",  "Example4-File Marking Method",
                                                          "Examples-Output-Folder",  "Profiles"};
constexpr std::array<std::string_view, 4> kExampleJobs{"Example1-Profile.QLN", "Example2-Recipe.QLN",
                                                       "Example3-Recipe.QLN", "Example4-File-Marking.QLN"};

void RunUnattended(clsHost& host, clsRunLog& log, clsRunFields& fields) {
  gbCommandLineMode = true;
  LoadRunFields(fields, host);
  clsConversionRun run(host, gConversionOptions, log, fields, nullptr);
  int32_t result = 0;
  try {
    run.Go(result);
  } catch (const UnhandledFailure& failure) {
    log.LogAddEntryHelper(std::string(kLogIndent) + WithoutControls(failure.what(), kLineEnd));
    Failure unwritten;
    if (!gConversionOptions.sLogFile.empty()) WriteLogFile(gConversionOptions, log, unwritten);
    throw;
  }
  if (result == kNoLogFolder && !gConversionOptions.bVerbose) {
    // The log would have told it, and nobody may look for the outputs for long.
    host.ShowMessage(gConversionOptions.sLogFile + ": " + Translate("Unable to create/access log file folder."),
                     "Log file", MessageIcon::Critical, MessageButtons::Ok);
  }
  if (result == kLogIsFileOfRun && !gConversionOptions.bVerbose) {
    const ReportEntry entry = RunEntry(kLogIsFileOfRun, gConversionOptions.sLogFile);
    host.ShowMessage(entry.sErr2 + " " + entry.sErr3, entry.sErr1, MessageIcon::Critical, MessageButtons::Ok);
  }
  if (result == kNoLogFolder || result == kLogIsFileOfRun || gConversionOptions.sLogFile.empty()) return;
  Failure failure;
  if (!WriteLogFile(gConversionOptions, log, failure)) {
    host.ShowMessage(failure.sText, "Log file", MessageIcon::Critical, MessageButtons::Ok);
  }
}

}  // namespace

StartOutcome Main(std::string_view sCommandLine, clsHost& host, clsRunLog& log, clsRunFields& fields,
                  const StartHooks& hooks) {
  ResetConversionOptions();
  gsSettingsFile = FindSettingsFile();
  gsAppDataFolder = AppDataFolder();
  gbCommandLineMode = false;
  glTabSize = kDefaultTabSize;
  InitializeTranslator(host, hooks.chooseLanguage);
  InstallExamples();
  if (!FileExists(gsSettingsFile)) CreateDefaultSettingsFile(gsSettingsFile);

  if (ParseCommandLine(sCommandLine, gConversionOptions, host)) {
    RunUnattended(host, log, fields);
    return StartOutcome::RanUnattended;
  }
  gbCommandLineMode = false;
  if (!sCommandLine.empty() && !gConversionOptions.bOpenConversionJobOnly) return StartOutcome::ShowedHelp;
  hooks.StartMainWindow(sCommandLine.empty() ? std::string() : gConversionOptions.sCLBatchJobFile);
  return StartOutcome::StartedWindow;
}

void SetPathsForReading() {
  gsAppDataFolder = AppDataFolder();
  gsDataFolder = RemoveTrailingBackslash(gsAppDataFolder);
  gsSettingsFile = gsAppDataFolder + "QLN.INI";
  glTabSize = kDefaultTabSize;
  MakeFolderPath(gsAppDataFolder);
}

void InstallExamples() {
  // A second process that starts meanwhile waits until all is there: it may be about to use a profile.
  const std::string target = AppDataFolder();
  const clsFileLock lock(target + "Examples");
  if (UpperText(StoreGet(kStoreSection, kInstalledKey, "FALSE")) != "FALSE") return;
  StoreSet(kStoreSection, kInstalledKey, "TRUE");  // Before anything is copied: a copy that fails isn't tried again.
  if (FolderExists(JoinPath(target, "Profiles"))) return;
  for (const std::string_view folder : kExampleFolders) {
    CopyFolderOver(ShippedPath(folder), JoinPath(target, folder), true);
  }
  for (const std::string_view job : kExampleJobs) CopyFileOver(ShippedPath(job), JoinPath(target, job));
}

void LoadRunFields(clsRunFields& fields, clsHost& host) {
  if (!FileExists(gsSettingsFile)) {
    host.ShowMessage(gsSettingsFile + Translate(" Cannot be found!"), "", MessageIcon::Critical, MessageButtons::Ok);
    return;
  }
  fields.bWarnedAboutTabsInFile =
      UpperText(GetPrivateProfileString(gsSettingsFile, "General", "bWarnedAboutTabsInFile", "FALSE")) != "FALSE";
  // An installation whose profiles are all gone gets the default one back, as its form's list would be empty.
  ProfileList profiles;
  BuildListValidProfiles(
      profiles, GetPrivateProfileString(gsSettingsFile, "frmMain", "sActiveFixedWidthProfile", kDefaultProfile),
      kProfilesSubFolder, host);
}

bool WriteLogFile(const clsConversionOptions& options, const clsRunLog& log, Failure& failure) {
  return WriteWholeFile(options.sLogFile, log.txtLog() + std::string(kLineEnd), failure);
}

}  // namespace quillon
