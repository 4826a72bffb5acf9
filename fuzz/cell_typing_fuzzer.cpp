// Texts to typed cells: what became a number or a date must show the very characters of its text, runs of blanks as
// one. The small renderer here knows the formats that typing makes and is written on its own, from values and codes
// alone.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "modCellTyping.h"
#include "modText.h"

using namespace quillon;

namespace {

std::vector<std::string> Sections(std::string_view sFormat) {
  std::vector<std::string> sections(1);
  for (const char ch : sFormat) {
    if (ch == ';') {
      sections.emplace_back();
    } else {
      sections.back() += ch;
    }
  }
  return sections;
}

enum class Form { Fixed, Scientific, Shortest };

std::string Printed(Form form, int nDecimals, double nValue) {
  std::array<char, 400> text{};
  if (form == Form::Fixed) std::snprintf(text.data(), text.size(), "%.*f", nDecimals, nValue);
  if (form == Form::Scientific) std::snprintf(text.data(), text.size(), "%.*E", nDecimals, nValue);
  if (form == Form::Shortest) std::snprintf(text.data(), text.size(), "%.*g", nDecimals, nValue);
  return text.data();
}

std::string RenderFigures(const std::string& sCode, double nValue) {
  const size_t nExponent = sCode.find('E');
  const std::string sFigures = sCode.substr(0, nExponent);
  const size_t nPoint = sFigures.find('.');
  const int nDecimals = nPoint == std::string::npos ? 0 : static_cast<int>(sFigures.size() - nPoint - 1);
  std::string sOut = Printed(nExponent == std::string::npos ? Form::Fixed : Form::Scientific, nDecimals, nValue);
  if (nExponent != std::string::npos) {
    const size_t nAt = sOut.find('E');
    const int nPower = std::atoi(sOut.c_str() + nAt + 1);
    std::string sPower = std::to_string(std::abs(nPower));
    const size_t nDigits = sCode.size() - nExponent - 2;
    if (sPower.size() < nDigits) sPower.insert(0, nDigits - sPower.size(), '0');
    return sOut.substr(0, nAt) + "E" + (nPower < 0 ? "-" : sCode[nExponent + 1] == '+' ? "+" : "") + sPower;
  }
  if (sCode.front() == '.' && sOut.front() == '0') sOut.erase(0, 1);
  if (sCode.front() == '#') {
    const size_t nWhole = sOut.find('.');
    for (size_t i = nWhole == std::string::npos ? sOut.size() : nWhole; i > 3; i -= 3) sOut.insert(i - 3, ",");
  }
  return sOut;
}

std::string RenderNumber(std::string_view sFormat, double nValue) {
  if (sFormat.empty()) return Printed(Form::Shortest, 11, nValue);
  const std::vector<std::string> sections = Sections(sFormat);
  const size_t nSection = nValue == 0 && sections.size() > 2 ? 2 : nValue < 0 && sections.size() > 1 ? 1 : 0;
  std::string sCode = sections[nSection];
  std::string sOut = nValue < 0 && nSection == 0 ? "-" : "";
  const bool bPercent = sCode.find('%') != std::string::npos;
  for (size_t i = 0; i < sCode.size(); ++i) {
    const size_t nEnd = std::min(sCode.find_first_not_of("#,0.E", i), sCode.size());
    if (nEnd > i) {
      size_t nStop = nEnd;
      // The sign of an exponent belongs to the figures.
      if (sCode[nEnd - 1] == 'E') nStop = std::min(sCode.find_first_not_of('0', nEnd + 1), sCode.size());
      sOut += RenderFigures(sCode.substr(i, nStop - i), std::abs(nValue) * (bPercent ? 100 : 1));
      i = nStop - 1;
    } else if (sCode[i] != '"') {
      sOut += sCode[i];
    }
  }
  return sOut;
}

std::string RenderDate(std::string_view sFormat, int nSerial) {
  const std::time_t moment = (static_cast<std::time_t>(nSerial) - 25569) * 86400;
  std::tm parts{};
  gmtime_r(&moment, &parts);
  std::string sOut;
  for (size_t i = 0; i < sFormat.size();) {
    const size_t nRun = std::min(sFormat.find_first_not_of(sFormat[i], i), sFormat.size()) - i;
    const int nPart = sFormat[i] == 'd' ? parts.tm_mday : sFormat[i] == 'm' ? parts.tm_mon + 1 : parts.tm_year + 1900;
    if (sFormat[i] == '\\') {
      sOut += sFormat[i + 1];
      i += 2;
      continue;
    }
    std::string sPart = std::to_string(nRun == 2 && sFormat[i] == 'y' ? nPart % 100 : nPart);
    if (sPart.size() < nRun) sPart.insert(0, nRun - sPart.size(), '0');
    sOut += sPart;
    i += nRun;
  }
  return sOut;
}

std::string Collapsed(std::string_view sText) {
  std::string sOut;
  for (const char ch : TrimBlanks(sText))
    if (ch != ' ' || sOut.back() != ' ') sOut += ch;
  return sOut;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  if (nSize == 0) return 0;
  const std::string sText(pData + 1, pData + nSize);
  CellTypingOptions options;
  options.bDayFirst = (pData[0] & 1) != 0;
  std::string sScratch;
  const TypedCell cell = TypeCell(sText, options, sScratch);
  std::string sShown = sText;
  if (cell.kind == CellKind::Number) sShown = RenderNumber(cell.sFormat, cell.nValue);
  if (cell.kind == CellKind::Date) sShown = RenderDate(cell.sFormat, static_cast<int>(cell.nValue));
  const bool bTyped = cell.kind == CellKind::Number || cell.kind == CellKind::Date;
  if (bTyped && std::strtod(std::string(cell.sDigits).c_str(), nullptr) != cell.nValue) std::abort();
  if (Collapsed(sShown) != Collapsed(sText)) {
    std::fprintf(stderr, "[%s] shows as [%s]\n", sText.c_str(), sShown.c_str());
    std::abort();
  }
  return 0;
}
