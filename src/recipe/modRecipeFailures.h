#pragma once
// What becomes of failures in a run of sections that carries on.

#include <string_view>

#include "modFailure.h"
#include "modRecipeGlobals.h"

namespace quillon {

/// A failure that no section handles: it ends the walk of sections without a report; what was written stays and is
/// saved. Notes the reason (an English text, the key of the phrase table) and the place in the account. Always False,
/// for the caller to return.
bool EndWalk(RecipeContext& context, std::string_view sReason, std::string_view sPlace = {});
/// The same for a cell that could not be read or written.
bool EndWalkAtCell(RecipeContext& context, const Failure& failure);

/// A cell of a table that could not be written: counted, and the first one reported by -5006.
void ReportCellFailure(RecipeContext& context, const Failure& failure);
/// An output that could not be opened or saved, or a report that could not be read: kept in the account and, where no
/// reason of the file tells it, reported by -5006, which the run log takes once.
void ReportFileFailure(RecipeContext& context, const Failure& failure);

}  // namespace quillon
