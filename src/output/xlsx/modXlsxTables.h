#pragma once
// Tables (list objects) of an existing sheet. A table's column bears the name that stands in its heading cell, and
// names differ from one another; a file in which they don't would have to be repaired.

#include <map>
#include <string>

#include "clsSheetMerger.h"
#include "clsXlsxPackage.h"
#include "modFormulaText.h"

namespace quillon {

/// What becomes of the tables of a sheet.
struct TableChanges {
  FormulaRenames& renames;               ///< Takes what formulas must follow
  std::map<size_t, std::string>& parts;  ///< Takes the changed table parts by their number
};

/// Looks for heading cells that the edit changes or empties. Gives such a column the cell's text as name, made
/// different from the others where need be, and the cell that name: as a spreadsheet does. A table that was emptied
/// ends where the rows written into it end, one that wasn't takes in the rows written right below it; its totals row
/// stands below them. False if a part can't be read.
bool AdjustTables(const clsXlsxPackage& package, const std::string& sSheetPart, const SheetFacts& facts,
                  SheetEdit& edit, TableChanges changes, Failure& failure);

}  // namespace quillon
