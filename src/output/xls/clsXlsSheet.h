#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsCellRanges.h"
#include "clsCellStore.h"
#include "clsWorkbook.h"
#include "clsXlsCellTable.h"
#include "clsXlsCellWriter.h"
#include "modColumnTyping.h"
#include "modXlsRecords.h"

namespace quillon {

/// A cell of an existing sheet where it lies in the stream.
struct XlsCell {
  uint32_t nKey = 0;     ///< Row * 256 + column, from 0
  uint32_t nOffset = 0;  ///< Of its record
  uint32_t nEnd = 0;     ///< Behind the records that belong to it: results, shared formulas, arrays
  uint16_t nId = 0;
  uint16_t nXf = 0;

  uint32_t Row() const { return nKey >> 8; }
  unsigned Column() const { return nKey & 0xFF; }
  bool IsBlank() const { return nId == xls::kBlank || nId == xls::kMulBlank; }
};

/// A worksheet in the stream of an existing workbook: where its records lie, and its cell table with the changes of a
/// run. The stream must outlive it; it may be cut behind the sheet.
class clsXlsSheet {
 public:
  static constexpr size_t kNone = static_cast<size_t>(-1);

  /// Looks over the sheet at an offset: its records must be whole and end with its EOF. Nothing about cells is kept.
  bool Check(std::string_view sStream, size_t nStart);
  /// Looks at its cells, once; False if they are damaged.
  bool Load();
  bool IsLoaded() const { return bLoaded_; }

  size_t Start() const { return nStart_; }
  size_t End() const { return nEnd_; }
  size_t IndexOffset() const { return nIndex_; }      ///< kNone: the sheet has none
  size_t Dimensions() const { return nDimensions_; }  ///< Offset of the record, or kNone
  size_t Window2() const { return nWindow2_; }
  size_t DefColWidth() const { return nDefColWidth_; }
  size_t TableStart() const { return nTableStart_; }
  size_t TableEnd() const { return nTableEnd_; }

  bool IsProtected() const { return bProtected_; }
  const clsCellRanges& Merged() const { return merged_; }

  // After Load
  const std::vector<XlsCell>& Cells() const { return cells_; }  ///< In order
  const XlsCell* Find(uint32_t nRow, unsigned nColumn) const;
  CellRange UsedRange() const;
  /// The cells that held something, if all of them were emptied; else an empty range.
  CellRange ClearedData() const;
  /// True if the cell belongs to an array formula or a data table of more than one cell.
  bool IsPartOfArray(int64_t nRow, int nColumn) const;
  /// Empties the cells of the range. False if it would cut an array formula or data table.
  bool Clear(const CellRange& range);
  bool IsCleared(uint32_t nRow, unsigned nColumn) const;

  /// Fills the table with the sheet's cells and those written, row by row. nDefaultXf is for cells that inherit no
  /// format from their row or column.
  void Merge(clsCellStore& written, clsSheetTyping& typing, uint16_t nDefaultXf, clsXlsCellWriter& writer,
             clsXlsCellTable& table) const;
  unsigned DefaultHeight() const { return nDefaultHeight_; }

 private:
  friend class clsXlsSheetMerger;
  struct Row {
    uint32_t nRow;
    size_t nData;  ///< Offset of the 16 bytes
  };
  struct Loose {
    uint32_t nRow;
    size_t nOffset, nEnd;
  };
  struct Shared {
    uint32_t nOwner;   ///< Key of the cell that the record follows
    uint32_t nTarget;  ///< Key that the formulas name
    size_t nOffset;
  };

  bool Scan();
  void PlaceEmptyTable(size_t nEof);
  bool Note(const XlsRecord& record, int nDepth);
  bool NoteCell(const XlsRecord& record);
  bool NoteCells(const XlsRecord& record, size_t nItem);
  void NoteHead(const XlsRecord& record);
  void NoteAttached(const XlsRecord& record);
  void NoteInTable(const XlsRecord& record);
  void SortAll();

  std::string_view sStream_;
  size_t nStart_ = 0, nEnd_ = 0;
  size_t nIndex_ = kNone, nDimensions_ = kNone, nWindow2_ = kNone, nDefColWidth_ = kNone;
  size_t nTableStart_ = kNone, nTableEnd_ = kNone;
  bool bKeepCells_ = false, bLoaded_ = false;
  bool bBehindCell_ = false;  ///< The record before was a cell or belongs to one
  uint32_t nLastRow_ = 0;
  std::vector<XlsCell> cells_;
  std::vector<Row> rows_;
  std::vector<Loose> maybeLoose_, loose_;  ///< Records of other kinds between the cells
  std::vector<Shared> shared_;
  clsCellRanges arrays_, merged_;
  bool bProtected_ = false;
  size_t nMerged_ = 0;
  std::vector<CellRange> cleared_;
  std::array<uint16_t, 256> columnXfs_{};
  unsigned nDefaultHeight_ = 255;
};

/// Key of the cell that a formula names as the place of its shared or array formula; -1 if it has its own expression.
int64_t XlsFormulaTarget(std::string_view sFormulaData);

}  // namespace quillon
