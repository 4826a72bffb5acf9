#include "modPhraseFile.h"

#include <algorithm>

#include "clsOutputFile.h"
#include "modSettings.h"
#include "modText.h"

namespace quillon::phrasefile {

namespace {

constexpr size_t kMaxBytes = size_t{16} << 20;
constexpr std::string_view kUtf16Bom = "\xFF\xFE";

const clsCodePage& PageOfText(std::string_view sBytes) {
  if (sBytes.starts_with(kUtf8Bom)) return clsCodePage::Utf8();
  const clsCodePage* const pPage = SystemCodePage();
  return pPage != nullptr ? *pPage : DetectCodePage(sBytes);
}

char32_t UnitAt(std::string_view s, size_t i) {
  return static_cast<char32_t>(static_cast<unsigned char>(s[i]) | (static_cast<unsigned char>(s[i + 1]) << 8));
}

std::string FromUtf16(std::string_view s) {
  std::string sOut;
  for (size_t i = s.starts_with(kUtf16Bom) ? 2 : 0; i + 1 < s.size(); i += 2) {
    char32_t ch = UnitAt(s, i);
    const bool bHigh = ch >= 0xD800 && ch < 0xDC00 && i + 3 < s.size();
    if (bHigh && UnitAt(s, i + 2) >= 0xDC00 && UnitAt(s, i + 2) < 0xE000) {
      ch = 0x10000 + ((ch - 0xD800) << 10) + (UnitAt(s, i + 2) - 0xDC00);
      i += 2;
    }
    AppendUtf8(ch >= 0xD800 && ch < 0xE000 ? char32_t{0xFFFD} : ch, sOut);
  }
  return sOut;
}

std::string ToUtf16(std::string_view sText) {
  std::string sOut;
  const auto put = [&](char32_t unit) {
    sOut += static_cast<char>(unit & 0xFF);
    sOut += static_cast<char>((unit >> 8) & 0xFF);
  };
  for (size_t i = 0; i < sText.size();) {
    const char32_t ch = DecodeUtf8(sText, i);
    if (ch >= 0x10000) {
      put(0xD800 + ((ch - 0x10000) >> 10));
      put(0xDC00 + ((ch - 0x10000) & 0x3FF));
    } else {
      put(ch);
    }
  }
  return sOut;
}

std::string DecodedText(std::string_view sBytes, int16_t iFormat) {
  if (iFormat == kPhrasesUtf16) return FromUtf16(sBytes);
  const clsCodePage& page = PageOfText(sBytes);
  if (sBytes.starts_with(kUtf8Bom)) sBytes.remove_prefix(kUtf8Bom.size());
  return page.ToUtf8(sBytes);
}

void ParseLine(std::string_view sLine, PhraseTable& phrases) {
  const size_t nBreak = sLine.find("\",\"");
  if (nBreak == std::string_view::npos) {
    const std::string_view sKey = sLine.size() < 2 ? std::string_view{} : sLine.substr(1, sLine.size() - 2);
    phrases.emplace(sKey, sKey);
    return;
  }
  const std::string_view sKey = sLine.substr(0, nBreak).substr(nBreak == 0 ? 0 : 1);
  std::string_view sPhrase = sLine.substr(nBreak + 3);
  sPhrase = sPhrase.substr(0, sPhrase.find("\",\""));
  // Of two pieces the last one carries the closing quote; of three the second lost it to the next break.
  const bool bLast = nBreak + 3 + sPhrase.size() == sLine.size();
  if (!sPhrase.empty() && bLast) sPhrase.remove_suffix(1);
  phrases.emplace(sKey, sPhrase);
}

}  // namespace

int16_t DetectFormat(std::string_view sBytes) {
  std::string_view sText = sBytes;
  if (sText.starts_with(kUtf8Bom)) sText.remove_prefix(kUtf8Bom.size());
  const bool bWide = sText.size() >= 2 && sText[1] == '\0';
  if (sText.starts_with('"') && !bWide) return kPhrasesText;
  return FromUtf16(sBytes.substr(0, 4)).starts_with('"') ? kPhrasesUtf16 : kPhrasesUnreadable;
}

void Parse(std::string_view sBytes, int16_t iFormat, PhraseTable& phrases) {
  const std::string sText = DecodedText(sBytes, iFormat);
  std::string_view sRest = sText;
  while (!sRest.empty()) {
    const size_t nEnd = std::min(sRest.find('\n'), sRest.size());
    std::string_view sLine = sRest.substr(0, nEnd);
    sRest.remove_prefix(std::min(nEnd + 1, sRest.size()));
    while (!sLine.empty() && sLine.back() == '\r') sLine.remove_suffix(1);
    if (TrimBlanks(sLine).empty() || sLine.starts_with("\"!")) continue;
    if (sLine.starts_with("\"****")) return;
    ParseLine(sLine, phrases);
  }
}

bool Append(std::string_view sPath, int16_t iFormat, std::string_view sKey) {
  std::string sBytes;
  Failure failure;
  if (!ReadWholeFile(sPath, sBytes, kMaxBytes, failure)) return false;
  // Half a character at the end would shift all that follows.
  if (iFormat == kPhrasesUtf16 && sBytes.size() % 2 != 0) sBytes += '\0';
  const std::string_view sEnd = iFormat == kPhrasesUtf16 ? std::string_view("\n\0", 2) : std::string_view("\n");
  const std::string sLine = (sBytes.ends_with(sEnd) ? "" : "\r\n") + ("\"" + std::string(sKey) + "\"\r\n");
  sBytes += iFormat == kPhrasesUtf16 ? ToUtf16(sLine) : PageOfText(sBytes).FromUtf8(sLine);
  return WriteWholeFile(sPath, sBytes, failure);
}

}  // namespace quillon::phrasefile
