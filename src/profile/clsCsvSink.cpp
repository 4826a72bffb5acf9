#include "clsCsvSink.h"

#include <algorithm>

#include "modCsvSafety.h"
#include "modText.h"

namespace quillon {

clsCsvSink::clsCsvSink(clsOutputFile& file, const CutPlan& plan, const CsvRules& rules, const clsCodePage& pageIn,
                       const clsCodePage& pageOut, const Options& options)
    : file_(file),
      pageIn_(pageIn),
      pageOut_(pageOut),
      cutter_(plan, pageIn),
      writer_(file, rules),
      nWidth_(plan.edges.back()),
      bSameBytes_(&pageIn == &pageOut),
      bSafe_(options.bSafe) {
  if (options.bQuick && !options.bSafe && clsFastCsv::Serves(rules)) fast_.emplace(plan, rules);
}

bool clsCsvSink::PutRow(std::string_view sRow) {
  // A byte must be a character, and the same byte in the output.
  if (fast_ && fast_->RoomFor(sRow.size()) <= clsOutputFile::kBufferBytes &&
      ((bSameBytes_ && pageIn_.IsSingleByte()) || IsAscii(sRow))) {
    char* const pOut = file_.Reserve(fast_->RoomFor(sRow.size()));
    file_.Used(static_cast<size_t>(fast_->PutRow(sRow, pOut) - pOut));
    cutter_.AddCharsBehind(std::max<int64_t>(0, static_cast<int64_t>(sRow.size()) - nWidth_));
    return true;
  }
  cutter_.Cut(sRow);
  for (const std::string_view sField : cutter_.Fields()) writer_.Field(ForOutput(sField), bSafe_ && IsHarmful(sField));
  writer_.EndRow();
  return true;
}

bool clsCsvSink::IsHarmful(std::string_view sField) const {
  return MayRunAsFormula(pageIn_.ToUtf8(sField));
}

std::string_view clsCsvSink::ForOutput(std::string_view sField) {
  if (bSameBytes_ || IsAscii(sField)) return sField;
  if (pageIn_.IsSingleByte()) {
    sUtf8_.clear();
    pageIn_.Decode(sField, sUtf8_);
    sField = sUtf8_;
  }
  if (!pageOut_.IsSingleByte()) return sField;
  sOut_.clear();
  lLost_ += static_cast<int64_t>(pageOut_.Encode(sField, sOut_));
  return sOut_;
}

}  // namespace quillon
