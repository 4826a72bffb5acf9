#include "clsCsvSink.h"

#include <algorithm>

#include "modText.h"

namespace quillon {

namespace {

CsvRules WithSafety(CsvRules rules, bool bSafe) {
  rules.bSafe = bSafe;
  return rules;
}

}  // namespace

clsCsvSink::clsCsvSink(clsOutputFile& file, const CutPlan& plan, const CsvRules& rules, const clsCodePage& pageIn,
                       const clsCodePage& pageOut, const Options& options)
    : file_(file),
      pageIn_(pageIn),
      cutter_(plan, pageIn),
      rows_(file, WithSafety(rules, options.bSafe), pageOut),
      bSameBytes_(&pageIn == &pageOut) {
  if (options.bQuick && !options.bSafe && clsFastCsv::Serves(rules)) fast_.emplace(plan, rules);
}

bool clsCsvSink::PutRow(std::string_view sRow) {
  // A byte must be a character, and the same byte in the output.
  if (fast_ && fast_->RoomFor(sRow.size()) <= clsOutputFile::kBufferBytes &&
      ((bSameBytes_ && pageIn_.IsSingleByte()) || IsAscii(sRow))) {
    char* const pOut = file_.Reserve(fast_->RoomFor(sRow.size()));
    file_.Used(static_cast<size_t>(fast_->PutRow(sRow, pOut) - pOut));
    return true;
  }
  cutter_.Cut(sRow);
  return rows_.PutRow({cutter_.Fields(), &pageIn_});
}

}  // namespace quillon
