#include "modLeftovers.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <random>

#include "modSystemIo.h"

namespace quillon {

namespace {

constexpr size_t kChance = 6;

void RemoveIfDead(const std::string& sPath) {
  // Where locks don't reach from one machine to another, what still grows is alive all the same.
  constexpr std::time_t kRestSeconds = 600;
  struct stat info {};
  if (lstat(sPath.c_str(), &info) != 0 || info.st_uid != geteuid()) return;
  if (!S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode)) return;
  if (std::time(nullptr) - info.st_mtime < kRestSeconds) return;
  const int nHandle = OpenHandle(sPath, (S_ISDIR(info.st_mode) ? O_RDONLY : O_RDWR) | O_NOFOLLOW | O_NONBLOCK);
  if (nHandle < 0) return;
  std::error_code ignored;
  if (flock(nHandle, LOCK_EX | LOCK_NB) == 0) std::filesystem::remove_all(sPath, ignored);
  close(nHandle);
}

}  // namespace

std::string LeftoverName(std::string_view sPrefix) {
  static constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device random;
  std::string sName(sPrefix);
  for (size_t i = 0; i < kChance; ++i) sName += kLetters[random() % kLetters.size()];
  return sName;
}

void RemoveLeftovers(const std::string& sFolder, std::string_view sPrefix) {
  DIR* const pFolder = opendir(sFolder.empty() ? "." : sFolder.c_str());
  if (pFolder == nullptr) return;
  while (const dirent* const pEntry = readdir(pFolder)) {
    const std::string_view sName = pEntry->d_name;
    if (sName.size() == sPrefix.size() + kChance && sName.starts_with(sPrefix)) RemoveIfDead(sFolder + pEntry->d_name);
  }
  closedir(pFolder);
}

}  // namespace quillon
