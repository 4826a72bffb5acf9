#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "clsCellRanges.h"
#include "clsXmlScanner.h"

namespace quillon {

/// "B5" as row and column; nothing if it is no cell of a sheet.
struct CellPlace {
  int64_t nRow = 0;
  int nColumn = 0;
};
std::optional<CellPlace> ParseCellPlace(std::string_view sText);
/// "A1:C9" or "B5".
std::optional<CellRange> ParseCellRange(std::string_view sText);
std::string CellRangeText(const CellRange& range);
/// Whole number of an attribute; nothing if it is none.
std::optional<uint32_t> ParseIndex(std::string_view sText);

/// Where a scan of a sheet part stands: knows rows and cells, numbered or not, and refuses those out of order, given
/// twice, beyond the sheet or behind what else a row holds, which a spreadsheet would have to repair.
class clsSheetCursor {
 public:
  enum class Event : uint8_t {
    None,       ///< Nothing of the cells
    SheetData,  ///< Its start tag
    SheetDataEnd,
    Row,     ///< A row's start tag
    RowEnd,  ///< Its end; an empty tag gives Row alone, with RowIsEmpty
    Cell,    ///< A cell's start tag or empty tag
    Damaged
  };

  /// Looks at the scanner's token. Cells are left to the caller to pass over or read.
  Event Look(const clsXmlScanner& scanner);

  bool InSheetData() const { return bInData_; }
  bool SeenSheetData() const { return bSeenData_; }
  int64_t Row() const { return nRow_; }
  int Column() const { return nColumn_; }
  uint32_t Style() const { return nStyle_; }  ///< Of the cell

 private:
  Event LookAtRow(const clsXmlScanner& scanner);
  Event LookAtCell(const clsXmlScanner& scanner);

  bool bInData_ = false;
  bool bSeenData_ = false;
  bool bInRow_ = false;
  int64_t nRow_ = 0;
  int nColumn_ = 0;
  uint32_t nStyle_ = 0;
};

}  // namespace quillon
