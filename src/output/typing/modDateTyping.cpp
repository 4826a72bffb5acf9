#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "modNumberTyping.h"
#include "modSettling.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr int kFirstSerial = 61;    // 1900-03-01
constexpr int kTwoDigitPivot = 30;  // 30 and more lie in the last century
constexpr int kEpochDays = -25569;  // 1899-12-30, day 0 from March 1900 on, from 1970-01-01
constexpr size_t kMaxDateBytes = 10;

struct DatePart {
  int nValue = 0;
  size_t nDigits = 0;
  bool bLeadingZero = false;
};

/// Three runs of digits between two like separators.
bool ScanParts(std::string_view sText, std::array<DatePart, 3>& parts, char& separator) {
  size_t nPart = 0;
  for (const char ch : sText) {
    if (IsAsciiDigit(ch)) {
      DatePart& part = parts[nPart];
      if (part.nDigits == 0) part.bLeadingZero = ch == '0';
      part.nValue = part.nValue * 10 + (ch - '0');
      if (++part.nDigits > 4) return false;
      continue;
    }
    if ((ch != '/' && ch != '-' && ch != '.') || parts[nPart].nDigits == 0) return false;
    if (nPart == 0) separator = ch;
    if (ch != separator || ++nPart == parts.size()) return false;
  }
  return nPart == 2 && parts[2].nDigits > 0;
}

int DaysInMonth(int nYear, int nMonth) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool bLeap = (nYear % 4 == 0 && nYear % 100 != 0) || nYear % 400 == 0;
  return kDays[static_cast<size_t>(nMonth - 1)] + (nMonth == 2 && bLeap ? 1 : 0);
}

/// Days since 1970-01-01, counted in years that begin in March.
int DaysOfDate(int nYear, int nMonth, int nDay) {
  if (nMonth <= 2) --nYear;
  const int nEra = nYear / 400, nYearOfEra = nYear - nEra * 400;
  const int nDayOfYear = (153 * (nMonth + (nMonth > 2 ? -3 : 9)) + 2) / 5 + nDay - 1;
  return nEra * 146097 + nYearOfEra * 365 + nYearOfEra / 4 - nYearOfEra / 100 + nDayOfYear - 719468;
}

/// Which of the forms the parts have.
size_t FormOf(const std::array<DatePart, 3>& parts, char separator) {
  return (separator == '/' ? 0U : separator == '-' ? 1U : 2U) + (parts[0].nDigits == 4 ? 0U : 3U);
}

/// Where day, month and year stand among the parts; False if they have too many digits for it.
bool OrderParts(const std::array<DatePart, 3>& parts, DateReading reading, std::array<size_t, 3>& order) {
  switch (reading) {
    case DateReading::None:
      return false;
    case DateReading::YearFirst:
      order = {2, 1, 0};
      break;
    case DateReading::DayFirst:
      order = {0, 1, 2};
      break;
    case DateReading::MonthFirst:
      order = {1, 0, 2};
      break;
  }
  const size_t nYear = parts[order[2]].nDigits;
  return parts[order[0]].nDigits <= 2 && parts[order[1]].nDigits <= 2 && (nYear == 2 || nYear == 4);
}

/// The day that the parts name by an order; nothing if there is none.
std::optional<int> SerialOfParts(const std::array<DatePart, 3>& parts, const std::array<size_t, 3>& order) {
  const DatePart& year = parts[order[2]];
  const int nYear = year.nDigits == 4 ? year.nValue : year.nValue + (year.nValue < kTwoDigitPivot ? 2000 : 1900);
  return SerialOfDate(nYear, parts[order[1]].nValue, parts[order[0]].nValue);
}

/// The code of the date as written. A part of two digits that begins with no 0 fits both forms and follows the other.
void BuildDateCode(const std::array<DatePart, 3>& parts, const std::array<size_t, 3>& order, char separator,
                   std::string& sOut) {
  const DatePart &day = parts[order[0]], &month = parts[order[1]];
  const bool bPadDay = day.bLeadingZero || (day.nDigits == 2 && month.nDigits == 2);
  const bool bPadMonth = month.bLeadingZero || (month.nDigits == 2 && day.nDigits == 2);
  std::array<std::string_view, 3> codes;
  codes[order[0]] = bPadDay ? "dd" : "d";
  codes[order[1]] = bPadMonth ? "mm" : "m";
  codes[order[2]] = parts[order[2]].nDigits == 4 ? "yyyy" : "yy";
  for (size_t i = 0; i < codes.size(); ++i) {
    // Without the backslash "/" would show as the separator of the viewer's locale.
    if (i > 0) sOut.append("\\").push_back(separator);
    sOut.append(codes[i]);
  }
}

}  // namespace

DateLikeness DateLikenessOf(std::string_view sText) {
  std::array<DatePart, 3> parts;
  std::array<size_t, 3> order{};
  char separator = '\0';
  DateLikeness likeness;
  if (!ScanParts(sText, parts, separator)) return likeness;
  const auto Fits = [&](DateReading reading) {
    return sText.size() <= kMaxDateBytes && OrderParts(parts, reading, order) && SerialOfParts(parts, order);
  };
  likeness.nForm = static_cast<int>(FormOf(parts, separator));
  likeness.bMonthFirst = Fits(DateReading::MonthFirst);
  likeness.bDayFirst = Fits(DateReading::DayFirst);
  likeness.bYearFirst = Fits(DateReading::YearFirst);
  return likeness;
}

bool TypeDate(std::string_view sText, const std::array<DateReading, kDateForms>& readings, std::string& sScratch,
              TypedCell& cell) {
  std::array<DatePart, 3> parts;
  std::array<size_t, 3> order{};
  char separator = '\0';
  if (sText.size() > kMaxDateBytes || !ScanParts(sText, parts, separator)) return false;
  if (!OrderParts(parts, readings[FormOf(parts, separator)], order)) return false;
  const auto nSerial = SerialOfParts(parts, order);
  if (!nSerial) return false;

  sScratch.clear();
  BuildDateCode(parts, order, separator, sScratch);
  const size_t nCode = sScratch.size();
  sScratch.append(std::to_string(*nSerial));
  cell = TypedCell{};
  cell.kind = CellKind::Date;
  cell.nValue = *nSerial;
  cell.sFormat = std::string_view(sScratch).substr(0, nCode);
  cell.sDigits = std::string_view(sScratch).substr(nCode);
  return true;
}

std::optional<int> SerialOfDate(int nYear, int nMonth, int nDay) {
  if (nYear > 9999 || nMonth < 1 || nMonth > 12 || nDay < 1 || nDay > DaysInMonth(nYear, nMonth)) return std::nullopt;
  const int nSerial = DaysOfDate(nYear, nMonth, nDay) - kEpochDays;
  return nSerial < kFirstSerial ? std::nullopt : std::optional(nSerial);
}

}  // namespace quillon
