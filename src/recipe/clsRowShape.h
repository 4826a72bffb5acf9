#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "clsCodePage.h"
#include "modText.h"

namespace quillon {

/// How wide the rows are and which columns they occupy, by the rules of ExpandTabs and without making any text of it.
class clsRowShape {
 public:
  /// Characters in a row; no report has a wider one, and no memory is spent on what has.
  static constexpr int64_t kMaxWidth = int64_t{16} << 20;

  clsRowShape(const clsCodePage& page, int32_t tab_size) : bUtf8_(!page.IsSingleByte()), lTabSize_(tab_size) {
    for (size_t i = 0; i < blank_.size(); ++i) {
      const auto byte = static_cast<unsigned char>(i);
      blank_[i] = byte == ' ' || (!bUtf8_ && page.CharOf(byte) == 0xA0);
    }
  }

  /// Takes a row in the bytes of the page. False if it is wider than kMaxWidth.
  bool Add(std::string_view sRow) {
    lColumn_ = 0;
    lTabStop_ = 1;
    bool bLastBlank = true;  // an empty row gets no closing blank
    for (size_t i = 0; i < sRow.size() && lColumn_ <= kMaxWidth;) {
      const auto byte = static_cast<unsigned char>(sRow[i]);
      if (byte == '\t' && lTabSize_ > 0) {
        const int64_t lBlanks = TabBlanks();
        lColumn_ += lBlanks;
        bLastBlank = bLastBlank || lBlanks > 0;
        ++i;
        continue;
      }
      bool bBlank = blank_[byte];
      bLastBlank = byte == ' ';
      if (byte < 0x80 || !bUtf8_) {
        ++i;
      } else {
        bBlank = DecodeUtf8(sRow, i) == 0xA0;
      }
      ++lColumn_;
      if (!bBlank) Occupy();
    }
    lWidth_ = std::max(lWidth_, lColumn_ + (bLastBlank ? 0 : 1));
    return lWidth_ <= kMaxWidth;
  }

  /// Characters of the widest row, the blank included that closes a row which doesn't end in one.
  int64_t Width() const { return lWidth_; }
  /// For each character column, whether any row has more than a blank there. A no-break space is a blank.
  std::vector<bool> Occupied() && {
    occupied_.resize(static_cast<size_t>(lWidth_));
    return std::move(occupied_);
  }

 private:
  int64_t TabBlanks() {
    do lTabStop_ += lTabSize_;
    while (lColumn_ >= lTabStop_);
    return lTabStop_ - lColumn_ - 1;
  }
  void Occupy() {
    const auto nIndex = static_cast<size_t>(lColumn_) - 1;
    if (nIndex >= occupied_.size()) occupied_.resize(nIndex + 1);
    occupied_[nIndex] = true;
  }

  const bool bUtf8_;
  const int32_t lTabSize_;
  std::array<bool, 256> blank_{};
  std::vector<bool> occupied_;
  int64_t lWidth_ = 0;
  int64_t lColumn_ = 0;
  int64_t lTabStop_ = 1;
};

}  // namespace quillon
