#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "clsCellStore.h"
#include "clsSheetBook.h"
#include "clsXlsGlobals.h"
#include "clsXlsSheet.h"
#include "modColumnTyping.h"
#include "modCompoundFile.h"
#include "modFileState.h"

namespace quillon {

/// An existing .xls workbook that is changed record by record. The workbook's stream is held in memory; what the run
/// writes is kept beside it until saving.
class clsXlsExistingWorkbook : public clsSheetBook {
 public:
  explicit clsXlsExistingWorkbook(const WorkbookOptions& options)
      : clsSheetBook(options, {kMaxXlsRows, kMaxXlsColumns, kFormatXls}) {}
  bool Open(const std::string& sHostPath, Failure& failure);

  void SetStandardFont(std::string_view) override {}
  void BeginTable(int nSheet) override {
    if (HasSheet(nSheet)) At(nSheet).typing.BeginTable(At(nSheet).written.LastRow());
  }
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override;
  SheetContent ContentOf(int nSheet) override;
  bool IsExisting() const override { return true; }

 protected:
  bool IsWorksheet(int nSheet) const override { return globals_.Sheets()[static_cast<size_t>(nSheet) - 1].bWorksheet; }
  bool PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored, Failure& failure) override;
  bool GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure& failure) override;
  std::optional<CellRange> UsedRange(int nSheet) override;
  void AddSheet() override;
  void NamesChanged() override;
  bool Save(std::string_view sPath, Failure& failure) override;

 private:
  struct Sheet {
    explicit Sheet(const CellTypingOptions& options) : typing(options) {}
    std::unique_ptr<clsXlsSheet> existing;  ///< Null for what is no worksheet, and for an added one
    bool bAdded = false;
    size_t nEnd = 0;        ///< Offset behind its EOF
    bool bAnew = false;     ///< Our own work, emptied as a whole: it is written as a new one is
    bool bTouched = false;  ///< Cells were written or cleared
    clsCellStore written;
    clsSheetTyping typing;
  };

  bool ParseStream(OutputMessage& reason);
  bool CheckSheets();
  bool Load(int nSheet, Failure& failure);
  std::optional<CellRange> OwnUsedRange(int nSheet);
  Sheet& At(int nSheet) { return *sheets_[static_cast<size_t>(nSheet) - 1]; }
  bool IsActivated() const { return nActive_ != globals_.ActiveSheet(); }
  bool IsChanged() const { return bChanged_ || IsActivated() || globals_.IsHidden(); }
  void MarkFormulas();
  void DropStrings();
  void SelectActive();
  void Assemble();
  std::vector<clsXlsCellTable> MergeTouched(clsXlsStrings& strings);
  void AddAll(const clsXlsStrings& strings, std::vector<clsXlsCellTable>& tables);
  void AddNew(int nSheet, const clsXlsCellTable& table);
  std::string HeadFrom(const Sheet& sheet, size_t nFrom);
  void AddTouched(Sheet& sheet, clsXlsCellTable& table);
  void AddUntouched(const Sheet& sheet, size_t nStart, size_t nOffset);
  void AddPiece(size_t nFrom, size_t nTo);
  void AddPiece(std::string sBytes);

  std::string sHostPath_;
  FileState state_;  ///< Of the file as it was read or last saved
  clsCompoundFile file_;
  std::string sStreamName_;
  std::string sStream_;
  clsXlsGlobals globals_;
  std::vector<std::unique_ptr<Sheet>> sheets_;
  bool bChanged_ = false;
  // While saving
  std::vector<std::string_view> pieces_;
  std::deque<std::string> made_;
  size_t nBytes_ = 0;
};

}  // namespace quillon
