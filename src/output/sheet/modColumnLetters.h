#pragma once
// Column letters. A refused value shows a message box with a stop icon, in an unattended run as well.

#include <string>
#include <string_view>

#include "clsHost.h"

namespace quillon {

// The two of one letter have no caller yet.
std::string NumToAlpha(clsHost& host, int32_t nColumn);         ///< 1 to 26; else "" and a box
int32_t AlphaToNum(clsHost& host, std::string_view sLetter);    ///< One letter, either case; else 0 and a box
std::string NumToAlpha2(clsHost& host, int32_t nColumn);        ///< 1 to 702 to "A" to "ZZ"; else "" and a box
int32_t AlphaToNum2(clsHost& host, std::string_view sLetters);  ///< One or two letters; else 0 and a box

/// Letters of any sheet column (1 to 16384), with no box: for file formats.
std::string ColumnLetters(int nColumn);
/// The sheet column of letters in either case, as a cell is addressed by them; 0, and no box, for anything else.
int ColumnOfLetters(std::string_view sLetters);

}  // namespace quillon
