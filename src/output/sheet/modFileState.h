#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "modFailure.h"

namespace quillon {

/// Tells one state of a file from another: another file in its place, or other contents.
struct FileState {
  uint64_t nDevice = 0, nNode = 0;
  int64_t nSize = 0, nSeconds = 0, nNanoseconds = 0;
  /// All zero for a file that can't be looked at.
  static FileState Of(const std::string& sHostPath);
  bool operator==(const FileState&) const = default;
};

/// Why what was read of a report since that state isn't to be trusted: it was written to, replaced or removed, so
/// rows may be missing or mixed. No failure for one that was not there.
Failure ReportChange(std::string_view sPath, const FileState& before);

}  // namespace quillon
