#include "modXlsFormula.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "clsWorkbook.h"
#include "modFormula.h"
#include "modText.h"
#include "modXlsBytes.h"
#include "modXlsText.h"

namespace quillon {

namespace {

enum Ptg : unsigned {
  kPtgPercent = 0x14,
  kPtgParen = 0x15,
  kPtgMissArg = 0x16,
  kPtgStr = 0x17,
  kPtgErr = 0x1C,
  kPtgBool = 0x1D,
  kPtgInt = 0x1E,
  kPtgNum = 0x1F,
  kPtgFunc = 0x01,  // with the class bits below
  kPtgFuncVar = 0x02,
  kPtgRef = 0x04,
  kPtgArea = 0x05,
};

constexpr size_t kMaxTokenBytes = 1800;  // the format's own limit for one formula
constexpr int kMaxArguments = 30;

constexpr auto kErrors = std::to_array<std::pair<std::string_view, unsigned>>({{"#NULL!", 0x00},
                                                                               {"#DIV/0!", 0x07},
                                                                               {"#VALUE!", 0x0F},
                                                                               {"#REF!", 0x17},
                                                                               {"#NAME?", 0x1D},
                                                                               {"#NUM!", 0x24},
                                                                               {"#N/A", 0x2A}});

constexpr auto kBinary = std::to_array<std::pair<std::string_view, unsigned>>({{"+", 0x03},
                                                                               {"-", 0x04},
                                                                               {"*", 0x05},
                                                                               {"/", 0x06},
                                                                               {"^", 0x07},
                                                                               {"&", 0x08},
                                                                               {"<", 0x09},
                                                                               {"<=", 0x0A},
                                                                               {"=", 0x0B},
                                                                               {">=", 0x0C},
                                                                               {">", 0x0D},
                                                                               {"<>", 0x0E}});

/// Bits of the token class that a place wants.
unsigned ClassBits(char cClass) {
  return cClass == 'R' ? 0x20 : cClass == 'A' ? 0x60 : 0x40;
}

/// Functions whose result changes without a change of their arguments: NOW, TODAY, RAND, OFFSET, INDIRECT, CELL, INFO.
bool IsVolatile(int nXlsIndex) {
  constexpr std::array kVolatile = {74, 221, 63, 78, 148, 125, 244};
  return std::find(kVolatile.begin(), kVolatile.end(), nXlsIndex) != kVolatile.end();
}

/// Turns tokens in postfix order into bytes. Each operand's bytes say in which class its parent wants it, so the
/// classes are handed down before anything is written.
class clsFormulaCompiler {
 public:
  explicit clsFormulaCompiler(const std::vector<FormulaToken>& tokens) : tokens_(tokens) {}

  bool Run() {
    if (!FindOperands()) return false;
    HandDownClasses();
    if (std::any_of(tokens_.begin(), tokens_.end(), [](const FormulaToken& token) {
          return token.kind == FormulaTokenKind::Function && IsVolatile(token.pFunction->nXlsIndex);
        }))
      sOut_.append("\x19\x01\0\0", 4);
    for (size_t i = 0; i < tokens_.size(); ++i)
      if (!Compile(tokens_[i], classes_[i])) return false;
    return sOut_.size() <= kMaxTokenBytes;
  }
  const std::string& Bytes() const { return sOut_; }

 private:
  /// For each token the one that it is an operand of, and as which.
  bool FindOperands() {
    parents_.assign(tokens_.size(), {});
    std::vector<size_t> operands;
    for (size_t i = 0; i < tokens_.size(); ++i) {
      const size_t nTaken = Operands(tokens_[i]);
      if (nTaken > operands.size()) return false;
      const size_t nFirst = operands.size() - nTaken;
      for (size_t k = 0; k < nTaken; ++k) parents_[operands[nFirst + k]] = {i, k};
      operands.resize(nFirst);
      operands.push_back(i);
    }
    return operands.size() == 1;
  }

  void HandDownClasses() {
    classes_.assign(tokens_.size(), 'V');
    for (size_t i = tokens_.size() - 1; i-- > 0;) {
      const auto [nParent, nArgument] = parents_[i];
      const FormulaToken& parent = tokens_[nParent];
      char cWanted = classes_[nParent];
      if (parent.kind == FormulaTokenKind::Function) {
        const char cArgument = parent.pFunction->ArgumentClass(nArgument);
        cWanted = cArgument == 'V' && cWanted == 'A' ? 'A' : cArgument;
      } else if (parent.kind != FormulaTokenKind::Parentheses && cWanted == 'R') {
        cWanted = 'V';
      }
      classes_[i] = cWanted;
    }
  }

  static size_t Operands(const FormulaToken& token) {
    switch (token.kind) {
      case FormulaTokenKind::Sign:
      case FormulaTokenKind::Percent:
      case FormulaTokenKind::Parentheses:
        return 1;
      case FormulaTokenKind::Binary:
        return 2;
      case FormulaTokenKind::Function:
        return static_cast<size_t>(token.nCount);
      default:
        return 0;
    }
  }

  bool Compile(const FormulaToken& token, char cClass) {
    switch (token.kind) {
      case FormulaTokenKind::Number:
        return CompileNumber(token.nValue);
      case FormulaTokenKind::Text:
        return CompileText(token.sText);
      case FormulaTokenKind::Boolean:
        return Two(kPtgBool, token.nValue != 0 ? 1 : 0);
      case FormulaTokenKind::Error:
        return XlsErrorCode(token.sText) >= 0 && Two(kPtgErr, static_cast<unsigned>(XlsErrorCode(token.sText)));
      case FormulaTokenKind::Missing:
        return One(kPtgMissArg);
      case FormulaTokenKind::Cell:
      case FormulaTokenKind::Area:
        return CompileReference(token, cClass);
      case FormulaTokenKind::Sign:
        return One(token.sText == "-" ? 0x13 : 0x12);
      case FormulaTokenKind::Percent:
        return One(kPtgPercent);
      case FormulaTokenKind::Binary:
        return CompileBinary(token.sText);
      case FormulaTokenKind::Parentheses:
        return One(kPtgParen);
      case FormulaTokenKind::Function:
        return CompileFunction(token, cClass);
      case FormulaTokenKind::Array:
        return false;
    }
    return false;
  }

  bool One(unsigned nByte) {
    PutU8(sOut_, nByte);
    return true;
  }
  bool Two(unsigned nByte, unsigned nValue) {
    PutU8(sOut_, nByte);
    PutU8(sOut_, nValue);
    return true;
  }

  bool CompileNumber(double nValue) {
    if (nValue >= 0 && nValue <= 65535 && nValue == std::floor(nValue) && !std::signbit(nValue)) {
      PutU8(sOut_, kPtgInt);
      PutU16(sOut_, static_cast<unsigned>(nValue));
    } else {
      PutU8(sOut_, kPtgNum);
      Put(sOut_, nValue);
    }
    return true;
  }

  bool CompileText(std::string_view sText) {
    if (Utf16Count(sText) > 255) return false;
    PutU8(sOut_, kPtgStr);
    PutXlsString(sOut_, sText, 1);
    return true;
  }

  bool CompileReference(const FormulaToken& token, char cClass) {
    const FormulaReference& ref = token.reference;
    if (!token.sText.empty()) return false;
    const int64_t nBottom = ref.bWholeColumns ? kMaxXlsRows : ref.nBottom;
    const int nRight = ref.bWholeRows ? kMaxXlsColumns : ref.nRight;
    if (nBottom > kMaxXlsRows || nRight > kMaxXlsColumns) return false;
    const bool bArea = token.kind == FormulaTokenKind::Area;
    PutU8(sOut_, (bArea ? kPtgArea : kPtgRef) | ClassBits(cClass));
    PutU16(sOut_, static_cast<unsigned>(ref.nTop - 1));
    if (bArea) PutU16(sOut_, static_cast<unsigned>(nBottom - 1));
    PutColumn(ref.nLeft, ref.bLeftFixed || ref.bWholeRows, ref.bTopFixed || ref.bWholeColumns);
    if (bArea) PutColumn(nRight, ref.bRightFixed || ref.bWholeRows, ref.bBottomFixed || ref.bWholeColumns);
    return true;
  }
  /// A column with the flags of what moves when the formula is copied.
  void PutColumn(int nColumn, bool bColumnFixed, bool bRowFixed) {
    PutU16(sOut_, static_cast<unsigned>(nColumn - 1) | (bColumnFixed ? 0 : 0x4000U) | (bRowFixed ? 0 : 0x8000U));
  }

  bool CompileBinary(std::string_view sOperator) {
    for (const auto& [sText, nCode] : kBinary)
      if (sText == sOperator) return One(nCode);
    return false;
  }

  bool CompileFunction(const FormulaToken& token, char cClass) {
    const FormulaFunction& function = *token.pFunction;
    if (function.nXlsIndex < 0 || token.nCount > kMaxArguments) return false;
    if (cClass == 'R' && function.cResult != 'R') cClass = 'V';
    PutU8(sOut_, (function.Fixed() ? kPtgFunc : kPtgFuncVar) | ClassBits(cClass));
    if (!function.Fixed()) PutU8(sOut_, static_cast<unsigned>(token.nCount));
    PutU16(sOut_, static_cast<unsigned>(function.nXlsIndex));
    return true;
  }

  const std::vector<FormulaToken>& tokens_;
  std::vector<char> classes_;
  std::vector<std::pair<size_t, size_t>> parents_;
  std::string sOut_;
};

}  // namespace

bool AppendXlsFormula(std::string_view sFormula, std::string& sOut) {
  std::vector<FormulaToken> tokens;
  if (ParseFormula(sFormula, tokens) != FormulaVerdict::WellFormed) return false;
  clsFormulaCompiler compiler(tokens);
  if (!compiler.Run()) return false;
  PutU16(sOut, static_cast<unsigned>(compiler.Bytes().size()));
  sOut.append(compiler.Bytes());
  return true;
}

int XlsErrorCode(std::string_view sWord) {
  for (const auto& [sText, nCode] : kErrors)
    if (sText == sWord) return static_cast<int>(nCode);
  return -1;
}

std::string_view XlsErrorWord(unsigned nCode) {
  for (const auto& [sText, nKnown] : kErrors)
    if (nKnown == nCode) return sText;
  return {};
}

}  // namespace quillon
