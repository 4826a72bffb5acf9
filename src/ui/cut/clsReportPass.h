#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineReader.h"
#include "clsReportProof.h"
#include "modReportPreview.h"

namespace quillon {

/// Reads a whole report through the tidy tables of a recipe, a moment at a time, so that a window stays at hand: what
/// each line is, and in the end the proof.
class clsReportPass : private clsTidyListener {
 public:
  /// What a line is: 2 bytes for each line of a report.
  struct ToldLine {
    TidyLineKind kind = TidyLineKind::Outside;
    uint8_t nTable = 0;  ///< Index of the table whose row it is; tables from 255 on are counted as one
  };

  clsReportPass();
  ~clsReportPass() override;

  /// Begins. False if the recipe has other tables than tidy ones, or report or recipe can't be read.
  bool Begin(const PreviewRequest& request, std::string_view sRecipe);
  /// Reads on for about so many milliseconds. True once all is read.
  bool Step(int nMilliseconds);
  bool IsDone() const { return bDone_; }
  const std::vector<ToldLine>& Lines() const { return lines_; }
  /// Once it is done.
  const ReportProof& Proof() const { return proof_; }

 private:
  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) override;
  void Row(const TidyRecord& row) override;
  void HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) override;
  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override;
  void Finish();

  struct Reading;
  std::unique_ptr<Reading> reading_;
  std::vector<ToldLine> lines_;
  ReportProof proof_;
  bool bDone_ = false;
};

}  // namespace quillon
