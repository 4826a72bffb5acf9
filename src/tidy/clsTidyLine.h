#pragma once

#include <bit>
#include <cstdint>
#include <string_view>
#include <vector>

#include "modText.h"

namespace quillon {

/// One line of a report with its characters by position (from 0), trimmed at its right. Plain ASCII costs no table of
/// positions, and has a map of its ink that tells what is blank many characters at a time.
class clsTidyLine {
 public:
  /// The text must stay as long as it is used.
  void Set(std::string_view sText);

  std::string_view Text() const { return sText_; }
  size_t Size() const { return bAscii_ ? sText_.size() : starts_.size() - 1; }
  bool IsBlank() const { return sText_.empty(); }
  /// False if no sign of a currency can stand anywhere in it.
  bool MayHaveCurrency() const { return !bAscii_ || sText_.find('$') != std::string_view::npos; }
  /// Drawn with characters that make lines and boxes, at least two alike in a row: "-----", "==== ====", "*---*".
  bool IsDrawn() const {
    if (sText_.empty()) return false;
    // What nearly all lines begin with tells it at once.
    const size_t nFirst = bAscii_ && ink_[0] != 0 ? static_cast<size_t>(std::countr_zero(ink_[0])) : 0;
    return !IsAsciiDigit(sText_[nFirst]) && !IsAsciiLetter(sText_[nFirst]) && IsDrawnFrom(nFirst);
  }

  size_t Offset(size_t nPosition) const {
    if (!bAscii_) return starts_[nPosition < starts_.size() ? nPosition : starts_.size() - 1];
    return nPosition < sText_.size() ? nPosition : sText_.size();
  }
  /// Characters nFrom to nTo (not included), with their blanks.
  std::string_view Piece(size_t nFrom, size_t nTo) const {
    const size_t nStart = Offset(nFrom);
    return sText_.substr(nStart, Offset(nTo) - nStart);
  }
  bool IsAscii() const { return bAscii_; }
  /// Of a line in plain ASCII: bit n of word k is set where position 64 * k + n isn't blank. Two blank words follow.
  const std::vector<uint64_t>& Ink() const { return ink_; }
  /// Words of the map that the line reaches into.
  size_t InkWords() const { return (sText_.size() + 63) / 64; }
  bool IsBlankAt(size_t nPosition) const {
    if (bAscii_) return nPosition >= sText_.size() || sText_[nPosition] == ' ';
    return nPosition >= Size() || sText_[Offset(nPosition)] == ' ';
  }
  bool IsDigitAt(size_t nPosition) const { return nPosition < Size() && IsAsciiDigit(sText_[Offset(nPosition)]); }
  bool IsLetterAt(size_t nPosition) const;
  bool IsLetterOrDigitAt(size_t nPosition) const {
    if (!bAscii_) return IsDigitAt(nPosition) || IsLetterAt(nPosition);
    return nPosition < sText_.size() && (IsAsciiDigit(sText_[nPosition]) || IsAsciiLetter(sText_[nPosition]));
  }
  /// Characters nFrom to nTo (not included) that aren't blank.
  int64_t InkOf(size_t nFrom, size_t nTo) const {
    int64_t lInk = 0;
    for (size_t n = nFrom; n < nTo && n < Size(); ++n) lInk += IsBlankAt(n) ? 0 : 1;
    return lInk;
  }
  /// The piece without the blanks around it.
  std::string_view Trimmed(size_t nFrom, size_t nTo) const {
    constexpr size_t kWord = 64;
    if (bAscii_ && nTo > sText_.size()) nTo = sText_.size();
    if (bAscii_ && nFrom >= nTo) return {};
    if (bAscii_ && nTo - nFrom <= kWord) {
      const uint64_t* const pInk = ink_.data() + nFrom / kWord;
      const size_t nShift = nFrom % kWord;
      uint64_t nInk = *pInk >> nShift;
      if (nShift > 0) nInk |= pInk[1] << (kWord - nShift);
      nInk &= ~uint64_t{0} >> (kWord - (nTo - nFrom));
      if (nInk == 0) return {};
      const auto nFirst = static_cast<size_t>(std::countr_zero(nInk));
      const size_t nEnd = kWord - static_cast<size_t>(std::countl_zero(nInk));
      return {sText_.data() + nFrom + nFirst, nEnd - nFirst};
    }
    const char* const pText = sText_.data();
    size_t nStart = Offset(nFrom);
    size_t nEnd = Offset(nTo);
    while (nStart < nEnd && pText[nStart] == ' ') ++nStart;
    while (nStart < nEnd && pText[nEnd - 1] == ' ') --nEnd;
    return nStart < nEnd ? std::string_view(pText + nStart, nEnd - nStart) : std::string_view();
  }
  /// Position of the character at a byte.
  size_t PositionOf(size_t nByte) const;

 private:
  bool FindInk(std::string_view sText);
  bool IsDrawnFrom(size_t nByte) const;

  std::string_view sText_;
  bool bAscii_ = true;
  std::vector<uint64_t> ink_;        ///< Of texts in plain ASCII
  std::vector<uint32_t> starts_{0};  ///< Byte of each character and of the end; of texts that aren't ASCII
};

/// A letter of any writing, as far as a report tells it from signs and drawings.
bool IsTidyLetter(char32_t ch);

}  // namespace quillon
