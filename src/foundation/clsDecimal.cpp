#include "clsDecimal.h"
#include "modText.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace quillon {

namespace {

constexpr int64_t kMaxExponent = 1000000;

/// What may stand once in front of or behind the digits.
struct Surroundings {
  bool bSign = false, bNegative = false, bCurrency = false, bOpen = false, bClosed = false;
};

/// Takes blanks, signs, "$" and parentheses from the front of the text, each at most once.
bool TakeSurroundings(std::string_view& s, Surroundings& around, bool bBehind) {
  while (!s.empty()) {
    const char c = s.front();
    if ((c == '+' || c == '-') && !around.bSign && !around.bOpen) {
      around.bSign = true;
      around.bNegative = c == '-';
    } else if (c == '$' && !around.bCurrency) {
      around.bCurrency = true;
    } else if (c == '(' && !bBehind && !around.bOpen && !around.bSign) {
      around.bOpen = true;
    } else if (c == ')' && bBehind && around.bOpen && !around.bClosed) {
      around.bClosed = true;
    } else if (c != ' ') {
      return bBehind ? false : true;
    }
    s.remove_prefix(1);
  }
  return true;
}

/// Takes "E", a sign and digits; nothing if they aren't whole.
int64_t TakeExponent(std::string_view& s) {
  if (s.empty() || (s.front() != 'E' && s.front() != 'e')) return 0;
  size_t i = 1;
  const bool bNegative = i < s.size() && s[i] == '-';
  if (i < s.size() && (s[i] == '-' || s[i] == '+')) ++i;
  if (i == s.size() || !IsAsciiDigit(s[i])) return 0;
  int64_t value = 0;
  for (; i < s.size() && IsAsciiDigit(s[i]); ++i) value = std::min(value * 10 + (s[i] - '0'), kMaxExponent);
  s.remove_prefix(i);
  return bNegative ? -value : value;
}

}  // namespace

bool clsDecimal::Scan(std::string_view sText, clsDecimal* pNumber) {
  Surroundings around;
  std::string_view s = sText;
  TakeSurroundings(s, around, false);
  const std::string_view sNumber = s;
  size_t nDigits = 0;
  bool bPoint = false;
  size_t i = 0;
  for (; i < s.size(); ++i) {
    if (IsAsciiDigit(s[i])) {
      ++nDigits;
    } else if (s[i] == '.' && !bPoint) {
      bPoint = true;
    } else if (s[i] != ',' || bPoint || nDigits == 0) {
      break;
    }
  }
  if (nDigits == 0) return false;
  s.remove_prefix(i);
  const int64_t nExponent = TakeExponent(s);
  if (!TakeSurroundings(s, around, true) || !s.empty() || around.bOpen != around.bClosed) return false;
  if (pNumber != nullptr) *pNumber = clsDecimal(sNumber.substr(0, i), nExponent, around.bNegative || around.bOpen);
  return true;
}

clsDecimal::clsDecimal(std::string_view sNumber, int64_t nExponent, bool bNegative)
    : bNegative_(bNegative), nPoint_(nExponent) {
  bool bBehindPoint = false;
  for (const char c : sNumber) {
    if (c == '.') bBehindPoint = true;
    if (!IsAsciiDigit(c)) continue;
    const bool bLeadingZero = c == '0' && sDigits_.empty();
    if (!bLeadingZero) sDigits_ += c;
    if (!bBehindPoint && !bLeadingZero) ++nPoint_;
    if (bBehindPoint && bLeadingZero) --nPoint_;
  }
}

char clsDecimal::DigitAt(int64_t nPlace) const {
  return nPlace >= 0 && static_cast<uint64_t>(nPlace) < sDigits_.size() ? sDigits_[static_cast<size_t>(nPlace)] : '0';
}

void clsDecimal::Round(int nDecimals, Halves halves) {
  const int64_t nKeep = nPoint_ + nDecimals;
  if (nKeep >= static_cast<int64_t>(sDigits_.size())) return;
  if (nKeep < 0) {
    sDigits_.clear();
    return;
  }
  const auto keep = static_cast<size_t>(nKeep);
  const bool bMore = sDigits_.find_first_not_of('0', keep + 1) != std::string::npos;
  const bool bOdd = ((DigitAt(nKeep - 1) - '0') & 1) != 0;
  const char next = sDigits_[keep];
  const bool bUp = next > '5' || (next == '5' && (bMore || halves == Halves::AwayFromZero || bOdd));
  sDigits_.resize(keep);
  if (!bUp) return;
  size_t n = keep;
  while (n > 0 && sDigits_[n - 1] == '9') sDigits_[--n] = '0';
  if (n > 0) {
    ++sDigits_[n - 1];
  } else {
    sDigits_.insert(sDigits_.begin(), '1');
    ++nPoint_;
  }
}

bool clsDecimal::ToScaledInteger(int nDecimals, int64_t& value) const {
  value = 0;
  if (sDigits_.find_first_not_of('0') == std::string::npos) return true;
  const int64_t nPlaces = nPoint_ + nDecimals;
  if (nPlaces > 20) return false;
  for (int64_t i = 0; i < nPlaces; ++i) {
    const int64_t digit = DigitAt(i) - '0';
    if (__builtin_mul_overflow(value, int64_t{10}, &value)) return false;
    // Built downwards, so that the lowest number of the range needs no special case.
    if (__builtin_sub_overflow(value, digit, &value)) return false;
  }
  if (bNegative_) return true;
  if (value == std::numeric_limits<int64_t>::min()) return false;
  value = -value;
  return true;
}

double clsDecimal::ToDouble() const {
  if (sDigits_.empty()) return 0;
  const std::string sText = "0." + sDigits_ + "e" + std::to_string(nPoint_);
  double value = 0;
  const auto end = std::from_chars(sText.data(), sText.data() + sText.size(), value);
  if (end.ec == std::errc::result_out_of_range) {
    value = nPoint_ > 0 ? std::numeric_limits<double>::infinity() : 0;
  }
  return bNegative_ ? -value : value;
}

std::string clsDecimal::GroupedText(int nDecimals) const {
  std::string sOut;
  const int64_t nWhole = std::max<int64_t>(nPoint_, 0);
  for (int64_t i = 0; i < nWhole; ++i) {
    if (i > 0 && (nWhole - i) % 3 == 0) sOut += ',';
    sOut += DigitAt(i);
  }
  if (sOut.empty()) sOut = "0";
  if (nDecimals > 0) sOut += '.';
  for (int64_t i = 0; i < nDecimals; ++i) sOut += DigitAt(nPoint_ + i);
  const bool bZero = sDigits_.find_first_not_of('0') == std::string::npos;
  return bNegative_ && !bZero ? "-" + sOut : sOut;
}

}  // namespace quillon
