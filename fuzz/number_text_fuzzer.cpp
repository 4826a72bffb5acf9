// Any text as a number: the tests, values and forms of numbers agree with each other.

#include <charconv>
#include <cmath>
#include <string>

#include "clsFuzzInput.h"
#include "modNumbers.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  const std::string_view sText = clsFuzzInput(pData, nSize).sInput;
  const bool bNumber = IsNumericText(sText);
  const std::optional<double> nValue = NumericValue(sText);
  Must(bNumber == nValue.has_value() || !bNumber, "what is no number has no value");
  ScaledNumber nScaled = 0;
  const ScaleStatus status = ParseScaled(sText, nScaled);
  Must(bNumber == (status != ScaleStatus::NotNumeric), "one test for all");
  if (status == ScaleStatus::Ok) {
    ScaledNumber nAgain = 0;
    Must(ParseScaled(ScaledText(nScaled), nAgain) == ScaleStatus::Ok && nAgain == nScaled, "its text is the number");
    if (nValue)
      Must(std::abs(*nValue - static_cast<double>(nScaled) / 1e4) < 1e-4 + std::abs(*nValue) * 1e-15, "value");
    const auto nSum = AddScaled(nScaled, nScaled);
    Must(!nSum || *nSum == 2 * nScaled, "a sum is a sum");
  }
  for (const int nDecimals : {0, 2}) {
    const std::string sGrouped = FormatGrouped(sText, nDecimals);
    Must(bNumber ? IsNumericText(sGrouped) || nSize > 300 : sGrouped == sText, "a grouped number is one");
  }
  if (nValue && std::isfinite(*nValue)) {
    const std::string sShort = ShortestDouble(*nValue);
    Must(std::strtod(sShort.c_str(), nullptr) == *nValue, "the shortest text reads back");
    FormatOneDecimal(*nValue);
  }
  const std::optional<int32_t> lWhole = ParseWholeNumber(sText);
  Must(!lWhole || bNumber, "a whole number is a number");
  if (lWhole && nValue) Must(std::abs(*nValue - *lWhole) <= 0.5, "the nearest whole number");
  LeadingNumber(sText);
  double nParsed = 0;
  const bool bParsed = TryParseDouble(sText, nParsed);
  Must(!bParsed || ParseDouble(sText, 7) == nParsed || std::isnan(nParsed), "parsed at the first go");
  return 0;
}
