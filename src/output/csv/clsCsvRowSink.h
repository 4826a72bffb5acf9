#pragma once

#include <string>

#include "clsCsvWriter.h"
#include "clsRowSink.h"

namespace quillon {

/// Rows of an engine as rows of a CSV file, in the bytes of the output's code page. A failure is the file's and comes
/// out at its Commit.
class clsCsvRowSink : public clsRowSink {
 public:
  /// The file outlives the sink. The rules' separator is in the bytes of the page.
  clsCsvRowSink(clsOutputFile& file, const CsvRules& rules, const clsCodePage& pageOfOutput)
      : pageOut_(pageOfOutput), writer_(file, rules) {}

  void Begin(int64_t, std::span<const int32_t>) override {}
  bool PutRow(const SinkRow& row) override;
  int64_t CharsLost() const override { return lLost_; }

 private:
  bool IsHarmful(std::string_view sField, const clsCodePage& page);
  std::string_view ForOutput(std::string_view sField, const clsCodePage& page);

  const clsCodePage& pageOut_;
  clsCsvWriter writer_;
  std::string sUtf8_, sOut_;  ///< Kept for their memory
  int64_t lLost_ = 0;
};

}  // namespace quillon
