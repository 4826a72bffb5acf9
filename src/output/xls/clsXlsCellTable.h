#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "modXlsRecords.h"

namespace quillon {

/// Makes the cell table of a sheet: blocks of 32 rows, each with its ROW records, its cells and a DBCELL. Rows and
/// columns count from 0 and come in order; neighbours that may share a record (MULRK, MULBLANK) do.
class clsXlsCellTable {
 public:
  /// nDefaultHeight: of new rows, in twips. Without an INDEX a sheet has no DBCELLs either.
  explicit clsXlsCellTable(unsigned nDefaultHeight = 255, bool bIndexed = true)
      : nDefaultHeight_(nDefaultHeight), bIndexed_(bIndexed) {}

  /// Makes room for about so many bytes.
  void Reserve(size_t nBytes) { sTable_.reserve(nBytes); }
  /// Begins a row; sRowData are the 16 bytes of its old ROW record, or nothing.
  void StartRow(uint32_t nRow, std::string_view sRowData = {});

  void AddRk(unsigned nColumn, unsigned nXf, uint32_t nRk);
  void AddNumber(unsigned nColumn, unsigned nXf, double nValue);  ///< As RK where that holds it exactly
  void AddBlank(unsigned nColumn, unsigned nXf);
  void AddLabelSst(unsigned nColumn, unsigned nXf, uint32_t nString);
  /// The formula's result is the truth value.
  void AddTruth(unsigned nColumn, unsigned nXf, bool bValue, std::string_view sTokens);
  /// sTokens: the expression with its length in front. To be calculated on loading.
  void AddFormula(unsigned nColumn, unsigned nXf, std::string_view sTokens);
  /// A whole cell record, with what belongs to it behind it.
  void AddRaw(unsigned nColumn, std::string_view sRecords);
  /// Records that belong to no cell, behind the last one added.
  void AddLoose(std::string_view sRecords);

  /// Closes the last block. No more cells after that.
  void Finish();
  const std::string& Bytes() const { return sTable_; }
  std::string TakeBytes() { return std::move(sTable_); }
  bool Empty() const { return blocks_.empty(); }
  /// First row, and the one behind the last.
  uint32_t FirstRow() const { return nFirstRow_; }
  uint32_t RowsEnd() const { return Empty() ? 0 : nRow_ + 1; }
  unsigned FirstColumn() const { return Empty() ? 0 : nFirstColumn_; }
  unsigned ColumnsEnd() const { return nColumnsEnd_; }
  /// INDEX for a table at an offset of the stream; nDefColWidth is the offset of that record.
  std::string Index(size_t nTableOffset, size_t nDefColWidth) const;
  size_t IndexBytes() const;

 private:
  struct Block {
    uint32_t nFirstRow;
    size_t nDbCell;  ///< Offset in the table
  };

  char* Begin(unsigned nColumn, unsigned nXf, uint16_t nId, size_t nData);
  void Note(unsigned nColumn);
  bool Joins(uint16_t nId, uint16_t nMulId, unsigned nColumn) const;
  void AddShared(unsigned nColumn, uint16_t nId, uint16_t nMulId, std::string_view sItem);
  void CloseRow();
  void CloseBlock();
  void PutDbCell();

  unsigned nDefaultHeight_;
  bool bIndexed_;
  std::string sTable_;
  std::vector<Block> blocks_;
  uint32_t nFirstRow_ = 0;
  unsigned nFirstColumn_ = 256, nColumnsEnd_ = 0;

  // The block in hand
  std::string sRows_, sCells_;
  std::vector<size_t> rowStarts_;  ///< Offset in sCells_ of each row's first cell
  uint32_t nBlockRow_ = 0;
  // The row in hand
  bool bInRow_ = false;
  uint32_t nRow_ = 0;
  std::string_view sRowData_;
  unsigned nRowFirst_ = 0, nRowEnd_ = 0;
  // The record that the next cell may join
  size_t nLast_ = 0;
  uint16_t nLastId_ = 0;
};

/// The 30-bit form of a number, with its two flags; False if that would not hold it exactly.
bool RkOfNumber(double nValue, uint32_t& nRk);
double NumberOfRk(uint32_t nRk);

}  // namespace quillon
