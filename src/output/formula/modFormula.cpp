#include "modFormula.h"

#include <algorithm>
#include <optional>

#include "clsFormulaScanner.h"
#include "modFormulaWords.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMaxFormulaChars = 8192;
constexpr int kMaxDepth = 64;

enum class Operand { Value, Reference, Missing };

class clsFormulaParser {
 public:
  clsFormulaParser(std::string_view sFormula, std::vector<FormulaToken>* pTokens)
      : text_(sFormula),
        nChars_(sFormula.size() > kMaxFormulaChars * 4 ? sFormula.size() : CharCount(sFormula)),
        pTokens_(pTokens) {}

  FormulaVerdict Parse() {
    Operand kind = Operand::Value;
    if (nChars_ > kMaxFormulaChars || !ParseCompare(kind) || !text_.AtEnd()) return FormulaVerdict::NotAFormula;
    return bOutside_ ? FormulaVerdict::ReachesOutside : FormulaVerdict::WellFormed;
  }

 private:
  FormulaToken* Emit(FormulaTokenKind kind) {
    if (pTokens_ == nullptr) return nullptr;
    pTokens_->emplace_back().kind = kind;
    return &pTokens_->back();
  }
  void EmitText(FormulaTokenKind kind, std::string_view sText) {
    if (FormulaToken* const pToken = Emit(kind)) pToken->sText = sText;
  }

  bool ParseCompare(Operand& kind) {
    if (++nDepth_ > kMaxDepth) return false;
    const bool bDone = ParseLevel(0, kind);
    --nDepth_;
    return bDone;
  }

  /// One level of binary operators, left to right.
  bool ParseLevel(int nLevel, Operand& kind) {
    if (nLevel == clsFormulaScanner::kOperatorLevels) return ParsePercent(kind);
    if (!ParseLevel(nLevel + 1, kind)) return false;
    for (std::string_view s = text_.TakeOperator(nLevel); !s.empty(); s = text_.TakeOperator(nLevel)) {
      if (!ParseLevel(nLevel + 1, kind)) return false;
      EmitText(FormulaTokenKind::Binary, s);
      kind = Operand::Value;
    }
    return true;
  }

  bool ParsePercent(Operand& kind) {
    const std::string_view sSigns = text_.TakeSigns();
    if (!ParseOperand(kind)) return false;
    for (auto sign = sSigns.rbegin(); sign != sSigns.rend(); ++sign)
      if (*sign != ' ') EmitText(FormulaTokenKind::Sign, std::string_view(&*sign, 1)), kind = Operand::Value;
    text_.SkipBlanks();
    while (text_.Take('%')) {
      Emit(FormulaTokenKind::Percent);
      kind = Operand::Value;
      text_.SkipBlanks();
    }
    return true;
  }

  bool ParseOperand(Operand& kind) {
    kind = Operand::Value;
    const char ch = text_.Peek();
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
    if (IsAsciiDigit(ch) || ch == '.') return text_.RowsStandHere() ? ParseReference({}, kind) : ParseNumber();
    return IsFormulaWord(ch) && ParseWord(kind);
  }

  bool ParseParentheses(Operand& kind) {
    text_.Take('(');
    if (!ParseCompare(kind)) return false;
    text_.SkipBlanks();
    Emit(FormulaTokenKind::Parentheses);
    return text_.Take(')');
  }

  bool ParseNumber() {
    double nValue = 0;
    if (!text_.TakeNumber(nValue)) return false;
    if (FormulaToken* const pToken = Emit(FormulaTokenKind::Number)) pToken->nValue = nValue;
    return true;
  }

  bool ParseString() {
    std::string sValue;
    if (!text_.TakeString(sValue)) return false;
    EmitText(FormulaTokenKind::Text, sValue);
    return true;
  }
  bool ParseError(Operand& kind) {
    const std::string_view sError = text_.TakeError();
    if (sError == "#REF!") kind = Operand::Reference;
    EmitText(FormulaTokenKind::Error, sError);
    return !sError.empty();
  }

  bool ParseArray() {
    FormulaToken array;
    array.kind = FormulaTokenKind::Array;
    int nColumns = 0;
    do {
      text_.Take(text_.Peek());
      text_.SkipBlanks();
      if (!ParseArrayItem(array.items)) return false;
      text_.SkipBlanks();
      ++nColumns;
      if (text_.Peek() == ',') continue;
      if (array.nCount != 0 && array.nCount != nColumns) return false;
      array.nCount = nColumns;
      nColumns = 0;
    } while (text_.Peek() == ',' || text_.Peek() == ';');
    if (pTokens_ != nullptr) pTokens_->push_back(std::move(array));
    return text_.Take('}');
  }
  bool ParseArrayItem(std::vector<FormulaToken>& items) {
    FormulaToken& item = items.emplace_back();
    if (text_.Peek() == '"') {
      item.kind = FormulaTokenKind::Text;
      return text_.TakeString(item.sText);
    }
    if (text_.Peek() == '#') {
      item.kind = FormulaTokenKind::Error;
      item.sText = text_.TakeError();
      return !item.sText.empty();
    }
    if (IsAsciiLetter(text_.Peek())) {
      const std::string_view sWord = text_.TakeWord();
      item.kind = FormulaTokenKind::Boolean;
      item.nValue = EqualNoCase(sWord, "TRUE") ? 1 : 0;
      return item.nValue > 0 || EqualNoCase(sWord, "FALSE");
    }
    item.kind = FormulaTokenKind::Number;
    const bool bMinus = text_.Take('-');
    if (!bMinus) text_.Take('+');
    if (!text_.TakeNumber(item.nValue)) return false;
    if (bMinus) item.nValue = -item.nValue;
    return true;
  }

  /// A cell, range, columns or rows of the sheet ("" is the own one).
  bool ParseReference(std::string_view sSheet, Operand& kind) {
    kind = Operand::Reference;
    const auto first = ParseFormulaCorner(text_.TakeWord());
    if (!first) return false;
    std::optional<FormulaCorner> second = first;
    const bool bRange = text_.Take(':');
    if (bRange) second = ParseFormulaCorner(text_.TakeWord());
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
    if (!text_.TakeQuoted(sSheet) || sSheet.empty()) return false;
    if (text_.Peek() == '|') return ParseLink(kind);
    if (!text_.Take('!')) return false;
    if (sSheet.find_first_of("[]:*?/\\") != std::string::npos) return TakeOutsideItem(kind);
    return ParseReference(sSheet, kind);
  }
  /// [Book]Sheet!A1
  bool ParseExternal(Operand& kind) {
    if (!text_.SkipBehind(']')) return false;
    text_.TakeWord();
    return text_.Take('!') && TakeOutsideItem(kind);
  }
  /// program|topic!item
  bool ParseLink(Operand& kind) {
    text_.Take('|');
    std::string sTopic;
    if (text_.Peek() == '\'' ? !text_.TakeQuoted(sTopic) : text_.TakeWord().empty()) return false;
    return text_.Take('!') && TakeOutsideItem(kind);
  }
  bool TakeOutsideItem(Operand& kind) {
    bOutside_ = true;
    kind = Operand::Reference;
    std::string sItem;
    if (text_.Peek() == '\'') return text_.TakeQuoted(sItem);
    if (text_.TakeWord().empty()) return false;
    return !text_.Take(':') || !text_.TakeWord().empty();
  }

  bool ParseWord(Operand& kind) {
    const std::string_view sFromHere = text_.Rest();
    const std::string_view sWord = text_.TakeWord();
    switch (text_.Peek()) {
      case '(':
        return ParseCall(sWord, kind);
      case '|':
        return ParseLink(kind);
      case '!':
        text_.Take('!');
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
    text_.Return(sFromHere);
    return ParseReference({}, kind);
  }

  bool ParseCall(std::string_view sName, Operand& kind) {
    const FormulaFunction* const pFunction = FindFormulaFunction(sName);
    const bool bCallsOutside = pFunction == nullptr && CallsOutside(sName);
    if (pFunction == nullptr && !bCallsOutside) return false;
    bOutside_ |= bCallsOutside;
    text_.Take('(');
    const std::string_view sArguments = text_.Rest();
    int nCount = 0;
    if (!ParseArguments(pFunction, nCount) || (pFunction != nullptr && !pFunction->TakesArguments(nCount)))
      return false;
    if (pFunction != nullptr && pFunction->sName == "HYPERLINK" && !StaysInside(sArguments)) bOutside_ = true;
    kind = pFunction != nullptr && pFunction->cResult == 'R' ? Operand::Reference : Operand::Value;
    if (FormulaToken* const pToken = Emit(FormulaTokenKind::Function)) {
      pToken->nCount = nCount;
      pToken->pFunction = pFunction;
    }
    return true;
  }
  /// The target is known to be a place in this workbook.
  static bool StaysInside(std::string_view sArguments) {
    clsFormulaScanner arguments(sArguments);
    arguments.SkipBlanks();
    if (!arguments.Rest().starts_with("\"#") || !arguments.Take('"') || !arguments.SkipBehind('"')) return false;
    arguments.SkipBlanks();
    return arguments.Peek() == ',' || arguments.Peek() == ')';
  }

  bool ParseArguments(const FormulaFunction* pFunction, int& nCount) {
    text_.SkipBlanks();
    if (text_.Take(')')) return true;
    do {
      text_.SkipBlanks();
      Operand kind = Operand::Missing;
      if (text_.Peek() == ',' || text_.Peek() == ')') {
        Emit(FormulaTokenKind::Missing);
      } else if (!ParseCompare(kind)) {
        return false;
      }
      if (pFunction != nullptr && pFunction->DemandsReference(nCount) && kind != Operand::Reference) return false;
      text_.SkipBlanks();
      ++nCount;
    } while (nCount < 256 && text_.Take(','));
    return text_.Take(')');
  }

  clsFormulaScanner text_;
  size_t nChars_;
  std::vector<FormulaToken>* pTokens_;
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
