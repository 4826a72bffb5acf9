#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsCellStore.h"
#include "modFailure.h"

namespace quillon {

class clsDeflater;
class clsSpool;
class clsSheetTyping;
class clsXlsxCells;

/// Merges cells that came late into the deflated rows of one of our own new sheets: they replace what was written at
/// their places, an empty text takes a cell away. Cells whose column decided otherwise than they did by themselves are
/// typed again, from what they show. Holds one row's late cells and one element at a time.
class clsXlsxMerger {
 public:
  /// All are the caller's and outlive the object. The rows that come out are written to the deflater.
  clsXlsxMerger(clsXlsxCells& cells, clsCellStore& late, const clsSheetTyping& typing, clsDeflater& out)
      : cells_(cells), late_(late), typing_(typing), out_(out) {}

  /// False with the reason if the spool can't be read.
  bool Merge(clsSpool& rows, Failure& failure);

 private:
  void TakeElement(std::string_view sElement);
  void BeginRow(std::string_view sElement);
  void TakeCell(std::string_view sElement);
  void EndRow();
  /// Late rows before the row of the body, whole.
  void EmitRowsBefore(int64_t nRow);
  /// Late cells of the row in hand that stand before the column.
  void EmitCellsBefore(int nColumn);
  void EmitCell(int nColumn, std::string_view sText);
  /// The text that the element shows; False for one that isn't typed by its text.
  bool ShownText(std::string_view sElement, std::string& sText) const;
  void Emit(std::string_view sXml);

  clsXlsxCells& cells_;
  clsCellStore& late_;
  const clsSheetTyping& typing_;
  clsDeflater& out_;
  int64_t nNextLate_ = 1;  ///< Late rows below are done
  int64_t nRow_ = 0;
  std::vector<StoredCell> rowCells_;
  size_t nNextCell_ = 0;
  std::string sOut_, sShown_;
};

}  // namespace quillon
