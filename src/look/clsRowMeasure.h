#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modReportPreview.h"

namespace quillon {

/// Finds out what the columns of a cut lose of a row.
class clsRowMeasure {
 public:
  /// The columns in the order of the report.
  explicit clsRowMeasure(const std::vector<PreviewColumn>& columns);
  /// Fills all of the row but its line and cells from its text, and adds it to the sums.
  void Measure(PreviewRow& row, ReportPreview& preview);

 private:
  std::vector<bool> taken_;     ///< Whether a column takes the character, from 0
  std::vector<int32_t> edges_;  ///< Characters behind which a column ends or before which one begins, ascending
  std::u32string characters_;   ///< Kept for its memory
};

/// Types a cell as a workbook would and counts it.
void CountCell(std::string_view sCell, int64_t lLine, CellCensus& census);

}  // namespace quillon
