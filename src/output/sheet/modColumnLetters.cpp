#include "modColumnLetters.h"

#include <algorithm>

#include "clsWorkbook.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int32_t kLetters = 26;
constexpr int32_t kTwoLetters = kLetters * kLetters + kLetters;

void ShowRefusal(clsHost& host, std::string_view sText) {
  host.ShowMessage(Translate(sText), "Quillon", MessageIcon::Critical, MessageButtons::Ok);
}

/// 1 to 26, or 0.
int32_t LetterValue(char ch) {
  if (ch >= 'A' && ch <= 'Z') return ch - 'A' + 1;
  if (ch >= 'a' && ch <= 'z') return ch - 'a' + 1;
  return 0;
}

}  // namespace

std::string NumToAlpha(clsHost& host, int32_t nColumn) {
  if (nColumn >= 1 && nColumn <= kLetters) return std::string(1, static_cast<char>('A' + nColumn - 1));
  ShowRefusal(host, "unexpected number code in utilities.NumToAlpha!");
  return {};
}

int32_t AlphaToNum(clsHost& host, std::string_view sLetter) {
  const int32_t nValue = sLetter.size() == 1 ? LetterValue(sLetter[0]) : 0;
  if (nValue == 0) ShowRefusal(host, "unexpected Letter code in utilities.AlphaToNum!");
  return nValue;
}

std::string NumToAlpha2(clsHost& host, int32_t nColumn) {
  if (nColumn >= 1 && nColumn <= kTwoLetters) return ColumnLetters(nColumn);
  ShowRefusal(host, "unexpected number code in xl.NumToAlpha2!");
  return {};
}

int32_t AlphaToNum2(clsHost& host, std::string_view sLetters) {
  const int32_t nValue = sLetters.size() <= 2 ? ColumnOfLetters(sLetters) : 0;
  if (nValue == 0) ShowRefusal(host, "unexpected letter code in xl.AlphaToNum2!");
  return nValue;
}

int ColumnOfLetters(std::string_view sLetters) {
  int nColumn = 0;
  for (const char ch : sLetters) {
    const int nLetter = LetterValue(ch);
    nColumn = nColumn * kLetters + nLetter;
    if (nLetter == 0 || nColumn > kMaxSheetColumns) return 0;
  }
  return nColumn;
}

std::string ColumnLetters(int nColumn) {
  std::string sLetters;
  for (; nColumn > 0; nColumn = (nColumn - 1) / kLetters)
    sLetters.push_back(static_cast<char>('A' + (nColumn - 1) % kLetters));
  std::reverse(sLetters.begin(), sLetters.end());
  return sLetters;
}

}  // namespace quillon
