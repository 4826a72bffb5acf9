#pragma once
// The text of a recipe for tables that were found.

#include <string>

#include "modTidyModel.h"

namespace quillon {

/// Letters of a column, from 0: A, B ... Z, AA.
std::string ColumnLetters(TidyColumn column);
/// The sections of table number nTable: [Table n], its headings and its further lines.
std::string RecipeOfTable(const TidyTable& table, size_t nTable);

}  // namespace quillon
