#include "modLineShape.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "modNumbers.h"
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

struct WordCounts {
  int nFigures = 0, nTexts = 0;
  int nApart = 0;  ///< Figures with a gap in front of them
};

bool HasLetterOrDigit(std::string_view sWord) {
  return std::any_of(sWord.begin(), sWord.end(), [](char c) {
    return IsAsciiDigit(c) || IsAsciiLetter(c) || static_cast<unsigned char>(c) >= 0x80;
  });
}

/// A number, date or time by its characters. Commas and points at the end are those of sentences.
bool IsFigure(std::string_view sWord) {
  if (sWord.ends_with("CR") || sWord.ends_with("DR")) sWord.remove_suffix(2);
  if (sWord.empty() || std::string_view(",.;:").find(sWord.back()) != std::string_view::npos) return false;
  if (std::none_of(sWord.begin(), sWord.end(), IsAsciiDigit)) return false;
  int nDepth = 0;
  for (size_t i = 0; i < sWord.size(); ++i) {
    const char c = sWord[i];
    nDepth += c == '(' ? 1 : c == ')' ? -1 : 0;
    const bool bExponent = i > 0 && std::string_view("EeDd").find(c) != std::string_view::npos &&
                           i + 1 < sWord.size() && (sWord[i + 1] == '+' || sWord[i + 1] == '-');
    if (!bExponent && !IsAsciiDigit(c) && std::string_view("+-.,/:$%()'*").find(c) == std::string_view::npos)
      return false;
  }
  return nDepth == 0;
}

/// How many numbers a word holds that is made of them more than of letters: 00/00/T/12/00.
int DigitGroups(std::string_view sWord) {
  int nGroups = 0;
  int nDigits = 0;
  int nLetters = 0;
  for (size_t i = 0; i < sWord.size(); ++i) {
    const bool bDigit = IsAsciiDigit(sWord[i]);
    nDigits += bDigit ? 1 : 0;
    nLetters += IsAsciiLetter(sWord[i]) ? 1 : 0;
    nGroups += bDigit && (i == 0 || !IsAsciiDigit(sWord[i - 1])) ? 1 : 0;
  }
  return nDigits > nLetters ? nGroups : 0;
}

template <typename Take>
void EachWord(std::string_view sLine, Take take) {
  for (size_t i = 0; i < sLine.size();) {
    const size_t nWord = sLine.find_first_not_of(' ', i);
    if (nWord == std::string_view::npos) return;
    const size_t nEnd = std::min(sLine.find(' ', nWord), sLine.size());
    take(sLine.substr(nWord, nEnd - nWord), nWord == 0 || nWord > i + 1);
    i = nEnd;
  }
}

/// 0 if it is none of these times.
int YearOf(std::string_view sWord) {
  constexpr size_t kDigits = 4;
  if (sWord.size() != kDigits || !(sWord.starts_with("19") || sWord.starts_with("20"))) return 0;
  return ParseWholeNumber(sWord).value_or(0);
}

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

bool HasSeveralFigures(std::string_view sLine) {
  constexpr int kSeveral = 2;
  constexpr int kMany = 5;
  WordCounts counts;
  bool bInText = false;
  EachWord(sLine, [&](std::string_view sWord, bool bGap) {
    const int nGroups = DigitGroups(sWord);
    const bool bFigure = nGroups > kMany || IsFigure(sWord);
    if (bFigure) {
      counts.nFigures += nGroups > kMany ? nGroups : 1;
      counts.nApart += bGap ? 1 : 0;
    } else if (HasLetterOrDigit(sWord)) {
      // Words with one blank between them are one text; a label in front of a value is as much as two.
      counts.nTexts += (bInText && !bGap ? 0 : 1) + (sWord.back() == ':' || sWord.back() == '=' ? 1 : 0);
    }
    bInText = !bFigure && (bInText || HasLetterOrDigit(sWord));
  });
  return counts.nFigures > counts.nTexts && (counts.nApart >= kSeveral || counts.nFigures >= kMany);
}

bool CountsColumns(std::string_view sLine) {
  constexpr int kEnough = 4;
  int nFigures = 0;
  int nNext = 1;
  int nYears = 0;
  int nLastYear = 0;
  EachWord(sLine, [&](std::string_view sWord, bool /*bGap*/) {
    if (!IsFigure(sWord)) return;
    ++nFigures;
    if (sWord == std::to_string(nNext)) ++nNext;
    const int nYear = YearOf(sWord);
    const bool bFollows = nYears == 0 || nYear == nLastYear + 1 || nYear == nLastYear - 1;
    nYears += nYear > 0 && bFollows ? 1 : 0;
    nLastYear = nYear;
  });
  return (nNext > std::min(nFigures, kEnough) && nNext > 2) || (nYears > 1 && nYears == nFigures);
}

}  // namespace quillon
