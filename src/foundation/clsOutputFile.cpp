#include "clsOutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <future>
#include <utility>

#include "modEventLoop.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

/// Makes the path that of the file which it names, links followed, whether that file is there or not. False with errno.
bool ResolveTarget(std::string& sPath, bool bIsThere) {
  constexpr int kMostLinks = 40;
  struct stat info {};
  // A file to be made, and no link that leads nowhere yet: what lies above it needn't be looked at.
  if (!bIsThere && lstat(sPath.c_str(), &info) != 0 && errno == ENOENT) return true;
  for (int i = 0; i < kMostLinks; ++i) {
    if (char* const pResolved = realpath(sPath.c_str(), nullptr)) {
      sPath = pResolved;
      std::free(pResolved);
      return true;
    }
    if (errno != ENOENT) return false;
    std::array<char, PATH_MAX> link{};
    const ssize_t nLink = readlink(sPath.c_str(), link.data(), link.size());
    if (nLink < 0) return true;
    const std::string_view sLink(link.data(), static_cast<size_t>(nLink));
    sPath = (sLink.starts_with('/') ? "" : sPath.substr(0, sPath.rfind('/') + 1)) + std::string(sLink);
  }
  errno = ELOOP;
  return false;
}

/// The one call that may take seconds and can't be taken in pieces, so it waits on a thread of its own. False with
/// errno.
bool SyncWithEvents(int nHandle) {
  constexpr std::chrono::milliseconds kBetweenEvents(20);
  std::future<int> sync;
  try {
    sync = std::async(std::launch::async, [nHandle] { return SyncHandle(nHandle) ? 0 : errno; });
  } catch (const std::system_error&) {
    return SyncHandle(nHandle);  // No thread to be had: then the windows wait.
  }
  while (sync.wait_for(kBetweenEvents) != std::future_status::ready) RunEvents();
  errno = sync.get();
  return errno == 0;
}

mode_t CallersMask() {
  const mode_t mask = umask(0);
  umask(mask);
  return mask;
}

/// A file system without permissions has none to set.
bool SetMode(int nHandle, mode_t mode) {
  return fchmod(nHandle, mode) == 0 || errno == EPERM || errno == ENOSYS || errno == EOPNOTSUPP;
}

bool TakeAccessOf(const std::string& sOld, const struct stat& old, int nHandle) {
  constexpr const char* kAccessList = "system.posix_acl_access";
  struct stat made {};
  if (fstat(nHandle, &made) != 0) return false;
  const bool bOwner = old.st_uid == made.st_uid || fchown(nHandle, old.st_uid, static_cast<gid_t>(-1)) == 0;
  const bool bGroup = old.st_gid == made.st_gid || fchown(nHandle, static_cast<uid_t>(-1), old.st_gid) == 0;
  std::array<char, 8192> list{};
  const ssize_t nList = getxattr(sOld.c_str(), kAccessList, list.data(), list.size());
  mode_t mode = old.st_mode & 0777;
  // With a list the bits of the group tell the most that anyone in the list may do.
  if (!bGroup || nList > 0) mode &= ~mode_t{070} | (mode & 07) << 3;
  if (!SetMode(nHandle, mode)) return false;
  if (nList <= 0 || !bOwner || !bGroup ||
      fsetxattr(nHandle, kAccessList, list.data(), static_cast<size_t>(nList), 0) != 0) {
    fremovexattr(nHandle, kAccessList);
  }
  return true;
}

}  // namespace

clsOutputFile::~clsOutputFile() {
  Discard();
}

bool clsOutputFile::Open(std::string_view sPath, Failure& failure) {
  Discard();
  failure_ = {};
  nUsed_ = 0;
  nFlushed_ = 0;
  sTarget_ = HostPath(sPath);
  if (buffer_ == nullptr) buffer_ = std::make_unique_for_overwrite<char[]>(kBufferBytes);
  errno = 0;
  OpenTarget();
  if (!IsOpen()) failure = SystemFailure(sPath, errno);
  return IsOpen();
}

void clsOutputFile::OpenTarget() {
  struct stat info {};
  // Asked before links are followed by hand: the system may know that this one was laid as a trap.
  const bool bReplaces = stat(sTarget_.c_str(), &info) == 0;
  if ((!bReplaces && errno != ENOENT) || !ResolveTarget(sTarget_, bReplaces)) return;
  if (bReplaces && S_ISDIR(info.st_mode)) {
    errno = EISDIR;
  } else if (bReplaces && !S_ISREG(info.st_mode)) {
    nStraight_ = OpenHandle(sTarget_, O_WRONLY);
  } else if (bReplaces && ((info.st_mode & 0222) == 0 || access(sTarget_.c_str(), W_OK) != 0)) {
    // A rename would replace a file that its owner made read-only, which the system would let the superuser write.
    errno = EACCES;
  } else {
    temporary_.Open(sTarget_.substr(0, sTarget_.rfind('/') + 1));
  }
}

void clsOutputFile::Flush() {
  if (IsOpen() && !failure_.Failed() && !WriteHandle(Handle(), buffer_.get(), nUsed_)) {
    failure_ = SystemFailure(sTarget_, errno);
  }
  nFlushed_ += static_cast<int64_t>(nUsed_);
  nUsed_ = 0;
  // A pause leaves what is written; a run that is given up doesn't.
  if (!RunEvents() && gbAbandonOutput && !failure_.Failed()) failure_ = StoppedFailure(sTarget_);
}

void clsOutputFile::WriteSlow(std::string_view sBytes) {
  Flush();
  if (sBytes.size() <= kBufferBytes) return Write(sBytes);
  if (IsOpen() && !failure_.Failed() && !WriteHandle(Handle(), sBytes.data(), sBytes.size())) {
    failure_ = SystemFailure(sTarget_, errno);
  }
  nFlushed_ += static_cast<int64_t>(sBytes.size());
}

/// The new file, complete, becomes the target. False with errno.
bool clsOutputFile::TakeItsPlace() {
  constexpr int64_t kSlowBytes = int64_t{8} << 20;
  const auto sync = nFlushed_ < kSlowBytes ? SyncHandle : SyncWithEvents;
  struct stat old {};
  const bool bOld = stat(sTarget_.c_str(), &old) == 0;
  const bool bAccess =
      bOld ? TakeAccessOf(sTarget_, old, temporary_.Handle()) : SetMode(temporary_.Handle(), 0666 & ~CallersMask());
  return bAccess && (!bOld || sync(temporary_.Handle())) && temporary_.Publish(sTarget_, bOld);
}

bool clsOutputFile::Commit(Failure& failure) {
  errno = EBADF;
  bool bDone = IsOpen();
  if (bDone) Flush();
  if (bDone && !failure_.Failed()) {
    bDone = temporary_.IsOpen() ? TakeItsPlace() : CloseHandle(std::exchange(nStraight_, -1));
  }
  if (!bDone && !failure_.Failed()) failure_ = SystemFailure(sTarget_, errno);
  failure = failure_;
  Discard();
  return !failure.Failed();
}

void clsOutputFile::Discard() {
  if (nStraight_ >= 0) close(std::exchange(nStraight_, -1));
  temporary_.Discard();
}

bool WriteWholeFile(std::string_view sPath, std::string_view sBytes, Failure& failure) {
  clsOutputFile file;
  if (!file.Open(sPath, failure)) return false;
  file.Write(sBytes);
  return file.Commit(failure);
}

bool ReadWholeFile(std::string_view sPath, std::string& sBytes, size_t nMaxBytes, Failure& failure) {
  sBytes.clear();
  int64_t nSize = 0;
  const int nHandle = OpenOrdinaryFile(sPath, nSize, failure);
  if (nHandle < 0) return false;
  constexpr size_t kBlock = size_t{64} << 10;
  constexpr size_t kMostAtOnce = size_t{4} << 20;
  int64_t nGot = 1;
  while (nGot > 0 && sBytes.size() <= nMaxBytes) {
    if (!sBytes.empty()) RunEvents();
    const size_t nOld = sBytes.size();
    sBytes.resize(nOld + std::clamp(nOld, kBlock, kMostAtOnce));
    nGot = ReadHandle(nHandle, sBytes.data() + nOld, sBytes.size() - nOld);
    sBytes.resize(nOld + static_cast<size_t>(std::max<int64_t>(nGot, 0)));
  }
  if (nGot < 0) failure = SystemFailure(sPath, errno);
  if (sBytes.size() > nMaxBytes) failure = OwnFailure(sPath, "File is too large");
  close(nHandle);
  return !failure.Failed();
}

}  // namespace quillon
