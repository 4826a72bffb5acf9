#include "modReportChange.h"

#include "modOutputMessages.h"
#include "modPaths.h"

namespace quillon {

Failure ReportChange(std::string_view sPath, const FileState& before) {
  if (before == FileState() || FileState::Of(HostPath(sPath)) == before) return {};
  return OutputFailure(sPath, OutputMessage::ReportChanged);
}

}  // namespace quillon
