#include "modFormula.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "clsWorkbook.h"
#include "modFormulaWords.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMaxFormulaChars = 8192;
constexpr size_t kMaxStringChars = 255;
constexpr int kMaxDepth = 64;

enum class Operand { Value, Reference, Missing };

bool IsDigit(char ch) {
  return ch >= '0' && ch <= '9';
}
bool IsLetter(char ch) {
  return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z');
}
constexpr std::array<std::string_view, 7> kErrors = {"#NULL!", "#DIV/0!", "#VALUE!", "#REF!",
                                                     "#NAME?", "#NUM!",   "#N/A"};
class clsFormulaParser {
 public:
  clsFormulaParser(std::string_view sFormula, std::vector<FormulaToken>* pTokens)
      : sText_(sFormula), pTokens_(pTokens) {}

  FormulaVerdict Parse() {
    if (sText_.size() > kMaxFormulaChars * 4 || CharCount(sText_) > kMaxFormulaChars)
      return FormulaVerdict::NotAFormula;
    Operand kind = Operand::Value;
    if (!ParseCompare(kind)) return FormulaVerdict::NotAFormula;
    if (nPos_ < sText_.size()) return FormulaVerdict::NotAFormula;
    return bOutside_ ? FormulaVerdict::ReachesOutside : FormulaVerdict::WellFormed;
  }

 private:
  char Peek(size_t nAhead = 0) const { return nPos_ + nAhead < sText_.size() ? sText_[nPos_ + nAhead] : '\0'; }
  bool Take(char ch) {
    if (nPos_ >= sText_.size() || sText_[nPos_] != ch) return false;
    ++nPos_;
    return true;
  }
  void SkipBlanks() {
    while (Peek() == ' ') ++nPos_;
  }
  std::string_view TakeWord() {
    const size_t nStart = nPos_;
    while (nPos_ < sText_.size() && IsFormulaWord(sText_[nPos_])) ++nPos_;
    return sText_.substr(nStart, nPos_ - nStart);
  }
  FormulaToken* Emit(FormulaTokenKind kind) {
    if (pTokens_ == nullptr) return nullptr;
    pTokens_->emplace_back().kind = kind;
    return &pTokens_->back();
  }
  void EmitText(FormulaTokenKind kind, std::string_view sText) {
    if (FormulaToken* const pToken = Emit(kind)) pToken->sText = sText;
  }

  static std::string_view CompareOperator(std::string_view sRest) {
    for (const std::string_view sOperator : {"<>", "<=", ">=", "=", "<", ">"})
      if (sRest.starts_with(sOperator)) return sOperator;
    return {};
  }
  /// The operator of the level that stands here, or "".
  std::string_view OperatorHere(int nLevel) const {
    static constexpr std::array<std::string_view, 5> kLevels = {"", "&", "+-", "*/", "^"};
    if (nLevel == 0) return CompareOperator(sText_.substr(nPos_));
    const size_t nFound = kLevels[static_cast<size_t>(nLevel)].find(Peek());
    return nPos_ < sText_.size() && nFound != std::string_view::npos
               ? kLevels[static_cast<size_t>(nLevel)].substr(nFound, 1)
               : std::string_view();
  }

  bool ParseCompare(Operand& kind) {
    if (++nDepth_ > kMaxDepth) return false;
    const bool bDone = ParseLevel(0, kind);
    --nDepth_;
    return bDone;
  }

  /// One level of binary operators, left to right.
  bool ParseLevel(int nLevel, Operand& kind) {
    if (nLevel == 5) return ParsePercent(kind);
    if (!ParseLevel(nLevel + 1, kind)) return false;
    for (std::string_view s = OperatorHere(nLevel); !s.empty(); s = OperatorHere(nLevel)) {
      nPos_ += s.size();
      if (!ParseLevel(nLevel + 1, kind)) return false;
      EmitText(FormulaTokenKind::Binary, s);
      kind = Operand::Value;
    }
    return true;
  }

  bool ParsePercent(Operand& kind) {
    SkipBlanks();
    const size_t nSigns = nPos_;
    while (Peek() == '+' || Peek() == '-' || Peek() == ' ') ++nPos_;
    const std::string_view sSigns = sText_.substr(nSigns, nPos_ - nSigns);
    if (!ParseOperand(kind)) return false;
    for (auto sign = sSigns.rbegin(); sign != sSigns.rend(); ++sign)
      if (*sign != ' ') EmitText(FormulaTokenKind::Sign, std::string_view(&*sign, 1)), kind = Operand::Value;
    SkipBlanks();
    while (Take('%')) {
      Emit(FormulaTokenKind::Percent);
      kind = Operand::Value;
      SkipBlanks();
    }
    return true;
  }

  bool ParseOperand(Operand& kind) {
    kind = Operand::Value;
    const char ch = Peek();
    switch (ch) {
      case '"':
        return ParseString();
      case '#':
        return ParseError(kind);
      case '{':
        return ParseArray();
      case '(':
        return ParseParentheses(kind);
      case '\'':
        return ParseQuotedSheet(kind);
      case '[':
        return ParseExternal(kind);
      default:
        break;
    }
    if (IsDigit(ch) || ch == '.') return RowsStandHere() ? ParseReference({}, kind) : ParseNumber();
    return IsFormulaWord(ch) && ParseWord(kind);
  }

  bool ParseParentheses(Operand& kind) {
    ++nPos_;
    if (!ParseCompare(kind)) return false;
    SkipBlanks();
    Emit(FormulaTokenKind::Parentheses);
    return Take(')');
  }

  bool ScanNumber(double& nValue) {
    const char* const pEnd = sText_.data() + sText_.size();
    const auto [pBehind, error] = std::from_chars(sText_.data() + nPos_, pEnd, nValue);
    if (error != std::errc() || !(IsDigit(Peek()) || Peek() == '.')) return false;
    nPos_ = static_cast<size_t>(pBehind - sText_.data());
    return !IsFormulaWord(Peek());
  }
  bool ParseNumber() {
    double nValue = 0;
    if (!ScanNumber(nValue)) return false;
    if (FormulaToken* const pToken = Emit(FormulaTokenKind::Number)) pToken->nValue = nValue;
    return true;
  }

  /// A text in quotes of the kind given, doubled ones undone.
  bool ScanQuoted(char chQuote, std::string& sOut) {
    ++nPos_;
    while (nPos_ < sText_.size()) {
      const char ch = sText_[nPos_++];
      if (ch != chQuote) {
        sOut += ch;
      } else if (!Take(chQuote)) {
        return true;
      } else {
        sOut += chQuote;
      }
    }
    return false;
  }
  bool ParseString() {
    std::string sValue;
    if (!ScanQuoted('"', sValue) || CharCount(sValue) > kMaxStringChars) return false;
    EmitText(FormulaTokenKind::Text, sValue);
    return true;
  }
  std::string_view ScanError() {
    for (const std::string_view sError : kErrors) {
      if (!EqualNoCase(sText_.substr(nPos_, sError.size()), sError)) continue;
      nPos_ += sError.size();
      return sError;
    }
    return {};
  }
  bool ParseError(Operand& kind) {
    const std::string_view sError = ScanError();
    if (sError == "#REF!") kind = Operand::Reference;
    EmitText(FormulaTokenKind::Error, sError);
    return !sError.empty();
  }

  bool ParseArray() {
    FormulaToken array;
    array.kind = FormulaTokenKind::Array;
    int nColumns = 0;
    do {
      ++nPos_;
      SkipBlanks();
      if (!ParseArrayItem(array.items)) return false;
      SkipBlanks();
      ++nColumns;
      if (Peek() == ',') continue;
      if (array.nCount != 0 && array.nCount != nColumns) return false;
      array.nCount = nColumns;
      nColumns = 0;
    } while (Peek() == ',' || Peek() == ';');
    if (pTokens_ != nullptr) pTokens_->push_back(std::move(array));
    return Take('}');
  }
  bool ParseArrayItem(std::vector<FormulaToken>& items) {
    FormulaToken& item = items.emplace_back();
    if (Peek() == '"') {
      item.kind = FormulaTokenKind::Text;
      return ScanQuoted('"', item.sText) && CharCount(item.sText) <= kMaxStringChars;
    }
    if (Peek() == '#') {
      item.kind = FormulaTokenKind::Error;
      item.sText = ScanError();
      return !item.sText.empty();
    }
    if (IsLetter(Peek())) {
      const std::string_view sWord = TakeWord();
      item.kind = FormulaTokenKind::Boolean;
      item.nValue = EqualNoCase(sWord, "TRUE") ? 1 : 0;
      return item.nValue > 0 || EqualNoCase(sWord, "FALSE");
    }
    item.kind = FormulaTokenKind::Number;
    const bool bMinus = Take('-');
    if (!bMinus) Take('+');
    if (!ScanNumber(item.nValue)) return false;
    if (bMinus) item.nValue = -item.nValue;
    return true;
  }

  bool RowsStandHere() const {
    size_t i = nPos_;
    while (i < sText_.size() && IsDigit(sText_[i])) ++i;
    return i > nPos_ && i < sText_.size() && sText_[i] == ':';
  }

  /// A cell, range, columns or rows of the sheet ("" is the own one).
  bool ParseReference(std::string_view sSheet, Operand& kind) {
    kind = Operand::Reference;
    const auto first = ParseFormulaCorner(TakeWord());
    if (!first) return false;
    std::optional<FormulaCorner> second = first;
    const bool bRange = Take(':');
    if (bRange) second = ParseFormulaCorner(TakeWord());
    const bool bCell = first->nRow != 0 && first->nColumn != 0;
    if (!second || (first->nRow == 0) != (second->nRow == 0) || (first->nColumn == 0) != (second->nColumn == 0) ||
        (!bRange && !bCell))
      return false;
    FormulaToken* const pToken = Emit(bRange ? FormulaTokenKind::Area : FormulaTokenKind::Cell);
    if (pToken == nullptr) return true;
    pToken->sText = sSheet;
    pToken->reference = OrderedReference(*first, *second);
    return true;
  }
  bool ParseQuotedSheet(Operand& kind) {
    std::string sSheet;
    if (!ScanQuoted('\'', sSheet) || sSheet.empty()) return false;
    if (Peek() == '|') return ParseLink(kind);
    if (!Take('!')) return false;
    if (sSheet.find_first_of("[]:*?/\\") != std::string::npos) return TakeOutsideItem(kind);
    return ParseReference(sSheet, kind);
  }
  /// [Book]Sheet!A1
  bool ParseExternal(Operand& kind) {
    const size_t nClose = sText_.find(']', nPos_);
    if (nClose == std::string_view::npos) return false;
    nPos_ = nClose + 1;
    TakeWord();
    return Take('!') && TakeOutsideItem(kind);
  }
  /// program|topic!item
  bool ParseLink(Operand& kind) {
    ++nPos_;
    std::string sTopic;
    if (Peek() == '\'' ? !ScanQuoted('\'', sTopic) : TakeWord().empty()) return false;
    return Take('!') && TakeOutsideItem(kind);
  }
  bool TakeOutsideItem(Operand& kind) {
    bOutside_ = true;
    kind = Operand::Reference;
    std::string sItem;
    if (Peek() == '\'') return ScanQuoted('\'', sItem);
    if (TakeWord().empty()) return false;
    return !Take(':') || !TakeWord().empty();
  }

  bool ParseWord(Operand& kind) {
    const size_t nStart = nPos_;
    const std::string_view sWord = TakeWord();
    switch (Peek()) {
      case '(':
        return ParseCall(sWord, kind);
      case '|':
        return ParseLink(kind);
      case '!':
        ++nPos_;
        if (sWord.find('$') != std::string_view::npos || ParseFormulaCorner(sWord) || LooksLikeR1C1(sWord) ||
            sWord[0] == '.')
          return false;
        return ParseReference(sWord, kind);
      default:
        break;
    }
    const bool bTrue = EqualNoCase(sWord, "TRUE");
    if (bTrue || EqualNoCase(sWord, "FALSE")) {
      if (FormulaToken* const pToken = Emit(FormulaTokenKind::Boolean)) pToken->nValue = bTrue ? 1 : 0;
      return true;
    }
    nPos_ = nStart;
    return ParseReference({}, kind);
  }

  bool ParseCall(std::string_view sName, Operand& kind) {
    const FormulaFunction* const pFunction = FindFormulaFunction(sName);
    const bool bCallsOutside = pFunction == nullptr && CallsOutside(sName);
    if (pFunction == nullptr && !bCallsOutside) return false;
    bOutside_ |= bCallsOutside;
    ++nPos_;
    const size_t nArguments = nPos_;
    int nCount = 0;
    if (!ParseArguments(pFunction, nCount) || (pFunction != nullptr && !CountFits(*pFunction, nCount))) return false;
    if (pFunction != nullptr && pFunction->sName == "HYPERLINK" && !StaysInside(nArguments)) bOutside_ = true;
    kind = pFunction != nullptr && pFunction->cResult == 'R' ? Operand::Reference : Operand::Value;
    if (FormulaToken* const pToken = Emit(FormulaTokenKind::Function)) {
      pToken->nCount = nCount;
      pToken->pFunction = pFunction;
    }
    return true;
  }
  /// The target is known to be a place in this workbook.
  bool StaysInside(size_t nArgument) const {
    while (nArgument < sText_.size() && sText_[nArgument] == ' ') ++nArgument;
    if (!sText_.substr(nArgument).starts_with("\"#")) return false;
    const size_t nClose = sText_.find('"', nArgument + 1);
    const size_t nBehind = nClose == std::string_view::npos ? nClose : sText_.find_first_not_of(' ', nClose + 1);
    return nBehind != std::string_view::npos && (sText_[nBehind] == ',' || sText_[nBehind] == ')');
  }

  bool ParseArguments(const FormulaFunction* pFunction, int& nCount) {
    SkipBlanks();
    if (Take(')')) return true;
    do {
      SkipBlanks();
      Operand kind = Operand::Missing;
      if (Peek() == ',' || Peek() == ')') {
        Emit(FormulaTokenKind::Missing);
      } else if (!ParseCompare(kind)) {
        return false;
      }
      if (pFunction != nullptr && DemandsReference(*pFunction, nCount) && kind != Operand::Reference) return false;
      SkipBlanks();
      ++nCount;
    } while (nCount < 256 && Take(','));
    return Take(')');
  }

  enum class Pairs { None, FromFirst, FromSecond };
  /// SUMIFS and its kin take pairs of a range and a condition.
  static Pairs PairsOf(const FormulaFunction& function) {
    if (function.sName == "COUNTIFS") return Pairs::FromFirst;
    return function.sName.ends_with("IFS") ? Pairs::FromSecond : Pairs::None;
  }
  static bool DemandsReference(const FormulaFunction& function, int nArgument) {
    const Pairs pairs = PairsOf(function);
    if (pairs == Pairs::FromFirst) return nArgument % 2 == 0;
    if (pairs == Pairs::FromSecond) return nArgument == 0 || nArgument % 2 == 1;
    if (function.sClasses.empty()) return false;
    return function.sClasses[std::min(static_cast<size_t>(nArgument), function.sClasses.size() - 1)] == 'r';
  }
  static bool CountFits(const FormulaFunction& function, int nCount) {
    const Pairs pairs = PairsOf(function);
    if (pairs == Pairs::FromFirst && nCount % 2 != 0) return false;
    if (pairs == Pairs::FromSecond && nCount % 2 != 1) return false;
    return nCount >= function.nMin && nCount <= function.nMax;
  }

  std::string_view sText_;
  std::vector<FormulaToken>* pTokens_;
  size_t nPos_ = 0;
  int nDepth_ = 0;
  bool bOutside_ = false;
};

}  // namespace

FormulaVerdict CheckFormula(std::string_view sFormula) {
  return clsFormulaParser(sFormula, nullptr).Parse();
}

FormulaVerdict ParseFormula(std::string_view sFormula, std::vector<FormulaToken>& tokens) {
  tokens.clear();
  return clsFormulaParser(sFormula, &tokens).Parse();
}

bool FormulaSheetsExist(std::string_view sFormula, std::span<const std::string> names) {
  if (sFormula.find('!') == std::string_view::npos) return true;
  std::vector<FormulaToken> tokens;
  ParseFormula(sFormula, tokens);
  return std::all_of(tokens.begin(), tokens.end(), [&](const FormulaToken& token) {
    const bool bReference = token.kind == FormulaTokenKind::Cell || token.kind == FormulaTokenKind::Area;
    return !bReference || token.sText.empty() || std::any_of(names.begin(), names.end(), [&](const std::string& sName) {
      return EqualNoCase(sName, token.sText);
    });
  });
}

}  // namespace quillon
