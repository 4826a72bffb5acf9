#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "clsCellStore.h"
#include "clsCellWriter.h"
#include "clsSheetCursor.h"
#include "clsXmlCopier.h"
#include "modColumnTyping.h"
#include "modColumnWidths.h"
#include "modSheetFacts.h"

namespace quillon {

/// Shared strings by number: those of cells that were emptied or overwritten, and those of cells that stay.
struct StringUse {
  std::vector<bool> dropped, kept;
  static void Note(std::vector<bool>& strings, std::string_view sIndex);
  bool IsGone(size_t nIndex) const {
    return nIndex < dropped.size() && dropped[nIndex] && (nIndex >= kept.size() || !kept[nIndex]);
  }
};

/// What a run does to one sheet.
struct SheetEdit {
  explicit SheetEdit(const CellTypingOptions& options) : typing(options) {}
  clsCellStore cells;
  clsSheetTyping typing;
  std::vector<CellRange> cleared;  ///< Emptied before the cells were written
  /// Cells that must hold their text as it is (headings of tables), as row * kMaxSheetColumns + column.
  std::unordered_set<int64_t> textCells;
  /// Formulas of our making, without "=", by the same number; their cells are written ones.
  std::unordered_map<int64_t, std::string> formulas;
  /// Cells that get the format of another one of their column, or all that it held; and, found from that, their formats
  /// by the same number.
  struct FromRow {
    int64_t nFrom, nTo, nColumn;
    bool bContent;
  };
  std::vector<FromRow> fromRows;
  CellRange calculated;  ///< Where tables put formulas of their columns
  std::unordered_map<int64_t, uint32_t> styles;
  std::optional<CellRange> filter;  ///< Where the sheet's filter is to lie
  int64_t nBehindTables = 0;        ///< Rows written that no table could take in
  bool bTotalsBelow = false;        ///< The data's last row is a table's totals
  StringUse* pStrings = nullptr;    ///< Null: nobody asks
  std::optional<bool> bSelected;    ///< The sheet's tab becomes selected or not
  /// Results kept in formula cells go: what they depend on may have changed, and most programs show what is kept.
  bool bDropResults = false;
  bool bWidthsAnew = false;  ///< Widths are of our making

  bool Touched() const { return !cells.Empty() || !cleared.empty(); }
  bool Cleared(int64_t nRow, int nColumn) const;
};

/// Rewrites a sheet part as a stream: rows and cells that there are and those written, in order; all else as it stands.
class clsSheetMerger {
 public:
  clsSheetMerger(clsXmlScanner& scanner, SheetEdit& edit, const SheetFacts& facts, clsCellWriter& writer,
                 const FormulaRenames& renames, ByteSink sink);
  /// False if the part is damaged.
  bool Run();

 private:
  struct SharedState {
    SharedFormula formula;
    bool bOrphaned = false;  ///< Its first cell is gone; the next one has to take over
  };

  bool MergeToken();
  bool MergeOther();
  void MergeDimension();
  void MergeView();
  void BeginSheetData();
  void BeginRow();
  void EndRow();
  bool MergeCell();
  bool CopyCell(bool bNumbered);
  bool CopyFormula();
  bool ReplaceCell(const StoredCell* pCell);
  bool ReadCellChildren(std::string& sKept);
  bool TakeSharedFormula(bool bGone);
  bool TakeOver(SharedState& shared);
  void PutCellsBefore(int nColumn);
  void PutRowsBefore(int64_t nRow);
  void PutCell(const StoredCell& cell, uint32_t nStyle, std::string_view sChildren, bool bValueDecides = false);
  bool PutFormula(uint32_t nStyle, int nColumn);
  uint32_t StyleOf(int nColumn, uint32_t nStyle) const;
  uint32_t InheritedStyle(int nColumn) const;
  void PutElementEnd(std::string_view sName);

  clsXmlScanner& scanner_;
  SheetEdit& edit_;
  const SheetFacts& facts_;
  clsCellWriter& writer_;
  const FormulaRenames& renames_;
  clsXmlCopier copier_;
  clsSheetCursor cursor_;
  std::string sPrefix_;  ///< Of the sheet's elements, with its ":"
  std::unordered_map<uint32_t, SharedState> shared_;
  int64_t nNextRow_ = 1;      ///< First row whose written cells are still to come
  bool bRowsAdded_ = false;   ///< Rows without a number need one from here on
  bool bCellsMoved_ = false;  ///< The same for cells of the row
  int64_t nRow_ = 0;
  std::optional<uint32_t> nRowStyle_;
  std::vector<StoredCell> cells_;  ///< Written cells of the row
  size_t nNextCell_ = 0;
  std::string sPiece_;
  clsColumnWidths widths_;
  bool bWidthsDone_ = false;
};

}  // namespace quillon
