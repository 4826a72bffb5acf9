#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillon {

using PhraseTable = std::unordered_map<std::string, std::string>;

/// Text formats of a language file.
constexpr int16_t kPhrasesText = 0;
constexpr int16_t kPhrasesUtf16 = -1;
constexpr int16_t kPhrasesUnreadable = 99;

/// A language file: lines "key","phrase"; "key" alone is an untranslated entry; "! begins a comment, "**** ends the
/// table. 8-bit text (in the code page of the settings, or UTF-8 with a BOM) or UTF-16 with or without one.
namespace phrasefile {

/// By the first character, which must be a double quote.
int16_t DetectFormat(std::string_view sBytes);
/// Reads the table: the first occurrence of a key wins.
void Parse(std::string_view sBytes, int16_t iFormat, PhraseTable& phrases);
/// Appends one untranslated entry to the file; a file that lacks a line end at its close gets one. False on failure.
bool Append(std::string_view sPath, int16_t iFormat, std::string_view sKey);

}  // namespace phrasefile

}  // namespace quillon
