#include "clsOutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <system_error>
#include <utility>

#include "modFolderNames.h"
#include "modPaths.h"
#include "modSystemIo.h"
#include "modTurns.h"

namespace quillon {

namespace {

constexpr std::string_view kPrivatePrefix = ".quillon-";
std::string gsPrivateNameMark;

/// The file that the path names, links followed as far as they lead.
std::string ResolvedTarget(const std::string& sHostPath) {
  char* const pResolved = realpath(sHostPath.c_str(), nullptr);
  if (pResolved == nullptr) return sHostPath;
  std::string sOut = pResolved;
  std::free(pResolved);
  return sOut;
}

/// The one call that may take seconds and can't be taken in pieces, so it waits on a thread of its own. False with
/// errno.
bool SyncWithTurns(int nHandle) {
  constexpr std::chrono::milliseconds kBetweenTurns(20);
  std::future<int> sync;
  try {
    sync = std::async(std::launch::async, [nHandle] { return SyncHandle(nHandle) ? 0 : errno; });
  } catch (const std::system_error&) {
    return SyncHandle(nHandle);  // No thread to be had: then the windows wait.
  }
  while (sync.wait_for(kBetweenTurns) != std::future_status::ready) GiveTurn();
  errno = sync.get();
  return errno == 0;
}

mode_t CallersMask() {
  const mode_t mask = umask(0);
  umask(mask);
  return mask;
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
  sTarget_ = ResolvedTarget(HostPath(sPath));
  sTemporary_.clear();
  if (buffer_ == nullptr) buffer_ = std::make_unique_for_overwrite<char[]>(kBufferBytes);
  struct stat info {};
  bReplaces_ = stat(sTarget_.c_str(), &info) == 0;
  if (bReplaces_ && S_ISDIR(info.st_mode)) {
    failure = SystemFailure(sPath, EISDIR);
  } else if (bReplaces_ && !S_ISREG(info.st_mode)) {
    nHandle_ = OpenHandle(sTarget_, O_WRONLY);
    if (nHandle_ < 0) failure = SystemFailure(sPath, errno);
  } else if (bReplaces_ && ((info.st_mode & 0222) == 0 || access(sTarget_.c_str(), W_OK) != 0)) {
    // A rename would replace a file that its owner made read-only, which the system would let the superuser write.
    failure = SystemFailure(sPath, EACCES);
  } else {
    OpenTemporary(failure);
  }
  return nHandle_ >= 0;
}

bool clsOutputFile::OpenTemporary(Failure& failure) {
  const std::string sFolder = sTarget_.substr(0, sTarget_.rfind('/') + 1);
  sTemporary_ = sFolder + std::string(kPrivatePrefix) + gsPrivateNameMark + "XXXXXX";
  nHandle_ = mkostemp(sTemporary_.data(), O_CLOEXEC);
  if (nHandle_ >= 0) {
    NoteOwnChange(sTemporary_);
    return true;
  }
  failure = SystemFailure(sTarget_, errno);
  sTemporary_.clear();
  return false;
}

void clsOutputFile::Flush() {
  if (nHandle_ >= 0 && !failure_.Failed() && !WriteHandle(nHandle_, buffer_.get(), nUsed_)) {
    failure_ = SystemFailure(sTarget_, errno);
  }
  nFlushed_ += static_cast<int64_t>(nUsed_);
  nUsed_ = 0;
  // A pause leaves what is written; a run that is given up doesn't.
  if (!GiveTurn() && gbAbandonOutput && !failure_.Failed()) failure_ = StoppedFailure(sTarget_);
}

void clsOutputFile::WriteSlow(std::string_view sBytes) {
  Flush();
  if (sBytes.size() <= kBufferBytes) return Write(sBytes);
  if (nHandle_ >= 0 && !failure_.Failed() && !WriteHandle(nHandle_, sBytes.data(), sBytes.size())) {
    failure_ = SystemFailure(sTarget_, errno);
  }
  nFlushed_ += static_cast<int64_t>(sBytes.size());
}

bool clsOutputFile::Commit(Failure& failure) {
  if (nHandle_ < 0) {
    failure = failure_.Failed() ? failure_ : SystemFailure(sTarget_, EBADF);
    return false;
  }
  Flush();
  const auto fails = [&](bool bDone) {
    if (!bDone && !failure_.Failed()) failure_ = SystemFailure(sTarget_, errno);
  };
  if (!sTemporary_.empty() && !failure_.Failed()) {
    struct stat old {};
    const bool bOld = stat(sTarget_.c_str(), &old) == 0;
    fails(fchmod(nHandle_, bOld ? old.st_mode & 07777 : 0666 & ~CallersMask()) == 0);
    // The owner can be kept only with the right to give files away; without it the writer owns the new file.
    if (bOld && (old.st_uid != geteuid() || old.st_gid != getegid())) {
      [[maybe_unused]] const int nIgnored = fchown(nHandle_, old.st_uid, old.st_gid);
    }
    constexpr int64_t kSlowBytes = int64_t{8} << 20;
    if (bOld && !failure_.Failed()) fails(nFlushed_ < kSlowBytes ? SyncHandle(nHandle_) : SyncWithTurns(nHandle_));
  }
  fails(close(nHandle_) == 0);
  nHandle_ = -1;
  if (!sTemporary_.empty() && !failure_.Failed()) {
    fails(rename(sTemporary_.c_str(), sTarget_.c_str()) == 0);
    if (!failure_.Failed()) sTemporary_.clear();
    NoteOwnChange(sTarget_);
  }
  failure = failure_;
  Discard();
  return !failure.Failed();
}

void clsOutputFile::Discard() {
  if (nHandle_ >= 0) close(nHandle_);
  nHandle_ = -1;
  if (!sTemporary_.empty()) unlink(sTemporary_.c_str());
  sTemporary_.clear();
}

void SetPrivateNameMark(std::string sMark) {
  gsPrivateNameMark = std::move(sMark);
}

void RemovePrivateFiles(std::string_view sFolder, std::string_view sMark) {
  const std::string sPrefix = std::string(kPrivatePrefix) + std::string(sMark);
  std::error_code error;
  for (std::filesystem::directory_iterator entry(HostPath(sFolder.empty() ? "." : sFolder), error), end;
       !error && entry != end; entry.increment(error)) {
    if (!entry->path().filename().native().starts_with(sPrefix)) continue;
    std::error_code ignored;
    std::filesystem::remove(entry->path(), ignored);
  }
}

bool WriteWholeFile(std::string_view sPath, std::string_view sBytes, Failure& failure) {
  clsOutputFile file;
  if (!file.Open(sPath, failure)) return false;
  file.Write(sBytes);
  return file.Commit(failure);
}

bool ReadWholeFile(std::string_view sPath, std::string& sBytes, size_t nMaxBytes, Failure& failure) {
  sBytes.clear();
  const int nHandle = OpenHandle(HostPath(sPath), O_RDONLY);
  if (nHandle < 0) {
    failure = SystemFailure(sPath, errno);
    return false;
  }
  constexpr size_t kBlock = size_t{64} << 10;
  constexpr size_t kMostAtOnce = size_t{4} << 20;
  int64_t nGot = 1;
  while (nGot > 0 && sBytes.size() <= nMaxBytes) {
    if (!sBytes.empty()) GiveTurn();
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
