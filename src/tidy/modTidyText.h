#pragma once
// Small pieces of reading keys: lists, escapes, the nearest word, column letters.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "modTidyModel.h"

namespace quillon {

/// Columns that a table may have.
constexpr size_t kMaxTidyColumns = 32767;

/// The text with its escapes (\x5B) as characters.
std::string TidyUnescaped(std::string_view sText);

/// Pieces between separators, blanks around them aside. Separators inside of double quotes part nothing.
std::vector<std::string_view> TidyPieces(std::string_view sText, char separator);
/// Alternatives between bars, unescaped; empty ones are left out.
std::vector<std::string> TidyAlternatives(std::string_view sText);

/// The word of the list that is most like the one given; "" if none is like it.
std::string_view NearestWord(std::string_view sWord, std::span<const std::string_view> words);

/// Index of a column from its letters in upper case; nothing if it is none.
std::optional<TidyColumn> TidyColumnOf(std::string_view sLetters);
std::string TidyColumnLetters(TidyColumn column);

}  // namespace quillon
