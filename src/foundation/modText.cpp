#include "modText.h"

#include <cstring>

namespace quillon {

namespace {

/// Length in bytes of the valid sequence at nPos, with its code point; 0 if there is none.
size_t ValidSequence(std::string_view s, size_t nPos, char32_t& ch) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(s[nPos + i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) {
    ch = lead;
    return 1;
  }
  const size_t nLength = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || s.size() - nPos < nLength) return 0;
  ch = lead & (0xFFU >> (nLength + 1));
  for (size_t i = 1; i < nLength; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    ch = (ch << 6) | (byte(i) & 0x3FU);
  }
  const bool bOverlong = (nLength == 3 && ch < 0x800) || (nLength == 4 && ch < 0x10000);
  if (bOverlong || ch > 0x10FFFF || (ch >= 0xD800 && ch <= 0xDFFF)) return 0;
  return nLength;
}

/// Bytes of plain ASCII in front, by whole machine words: most text that isn't ASCII is so for the larger part.
size_t AsciiWords(std::string_view s) {
  size_t i = 0;
  for (uint64_t nWord = 0; i + sizeof nWord <= s.size(); i += sizeof nWord) {
    std::memcpy(&nWord, s.data() + i, sizeof nWord);
    if ((nWord & 0x8080808080808080U) != 0) break;
  }
  return i;
}

/// Whether all whole words that begin in the first nBytes are plain ASCII. As many bytes as they take must be there.
bool AreAsciiWords(const char* p, size_t nBytes) {
  uint64_t nAll = 0;
  for (size_t i = 0; i < nBytes; i += sizeof nAll) {
    uint64_t nWord = 0;
    std::memcpy(&nWord, p + i, sizeof nWord);
    nAll |= nWord;
  }
  return (nAll & 0x8080808080808080U) == 0;
}

/// Simple case pairs of the Latin, Greek and Cyrillic blocks that towupper of the C locale doesn't know.
char32_t UpperByBlock(char32_t ch) {
  if (ch == 0xB5) return 0x39C;
  if (ch == 0xFF) return 0x178;
  if ((ch >= 0xE0 && ch <= 0xFE && ch != 0xF7)) return ch - 32;
  if (ch >= 0x100 && ch <= 0x137 && ch != 0x131) return ch & ~char32_t{1};
  if (ch == 0x131) return U'I';
  if (ch >= 0x139 && ch <= 0x148) return (ch & 1) == 0 ? ch - 1 : ch;
  if (ch >= 0x14A && ch <= 0x177) return ch & ~char32_t{1};
  if (ch == 0x17A || ch == 0x17C || ch == 0x17E) return ch - 1;
  if (ch == 0x3AC) return 0x386;
  if (ch >= 0x3AD && ch <= 0x3AF) return ch - 37;
  if (ch == 0x3C2) return 0x3A3;
  if (ch >= 0x3B1 && ch <= 0x3CB) return ch - 32;
  if (ch == 0x3CC) return 0x38C;
  if (ch == 0x3CD || ch == 0x3CE) return ch - 63;
  if (ch >= 0x430 && ch <= 0x44F) return ch - 32;
  if (ch >= 0x450 && ch <= 0x45F) return ch - 80;
  if (ch >= 0x460 && ch <= 0x481) return ch & ~char32_t{1};
  if (ch >= 0x48A && ch <= 0x4BF) return ch & ~char32_t{1};
  if (ch >= 0x4D0 && ch <= 0x52F) return ch & ~char32_t{1};
  if (ch >= 0x561 && ch <= 0x586) return ch - 48;
  if (ch >= 0x1E00 && ch <= 0x1E95) return ch & ~char32_t{1};
  if (ch >= 0x1EA0 && ch <= 0x1EFF) return ch & ~char32_t{1};
  if (ch >= 0xFF41 && ch <= 0xFF5A) return ch - 32;
  return ch;
}

template <typename Map>
std::string MapText(std::string_view sText, Map map) {
  std::string sOut;
  sOut.reserve(sText.size());
  for (size_t i = 0; i < sText.size();) {
    char32_t ch = 0;
    const size_t nLength = ValidSequence(sText, i, ch);
    if (nLength == 0) {
      sOut += sText[i++];
      continue;
    }
    AppendUtf8(map(ch), sOut);
    i += nLength;
  }
  return sOut;
}

}  // namespace

bool IsAscii(std::string_view sBytes) {
  constexpr size_t kBlock = 64;  // looked at as a whole: no word of it decides alone
  for (; sBytes.size() > kBlock; sBytes.remove_prefix(kBlock)) {
    if (!AreAsciiWords(sBytes.data(), kBlock)) return false;
  }
  if (sBytes.size() >= sizeof(uint64_t)) {
    const size_t nBehind = sBytes.size() - sizeof(uint64_t);
    return AreAsciiWords(sBytes.data(), nBehind) && AreAsciiWords(sBytes.data() + nBehind, sizeof(uint64_t));
  }
  unsigned char all = 0;
  for (const char c : sBytes) all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
  return all < 0x80;
}

bool IsValidUtf8(std::string_view sBytes) {
  for (size_t i = 0; i < sBytes.size();) {
    char32_t ch = 0;
    size_t nLength = AsciiWords(sBytes.substr(i));
    if (nLength == 0) nLength = ValidSequence(sBytes, i, ch);
    if (nLength == 0) return false;
    i += nLength;
  }
  return true;
}

size_t Utf8CharBytes(std::string_view sText, size_t nPos) {
  char32_t ch = 0;
  const size_t nLength = ValidSequence(sText, nPos, ch);
  return nLength == 0 ? 1 : nLength;
}

char32_t DecodeUtf8(std::string_view sText, size_t& nPos) {
  char32_t ch = 0;
  const size_t nLength = ValidSequence(sText, nPos, ch);
  nPos += nLength == 0 ? 1 : nLength;
  return nLength == 0 ? char32_t{0xFFFD} : ch;
}

void AppendUtf8(char32_t ch, std::string& sOut) {
  const auto put = [&](char32_t bits) { sOut += static_cast<char>(static_cast<unsigned char>(bits)); };
  if (ch < 0x80) return put(ch);
  if (ch < 0x800) {
    put(0xC0 | (ch >> 6));
  } else if (ch < 0x10000) {
    put(0xE0 | (ch >> 12));
    put(0x80 | ((ch >> 6) & 0x3F));
  } else {
    put(0xF0 | (ch >> 18));
    put(0x80 | ((ch >> 12) & 0x3F));
    put(0x80 | ((ch >> 6) & 0x3F));
  }
  put(0x80 | (ch & 0x3F));
}

size_t Utf16Count(std::string_view sUtf8) {
  if (IsAscii(sUtf8)) return sUtf8.size();
  size_t nCount = 0;
  for (size_t i = 0; i < sUtf8.size();) nCount += DecodeUtf8(sUtf8, i) < 0x10000 ? 1U : 2U;
  return nCount;
}

size_t CharCount(std::string_view sText) {
  if (IsAscii(sText)) return sText.size();
  size_t nCount = 0;
  for (size_t i = 0; i < sText.size();) {
    const size_t nAscii = AsciiWords(sText.substr(i));
    i += nAscii > 0 ? nAscii : Utf8CharBytes(sText, i);
    nCount += nAscii > 0 ? nAscii : 1;
  }
  return nCount;
}

size_t ByteOffset(std::string_view sText, size_t nChar) {
  size_t i = 0;
  for (size_t n = 1; n < nChar && i < sText.size();) {
    const size_t nAscii = AsciiWords(sText.substr(i, nChar - n));
    i += nAscii > 0 ? nAscii : Utf8CharBytes(sText, i);
    n += nAscii > 0 ? nAscii : 1;
  }
  return i;
}

std::string_view MidChars(std::string_view sText, int64_t nStart, int64_t nCount) {
  if (nCount < 1 || nStart < 1 || static_cast<uint64_t>(nStart) > sText.size()) return {};
  const size_t nFrom = ByteOffset(sText, static_cast<size_t>(nStart));
  std::string_view sRest = sText.substr(nFrom);
  if (static_cast<uint64_t>(nCount) >= sRest.size()) return sRest;
  return sRest.substr(0, ByteOffset(sRest, static_cast<size_t>(nCount) + 1));
}

std::string_view TrimLeftBlanks(std::string_view sText) {
  const size_t nFirst = sText.find_first_not_of(' ');
  return nFirst == std::string_view::npos ? std::string_view{} : sText.substr(nFirst);
}

std::string_view TrimRightBlanks(std::string_view sText) {
  return sText.substr(0, sText.find_last_not_of(' ') + 1);
}

std::string_view TrimBlanks(std::string_view sText) {
  return TrimLeftBlanks(TrimRightBlanks(sText));
}

char32_t UpperChar(char32_t ch) {
  if (ch < 0x80) return ch >= U'a' && ch <= U'z' ? ch - 32 : ch;
  return UpperByBlock(ch);
}

std::string UpperText(std::string_view sText) {
  return MapText(sText, [](char32_t ch) { return UpperChar(ch); });
}

// Upper case serves as the folding: for the one-to-one pairs both give the same classes.
char32_t FoldChar(char32_t ch) {
  return UpperChar(ch);
}

char32_t NextFolded(std::string_view sText, size_t& nPos) {
  constexpr char32_t kBehindCharacters = 0x110000;
  const auto byte = static_cast<unsigned char>(sText[nPos]);
  if (byte < 0x80) return FoldChar(static_cast<unsigned char>(sText[nPos++]));
  char32_t ch = 0;
  const size_t nLength = ValidSequence(sText, nPos, ch);
  nPos += nLength == 0 ? 1 : nLength;
  return nLength == 0 ? kBehindCharacters + byte : FoldChar(ch);
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  size_t i = 0;
  size_t j = 0;
  while (i < a.size() && j < b.size()) {
    if (NextFolded(a, i) != NextFolded(b, j)) return false;
  }
  return i == a.size() && j == b.size();
}

size_t FindNoCase(std::string_view sText, std::string_view sNeedle) {
  for (size_t i = 0; i <= sText.size(); i += i < sText.size() ? Utf8CharBytes(sText, i) : 1) {
    size_t a = i;
    size_t b = 0;
    while (b < sNeedle.size() && a < sText.size()) {
      if (NextFolded(sText, a) != NextFolded(sNeedle, b)) break;
      if (b == sNeedle.size()) return i;
    }
    if (sNeedle.empty()) return i;
  }
  return std::string_view::npos;
}

std::string ReplaceAll(std::string_view sText, std::string_view sFrom, std::string_view sTo) {
  if (sFrom.empty()) return std::string(sText);
  std::string sOut;
  size_t nDone = 0;
  for (size_t n = sText.find(sFrom); n != std::string_view::npos; n = sText.find(sFrom, nDone)) {
    sOut.append(sText.substr(nDone, n - nDone)).append(sTo);
    nDone = n + sFrom.size();
  }
  return sOut.append(sText.substr(nDone));
}

std::string ReplaceAllNoCase(std::string_view sText, std::string_view sFrom, std::string_view sTo) {
  if (sFrom.empty()) return std::string(sText);
  const size_t nChars = CharCount(sFrom);
  std::string sOut;
  std::string_view sRest = sText;
  for (size_t n = FindNoCase(sRest, sFrom); n != std::string_view::npos; n = FindNoCase(sRest, sFrom)) {
    sOut.append(sRest.substr(0, n)).append(sTo);
    sRest.remove_prefix(n);
    sRest.remove_prefix(ByteOffset(sRest, nChars + 1));
  }
  return sOut.append(sRest);
}

std::string WithoutControls(std::string_view sText, std::string_view sKept) {
  const auto within = [](char32_t ch, char32_t first, char32_t last) { return ch >= first && ch <= last; };
  std::string sOut;
  for (size_t nPos = 0; nPos < sText.size();) {
    const size_t nFrom = nPos;
    const char32_t ch = DecodeUtf8(sText, nPos);
    const bool bControl =
        ch < 0x20 || within(ch, 0x7F, 0x9F) || within(ch, 0x2028, 0x202E) || within(ch, 0x2066, 0x2069);
    const bool bKept = !bControl || sKept.find(sText[nFrom]) != std::string_view::npos;
    bKept ? sOut.append(sText.substr(nFrom, nPos - nFrom)) : sOut.append(1, '?');
  }
  return sOut;
}

}  // namespace quillon
