#include "clsUtf16Text.h"

#include "modText.h"

namespace quillon {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char16_t kBom = 0xFEFF;
constexpr char16_t kSwappedBom = 0xFFFE;

bool IsHigh(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}
bool IsLow(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

}  // namespace

size_t clsUtf16Text::TakeBom(std::string_view sHead) {
  bBigEndian_ = false;
  if (sHead.size() < 2) return 0;
  const char16_t first = UnitAt(sHead, 0);
  bBigEndian_ = first == kSwappedBom;
  return bBigEndian_ || first == kBom ? 2 : 0;
}

char16_t clsUtf16Text::UnitAt(std::string_view sBytes, size_t nByte) const {
  const auto first = static_cast<unsigned char>(sBytes[nByte]);
  const auto second = static_cast<unsigned char>(sBytes[nByte + 1]);
  return static_cast<char16_t>(bBigEndian_ ? first << 8 | second : second << 8 | first);
}

void clsUtf16Text::TakeUnit(char16_t unit, std::string& sText) {
  if (high_ != 0 && IsLow(unit)) {
    AppendUtf8(0x10000 + ((char32_t{high_} & 0x3FF) << 10) + (unit & 0x3FF), sText);
    high_ = 0;
    return;
  }
  if (high_ != 0) {
    AppendUtf8(kReplacement, sText);
    ++lReplaced_;
    high_ = 0;
  }
  if (IsHigh(unit)) {
    high_ = unit;
  } else if (IsLow(unit)) {
    AppendUtf8(kReplacement, sText);
    ++lReplaced_;
  } else {
    AppendUtf8(unit, sText);
  }
}

void clsUtf16Text::Convert(std::string_view sBytes, std::string& sText) {
  for (size_t n = 0; n + 1 < sBytes.size(); n += 2) {
    const char16_t unit = UnitAt(sBytes, n);
    if (unit < 0x80 && high_ == 0) {
      sText.push_back(static_cast<char>(unit));
    } else {
      TakeUnit(unit, sText);
    }
  }
}

void clsUtf16Text::End(bool bOdd, std::string& sText) {
  const int64_t lBroken = (high_ != 0 ? 1 : 0) + (bOdd ? 1 : 0);
  for (int64_t i = 0; i < lBroken; ++i) AppendUtf8(kReplacement, sText);
  lReplaced_ += lBroken;
  high_ = 0;
}

}  // namespace quillon
