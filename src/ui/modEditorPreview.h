#pragma once

#include <string>
#include <string_view>

#include "frmExportBuilder.h"

namespace quillon {

/// What the pane below the recipe editor shows: how the recipe as it stands in the editor cuts the input file of the
/// main window. The table is the one that the caret is in: nCaret counts the bytes of the text before it. A reason in
/// words where there is nothing to show. Reads no further than what is shown.
std::string EditorPreview(frmExportBuilder& form, std::string_view sRecipe, size_t nCaret);

}  // namespace quillon
