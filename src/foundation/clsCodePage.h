#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillon {

/// A code page: how bytes of a file stand for characters. Objects live for the whole process and are compared by
/// address. Bytes for which a page has no character (windows-1252 has five) are the control characters of the same
/// number, or private ones from U+F780 on where the page uses that number: each byte goes in and comes out unchanged.
class clsCodePage {
 public:
  /// By name, without regard to case: windows-1252, cp437, cp850, ISO-8859-x, UTF-8 and what iconv knows of single-byte
  /// pages. Null for an unknown name, a multi-byte page other than UTF-8, and "auto" (see DetectCodePage).
  static const clsCodePage* Find(std::string_view sName);
  static const clsCodePage& Utf8();
  static const clsCodePage& Windows1252();

  const std::string& Name() const { return sName_; }
  /// A byte is a character.
  bool IsSingleByte() const { return !bUtf8_; }

  /// Appends the text of the bytes as UTF-8. UTF-8 bytes come through as they are, valid or not.
  void Decode(std::string_view sBytes, std::string& sOut) const;
  std::string ToUtf8(std::string_view sBytes) const;
  /// The character of one byte of a single-byte page.
  char32_t CharOf(unsigned char byte) const { return decode_[byte]; }

  /// Appends the bytes of a UTF-8 text. A character that the page lacks becomes "?"; returns how many did.
  size_t Encode(std::string_view sUtf8, std::string& sOut) const;
  std::string FromUtf8(std::string_view sUtf8) const;
  /// True if the page has every character of the text.
  bool CanEncode(std::string_view sUtf8) const;

 private:
  clsCodePage(std::string sName, bool bUtf8) : sName_(std::move(sName)), bUtf8_(bUtf8) {}
  void Pair(unsigned char byte, char32_t ch);
  static std::unique_ptr<clsCodePage> Load(std::string_view sName);

  std::string sName_;
  bool bUtf8_;
  std::array<char32_t, 256> decode_{};
  std::unordered_map<char32_t, unsigned char> encode_;
};

/// "auto": valid UTF-8 with a character beyond ASCII is UTF-8, anything else windows-1252.
const clsCodePage& DetectCodePage(std::string_view sBytes);

}  // namespace quillon
