#include "clsCodePage.h"

#include <map>
#include <mutex>
#include <vector>

#include "modPageCharacters.h"
#include "modText.h"

namespace quillon {

namespace {

std::string IconvName(std::string_view sName) {
  const std::string sUpper = UpperText(sName);
  if (sUpper == "WINDOWS-1252" || sUpper == "CP1252") return "WINDOWS-1252";
  return sUpper;
}

}  // namespace

void clsCodePage::Pair(unsigned char byte, char32_t ch) {
  decode_[byte] = ch;
  encode_.emplace(ch, byte);
}

std::unique_ptr<clsCodePage> clsCodePage::Load(std::string_view sName) {
  PageCharacters characters{};
  if (!FindPageCharacters(IconvName(sName), characters)) return nullptr;
  std::unique_ptr<clsCodePage> page(new clsCodePage(std::string(sName), false));
  std::vector<unsigned char> holes;
  for (int i = 0; i < 256; ++i) {
    const auto byte = static_cast<unsigned char>(i);
    const char32_t ch = characters[byte];
    if (i < 0x80 && ch != static_cast<char32_t>(i)) return nullptr;  // EBCDIC, UTF-16: rows would not end at LF
    if (i > 0 && ch == 0) {
      holes.push_back(byte);
    } else {
      page->Pair(byte, ch);
    }
  }
  for (const unsigned char byte : holes) {
    constexpr char32_t kPrivate = 0xF700;
    page->Pair(byte, page->encode_.contains(byte) ? kPrivate + byte : byte);
  }
  // Multi-byte pages have their lead bytes as holes; the single-byte ones have at most a few.
  return holes.size() > 64 ? nullptr : std::move(page);
}

const clsCodePage* clsCodePage::Find(std::string_view sName) {
  const std::string sUpper = UpperText(TrimBlanks(sName));
  if (sUpper == "UTF-8" || sUpper == "UTF8") return &Utf8();
  if (sUpper.empty() || sUpper == "AUTO" || sUpper.find('/') != std::string::npos) return nullptr;
  static std::mutex guard;
  static std::map<std::string, std::unique_ptr<clsCodePage>, std::less<>> pages;
  const std::lock_guard lock(guard);
  auto found = pages.find(sUpper);
  if (found == pages.end()) found = pages.emplace(sUpper, Load(TrimBlanks(sName))).first;
  return found->second.get();
}

const clsCodePage& clsCodePage::Utf8() {
  static const clsCodePage page("UTF-8", true);
  return page;
}

const clsCodePage& clsCodePage::Windows1252() {
  static const clsCodePage* const pPage = Find("windows-1252");
  return pPage != nullptr ? *pPage : Utf8();
}

void clsCodePage::Decode(std::string_view sBytes, std::string& sOut) const {
  if (bUtf8_ || IsAscii(sBytes)) {
    sOut.append(sBytes);
    return;
  }
  for (const char c : sBytes) AppendUtf8(decode_[static_cast<unsigned char>(c)], sOut);
}

std::string clsCodePage::ToUtf8(std::string_view sBytes) const {
  std::string sOut;
  Decode(sBytes, sOut);
  return sOut;
}

size_t clsCodePage::Encode(std::string_view sUtf8, std::string& sOut) const {
  if (bUtf8_ || IsAscii(sUtf8)) {
    sOut.append(sUtf8);
    return 0;
  }
  size_t nLost = 0;
  for (size_t i = 0; i < sUtf8.size();) {
    const auto found = encode_.find(DecodeUtf8(sUtf8, i));
    nLost += found == encode_.end();
    sOut += found == encode_.end() ? '?' : static_cast<char>(found->second);
  }
  return nLost;
}

std::string clsCodePage::FromUtf8(std::string_view sUtf8) const {
  std::string sOut;
  Encode(sUtf8, sOut);
  return sOut;
}

bool clsCodePage::CanEncode(std::string_view sUtf8) const {
  if (bUtf8_ || IsAscii(sUtf8)) return true;
  for (size_t i = 0; i < sUtf8.size();) {
    if (!encode_.contains(DecodeUtf8(sUtf8, i))) return false;
  }
  return true;
}

const clsCodePage& DetectCodePage(std::string_view sBytes) {
  return !IsAscii(sBytes) && IsValidUtf8(sBytes) ? clsCodePage::Utf8() : clsCodePage::Windows1252();
}

}  // namespace quillon
