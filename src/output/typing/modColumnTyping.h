#pragma once
// What the cells of a column decide together, where one alone would mislead.

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "clsCellStore.h"
#include "modCellTyping.h"

namespace quillon {

/// What one column's cells have shown so far.
class clsColumnFacts {
 public:
  /// A cell as it was typed by itself.
  void Note(const TypedCell& cell, std::string_view sText) {
    if (cell.bSettled) return;
    if (cell.kind == CellKind::Number) {
      bNumbers_ = true;
      bDigits_ |= cell.bDigits;
    } else if (cell.kind == CellKind::Date || cell.kind == CellKind::Text) {
      NoteOther(sText);
    }
  }
  /// The rule for all of them, made from the one for a cell alone.
  ColumnRule Decide(const ColumnRule& alone, const CellTypingOptions& options) const;
  /// True if there are dates by that rule whose order of day and month the cells themselves don't tell.
  bool OrderIsOpen(const ColumnRule& rule) const;

 private:
  /// Cells of one form of date, by what their parts can be.
  struct Shape {
    bool bSeen = false;
    bool bMonthFirst = true, bDayFirst = true, bYearFirst = true;
    DateReading Decide(DateReading alone, bool bPoints, const CellTypingOptions& options) const;
  };
  void NoteOther(std::string_view sText);

  bool bNumbers_ = false, bDigits_ = false;
  bool bCodes_ = false;    ///< Digits behind a zero, or too many for a number
  bool bUnshown_ = false;  ///< A number in a form that no format shows
  bool bPoints_ = false;   ///< Digits with a point behind them
  std::array<Shape, kDateForms> shapes_;
};

/// The columns of one sheet, table by table: cells decide with those of their own table alone.
class clsSheetTyping {
 public:
  explicit clsSheetTyping(const CellTypingOptions& options) : options_(options), alone_(RuleAlone(options)) {}

  /// Cells below that row, the last one written so far, are another table's.
  void BeginTable(int64_t nLastRow);
  void Note(int64_t nRow, int nColumn, const TypedCell& cell, std::string_view sText) {
    FactsOf(nRow, nColumn).Note(cell, sText);
  }
  /// Takes in all cells at once, and how wide they are.
  void NoteAll(clsCellStore& cells);
  /// Characters of the longest value by column - 1, at most kMaxWidth; 0 for none. Formulas don't count.
  const std::vector<uint8_t>& Widths() const { return widths_; }
  /// Smallest range with all cells taken in at once that hold something.
  const CellRange& Used() const { return used_; }
  static constexpr size_t kMaxWidth = 60;
  /// Takes the facts as they are now; true if one rule differs from that for a cell alone.
  bool Decide();
  /// True if, as decided last, a column has dates that don't tell whether the day or the month comes first.
  bool OrderIsOpen() const;
  const ColumnRule& RuleOf(int64_t nRow, int nColumn) const;
  const ColumnRule& Alone() const { return alone_; }
  void Clear() { *this = clsSheetTyping(options_); }

 private:
  struct Table {
    int64_t nFirstRow = 1;
    std::vector<clsColumnFacts> facts;
    std::vector<ColumnRule> rules;
  };
  size_t TableOf(int64_t nRow) const;
  clsColumnFacts& FactsOf(int64_t nRow, int nColumn);

  CellTypingOptions options_;
  ColumnRule alone_;
  std::vector<Table> tables_;  ///< By their first row
  std::vector<uint8_t> widths_;
  CellRange used_;
  int64_t nNotedRow_ = 0;
  size_t nCurrent_ = 0;
};

}  // namespace quillon
