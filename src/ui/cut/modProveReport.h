#pragma once
// The proof of a report whose recipe takes blocks of lines, which no pass keeps while it is read.

#include <string>
#include <string_view>

#include "modProofModel.h"
#include "modReportPreview.h"

namespace quillon {

/// Reads the whole report for it, several times; runs events meanwhile (modEventLoop). Tables of any kind may be in the
/// recipe (UTF-8). False with the reason, and where the work was stopped.
bool ProveReport(const PreviewRequest& report, std::string_view sRecipe, ReportProof& proof, std::string& sFault);

/// The recipe that the marks in a report stand for, UTF-8; "" if it has none or can't be read.
std::string RecipeOfMarks(const PreviewRequest& report);

}  // namespace quillon
