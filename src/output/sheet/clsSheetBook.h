#pragma once

#include <set>
#include <string>
#include <vector>

#include "clsWorkbook.h"

namespace quillon {

/// What new and existing workbooks of every form do alike: they check the place and text of a cell before it reaches
/// the sheet, know the sheets' names and which one is active.
class clsSheetBook : public clsWorkbook {
 public:
  bool WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) final;
  bool WriteSettled(int nSheet, int64_t nRow, int nColumn, const SettledCell& cell, Failure& failure) final;
  bool ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) final;
  int SheetCount() const final { return static_cast<int>(names_.size()); }
  bool SetSheetName(int nSheet, std::string_view sName, Failure& failure) final;
  std::string SheetName(int nSheet) const final;
  int SheetNamed(std::string_view sName, Failure& failure) final;
  bool ActivateSheet(std::string_view sName) final;
  bool ActivateSheet(int nSheet) final;
  std::optional<CellRange> ActiveUsedRange() final;
  bool SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) final;
  int64_t RefusedFormulas() const final { return nRefused_; }
  std::vector<std::string> Notes() const final;

 protected:
  /// Rows and columns of a sheet, and the only format that it can be saved in.
  struct Form {
    int64_t nRows;
    int nColumns;
    int32_t lFormat;
  };
  clsSheetBook(const WorkbookOptions& options, Form form) : options_(options), form_(form) {}

  /// True for a sheet with cells: not a chart or a macro sheet.
  virtual bool IsWorksheet(int /*nSheet*/) const { return true; }
  /// The places are checked; the text is in its stored form.
  virtual bool PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored, Failure& failure) = 0;
  virtual bool GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure& failure) = 0;
  /// All cells in use, written ones included; nothing if the sheet can't be read.
  virtual std::optional<CellRange> UsedRange(int nSheet) = 0;
  /// An empty sheet behind the others, whose name is taken up here.
  virtual void AddSheet() = 0;
  virtual void NamesChanged() {}
  virtual bool Save(std::string_view sPath, Failure& failure) = 0;

  bool HasSheet(int nSheet) const { return nSheet >= 1 && nSheet <= SheetCount(); }
  /// Says so in a note where cells go that weren't this program's work, if they are more than a few or formulas.
  void NoteCleared(int nSheet, const CellRange& range, bool bOwnWork);
  /// A value is written to a sheet that is protected, or into merged cells of which another is the one that is seen.
  void NoteProtected(int nSheet);
  void NoteMerged() { ++nMerged_; }
  /// False with the reason for a number that belongs to no sheet with cells.
  bool CheckSheet(int nSheet, Failure& failure) const;

  WorkbookOptions options_;
  std::vector<std::string> names_;
  int nActive_ = 1;
  int64_t nRefused_ = 0;
  bool bOrderTaken_ = false;   ///< Dates that can be read both ways were read by the usual order
  int64_t nBehindTables_ = 0;  ///< Rows that no table could take in
  int64_t nReformatted_ = 0;   ///< Cells whose number format would have shown another text than the report's

 private:
  bool CheckPlace(int nSheet, int64_t nRow, int nColumn, Failure& failure) const;
  bool CheckText(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) const;
  int FindSheet(std::string_view sName) const;

  Form form_;
  std::vector<std::string> notes_;
  std::set<int> protected_;
  int64_t nMerged_ = 0;
};

}  // namespace quillon
