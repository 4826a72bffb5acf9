#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

/// A number that stands for the texts added, the same on every machine: FNV-1a of 64 bits, each text closed by its
/// length, so that "ab","c" and "a","bc" differ. Tells a change; no guard against someone who wants a collision.
class clsFingerprint {
 public:
  clsFingerprint& Add(std::string_view sText);
  clsFingerprint& Add(int64_t lNumber) { return Add(std::to_string(lNumber)); }
  uint64_t Value() const { return nValue_; }
  /// Sixteen hexadecimal digits.
  std::string Text() const;

 private:
  uint64_t nValue_ = 0xcbf29ce484222325;
};

}  // namespace quillon
