#include "clsConsoleHost.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <thread>

#include "modPaths.h"
#include "modRecipeGlobals.h"
#include "modRecipeMessages.h"
#include "modRunMessages.h"
#include "modText.h"

namespace quillon {

namespace {

volatile std::sig_atomic_t gnInterrupt = 0;

constexpr std::string_view kRed = "\x1b[31m", kYellow = "\x1b[33m", kPlain = "\x1b[0m";
constexpr std::string_view kLayout = "\n\t";  // Control characters that a text for people may hold
constexpr std::string_view kEraseLine = "\r\x1b[K";

extern "C" void NoteInterrupt(int nSignal) {
  gnInterrupt = nSignal;
  std::signal(nSignal, SIG_DFL);
}

void PrintError(std::string_view sText) {
  std::fwrite(sText.data(), 1, sText.size(), stderr);
}

/// What the log of a slash run has no line for: the failure in the system's own words.
void Explain(ReportEntry& entry) {
  if (!entry.sCause.empty()) entry.sErr2 = entry.sCause;
}

/// Lines of an entry on one line. Blanks within them stay, as they may be those of a key text.
std::string Unfolded(std::string_view sText) {
  std::string line;
  std::istringstream lines(ReplaceAll(ReplaceAll(sText, "%lf%", "\n"), "\r\n", "\n"));
  for (std::string part; std::getline(lines, part);) {
    if (!TrimBlanks(part).empty()) line.append(line.empty() ? "" : " ").append(TrimBlanks(part));
  }
  return WithoutControls(line);
}

/// The second and third line of an entry behind the first, so that one line of output tells all of it.
std::string EntryText(const ReportEntry& entry) {
  const std::string sText = Unfolded(entry.sErr2), sMore = Unfolded(entry.sErr3);
  std::string line;
  if (!sText.empty()) line = (entry.sErr1.empty() || TrimBlanks(entry.sErr1).ends_with(']') ? " " : ": ") + sText;
  if (sMore.empty()) return line;
  const bool sentence = line.empty() || std::string_view(".!?").find(line.back()) != std::string_view::npos;
  return line + (sentence ? " " : "; ") + sMore;
}

}  // namespace

std::string OneLine(std::string_view sText) {
  std::string line;
  for (const char c : sText) {
    const bool gap = c == '\r' || c == '\n' || c == '\t' || c == ' ';
    if (!gap) line += c;
    if (gap && !line.empty() && line.back() != ' ') line += ' ';
  }
  return std::string(TrimRightBlanks(line));
}

void HoldStandardStreams() {
  for (const int nStream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(nStream, F_GETFD) >= 0) continue;
    // The lowest free number is the stream's, as those below are taken.
    if (open("/dev/null", nStream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != nStream) return;
  }
}

void CatchInterrupts() {
  struct sigaction action {};
  action.sa_handler = NoteInterrupt;
  sigemptyset(&action.sa_mask);
  action.sa_flags = 0;  // A call that waits for a pipe's other end comes back; it is repeated where the run goes on.
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

int InterruptSignal() {
  return gnInterrupt;
}

bool UseColours() {
  return isatty(STDERR_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr;
}

void clsConsoleHost::Say(std::string_view sText) {
  EraseProgress();
  PrintError(WithoutControls(sText, kLayout) + "\n");
}

MessageAnswer clsConsoleHost::ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon,
                                          MessageButtons buttons) {
  // Nobody asked whether to stop: the signal has said so.
  if (buttons != MessageButtons::Ok && InterruptSignal() != 0) return MessageAnswer::Yes;
  const std::string title = OneLine(sTitle);
  // What is wrong with a column would come for each of its rows.
  const bool again = voice_ != Voice::Mute && buttons == MessageButtons::Ok && sLastMessage_ == sText;
  sLastMessage_ = sText;
  if (!again) Say(title.empty() ? OneLine(sText) : title + ": " + OneLine(sText));
  return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Yes;
}

void clsConsoleHost::Report(const ReportEntry& asReported) {
  ReportEntry entry = asReported;
  if (voice_ != Voice::Mute) Explain(entry);
  const bool logged = pLog_ == nullptr || pLog_->Report(entry);
  if (!logged || InterruptSignal() != 0) return;
  if ((entry.lErr == kTabsInFile && !bTabHint_) || IsToldOfColumn(entry)) return;
  const bool say = voice_ == Voice::AllEntries || (voice_ == Voice::ErrorsOnly && entry.type == EntryType::Error) ||
                   entry.lErr == kCellsFailed;
  if (say) PrintEntry(entry);
}

/// The log takes an operator that is none for every field that meets it; a person needs it once.
bool clsConsoleHost::IsToldOfColumn(const ReportEntry& entry) {
  return entry.lErr == kUnknownOperator && !columnsTold_.insert(entry.sErr2 + entry.sErr3).second;
}

void clsConsoleHost::PrintEntry(const ReportEntry& entry) {
  EraseProgress();
  std::string text = "quillon: ";
  if (nFiles_ > 1) text += sFile_ + ": ";
  const bool colours = UseColours();
  if (colours) text += entry.type == EntryType::Error ? kRed : kYellow;
  text += Unfolded(entry.sErr1);
  if (colours) text += kPlain;
  PrintError(text + EntryText(entry) + "\n");
}

void clsConsoleHost::LetEventsRun() {
  if (gnInterrupt == 0) return;
  gbPauseRequested = true;
  gbAbandonOutput = true;
}

void clsConsoleHost::SetStatusPanel(StatusBar, int, std::string_view) {}

void clsConsoleHost::StartProgress() {
  bProgress_ = isatty(STDERR_FILENO) != 0;
  started_ = drawn_ = Clock::now();
}

void clsConsoleHost::StopProgress() {
  EraseProgress();
  bProgress_ = false;
}

void clsConsoleHost::EraseProgress() {
  if (bProgressShown_) PrintError(kEraseLine);
  bProgressShown_ = false;
}

void clsConsoleHost::SetFilePlace(size_t nFile, size_t nFiles, std::string sFile) {
  sFile_ = std::move(sFile);
  nFile_ = nFile;
  nFiles_ = nFiles;
  columnsTold_.clear();
  if (nFile == 1) started_ = Clock::now();
}

void clsConsoleHost::ShowProgress(const RunProgress& progress) {
  if (!bProgress_) return;
  constexpr std::chrono::milliseconds kBetweenDraws(100);
  const Clock::time_point now = Clock::now();
  if (now - drawn_ < kBetweenDraws) return;
  drawn_ = now;

  // Of several files each counts the same: their sizes aren't known before they are opened.
  const double part = progress.lBytesTotal > 0
                          ? static_cast<double>(progress.lBytesDone) / static_cast<double>(progress.lBytesTotal)
                          : 0.0;
  const double files = static_cast<double>(std::max<size_t>(nFiles_, 1));
  const double before = static_cast<double>(std::max<size_t>(nFile_, 1) - 1);
  const double done = std::min((before + part) / files, 1.0);
  const double seconds = std::chrono::duration<double>(now - started_).count();
  constexpr int kBarWidth = 24;
  const int filled = static_cast<int>(done * kBarWidth);
  std::string line = fmt::format("[{}{}] {:3.0f} %", std::string(static_cast<size_t>(filled), '#'),
                                 std::string(static_cast<size_t>(kBarWidth - filled), ' '), done * 100);
  if (nFiles_ > 1) line += fmt::format("  file {} of {}", nFile_, nFiles_);
  if (seconds > 0 && nFiles_ <= 1)
    line += fmt::format("  {:.1f} MB/s", static_cast<double>(progress.lBytesDone) / 1e6 / seconds);
  if (done > 0) line += fmt::format("  {:.0f} s left", seconds / done - seconds);
  PrintError(std::string(kEraseLine) + line);
  bProgressShown_ = true;
}

void clsConsoleHost::Wait(int nMilliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(nMilliseconds));
}

bool clsConsoleHost::OpenPath(std::string_view sPath, OpenVerb) {
  std::string opener = "xdg-open", path(sPath);
  char* arguments[] = {opener.data(), path.data(), nullptr};
  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  posix_spawn_file_actions_addopen(&quiet, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&quiet, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const bool started = posix_spawnp(&child, opener.c_str(), &quiet, nullptr, arguments, environ) == 0;
  posix_spawn_file_actions_destroy(&quiet);
  return started;
}

std::time_t clsConsoleHost::Now() {
  return std::time(nullptr);
}

int64_t clsConsoleHost::TickMilliseconds() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch()).count();
}

}  // namespace quillon
