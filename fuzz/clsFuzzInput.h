#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "clsCodePage.h"

namespace quillon {

/// The bytes of one run of a fuzz entry, taken piece by piece from the front.
class clsFuzzInput {
 public:
  clsFuzzInput(const uint8_t* pData, size_t nSize) : sInput(reinterpret_cast<const char*>(pData), nSize) {}
  /// 0 at the end.
  unsigned char TakeByte() {
    if (sInput.empty()) return 0;
    const auto byte = static_cast<unsigned char>(sInput.front());
    sInput.remove_prefix(1);
    return byte;
  }
  /// Up to the next NUL, which is dropped.
  std::string_view TakePart() {
    const size_t nEnd = std::min(sInput.find('\0'), sInput.size());
    const std::string_view sPart = sInput.substr(0, nEnd);
    sInput.remove_prefix(std::min(nEnd + 1, sInput.size()));
    return sPart;
  }

  std::string_view sInput;
};

/// One of the pages that differ in kind; null: by content.
inline const clsCodePage* FuzzPage(unsigned nChoice) {
  static const clsCodePage* const pages[] = {&clsCodePage::Windows1252(), &clsCodePage::Utf8(),
                                             clsCodePage::Find("cp437"), nullptr};
  return pages[nChoice % 4];
}

/// Ends the process, as a finding, if what must hold doesn't.
inline void Must(bool bHolds, const char* pWhat) {
  if (bHolds) return;
  std::fprintf(stderr, "does not hold: %s\n", pWhat);
  std::abort();
}

}  // namespace quillon
