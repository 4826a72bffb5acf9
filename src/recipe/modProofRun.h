#pragma once
// The account of a run that takes loss for a failure.

#include <string>

#include "modRecipeGlobals.h"

namespace quillon {

/// Reads the report once more for the account of its lines and totals, where no tidy table kept it while it was read.
void ProveBlocks(RecipeContext& context);

/// What is lost, or doesn't agree, in words; "" if all is well.
std::string StrictFault(const FileAccount& account);

}  // namespace quillon
