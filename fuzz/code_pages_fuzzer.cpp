// Any bytes in any code page, and as UTF-8: bytes of an 8-bit page come back as they were, and the functions on UTF-8
// agree with each other.

#include <array>
#include <string>

#include "clsFuzzInput.h"
#include "modText.h"

using namespace quillon;

namespace {

/// An entry of each family that iconv knows, EBCDIC and multi-byte ones aside.
constexpr std::array<const char*, 16> kPages{
    "windows-1252", "cp437",  "cp850",  "ISO-8859-1", "ISO-8859-2", "ISO-8859-15", "cp1250",     "cp1251",
    "cp1253",       "cp1255", "cp1257", "cp866",      "KOI8-R",     "MACINTOSH",   "ISO-8859-8", "cp874"};

void CheckPage(const clsCodePage& page, std::string_view sBytes) {
  const std::string sText = page.ToUtf8(sBytes);
  Must(IsValidUtf8(sText), "a page gives valid UTF-8");
  Must(CharCount(sText) == sBytes.size(), "a byte is a character");
  Must(page.CanEncode(sText), "a page has what it gave");
  Must(page.FromUtf8(sText) == sBytes, "bytes come back as they were");
  std::string sOut;
  const size_t nLost = page.Encode(sBytes, sOut);
  Must((nLost == 0) == page.CanEncode(sBytes), "a page knows what it lacks");
  Must(sOut.size() == CharCount(sBytes), "a character is a byte");
}

void CheckUtf8(std::string_view sText) {
  size_t nChars = 0;
  std::string sAgain;
  bool bBroken = false;
  for (size_t i = 0; i < sText.size(); ++nChars) {
    const size_t nBefore = i;
    Must(ByteOffset(sText, nChars + 1) == i, "a character is where it is counted");
    const char32_t ch = DecodeUtf8(sText, i);
    Must(i > nBefore && i - nBefore == Utf8CharBytes(sText, nBefore), "characters are taken whole");
    std::string sOne;
    AppendUtf8(ch, sOne);
    bBroken |= sOne != sText.substr(nBefore, i - nBefore);
    sAgain += sText.substr(nBefore, i - nBefore);
    AppendUtf8(UpperChar(ch), sOne);
    Must(IsValidUtf8(sOne), "one character is valid UTF-8");
    if (nChars > 200) i = sText.size();
  }
  if (nChars > 200) return;
  Must(CharCount(sText) == nChars, "characters are counted");
  Must(IsValidUtf8(sText) == !bBroken, "valid is what decodes to itself");
  Must(std::string(MidChars(sText, 1, 3)) + std::string(MidChars(sText, 4, 1 << 20)) == sText, "pieces make the whole");
  Must(CharCount(UpperText(sText)) == nChars, "upper case keeps the count");
  Must(EqualNoCase(sText, sText) && FindNoCase(sText, sText) == 0, "a text is found in itself");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzInput input(pData, nSize);
  const unsigned choice = input.TakeByte();
  if (choice == 255 && input.sInput.size() < 6) {
    // A page of any name, which few are.
    if (const clsCodePage* const pPage = clsCodePage::Find(input.sInput)) pPage->ToUtf8("\x80\xFF");
    return 0;
  }
  const clsCodePage* const pPage = clsCodePage::Find(kPages[choice % kPages.size()]);
  Must(pPage != nullptr, "the page is known");
  CheckPage(*pPage, input.sInput);
  CheckUtf8(input.sInput);
  const clsCodePage& guess = DetectCodePage(input.sInput);
  Must(guess.IsSingleByte() || IsValidUtf8(input.sInput), "only valid UTF-8 is taken for it");
  return 0;
}
