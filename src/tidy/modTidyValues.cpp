#include "modTidyValues.h"

#include <array>

#include "modText.h"

namespace quillon {

namespace {

constexpr int kMostDigits = 18;
constexpr std::array<std::string_view, 4> kCurrencies{"$", "\u00A3", "\u20AC", "\u00A5"};

/// Takes the sign of a currency off the front or the end; blanks there go as well.
bool TakeCurrency(std::string_view& s) {
  for (const std::string_view sSign : kCurrencies) {
    if (s.starts_with(sSign)) {
      s = TrimLeftBlanks(s.substr(sSign.size()));
      return true;
    }
    if (s.ends_with(sSign)) {
      s = TrimRightBlanks(s.substr(0, s.size() - sSign.size()));
      return true;
    }
  }
  return false;
}

/// "1/ 12,345" and "12,345 1/".
std::string_view WithoutFootnote(std::string_view s) {
  if (s.size() > 3 && IsAsciiDigit(s[0]) && s[1] == '/' && (s[2] == ' ' || s[2] == '$'))
    return TrimLeftBlanks(s.substr(2));
  if (s.size() > 3 && s.ends_with('/') && IsAsciiDigit(s[s.size() - 2]) && s[s.size() - 3] == ' ') {
    return TrimRightBlanks(s.substr(0, s.size() - 2));
  }
  return s;
}

/// All that stands around the figures of a number.
struct Around {
  bool bNegative = false;
  bool bSigned = false;

  bool Sign(bool bMinus) {
    if (bSigned) return false;
    bSigned = true;
    bNegative = bMinus;
    return true;
  }
};

bool TakeSignBehind(std::string_view& s, Around& around) {
  const char last = s.back();
  if (last == '-' || last == '+') {
    s = TrimRightBlanks(s.substr(0, s.size() - 1));
    return around.Sign(last == '-');
  }
  const bool bCredit = s.ends_with("CR") || s.ends_with("Cr");
  if (s.size() > 2 && (bCredit || s.ends_with("DR") || s.ends_with("Dr"))) {
    s = TrimRightBlanks(s.substr(0, s.size() - 2));
    return around.Sign(bCredit);
  }
  return true;
}

bool TakePercent(std::string_view& s) {
  if (!s.ends_with('%')) return false;
  s = TrimRightBlanks(s.substr(0, s.size() - 1));
  return true;
}

/// Takes off signs, currency, percent sign and stars. False if they stand as in no number.
bool TakeAround(std::string_view& s, Around& around) {
  s = WithoutFootnote(s);
  bool bCurrency = TakeCurrency(s);
  bool bPercent = TakePercent(s);
  if (s.size() > 2 && s.front() == '(' && s.back() == ')') {
    s = TrimBlanks(s.substr(1, s.size() - 2));
    around.Sign(true);
  }
  while (!s.empty() && s.front() == '*') s.remove_prefix(1);
  while (!s.empty() && s.back() == '*') s.remove_suffix(1);
  s = TrimBlanks(s);
  if (s.empty()) return false;
  bPercent = bPercent || TakePercent(s);
  if (s.empty() || !TakeSignBehind(s, around) || s.empty()) return false;
  if (!bPercent) TakePercent(s);
  if (s.front() == '-' || s.front() == '+') {
    if (!around.Sign(s.front() == '-')) return false;
    s = TrimLeftBlanks(s.substr(1));
  }
  if (!bCurrency) bCurrency = TakeCurrency(s);
  if (!s.empty() && bCurrency && !around.bSigned && (s.front() == '-' || s.front() == '+')) {
    around.Sign(s.front() == '-');
    s = TrimLeftBlanks(s.substr(1));
  }
  return !s.empty();
}

/// The figures of a number as they are read.
struct Figures {
  std::array<char, 400> digits{};
  size_t nDigits = 0;  ///< Without leading zeros of the whole part
  size_t nDecimals = 0;
  bool bAny = false;
  bool bPoint = false;
  int nGroup = -1;  ///< Digits since the last separator; -1 without one
  std::string_view sExponent;

  bool Digit(char ch) {
    bAny = true;
    if (bPoint) ++nDecimals;
    if (!bPoint && nGroup >= 0 && ++nGroup > 3) return false;
    if (nDigits == 0 && ch == '0' && !bPoint) return true;
    if (nDigits == digits.size()) return false;
    digits[nDigits++] = ch;
    return true;
  }
  bool Separator(size_t nBefore) {
    if (bPoint || !bAny || (nGroup < 0 ? nBefore > 3 : nGroup != 3)) return false;
    nGroup = 0;
    return true;
  }
  /// There are digits, and no group of them is too short.
  bool IsWhole() const { return bAny && (bPoint || nGroup < 0 || nGroup == 3); }
};

bool ScanExponent(std::string_view s, Figures& figures) {
  const char first = s.front();
  if (first != 'E' && first != 'e' && first != 'D' && first != 'd') return false;
  size_t i = 1;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
  const size_t nFrom = i;
  while (i < s.size() && IsAsciiDigit(s[i])) ++i;
  if (i == nFrom || i != s.size() || i - nFrom > 4) return false;
  figures.sExponent = s.substr(1);
  return true;
}

bool ScanFigures(std::string_view s, bool bComma, Figures& figures) {
  const char point = bComma ? ',' : '.';
  const char separator = bComma ? '.' : ',';
  for (size_t i = 0; i < s.size(); ++i) {
    const char ch = s[i];
    if (IsAsciiDigit(ch)) {
      if (!figures.Digit(ch)) return false;
    } else if (ch == point) {
      if (figures.bPoint || (figures.nGroup >= 0 && figures.nGroup != 3)) return false;
      figures.bPoint = true;
    } else if (ch == separator || (bComma && ch == ' ')) {
      if (!figures.Separator(i)) return false;
    } else {
      return figures.IsWhole() && ScanExponent(s.substr(i), figures);
    }
  }
  return figures.IsWhole();
}

void WritePlain(const Figures& figures, bool bNegative, std::string& sOut) {
  const std::string_view sDigits(figures.digits.data(), figures.nDigits);
  const bool bZero = sDigits.find_first_not_of('0') == std::string_view::npos;
  sOut.clear();
  if (bNegative && !bZero) sOut.push_back('-');
  const size_t nWhole = figures.nDigits > figures.nDecimals ? figures.nDigits - figures.nDecimals : 0;
  sOut.append(nWhole > 0 ? sDigits.substr(0, nWhole) : std::string_view("0"));
  if (figures.nDecimals > 0) {
    sOut.push_back('.');
    sOut.append(figures.nDecimals - (figures.nDigits - nWhole), '0');
    sOut.append(sDigits.substr(nWhole));
  }
  if (!figures.sExponent.empty()) sOut.append(1, 'E').append(figures.sExponent);
}

/// A number as it is read from its front, with its plain form.
struct CommonScan {
  static constexpr size_t kLongest = kMostDigits + 8;

  /// Digits up to something else.
  size_t Digits() {
    const char* const pFrom = p;
    for (; p != pEnd && IsAsciiDigit(*p); ++p) {
      nValue = nValue * 10 + static_cast<uint64_t>(*p - '0');
      *pOut++ = *p;
    }
    return static_cast<size_t>(p - pFrom);
  }
  bool Takes(char ch) {
    if (p == pEnd || *p != ch) return false;
    ++p;
    return true;
  }

  const char* p;
  const char* const pEnd;
  char* pOut;
  uint64_t nValue = 0;
};

/// What most numbers are: a minus in front at most, digits in groups of three or in none, and decimals. Gives the plain
/// form at one go. False for any other number too.
bool ReadCommonNumber(std::string_view s, std::string* pPlain, TidyNumber& number) {
  if (s.size() > CommonScan::kLongest) return false;
  std::array<char, CommonScan::kLongest> plain;
  CommonScan scan{s.data(), s.data() + s.size(), plain.data()};
  const bool bNegative = scan.Takes('-');
  if (bNegative) *scan.pOut++ = '-';
  if (scan.p == scan.pEnd) return false;
  const bool bZero = *scan.p == '0';
  size_t nWhole = scan.Digits();
  if (nWhole == 0) return false;
  if (nWhole <= 3) {
    while (scan.Takes(',')) {
      if (scan.Digits() != 3) return false;
      nWhole += 3;
    }
  }
  size_t nDecimals = 0;
  if (scan.p != scan.pEnd) {
    if (!scan.Takes('.')) return false;
    *scan.pOut++ = '.';
    nDecimals = scan.Digits();
    if (nDecimals == 0 || scan.p != scan.pEnd) return false;
  }
  if (nWhole + nDecimals > kMostDigits) return false;
  // Zeros in front, and a zero with a sign, are changed.
  if (bZero && (bNegative || nWhole > 1)) return false;
  number.nValue = bNegative ? -static_cast<int64_t>(scan.nValue) : static_cast<int64_t>(scan.nValue);
  number.nDecimals = static_cast<int>(nDecimals);
  number.bScaled = true;
  if (pPlain != nullptr) pPlain->assign(plain.data(), static_cast<size_t>(scan.pOut - plain.data()));
  return true;
}

/// Any other number. Apart, so that its room is no cost to those above.
[[gnu::noinline]] std::optional<TidyNumber> ReadOtherNumber(std::string_view s, const TidyTyping& typing,
                                                            std::string* pPlain) {
  Around around;
  Figures figures;
  if (!TakeAround(s, around) || !ScanFigures(s, typing.bComma, figures)) return std::nullopt;
  if (!figures.bPoint && figures.sExponent.empty()) figures.nDecimals = static_cast<size_t>(typing.nImplied);
  if (pPlain != nullptr) WritePlain(figures, around.bNegative, *pPlain);
  TidyNumber number;
  if (figures.nDigits <= kMostDigits && figures.nDecimals <= kMostDigits && figures.sExponent.empty()) {
    number.bScaled = true;
    for (size_t i = 0; i < figures.nDigits; ++i) number.nValue = number.nValue * 10 + (figures.digits[i] - '0');
    if (around.bNegative) number.nValue = -number.nValue;
  }
  number.nDecimals = static_cast<int>(figures.nDecimals);
  return number;
}

}  // namespace

bool ReadTidyNumber(std::string_view sText, const TidyTyping& typing, std::string* pPlain, TidyNumber& number) {
  const bool bTrimmed = !sText.empty() && sText.front() != ' ' && sText.back() != ' ';
  const std::string_view s = bTrimmed ? sText : TrimBlanks(sText);
  if (s.empty() || IsAsciiLetter(s.front())) return false;  // as most texts are
  if (!typing.bComma && typing.nImplied == 0 && ReadCommonNumber(s, pPlain, number)) return true;
  const std::optional<TidyNumber> other = ReadOtherNumber(s, typing, pPlain);
  if (other) number = *other;
  return other.has_value();
}

std::optional<TidyNumber> ReadTidyNumber(std::string_view sText, const TidyTyping& typing, std::string* pPlain) {
  TidyNumber number;
  return ReadTidyNumber(sText, typing, pPlain, number) ? std::optional(number) : std::nullopt;
}

}  // namespace quillon
