#include "modTidyText.h"

#include <algorithm>

#include "modText.h"

namespace quillon {

namespace {

int HexValue(char ch) {
  if (IsAsciiDigit(ch)) return ch - '0';
  if (ch >= 'A' && ch <= 'F') return ch - 'A' + 10;
  if (ch >= 'a' && ch <= 'f') return ch - 'a' + 10;
  return -1;
}

char LowerAscii(char ch) {
  return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}

/// Letters to put in, take out, change or exchange with their neighbour, so that the words are one but for their case.
size_t WordDistance(std::string_view a, std::string_view b) {
  std::vector<std::vector<size_t>> costs(a.size() + 1, std::vector<size_t>(b.size() + 1));
  for (size_t i = 0; i <= a.size(); ++i) costs[i][0] = i;
  for (size_t j = 0; j <= b.size(); ++j) costs[0][j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    for (size_t j = 1; j <= b.size(); ++j) {
      const bool bSame = LowerAscii(a[i - 1]) == LowerAscii(b[j - 1]);
      size_t& nCost = costs[i][j];
      nCost = std::min({costs[i - 1][j] + 1, costs[i][j - 1] + 1, costs[i - 1][j - 1] + (bSame ? 0U : 1U)});
      const bool bSwapped = i > 1 && j > 1 && LowerAscii(a[i - 1]) == LowerAscii(b[j - 2]) &&
                            LowerAscii(a[i - 2]) == LowerAscii(b[j - 1]);
      if (bSwapped) nCost = std::min(nCost, costs[i - 2][j - 2] + 1);
    }
  }
  return costs[a.size()][b.size()];
}

}  // namespace

std::string TidyUnescaped(std::string_view sText) {
  std::string sOut;
  for (size_t i = 0; i < sText.size(); ++i) {
    const bool bEscape = sText[i] == '\\' && i + 3 < sText.size() && sText[i + 1] == 'x' &&
                         HexValue(sText[i + 2]) >= 0 && HexValue(sText[i + 3]) >= 0;
    if (!bEscape) {
      sOut.push_back(sText[i]);
      continue;
    }
    const auto ch = static_cast<char32_t>(HexValue(sText[i + 2]) * 16 + HexValue(sText[i + 3]));
    AppendUtf8(ch, sOut);
    i += 3;
  }
  return sOut;
}

std::vector<std::string_view> TidyPieces(std::string_view sText, char separator) {
  std::vector<std::string_view> pieces;
  bool bQuoted = false;
  size_t nFrom = 0;
  for (size_t i = 0; i <= sText.size(); ++i) {
    if (i < sText.size() && sText[i] == '"') bQuoted = !bQuoted;
    if (i < sText.size() && (bQuoted || sText[i] != separator)) continue;
    pieces.push_back(TrimBlanks(sText.substr(nFrom, i - nFrom)));
    nFrom = i + 1;
  }
  return pieces;
}

std::vector<std::string> TidyAlternatives(std::string_view sText) {
  std::vector<std::string> texts;
  size_t nFrom = 0;
  while (nFrom <= sText.size()) {
    const size_t nBar = std::min(sText.find('|', nFrom), sText.size());
    const std::string_view sPiece = TrimBlanks(sText.substr(nFrom, nBar - nFrom));
    if (!sPiece.empty()) texts.push_back(TidyUnescaped(sPiece));
    nFrom = nBar + 1;
  }
  return texts;
}

std::string_view NearestWord(std::string_view sWord, std::span<const std::string_view> words) {
  constexpr size_t kLongest = 40;
  std::string_view sNearest;
  size_t nNearest = sWord.size() / 2 + 1;
  if (sWord.size() > kLongest) return {};
  for (const std::string_view sCandidate : words) {
    const size_t nDistance = WordDistance(sWord, sCandidate);
    if (nDistance >= nNearest) continue;
    nNearest = nDistance;
    sNearest = sCandidate;
  }
  return sNearest;
}

std::optional<TidyColumn> TidyColumnOf(std::string_view sLetters) {
  if (sLetters.empty() || sLetters.size() > 4) return std::nullopt;
  size_t nColumn = 0;
  for (const char ch : sLetters) {
    if (ch < 'A' || ch > 'Z') return std::nullopt;
    nColumn = nColumn * 26 + static_cast<size_t>(ch - 'A') + 1;
  }
  return nColumn - 1;
}

std::string TidyColumnLetters(TidyColumn column) {
  std::string sLetters;
  for (size_t n = column + 1; n > 0; n = (n - 1) / 26)
    sLetters.insert(sLetters.begin(), static_cast<char>('A' + (n - 1) % 26));
  return sLetters;
}

}  // namespace quillon
