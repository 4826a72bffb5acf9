#pragma once
// Tidy tables in recipes: from sections of keys, and back.
//
// Values hold no "[" and ";" as they stand: these are \x5B and \x3B; \x7C is a bar inside of a text, \x20 a blank at
// its edge. Values parted by a bar are alternatives or a list, blanks around them don't count.

#include <cstdint>
#include <string_view>
#include <vector>

#include "modTidyFailures.h"
#include "modTidyModel.h"
#include "modTidySections.h"

namespace quillon {

/// True if one of the section's keys is a tidy table's own.
bool HasTidyKey(const TidySection& section);

/// True if one of its keys may stand in a table, a heading or a further line.
bool HasKeyOfTables(const TidySection& section);

/// True if section [Table n] of a recipe is a tidy table: it has at least one tidy key by its exact name, or there is a
/// heading or further line of that number.
bool IsTidyTable(const std::vector<TidySection>& sections, int32_t lTable);

/// Reads table n with its headings and further lines. False with the first mistake: an unknown key (with the nearest
/// one that there is), a value that can't be read, a column that isn't there.
bool ReadTidyTable(const std::vector<TidySection>& sections, int32_t lTable, TidyTable& table, TidyFault& fault);

/// All tidy tables of a recipe's text: what a caller needs that has the recipe in hand. Tables that are not tidy are
/// passed over. False with the first mistake.
bool ReadTidyRecipe(std::string_view sRecipe, std::vector<TidyTable>& tables, TidyFault& fault);

/// A text as it stands in a value: "[", ";", bars and blanks at its edges escaped.
std::string TidyEscaped(std::string_view sText);

}  // namespace quillon
