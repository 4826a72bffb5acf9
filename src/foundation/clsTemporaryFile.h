#pragma once

#include <string>

namespace quillon {

/// A file in the making, which nobody but its owner can read or write. It has no name where the file system knows
/// nameless files, so that nothing is left of it however the process ends. Elsewhere, and for the moment in which it
/// replaces another, it is called ".quillon-unfinished-xxxxxx" and locked; what killed runs left behind in a folder is
/// removed when the next one is named there. All operations tell a failure by False (or -1) and errno.
class clsTemporaryFile {
 public:
  clsTemporaryFile() = default;
  clsTemporaryFile(const clsTemporaryFile&) = delete;
  clsTemporaryFile& operator=(const clsTemporaryFile&) = delete;
  ~clsTemporaryFile() { Discard(); }

  /// sFolder is a host path with a "/" behind, or empty for the current folder.
  bool Open(const std::string& sFolder);
  bool IsOpen() const { return nHandle_ >= 0; }
  int Handle() const { return nHandle_; }
  /// Closes the file and gives it the target's name, in place of a file that has it. It is gone if that fails.
  bool Publish(const std::string& sTarget, bool bReplaces);
  void Discard();

 private:
  bool OpenNamed();
  bool GiveName(int nHandle);
  bool Link(int nHandle, const std::string& sPath);

  std::string sFolder_;
  std::string sName_;  ///< Host path; empty while nameless
  int nHandle_ = -1;
};

}  // namespace quillon
