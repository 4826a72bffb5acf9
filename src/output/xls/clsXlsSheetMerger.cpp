// The cell table of an existing sheet with the changes of a run.

#include <algorithm>
#include <map>
#include <utility>

#include "clsXlsSheet.h"
#include "modEventLoop.h"

namespace quillon {

/// Goes over the rows of a sheet and over the written ones side by side.
///
/// A shared formula's expression follows the first of its cells. If that one is overwritten or cleared, the expression
/// is handed on: in each column the first cell left gets a copy of it, for the cells of that column. Its references are
/// relative to the cell that uses it, so it may move.
class clsXlsSheetMerger {
 public:
  clsXlsSheetMerger(const clsXlsSheet& sheet, clsCellStore& written, const clsSheetTyping& typing, uint16_t nDefaultXf,
                    clsXlsCellWriter& writer, clsXlsCellTable& table)
      : sheet_(sheet), written_(written), typing_(typing), nDefaultXf_(nDefaultXf), writer_(writer), table_(table) {}

  void Run() {
    FindHeirs();
    for (uint32_t nRow = 0; nRow < kMaxXlsRows; ++nRow) {
      RunEvents();
      const std::string_view sRowData = TakeRowData(nRow);
      const size_t nFirst = nCell_;
      while (nCell_ < sheet_.cells_.size() && sheet_.cells_[nCell_].Row() == nRow) ++nCell_;
      written_.Row(int64_t{nRow} + 1, row_);
      if (sRowData.empty() && nFirst == nCell_ && row_.empty()) continue;
      table_.StartRow(nRow, sRowData);
      MergeRow(nRow, nFirst, sRowData);
      for (; nLoose_ < sheet_.loose_.size() && sheet_.loose_[nLoose_].nRow <= nRow; ++nLoose_)
        table_.AddLoose(Bytes(sheet_.loose_[nLoose_].nOffset, sheet_.loose_[nLoose_].nEnd));
    }
    table_.Finish();
  }

 private:
  struct Heirs {
    size_t nShared = 0;  ///< Offset of the SHRFMLA record
    uint32_t nFirstRow = 0, nLastRow = 0, nCount = 0;
  };

  std::string_view Bytes(size_t nOffset, size_t nEnd) const { return sheet_.sStream_.substr(nOffset, nEnd - nOffset); }

  std::string_view TakeRowData(uint32_t nRow) {
    std::string_view sData;
    for (; nRowRecord_ < sheet_.rows_.size() && sheet_.rows_[nRowRecord_].nRow == nRow; ++nRowRecord_)
      sData = sheet_.sStream_.substr(sheet_.rows_[nRowRecord_].nData, 16);
    return sData;
  }

  bool IsReplaced(uint32_t nKey) {
    std::string_view sIgnored;
    return sheet_.IsCleared(nKey >> 8, nKey & 0xFF) ||
           written_.Read(int64_t{nKey >> 8} + 1, static_cast<int>(nKey & 0xFF) + 1, sIgnored);
  }

  int64_t TargetOf(const XlsCell& cell) const {
    return cell.nId == xls::kFormula ? XlsFormulaTarget(Bytes(cell.nOffset + 4, cell.nEnd)) : -1;
  }

  void FindHeirs() {
    std::map<uint32_t, size_t> orphaned;  // what the formulas name, to the record
    for (const clsXlsSheet::Shared& shared : sheet_.shared_)
      if (IsReplaced(shared.nOwner)) orphaned[shared.nTarget] = shared.nOffset;
    if (orphaned.empty()) return;
    for (const XlsCell& cell : sheet_.cells_) {
      const int64_t nTarget = TargetOf(cell);
      if (nTarget < 0) continue;
      const auto found = orphaned.find(static_cast<uint32_t>(nTarget));
      if (found == orphaned.end() || IsReplaced(cell.nKey)) continue;
      Heirs& heirs = heirs_[{found->first, cell.Column()}];
      if (heirs.nCount++ == 0) heirs.nFirstRow = cell.Row();
      heirs.nShared = found->second;
      heirs.nLastRow = cell.Row();
    }
  }

  /// The format that an empty cell has from its row or column.
  uint16_t InheritedXf(std::string_view sRowData, unsigned nColumn) const {
    constexpr uint16_t kRowHasFormat = 0x80;
    if ((GetU16(sRowData, 12) & kRowHasFormat) != 0) return GetU16(sRowData, 14) & 0xFFF;
    const uint16_t nXf = sheet_.columnXfs_[nColumn];
    return nXf == xls::kDefaultXf ? nDefaultXf_ : nXf;
  }

  void MergeRow(uint32_t nRow, size_t nOld, std::string_view sRowData) {
    size_t nNew = 0;
    while (nOld < nCell_ || nNew < row_.size()) {
      const unsigned nOldColumn = nOld < nCell_ ? sheet_.cells_[nOld].Column() : kMaxXlsColumns;
      const unsigned nNewColumn =
          nNew < row_.size() ? static_cast<unsigned>(row_[nNew].nColumn - 1) : unsigned{kMaxXlsColumns};
      if (nOldColumn < nNewColumn) {
        KeepOrClear(sheet_.cells_[nOld++], nRow);
        continue;
      }
      const bool bExists = nOldColumn == nNewColumn;
      uint16_t nXf = bExists ? sheet_.cells_[nOld].nXf : InheritedXf(sRowData, nNewColumn);
      for (; nOld < nCell_ && sheet_.cells_[nOld].Column() == nNewColumn; ++nOld) nXf = sheet_.cells_[nOld].nXf;
      const StoredCell& cell = row_[nNew++];
      writer_.Write(
          table_, nNewColumn, cell.sText, typing_.RuleOf(int64_t{nRow} + 1, cell.nColumn),
          {nXf, bExists,
           bExists && sheet_.IsCleared(nRow, nNewColumn) && !writer_.SameCode(nXf, sheet_.columnXfs_[nNewColumn])});
    }
  }

  void KeepOrClear(const XlsCell& cell, uint32_t nRow) {
    const unsigned nColumn = cell.Column();
    const std::string_view sData = Bytes(cell.nOffset + 4, cell.nEnd);
    if (cell.IsBlank() || sheet_.IsCleared(nRow, nColumn)) return table_.AddBlank(nColumn, cell.nXf);
    if (cell.nId == xls::kRk) return table_.AddRk(nColumn, cell.nXf, GetU32(sData, 6));
    if (cell.nId == xls::kMulRk)
      return table_.AddRk(nColumn, cell.nXf, GetU32(sData, 6 + size_t{6} * (nColumn - GetU16(sData, 2))));
    const int64_t nTarget = heirs_.empty() ? -1 : TargetOf(cell);
    const auto found = nTarget < 0 ? heirs_.end() : heirs_.find({static_cast<uint32_t>(nTarget), nColumn});
    if (found == heirs_.end()) return table_.AddRaw(nColumn, Bytes(cell.nOffset, cell.nEnd));
    AddHeir(cell, found->second);
  }

  void AddHeir(const XlsCell& cell, const Heirs& heirs) {
    const size_t nFormulaEnd = cell.nOffset + 4 + GetU16(sheet_.sStream_, cell.nOffset + 2);
    std::string sRecords(Bytes(cell.nOffset, nFormulaEnd));
    SetAt(sRecords, 4 + 23, static_cast<uint16_t>(heirs.nFirstRow));
    SetAt(sRecords, 4 + 25, static_cast<uint16_t>(cell.Column()));
    if (cell.Row() == heirs.nFirstRow) {
      const size_t nShared = sRecords.size() + 4;
      sRecords.append(Bytes(heirs.nShared, heirs.nShared + 4 + GetU16(sheet_.sStream_, heirs.nShared + 2)));
      SetAt(sRecords, nShared, static_cast<uint16_t>(heirs.nFirstRow));
      SetAt(sRecords, nShared + 2, static_cast<uint16_t>(heirs.nLastRow));
      SetAt(sRecords, nShared + 4, static_cast<uint8_t>(cell.Column()));
      SetAt(sRecords, nShared + 5, static_cast<uint8_t>(cell.Column()));
      SetAt(sRecords, nShared + 7, static_cast<uint8_t>(std::min<uint32_t>(heirs.nCount, 0xFF)));
    }
    table_.AddRaw(cell.Column(), sRecords.append(Bytes(nFormulaEnd, cell.nEnd)));
  }

  const clsXlsSheet& sheet_;
  clsCellStore& written_;
  const clsSheetTyping& typing_;
  uint16_t nDefaultXf_;
  clsXlsCellWriter& writer_;
  clsXlsCellTable& table_;
  size_t nCell_ = 0, nRowRecord_ = 0, nLoose_ = 0;
  std::vector<StoredCell> row_;
  std::map<std::pair<uint32_t, unsigned>, Heirs> heirs_;  ///< By what the formulas name, and the column
};

void clsXlsSheet::Merge(clsCellStore& written, clsSheetTyping& typing, uint16_t nDefaultXf, clsXlsCellWriter& writer,
                        clsXlsCellTable& table) const {
  typing.NoteAll(written);
  typing.Decide();
  clsXlsSheetMerger(*this, written, typing, nDefaultXf, writer, table).Run();
}

}  // namespace quillon
