#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "clsWorkbook.h"

namespace quillon {

/// A workbook in which another sheet goes by number 1, and that one by the other's; and whose file as it was stays
/// beside the new one.
class clsTargetedWorkbook : public clsWorkbook {
 public:
  /// bNamed: the user has said which sheet it is to be.
  clsTargetedWorkbook(std::unique_ptr<clsWorkbook> workbook, int nMain, bool bNamed, bool bBackup)
      : pWorkbook_(std::move(workbook)), nMain_(nMain), bNamed_(bNamed), bBackup_(bBackup) {}

  bool WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) override {
    return pWorkbook_->WriteCell(At(nSheet), nRow, nColumn, sText, failure);
  }
  bool WriteSettled(int nSheet, int64_t nRow, int nColumn, const SettledCell& cell, Failure& failure) override {
    return pWorkbook_->WriteSettled(At(nSheet), nRow, nColumn, cell, failure);
  }
  bool ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) override {
    return pWorkbook_->ReadCell(At(nSheet), nRow, nColumn, sText, failure);
  }
  int SheetCount() const override { return pWorkbook_->SheetCount(); }
  bool SetSheetName(int nSheet, std::string_view sName, Failure& failure) override {
    return pWorkbook_->SetSheetName(At(nSheet), sName, failure);
  }
  std::string SheetName(int nSheet) const override { return pWorkbook_->SheetName(At(nSheet)); }
  int SheetNamed(std::string_view sName, Failure& failure) override {
    return At(pWorkbook_->SheetNamed(sName, failure));
  }
  void BeginTable(int nSheet) override { pWorkbook_->BeginTable(At(nSheet)); }
  void SetHeadingRow(int nSheet, int64_t nRow) override { pWorkbook_->SetHeadingRow(At(nSheet), nRow); }
  void SetStandardFont(std::string_view sName) override { pWorkbook_->SetStandardFont(sName); }
  /// Of the sheet that was named, whichever is active: who names one means its cells.
  std::optional<CellRange> ActiveUsedRange() override;
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override {
    return pWorkbook_->ClearContents(At(nSheet), range, failure);
  }
  SheetContent ContentOf(int nSheet) override { return pWorkbook_->ContentOf(At(nSheet)); }
  bool IsExisting() const override { return pWorkbook_->IsExisting(); }
  Failure WhyRefused() const override { return pWorkbook_->WhyRefused(); }
  bool ActivateSheet(std::string_view sName) override { return pWorkbook_->ActivateSheet(sName); }
  bool ActivateSheet(int nSheet) override { return pWorkbook_->ActivateSheet(At(nSheet)); }
  bool SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) override;
  int64_t RefusedFormulas() const override { return pWorkbook_->RefusedFormulas(); }
  std::vector<std::string> Notes() const override { return pWorkbook_->Notes(); }

 private:
  int At(int nSheet) const { return nSheet == 1 ? nMain_ : nSheet == nMain_ ? 1 : nSheet; }

  std::unique_ptr<clsWorkbook> pWorkbook_;
  int nMain_;
  bool bNamed_, bBackup_;
};

}  // namespace quillon
