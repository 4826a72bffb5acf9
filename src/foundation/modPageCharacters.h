#pragma once

#include <array>
#include <string>

namespace quillon {

/// What each byte of a code page stands for; 0 for a byte that alone is no character (a hole, a multi-byte page).
using PageCharacters = std::array<char32_t, 256>;

/// By the system's name of the page. False for an unknown name.
bool FindPageCharacters(const std::string& sName, PageCharacters& characters);

}  // namespace quillon
