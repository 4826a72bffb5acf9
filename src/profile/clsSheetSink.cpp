#include "clsSheetSink.h"

#include "modText.h"
#include "modTranslator.h"

namespace quillon {

bool clsSheetSink::PutRow(std::string_view sRow) {
  if (++nRow_ > nMostRows_) {
    sRefusal_ = Translate("Row") + " " + std::to_string(nRow_) + ": " + Translate("a sheet of this kind ends at row") +
                " " + std::to_string(nMostRows_);
    return false;
  }
  cutter_.Cut(sRow);
  int nColumn = 0;
  for (std::string_view sField : cutter_.Fields()) {
    ++nColumn;
    if (sField.empty()) continue;
    if (page_.IsSingleByte() && !IsAscii(sField)) {
      sUtf8_.clear();
      page_.Decode(sField, sUtf8_);
      sField = sUtf8_;
    }
    Failure failure;
    if (workbook_.WriteCell(1, nRow_, nColumn, sField, failure)) continue;
    sRefusal_ = failure.sText;
    return false;
  }
  return true;
}

}  // namespace quillon
