#include "modShownNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace quillon {

namespace {

/// "12/31/2024" of a day number of the 1900 system. Its day 60, which never was, is told as 1 March.
std::string DateText(int64_t nDay, bool bDayFirst) {
  using namespace std::chrono;
  const year_month_day date(sys_days(year{1899} / 12 / 30) + days(nDay < 60 ? nDay + 1 : nDay));
  const auto nMonth = static_cast<unsigned>(date.month()), nDayOfMonth = static_cast<unsigned>(date.day());
  std::array<char, 32> text{};
  const int nLength = std::snprintf(text.data(), text.size(), "%02u/%02u/%04d", bDayFirst ? nDayOfMonth : nMonth,
                                    bDayFirst ? nMonth : nDayOfMonth, static_cast<int>(date.year()));
  return {text.data(), static_cast<size_t>(nLength)};
}

std::string TimeText(int64_t nSeconds) {
  std::array<char, 32> text{};
  const int nLength = std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", static_cast<int>(nSeconds / 3600),
                                    static_cast<int>(nSeconds / 60 % 60), static_cast<int>(nSeconds % 60));
  return {text.data(), static_cast<size_t>(nLength)};
}

/// Fifteen digits, as a spreadsheet shows a number in a cell that is wide enough.
std::string PlainNumber(double nValue) {
  std::array<char, 64> text{};
  const double nSize = std::fabs(nValue);
  const bool bFixed = nSize == 0 || (nSize >= 1e-9 && nSize < 1e15);
  int nDecimals = 14;
  if (bFixed && nSize > 0) nDecimals = std::max(0, 14 - static_cast<int>(std::floor(std::log10(nSize))));
  const auto result =
      bFixed ? std::to_chars(text.data(), text.data() + text.size(), nValue, std::chars_format::fixed,
                             nSize == 0 ? 0 : nDecimals)
             : std::to_chars(text.data(), text.data() + text.size(), nValue, std::chars_format::scientific, 14);
  std::string sText(text.data(), result.ptr);
  const size_t nExponent = sText.find('e');
  std::string sExponent = nExponent == std::string::npos ? "" : "E" + sText.substr(nExponent + 1);
  if (nExponent != std::string::npos) sText.resize(nExponent);
  if (sText.find('.') != std::string::npos) {
    while (sText.back() == '0') sText.pop_back();
    if (sText.back() == '.') sText.pop_back();
  }
  return (sText == "-0" ? "0" : sText) + sExponent;
}

}  // namespace

std::string ShownNumber(double nValue, FormatKind kind, const ShownValueOptions& options) {
  const bool bDated = kind == FormatKind::Date || kind == FormatKind::Time || kind == FormatKind::DateTime;
  const double nSerial = nValue + (options.b1904 ? 1462 : 0);
  constexpr double kLastDay = 2958466;  // Behind 9999-12-31
  if (!bDated || !(nValue >= 0 && nSerial < kLastDay)) return PlainNumber(nValue);
  const auto nTotal = static_cast<int64_t>(std::llround(nSerial * 86400));
  const int64_t nDay = nTotal / 86400, nSeconds = nTotal % 86400;
  if (kind == FormatKind::Time && nValue < 1) return TimeText(nSeconds);
  std::string sText = DateText(nDay, options.bDayFirst);
  return nSeconds == 0 ? sText : sText + " " + TimeText(nSeconds);
}

}  // namespace quillon
