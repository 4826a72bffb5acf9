#pragma once

#include <string>

#include "clsCsvBlocks.h"
#include "clsCsvWriter.h"
#include "clsRowSink.h"

namespace quillon {

/// Rows of an engine as rows of a CSV file, in the bytes of the output's code page. A failure is the file's and comes
/// out at its Commit.
class clsCsvRowSink : public clsRowSink {
 public:
  enum class Road : uint8_t { Fastest, Plain };  ///< Both give the same bytes

  /// The file outlives the sink. The rules' separator is in the bytes of the page.
  clsCsvRowSink(clsOutputFile& file, const CsvRules& rules, const clsCodePage& pageOfOutput, Noted noted = {},
                Road road = Road::Fastest)
      : clsRowSink(noted),
        file_(file),
        pageOut_(pageOfOutput),
        writer_(file, rules),
        road_(road),
        blocks_(writer_.Rules(), static_cast<bool>(noted)) {}

  void Begin(int64_t, std::span<const int32_t>) override {}
  bool PutRow(const SinkRow& row) override;
  void PutBroken(const SinkRow& row) override;
  int64_t CharsLost() const override { return lLost_; }

 private:
  bool PutInBlocks(const SinkRow& row);
  bool IsHarmful(std::string_view sField, const clsCodePage& page);
  std::string_view ForOutput(std::string_view sField, const clsCodePage& page);

  clsOutputFile& file_;
  const clsCodePage& pageOut_;
  clsCsvWriter writer_;
  Road road_;
  clsCsvBlocks blocks_;
  std::string sUtf8_, sOut_;  ///< Kept for their memory
  int64_t lLost_ = 0;
};

}  // namespace quillon
