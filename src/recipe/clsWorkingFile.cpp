#include "clsWorkingFile.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <random>
#include <set>
#include <utility>

#include "modFiles.h"
#include "modPaths.h"
#include "modSettings.h"

namespace quillon {

namespace {

/// Tells this process from any other, its copies too, also on a machine that shares the data folder and numbers its
/// processes alike.
const std::string& ProcessMark() {
  static pid_t nMarked = 0;
  static std::string sMark;
  if (std::exchange(nMarked, getpid()) != getpid()) {
    sMark = std::to_string(getpid()) + "-" + std::to_string(std::random_device()());
  }
  return sMark;
}

/// Takes away what killed runs left under private names: a day old, and their process is gone. One on another machine
/// that shares the folder needs its own for seconds.
void RemoveLeftovers(std::string_view sBase, std::string_view sExtension) {
  constexpr std::time_t kDay = 24 * 60 * 60;
  std::error_code error;
  std::filesystem::directory_iterator entries(HostPath(gsAppDataFolder), error);
  for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
    const std::string sPath = entries->path().string();
    const std::string sName = entries->path().filename().string();
    const bool bOurs = sName.starts_with(std::string(sBase) + ".") && sName.ends_with(sExtension);
    const int nProcess = bOurs ? std::atoi(sName.c_str() + sBase.size() + 1) : 0;
    if (nProcess <= 0 || std::time(nullptr) - FileDateLastModified(sPath) < kDay) continue;
    if (kill(nProcess, 0) != 0 && errno == ESRCH) DeleteFileForced(sPath);
  }
}

}  // namespace

clsWorkingFile::clsWorkingFile(std::string_view sBase, std::string_view sExtension)
    : sPublic_(gsAppDataFolder + std::string(sBase) + std::string(sExtension)),
      sPrivate_(gsAppDataFolder + std::string(sBase) + "." + ProcessMark() + std::string(sExtension)),
      sHostPath_(HostPath(sPrivate_)) {
  DeleteFileForced(sPublic_);
  DeleteFileForced(sPrivate_);
  static std::set<std::string> looked;  // once a process for each folder and base
  if (looked.insert(sPublic_).second) RemoveLeftovers(sBase, sExtension);
}

clsWorkingFile::clsWorkingFile(clsWorkingFile&& other) noexcept {
  *this = std::move(other);
}

clsWorkingFile& clsWorkingFile::operator=(clsWorkingFile&& other) noexcept {
  if (sHostPath_ != other.sHostPath_) Remove();
  sPublic_ = std::exchange(other.sPublic_, {});
  sPrivate_ = std::exchange(other.sPrivate_, {});
  sHostPath_ = std::exchange(other.sHostPath_, {});
  return *this;
}

clsWorkingFile::~clsWorkingFile() {
  Remove();
}

void clsWorkingFile::Publish() {
  if (std::rename(sHostPath_.c_str(), HostPath(sPublic_).c_str()) != 0) Remove();
  sHostPath_.clear();
}

void clsWorkingFile::Remove() noexcept {
  if (!sHostPath_.empty()) unlink(sHostPath_.c_str());
}

}  // namespace quillon
