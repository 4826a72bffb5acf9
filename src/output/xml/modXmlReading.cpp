#include "modXmlReading.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

#include "modText.h"

namespace quillon {

namespace {

constexpr std::array<std::pair<std::string_view, char>, 5> kEntities = {
    {{"amp;", '&'}, {"lt;", '<'}, {"gt;", '>'}, {"quot;", '"'}, {"apos;", '\''}}};

bool XmlHolds(uint32_t ch) {
  return ch == 9 || ch == 10 || ch == 13 || (ch >= 0x20 && ch < 0xD800) || (ch >= 0xE000 && ch < 0xFFFE) ||
         (ch >= 0x10000 && ch < 0x110000);
}

/// The character of the entity behind the "&"; moves sRest behind it.
std::optional<char32_t> TakeEntity(std::string_view& sRest) {
  for (const auto& [sName, ch] : kEntities) {
    if (!sRest.starts_with(sName)) continue;
    sRest.remove_prefix(sName.size());
    return static_cast<char32_t>(ch);
  }
  if (!sRest.starts_with('#')) return std::nullopt;
  const bool bHex = sRest.size() > 1 && sRest[1] == 'x';
  const char* const pStart = sRest.data() + (bHex ? 2 : 1);
  const char* const pEnd = sRest.data() + sRest.size();
  if (pStart > pEnd) return std::nullopt;
  uint32_t nCode = 0;
  const auto [pBehind, error] = std::from_chars(pStart, pEnd, nCode, bHex ? 16 : 10);
  if (error != std::errc() || pBehind == pEnd || *pBehind != ';' || !XmlHolds(nCode)) return std::nullopt;
  sRest.remove_prefix(static_cast<size_t>(pBehind + 1 - sRest.data()));
  return static_cast<char32_t>(nCode);
}

/// The number of an "_xHHHH_" at the start.
std::optional<uint32_t> EscapeAt(std::string_view sText) {
  if (sText.size() < 7 || !sText.starts_with("_x") || sText[6] != '_') return std::nullopt;
  uint32_t nCode = 0;
  const auto [pBehind, error] = std::from_chars(sText.data() + 2, sText.data() + 6, nCode, 16);
  return error == std::errc() && pBehind == sText.data() + 6 ? std::optional(nCode) : std::nullopt;
}

}  // namespace

bool EntitiesAreKnown(std::string_view sRaw) {
  for (size_t n = sRaw.find('&'); n != std::string_view::npos; n = sRaw.find('&')) {
    sRaw.remove_prefix(n + 1);
    if (!TakeEntity(sRaw)) return false;
  }
  return true;
}

void AppendUnescaped(std::string_view sRaw, std::string& sOut) {
  for (size_t n = sRaw.find('&'); n != std::string_view::npos; n = sRaw.find('&')) {
    sOut += sRaw.substr(0, n);
    sRaw.remove_prefix(n + 1);
    if (const auto ch = TakeEntity(sRaw)) {
      AppendUtf8(*ch, sOut);
    } else {
      sOut += '&';
    }
  }
  sOut += sRaw;
}

void AppendEscaped(std::string_view sText, std::string& sOut) {
  for (size_t n = sText.find_first_of("&<>\""); n != std::string_view::npos; n = sText.find_first_of("&<>\"")) {
    sOut += sText.substr(0, n);
    sOut += sText[n] == '&' ? "&amp;" : sText[n] == '<' ? "&lt;" : sText[n] == '>' ? "&gt;" : "&quot;";
    sText.remove_prefix(n + 1);
  }
  sOut += sText;
}

std::string DecodeCellText(std::string_view sText) {
  std::string sOut;
  for (size_t n = sText.find("_x"); n != std::string_view::npos; n = sText.find("_x")) {
    sOut += sText.substr(0, n);
    sText.remove_prefix(n);
    const auto nCode = EscapeAt(sText);
    if (nCode) {
      AppendUtf8(static_cast<char32_t>(*nCode), sOut);
    } else {
      sOut += "_x";
    }
    sText.remove_prefix(nCode ? 7 : 2);
  }
  sOut += sText;
  return sOut;
}

}  // namespace quillon
