#pragma once
// The run of an export specification into one output file.

#include <cstdint>

#include "modRecipeGlobals.h"

namespace quillon {

/// Runs the sections of the context's recipe, whose reports are in its file slots, into gsOutputFile: format code 6
/// writes a CSV report, any other a workbook. All steps carry on: one that fails is abandoned and the next one taken,
/// and what was written is saved.
///
/// Fills the context's account, whose former content goes. An output that can't be opened or saved and a report that
/// can't be read are told by -5006, and by bOutputWritten False or failure in the account, whose text is for standard
/// error. With gbAbandonOutput set no output is kept.
void RunRecipe(RecipeContext& context, int32_t lFormat);

}  // namespace quillon
