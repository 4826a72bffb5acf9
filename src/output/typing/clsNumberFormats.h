#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The number formats of a workbook in the making, in the order of their first use. A spreadsheet takes some 200 of its
/// users' own; past kMaxFormats there is no new one, and a value that would need it has to stay text.
class clsNumberFormats {
 public:
  clsNumberFormats() : codes_(1) {}

  /// Index of the code, which is put in if it is new: 0 for General (""), -1 if there is no more room.
  int IndexOf(std::string_view sCode) {
    if (sCode.empty()) return 0;
    int& nCached = recent_[CacheSlot(sCode)];
    if (codes_[static_cast<size_t>(nCached)] == sCode) return nCached;
    const int nIndex = Find(sCode);
    if (nIndex >= 0) nCached = nIndex;
    return nIndex;
  }
  /// Codes by index; the first is General.
  const std::vector<std::string>& Codes() const { return codes_; }

  static constexpr int kMaxFormats = 200;

 private:
  static size_t CacheSlot(std::string_view sCode) {
    const auto nFirst = static_cast<unsigned char>(sCode.front()), nLast = static_cast<unsigned char>(sCode.back());
    return (sCode.size() * 7 + nFirst * 3 + nLast) % kCacheSlots;
  }
  int Find(std::string_view sCode);

  static constexpr size_t kCacheSlots = 64;
  std::vector<std::string> codes_;
  std::array<int, kCacheSlots> recent_{};
};

}  // namespace quillon
