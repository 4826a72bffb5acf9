#include "clsFormulaScanner.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "modFormula.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMaxStringChars = 255;
constexpr std::array<std::string_view, 7> kErrors = {"#NULL!", "#DIV/0!", "#VALUE!", "#REF!",
                                                     "#NAME?", "#NUM!",   "#N/A"};
constexpr std::array<std::string_view, clsFormulaScanner::kOperatorLevels> kOperators = {"", "&", "+-", "*/", "^"};

size_t CompareLength(std::string_view sText) {
  for (const std::string_view sOperator : {"<>", "<=", ">=", "=", "<", ">"})
    if (sText.starts_with(sOperator)) return sOperator.size();
  return 0;
}

}  // namespace

std::string_view clsFormulaScanner::TakeFirst(size_t nChars) {
  const std::string_view sTaken = sRest_.substr(0, nChars);
  sRest_.remove_prefix(sTaken.size());
  return sTaken;
}

bool clsFormulaScanner::Take(char ch) {
  if (!sRest_.starts_with(ch)) return false;
  sRest_.remove_prefix(1);
  return true;
}

bool clsFormulaScanner::SkipBehind(char ch) {
  const size_t nFound = sRest_.find(ch);
  if (nFound == std::string_view::npos) return false;
  sRest_.remove_prefix(nFound + 1);
  return true;
}

void clsFormulaScanner::SkipBlanks() {
  TakeFirst(sRest_.find_first_not_of(' '));
}

std::string_view clsFormulaScanner::TakeWord() {
  const auto end = std::find_if_not(sRest_.begin(), sRest_.end(), IsFormulaWord);
  return TakeFirst(static_cast<size_t>(end - sRest_.begin()));
}

std::string_view clsFormulaScanner::TakeSigns() {
  return TakeFirst(sRest_.find_first_not_of("+- "));
}

std::string_view clsFormulaScanner::TakeOperator(int nLevel) {
  if (nLevel == 0) return TakeFirst(CompareLength(sRest_));
  const bool bHere = !sRest_.empty() && kOperators[static_cast<size_t>(nLevel)].find(Peek()) != std::string_view::npos;
  return TakeFirst(bHere ? 1 : 0);
}

std::string_view clsFormulaScanner::TakeError() {
  for (const std::string_view sError : kErrors) {
    if (!EqualNoCase(sRest_.substr(0, sError.size()), sError)) continue;
    TakeFirst(sError.size());
    return sError;
  }
  return {};
}

bool clsFormulaScanner::TakeNumber(double& nValue) {
  // Infinities and signs are numbers to the library only.
  if (!(IsAsciiDigit(Peek()) || Peek() == '.')) return false;
  const auto [pBehind, error] = std::from_chars(sRest_.data(), sRest_.data() + sRest_.size(), nValue);
  if (error != std::errc()) return false;
  TakeFirst(static_cast<size_t>(pBehind - sRest_.data()));
  return !IsFormulaWord(Peek());
}

bool clsFormulaScanner::TakeQuoted(std::string& sOut) {
  const char chQuote = Peek();
  TakeFirst(1);
  while (!AtEnd()) {
    sOut += TakeFirst(sRest_.find(chQuote));
    if (!Take(chQuote)) return false;
    if (!Take(chQuote)) return true;
    sOut += chQuote;
  }
  return false;
}

bool clsFormulaScanner::TakeString(std::string& sOut) {
  return TakeQuoted(sOut) && CharCount(sOut) <= kMaxStringChars;
}

bool clsFormulaScanner::RowsStandHere() const {
  const size_t nDigits = sRest_.find_first_not_of("0123456789");
  return nDigits != 0 && nDigits != std::string_view::npos && sRest_[nDigits] == ':';
}

}  // namespace quillon
