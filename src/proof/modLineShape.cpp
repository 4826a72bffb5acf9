#include "modLineShape.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMostShown = 60;
constexpr size_t kMostKey = 200;

bool IsLetter(char32_t ch) {
  return ch >= 0x80 || IsAsciiLetter(static_cast<char>(ch));
}
bool IsDigit(char32_t ch) {
  return ch < 0x80 && IsAsciiDigit(static_cast<char>(ch));
}

/// Builds the key: figures with what goes with amounts and dates are one kind of word, whatever their length; words of
/// letters with one blank between them another; signs of currency alone are none.
class clsShapeKey {
 public:
  bool IsEmpty() const { return sKey_.empty(); }
  bool IsFull() const { return sKey_.size() >= kMostKey; }

  void BeginWord(int32_t nBlanks) {
    constexpr int32_t kPlaces = 4;  // so many characters are one place
    if (sKey_.empty()) sKey_ = std::to_string(nBlanks / kPlaces) + ":";
    nBlanks_ = std::max(nBlanks, nBlanks_);
    bWord_ = true;
  }
  void Take(char32_t ch) {
    bDigits_ = bDigits_ || IsDigit(ch);
    bLetters_ = bLetters_ || IsLetter(ch);
    bCurrency_ = ch == U'$';
  }
  void EndWord() {
    if (!bWord_) return;
    bWord_ = false;
    const char cKind = bDigits_ ? (bLetters_ ? 'X' : '9') : bLetters_ ? 'A' : '*';
    const bool bNone = cKind == '*' && bCurrency_;
    bDigits_ = bLetters_ = bCurrency_ = false;
    if (bNone) return;
    const bool bTextGoesOn = cKind == 'A' && nBlanks_ == 1 && sKey_.ends_with('A');
    if (!bTextGoesOn) {
      if (!sKey_.ends_with(':')) sKey_ += nBlanks_ > 1 ? "  " : " ";
      sKey_ += cKind;
    }
    nBlanks_ = 0;
  }
  std::string Text() {
    EndWord();
    return std::move(sKey_);
  }

 private:
  std::string sKey_;
  int32_t nBlanks_ = 0;  ///< In front of the word
  bool bWord_ = false, bDigits_ = false, bLetters_ = false, bCurrency_ = false;
};

}  // namespace

std::string LineShape(std::string_view sLine) {
  constexpr size_t kMostLetters = 4;
  constexpr size_t kMostBlanks = 3;
  std::string sShape;
  size_t nRun = 0;
  char cLast = '\0';
  sLine = TrimRightBlanks(sLine);
  for (size_t i = 0; i < sLine.size() && sShape.size() < kMostShown;) {
    const char32_t ch = DecodeUtf8(sLine, i);
    const char cShown = IsDigit(ch) ? '9' : IsLetter(ch) ? 'A' : ch < U' ' ? '.' : static_cast<char>(ch);
    nRun = cShown == cLast ? nRun + 1 : 1;
    cLast = cShown;
    if ((cShown == 'A' && nRun > kMostLetters) || (cShown == ' ' && nRun > kMostBlanks)) continue;
    sShape += cShown;
  }
  return sShape;
}

std::string LineShapeKey(std::string_view sLine) {
  clsShapeKey key;
  int32_t nBlanks = 0;
  for (size_t i = 0; i < sLine.size() && !key.IsFull();) {
    const char32_t ch = DecodeUtf8(sLine, i);
    if (ch == U' ' || ch == 0xA0) {
      key.EndWord();
      ++nBlanks;
      continue;
    }
    if (nBlanks > 0 || key.IsEmpty()) key.BeginWord(nBlanks);
    nBlanks = 0;
    key.Take(ch);
  }
  return key.Text();
}

}  // namespace quillon
