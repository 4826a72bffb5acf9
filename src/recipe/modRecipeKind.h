#pragma once
// What can be said of a recipe file by its text alone: its form, and why a table or a key of it isn't found.

#include <string>
#include <string_view>
#include <vector>

#include "clsSectionFile.h"

namespace quillon {

/// Why the file is no recipe of the wanted form, with the option that takes it; "" if it may be one.
std::string WrongKindOfRecipe(clsSectionFile& recipe, std::string_view sName, bool bLongWanted);

/// Why a key that should have a value reads as missing: no such section, a key in front that hides it, a "[" that ends
/// the section, a ";" that begins a comment. A sentence.
std::string WhyMissing(clsSectionFile& recipe, std::string_view sSection, std::string_view sKey);

/// What of a short recipe no run would look at or would read otherwise than it looks: sections of tables that stand
/// twice, have a number out of turn or a name that is none, and blanks around the "=" of a ruler.
std::vector<std::string> RecipeHints(clsSectionFile& recipe);

}  // namespace quillon
