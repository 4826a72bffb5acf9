#pragma once

#include "modLongOptions.h"

namespace quillon {

/// `quillon preview`: the first rows of a table as lines under the ruler and as cells. Returns the exit status.
int PreviewCommand(const LookRequest& request);
/// `quillon check`: what a recipe finds and what it would lose, table by table.
int CheckCommand(const LookRequest& request);
/// `quillon suggest`: a recipe for the tables that are found in a report.
int SuggestCommand(const LookRequest& request);

}  // namespace quillon
