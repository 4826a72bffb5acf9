#include "clsPageNumbers.h"

#include <algorithm>
#include <array>

#include "modText.h"

namespace quillon {

namespace {

/// In small letters.
constexpr std::array<std::string_view, 5> kWords{"page", "seite", "pagina", "p\xC3\xA1gina", "p\xC3\x81gina"};

char Small(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool BeginsWith(std::string_view sText, std::string_view sSmall) {
  return sText.size() >= sSmall.size() &&
         std::equal(sSmall.begin(), sSmall.end(), sText.begin(), [](char a, char b) { return a == Small(b); });
}

/// The bytes of a word for "page" at the beginning of the text; 0 if there is none.
size_t WordBytes(std::string_view sText) {
  const char cFirst = Small(sText.front());
  if (cFirst != 'p' && cFirst != 's') return 0;
  const auto word =
      std::find_if(kWords.begin(), kWords.end(), [&](std::string_view sWord) { return BeginsWith(sText, sWord); });
  return word != kWords.end() ? word->size() : 0;
}

bool IsWordByte(char c) {
  return IsAsciiLetter(c) || IsAsciiDigit(c) || static_cast<unsigned char>(c) >= 0x80;
}

/// The number in front of which a word for "page" stands: " : 12", ". No. 12". -1 if there is none.
int64_t NumberBehind(std::string_view sText) {
  constexpr size_t kMostDigits = 7;
  constexpr std::string_view kMarks = " .:#";
  sText.remove_prefix(std::min(sText.find_first_not_of(kMarks), sText.size()));
  if (BeginsWith(sText, "no") || BeginsWith(sText, "nr")) sText.remove_prefix(2);
  sText.remove_prefix(std::min(sText.find_first_not_of(kMarks), sText.size()));
  int64_t lNumber = 0;
  size_t n = 0;
  for (; n < sText.size() && IsAsciiDigit(sText[n]); ++n) {
    if (n == kMostDigits) return -1;
    lNumber = lNumber * 10 + (sText[n] - '0');
  }
  if (n == 0) return -1;
  // 3-1 and 2.4 are no numbers of pages.
  const bool bGoesOn = n < sText.size() && IsWordByte(sText[n]);
  const bool bParts = n + 1 < sText.size() && std::string_view("-.,").find(sText[n]) != std::string_view::npos &&
                      IsAsciiDigit(sText[n + 1]);
  return bGoesOn || bParts ? -1 : lNumber;
}

}  // namespace

clsPageNumbers::Page clsPageNumbers::PageOf(std::string_view sLine) {
  for (size_t n = 0; n < sLine.size(); ++n) {
    const size_t nBytes = WordBytes(sLine.substr(n));
    if (nBytes == 0 || (n > 0 && IsWordByte(sLine[n - 1]))) continue;
    const int64_t lNumber = NumberBehind(sLine.substr(n + nBytes));
    if (lNumber >= 0) return {lNumber, n};
  }
  return {};
}

void clsPageNumbers::Line(int64_t lLine, std::string_view sLine) {
  const Page page = PageOf(sLine);
  if (page.lNumber < 0 || (lPages_ > 0 && page.lNumber == last_.lNumber)) return;
  const auto nNumber = static_cast<uint64_t>(page.lNumber);
  nSum_ += nNumber;
  nSquares_ += nNumber * nNumber;
  lLeast_ = lPages_ == 0 ? page.lNumber : std::min(lLeast_, page.lNumber);
  lMost_ = std::max(lMost_, page.lNumber);
  if (lPages_++ == 0) {
    lFirst_ = page.lNumber;
  } else if (page.lNumber == last_.lNumber + 1 || page.lNumber <= 1) {
    ++lFollow_;
    if (page.lNumber <= 1 && anew_.lPages++ == 0) anew_ = {1, lLine, page.lNumber, last_.lNumber};
  } else if (page.nPlace == last_.nPlace && out_.lPages++ == 0) {
    out_ = {1, lLine, page.lNumber, last_.lNumber};
  }
  last_ = page;
}

/// Each number from the least to the most came once.
bool clsPageNumbers::AreAllPages() const {
  if (lPages_ != lMost_ - lLeast_ + 1) return false;
  uint64_t nSum = 0;
  uint64_t nSquares = 0;
  for (int64_t l = lLeast_; l <= lMost_; ++l) {
    nSum += static_cast<uint64_t>(l);
    nSquares += static_cast<uint64_t>(l) * static_cast<uint64_t>(l);
  }
  return nSum == nSum_ && nSquares == nSquares_;
}

PageOrder clsPageNumbers::Order() const {
  if (out_.lPages == 0) return lFirst_ > lLeast_ && AreAllPages() ? anew_ : PageOrder();
  return lFollow_ >= out_.lPages || AreAllPages() ? out_ : PageOrder();
}

}  // namespace quillon
