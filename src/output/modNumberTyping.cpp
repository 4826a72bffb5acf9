#include "modNumberTyping.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace quillon {

namespace {

constexpr int kMaxDigits = 15;  // What a double keeps and a sheet shows
constexpr int kMaxDecimals = 15;
constexpr double kSmallest = 2.3e-308, kLargest = 9.99999999999999e307;  // A sheet's own limits
constexpr size_t kGeneralDigits = 11;                                    // General turns to an exponent beyond

constexpr std::array<double, 18> kPowers = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,
                                            1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17};

constexpr std::string_view kPlainCode = "0.000000000000000";
constexpr std::array<std::string_view, kMaxDecimals + 1> kGroupedCodes = {"#,##0",
                                                                          "#,##0.0",
                                                                          "#,##0.00",
                                                                          "#,##0.000",
                                                                          "#,##0.0000",
                                                                          "#,##0.00000",
                                                                          "#,##0.000000",
                                                                          "#,##0.0000000",
                                                                          "#,##0.00000000",
                                                                          "#,##0.000000000",
                                                                          "#,##0.0000000000",
                                                                          "#,##0.00000000000",
                                                                          "#,##0.000000000000",
                                                                          "#,##0.0000000000000",
                                                                          "#,##0.00000000000000",
                                                                          "#,##0.000000000000000"};

constexpr bool IsDigit(char ch) {
  return static_cast<unsigned char>(ch - '0') < 10;
}

/// The figures of a number: whole part, decimals, exponent.
struct Figures {
  size_t nStart = 0, nEnd = 0;  ///< Of whole part and decimals in the text
  uint64_t nMantissa = 0;
  int nWhole = 0;     ///< Digits before the point
  int nDecimals = 0;  ///< Digits behind it
  int nSignificant = 0;
  bool bPoint = false;
  bool bGrouped = false;
  bool bLeadingZeros = false;  ///< More than the one in front of the point
  std::string_view sExponent;  ///< "E+03"
};

/// All that stands around the figures.
struct Surroundings {
  char sign = '\0';  ///< '-', '+' or '('
  bool bSignPlainInFront = false;
  bool bPercent = false;
  std::string_view sCurrency;
  std::string_view sBefore, sBehind;
};

size_t CurrencyBytes(std::string_view sText) {
  if (sText.starts_with('$')) return 1;
  if (sText.starts_with("\xC2\xA3") || sText.starts_with("\xC2\xA5")) return 2;
  return sText.starts_with("\xE2\x82\xAC") ? 3 : 0;
}

void TakeDigit(Figures& figures, char ch) {
  figures.nMantissa = figures.nMantissa * 10 + static_cast<uint64_t>(ch - '0');
  figures.nSignificant += figures.nMantissa != 0 ? 1 : 0;
}

/// Whole part with its separators, if any in their places. False for misplaced ones and for too many digits.
bool ScanWhole(std::string_view sText, size_t& nPos, Figures& figures) {
  int nInGroup = 0;
  for (; nPos < sText.size(); ++nPos) {
    const char ch = sText[nPos];
    if (IsDigit(ch)) {
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
  figures.bLeadingZeros = figures.nWhole > 1 && sText[figures.nStart] == '0';
  return !figures.bGrouped || nInGroup == 3;
}

/// An exponent as a format can show it: behind one digit other than 0, with a sign or behind a point.
bool ScanExponent(std::string_view sText, size_t& nPos, Figures& figures) {
  const size_t nStart = nPos++;
  bool bSigned = false;
  if (nPos < sText.size() && (sText[nPos] == '+' || sText[nPos] == '-')) {
    bSigned = true;
    ++nPos;
  }
  const size_t nDigits = nPos;
  while (nPos < sText.size() && IsDigit(sText[nPos])) ++nPos;
  figures.sExponent = sText.substr(nStart, nPos - nStart);
  // No format shows a negative power of zero.
  if (figures.sExponent.substr(1).find_first_not_of("-0") == std::string_view::npos && figures.sExponent[1] == '-')
    return false;
  // 1E5 is more often a code than a number.
  return nPos > nDigits && nPos - nDigits <= 3 && (bSigned || figures.bPoint) && figures.nWhole == 1 &&
         sText[figures.nStart] != '0';
}

bool ScanFigures(std::string_view sText, size_t& nPos, Figures& figures) {
  figures.nStart = nPos;
  if (!ScanWhole(sText, nPos, figures)) return false;
  if (nPos < sText.size() && sText[nPos] == '.') {
    figures.bPoint = true;
    for (++nPos; nPos < sText.size() && IsDigit(sText[nPos]); ++nPos) {
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

bool ScanBefore(std::string_view sText, size_t& nPos, Surroundings& around) {
  for (; nPos < sText.size() && !IsDigit(sText[nPos]) && sText[nPos] != '.'; ++nPos) {
    const char ch = sText[nPos];
    if (ch == ' ') continue;
    if ((ch == '-' || ch == '+' || ch == '(') && around.sign == '\0') {
      around.sign = ch;
      around.bSignPlainInFront = ch == '-' && nPos == 0 && sText.size() > 1 && sText[1] != ' ';
      continue;
    }
    const size_t nCurrency = around.sCurrency.empty() ? CurrencyBytes(sText.substr(nPos)) : 0;
    if (nCurrency == 0) return false;
    around.sCurrency = sText.substr(nPos, nCurrency);
    nPos += nCurrency - 1;
  }
  around.sBefore = sText.substr(0, nPos);
  return true;
}

bool ScanBehind(std::string_view sText, size_t nPos, Surroundings& around) {
  around.sBehind = sText.substr(nPos);
  bool bOpen = around.sign == '(';
  for (; nPos < sText.size(); ++nPos) {
    const char ch = sText[nPos];
    if (ch == ' ') continue;
    if (ch == '%' && !around.bPercent && around.sCurrency.empty()) {
      around.bPercent = true;
    } else if (ch == ')' && bOpen) {
      bOpen = false;
    } else if ((ch == '-' || ch == '+') && around.sign == '\0') {
      around.sign = ch;
    } else {
      return false;
    }
  }
  return !bOpen;
}

/// What a section of the format does with the sign.
enum class SignForm { AsShown, Left, Minus };

/// Text around the figures as literals of a format: runs of blanks as one, the currency in quotes.
void AppendLiterals(std::string& sOut, std::string_view sText, std::string_view sCurrency, SignForm form) {
  for (size_t i = 0; i < sText.size(); ++i) {
    const char ch = sText[i];
    if (!sCurrency.empty() && sText.substr(i).starts_with(sCurrency)) {
      sOut.append("\"").append(sCurrency).append("\"");
      i += sCurrency.size() - 1;
    } else if (ch == ' ') {
      if (sOut.empty() || sOut.back() != ' ') sOut.push_back(' ');
    } else if (ch == '%' || form == SignForm::AsShown) {
      sOut.push_back(ch);
    } else if (form == SignForm::Minus) {
      sOut.push_back('-');
    }
  }
}

void AppendFigureCode(std::string& sOut, const Figures& figures) {
  const auto nDecimals = static_cast<size_t>(figures.nDecimals);
  if (figures.bGrouped) {
    sOut.append(kGroupedCodes[nDecimals]);
  } else {
    sOut.append(kPlainCode.substr(figures.nWhole == 0 ? 1 : 0, nDecimals + 1 + (figures.nWhole == 0 ? 0 : 1)));
    if (nDecimals == 0) sOut.pop_back();
  }
  if (figures.sExponent.empty()) return;
  const bool bSigned = !IsDigit(figures.sExponent[1]);
  // "E+" shows every sign, "E-" that of a negative exponent only.
  sOut.append(bSigned ? "E+" : "E-").append(figures.sExponent.size() - (bSigned ? 2 : 1), '0');
}

void AppendSection(std::string& sOut, const Figures& figures, const Surroundings& around, SignForm form) {
  std::string sSection;
  AppendLiterals(sSection, around.sBefore, around.sCurrency, form);
  if (sSection == " ") sSection.clear();
  AppendFigureCode(sSection, figures);
  AppendLiterals(sSection, around.sBehind, around.sCurrency, form);
  if (sSection.back() == ' ') sSection.pop_back();
  if (!sOut.empty()) sOut.push_back(';');
  sOut.append(sSection);
}

/// Sections for positive numbers, negative ones and, for a zero with a minus, zeros.
void BuildCode(std::string& sOut, const Figures& figures, const Surroundings& around) {
  const bool bNegative = around.sign == '-' || around.sign == '(';
  const bool bZero = figures.nMantissa == 0;
  if (around.sign == '+') {
    AppendSection(sOut, figures, around, SignForm::AsShown);
    AppendSection(sOut, figures, around, SignForm::Minus);
    return;
  }
  AppendSection(sOut, figures, around, SignForm::Left);
  if (!bNegative || (around.bSignPlainInFront && !bZero)) return;
  AppendSection(sOut, figures, around, SignForm::AsShown);
  if (bZero) AppendSection(sOut, figures, around, SignForm::AsShown);
}

/// The number by the file's rule: sign, digits, point; a percent's point moved by two places.
void BuildDigits(std::string& sOut, std::string_view sText, const Figures& figures, const Surroundings& around) {
  if ((around.sign == '-' || around.sign == '(') && figures.nMantissa != 0) sOut.push_back('-');
  std::string sPlain;
  for (size_t i = figures.nStart; i < figures.nEnd; ++i)
    if (IsDigit(sText[i])) sPlain.push_back(sText[i]);
  const size_t nDecimals = static_cast<size_t>(figures.nDecimals) + (around.bPercent ? 2 : 0);
  if (sPlain.size() <= nDecimals) sPlain.insert(0, nDecimals + 1 - sPlain.size(), '0');
  if (nDecimals > 0) sPlain.insert(sPlain.size() - nDecimals, 1, '.');
  const size_t nFirst = sPlain.find_first_not_of('0');
  sPlain.erase(0, nFirst == std::string::npos ? sPlain.size() - 1 : sPlain[nFirst] == '.' ? nFirst - 1 : nFirst);
  sOut.append(sPlain).append(figures.sExponent);
}

bool SetValue(const Figures& figures, const Surroundings& around, TypedCell& cell) {
  const auto nDivisor = static_cast<size_t>(figures.nDecimals + (around.bPercent ? 2 : 0));
  double nValue = static_cast<double>(figures.nMantissa) / kPowers[nDivisor];
  if (around.sign == '-' || around.sign == '(') nValue = -nValue;
  if (!figures.sExponent.empty()) {
    const char* const pEnd = cell.sDigits.data() + cell.sDigits.size();
    if (std::from_chars(cell.sDigits.data(), pEnd, nValue).ec != std::errc{}) return false;
    if (std::abs(nValue) < kSmallest || std::abs(nValue) > kLargest) return false;
  }
  cell.kind = CellKind::Number;
  cell.nValue = figures.nMantissa == 0 ? 0 : nValue;
  return true;
}

/// The form that most numbers have: figures alone or behind a minus, in no need of a format of their own making.
bool IsPlain(const Figures& figures, const Surroundings& around) {
  return around.sBehind.empty() && figures.sExponent.empty() && !figures.bLeadingZeros && figures.nWhole > 0 &&
         (around.sBefore.empty() || (around.bSignPlainInFront && around.sBefore.size() == 1 && figures.nMantissa != 0));
}

void SetPlain(std::string_view sText, bool bGrouped, size_t nDecimals, size_t nWhole, std::string& sScratch,
              TypedCell& cell) {
  cell.sText = {};
  if (bGrouped) {
    cell.sFormat = kGroupedCodes[nDecimals];
    sScratch.clear();
    for (const char ch : sText)
      if (ch != ',') sScratch.push_back(ch);
    cell.sDigits = sScratch;
    return;
  }
  if (nDecimals > 0) {
    cell.sFormat = kPlainCode.substr(0, nDecimals + 2);
  } else if (nWhole > kGeneralDigits) {
    cell.sFormat = kPlainCode.substr(0, 1);
  }
  cell.sDigits = sText;
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
    if (IsDigit(ch)) {
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
    if (!IsDigit(sText[nPos])) return false;
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
  Surroundings around;
  Figures figures;
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
    BuildCode(sScratch, figures, around);
    const size_t nCode = sScratch.size();
    BuildDigits(sScratch, sText, figures, around);
    typed.sFormat = std::string_view(sScratch).substr(0, nCode);
    typed.sDigits = std::string_view(sScratch).substr(nCode);
    // General shows such an integer as it is.
    if (typed.sFormat == "0" && typed.sDigits.size() <= kGeneralDigits) typed.sFormat = {};
  }
  if (!SetValue(figures, around, typed)) return false;
  cell = typed;
  return true;
}

}  // namespace quillon
