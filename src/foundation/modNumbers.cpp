#include "modNumbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "clsDecimal.h"
#include "modText.h"

namespace quillon {

bool IsNumericText(std::string_view sText) {
  return clsDecimal::Scan(sText, nullptr);
}

std::optional<double> NumericValue(std::string_view sText) {
  clsDecimal number;
  if (!clsDecimal::Scan(sText, &number)) return std::nullopt;
  return number.ToDouble();
}

ScaleStatus ParseScaled(std::string_view sText, ScaledNumber& value) {
  clsDecimal number;
  if (!clsDecimal::Scan(sText, &number)) return ScaleStatus::NotNumeric;
  number.Round(4, clsDecimal::Halves::ToEven);
  return number.ToScaledInteger(4, value) ? ScaleStatus::Ok : ScaleStatus::Overflow;
}

std::optional<ScaledNumber> AddScaled(ScaledNumber a, ScaledNumber b) {
  ScaledNumber sum = 0;
  if (__builtin_add_overflow(a, b, &sum)) return std::nullopt;
  return sum;
}

std::string ScaledText(ScaledNumber value) {
  const uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  std::string sOut = (value < 0 ? "-" : "") + std::to_string(magnitude / kNumberScale);
  std::string sDecimals = std::to_string(kNumberScale + static_cast<int64_t>(magnitude % kNumberScale)).substr(1);
  sDecimals.erase(sDecimals.find_last_not_of('0') + 1);
  return sDecimals.empty() ? sOut : sOut + "." + sDecimals;
}

std::string FormatGrouped(std::string_view sNumber, int nDecimals) {
  clsDecimal number;
  if (!clsDecimal::Scan(sNumber, &number) || !number.IsPlain()) return std::string(sNumber);
  number.Round(nDecimals, clsDecimal::Halves::AwayFromZero);
  return number.GroupedText(nDecimals);
}

std::string FormatOneDecimal(double value) {
  std::array<char, 64> buffer{};
  // Halves go away from zero, as the "0.0" pattern does; to_chars alone would round the binary value.
  const double rounded = std::round(value * 10) / 10;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), rounded, std::chars_format::fixed, 1);
  return end.ec == std::errc{} ? std::string(buffer.data(), end.ptr) : ShortestDouble(value);
}

std::string ShortestDouble(double value) {
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end.ptr};
}

std::optional<int32_t> ParseWholeNumber(std::string_view sText) {
  clsDecimal number;
  if (!clsDecimal::Scan(sText, &number)) return std::nullopt;
  number.Round(0, clsDecimal::Halves::ToEven);
  int64_t value = 0;
  if (!number.ToScaledInteger(0, value) || value < INT32_MIN || value > INT32_MAX) return std::nullopt;
  return static_cast<int32_t>(value);
}

double LeadingNumber(std::string_view sText) {
  std::string_view sTrimmed = TrimBlanks(sText);
  if (sTrimmed.starts_with('+')) sTrimmed.remove_prefix(1);
  double value = 0;
  const size_t nDigits = sTrimmed.find_first_not_of("+-0123456789.eE");
  const std::string_view sHead = sTrimmed.substr(0, nDigits);
  std::from_chars(sHead.data(), sHead.data() + sHead.size(), value);
  return std::isfinite(value) ? value : 0;
}

bool TryParseDouble(std::string_view sText, double& value) {
  // A "," that stands before other than three digits groups nothing: it may be a decimal comma.
  for (size_t n = sText.find(','); n != std::string_view::npos; n = sText.find(',', n + 1)) {
    const std::string_view sRest = sText.substr(n + 1);
    if (std::min(sRest.find_first_not_of("0123456789"), sRest.size()) != 3) return false;
  }
  const std::optional<double> number = NumericValue(sText);
  if (number) value = *number;
  return number.has_value();
}

double ParseDouble(std::string_view sText, double fallback) {
  double value = 0;
  if (TryParseDouble(sText, value)) return value;
  std::string sOther(sText);
  const bool bPoint = sOther.find('.') != std::string::npos;
  std::replace(sOther.begin(), sOther.end(), bPoint ? '.' : ',', bPoint ? ',' : '.');
  return TryParseDouble(sOther, value) ? value : fallback;
}

std::string CountedText(int64_t lCount, std::string_view sOne, std::string_view sMany) {
  return std::to_string(lCount) + " " + std::string(lCount == 1 ? sOne : sMany);
}

}  // namespace quillon
