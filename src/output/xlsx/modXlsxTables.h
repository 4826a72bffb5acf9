#pragma once
// Tables (list objects) of an existing sheet. A table's column bears the name that stands in its heading cell, and
// names differ from one another; a file in which they don't would have to be repaired.

#include <map>
#include <string>

#include "clsSheetMerger.h"
#include "clsXlsxPackage.h"
#include "modFormulaText.h"

namespace quillon {

/// Looks for heading cells that the edit changes or empties. Gives such a column the cell's text as name, made
/// different from the others where need be, and the cell that name: as a spreadsheet does. Adds to renames what
/// formulas must follow, and to parts the changed table parts by their number. False if a part can't be read.
bool AdjustTables(const clsXlsxPackage& package, const std::string& sSheetPart, SheetEdit& edit,
                  FormulaRenames& renames, std::map<size_t, std::string>& parts, Failure& failure);

}  // namespace quillon
