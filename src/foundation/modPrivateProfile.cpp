// The INI services on a path: one key or a batch, with a lock against other processes.

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "clsIniFile.h"
#include "modPaths.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

/// Holds the lock file beside a settings file for its scope. The lock goes with the process, however it ends. A place
/// where no lock file can be made is written to without one: the write itself will tell.
class clsFileLock {
 public:
  explicit clsFileLock(std::string_view sPath)
      : nHandle_(OpenHandle(HostPath(sPath) + ".lock", O_RDWR | O_CREAT, 0600)) {
    if (nHandle_ >= 0) {
      while (flock(nHandle_, LOCK_EX) != 0 && errno == EINTR) {
      }
    }
  }
  clsFileLock(const clsFileLock&) = delete;
  clsFileLock& operator=(const clsFileLock&) = delete;
  ~clsFileLock() {
    if (nHandle_ >= 0) close(nHandle_);
  }

 private:
  int nHandle_;
};

}  // namespace

std::string GetPrivateProfileString(std::string_view sPath, std::string_view sSection, std::string_view sKey,
                                    std::string_view sDefault) {
  clsIniFile file;
  Failure ignored;
  file.Load(sPath, ignored);
  return file.Get(sSection, sKey, sDefault);
}

int32_t GetPrivateProfileInt(std::string_view sPath, std::string_view sSection, std::string_view sKey,
                             int32_t lDefault) {
  clsIniFile file;
  Failure ignored;
  file.Load(sPath, ignored);
  return file.GetInt(sSection, sKey, lDefault);
}

bool WritePrivateProfileString(std::string_view sPath, std::string_view sSection, std::string_view sKey,
                               std::string_view sValue) {
  return WritePrivateProfileStrings(sPath, {{std::string(sSection), std::string(sKey), std::string(sValue)}});
}

bool WritePrivateProfileStrings(std::string_view sPath, const std::vector<IniEntry>& entries,
                                const clsCodePage* pPage) {
  const clsFileLock lock(sPath);
  clsIniFile file(pPage);
  Failure failure;
  if (!file.Load(sPath, failure)) return false;
  const std::string sBefore = file.Bytes();
  for (const IniEntry& entry : entries) file.Set(entry.sSection, entry.sKey, entry.sValue);
  return file.Bytes() == sBefore || file.Save(sPath, failure);
}

}  // namespace quillon
