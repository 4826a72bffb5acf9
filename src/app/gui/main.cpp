// The desktop program. Its arguments, joined by blanks, are the command text: "/!" opens a job, other switches run one.

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "clsConsoleHost.h"
#include "clsDisplayWatch.h"
#include "modDesktop.h"
#include "modText.h"
#include "modVersion.h"

namespace {

constexpr int kDone = 0, kFailed = 1, kWrongUse = 2;

constexpr const char* kHelp =
    "Turns printed-report text into CSV, XLS and XLSX, in a window.\n"
    "Usage: quillon-gui [FILE.QLN | '/! FILE.QLN' | SWITCHES]\n"
    "\n"
    "  FILE.QLN    Open this conversion job\n"
    "  SWITCHES    Run them without a window, as quillon does: quillon '/?'\n"
    "  --help      Print this text and exit\n"
    "  --version   Print the version and exit\n"
    "\n"
    "For the command line see: quillon --help\n";

bool IsGiven(const char* pName) {
  const char* const pValue = std::getenv(pName);
  return pValue != nullptr && *pValue != '\0';
}

int Print(const std::string& sText) {
  const bool bDone = std::fputs(sText.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
  if (!bDone) std::fputs("quillon-gui: standard output can't be written\n", stderr);
  return bDone ? kDone : kFailed;
}

/// What needs no window, or can't have one; the toolkit would end the program by a signal. Nothing: it may open.
std::optional<int> AnswerWithoutWindow(int argc, char** argv) {
  const std::string_view sFirst = argc > 1 ? argv[1] : "";
  if (sFirst == "--help" || sFirst == "-h") return Print(kHelp);
  if (sFirst == "--version") return Print("quillon-gui " + std::string(quillon::VersionText) + "\n");
  if (sFirst.starts_with("--")) {
    std::fputs(
        ("quillon-gui: " + quillon::WithoutControls(sFirst) + " is no option (see quillon-gui --help)\n").c_str(),
        stderr);
    return kWrongUse;
  }
  if (IsGiven("DISPLAY") || IsGiven("WAYLAND_DISPLAY") || IsGiven("QT_QPA_PLATFORM")) return std::nullopt;
  for (int i = 1; i < argc; ++i) {
    if (std::string_view(argv[i]) == "-platform") return std::nullopt;
  }
  std::fputs("quillon-gui: there is no display for the desktop program; for the command line see: quillon --help\n",
             stderr);
  return kWrongUse;
}

}  // namespace

int main(int argc, char** argv) {
  quillon::HoldStandardStreams();
  if (const std::optional<int> answered = AnswerWithoutWindow(argc, argv)) return *answered;
  std::optional<quillon::clsApplication> application;
  {
    const quillon::clsDisplayWatch watch(kWrongUse);
    application.emplace(argc, argv);
  }
  return quillon::RunDesktop(argc, argv);
}
