#pragma once

#include <string>
#include <string_view>

#include "clsConversionOptions.h"

namespace quillon {

/// The code page that a recipe names for its reports, [Header] CodePage; "" if it names none or isn't there.
std::string PageOfRecipe(std::string_view sRecipeFile);
/// Fills options.sCodePage from the recipe where the call named no page; "auto" where that names none either, and makes
/// it the page of this process. So it does with how reports lie in their files (see modRecipeInput.h).
/// For the commands with long options.
void TakePageOfCall(clsConversionOptions& options, std::string_view sRecipeFile);

}  // namespace quillon
