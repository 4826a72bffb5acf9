#pragma once

#include <string>
#include <string_view>

#include "clsConversionOptions.h"

namespace quillon {

/// Fills what the options leave unsaid of how reports lie in their files (see modInputChoices.h) from the recipe's
/// [Header] Input=: long options without their dashes, each with its value, parted by commas, such as
/// "records fixed, record-length 133, carriage-control asa". A recipe that isn't there, or has no such key, says
/// nothing. Returns recipe, key and reason where a word or value is none, else "".
std::string TakeInputOfRecipe(clsConversionOptions& options, std::string_view sRecipeFile);

/// The same, where a mistake in the key ends the run: throws UnhandledFailure with what is said of it.
void TakeInputOfRecipeOrEnd(clsConversionOptions& options, std::string_view sRecipeFile);

}  // namespace quillon
