#pragma once
// The program's start: process-wide state, examples, settings, and the choice between the two ways it can live.

#include <functional>
#include <string>
#include <string_view>

#include "clsConversionOptions.h"
#include "clsHost.h"
#include "modConversionRun.h"
#include "modRunLog.h"

namespace quillon {

/// What the program around the start-up does. Each is called at its place in the order of start-up.
struct StartHooks {
  std::function<void()> chooseLanguage;  ///< Empty in a program without windows
  /// Shows the windows; the job file may be empty. Not called for a text that runs unattended or asks for help.
  std::function<void(const std::string& sJobFile)> StartMainWindow;
};

enum class StartOutcome { RanUnattended, StartedWindow, ShowedHelp };

/// The entry point. log must work on gConversionOptions and the same host. UnhandledFailure comes through, and the log
/// file tells it.
StartOutcome Main(std::string_view sCommandLine, clsHost& host, clsRunLog& log, clsRunFields& fields,
                  const StartHooks& hooks);

/// Sets gsSettingsFile, gsDataFolder, gsAppDataFolder for a run that leaves the settings alone: nothing is written
/// there but what the recipe engine leaves in the data folder.
void SetPathsForReading();

/// Copies the example jobs, folders and profiles into the data folder, once in the life of an installation. Failures
/// are passed over.
void InstallExamples();

/// What an unattended run takes of the main form's load: the settings that it works with, and the default profile where
/// there is none. A settings file that isn't there is told, and the fields keep their values.
void LoadRunFields(clsRunFields& fields, clsHost& host);

/// Writes the log to its file. False with the reason.
bool WriteLogFile(const clsConversionOptions& options, const clsRunLog& log, Failure& failure);

}  // namespace quillon
