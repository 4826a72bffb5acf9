#pragma once
// How a tidy table reads a report: its first records, and what each line above the last of them is. Looks only.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsTidyReport.h"
#include "modReportPreview.h"

namespace quillon {

struct TidyPreviewLine {
  int64_t lLine = 0;
  TidyLineKind kind = TidyLineKind::Outside;  ///< For this table alone
  std::string sText;
};
struct TidyPreview {
  std::string sFault;  ///< Why there are no records; "" if there is no reason
  std::vector<std::string> names;
  std::vector<TidyPreviewLine> lines;  ///< From the line above the first row's block to that of the last record kept
  std::vector<int64_t> recordLines;
  std::vector<std::vector<std::string>> records;  ///< As a CSV file has them
  bool bMore = false;                             ///< The report goes on behind them
};

/// True if table lTable of the recipe is a tidy one.
bool HasTidyTable(clsSectionFile& recipe, int32_t lTable);
/// The first request.lRows records of table request.lTable; the report is read no further than they need.
TidyPreview PreviewTidyTable(const PreviewRequest& request, clsSectionFile& recipe);
/// The lines with their kinds, and the records below their names, in a fixed pitch.
std::string TidyPreviewText(const TidyPreview& preview);
/// "row", "further line", "joined" and so on.
std::string_view TidyKindName(TidyLineKind kind);

}  // namespace quillon
