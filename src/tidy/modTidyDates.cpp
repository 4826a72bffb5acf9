// Dates of modTidyValues.

#include <array>
#include <cstdint>

#include "modText.h"
#include "modTidyValues.h"

namespace quillon {

namespace {

constexpr std::array<std::string_view, 12> kMonths{"JANUARY",   "FEBRUARY", "MARCH",    "APRIL",
                                                   "MAY",       "JUNE",     "JULY",     "AUGUST",
                                                   "SEPTEMBER", "OCTOBER",  "NOVEMBER", "DECEMBER"};
/// What a date without a form of its own may look like.
constexpr std::array<std::string_view, 8> kUsualForms{"YYYY-MM-DD", "DD.MM.YYYY", "DD.MM.YY",    "MM/DD/YYYY",
                                                      "MM/DD/YY",   "DD-MMM-YY",  "DD MMM YYYY", "DD/MM/YYYY"};

/// A date in the making.
struct DateParts {
  int nYear = -1, nMonth = -1, nDay = -1;
  int nHour = -1, nMinute = 0, nSecond = 0;
  std::string_view sFraction;
};

/// Reads a text along a form, both from the left.
class clsDateScan {
 public:
  clsDateScan(std::string_view sText, std::string_view sForm) : s_(sText), sForm_(sForm) {}

  bool Scan(DateParts& parts) {
    while (!sForm_.empty()) {
      if (!Step(parts)) return false;
    }
    if (parts.nHour >= 0 && s_.starts_with('.')) {
      size_t n = 1;
      while (n < s_.size() && IsAsciiDigit(s_[n])) ++n;
      if (n > 1) parts.sFraction = s_.substr(0, n);
      s_.remove_prefix(n);
    }
    return TrimBlanks(s_).empty();
  }

 private:
  bool Step(DateParts& parts) {
    const char ch = sForm_.front();
    size_t nRun = 1;
    while (nRun < sForm_.size() && sForm_[nRun] == ch) ++nRun;
    if (std::string_view("DMYHNS").find(ch) == std::string_view::npos) {
      sForm_.remove_prefix(1);
      return Literal(ch);
    }
    sForm_.remove_prefix(nRun);
    switch (ch) {
      case 'D':
        return Number(2, parts.nDay);
      case 'M':
        return nRun >= 3 ? Month(parts.nMonth) : Number(2, parts.nMonth);
      case 'Y':
        return Year(nRun, parts.nYear);
      case 'H':
        return Number(2, parts.nHour);
      case 'N':
        return Number(2, parts.nMinute);
      default:
        return Number(2, parts.nSecond);
    }
  }

  bool Literal(char ch) {
    if (ch == ' ') {
      s_ = TrimLeftBlanks(s_);
      return true;
    }
    if (!s_.starts_with(ch)) return false;
    s_.remove_prefix(1);
    return true;
  }

  /// Digits directly behind one another stand in full width; before another character a leading zero may lack, or be a
  /// blank.
  bool Number(size_t nWidth, int& nValue) {
    const bool bAdjoins = !sForm_.empty() && std::string_view("DMYHNS").find(sForm_.front()) != std::string_view::npos;
    size_t n = 0;
    nValue = 0;
    if (s_.starts_with(' ')) {
      s_.remove_prefix(1);
      n = 1;
    }
    const size_t nBlanks = n;
    for (; n < nWidth && !s_.empty() && IsAsciiDigit(s_.front()); ++n) {
      nValue = nValue * 10 + (s_.front() - '0');
      s_.remove_prefix(1);
    }
    return n > nBlanks && (!bAdjoins || n == nWidth);
  }

  bool Year(size_t nRun, int& nValue) {
    // At the end a year of one digit was cut, and would be another one; in front its zero may be a blank.
    const bool bCut = nRun < 4 && sForm_.empty() && s_.size() < 2;
    if (bCut || !Number(nRun >= 4 ? 4 : 2, nValue)) return false;
    if (nRun >= 4) return nValue >= 1000;
    nValue += nValue < 50 ? 2000 : 1900;
    return true;
  }

  bool Month(int& nValue) {
    for (size_t i = 0; i < kMonths.size(); ++i) {
      for (const std::string_view sName : {kMonths[i], kMonths[i].substr(0, 3)}) {
        if (s_.size() < sName.size() || !EqualNoCase(s_.substr(0, sName.size()), sName)) continue;
        s_.remove_prefix(sName.size());
        nValue = static_cast<int>(i) + 1;
        return true;
      }
    }
    return false;
  }

  std::string_view s_, sForm_;
};

bool IsOfCalendar(const DateParts& parts) {
  constexpr std::array<int, 12> kDays = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (parts.nMonth < 1 || parts.nMonth > 12 || parts.nDay < 1) return false;
  const bool bLeap = (parts.nYear % 4 == 0 && parts.nYear % 100 != 0) || parts.nYear % 400 == 0;
  if (parts.nMonth == 2 && parts.nDay == 29 && !bLeap) return false;
  return parts.nDay <= kDays[static_cast<size_t>(parts.nMonth) - 1] && parts.nHour < 24 && parts.nMinute < 60 &&
         parts.nSecond < 61;
}

char* PutTwo(int nValue, char* pOut) {
  pOut[0] = static_cast<char>('0' + nValue / 10);
  pOut[1] = static_cast<char>('0' + nValue % 10);
  return pOut + 2;
}

/// Two digits behind a character that parts them from what stands before.
char* PutPart(char separator, int nValue, char* pOut) {
  *pOut = separator;
  return PutTwo(nValue, pOut + 1);
}

/// What most dates are: digits in full width in the places of the form's letters, the rest as there.
bool ReadCommonDate(std::string_view s, std::string_view sForm, DateParts& parts) {
  if (s.size() != sForm.size()) return false;
  enum : uint8_t { Day, Month, Year };
  std::array<int, 3> values{};
  std::array<int, 3> digits{};
  for (size_t i = 0; i < s.size(); ++i) {
    const char cForm = sForm[i];
    const auto nDigit = static_cast<unsigned>(s[i] - '0');
    const int nPart = cForm == 'D' ? Day : cForm == 'M' ? Month : cForm == 'Y' ? Year : -1;
    if (nPart < 0) {
      if (s[i] != cForm || IsAsciiLetter(cForm)) return false;
      continue;
    }
    const auto n = static_cast<size_t>(nPart);
    // A form may ask for more digits than any part has.
    if (nDigit > 9 || ++digits[n] > 4) return false;
    values[n] = values[n] * 10 + static_cast<int>(nDigit);
  }
  parts.nDay = values[Day];
  parts.nMonth = values[Month];
  parts.nYear = values[Year] + (digits[Year] > 2 ? 0 : values[Year] < 50 ? 2000 : 1900);
  return digits[Day] == 2 && digits[Month] == 2 && (digits[Year] == 2 || (digits[Year] == 4 && parts.nYear >= 1000));
}

bool ReadByForm(std::string_view sText, std::string_view sForm, std::string& sPlain) {
  DateParts parts;
  if (!ReadCommonDate(sText, sForm, parts)) {
    parts = DateParts();
    if (!clsDateScan(sText, sForm).Scan(parts)) return false;
  }
  if (!IsOfCalendar(parts)) return false;
  std::array<char, 20> plain;
  char* pOut = PutTwo(parts.nYear % 100, PutTwo(parts.nYear / 100, plain.data()));
  pOut = PutPart('-', parts.nMonth, pOut);
  pOut = PutPart('-', parts.nDay, pOut);
  if (parts.nHour >= 0) {
    pOut = PutPart(' ', parts.nHour, pOut);
    pOut = PutPart(':', parts.nMinute, pOut);
    pOut = PutPart(':', parts.nSecond, pOut);
  }
  sPlain.assign(plain.data(), static_cast<size_t>(pOut - plain.data()));
  if (!parts.sFraction.empty()) sPlain.append(parts.sFraction);
  return true;
}

}  // namespace

bool ReadTidyDate(std::string_view sText, std::string_view sForm, std::string& sPlain) {
  const std::string_view s = TrimBlanks(sText);
  if (s.empty()) return false;
  if (!sForm.empty()) return ReadByForm(s, sForm, sPlain);
  for (const std::string_view sUsual : kUsualForms) {
    if (ReadByForm(s, sUsual, sPlain)) return true;
  }
  return false;
}

}  // namespace quillon
