#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "clsCellStore.h"
#include "clsWorkbook.h"
#include "clsXlsGlobals.h"
#include "clsXlsSheet.h"
#include "modCompoundFile.h"
#include "modFileState.h"

namespace quillon {

/// An existing .xls workbook that is changed record by record. The workbook's stream is held in memory; what the run
/// writes is kept beside it until saving.
class clsXlsExistingWorkbook : public clsWorkbook {
 public:
  explicit clsXlsExistingWorkbook(const WorkbookOptions& options) : options_(options) {}
  bool Open(const std::string& sHostPath, Failure& failure);

  bool WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) override;
  bool ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) override;
  int SheetCount() const override { return static_cast<int>(globals_.Sheets().size()); }
  bool SetSheetName(int nSheet, std::string_view sName, Failure& failure) override;
  std::string SheetName(int nSheet) const override;
  void SetStandardFont(std::string_view) override {}
  std::optional<CellRange> ActiveUsedRange() override;
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override;
  bool ActivateSheet(std::string_view sName) override;
  bool ActivateSheet(int nSheet) override;
  bool SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) override;
  int64_t RefusedFormulas() const override { return nRefused_; }

 private:
  struct Sheet {
    std::unique_ptr<clsXlsSheet> existing;  ///< Null for what is no worksheet
    size_t nEnd = 0;                        ///< Offset behind its EOF
    bool bTouched = false;                  ///< Cells were written or cleared
    clsCellStore written;
  };

  bool ParseStream(OutputMessage& reason);
  bool CheckSheets();
  clsXlsSheet* Worksheet(int nSheet, int64_t nRow, int nColumn, Failure& failure);
  Sheet& At(int nSheet) { return *sheets_[static_cast<size_t>(nSheet) - 1]; }
  bool IsChanged() const { return bChanged_ || bActivated_ || globals_.IsHidden(); }
  bool Has(int nSheet) const { return nSheet >= 1 && nSheet <= SheetCount(); }
  void MarkFormulas();
  void SelectActive();
  void Assemble();
  std::vector<clsXlsCellTable> MergeTouched(clsXlsStrings& strings);
  void AddAll(const clsXlsStrings& strings, std::vector<clsXlsCellTable>& tables);
  void AddTouched(Sheet& sheet, clsXlsCellTable& table);
  void AddUntouched(const Sheet& sheet, size_t nStart, size_t nOffset);
  void AddPiece(size_t nFrom, size_t nTo);
  void AddPiece(std::string sBytes);

  WorkbookOptions options_;
  std::string sHostPath_;
  FileState state_;  ///< Of the file as it was read or last saved
  clsCompoundFile file_;
  std::string sStreamName_;
  std::string sStream_;
  clsXlsGlobals globals_;
  std::vector<std::unique_ptr<Sheet>> sheets_;
  bool bChanged_ = false;
  bool bActivated_ = false;
  int64_t nRefused_ = 0;
  // While saving
  std::vector<std::string_view> pieces_;
  std::deque<std::string> made_;
  size_t nBytes_ = 0;
};

}  // namespace quillon
