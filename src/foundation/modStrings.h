#pragma once
// Small operations on strings with decisions of their own.

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

namespace quillon {

/// Copies up to a NUL or to the last byte, which is never copied: "abc" gives "ab". For text from fixed buffers. No
/// caller yet.
std::string TrimAtNull(std::string_view sText);
std::string RemoveDoubleQuotes(std::string_view sText);
/// True if the text holds "?" or "*".
bool HasWildcards(std::string_view sText);
/// Replaces [Y] [M] [D] [YMD] [MDY] [H] [I] [S] [HIS] by the given moment's parts; upper-case tokens only.
std::string ExpandDateStamps(std::string_view sText, std::time_t moment);
/// Appends sPiece lCount times; a count below 1 changes nothing.
void AppendRepeated(std::string& sText, std::string_view sPiece, int32_t lCount);
/// Sets sText to lCount times sPiece. No caller yet.
void FillString(std::string& sText, std::string_view sPiece, int32_t lCount);
/// The characters in reverse order. No caller yet.
std::string ReverseString(std::string_view sText);

}  // namespace quillon
