#include "modNumberCode.h"

#include <array>

namespace quillon {

namespace {

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

void AppendFigureCode(std::string& sOut, const NumberFigures& figures) {
  const auto nDecimals = static_cast<size_t>(figures.nDecimals);
  if (figures.bGrouped) {
    sOut.append(GroupedCode(nDecimals));
  } else {
    // ".50" has no digit in front of the point.
    sOut.append(PlainCode(nDecimals).substr(figures.nWhole == 0 ? 1 : 0));
  }
  if (figures.sExponent.empty()) return;
  const bool bSigned = !IsNumberDigit(figures.sExponent[1]);
  const bool bOneDigit = figures.nWhole == 1 && !figures.bZeroInFront;
  if (figures.ExponentIsZero() && (!bOneDigit || figures.sExponent[1] == '-')) {
    sOut.append("\"").append(figures.sExponent).append("\"");
    return;
  }
  // "E+" shows every sign, "E-" that of a negative exponent only.
  sOut.append(bSigned ? "E+" : "E-").append(figures.sExponent.size() - (bSigned ? 2 : 1), '0');
}

void AppendSection(std::string& sOut, const NumberFigures& figures, const NumberSurroundings& around, SignForm form) {
  std::string sSection;
  AppendLiterals(sSection, around.sBefore, around.sCurrency, form);
  if (sSection == " ") sSection.clear();
  AppendFigureCode(sSection, figures);
  AppendLiterals(sSection, around.sBehind, around.sCurrency, form);
  if (sSection.back() == ' ') sSection.pop_back();
  if (!sOut.empty()) sOut.push_back(';');
  sOut.append(sSection);
}

}  // namespace

std::string_view PlainCode(size_t nDecimals) {
  return kPlainCode.substr(0, nDecimals == 0 ? 1 : nDecimals + 2);
}

std::string_view GroupedCode(size_t nDecimals) {
  return kGroupedCodes[nDecimals];
}

void BuildNumberCode(std::string& sOut, const NumberFigures& figures, const NumberSurroundings& around) {
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

void BuildNumberDigits(std::string& sOut, std::string_view sText, const NumberFigures& figures,
                       const NumberSurroundings& around) {
  if ((around.sign == '-' || around.sign == '(') && figures.nMantissa != 0) sOut.push_back('-');
  std::string sPlain;
  for (size_t i = figures.nStart; i < figures.nEnd; ++i)
    if (IsNumberDigit(sText[i])) sPlain.push_back(sText[i]);
  const size_t nDecimals = static_cast<size_t>(figures.nDecimals) + (around.bPercent ? 2 : 0);
  if (sPlain.size() <= nDecimals) sPlain.insert(0, nDecimals + 1 - sPlain.size(), '0');
  if (nDecimals > 0) sPlain.insert(sPlain.size() - nDecimals, 1, '.');
  const size_t nFirst = sPlain.find_first_not_of('0');
  sPlain.erase(0, nFirst == std::string::npos ? sPlain.size() - 1 : sPlain[nFirst] == '.' ? nFirst - 1 : nFirst);
  sOut.append(sPlain);
  if (!figures.ExponentIsZero()) sOut.append(figures.sExponent);
}

}  // namespace quillon
