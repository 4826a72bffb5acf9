#include "modStandardStreams.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "clsConsoleHost.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

constexpr size_t kBlock = size_t{1} << 20;

class clsHandle {
 public:
  explicit clsHandle(int nHandle) : nHandle_(nHandle) {}
  clsHandle(const clsHandle&) = delete;
  clsHandle& operator=(const clsHandle&) = delete;
  ~clsHandle() {
    if (nHandle_ >= 0) close(nHandle_);
  }
  int Get() const { return nHandle_; }

 private:
  int nHandle_;
};

/// Waits until there is something to read; False once a signal has come.
bool WaitForInput(int nSource) {
  constexpr int kBetweenLooks = 200;  // ms; a signal just before the wait isn't slept over
  for (;;) {
    if (InterruptSignal() != 0) return false;
    pollfd source{nSource, POLLIN, 0};
    if (poll(&source, 1, kBetweenLooks) > 0) return true;
  }
}

bool CopyAll(int nSource, const std::string& sSource, int nTarget, const std::string& sTarget, Failure& failure) {
  std::vector<char> block(kBlock);
  for (;;) {
    if (!WaitForInput(nSource)) {
      failure = SystemFailure(sSource, EINTR);
      return false;
    }
    const ssize_t got = read(nSource, block.data(), block.size());
    if (got == 0) return true;
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      failure = SystemFailure(sSource, errno);
      return false;
    }
    if (!WriteHandle(nTarget, block.data(), static_cast<size_t>(got))) {
      failure = SystemFailure(sTarget, errno);
      return false;
    }
  }
}

}  // namespace

bool StandardInputToFile(const std::string& sFile, Failure& failure) {
  constexpr mode_t kOwnerOnly = 0600;
  const clsHandle target(open(sFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly));
  if (target.Get() < 0) {
    failure = SystemFailure(sFile, errno);
    return false;
  }
  return CopyAll(STDIN_FILENO, "standard input", target.Get(), sFile, failure);
}

bool FileToStandardOutput(const std::string& sFile, Failure& failure) {
  const clsHandle source(open(sFile.c_str(), O_RDONLY | O_CLOEXEC));
  if (source.Get() < 0) {
    failure = SystemFailure(sFile, errno);
    return false;
  }
  return CopyAll(source.Get(), sFile, STDOUT_FILENO, "standard output", failure);
}

}  // namespace quillon
