#pragma once

#include <array>
#include <string>

namespace quillon {

/// The entries of the lists of pad and separator characters; the index is the character's code. Entry 0, "ASCII Char",
/// is no character. Codes from 128 show the character of the system's code page.
std::array<std::string, 256> FillInCharacterSelectionListBox();

/// The page in which codes of single characters are meant: the system's, or windows-1252 where that is UTF-8 or found
/// by content.
const class clsCodePage& CharacterCodePage();

}  // namespace quillon
