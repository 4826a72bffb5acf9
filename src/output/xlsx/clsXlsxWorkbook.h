#pragma once

#include <memory>
#include <string>
#include <vector>

#include "clsCellStore.h"
#include "clsSheetBook.h"
#include "clsXlsxCells.h"
#include "clsXlsxSheet.h"

namespace quillon {

class clsOutputFile;

/// A new .xlsx workbook of two sheets and those that the run asks for. Cells are on their way to the file as they come;
/// their texts are kept only for reading back (WorkbookOptions::bReadBack), else reading a written cell fails.
class clsXlsxWorkbook : public clsSheetBook {
 public:
  explicit clsXlsxWorkbook(const WorkbookOptions& options);

  void SetStandardFont(std::string_view sName) override { sFont_ = sName; }
  void BeginTable(int nSheet) override {
    if (HasSheet(nSheet)) At(nSheet).xml.BeginTable();
  }
  void SetHeadingRow(int nSheet, int64_t nRow) override;
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override;

 protected:
  bool PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored, Failure& failure) override;
  bool GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure& failure) override;
  std::optional<CellRange> UsedRange(int nSheet) override { return At(nSheet).xml.UsedRange(); }
  void AddSheet() override { sheets_.push_back(std::make_unique<Sheet>(cells_, options_.typing)); }
  void NamesChanged() override { cells_.SetSheetNames(names_); }
  bool Save(std::string_view sPath, Failure& failure) override;

 private:
  struct Sheet {
    Sheet(clsXlsxCells& cells, const CellTypingOptions& options) : xml(cells, options) {}
    clsXlsxSheet xml;
    clsCellStore kept;
  };
  Sheet& At(int nSheet) { return *sheets_[static_cast<size_t>(nSheet - 1)]; }
  bool WriteParts(clsOutputFile& file, Failure& failure);

  clsXlsxCells cells_;
  std::vector<std::unique_ptr<Sheet>> sheets_;
  std::string sFont_ = "Courier New";
};

}  // namespace quillon
