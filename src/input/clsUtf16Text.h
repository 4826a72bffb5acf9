#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

/// UTF-16 to UTF-8, block by block. Each surrogate without its partner and an odd last byte become U+FFFD and are
/// counted.
class clsUtf16Text {
 public:
  /// How many bytes at the front are the BOM, which also tells the order; little-endian without one.
  size_t TakeBom(std::string_view sHead);
  bool IsBigEndian() const { return bBigEndian_; }
  char16_t UnitAt(std::string_view sBytes, size_t nByte) const;

  /// Appends the text of all whole units; an odd last byte is left to the caller.
  void Convert(std::string_view sBytes, std::string& sText);
  /// What is left at the end of the file: half a pair, and half a unit if bOdd.
  void End(bool bOdd, std::string& sText);
  int64_t Replaced() const { return lReplaced_; }

 private:
  void TakeUnit(char16_t unit, std::string& sText);

  bool bBigEndian_ = false;
  char16_t high_ = 0;  ///< A high surrogate that waits for its partner
  int64_t lReplaced_ = 0;
};

}  // namespace quillon
