#include "clsPdfProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>
#include <vector>

#include "modEventLoop.h"
#include "modSystemIo.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr rlim_t kMostMemory = rlim_t{2} << 30;
constexpr rlim_t kMostSeconds = 600;
constexpr rlim_t kMostWritten = 64 << 10;  // its complaints
constexpr rlim_t kMostFiles = 64;
/// A page that takes longer is made to.
constexpr std::chrono::seconds kMostSilence{60};
constexpr int kTurnMilliseconds = 100;
constexpr int kInputHandle = 3;
constexpr int kNotFound = 127;

struct Limit {
  __rlimit_resource resource;
  rlim_t value;
};

/// Between fork and exec only calls that touch nothing of the process's own. Does not come back.
[[noreturn]] void BecomeReader(int nHandle, int nPipe, int nErrors, char* const* pArguments, char* const* pNames) {
  constexpr std::array kLimits{Limit{RLIMIT_AS, kMostMemory}, Limit{RLIMIT_CPU, kMostSeconds},
                               Limit{RLIMIT_FSIZE, kMostWritten}, Limit{RLIMIT_NOFILE, kMostFiles},
                               Limit{RLIMIT_CORE, 0}};
  for (const Limit& limit : kLimits) {
    const rlimit both{limit.value, limit.value};
    setrlimit(limit.resource, &both);
  }
  signal(SIGPIPE, SIG_DFL);
  const int nNull = open("/dev/null", O_RDONLY);
  const bool bReady = dup2(nNull, STDIN_FILENO) >= 0 && dup2(nPipe, STDOUT_FILENO) >= 0 &&
                      dup2(nErrors, STDERR_FILENO) >= 0 && dup2(nHandle, kInputHandle) >= 0;
  // A handle that has the number already keeps its flag.
  if (bReady && fcntl(kInputHandle, F_SETFD, 0) == 0) execvpe(pArguments[0], pArguments, pNames);
  _exit(kNotFound);
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& sText : texts) pointers.push_back(sText.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

clsPdfProcess::clsPdfProcess(std::string_view sPath, int nHandle, const PdfPages& pages)
    : sPath_(sPath), lastByte_(std::chrono::steady_clock::now()) {
  Start(nHandle, pages);
}

clsPdfProcess::~clsPdfProcess() {
  if (nChild_ > 0) kill(nChild_, SIGKILL);
  End();
}

void clsPdfProcess::Start(int nHandle, const PdfPages& pages) {
  // In the order of the file: the words are placed by their boxes, so the reader need not find out how to read the
  // page.
  std::vector<std::string> arguments{"pdftotext", "-bbox", "-raw", "-enc", "UTF-8"};
  if (pages.lFirst > 0) arguments.insert(arguments.end(), {"-f", std::to_string(pages.lFirst)});
  if (pages.lLast > 0) arguments.insert(arguments.end(), {"-l", std::to_string(pages.lLast)});
  const char* const password = std::getenv("QUILLON_PDF_PASSWORD");
  if (password != nullptr && *password != '\0') arguments.insert(arguments.end(), {"-upw", password});
  arguments.insert(arguments.end(), {"/dev/fd/" + std::to_string(kInputHandle), "-"});
  const char* const path = std::getenv("PATH");
  std::vector<std::string> names{std::string("PATH=") + (path != nullptr ? path : "/usr/bin:/bin"), "LC_ALL=C.UTF-8"};
  const std::vector<char*> argument_list = Pointers(arguments);
  const std::vector<char*> name_list = Pointers(names);

  std::array<int, 2> ends{-1, -1};
  nErrors_ = OpenNamelessFile();
  if (nErrors_ < 0 || pipe2(ends.data(), O_CLOEXEC) != 0) {
    failure_ = SystemFailure(sPath_, errno);
    return;
  }
  nPipe_ = ends[0];
  nChild_ = fork();
  if (nChild_ == 0) BecomeReader(nHandle, ends[1], nErrors_, argument_list.data(), name_list.data());
  if (nChild_ < 0) failure_ = SystemFailure(sPath_, errno);
  CloseHandle(ends[1]);
}

/// True once there is something to read, be it the end.
bool clsPdfProcess::Await() {
  for (;;) {
    pollfd waiting{nPipe_, POLLIN, 0};
    const int nReady = poll(&waiting, 1, kTurnMilliseconds);
    if (nReady > 0) return true;
    if (nReady < 0 && errno != EINTR) failure_ = SystemFailure(sPath_, errno);
    if (!RunEvents()) failure_ = StoppedFailure(sPath_);
    if (std::chrono::steady_clock::now() - lastByte_ > kMostSilence) {
      failure_ = OwnFailure(sPath_, Translate("reading the PDF takes too long or too much memory"));
    }
    if (failure_.Failed()) return false;
  }
}

size_t clsPdfProcess::Read(char* pBytes, size_t nBytes) {
  if (failure_.Failed() || nPipe_ < 0 || !Await()) return 0;
  const int64_t nGot = ReadHandle(nPipe_, pBytes, nBytes);
  if (nGot < 0) failure_ = SystemFailure(sPath_, errno);
  lastByte_ = std::chrono::steady_clock::now();
  nGiven_ += nGot > 0 ? nGot : 0;
  if (nGot == 0) End();
  return nGot > 0 ? static_cast<size_t>(nGot) : 0;
}

void clsPdfProcess::End() {
  if (nPipe_ >= 0) CloseHandle(std::exchange(nPipe_, -1));
  int nStatus = 0;
  while (nChild_ > 0 && waitpid(nChild_, &nStatus, 0) < 0 && errno == EINTR) continue;
  if (std::exchange(nChild_, -1) > 0 && !failure_.Failed()) Judge(nStatus);
  if (nErrors_ >= 0) CloseHandle(std::exchange(nErrors_, -1));
}

std::string clsPdfProcess::Complaint() const {
  std::string sText(1024, '\0');
  const int64_t nGot = ReadHandleAt(nErrors_, sText.data(), sText.size(), 0);
  sText.resize(nGot > 0 ? static_cast<size_t>(nGot) : 0);
  return sText;
}

void clsPdfProcess::Judge(int nStatus) {
  if (WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0) return;
  std::string sWhy = Translate("the PDF can't be read");
  if (WIFSIGNALED(nStatus)) {
    sWhy = Translate("reading the PDF takes too long or too much memory");
  } else if (WEXITSTATUS(nStatus) == kNotFound) {
    sWhy = Translate("a PDF is read by the program pdftotext, which is missing; install the package poppler-utils");
  } else if (Complaint().find("password") != std::string::npos) {
    sWhy = Translate("the PDF wants a password; give it in the variable QUILLON_PDF_PASSWORD");
  }
  failure_ = OwnFailure(sPath_, sWhy);
}

}  // namespace quillon
