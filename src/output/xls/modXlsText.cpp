#include "modXlsText.h"

#include <algorithm>

#include "modText.h"
#include "modXlsBytes.h"

namespace quillon {

namespace {

void PutUnits(std::string& sOut, char32_t ch) {
  if (ch < 0x10000) return PutU16(sOut, static_cast<unsigned>(ch));
  PutU16(sOut, 0xD800 + static_cast<unsigned>((ch - 0x10000) >> 10));
  PutU16(sOut, 0xDC00 + static_cast<unsigned>((ch - 0x10000) & 0x3FF));
}

bool FitsBytes(std::string_view sUtf8) {
  for (size_t i = 0; i < sUtf8.size();)
    if (DecodeUtf8(sUtf8, i) > 0xFF) return false;
  return true;
}

}  // namespace

XlsChars AppendXlsChars(std::string_view sUtf8, std::string& sOut) {
  if (IsAscii(sUtf8)) {
    sOut.append(sUtf8);
    return {sUtf8.size(), false};
  }
  const size_t nStart = sOut.size();
  const bool bWide = !FitsBytes(sUtf8);
  for (size_t i = 0; i < sUtf8.size();) {
    const char32_t ch = DecodeUtf8(sUtf8, i);
    if (bWide)
      PutUnits(sOut, ch);
    else
      PutU8(sOut, static_cast<unsigned>(ch));
  }
  return {(sOut.size() - nStart) / (bWide ? 2 : 1), bWide};
}

void AppendUtf8OfXls(std::string_view sBytes, bool bWide, std::string& sOut) {
  if (!bWide) {
    for (const char ch : sBytes) AppendUtf8(static_cast<unsigned char>(ch), sOut);
    return;
  }
  for (size_t i = 0; i + 1 < sBytes.size(); i += 2) {
    char32_t ch = GetU16(sBytes, i);
    if (ch >= 0xD800 && ch < 0xE000) {
      const char32_t low = i + 3 < sBytes.size() ? GetU16(sBytes, i + 2) : 0;
      if (ch < 0xDC00 && low >= 0xDC00 && low < 0xE000) {
        ch = 0x10000 + ((ch - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      } else {
        ch = 0xFFFD;
      }
    }
    AppendUtf8(ch, sOut);
  }
}

void PutXlsString(std::string& sOut, std::string_view sUtf8, int nCountBytes) {
  std::string sChars;
  XlsChars chars = AppendXlsChars(sUtf8, sChars);
  chars.nCount = std::min<size_t>(chars.nCount, nCountBytes == 1 ? 0xFF : 0xFFFF);
  if (nCountBytes == 1)
    PutU8(sOut, static_cast<unsigned>(chars.nCount));
  else
    PutU16(sOut, static_cast<unsigned>(chars.nCount));
  PutU8(sOut, chars.bWide ? 1 : 0);
  sOut.append(sChars, 0, chars.nCount * (chars.bWide ? 2 : 1));
}

bool GetXlsString(std::string_view sData, size_t nOffset, int nCountBytes, std::string& sUtf8) {
  const size_t nHead = static_cast<size_t>(nCountBytes) + 1;
  if (nOffset > sData.size() || sData.size() - nOffset < nHead) return false;
  const size_t nCount = nCountBytes == 1 ? GetU8(sData, nOffset) : GetU16(sData, nOffset);
  const bool bWide = (GetU8(sData, nOffset + nHead - 1) & 1) != 0;
  const size_t nBytes = nCount * (bWide ? 2 : 1);
  if (sData.size() - nOffset - nHead < nBytes) return false;
  AppendUtf8OfXls(sData.substr(nOffset + nHead, nBytes), bWide, sUtf8);
  return true;
}

}  // namespace quillon
