#include "clsCsvRowSink.h"

#include "modCsvSafety.h"
#include "modText.h"

namespace quillon {

bool clsCsvRowSink::PutRow(const SinkRow& row) {
  for (const std::string_view sField : row.fields) {
    const bool bCalm = writer_.Rules().bSafe && IsHarmful(sField, *row.pPage);
    writer_.Field(ForOutput(sField, *row.pPage), bCalm);
  }
  writer_.EndRow();
  return true;
}

bool clsCsvRowSink::IsHarmful(std::string_view sField, const clsCodePage& page) {
  sUtf8_.clear();
  page.Decode(sField, sUtf8_);
  return MayRunAsFormula(sUtf8_);
}

std::string_view clsCsvRowSink::ForOutput(std::string_view sField, const clsCodePage& page) {
  if (&page == &pageOut_ || IsAscii(sField)) return sField;
  if (page.IsSingleByte()) {
    sUtf8_.clear();
    page.Decode(sField, sUtf8_);
    sField = sUtf8_;
  }
  if (!pageOut_.IsSingleByte()) return sField;
  sOut_.clear();
  lLost_ += static_cast<int64_t>(pageOut_.Encode(sField, sOut_));
  return sOut_;
}

}  // namespace quillon
