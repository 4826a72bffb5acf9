#pragma once
// From a tidy table that was changed back to the text of its recipe. What the change doesn't touch stays as it was
// written: comments, other keys, their order.

#include <string>
#include <string_view>
#include <vector>

#include "modRecipeText.h"
#include "modTidyModel.h"

namespace quillon {

/// The edits, each upon the text that the one before it left, that make the recipe say the second table where it says
/// the first one. Both have the number of a section [Table n] that is there.
std::vector<TextEdit> TidyEdits(std::string_view sRecipe, const TidyTable& before, const TidyTable& after);
/// The edit that adds [Table n] behind all else.
TextEdit AddedTable(std::string_view sRecipe, int32_t lTable);

}  // namespace quillon
