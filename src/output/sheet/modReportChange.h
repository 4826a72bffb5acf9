#pragma once

#include <string_view>

#include "modFailure.h"
#include "modFileState.h"

namespace quillon {

/// Why what was read of a report since that state isn't to be trusted: it was written to, replaced or removed, so
/// rows may be missing or mixed. No failure for one that was not there.
Failure ReportChange(std::string_view sPath, const FileState& before);

}  // namespace quillon
