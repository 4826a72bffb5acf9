#include "modLineNumbers.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kNone = static_cast<size_t>(-1);
/// Marks of a sign may stand so far behind a column of numbers without one.
constexpr int32_t kSignRoom = 2;

struct Word {
  size_t nFrom = 0, nBytes = 0;
  int32_t nFirst = 0, nLast = 0;  ///< Characters, from 1
  bool bDigits = false;
};

/// The next word at or behind the byte; nChar is the number of characters before it. False behind the last.
bool NextWord(std::string_view sLine, size_t& nByte, int32_t& nChar, Word& word) {
  const auto isPart = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  while (nByte < sLine.size() && sLine[nByte] == ' ') ++nByte, ++nChar;
  if (nByte == sLine.size()) return false;
  word = {nByte, 0, nChar + 1, 0, false};
  for (; nByte < sLine.size() && sLine[nByte] != ' '; ++nByte) {
    if (!isPart(sLine[nByte])) ++nChar;
    word.bDigits = word.bDigits || IsAsciiDigit(sLine[nByte]);
  }
  word.nBytes = nByte - word.nFrom;
  word.nLast = nChar;
  return true;
}

/// CR and DR may stand behind a blank.
void TakeSideMark(std::string_view sLine, size_t& nByte, int32_t& nChar, Word& word) {
  const std::string_view sBehind = sLine.substr(nByte);
  if (!word.bDigits || !(sBehind.starts_with(" CR") || sBehind.starts_with(" DR"))) return;
  if (sBehind.size() > 3 && sBehind[3] != ' ') return;
  nByte += 3;
  nChar += 3;
  word.nBytes = nByte - word.nFrom;
  word.nLast = nChar;
}

int32_t EndOf(const ProofColumn& column) {
  return column.nEnd > 0 ? column.nEnd : std::numeric_limits<int32_t>::max();
}

/// The number column that a last character stands under: one that holds it, else the nearest across a gap, where what
/// stands close behind a column is its sign. None if another column holds the character.
size_t ColumnOf(int32_t nLast, std::span<const ProofColumn> columns) {
  size_t nBefore = kNone;
  size_t nBehind = kNone;
  for (size_t i = 0; i < columns.size(); ++i) {
    const ProofColumn& column = columns[i];
    if (column.nStart < 1) continue;
    if (column.nStart <= nLast && nLast <= EndOf(column)) return column.bNumber ? i : kNone;
    if (EndOf(column) < nLast && (nBefore == kNone || EndOf(columns[nBefore]) < EndOf(column))) nBefore = i;
    if (column.nStart > nLast && (nBehind == kNone || column.nStart < columns[nBehind].nStart)) nBehind = i;
  }
  if (nBefore != kNone && columns[nBefore].bNumber && nLast - EndOf(columns[nBefore]) <= kSignRoom) return nBefore;
  return nBehind != kNone && columns[nBehind].bNumber ? nBehind : kNone;
}

void Put(size_t nColumn, const TidyNumber& number, std::string_view sPrinted, LineNumbers& found) {
  auto& numbers = found.numbers;
  const auto same = std::find_if(numbers.begin(), numbers.end(), [&](const auto& x) { return x.nColumn == nColumn; });
  if (same != numbers.end()) numbers.erase(same);
  numbers.push_back({nColumn, number, sPrinted});
}

/// Letters in front of a number without a blank between them: "TOTAL3,700.75".
size_t LettersInFront(std::string_view sWord) {
  size_t nLetters = std::min(sWord.find_first_of("0123456789"), sWord.size());
  while (nLetters > 0 && std::string_view("$(.").find(sWord[nLetters - 1]) != std::string_view::npos) --nLetters;
  const auto isPart = [](char c) { return IsAsciiLetter(c) || c == ':' || c == '='; };
  return std::all_of(sWord.begin(), sWord.begin() + static_cast<std::ptrdiff_t>(nLetters), isPart) ? nLetters : 0;
}

/// Numbers without a blank between them, parted where their columns end.
void TakeTouching(std::string_view sLine, const Word& word, std::span<const ProofColumn> columns, LineNumbers& found) {
  for (size_t i = 0; i < columns.size(); ++i) {
    const ProofColumn& column = columns[i];
    if (!column.bNumber || column.nStart < 1 || column.nEnd < word.nFirst || column.nEnd > word.nLast) continue;
    const int32_t nFrom = std::max(column.nStart, word.nFirst);
    const std::string_view sPiece = MidChars(sLine, nFrom, column.nEnd - nFrom + 1);
    if (const auto number = ReadTidyNumber(sPiece, column.typing, nullptr)) Put(i, *number, sPiece, found);
  }
}

/// Finds the longest run of words with one blank between them.
class clsPhrase {
 public:
  clsPhrase(std::string_view sLine, std::string& sBest) : sLine_(sLine), sBest_(sBest) {}
  void Add(size_t nFrom, size_t nBytes) {
    if (nEnd_ == 0 || nFrom != nEnd_ + 1) nFrom_ = nFrom;
    nEnd_ = nFrom + nBytes;
    const std::string_view sRun = sLine_.substr(nFrom_, nEnd_ - nFrom_);
    if (sRun.size() > sBest_.size() && std::any_of(sRun.begin(), sRun.end(), IsAsciiLetter)) sBest_ = sRun;
  }

 private:
  std::string_view sLine_;
  std::string& sBest_;
  size_t nFrom_ = 0, nEnd_ = 0;
};

}  // namespace

void FindLineNumbers(std::string_view sLine, std::span<const ProofColumn> columns, LineNumbers& found) {
  found.numbers.clear();
  found.sWords.clear();
  found.sPhrase.clear();
  clsPhrase phrase(sLine, found.sPhrase);
  Word word;
  size_t nByte = 0;
  for (int32_t nChar = 0; NextWord(sLine, nByte, nChar, word);) {
    TakeSideMark(sLine, nByte, nChar, word);
    const std::string_view sWord = sLine.substr(word.nFrom, word.nBytes);
    const size_t nLetters = word.bDigits ? LettersInFront(sWord) : sWord.size();
    if (nLetters > 0) {
      if (!found.sWords.empty()) found.sWords += ' ';
      found.sWords += sWord.substr(0, nLetters);
      phrase.Add(word.nFrom, nLetters);
    }
    if (!word.bDigits) continue;
    const size_t nColumn = ColumnOf(word.nLast, columns);
    const std::string_view sNumber = sWord.substr(nLetters);
    const auto number = nColumn == kNone ? std::nullopt : ReadTidyNumber(sNumber, columns[nColumn].typing, nullptr);
    if (number) {
      Put(nColumn, *number, sNumber, found);
    } else {
      TakeTouching(sLine, word, columns, found);
    }
  }
}

void FindSplitNumbers(std::string_view sLine, const clsTidyCutter& cutter, std::span<const ProofColumn> columns,
                      LineNumbers& found) {
  found.numbers.clear();
  found.sWords.clear();
  found.sPhrase.clear();
  std::vector<std::string_view> pieces;
  cutter.Split(sLine, pieces);
  size_t nUsed = pieces.size();
  while (nUsed > 0 && pieces[nUsed - 1].empty()) --nUsed;
  const size_t nShift = cutter.IsSplitAtText() ? 0 : pieces.size() - nUsed;
  clsPhrase phrase(sLine, found.sPhrase);
  for (size_t i = 0; i < nUsed; ++i) {
    const std::string_view sPiece = pieces[i];
    if (sPiece.empty()) continue;
    if (std::none_of(sPiece.begin(), sPiece.end(), IsAsciiDigit)) {
      if (!found.sWords.empty()) found.sWords += ' ';
      found.sWords += sPiece;
      phrase.Add(static_cast<size_t>(sPiece.data() - sLine.data()), sPiece.size());
      continue;
    }
    const auto column = std::find_if(columns.begin(), columns.end(),
                                     [&](const ProofColumn& each) { return each.nPiece == i + nShift; });
    if (column == columns.end() || !column->bNumber) continue;
    if (const auto number = ReadTidyNumber(sPiece, column->typing, nullptr))
      Put(static_cast<size_t>(column - columns.begin()), *number, sPiece, found);
  }
}

}  // namespace quillon
