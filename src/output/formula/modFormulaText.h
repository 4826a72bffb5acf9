#pragma once
// Changes to formulas that stand in a workbook already. They may hold anything that a spreadsheet writes, so only
// references and names are recognised in them; all else stays as it is.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Names that have changed. Names are compared without regard to case.
struct FormulaRenames {
  struct Sheet {
    std::string sOld, sNew;
  };
  struct Column {
    std::string sTable, sOld, sNew;
  };
  std::vector<Sheet> sheets;
  std::vector<Column> columns;
  bool Empty() const { return sheets.empty() && columns.empty(); }
};

/// The formula (or a bare reference, "Sheet1!A1") by the new names.
std::string RenamedFormula(std::string_view sFormula, const FormulaRenames& renames);
/// The formula as it reads when copied that many rows down and columns to the right; what leaves the sheet is "#REF!".
std::string ShiftedFormula(std::string_view sFormula, int64_t nRows, int64_t nColumns);
/// A sheet's name as formulas spell it, in quotes where they are needed.
std::string SheetNameInFormula(std::string_view sName);

}  // namespace quillon
