#include "modStrings.h"

#include <fmt/chrono.h>

#include <array>

#include "modText.h"

namespace quillon {

std::string TrimAtNull(std::string_view sText) {
  if (sText.empty()) return {};
  const std::string_view sHead = sText.substr(0, sText.size() - 1);
  return std::string(sHead.substr(0, sHead.find('\0')));
}

std::string RemoveDoubleQuotes(std::string_view sText) {
  return ReplaceAll(sText, "\"", "");
}

bool HasWildcards(std::string_view sText) {
  return sText.find_first_of("?*") != std::string_view::npos;
}

std::string ExpandDateStamps(std::string_view sText, std::time_t moment) {
  struct Stamp {
    std::string_view sToken, sPattern;
  };
  static constexpr std::array<Stamp, 9> kStamps{{{"[Y]", "{:%Y}"},
                                                 {"[M]", "{:%m}"},
                                                 {"[D]", "{:%d}"},
                                                 {"[YMD]", "{:%Y%m%d}"},
                                                 {"[MDY]", "{:%m%d%Y}"},
                                                 {"[H]", "{:%H}"},
                                                 {"[I]", "{:%M}"},
                                                 {"[S]", "{:%S}"},
                                                 {"[HIS]", "{:%H%M%S}"}}};
  std::tm parts{};
  localtime_r(&moment, &parts);
  std::string sOut(sText);
  for (const Stamp& stamp : kStamps) {
    if (sOut.find(stamp.sToken) == std::string::npos) continue;
    sOut = ReplaceAll(sOut, stamp.sToken, fmt::format(fmt::runtime(stamp.sPattern), parts));
  }
  return sOut;
}

void AppendRepeated(std::string& sText, std::string_view sPiece, int32_t lCount) {
  for (int32_t i = 0; i < lCount; ++i) sText.append(sPiece);
}

void FillString(std::string& sText, std::string_view sPiece, int32_t lCount) {
  sText.clear();
  AppendRepeated(sText, sPiece, lCount);
}

std::string ReverseString(std::string_view sText) {
  std::string sOut(sText.size(), '\0');
  size_t nTo = sText.size();
  for (size_t i = 0; i < sText.size();) {
    const size_t nBytes = Utf8CharBytes(sText, i);
    nTo -= nBytes;
    sText.copy(&sOut[nTo], nBytes, i);
    i += nBytes;
  }
  return sOut;
}

}  // namespace quillon
