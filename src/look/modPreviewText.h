#pragma once
// A preview as lines of text in a fixed pitch, for terminals and for the pane of the recipe editor.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modReportPreview.h"

namespace quillon {

/// The bounds of the table, its lines with their numbers under the ruler and what they lose marked, and the cells. Only
/// the bounds if there are no rows; the fault isn't told.
std::string PreviewText(const ReportPreview& preview);
/// The bounds alone; "" for a profile, which has none.
std::string BoundsText(const ReportPreview& preview);

/// Letters of the output's columns, in the order of the cells.
std::vector<std::string> ColumnTitles(const ReportPreview& preview);

/// Text of a report for a terminal: control characters, which might steer it, become dots.
std::string ShownText(std::string_view sText);

}  // namespace quillon
