#include "modCharacterList.h"

#include <string_view>

#include "modSettings.h"
#include "modText.h"

namespace quillon {

const clsCodePage& CharacterCodePage() {
  const clsCodePage* const pPage = SystemCodePage();
  return pPage != nullptr && pPage->IsSingleByte() ? *pPage : clsCodePage::Windows1252();
}

std::array<std::string, 256> FillInCharacterSelectionListBox() {
  constexpr std::string_view kNames[] = {"SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "TAB", "LF",   "VT",
                                         "FF",  "CR",  "SO",  "SI",  "DLE", "DC1", "DC2", "DC3", "DC4", "NAK",  "SYN",
                                         "ETB", "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US",  "Space"};
  std::array<std::string, 256> entries;
  entries[0] = "ASCII Char";
  for (size_t n = 1; n < entries.size(); ++n) {
    entries[n] = "[" + std::to_string(n) + "] ";
    if (n <= std::size(kNames)) {
      entries[n] += kNames[n - 1];
    } else {
      AppendUtf8(CharacterCodePage().CharOf(static_cast<unsigned char>(n)), entries[n]);
    }
  }
  return entries;
}

}  // namespace quillon
