#pragma once

#include <optional>
#include <string_view>

#include "clsCsvRowSink.h"
#include "clsFastCsv.h"
#include "clsRowCutter.h"

namespace quillon {

/// Takes the rows of a conversion to CSV: cuts each and writes its fields in the output's code page.
class clsCsvSink {
 public:
  struct Options {
    bool bSafe = false;  ///< A value that a spreadsheet would run as a formula gets an apostrophe in front
    bool bQuick = true;  ///< False keeps to the plain road, which gives the same bytes
  };

  /// File and plan must outlive the sink. pageIn is that of the rows.
  clsCsvSink(clsOutputFile& file, const CutPlan& plan, const CsvRules& rules, const clsCodePage& pageIn,
             const clsCodePage& pageOut, const Options& options);

  /// Always True: a failure is the file's and comes out at its Commit.
  bool PutRow(std::string_view sRow);
  /// Characters that the output's code page lacks, each of which became "?".
  int64_t CharsLost() const { return rows_.CharsLost(); }

 private:
  clsOutputFile& file_;
  const clsCodePage& pageIn_;
  clsRowCutter cutter_;
  clsCsvRowSink rows_;
  std::optional<clsFastCsv> fast_;
  bool bSameBytes_;
};

}  // namespace quillon
