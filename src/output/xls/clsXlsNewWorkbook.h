#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "clsCellStore.h"
#include "clsSheetBook.h"
#include "clsXlsCellTable.h"
#include "clsXlsCellWriter.h"
#include "clsXlsFormats.h"
#include "clsXlsStrings.h"
#include "modColumnTyping.h"

namespace quillon {

/// A new .xls workbook. Texts are kept until saving, when they are typed row by row.
class clsXlsNewWorkbook : public clsSheetBook {
 public:
  explicit clsXlsNewWorkbook(const WorkbookOptions& options);

  void SetStandardFont(std::string_view sName) override { sFont_ = sName; }
  void BeginTable(int nSheet) override {
    if (HasSheet(nSheet)) At(nSheet).typing.BeginTable(At(nSheet).cells.LastRow());
  }
  void SetHeadingRow(int nSheet, int64_t nRow) override;
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override;

 protected:
  bool PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored, Failure& failure) override;
  bool GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure& failure) override;
  std::optional<CellRange> UsedRange(int nSheet) override { return At(nSheet).cells.Range(); }
  void AddSheet() override { sheets_.push_back(std::make_unique<Sheet>(options_.typing)); }
  bool Save(std::string_view sPath, Failure& failure) override;

 private:
  struct Sheet {
    explicit Sheet(const CellTypingOptions& options) : typing(options) {}
    clsCellStore cells;
    clsSheetTyping typing;
    std::array<uint8_t, 256> widths{};  ///< Longest value, up to kMaxWidth
    int64_t nHeadingRow = 0;
  };
  struct Layout;
  Sheet& At(int nSheet) { return *sheets_[static_cast<size_t>(nSheet) - 1]; }
  void LayOut(int nSheet, const clsXlsCellTable& table, Layout& layout);
  std::string MakeGlobals(const clsXlsFormats& formats, const clsXlsStrings& strings, size_t& nBoundSheets) const;

  std::vector<std::unique_ptr<Sheet>> sheets_;
  std::string sFont_ = "Courier New";
};

/// Types the cells of a sheet that had none before, whose empty ones have the format nXf.
void FillXlsTable(clsCellStore& cells, clsSheetTyping& typing, uint16_t nXf, clsXlsCellWriter& writer,
                  clsXlsCellTable& table);
/// Empties the cells of the range that were written in this run.
void ClearWritten(clsCellStore& cells, const CellRange& range);

}  // namespace quillon
