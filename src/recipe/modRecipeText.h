#pragma once
// The text of a short recipe as an editor holds it: where its tables and values stand, found as the reader of recipes
// finds them. Texts are UTF-8, places in it are bytes.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// nLength bytes from nFrom become sNew.
struct TextEdit {
  size_t nFrom = 0, nLength = 0;
  std::string sNew;

  std::string Applied(std::string_view sText) const;
};

/// Number of the table that a place lies in: that of the last header of a table on its line or above. Above all of them
/// it is the first one's; 1 if there are none.
int32_t TableAt(std::string_view sRecipe, size_t nPlace);
/// Where the line of the header [Table n] begins; nothing if there is none.
std::optional<size_t> PlaceOfTable(std::string_view sRecipe, int32_t lTable);

/// The edit that makes sValue the value of a key of [Table n]. A comment behind the old value stays, and all else. A
/// key that the reader doesn't find gets a line of its own directly below the header, where nothing can hide it.
/// Nothing if there is no such section.
std::optional<TextEdit> SetTableKey(std::string_view sRecipe, int32_t lTable, std::string_view sKey,
                                    std::string_view sValue);

}  // namespace quillon
