#include "clsInHandNote.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

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

std::vector<const PlannedFile*> clsInHandNote::LeftBehind(const std::vector<PlannedFile>& files) const {
  constexpr size_t kLongestNote = size_t{16} << 20;
  constexpr std::time_t kMinute = 60;
  std::string sNoted;
  Failure ignored;
  std::vector<const PlannedFile*> left;
  if (nHandle_ < 0 || bEmpty_ || !ReadWholeFile(sFile_, sNoted, kLongestNote, ignored)) return left;
  std::map<std::string, std::time_t, std::less<>> noted;
  for (size_t nAt = 0, nEnd = 0; (nEnd = sNoted.find('\0', nAt)) != std::string::npos; nAt = nEnd + 1) {
    const size_t nPath = sNoted.find(' ', nAt) + 1;
    if (nPath > nAt && nPath < nEnd) noted[sNoted.substr(nPath, nEnd - nPath)] = std::atoll(sNoted.c_str() + nAt);
  }
  for (const PlannedFile& file : files) {
    const auto found = noted.empty() ? noted.end() : noted.find(AbsolutePath(file.sOutput));
    if (found == noted.end() || !IsFile(file.sOutput)) continue;
    if (std::abs(FileDateLastModified(file.sOutput) - found->second) <= kMinute) left.push_back(&file);
  }
  return left;
}

/// Seconds, blank, path and a zero byte for each.
void clsInHandNote::Write() {
  std::string sText;
  for (const auto& [sPath, since] : inHand_) sText += std::to_string(since) + " " + sPath + '\0';
  if (nHandle_ < 0 || ftruncate(nHandle_, 0) != 0 || lseek(nHandle_, 0, SEEK_SET) != 0) return;
  bEmpty_ = !WriteHandle(nHandle_, sText.data(), sText.size()) || sText.empty();
}

void clsInHandNote::Begin(const std::vector<std::string>& outputs) {
  if (nHandle_ < 0) return;
  for (const std::string& sOutput : outputs) {
    if (!PathExists(sOutput)) inHand_[AbsolutePath(sOutput)] = std::time(nullptr);
  }
  if (!inHand_.empty() || !bEmpty_) Write();
}

void clsInHandNote::End(const std::string& sOutput) {
  if (inHand_.empty()) return;
  inHand_.erase(AbsolutePath(sOutput));
  if (inHand_.empty() && !bEmpty_) Write();
}

}  // namespace quillon
