#pragma once

#include <memory>
#include <string>
#include <vector>

#include "clsCellStore.h"
#include "clsWorkbook.h"
#include "clsXlsxCells.h"
#include "clsXlsxSheet.h"

namespace quillon {

class clsOutputFile;

/// A new .xlsx workbook of two sheets. Cells are on their way to the file as they come; their texts are kept only for
/// reading back (WorkbookOptions::bReadBack), else reading a written cell fails.
class clsXlsxWorkbook : public clsWorkbook {
 public:
  explicit clsXlsxWorkbook(const WorkbookOptions& options);

  bool WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) override;
  bool ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) override;
  int SheetCount() const override { return static_cast<int>(sheets_.size()); }
  bool SetSheetName(int nSheet, std::string_view sName, Failure& failure) override;
  std::string SheetName(int nSheet) const override;
  void SetStandardFont(std::string_view sName) override { sFont_ = sName; }
  std::optional<CellRange> ActiveUsedRange() override { return ActiveSheet().xml.UsedRange(); }
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override;
  bool ActivateSheet(std::string_view sName) override;
  bool ActivateSheet(int nSheet) override;
  bool SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) override;
  int64_t RefusedFormulas() const override { return cells_.RefusedFormulas(); }

 private:
  struct Sheet {
    explicit Sheet(clsXlsxCells& cells) : xml(cells) {}
    clsXlsxSheet xml;
    clsCellStore kept;
  };
  Sheet* FindSheetByNumber(int nSheet);
  Sheet& ActiveSheet() { return *sheets_[static_cast<size_t>(nActive_ - 1)]; }
  bool WriteParts(clsOutputFile& file, Failure& failure);

  bool bReadBack_;
  clsXlsxCells cells_;
  std::vector<std::unique_ptr<Sheet>> sheets_;
  std::vector<std::string> names_;
  std::string sFont_ = "Courier New";
  int nActive_ = 1;
};

}  // namespace quillon
