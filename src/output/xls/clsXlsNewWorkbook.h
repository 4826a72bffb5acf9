#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "clsCellStore.h"
#include "clsWorkbook.h"
#include "clsXlsCellTable.h"
#include "clsXlsCellWriter.h"
#include "clsXlsFormats.h"
#include "clsXlsStrings.h"

namespace quillon {

/// A new .xls workbook. Texts are kept until saving, when they are typed row by row.
class clsXlsNewWorkbook : public clsWorkbook {
 public:
  explicit clsXlsNewWorkbook(const WorkbookOptions& options) : options_(options) {}

  bool WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) override;
  bool ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) override;
  int SheetCount() const override { return static_cast<int>(sheets_.size()); }
  bool SetSheetName(int nSheet, std::string_view sName, Failure& failure) override;
  std::string SheetName(int nSheet) const override;
  void SetStandardFont(std::string_view sName) override { sFont_ = sName; }
  std::optional<CellRange> ActiveUsedRange() override;
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override;
  bool ActivateSheet(std::string_view sName) override;
  bool ActivateSheet(int nSheet) override;
  bool SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) override;
  int64_t RefusedFormulas() const override { return nRefused_; }

 private:
  struct Sheet {
    clsCellStore cells;
    std::array<uint8_t, 256> widths{};  ///< Longest value, up to kMaxWidth
  };
  struct Layout;
  Sheet& At(int nSheet) { return sheets_[static_cast<size_t>(nSheet) - 1]; }
  bool Has(int nSheet) const { return nSheet >= 1 && nSheet <= SheetCount(); }
  void FillTable(Sheet& sheet, clsXlsCellWriter& writer, clsXlsCellTable& table);
  void LayOut(int nSheet, const clsXlsCellTable& table, Layout& layout);
  std::string MakeGlobals(const clsXlsFormats& formats, const clsXlsStrings& strings, size_t& nBoundSheets) const;

  WorkbookOptions options_;
  std::array<Sheet, 2> sheets_;
  std::array<std::string, 2> names_ = {"Sheet1", "Sheet2"};
  int nActive_ = 1;
  std::string sFont_ = "Courier New";
  int64_t nRefused_ = 0;
};

/// What a cell write of an .xls sheet is refused for before anything else; True if for nothing. nSheets is the number
/// of sheets.
bool CheckXlsCell(int nSheets, int nSheet, int64_t nRow, int nColumn, Failure& failure);
bool CheckXlsText(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure);
/// Empties the cells of the range that were written in this run.
void ClearWritten(clsCellStore& cells, const CellRange& range);

}  // namespace quillon
