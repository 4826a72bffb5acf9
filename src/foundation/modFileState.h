#pragma once

#include <cstdint>
#include <string>

namespace quillon {

/// Tells one state of a file from another: another file in its place, or other contents.
struct FileState {
  uint64_t nDevice = 0, nNode = 0;
  int64_t nSize = 0, nSeconds = 0, nNanoseconds = 0;
  /// All zero for a file that can't be looked at.
  static FileState Of(const std::string& sHostPath);
  bool operator==(const FileState&) const = default;
};

}  // namespace quillon
