#include "modSettling.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "modCellTyping.h"
#include "modNumberCode.h"
#include "modNumberTyping.h"
#include "modNumbers.h"

namespace quillon {

namespace {

std::string_view WithoutBlanks(std::string_view sText) {
  const size_t nStart = std::min(sText.find_first_not_of(' '), sText.size());
  return sText.substr(nStart, sText.find_last_not_of(' ') + 1 - nStart);
}

/// The letters of a form that stand for a part of the date, longest first, and what a number format calls them.
constexpr auto kFormParts = std::to_array<std::pair<std::string_view, std::string_view>>({{"YYYY", "yyyy"},
                                                                                          {"YY", "yy"},
                                                                                          {"MMM", "mmm"},
                                                                                          {"MM", "mm"},
                                                                                          {"M", "m"},
                                                                                          {"DD", "dd"},
                                                                                          {"D", "d"},
                                                                                          {"HH", "hh"},
                                                                                          {"NN", "mm"},
                                                                                          {"SS", "ss"}});

void AppendDateCode(std::string_view sForm, std::string& sOut) {
  while (!sForm.empty()) {
    const auto part = std::find_if(kFormParts.begin(), kFormParts.end(),
                                   [sForm](const auto& known) { return sForm.starts_with(known.first); });
    if (part != kFormParts.end()) {
      sOut.append(part->second);
      sForm.remove_prefix(part->first.size());
      continue;
    }
    // Without the backslash a character may show as the separator of the viewer's locale.
    sOut.append("\\").push_back(sForm.front());
    sForm.remove_prefix(1);
  }
}

}  // namespace

SettledCell SettledNumber(std::string_view sShown, std::string_view sDigits, std::string& sScratch) {
  SettledCell cell{SettledCell::Kind::Number, WithoutBlanks(sShown), sDigits, {}};
  TypedCell typed;
  std::string sTyping;
  if (cell.sShown.empty()) return cell;
  double nValue = 0;
  std::from_chars(sDigits.data(), sDigits.data() + sDigits.size(), nValue);
  if (TypeNumber(cell.sShown, true, sTyping, typed) && ShortestDouble(typed.nValue) == ShortestDouble(nValue)) {
    sScratch = typed.sFormat;
  } else {
    const size_t nPoint = sDigits.find('.');
    const size_t nDecimals = nPoint == std::string_view::npos ? 0 : sDigits.size() - nPoint - 1;
    const bool bGrouped = cell.sShown.find_first_of(",'") != std::string_view::npos && nDecimals <= kMaxDecimals;
    sScratch = bGrouped ? GroupedCode(nDecimals) : PlainCode(std::min<size_t>(nDecimals, kMaxDecimals));
  }
  cell.sFormat = sScratch;
  return cell;
}

SettledCell SettledDate(std::string_view sShown, const CalendarMoment& moment, std::string_view sForm,
                        std::string& sScratch) {
  SettledCell cell{SettledCell::Kind::Text, WithoutBlanks(sShown), {}, {}};
  const auto nSerial = SerialOfDate(moment.nYear, moment.nMonth, moment.nDay);
  if (!nSerial) return cell;
  sScratch.clear();
  AppendDateCode(sForm, sScratch);
  const size_t nCode = sScratch.size();
  constexpr double kSecondsOfDay = 86400;
  sScratch += ShortestDouble(*nSerial + moment.nSeconds / kSecondsOfDay);
  cell.kind = SettledCell::Kind::Number;
  cell.sFormat = std::string_view(sScratch).substr(0, nCode);
  cell.sDigits = std::string_view(sScratch).substr(nCode);
  return cell;
}

}  // namespace quillon
