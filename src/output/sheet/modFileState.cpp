#include "modFileState.h"

#include <sys/stat.h>

#include "modOutputMessages.h"
#include "modPaths.h"

namespace quillon {

FileState FileState::Of(const std::string& sHostPath) {
  struct stat status {};
  if (stat(sHostPath.c_str(), &status) != 0) return {};
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

Failure ReportChange(std::string_view sPath, const FileState& before) {
  if (before == FileState() || FileState::Of(HostPath(sPath)) == before) return {};
  return OutputFailure(sPath, OutputMessage::ReportChanged);
}

}  // namespace quillon
