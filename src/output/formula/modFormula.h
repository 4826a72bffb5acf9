#pragma once
// The grammar of formulas that may become formulas: operators, references (A1, ranges, other sheets, whole columns and
// rows), numbers, strings, errors, array constants and calls of known functions.
//
//   formula    = compare
//   compare    = concat  { ("=" | "<>" | "<=" | ">=" | "<" | ">") concat }
//   concat     = sum     { "&" sum }
//   sum        = product { ("+" | "-") product }
//   product    = power   { ("*" | "/") power }
//   power      = percent { "^" percent }              left to right, as spreadsheets do
//   percent    = sign { "%" }
//   sign       = { "+" | "-" } operand                binds tighter than "^": -2^2 is 4
//   operand    = number | string | error | TRUE | FALSE | array | "(" formula ")" | call | reference
//   call       = FUNCTION "(" [ [formula] { "," [formula] } ] ")"
//   reference  = [ sheet "!" ] ( cell [ ":" cell ] | columns | rows )
//
// Blanks may stand between tokens. Defined names, unions, intersections and table references are no part of it: a
// report's line of words must stay text.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

enum class FormulaVerdict { WellFormed, NotAFormula, ReachesOutside };

/// sFormula without its "=". ReachesOutside: DDE, external workbooks, functions that fetch or call (WEBSERVICE,
/// HYPERLINK to another host ...). Recursion is bounded. A formula that a spreadsheet would refuse (argument counts, a
/// value where a function demands a reference, cells beyond the sheet) is none.
FormulaVerdict CheckFormula(std::string_view sFormula);

/// A known function: its argument counts and how an XLS file names it.
struct FormulaFunction {
  std::string_view sName;
  uint8_t nMin;
  uint8_t nMax;
  int16_t nXlsIndex;          ///< Index in XLS files; -1 for functions that those lack
  char cResult;               ///< Token class of the result: R reference, V value, A array
  std::string_view sClasses;  ///< Token class wanted for each argument, the last one repeated; "r" demands a reference
  /// Spelled with a fixed argument count: the XLS token then holds no count.
  bool Fixed() const { return nMin == nMax; }
  char ArgumentClass(size_t nArgument) const {
    if (sClasses.empty()) return 'V';
    const char ch = sClasses[nArgument < sClasses.size() ? nArgument : sClasses.size() - 1];
    return ch == 'r' ? 'R' : ch;
  }
  bool TakesArguments(int nCount) const;
  /// The argument (from 0) must be a reference, else a spreadsheet refuses the formula.
  bool DemandsReference(int nArgument) const;
};
/// In any case; null for an unknown name.
const FormulaFunction* FindFormulaFunction(std::string_view sName);

/// A reference, rows and columns from 1. Whole columns have rows 1 to kMaxSheetRows, whole rows columns 1 to
/// kMaxSheetColumns, and the flag set. A single cell has both corners alike. Corners are in order.
struct FormulaReference {
  int32_t nTop = 1, nBottom = 1;
  int16_t nLeft = 1, nRight = 1;
  bool bTopFixed = false, bBottomFixed = false, bLeftFixed = false, bRightFixed = false;  ///< With "$"
  bool bWholeColumns = false, bWholeRows = false;
};

enum class FormulaTokenKind : uint8_t {
  Number,       ///< nValue
  Text,         ///< sText, quotes undone
  Boolean,      ///< nValue 0 or 1
  Error,        ///< sText, as "#N/A"
  Missing,      ///< An argument left out
  Cell,         ///< reference; sText is the sheet's name, "" for the own sheet
  Area,         ///< The same with two corners
  Array,        ///< items row by row, nCount columns
  Sign,         ///< sText "+" or "-" for the operand before
  Percent,      ///< For the operand before
  Binary,       ///< sText is the operator, for the two operands before
  Parentheses,  ///< The operand before stood in parentheses
  Function      ///< pFunction for the nCount operands before
};

struct FormulaToken {
  FormulaTokenKind kind = FormulaTokenKind::Missing;
  double nValue = 0;
  std::string sText;
  FormulaReference reference;
  int nCount = 0;
  const FormulaFunction* pFunction = nullptr;
  std::vector<FormulaToken> items;
};

/// The tokens in postfix order; whatever the verdict, they are complete only for WellFormed.
FormulaVerdict ParseFormula(std::string_view sFormula, std::vector<FormulaToken>& tokens);

/// One corner of a reference as written: a cell, a column (no row) or a row (no column).
struct FormulaCorner {
  int32_t nRow = 0;     ///< 0: none given
  int32_t nColumn = 0;  ///< 0: none given
  bool bRowFixed = false, bColumnFixed = false;
};
/// The whole word as a corner; nothing if it is none or lies beyond the sheet.
std::optional<FormulaCorner> ParseFormulaCorner(std::string_view sWord);
/// True for a character that names, references and sheets outside of quotes are made of.
bool IsFormulaWord(char ch);

/// True if each sheet that the well-formed formula names is among the names (without regard to case). A file with a
/// formula that names another one would have to be repaired.
bool FormulaSheetsExist(std::string_view sFormula, std::span<const std::string> names);

}  // namespace quillon
