#include "modFrontDoor.h"

#include <malloc.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "MainModule.h"
#include "clsConsoleHost.h"
#include "modFailure.h"
#include "modFiles.h"
#include "modLongOptions.h"
#include "modParseCommandLine.h"
#include "modPaths.h"
#include "modRunMessages.h"
#include "modText.h"
#include "modUsage.h"

namespace quillon {

namespace {

/// A path with its name typed in full is none, although its folders could be read as switches. Behind other words a
/// switch is told by its letter.
bool IsSlashForm(std::string_view sFirst) {
  if (sFirst.starts_with('/')) return !IsFile(sFirst);
  for (size_t n = sFirst.find(" /"); n != std::string_view::npos; n = sFirst.find(" /", n + 1)) {
    if (n + 2 < sFirst.size() && IsSwitchLetter(sFirst[n + 2])) return true;
  }
  return false;
}

/// Doesn't come back if the desktop program is there.
int BecomeDesktopProgram(char** argv) {
  const auto given = [](const char* pName) {
    const char* const pValue = std::getenv(pName);
    return pValue != nullptr && *pValue != '\0';
  };
  if (!given("DISPLAY") && !given("WAYLAND_DISPLAY") && !given("QT_QPA_PLATFORM")) {
    std::fputs("quillon: there is no display for the desktop program; for the command line see: quillon --help\n",
               stderr);
    return kExitWrongUse;
  }
  const std::string program = ProgramFolder() + "/quillon-gui";
  execv(program.c_str(), argv);
  std::perror(("quillon: " + program).c_str());
  std::fputs(
      "quillon: The desktop program isn't beside this one (it is built where Qt 6 is found).\n"
      "For the command line see: quillon --help\n",
      stderr);
  return kExitWrongUse;
}

std::string OnOneLine(const ReportEntry& entry) {
  std::string line = entry.sErr1;
  for (const std::string* const pText : {&entry.sErr2, &entry.sErr3}) {
    if (!pText->empty()) line.append(" ").append(OneLine(ReplaceAll(*pText, "%lf%", "\n")));
  }
  return line;
}

/// A run without a log would fail without a trace.
void SayWhatNoLogTells(clsConsoleHost& host, const clsRunLog& log, const std::string& sText) {
  const clsConversionOptions& options = gConversionOptions;
  if (options.sInputFile.empty() && options.sCLBatchJobFile.empty()) {
    return host.Say("quillon: " + sText + " names no input by /I and no job by /J; see quillon --help");
  }
  const std::optional<ReportEntry>& error = log.FirstError();
  if (!error || !options.sLogFile.empty() || options.bVerbose || error->lErr == kLogIsFileOfRun) return;
  host.Say("quillon: " + OnOneLine(*error) + " (/L keeps a log of all)");
}

int RunSlashForm(int argc, char** argv) {
  std::string text;
  for (int i = 1; i < argc; ++i) text.append(i > 1 ? " " : "").append(argv[i]);
  // The whole start is the desktop program's then; on the first one it asks for the language.
  if (OpensJobInWindow(text)) return BecomeDesktopProgram(argv);

  clsConsoleHost host(clsConsoleHost::Voice::Mute);
  clsRunLog log(host, gConversionOptions);
  host.AttachLog(log);
  clsRunFields fields;
  CatchInterrupts();
  if (Main(text, host, log, fields, {}) == StartOutcome::ShowedHelp) {
    const bool printed = PrintToStandardOutput("quillon with slash switches, each run up to the next \"/\":\n\n" +
                                               SwitchList() + "\nSee also: quillon --help\n");
    return printed ? kExitDone : kExitSomeFailed;
  }
  SayWhatNoLogTells(host, log, text);
  return InterruptSignal() != 0 ? kExitInterrupted + InterruptSignal() : kExitDone;
}

/// The buffers of one file are those of the next: given back to the system and taken again, each of their pages would
/// be cleared anew.
void KeepBuffers() {
  constexpr int kLargestKept = 4 << 20;
  constexpr int kMostKept = 64 << 20;
  mallopt(M_MMAP_THRESHOLD, kLargestKept);
  mallopt(M_TRIM_THRESHOLD, kMostKept);
}

/// One line that says what failed.
void PrintUnexpected(std::string_view sText) {
  std::string line = "quillon: ";
  for (const char c : sText) {
    if (c == '\r' || (c == '\n' && line.back() == ' ')) continue;
    line += c == '\n' ? ' ' : c;
  }
  std::fputs((line + "\n").c_str(), stderr);
}

}  // namespace

int FrontDoor(int argc, char** argv) {
  HoldStandardStreams();
  KeepBuffers();
  std::setlocale(LC_TIME, "");
  try {
    if (argc < 2) return BecomeDesktopProgram(argv);
    return IsSlashForm(argv[1]) ? RunSlashForm(argc, argv) : RunLongOptions(argc, argv);
  } catch (const std::bad_alloc&) {
    // Of a part that is no file's conversion. Nothing here asks for memory.
    for (const char* const pText : {"quillon: ", kNoMemoryText, "\n"}) std::fputs(pText, stderr);
    return kExitUnexpected;
  } catch (const UnhandledFailure& failure) {
    // What a job, a recipe or a language file holds can't be gone on with: no fault of the program.
    PrintUnexpected(failure.what());
    return kExitSomeFailed;
  } catch (const std::exception& failure) {
    PrintUnexpected(failure.what());
    return kExitUnexpected;
  }
}

}  // namespace quillon
