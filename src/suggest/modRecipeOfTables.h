#pragma once
// The text of a recipe for tables that were found.

#include <string>
#include <string_view>

#include "modTidyModel.h"

namespace quillon {

/// Letters of a column, from 0: A, B ... Z, AA.
std::string ColumnLetters(TidyColumn column);
/// The sections of table number nTable: [Table n], its headings and its further lines.
std::string RecipeOfTable(const TidyTable& table, size_t nTable);

/// The section of a heading.
std::string RecipeOfHeading(const TidyPart& heading, size_t nTable, size_t nHeading);
/// Sections as nobody reads them: "[-Table 2]". Taking the sign away switches a section on.
std::string SwitchedOff(std::string_view sSections);

}  // namespace quillon
