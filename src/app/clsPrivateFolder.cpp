#include "clsPrivateFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "modLeftovers.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

constexpr std::string_view kPrefix = "quillon-streams-";
constexpr mode_t kOwnerOnly = 0700;

}  // namespace

clsPrivateFolder::~clsPrivateFolder() {
  std::error_code ignored;
  if (!sFolder_.empty()) std::filesystem::remove_all(sFolder_, ignored);
  if (nLock_ >= 0) close(nLock_);
}

std::string clsPrivateFolder::PathOf(std::string_view sName) {
  if (sFolder_.empty()) {
    std::error_code error;
    const std::string temporary = std::filesystem::temp_directory_path(error).string() + "/";
    if (error) return {};
    RemoveLeftovers(temporary, kPrefix);  // A killed run may have left a whole report here.
    std::string folder;
    do {
      folder = temporary + LeftoverName(kPrefix);
    } while (mkdir(folder.c_str(), kOwnerOnly) != 0 && errno == EEXIST);
    nLock_ = OpenHandle(folder, O_RDONLY | O_DIRECTORY);
    if (nLock_ < 0) return {};
    flock(nLock_, LOCK_EX);
    sFolder_ = folder;
  }
  return sFolder_ + "/" + std::string(sName);
}

}  // namespace quillon
