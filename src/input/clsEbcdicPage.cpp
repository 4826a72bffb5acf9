#include "clsEbcdicPage.h"

#include <map>
#include <memory>

#include "modText.h"

namespace quillon {

const clsEbcdicPage* clsEbcdicPage::Find(std::string_view sName) {
  static std::map<std::string, std::unique_ptr<clsEbcdicPage>, std::less<>> pages;
  const std::string sUpper = UpperText(TrimBlanks(sName));
  // A slash asks iconv for more than a page.
  if (sUpper.empty() || sUpper.find('/') != std::string::npos) return nullptr;
  const auto found = pages.find(sUpper);
  if (found != pages.end()) return found->second.get();
  std::unique_ptr<clsEbcdicPage>& page = pages[sUpper];
  PageCharacters characters{};
  const bool bKnown = FindPageCharacters(sUpper, characters);
  if (!bKnown || characters[0x40] != U' ' || characters[0xC1] != U'A' || characters[0xF0] != U'0') return nullptr;
  for (size_t i = 1; i < characters.size(); ++i) {
    // The holes of a page are told apart by the replacement character no more; no report has them.
    if (characters[i] == 0) characters[i] = 0xFFFD;
  }
  page.reset(new clsEbcdicPage(TrimBlanks(sName), characters));
  return page.get();
}

}  // namespace quillon
