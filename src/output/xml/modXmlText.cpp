#include "modXmlText.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "modText.h"

namespace quillon {

namespace {

constexpr uint64_t kOnes = 0x0101010101010101, kHighs = 0x8080808080808080;

constexpr uint64_t HasByte(uint64_t nWord, uint8_t ch) {
  const uint64_t nZero = nWord ^ (kOnes * ch);
  return (nZero - kOnes) & ~nZero & kHighs;
}

/// Non-zero if one of eight bytes is more than a plain character: a control, markup, "_" or beyond ASCII.
constexpr uint64_t SpecialBytes(uint64_t nWord) {
  return ((nWord - kOnes * 0x20) & kHighs) | (nWord & kHighs) | HasByte(nWord, '&') | HasByte(nWord, '<') |
         HasByte(nWord, '>') | HasByte(nWord, '_');
}

char* Put(char* p, std::string_view sPiece) {
  std::memcpy(p, sPiece.data(), sPiece.size());
  return p + sPiece.size();
}

char* PutEscape(char* p, unsigned nCode) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  p = Put(p, "_x");
  for (int nShift = 12; nShift >= 0; nShift -= 4) *p++ = kHex[(nCode >> nShift) & 0xF];
  *p++ = '_';
  return p;
}

bool IsHexDigit(char ch) {
  return IsAsciiDigit(ch) || (ch >= 'A' && ch <= 'F') || (ch >= 'a' && ch <= 'f');
}

/// "_xHHHH_" at the start of the text.
bool LooksEscaped(std::string_view sText) {
  if (sText.size() < 7 || sText[1] != 'x' || sText[6] != '_') return false;
  for (size_t i = 2; i < 6; ++i)
    if (!IsHexDigit(sText[i])) return false;
  return true;
}

/// One character beyond ASCII at nPos.
char* PutWide(char* p, std::string_view sText, size_t& nPos) {
  const size_t nStart = nPos;
  const char32_t ch = DecodeUtf8(sText, nPos);
  if (ch == 0xFFFE || ch == 0xFFFF) return PutEscape(p, ch);
  if (ch == 0xFFFD) return Put(p, "\xEF\xBF\xBD");
  return Put(p, sText.substr(nStart, nPos - nStart));
}

char* PutSpecial(char* p, std::string_view sText, size_t& nPos) {
  const char ch = sText[nPos];
  if ((static_cast<unsigned char>(ch) & 0x80) != 0) return PutWide(p, sText, nPos);
  const size_t nAt = nPos++;
  if (ch == '&') return Put(p, "&amp;");
  if (ch == '<') return Put(p, "&lt;");
  if (ch == '>') return Put(p, "&gt;");
  // A carriage return would come back as a line feed.
  if (static_cast<unsigned char>(ch) < 0x20 && ch != '\t' && ch != '\n') return PutEscape(p, static_cast<unsigned>(ch));
  if (ch == '_' && LooksEscaped(sText.substr(nAt))) return PutEscape(p, '_');
  *p = ch;
  return p + 1;
}

}  // namespace

char* PutXmlText(char* p, std::string_view sText) {
  size_t nPos = 0;
  while (nPos < sText.size()) {
    const size_t nLeft = sText.size() - nPos;
    uint64_t nWord = kOnes * 'a';
    std::memcpy(&nWord, sText.data() + nPos, nLeft < 8 ? nLeft : 8);
    if (SpecialBytes(nWord) == 0) {
      std::memcpy(p, &nWord, 8);
      const size_t nTaken = nLeft < 8 ? nLeft : 8;
      p += nTaken;
      nPos += nTaken;
      continue;
    }
    for (const size_t nEnd = nPos + (nLeft < 8 ? nLeft : 8); nPos < nEnd;) p = PutSpecial(p, sText, nPos);
  }
  return p;
}

void AppendXmlText(std::string& sOut, std::string_view sText) {
  const size_t nStart = sOut.size();
  sOut.resize(nStart + sText.size() * kXmlBytesPerByte + 8);
  const char* const pEnd = PutXmlText(sOut.data() + nStart, sText);
  sOut.resize(static_cast<size_t>(pEnd - sOut.data()));
}

void AppendXmlAttribute(std::string& sOut, std::string_view sText) {
  for (size_t nPos = 0; nPos < sText.size();) {
    const size_t nStop = sText.find_first_of("\"\t\n", nPos);
    AppendXmlText(sOut, sText.substr(nPos, nStop - nPos));
    if (nStop == std::string_view::npos) return;
    // White space in an attribute would come back as blanks.
    sOut += sText[nStop] == '"' ? "&quot;" : sText[nStop] == '\t' ? "&#9;" : "&#10;";
    nPos = nStop + 1;
  }
}

bool NeedsSpacePreserved(std::string_view sText) {
  const auto IsSpace = [](char ch) { return ch == ' ' || ch == '\t' || ch == '\n'; };
  return !sText.empty() && (IsSpace(sText.front()) || IsSpace(sText.back()));
}

}  // namespace quillon
