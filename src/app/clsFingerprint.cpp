#include "clsFingerprint.h"

#include <fmt/format.h>

namespace quillon {

clsFingerprint& clsFingerprint::Add(std::string_view sText) {
  constexpr uint64_t kPrime = 0x100000001b3;
  constexpr unsigned kByte = 8;
  for (const char c : sText) nValue_ = (nValue_ ^ static_cast<unsigned char>(c)) * kPrime;
  for (uint64_t nLength = sText.size(), i = 0; i < sizeof nLength; ++i, nLength >>= kByte) {
    nValue_ = (nValue_ ^ (nLength & 0xff)) * kPrime;
  }
  return *this;
}

std::string clsFingerprint::Text() const {
  return fmt::format("{:016x}", nValue_);
}

}  // namespace quillon
