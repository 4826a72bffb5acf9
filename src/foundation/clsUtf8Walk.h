#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "modText.h"

namespace quillon {

/// One walk through a UTF-8 text that stops where characters are asked for, in ascending order: stretches of ASCII are
/// passed eight bytes at a time.
class clsUtf8Walk {
 public:
  explicit clsUtf8Walk(std::string_view sText) : sText_(sText) {}

  /// The byte at which character nChar (from 0) begins; the length of the text if it is shorter.
  size_t To(int64_t nChar) {
    while (nChar_ < nChar && nByte_ < sText_.size()) {
      const size_t nAscii = static_cast<size_t>(std::min<int64_t>(AsciiAhead(), nChar - nChar_));
      nByte_ += nAscii > 0 ? nAscii : Utf8CharBytes(sText_, nByte_);
      nChar_ += nAscii > 0 ? static_cast<int64_t>(nAscii) : 1;
    }
    return nByte_;
  }
  /// Characters passed: all of them once a byte offset was the length of the text.
  int64_t Passed() const { return nChar_; }

 private:
  /// How many of the next eight bytes are ASCII before the first that isn't.
  int64_t AsciiAhead() const {
    constexpr uint64_t kHighBits = 0x8080808080808080U;
    uint64_t bytes = 0;
    if (sText_.size() - nByte_ < sizeof bytes) return static_cast<unsigned char>(sText_[nByte_]) < 0x80 ? 1 : 0;
    std::memcpy(&bytes, sText_.data() + nByte_, sizeof bytes);
    if (std::endian::native != std::endian::little) return (bytes & kHighBits) == 0 ? 8 : 0;
    return std::countr_zero(bytes & kHighBits) / 8;
  }

  std::string_view sText_;
  size_t nByte_ = 0;
  int64_t nChar_ = 0;
};

}  // namespace quillon
