#include "modNumberTyping.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "modNumberCode.h"

namespace quillon {

namespace {

constexpr int kMaxDigits = 15;                                           // What a double keeps and a sheet shows
constexpr double kSmallest = 2.3e-308, kLargest = 9.99999999999999e307;  // A sheet's own limits
constexpr size_t kGeneralDigits = 11;                                    // General turns to an exponent beyond

constexpr std::array<double, 18> kPowers = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,
                                            1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17};

size_t CurrencyBytes(std::string_view sText) {
  if (sText.starts_with('$')) return 1;
  if (sText.starts_with("\xC2\xA3") || sText.starts_with("\xC2\xA5")) return 2;
  return sText.starts_with("\xE2\x82\xAC") ? 3 : 0;
}

void TakeDigit(NumberFigures& figures, char ch) {
  figures.nMantissa = figures.nMantissa * 10 + static_cast<uint64_t>(ch - '0');
  figures.nSignificant += figures.nMantissa != 0 ? 1 : 0;
}

/// Whole part with its separators, if any in their places. False for misplaced ones and for too many digits.
bool ScanWhole(std::string_view sText, size_t& nPos, NumberFigures& figures) {
  int nInGroup = 0;
  for (; nPos < sText.size(); ++nPos) {
    const char ch = sText[nPos];
    if (IsNumberDigit(ch)) {
      if (figures.nSignificant > static_cast<int>(kMaxDigits)) return false;
      TakeDigit(figures, ch);
      ++figures.nWhole;
      ++nInGroup;
    } else if (ch == ',') {
      if (figures.bGrouped ? nInGroup != 3 : (nInGroup < 1 || nInGroup > 3)) return false;
      figures.bGrouped = true;
      nInGroup = 0;
    } else {
      break;
    }
  }
  figures.bZeroInFront = figures.nWhole > 0 && sText[figures.nStart] == '0';
  figures.bLeadingZeros = figures.nWhole > 1 && figures.bZeroInFront;
  return !figures.bGrouped || nInGroup == 3;
}

/// An exponent as a format can show it: zero, or behind one digit other than 0; with a sign or behind a point.
bool ScanExponent(std::string_view sText, size_t& nPos, NumberFigures& figures) {
  const size_t nStart = nPos++;
  bool bSigned = false;
  if (nPos < sText.size() && (sText[nPos] == '+' || sText[nPos] == '-')) {
    bSigned = true;
    ++nPos;
  }
  const size_t nDigits = nPos;
  while (nPos < sText.size() && IsNumberDigit(sText[nPos])) ++nPos;
  figures.sExponent = sText.substr(nStart, nPos - nStart);
  // 1E5 is more often a code than a number.
  if (nPos == nDigits || nPos - nDigits > 3 || !(bSigned || figures.bPoint)) return false;
  // An exponent of zero is shown by the text of it.
  return figures.ExponentIsZero() || (figures.nWhole == 1 && sText[figures.nStart] != '0');
}

bool ScanFigures(std::string_view sText, size_t& nPos, NumberFigures& figures) {
  figures.nStart = nPos;
  if (!ScanWhole(sText, nPos, figures)) return false;
  if (nPos < sText.size() && sText[nPos] == '.') {
    figures.bPoint = true;
    for (++nPos; nPos < sText.size() && IsNumberDigit(sText[nPos]); ++nPos) {
      if (++figures.nDecimals > kMaxDecimals) return false;
      TakeDigit(figures, sText[nPos]);
    }
  }
  figures.nEnd = nPos;
  // Not every sheet shows a point with nothing behind it.
  if (figures.bPoint && figures.nDecimals == 0) return false;
  if (figures.nWhole + figures.nDecimals == 0 || figures.nSignificant > static_cast<int>(kMaxDigits)) return false;
  return nPos >= sText.size() || sText[nPos] != 'E' || ScanExponent(sText, nPos, figures);
}

/// More than one blank in a row parts a sign from its digits.
bool StandsApart(std::string_view sBetween) {
  return sBetween.find("  ") != std::string_view::npos;
}

bool ScanBefore(std::string_view sText, size_t& nPos, NumberSurroundings& around) {
  size_t nSign = 0;
  for (; nPos < sText.size() && !IsNumberDigit(sText[nPos]) && sText[nPos] != '.'; ++nPos) {
    const char ch = sText[nPos];
    if (ch == ' ') continue;
    if ((ch == '-' || ch == '+' || ch == '(') && around.sign == '\0') {
      around.sign = ch;
      nSign = nPos + 1;
      around.bSignPlainInFront = ch == '-' && nPos == 0 && sText.size() > 1 && sText[1] != ' ';
      continue;
    }
    const size_t nCurrency = around.sCurrency.empty() ? CurrencyBytes(sText.substr(nPos)) : 0;
    if (nCurrency == 0) return false;
    around.sCurrency = sText.substr(nPos, nCurrency);
    nPos += nCurrency - 1;
  }
  around.sBefore = sText.substr(0, nPos);
  // What stands further off is a sign of something else.
  return nSign == 0 || around.sign == '(' || !StandsApart(around.sBefore.substr(nSign));
}

bool ScanBehind(std::string_view sText, size_t nPos, NumberSurroundings& around) {
  around.sBehind = sText.substr(nPos);
  const size_t nStart = nPos;
  bool bOpen = around.sign == '(';
  for (; nPos < sText.size(); ++nPos) {
    const char ch = sText[nPos];
    if (ch == ' ') continue;
    if (ch == '%' && !around.bPercent && around.sCurrency.empty()) {
      around.bPercent = true;
    } else if (ch == ')' && bOpen) {
      bOpen = false;
    } else if ((ch == '-' || ch == '+') && around.sign == '\0' &&
               !StandsApart(around.sBehind.substr(0, nPos - nStart))) {
      around.sign = ch;
    } else {
      return false;
    }
  }
  return !bOpen;
}

bool SetValue(const NumberFigures& figures, const NumberSurroundings& around, TypedCell& cell) {
  const auto nDivisor = static_cast<size_t>(figures.nDecimals + (around.bPercent ? 2 : 0));
  double nValue = static_cast<double>(figures.nMantissa) / kPowers[nDivisor];
  if (around.sign == '-' || around.sign == '(') nValue = -nValue;
  if (!figures.sExponent.empty() && !figures.ExponentIsZero()) {
    const char* const pEnd = cell.sDigits.data() + cell.sDigits.size();
    if (std::from_chars(cell.sDigits.data(), pEnd, nValue).ec != std::errc{}) return false;
    if (std::abs(nValue) < kSmallest || std::abs(nValue) > kLargest) return false;
  }
  cell.kind = CellKind::Number;
  cell.nValue = figures.nMantissa == 0 ? 0 : nValue;
  return true;
}

/// The form that most numbers have: figures alone or behind a minus, in no need of a format of their own making.
bool IsPlain(const NumberFigures& figures, const NumberSurroundings& around) {
  return around.sBehind.empty() && figures.sExponent.empty() && !figures.bLeadingZeros && figures.nWhole > 0 &&
         (around.sBefore.empty() || (around.bSignPlainInFront && around.sBefore.size() == 1 && figures.nMantissa != 0));
}

void SetPlain(std::string_view sText, bool bGrouped, size_t nDecimals, size_t nWhole, std::string& sScratch,
              TypedCell& cell) {
  cell.sText = {};
  if (bGrouped) {
    cell.sFormat = GroupedCode(nDecimals);
    sScratch.clear();
    for (const char ch : sText)
      if (ch != ',') sScratch.push_back(ch);
    cell.sDigits = sScratch;
    return;
  }
  if (nDecimals > 0) {
    cell.sFormat = PlainCode(nDecimals);
  } else if (nWhole > kGeneralDigits) {
    cell.sFormat = PlainCode(0);
  }
  cell.sDigits = sText;
  cell.bDigits = nDecimals == 0 && sText.front() != '-';
}

/// Most numbers have this form: digits, separators in their places, a point, a minus in front. False, with the cell
/// unchanged, for anything else, which the whole rule then looks at.
bool TypeCommonNumber(std::string_view sText, std::string& sScratch, TypedCell& cell) {
  const bool bMinus = sText.front() == '-';
  const size_t nStart = bMinus ? 1 : 0;
  if (sText.size() > kMaxDigits + nStart || sText.size() == nStart) return false;
  uint64_t nMantissa = 0;
  size_t nPos = nStart, nGroup = nStart;
  bool bGrouped = false;
  for (; nPos < sText.size() && sText[nPos] != '.'; ++nPos) {
    const char ch = sText[nPos];
    if (IsNumberDigit(ch)) {
      nMantissa = nMantissa * 10 + static_cast<uint64_t>(ch - '0');
    } else {
      if (ch != ',' || nPos == nGroup || (bGrouped ? nPos - nGroup != 3 : nPos - nGroup > 3)) return false;
      bGrouped = true;
      nGroup = nPos + 1;
    }
  }
  const size_t nWhole = nPos - nStart;
  if (nWhole == 0 || (nWhole > 1 && sText[nStart] == '0') || (bGrouped && nPos - nGroup != 3)) return false;
  const size_t nDecimals = sText.size() - nPos > 0 ? sText.size() - nPos - 1 : 0;
  if (nDecimals == 0 && nPos < sText.size()) return false;
  for (++nPos; nPos < sText.size(); ++nPos) {
    if (!IsNumberDigit(sText[nPos])) return false;
    nMantissa = nMantissa * 10 + static_cast<uint64_t>(sText[nPos] - '0');
  }
  if (bMinus && nMantissa == 0) return false;
  const double nValue = static_cast<double>(nMantissa) / kPowers[nDecimals];
  SetPlain(sText, bGrouped, nDecimals, nWhole, sScratch, cell);
  cell.kind = CellKind::Number;
  cell.nValue = bMinus ? -nValue : nValue;
  return true;
}

}  // namespace

bool TypeNumber(std::string_view sText, bool bDropLeadingZeros, std::string& sScratch, TypedCell& cell) {
  if (TypeCommonNumber(sText, sScratch, cell)) return true;
  NumberSurroundings around;
  NumberFigures figures;
  size_t nPos = 0;
  if (!ScanBefore(sText, nPos, around) || !ScanFigures(sText, nPos, figures) || !ScanBehind(sText, nPos, around))
    return false;
  if (figures.bLeadingZeros && !bDropLeadingZeros) return false;
  if (around.bPercent && !figures.sExponent.empty()) return false;
  TypedCell typed;
  if (IsPlain(figures, around)) {
    SetPlain(sText, figures.bGrouped, static_cast<size_t>(figures.nDecimals), static_cast<size_t>(figures.nWhole),
             sScratch, typed);
  } else {
    sScratch.clear();
    BuildNumberCode(sScratch, figures, around);
    const size_t nCode = sScratch.size();
    BuildNumberDigits(sScratch, sText, figures, around);
    typed.sFormat = std::string_view(sScratch).substr(0, nCode);
    typed.sDigits = std::string_view(sScratch).substr(nCode);
    // General shows such an integer as it is.
    if (typed.sFormat == "0" && typed.sDigits.size() <= kGeneralDigits) typed.sFormat = {};
  }
  if (!SetValue(figures, around, typed)) return false;
  cell = typed;
  cell.bDigits |= figures.nWhole == static_cast<int>(sText.size());
  return true;
}

bool TypePointBehind(std::string_view sText, std::string& sScratch, TypedCell& cell) {
  TypedCell typed;
  if (LikenessOf(sText) != NumberLikeness::PointBehind ||
      !TypeNumber(sText.substr(0, sText.size() - 1), false, sScratch, typed))
    return false;
  // The form of a number with a minus in front needs no section of its own.
  const std::string sDigits(typed.sDigits), sFormat(typed.sFormat.empty() ? "0" : typed.sFormat);
  sScratch = sFormat + "\".\"" + sDigits;
  cell = typed;
  cell.bDigits = false;
  cell.sFormat = std::string_view(sScratch).substr(0, sFormat.size() + 3);
  cell.sDigits = std::string_view(sScratch).substr(sFormat.size() + 3);
  return true;
}

namespace {

/// Digits with points and commas, and an exponent: the figures of a number that may be written in any way.
bool AreFigures(std::string_view sText) {
  const size_t nExponent = std::min(sText.find('E'), sText.size());
  const std::string_view sFigures = sText.substr(0, nExponent);
  const auto nPoints = std::count(sFigures.begin(), sFigures.end(), '.');
  const auto nCommas = std::count(sFigures.begin(), sFigures.end(), ',');
  // 1.2.3 is a section or an address, 1,2,3 a list.
  if (sFigures.find_first_not_of("0123456789.,") != std::string_view::npos || nCommas > 1 || nPoints > 1 + 9 * nCommas)
    return false;
  if (sFigures.find_first_of("0123456789") == std::string_view::npos) return false;
  if (nExponent == sText.size()) return true;
  std::string_view sExponent = sText.substr(nExponent + 1);
  const bool bSigned = !sExponent.empty() && (sExponent.front() == '-' || sExponent.front() == '+');
  if (bSigned) sExponent.remove_prefix(1);
  return (bSigned || nPoints > 0) && !sExponent.empty() && sExponent.size() <= 3 &&
         sExponent.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

NumberLikeness LikenessOf(std::string_view sText) {
  if (sText.empty() || !(IsNumberDigit(sText.back()) || sText.back() == '.' || sText.back() == ')' ||
                         sText.back() == '-' || sText.back() == '%'))
    return NumberLikeness::None;
  if (sText.find_first_not_of("0123456789") == std::string_view::npos)
    return sText.size() > kMaxDigits || (sText.size() > 1 && sText.front() == '0') ? NumberLikeness::Code
                                                                                   : NumberLikeness::None;
  const bool bMinus = sText.front() == '-' || sText.front() == '+';
  if (bMinus) sText.remove_prefix(1);
  const bool bParens = sText.size() > 2 && sText.front() == '(' && sText.back() == ')';
  if (bParens) sText = sText.substr(1, sText.size() - 2);
  sText.remove_prefix(CurrencyBytes(sText));
  if (!bParens && sText.size() > 1 && (sText.back() == '-' || sText.back() == '%')) sText.remove_suffix(1);
  if (!AreFigures(sText)) return NumberLikeness::None;
  const bool bPointBehind =
      sText.size() > 1 && sText.back() == '.' &&
      sText.substr(0, sText.size() - 1).find_first_not_of("0123456789,") == std::string_view::npos;
  if (!bPointBehind) return NumberLikeness::Unshown;
  return bMinus || bParens || (sText.front() == '0' && sText.size() > 2) ? NumberLikeness::None
                                                                         : NumberLikeness::PointBehind;
}

}  // namespace quillon
