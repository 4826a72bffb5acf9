#pragma once

#include <string>
#include <vector>

#include "clsSectionFile.h"
#include "modReportPreview.h"
#include "modTidyModel.h"

namespace quillon {

/// The tidy tables of a recipe, rulers turned into places over the report. False if it has none. A mistake in one of
/// them is the fault, and then there are no tables.
bool ReadTidyTablesOf(const PreviewRequest& request, clsSectionFile& recipe, std::vector<TidyTable>& tables,
                      std::string& sFault);

}  // namespace quillon
