#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// Keeps other processes from changing the file of that path for as long as it lives: they wait, but no longer than ten
/// seconds, as no unattended run may hang on one that was stopped. It is a file of the same name with ".lock" behind,
/// which goes with the lock; one that a killed process left is taken over. Where none can be made nothing is locked,
/// and what is then done to the file tells why. Not to be taken twice by one process.
class clsFileLock {
 public:
  explicit clsFileLock(std::string_view sPath);
  clsFileLock(const clsFileLock&) = delete;
  clsFileLock& operator=(const clsFileLock&) = delete;
  ~clsFileLock();

 private:
  std::string sLock_;  ///< Host path
  int nHandle_ = -1;
  bool bHeld_ = false;
};

}  // namespace quillon
