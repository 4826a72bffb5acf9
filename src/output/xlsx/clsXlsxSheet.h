#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "clsCellStore.h"
#include "clsDeflater.h"
#include "clsSpool.h"
#include "clsXlsxCells.h"
#include "modColumnTyping.h"
#include "modFailure.h"

namespace quillon {

class clsZipWriter;

/// A sheet of a new .xlsx workbook. Rows are turned into XML and deflated into a spool as they come. What stands before
/// them in the part (column widths, dimension) is known only at the end: it is deflated by itself and put in front.
/// Cells of a row may come in any order. Cells of rows that are gone already are kept apart and merged in
/// on saving; cells that their column decides to be of another kind are changed by then.
class clsXlsxSheet {
 public:
  clsXlsxSheet(clsXlsxCells& cells, const CellTypingOptions& options) : cells_(cells), typing_(options) {}
  clsXlsxSheet(const clsXlsxSheet&) = delete;
  clsXlsxSheet& operator=(const clsXlsxSheet&) = delete;

  /// A place in the sheet and a text that fits a cell, in its stored form.
  void WriteCell(int64_t nRow, int nColumn, std::string_view sText);
  const CellRange& UsedRange() const { return used_; }
  void BeginTable() { typing_.BeginTable(used_.nBottom); }
  /// Rows down to this one stay in sight; its cells get a filter.
  void SetHeadingRow(int64_t nRow) { nHeadingRow_ = nRow; }
  bool OrderIsOpen() const { return typing_.OrderIsOpen(); }
  void Clear();
  /// Settles all cells, so that no more number formats are asked for. Save does it, too.
  bool Finish(Failure& failure);
  /// Writes the part. May be called again, with more cells in between.
  bool Save(clsZipWriter& zip, std::string_view sPartName, bool bActive, Failure& failure);

 private:
  struct RowCell {
    int nColumn;
    uint32_t nStart, nEnd;  ///< In the XML buffer; alike for an emptied cell
  };
  void BeginRow(int64_t nRow);
  void EndRow();
  void OrderRow();
  void Drain();
  void NoteCell(int64_t nRow, int nColumn, std::string_view sText, CellKind kind);
  void NoteWidth(int nColumn, std::string_view sText, bool bText);
  void CloseBody();
  bool MergeRest(Failure& failure);
  std::string Head(bool bActive) const;
  std::string Tail() const;

  clsXlsxCells& cells_;
  std::unique_ptr<clsSpool> body_;
  std::unique_ptr<clsDeflater> deflater_;
  uint32_t nBodyCrc_ = 0;
  int64_t nBodySize_ = 0;
  bool bClosed_ = false;
  bool bFinished_ = false;

  std::unique_ptr<char[]> xml_;
  size_t nUsed_ = 0;
  int64_t nRow_ = 0;
  XmlPiece rowDigits_;
  bool bRowOpen_ = false;
  bool bRowDrained_ = false;  ///< The start of the row has left the buffer
  bool bRowOrdered_ = true;
  std::vector<RowCell> rowCells_;

  clsCellStore late_;
  clsSheetTyping typing_;
  CellRange used_;
  int64_t nHeadingRow_ = 0;
  std::vector<uint8_t> widths_;  ///< Longest value by column, at most kMaxWidth
};

}  // namespace quillon
