#include "modXlsxTables.h"

#include <algorithm>
#include <vector>

#include "modSettledCell.h"
#include "modTablePart.h"
#include "modText.h"

namespace quillon {

namespace {

struct Table : XlsxTable {
  size_t nPart = 0;
  std::string sBytes;
};

/// Names in use, in capitals, each with the number that is tried next for another of that name.
using TakenNames = std::map<std::string, int>;

/// The text with " (2)" and so on behind it where another column bears it.
std::string MadeUnique(const std::string& sText, TakenNames& taken) {
  const auto [entry, bFree] = taken.emplace(UpperText(sText), 2);
  if (bFree) return sText;
  std::string sName;
  do {
    sName = sText + " (" + std::to_string(entry->second++) + ")";
  } while (!taken.emplace(UpperText(sName), 2).second);
  return sName;
}

bool IsBlank(std::string_view sStored) {
  return TrimBlanks(ShownOf(sStored)).empty();
}

int64_t KeyOf(int64_t nRow, int64_t nColumn) {
  return nRow * kMaxSheetColumns + nColumn;
}

class clsTableEdit {
 public:
  clsTableEdit(const SheetFacts& facts, SheetEdit& edit) : facts_(facts), edit_(edit) {}

  /// New names of all columns by what the heading cells are to hold.
  void NameColumns(Table& table) {
    if (!table.bHeading) return;
    TakenNames taken;
    std::vector<size_t> changed;
    for (size_t i = 0; i < table.columns.size(); ++i) {
      const int nColumn = static_cast<int>(table.range.nLeft) + static_cast<int>(i);
      std::string& sName = table.columns[i].sName;
      std::string_view sText;
      const bool bWritten = edit_.cells.Read(table.range.nTop, nColumn, sText);
      if (bWritten || edit_.Cleared(table.range.nTop, nColumn)) {
        changed.push_back(i);
        // A column that is worked out stays what it was beside a report that has no such column.
        const bool bStays = !bWritten && !table.columns[i].sFormula.empty();
        if (!bStays) sName = IsBlank(sText) ? "Column" + std::to_string(i + 1) : std::string(ShownOf(sText));
      } else {
        taken.emplace(UpperText(sName), 2);
      }
    }
    for (const size_t i : changed) {
      std::string& sName = table.columns[i].sName;
      sName = MadeUnique(sName, taken);
      PutText(table.range.nTop, table.range.nLeft + static_cast<int64_t>(i), sName);
    }
  }

  /// Ends the table where its new rows end. others: the sheet's tables.
  void FitRows(Table& table, const std::vector<Table>& others) {
    const bool bCleared = std::any_of(edit_.cleared.begin(), edit_.cleared.end(),
                                      [&](const CellRange& range) { return Covers(range, table.range); });
    if (!bCleared && table.bTotals) return TellBehind(table, others);
    const bool bAlone = table.range.nTop == facts_.filled.nTop && table.range.nBottom == facts_.filled.nBottom;
    int64_t nLast = table.LastRow();
    if (bCleared)
      nLast = bAlone ? edit_.typing.Used().nBottom : LastOfBlock(table, table.FirstRow());
    else
      nLast = LastOfBlock(table, table.range.nBottom + 1);
    // A table has one row at least, be it an empty one, and none of them runs into another.
    nLast = std::max(nLast, table.FirstRow());
    const int64_t nTotals = table.bTotals ? 1 : 0;
    nLast = std::min(nLast, NextTable(table, others) - 1 - nTotals);
    table.range.nBottom = nLast + nTotals;
    TellBehind(table, others);
  }

  /// New rows, and those that were emptied, get the formulas of columns that are worked out.
  void FillCalculated(const Table& table, int64_t nOldLast, const FormulaRenames& renames) {
    std::string_view sWritten;
    for (size_t i = 0; i < table.columns.size(); ++i) {
      if (table.columns[i].sFormula.empty()) continue;
      const int nColumn = static_cast<int>(table.range.nLeft) + static_cast<int>(i);
      const std::string sFormula = RenamedFormula(table.columns[i].sFormula, renames);
      for (int64_t nRow = table.FirstRow(); nRow <= table.LastRow(); ++nRow) {
        if (edit_.cells.Read(nRow, nColumn, sWritten) || (nRow <= nOldLast && !edit_.Cleared(nRow, nColumn))) continue;
        edit_.cells.Write(nRow, nColumn, "=");
        edit_.formulas[KeyOf(nRow, nColumn)] = sFormula;
        if (nRow > nOldLast) edit_.fromRows.push_back({nOldLast, nRow, nColumn, false});
        Include(edit_.calculated, {nRow, nColumn, nRow, nColumn});
      }
    }
  }

  void MoveTotals(const Table& table, int64_t nOldBottom) {
    edit_.bTotalsBelow |= nOldBottom == facts_.filled.nBottom;
    for (size_t i = 0; i < table.columns.size(); ++i) {
      const XlsxTableColumn& column = table.columns[i];
      const int64_t nColumn = table.range.nLeft + static_cast<int64_t>(i);
      const std::string sFormula = TotalsFormula(table, column);
      if (!sFormula.empty()) {
        edit_.cells.Write(table.range.nBottom, static_cast<int>(nColumn), "=");
        edit_.formulas[KeyOf(table.range.nBottom, nColumn)] = sFormula;
      } else if (!column.sTotalsLabel.empty()) {
        PutText(table.range.nBottom, nColumn, column.sTotalsLabel);
      }
      // Some programs keep no more of it than what its cells hold.
      const bool bContent = sFormula.empty() && column.sTotalsLabel.empty();
      edit_.fromRows.push_back({nOldBottom - 1, nOldBottom, nColumn, false});
      edit_.fromRows.push_back({nOldBottom, table.range.nBottom, nColumn, bContent});
    }
  }

 private:
  void PutText(int64_t nRow, int64_t nColumn, std::string_view sText) {
    edit_.cells.Write(nRow, static_cast<int>(nColumn), sText);
    edit_.textCells.insert(KeyOf(nRow, nColumn));
  }

  /// True if something was written to the row in the table's columns.
  bool IsFilled(const Table& table, int64_t nRow) {
    edit_.cells.Row(nRow, row_);
    return std::any_of(row_.begin(), row_.end(), [&](const StoredCell& cell) {
      return cell.nColumn >= table.range.nLeft && cell.nColumn <= table.range.nRight && !IsBlank(cell.sText);
    });
  }
  /// Last of the filled rows from there on; the row before if there is none.
  int64_t LastOfBlock(const Table& table, int64_t nRow) {
    while (nRow <= edit_.cells.LastRow() && IsFilled(table, nRow)) ++nRow;
    return nRow - 1;
  }

  static int64_t NextTable(const Table& table, const std::vector<Table>& others) {
    int64_t nNext = kMaxSheetRows + 1;
    for (const Table& other : others) {
      const bool bBelow = other.range.nTop > table.range.nTop && other.range.nLeft <= table.range.nRight &&
                          other.range.nRight >= table.range.nLeft;
      if (bBelow) nNext = std::min(nNext, other.range.nTop);
    }
    return nNext;
  }

  void TellBehind(const Table& table, const std::vector<Table>& others) {
    if (NextTable(table, others) <= kMaxSheetRows || table.range.nBottom < edit_.typing.Used().nTop) return;
    for (int64_t nRow = table.range.nBottom + 1; nRow <= edit_.typing.Used().nBottom; ++nRow)
      edit_.nBehindTables += IsFilled(table, nRow) ? 1 : 0;
  }

  const SheetFacts& facts_;
  SheetEdit& edit_;
  std::vector<StoredCell> row_;
};

bool ReadTables(const clsXlsxPackage& package, const std::string& sSheetPart, std::vector<Table>& tables,
                Failure& failure) {
  std::vector<Relationship> relationships;
  if (!package.ReadRelationships(sSheetPart, relationships, failure)) return false;
  for (const Relationship& relationship : relationships) {
    const auto nPart = relationship.sType == "table" ? package.Find(relationship.sTarget) : std::nullopt;
    if (!nPart) continue;
    Table& table = tables.emplace_back();
    table.nPart = *nPart;
    if (!package.ReadAll(*nPart, table.sBytes, failure)) return false;
    if (ReadTablePart(table.sBytes, table)) continue;
    failure = package.Damaged(relationship.sTarget);
    return false;
  }
  return true;
}

}  // namespace

bool AdjustTables(const clsXlsxPackage& package, const std::string& sSheetPart, const SheetFacts& facts,
                  SheetEdit& edit, TableChanges changes, Failure& failure) {
  std::vector<Table> tables;
  if (!ReadTables(package, sSheetPart, tables, failure)) return false;
  clsTableEdit tableEdit(facts, edit);
  for (const Table& old : std::vector<Table>(tables)) {
    Table table = old;
    tableEdit.NameColumns(table);
    FormulaRenames own;
    for (size_t i = 0; i < table.columns.size(); ++i)
      if (table.columns[i].sName != old.columns[i].sName)
        own.columns.push_back({table.sName, old.columns[i].sName, table.columns[i].sName});
    for (XlsxTableColumn& column : table.columns) column.sTotalsFormula = RenamedFormula(column.sTotalsFormula, own);
    tableEdit.FitRows(table, tables);
    const bool bMoved = table.range.nBottom != old.range.nBottom;
    changes.renames.columns.insert(changes.renames.columns.end(), own.columns.begin(), own.columns.end());
    tableEdit.FillCalculated(table, old.LastRow(), changes.renames);
    if (table.bTotals && edit.Cleared(old.range.nBottom, static_cast<int>(old.range.nLeft)))
      tableEdit.MoveTotals(table, old.range.nBottom);
    if (bMoved || !own.columns.empty()) changes.parts[table.nPart] = ChangedTablePart(table.sBytes, table);
  }
  return true;
}

}  // namespace quillon
