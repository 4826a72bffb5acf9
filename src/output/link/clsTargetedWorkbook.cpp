#include "clsTargetedWorkbook.h"

#include "modFiles.h"
#include "modOutputMessages.h"

namespace quillon {

std::optional<CellRange> clsTargetedWorkbook::ActiveUsedRange() {
  if (!bNamed_) return pWorkbook_->ActiveUsedRange();
  const CellRange range = pWorkbook_->ContentOf(nMain_).used;
  return range.Empty() ? CellRange{1, 1, 1, 1} : range;
}

bool clsTargetedWorkbook::SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) {
  if (bBackup_ && IsFile(sPath) && !CopyFileOver(sPath, std::string(sPath) + "~")) {
    failure = OutputFailure(sPath, OutputMessage::BackupFailed);
    return false;
  }
  return pWorkbook_->SaveAs(sPath, lFormat, failure);
}

}  // namespace quillon
