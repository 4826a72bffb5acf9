#pragma once
// UTF-8 text. Positions and lengths are characters (code points), counted from 1, unless "byte" is said.
// A byte that is no part of valid UTF-8 counts as one character and is never lost.

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

/// What a UTF-8 file may begin with; it belongs to no text.
inline constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";

constexpr bool IsAsciiDigit(char ch) {
  return ch >= '0' && ch <= '9';
}
constexpr bool IsAsciiLetter(char ch) {
  return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z');
}
bool IsAscii(std::string_view sBytes);
bool IsValidUtf8(std::string_view sBytes);

/// Bytes of the character that starts at byte nPos (at least 1, never past the end).
size_t Utf8CharBytes(std::string_view sText, size_t nPos);
/// Decodes the character at byte nPos and moves nPos behind it. An invalid byte gives U+FFFD.
char32_t DecodeUtf8(std::string_view sText, size_t& nPos);
void AppendUtf8(char32_t ch, std::string& sOut);

/// UTF-16 units that a UTF-8 text takes.
size_t Utf16Count(std::string_view sUtf8);

size_t CharCount(std::string_view sText);
/// Byte offset of character nChar (from 1); the length in bytes if the text is shorter.
size_t ByteOffset(std::string_view sText, size_t nChar);
/// Up to nCount characters from character nStart (from 1). Positions behind the end give "".
std::string_view MidChars(std::string_view sText, int64_t nStart, int64_t nCount);

/// Blanks (code 32) only.
std::string_view TrimBlanks(std::string_view sText);
std::string_view TrimLeftBlanks(std::string_view sText);
std::string_view TrimRightBlanks(std::string_view sText);

/// Upper case character by character: the number of characters never changes.
char32_t UpperChar(char32_t ch);
std::string UpperText(std::string_view sText);
/// Unicode simple folding of one character, for comparisons without regard to case.
char32_t FoldChar(char32_t ch);
/// The folded character at a byte of the text, which moves behind it. A byte that is no character equals itself alone:
/// names of two files may differ in such a byte.
char32_t NextFolded(std::string_view sText, size_t& nPos);
bool EqualNoCase(std::string_view a, std::string_view b);
/// Byte position of sNeedle in sText without regard to case, or npos.
size_t FindNoCase(std::string_view sText, std::string_view sNeedle);
/// All occurrences of sFrom (exact) become sTo.
std::string ReplaceAll(std::string_view sText, std::string_view sFrom, std::string_view sTo);
/// All occurrences of sFrom, without regard to case, become sTo.
std::string ReplaceAllNoCase(std::string_view sText, std::string_view sFrom, std::string_view sTo);
/// Control characters, and those that turn the direction of writing, become "?", all but the bytes in sKept: so a
/// file's name can neither make lines of its own in a log nor give orders to a terminal.
std::string WithoutControls(std::string_view sText, std::string_view sKept = {});

}  // namespace quillon
