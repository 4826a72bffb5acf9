#include "modFormatKinds.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "modText.h"

namespace quillon {

namespace {

constexpr auto kFixedCodes = std::to_array<std::pair<std::string_view, uint16_t>>({{"General", kGeneralFormatId},
                                                                                   {"0", 1},
                                                                                   {"0.00", 2},
                                                                                   {"#,##0", 3},
                                                                                   {"#,##0.00", 4},
                                                                                   {"0%", 9},
                                                                                   {"0.00%", 10},
                                                                                   {"0.00E+00", 11},
                                                                                   {"@", kTextFormatId}});

struct BuiltInFormats {
  uint16_t nFirst, nLast;
  FormatKind kind;
};
constexpr auto kBuiltIn = std::to_array<BuiltInFormats>({{kGeneralFormatId, kGeneralFormatId, FormatKind::General},
                                                         {9, 10, FormatKind::Percent},
                                                         {14, 17, FormatKind::Date},
                                                         {18, 21, FormatKind::Time},
                                                         {22, 22, FormatKind::DateTime},
                                                         {27, 31, FormatKind::Date},
                                                         {32, 35, FormatKind::Time},
                                                         {36, 36, FormatKind::Date},
                                                         {45, 47, FormatKind::Time},
                                                         {kTextFormatId, kTextFormatId, FormatKind::Text},
                                                         {50, 58, FormatKind::Date}});

/// The letters of the code's first section that count: no quoted, escaped or padding characters. "h" stands for an
/// elapsed time as well.
std::string CoreOfCode(std::string_view sCode) {
  std::string sCore;
  for (size_t i = 0; i < sCode.size() && sCode[i] != ';'; ++i) {
    const char ch = sCode[i];
    if (ch == '"') {
      while (++i < sCode.size() && sCode[i] != '"') {
      }
    } else if (ch == '[') {
      const size_t nClose = std::min(sCode.find(']', i), sCode.size());
      const std::string_view sInner = sCode.substr(i + 1, nClose - i - 1);
      if (!sInner.empty() && sInner.find_first_not_of("hHmMsS") == std::string_view::npos) sCore += 'h';
      i = nClose;
    } else if (ch == '\\' || ch == '_' || ch == '*') {
      ++i;
    } else {
      sCore += static_cast<char>(ch >= 'A' && ch <= 'Z' ? ch - 'A' + 'a' : ch);
    }
  }
  return sCore;
}

}  // namespace

FormatKind KindOfFormatCode(std::string_view sCode) {
  std::string sCore = CoreOfCode(sCode);
  // General with more around it, such as a unit, is a format that somebody chose.
  if (const size_t nGeneral = sCore.find("general"); nGeneral != std::string::npos)
    return EqualNoCase(sCode, "General") ? FormatKind::General : FormatKind::Number;
  for (const std::string_view sMark : {"am/pm", "a/p"}) sCore = ReplaceAll(sCore, sMark, "h");
  const bool bDate = sCore.find_first_of("dy") != std::string::npos;
  const bool bTime = sCore.find_first_of("hs") != std::string::npos;
  if (bDate && bTime) return FormatKind::DateTime;
  if (bTime) return FormatKind::Time;
  if (bDate || sCore.find('m') != std::string::npos) return FormatKind::Date;
  if (sCore.find('%') != std::string::npos) return FormatKind::Percent;
  return sCore == "@" ? FormatKind::Text : FormatKind::Number;
}

FormatKind KindOfBuiltInFormat(uint32_t nId) {
  for (const BuiltInFormats& formats : kBuiltIn)
    if (nId >= formats.nFirst && nId <= formats.nLast) return formats.kind;
  return FormatKind::Number;
}

std::string_view BuiltInFormatCode(uint32_t nId) {
  for (const auto& [sKnown, nKnown] : kFixedCodes)
    if (nKnown == nId) return sKnown;
  return {};
}

std::optional<uint16_t> BuiltInFormatId(std::string_view sCode) {
  for (const auto& [sKnown, nId] : kFixedCodes)
    if (sKnown == sCode) return nId;
  return std::nullopt;
}

}  // namespace quillon
