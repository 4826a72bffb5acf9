#pragma once
// The text of one field in a CSV row.

#include <string>
#include <string_view>

#include "modRecipeGlobals.h"

namespace quillon {

/// Appends the field: its double quotes doubled, and in double quotes if it holds a comma or a double quote, whatever
/// the separator. With bTrimFields blanks around it go first; with bSafeCsv a field that a spreadsheet would run gets
/// an apostrophe in front and is quoted, as is one that would be read as two.
void AppendCsvField(std::string_view sUtf8, const RecipeOptions& options, std::string& sOut,
                    std::string_view sSeparator = ",");

}  // namespace quillon
