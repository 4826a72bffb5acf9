#pragma once
// The sections of recipes that tidy tables are made of, and their names.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modTidyFailures.h"
#include "modTidyModel.h"

namespace quillon {

/// The sections of a recipe's text with their keys, by the rules of section files: a line that holds "[", at least one
/// character and "]" is a header; a value ends before ";".
std::vector<TidySection> SectionsOfText(std::string_view sRecipe);

/// The first section of that name; null if there is none.
const TidySection* FindSection(const std::vector<TidySection>& sections, std::string_view sName);

/// "Heading 2.1", with sKind "Heading ", as table "2" and number 1; number 0 where they are no numbers from 1. False if
/// the name is none of that kind.
bool PartOfName(std::string_view sName, std::string_view sKind, std::string& sTable, int32_t& lPart);

/// Headings and further lines of tables that aren't there, that stand twice or are misnamed. nTables: [Table 1] to
/// [Table n] are.
bool HasStraySections(const std::vector<TidySection>& sections, int32_t nTables, TidyFault& fault);

}  // namespace quillon
