#include "clsSheetRowSink.h"

#include "modText.h"
#include "modTranslator.h"

namespace quillon {

void clsSheetRowSink::Begin(int64_t lRow, std::span<const int32_t> columns) {
  lRow_ = lRow;
  columns_.assign(columns.begin(), columns.end());
}

bool clsSheetRowSink::PutRow(const SinkRow& row) {
  if (lRow_ > options_.lMostRows) {
    return refused_({-1, Translate("Row") + " " + std::to_string(lRow_) + ": " +
                             Translate("a sheet of this kind ends at row") + " " + std::to_string(options_.lMostRows)});
  }
  bool bGoesOn = true;
  for (size_t i = 0; bGoesOn && i < row.fields.size(); ++i) bGoesOn = PutField(i, row.fields[i], *row.pPage);
  ++lRow_;
  return bGoesOn;
}

bool clsSheetRowSink::PutField(size_t nField, std::string_view sField, const clsCodePage& page) {
  Note(sField);
  if (options_.bTrim) sField = TrimBlanks(sField);
  if (sField.empty() && !options_.bWriteEmpty) return true;
  if (page.IsSingleByte() && !IsAscii(sField)) {
    sUtf8_.clear();
    page.Decode(sField, sUtf8_);
    sField = sUtf8_;
  }
  const int32_t nColumn = nField < columns_.size() ? columns_[nField] : static_cast<int32_t>(nField) + 1;
  Failure failure;
  return workbook_.WriteCell(options_.nSheet, lRow_, nColumn, sField, failure) || refused_(failure);
}

}  // namespace quillon
