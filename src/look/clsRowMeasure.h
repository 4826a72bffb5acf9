#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsCutMeasure.h"
#include "modReportPreview.h"

namespace quillon {

/// Finds out what the columns of a cut lose of rows, as a run does.
class clsRowMeasure {
 public:
  explicit clsRowMeasure(const std::vector<PreviewColumn>& columns,
                         clsCutMeasure::Touching touching = clsCutMeasure::Touching::IsCut);
  /// Fills all of the row but its line and cells from its text, and counts it. Bars and labels between the columns are
  /// left out of a row, but no loss of all rows.
  void Measure(PreviewRow& row, ReportPreview& preview);
  /// Puts the sums of all rows into the preview.
  void Finish(ReportPreview& preview) const;

 private:
  clsCutMeasure measure_;
};

/// Types a cell as a workbook would and counts it.
void CountCell(std::string_view sCell, int64_t lLine, CellCensus& census);

}  // namespace quillon
