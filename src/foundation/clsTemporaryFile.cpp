#include "clsTemporaryFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <utility>

#include "modFolderNames.h"
#include "modLeftovers.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

constexpr std::string_view kUnfinished = ".quillon-unfinished-";
constexpr unsigned kOwnerOnly = 0600;
constexpr int kTries = 100;

std::string ProcessPath(int nHandle) {
  return "/proc/self/fd/" + std::to_string(nHandle);
}

/// A batch writes folder after folder, so remembering one is enough to look into each once.
void RemoveLeftoversOnce(const std::string& sFolder) {
  static std::string sLast = "?";
  if (std::exchange(sLast, sFolder) != sFolder) RemoveLeftovers(sFolder, kUnfinished);
}

}  // namespace

bool clsTemporaryFile::Open(const std::string& sFolder) {
  Discard();
  sFolder_ = sFolder;
  nHandle_ = OpenHandle(sFolder.empty() ? "." : sFolder, O_TMPFILE | O_RDWR, kOwnerOnly);
  // It gets its name through the process's own folder, which a bare system may not have.
  if (nHandle_ >= 0 && access(ProcessPath(nHandle_).c_str(), F_OK) == 0) return true;
  Discard();
  return OpenNamed();
}

bool clsTemporaryFile::OpenNamed() {
  RemoveLeftoversOnce(sFolder_);
  for (int i = 0; i < kTries; ++i) {
    sName_ = sFolder_ + LeftoverName(kUnfinished);
    nHandle_ = OpenHandle(sName_, O_RDWR | O_CREAT | O_EXCL, kOwnerOnly);
    if (nHandle_ < 0) sName_.clear();
    if (nHandle_ < 0 && errno == EEXIST) continue;
    if (nHandle_ < 0) return false;
    flock(nHandle_, LOCK_EX);
    NoteOwnChange(sName_);
    struct stat info {};
    if (fstat(nHandle_, &info) != 0 || info.st_nlink > 0) return true;
    close(std::exchange(nHandle_, -1));  // Another process took it for a dead one's before it was locked.
  }
  sName_.clear();
  errno = EAGAIN;
  return false;
}

bool clsTemporaryFile::Link(int nHandle, const std::string& sPath) {
  return linkat(AT_FDCWD, ProcessPath(nHandle).c_str(), AT_FDCWD, sPath.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool clsTemporaryFile::GiveName(int nHandle) {
  RemoveLeftoversOnce(sFolder_);
  flock(nHandle, LOCK_EX);
  for (int i = 0; i < kTries; ++i) {
    sName_ = sFolder_ + LeftoverName(kUnfinished);
    if (Link(nHandle, sName_)) return true;
    sName_.clear();
    if (errno != EEXIST) return false;
  }
  return false;
}

bool clsTemporaryFile::Publish(const std::string& sTarget, bool bReplaces) {
  // The lock and the nameless file live on in the second handle; what only the closing tells comes from the first.
  const int nHandle = fcntl(nHandle_, F_DUPFD_CLOEXEC, 0);
  bool bDone = CloseHandle(std::exchange(nHandle_, -1)) && nHandle >= 0;
  const bool bNew = bDone && sName_.empty() && !bReplaces && Link(nHandle, sTarget);
  if (bDone && !bNew) {
    bDone = !sName_.empty() || GiveName(nHandle);
    bDone = bDone && rename(sName_.c_str(), sTarget.c_str()) == 0;
    if (bDone) sName_.clear();
  }
  const int nError = errno;
  if (nHandle >= 0) close(nHandle);
  Discard();
  if (bDone) NoteOwnChange(sTarget);
  errno = nError;
  return bDone;
}

void clsTemporaryFile::Discard() {
  const int nError = errno;
  if (nHandle_ >= 0) close(std::exchange(nHandle_, -1));
  if (!sName_.empty()) unlink(sName_.c_str());
  sName_.clear();
  errno = nError;
}

}  // namespace quillon
