#include "modFormulaText.h"

#include <algorithm>

#include "clsWorkbook.h"
#include "modColumnLetters.h"
#include "modFormula.h"
#include "modText.h"

namespace quillon {

namespace {

/// Behind the quoted text that starts at nPos; the end of the text if it is never closed.
size_t BehindQuoted(std::string_view sText, size_t nPos) {
  const char chQuote = sText[nPos++];
  while (nPos < sText.size()) {
    if (sText[nPos++] != chQuote) continue;
    if (nPos >= sText.size() || sText[nPos] != chQuote) return nPos;
    ++nPos;
  }
  return nPos;
}

/// Behind the bracket that closes the one at nPos, npos if none does; "'" takes the next character for what it is.
size_t BehindBrackets(std::string_view sText, size_t nPos) {
  int nDepth = 0;
  for (; nPos < sText.size(); ++nPos) {
    const char ch = sText[nPos];
    if (ch == '\'') {
      ++nPos;
    } else if (ch == '[') {
      ++nDepth;
    } else if (ch == ']' && --nDepth == 0) {
      return nPos + 1;
    }
  }
  return std::string_view::npos;
}

/// Walks a formula and rebuilds it; the deriving class changes what it wants to.
class clsFormulaWalker {
 public:
  virtual ~clsFormulaWalker() = default;
  std::string Walk(std::string_view sText) {
    sText_ = sText;
    sOut_.reserve(sText.size() + 16);
    while (nPos_ < sText_.size()) Step();
    return std::move(sOut_);
  }

 protected:
  /// A sheet's name (or "First:Last"), quotes undone; the "!" behind it is copied.
  virtual bool Sheet(std::string_view) { return false; }
  /// The brackets behind a table's name, outer ones included.
  virtual bool TableItems(std::string_view, std::string_view) { return false; }
  /// A cell, or the corners of a range joined by ":".
  virtual bool Reference(std::string_view, std::string_view) { return false; }
  std::string sOut_;

 private:
  std::string_view Word(size_t nStart) const {
    size_t nEnd = nStart;
    while (nEnd < sText_.size() && (IsFormulaWord(sText_[nEnd]) || sText_[nEnd] == '\\' || sText_[nEnd] == '?')) ++nEnd;
    return sText_.substr(nStart, nEnd - nStart);
  }
  char At(size_t nPos) const { return nPos < sText_.size() ? sText_[nPos] : '\0'; }
  void Copy(size_t nEnd) {
    sOut_ += sText_.substr(nPos_, nEnd - nPos_);
    nPos_ = nEnd;
  }

  void Step() {
    const char ch = sText_[nPos_];
    if (ch == '"') return Copy(BehindQuoted(sText_, nPos_));
    if (ch == '\'') return StepQuotedSheet();
    if (ch == '[') return StepBrackets();
    const std::string_view sWord = Word(nPos_);
    if (sWord.empty()) return Copy(nPos_ + 1);
    StepWord(sWord);
  }
  /// [Book]Sheet! is another workbook's sheet, and what [Book]! names, a table with its columns too, is that book's.
  void StepBrackets() {
    Copy(std::min(BehindBrackets(sText_, nPos_), sText_.size()));
    const std::string_view sWord = Word(nPos_);
    if (At(nPos_ + sWord.size()) != '!') return;
    Copy(nPos_ + sWord.size());
    if (!sWord.empty()) return;
    Copy(nPos_ + 1);
    Copy(nPos_ + Word(nPos_).size());
    if (At(nPos_) == '[') Copy(std::min(BehindBrackets(sText_, nPos_), sText_.size()));
  }
  void StepQuotedSheet() {
    const size_t nEnd = BehindQuoted(sText_, nPos_);
    const std::string sName = ReplaceAll(sText_.substr(nPos_ + 1, std::max(nEnd - nPos_, size_t{2}) - 2), "''", "'");
    if (At(nEnd) != '!' || !Sheet(sName)) return Copy(nEnd);
    nPos_ = nEnd;
  }
  void StepWord(std::string_view sWord) {
    const size_t nEnd = nPos_ + sWord.size();
    const char ch = At(nEnd);
    const std::string_view sSecond = ch == ':' ? Word(nEnd + 1) : std::string_view();
    const size_t nBoth = sSecond.empty() ? nEnd : nEnd + 1 + sSecond.size();
    if (ch == '(') return Copy(nEnd);
    // Data!A1:Data!B2: what stands behind a "!" is a cell, and no first of a row of sheets.
    const bool bCell = nPos_ > 0 && sText_[nPos_ - 1] == '!' && At(nBoth) == '!' && nBoth != nEnd;
    if (bCell) {
      if (!Reference(sWord, {})) return Copy(nEnd);
      nPos_ = nEnd;
    } else if (At(nBoth) == '!') {
      if (!Sheet(sText_.substr(nPos_, nBoth - nPos_))) return Copy(nBoth);
      nPos_ = nBoth;
    } else if (ch == '[') {
      const size_t nClose = BehindBrackets(sText_, nEnd);
      if (nClose == std::string_view::npos) return Copy(sText_.size());
      if (!TableItems(sWord, sText_.substr(nEnd, nClose - nEnd))) return Copy(nClose);
      nPos_ = nClose;
    } else if (!sSecond.empty() && At(nBoth) != '(' && Reference(sWord, sSecond)) {
      nPos_ = nBoth;
    } else if (Reference(sWord, {})) {
      nPos_ = nEnd;
    } else {
      Copy(nEnd);
    }
  }

  std::string_view sText_;
  size_t nPos_ = 0;
};

class clsRenamer : public clsFormulaWalker {
 public:
  explicit clsRenamer(const FormulaRenames& renames) : renames_(renames) {}

 private:
  const FormulaRenames::Sheet* Find(std::string_view sName) const {
    const auto found = std::find_if(renames_.sheets.begin(), renames_.sheets.end(),
                                    [&](const auto& sheet) { return EqualNoCase(sheet.sOld, sName); });
    return found == renames_.sheets.end() ? nullptr : &*found;
  }
  bool Sheet(std::string_view sName) override {
    if (const auto* const pSheet = Find(sName)) {
      sOut_ += SheetNameInFormula(pSheet->sNew);
      return true;
    }
    const size_t nColon = sName.find(':');
    if (nColon == std::string_view::npos) return false;
    const auto* const pFirst = Find(sName.substr(0, nColon));
    const auto* const pLast = Find(sName.substr(nColon + 1));
    if (pFirst == nullptr && pLast == nullptr) return false;
    // Both names of a row of sheets stand in one pair of quotes.
    std::string sBoth = pFirst != nullptr ? pFirst->sNew : std::string(sName.substr(0, nColon));
    sBoth += ':' + (pLast != nullptr ? pLast->sNew : std::string(sName.substr(nColon + 1)));
    sOut_ += '\'' + ReplaceAll(sBoth, "'", "''") + '\'';
    return true;
  }
  bool TableItems(std::string_view sTable, std::string_view sItems) override {
    if (std::none_of(renames_.columns.begin(), renames_.columns.end(),
                     [&](const auto& column) { return EqualNoCase(column.sTable, sTable); }))
      return false;
    sOut_ += sTable;
    // Table[Column] or Table[[#All],[Column]]: the names stand in the innermost brackets.
    for (size_t nPos = 0; nPos < sItems.size();) {
      const size_t nInner = sItems[nPos] == '[' && nPos + 1 < sItems.size() && sItems[nPos + 1] != '['
                                ? BehindBrackets(sItems, nPos)
                                : nPos;
      if (nInner - nPos < 2) {
        sOut_ += sItems[nPos++];
        continue;
      }
      AppendItem(sTable, sItems.substr(nPos + 1, nInner - nPos - 2));
      nPos = nInner;
    }
    return true;
  }
  void AppendItem(std::string_view sTable, std::string_view sItem) {
    sOut_ += '[';
    if (sItem.starts_with('@')) {
      sOut_ += '@';
      sItem.remove_prefix(1);
      if (sItem.starts_with('[') && BehindBrackets(sItem, 0) == sItem.size()) {
        AppendItem(sTable, sItem.substr(1, sItem.size() - 2));
        sOut_ += ']';
        return;
      }
    }
    std::string sName;
    for (size_t i = 0; i < sItem.size(); ++i) {
      if (sItem[i] == '\'' && i + 1 < sItem.size()) ++i;
      sName += sItem[i];
    }
    for (const FormulaRenames::Column& column : renames_.columns) {
      if (!EqualNoCase(column.sTable, sTable) || !EqualNoCase(column.sOld, sName)) continue;
      for (const char ch : column.sNew) {
        if (std::string_view("[]#'@").find(ch) != std::string_view::npos) sOut_ += '\'';
        sOut_ += ch;
      }
      sOut_ += ']';
      return;
    }
    sOut_ += sItem;
    sOut_ += ']';
  }

  const FormulaRenames& renames_;
};

class clsShifter : public clsFormulaWalker {
 public:
  clsShifter(int64_t nRows, int64_t nColumns) : nRows_(nRows), nColumns_(nColumns) {}

 private:
  bool Reference(std::string_view sFirst, std::string_view sSecond) override {
    auto first = ParseFormulaCorner(sFirst);
    if (!first) return false;
    if (sSecond.empty()) {
      if (first->nRow == 0 || first->nColumn == 0) return false;
      sOut_ += Shift(*first) ? Spell(*first) : "#REF!";
      return true;
    }
    auto second = ParseFormulaCorner(sSecond);
    if (!second || (first->nRow == 0) != (second->nRow == 0) || (first->nColumn == 0) != (second->nColumn == 0))
      return false;
    const bool bFirst = Shift(*first);
    const bool bSecond = Shift(*second);
    sOut_ += bFirst && bSecond ? Spell(*first) + ":" + Spell(*second) : "#REF!";
    return true;
  }
  bool Shift(FormulaCorner& corner) const {
    const int64_t nRow = corner.nRow + (corner.bRowFixed || corner.nRow == 0 ? 0 : nRows_);
    const int64_t nColumn = corner.nColumn + (corner.bColumnFixed || corner.nColumn == 0 ? 0 : nColumns_);
    if ((corner.nRow != 0 && nRow < 1) || nRow > kMaxSheetRows || (corner.nColumn != 0 && nColumn < 1) ||
        nColumn > kMaxSheetColumns)
      return false;
    corner.nRow = static_cast<int32_t>(nRow);
    corner.nColumn = static_cast<int32_t>(nColumn);
    return true;
  }
  static std::string Spell(const FormulaCorner& corner) {
    std::string sText;
    if (corner.nColumn != 0) sText += (corner.bColumnFixed ? "$" : "") + ColumnLetters(corner.nColumn);
    if (corner.nRow != 0) sText += (corner.bRowFixed ? "$" : "") + std::to_string(corner.nRow);
    return sText;
  }

  int64_t nRows_, nColumns_;
};

}  // namespace

std::string RenamedFormula(std::string_view sFormula, const FormulaRenames& renames) {
  return clsRenamer(renames).Walk(sFormula);
}

std::string ShiftedFormula(std::string_view sFormula, int64_t nRows, int64_t nColumns) {
  return clsShifter(nRows, nColumns).Walk(sFormula);
}

std::string SheetNameInFormula(std::string_view sName) {
  const bool bPlain = !sName.empty() && !IsAsciiDigit(sName[0]) && sName[0] != '.' &&
                      std::all_of(sName.begin(), sName.end(), [](char ch) {
                        return IsFormulaWord(ch) && ch != '$' && static_cast<unsigned char>(ch) < 0x80;
                      });
  // What may be read as a cell, in either notation, needs quotes as well.
  const bool bLooksLikeCell = ParseFormulaCorner(sName).has_value() ||
                              sName.find_first_of("0123456789") != std::string_view::npos || EqualNoCase(sName, "R") ||
                              EqualNoCase(sName, "C") || EqualNoCase(sName, "RC");
  if (bPlain && !bLooksLikeCell) return std::string(sName);
  return '\'' + ReplaceAll(sName, "'", "''") + '\'';
}

}  // namespace quillon
