#include "clsInHandNote.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "clsOutputFile.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modSystemIo.h"

namespace quillon {

namespace {
constexpr std::string_view kSuffix = ".now";
}  // namespace

clsInHandNote::~clsInHandNote() {
  if (nHandle_ < 0) return;
  unlink(sFile_.c_str());
  close(nHandle_);
}

void clsInHandNote::Open(const std::string& sListFile) {
  constexpr unsigned kMode = 0666;
  struct stat list {};
  sFile_ = HostPath(sListFile) + std::string(kSuffix);
  if (stat(HostPath(sListFile).c_str(), &list) != 0 || !S_ISREG(list.st_mode)) return;
  nHandle_ = OpenHandle(sFile_, O_RDWR | O_CREAT, kMode);
  struct stat mine {};
  struct stat there {};
  // The process that had it may have removed it between the two calls.
  const bool bMine = nHandle_ >= 0 && flock(nHandle_, LOCK_EX | LOCK_NB) == 0 && fstat(nHandle_, &mine) == 0 &&
                     stat(sFile_.c_str(), &there) == 0 && mine.st_ino == there.st_ino;
  bEmpty_ = mine.st_size == 0;
  if (bMine || nHandle_ < 0) return;
  close(nHandle_);
  nHandle_ = -1;
}

const PlannedFile* clsInHandNote::LeftBehind(const std::vector<PlannedFile>& files) const {
  constexpr size_t kLongestPath = size_t{1} << 16;
  constexpr std::time_t kMinute = 60;
  std::string sNoted;
  Failure ignored;
  if (nHandle_ < 0 || bEmpty_ || !ReadWholeFile(sFile_, sNoted, kLongestPath, ignored)) return nullptr;
  const auto noted = std::find_if(files.begin(), files.end(),
                                  [&](const PlannedFile& file) { return AbsolutePath(file.sOutput) == sNoted; });
  if (noted == files.end() || !IsFile(sNoted)) return nullptr;
  const std::time_t since = FileDateLastModified(sNoted) - FileDateLastModified(sFile_);
  return std::abs(since) <= kMinute ? &*noted : nullptr;
}

void clsInHandNote::Note(std::string_view sText) {
  if (nHandle_ < 0 || ftruncate(nHandle_, 0) != 0 || lseek(nHandle_, 0, SEEK_SET) != 0) return;
  bEmpty_ = !WriteHandle(nHandle_, sText.data(), sText.size()) || sText.empty();
}

void clsInHandNote::Begin(const std::string& sOutput) {
  if (nHandle_ < 0) return;
  if (!PathExists(sOutput)) {
    Note(AbsolutePath(sOutput));
  } else {
    End();
  }
}

void clsInHandNote::End() {
  if (!bEmpty_) Note({});
}

}  // namespace quillon
