#include "clsWorkingFile.h"

#include <unistd.h>

#include <cstdio>
#include <random>
#include <utility>

#include "modFiles.h"
#include "modPaths.h"
#include "modSettings.h"

namespace quillon {

namespace {

/// Tells this process from any other, also on a machine that shares the data folder and numbers its processes alike.
const std::string& ProcessMark() {
  static const std::string sMark = std::to_string(getpid()) + "-" + std::to_string(std::random_device()());
  return sMark;
}

}  // namespace

clsWorkingFile::clsWorkingFile(std::string_view sBase, std::string_view sExtension)
    : sPublic_(gsAppDataFolder + std::string(sBase) + std::string(sExtension)),
      sPrivate_(gsAppDataFolder + std::string(sBase) + "." + ProcessMark() + std::string(sExtension)),
      sHostPath_(HostPath(sPrivate_)) {
  DeleteFileForced(sPublic_);
  DeleteFileForced(sPrivate_);
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
