#include "modFileState.h"

#include <sys/stat.h>

namespace quillon {

FileState FileState::Of(const std::string& sHostPath) {
  struct stat status {};
  if (stat(sHostPath.c_str(), &status) != 0) return {};
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

}  // namespace quillon
