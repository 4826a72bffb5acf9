#include "clsXlsSheet.h"

#include <algorithm>

#include "modEventLoop.h"

namespace quillon {

namespace {

constexpr unsigned kMaxColumn = kMaxXlsColumns - 1;
constexpr size_t kDimensionsData = 14;
constexpr size_t kMostMerged = 2000;  // more of them would make each look at them long
constexpr size_t kMaxCells = static_cast<size_t>(kMaxXlsRows) * kMaxXlsColumns;

/// Least data of a record that holds one cell; 0 for other records.
size_t LeastCellData(uint16_t nId) {
  switch (nId) {
    case xls::kBlank:
      return 6;
    case xls::kBoolErr:
    case xls::kLabel:
    case xls::kRString:
      return 8;
    case xls::kRk:
    case xls::kLabelSst:
      return 10;
    case xls::kNumber:
      return 14;
    case xls::kFormula:
      return 22;
    default:
      return 0;
  }
}

bool BelongsToCell(uint16_t nId) {
  return nId == xls::kArray || nId == xls::kTable || nId == xls::kShrFmla || nId == xls::kString ||
         nId == xls::kContinue;
}

CellRange RangeOf(std::string_view sData) {
  return {GetU16(sData, 0) + 1, GetU8(sData, 4) + 1, GetU16(sData, 2) + 1, GetU8(sData, 5) + 1};
}

}  // namespace

int64_t XlsFormulaTarget(std::string_view sFormulaData) {
  constexpr unsigned kPtgExp = 0x01;
  if (GetU16(sFormulaData, 20) != 5 || GetU8(sFormulaData, 22) != kPtgExp || sFormulaData.size() < 27) return -1;
  return int64_t{GetU16(sFormulaData, 23)} << 8 | (GetU16(sFormulaData, 25) & 0xFF);
}

bool clsXlsSheet::Check(std::string_view sStream, size_t nStart) {
  sStream_ = sStream;
  nStart_ = nStart;
  columnXfs_.fill(xls::kDefaultXf);
  return Scan();
}

bool clsXlsSheet::Load() {
  if (bLoaded_) return true;
  bKeepCells_ = true;
  if (!Scan()) return false;
  SortAll();
  bLoaded_ = true;
  return true;
}

bool clsXlsSheet::Scan() {
  cells_.clear();
  rows_.clear();
  shared_.clear();
  arrays_.Clear();
  merged_.Clear();
  loose_.clear();
  maybeLoose_.clear();
  nTableStart_ = nTableEnd_ = kNone;
  bBehindCell_ = false;
  clsXlsRecordReader reader(sStream_, nStart_);
  XlsRecord record;
  if (!reader.Next(record) || record.nId != xls::kBof || GetU16(record.sData, 0) != xls::kBiff8) return false;
  int nDepth = 1;
  constexpr size_t kRecordsBetweenEvents = 4096;
  for (size_t nRecords = 1; reader.Next(record); ++nRecords) {
    if (nRecords % kRecordsBetweenEvents == 0) RunEvents();
    if (record.nId == xls::kEof && nDepth == 1) {
      nEnd_ = record.End();
      PlaceEmptyTable(record.nOffset);
      return true;
    }
    if (record.nId == xls::kBof) ++nDepth;
    if (!Note(record, nDepth)) return false;
    if (record.nId == xls::kEof) --nDepth;
  }
  return false;
}

/// A sheet without cells has their place behind DIMENSIONS. An INDEX counts only in front of the cells.
void clsXlsSheet::PlaceEmptyTable(size_t nEof) {
  if (nTableStart_ == kNone) {
    nTableStart_ = nWindow2_ != kNone ? nWindow2_ : nEof;
    if (nDimensions_ != kNone) nTableStart_ = nDimensions_ + 4 + GetU16(sStream_, nDimensions_ + 2);
    nTableEnd_ = nTableStart_;
  }
  if (nIndex_ != kNone && nIndex_ >= nTableStart_) nIndex_ = kNone;
}

bool clsXlsSheet::Note(const XlsRecord& record, int nDepth) {
  if (nDepth == 1) {
    if (LeastCellData(record.nId) != 0) return NoteCell(record);
    if (record.nId == xls::kMulRk) return NoteCells(record, 6);
    if (record.nId == xls::kMulBlank) return NoteCells(record, 2);
    if (BelongsToCell(record.nId) && bBehindCell_ && maybeLoose_.empty()) {
      NoteAttached(record);
      return true;
    }
    if (record.nId == xls::kRow || record.nId == xls::kDbCell) {
      NoteInTable(record);
      bBehindCell_ = false;
      if (record.nId == xls::kDbCell) return true;
      nLastRow_ = GetU16(record.sData, 0);
      if (bKeepCells_) rows_.push_back({nLastRow_, record.nOffset + 4});
      return record.sData.size() == 16;
    }
    NoteHead(record);
  }
  if (nTableStart_ != kNone && bKeepCells_) maybeLoose_.push_back({nLastRow_, record.nOffset, record.End()});
  return true;
}

void clsXlsSheet::NoteHead(const XlsRecord& record) {
  switch (record.nId) {
    case xls::kIndex:
      nIndex_ = record.nOffset;
      break;
    case xls::kDimensions:
      if (record.sData.size() >= kDimensionsData) nDimensions_ = record.nOffset;
      break;
    case xls::kWindow2:
      if (nWindow2_ == kNone && record.sData.size() >= 2) nWindow2_ = record.nOffset;
      break;
    case xls::kProtect:
      bProtected_ = GetU16(record.sData, 0) != 0;
      break;
    case xls::kMergedCells:
      for (size_t i = 2; bKeepCells_ && nMerged_++ < kMostMerged && i + 8 <= record.sData.size(); i += 8)
        merged_.Add({GetU16(record.sData, i) + 1, GetU16(record.sData, i + 4) + 1, GetU16(record.sData, i + 2) + 1,
                     GetU16(record.sData, i + 6) + 1});
      break;
    case xls::kDefColWidth:
      nDefColWidth_ = record.nOffset;
      break;
    case xls::kDefaultRowHeight:
      nDefaultHeight_ = GetU16(record.sData, 2);
      break;
    case xls::kColInfo:
      for (unsigned i = GetU16(record.sData, 0); i <= GetU16(record.sData, 2) && i <= kMaxColumn; ++i)
        columnXfs_[i] = GetU16(record.sData, 6);
      break;
    default:
      break;
  }
}

void clsXlsSheet::NoteInTable(const XlsRecord& record) {
  if (nTableStart_ == kNone) nTableStart_ = record.nOffset;
  nTableEnd_ = record.End();
  loose_.insert(loose_.end(), maybeLoose_.begin(), maybeLoose_.end());
  maybeLoose_.clear();
}

bool clsXlsSheet::NoteCell(const XlsRecord& record) {
  if (record.sData.size() < LeastCellData(record.nId) || GetU16(record.sData, 2) > kMaxColumn) return false;
  NoteInTable(record);
  bBehindCell_ = true;
  nLastRow_ = GetU16(record.sData, 0);
  if (!bKeepCells_) return true;
  cells_.push_back({nLastRow_ << 8 | GetU16(record.sData, 2), static_cast<uint32_t>(record.nOffset),
                    static_cast<uint32_t>(record.End()), record.nId, GetU16(record.sData, 4)});
  return cells_.size() <= kMaxCells;
}

/// Several cells in one record: row, first column, the items, last column.
bool clsXlsSheet::NoteCells(const XlsRecord& record, size_t nItem) {
  const size_t nSize = record.sData.size();
  const size_t nCount = nSize < 6 ? 0 : (nSize - 6) / nItem;
  const unsigned nFirst = GetU16(record.sData, 2);
  if (nCount == 0 || nFirst + nCount > kMaxColumn + 1) return false;
  NoteInTable(record);
  bBehindCell_ = false;
  nLastRow_ = GetU16(record.sData, 0);
  if (!bKeepCells_) return true;
  for (size_t i = 0; i < nCount; ++i)
    cells_.push_back({nLastRow_ << 8 | (nFirst + static_cast<unsigned>(i)), static_cast<uint32_t>(record.nOffset),
                      static_cast<uint32_t>(record.End()), record.nId, GetU16(record.sData, 4 + i * nItem)});
  return cells_.size() <= kMaxCells;
}

void clsXlsSheet::NoteAttached(const XlsRecord& record) {
  nTableEnd_ = record.End();
  if (!bKeepCells_) return;
  cells_.back().nEnd = static_cast<uint32_t>(record.End());
  if (record.nId == xls::kArray || record.nId == xls::kTable) {
    const CellRange range = RangeOf(record.sData);
    if (range.nTop != range.nBottom || range.nLeft != range.nRight) arrays_.Add(range);
  } else if (record.nId == xls::kShrFmla) {
    const int64_t nTarget = XlsFormulaTarget(sStream_.substr(cells_.back().nOffset + 4, 27));
    if (nTarget >= 0) shared_.push_back({cells_.back().nKey, static_cast<uint32_t>(nTarget), record.nOffset});
  }
}

void clsXlsSheet::SortAll() {
  const auto bBefore = [](const XlsCell& a, const XlsCell& b) { return a.nKey < b.nKey; };
  if (!std::is_sorted(cells_.begin(), cells_.end(), bBefore)) std::stable_sort(cells_.begin(), cells_.end(), bBefore);
  std::stable_sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return a.nRow < b.nRow; });
  std::stable_sort(loose_.begin(), loose_.end(), [](const Loose& a, const Loose& b) { return a.nRow < b.nRow; });
  arrays_.Sort();
  merged_.Sort();
}

const XlsCell* clsXlsSheet::Find(uint32_t nRow, unsigned nColumn) const {
  const uint32_t nKey = nRow << 8 | nColumn;
  const auto behind = std::upper_bound(cells_.begin(), cells_.end(), nKey,
                                       [](uint32_t nWanted, const XlsCell& cell) { return nWanted < cell.nKey; });
  return behind != cells_.begin() && (behind - 1)->nKey == nKey ? &*(behind - 1) : nullptr;
}

CellRange clsXlsSheet::UsedRange() const {
  CellRange range;
  if (cells_.empty()) return range;
  range = {int64_t{cells_.front().Row()} + 1, kMaxXlsColumns, int64_t{cells_.back().Row()} + 1, 0};
  for (const XlsCell& cell : cells_) {
    range.nLeft = std::min(range.nLeft, static_cast<int64_t>(cell.Column()) + 1);
    range.nRight = std::max(range.nRight, static_cast<int64_t>(cell.Column()) + 1);
  }
  return range;
}

CellRange clsXlsSheet::ClearedData() const {
  CellRange filled;
  for (const XlsCell& cell : cells_) {
    const int64_t nRow = int64_t{cell.Row()} + 1, nColumn = int64_t{cell.Column()} + 1;
    if (!cell.IsBlank()) Include(filled, {nRow, nColumn, nRow, nColumn});
  }
  const bool bAll = std::any_of(cleared_.begin(), cleared_.end(),
                                [&filled](const CellRange& range) { return Covers(range, filled); });
  return bAll ? filled : CellRange();
}

bool clsXlsSheet::IsPartOfArray(int64_t nRow, int nColumn) const {
  return arrays_.At(nRow, nColumn) != nullptr;
}

bool clsXlsSheet::Clear(const CellRange& range) {
  if (arrays_.AreCutBy(range)) return false;
  arrays_.DropCovered(range);
  cleared_.push_back(range);
  return true;
}

bool clsXlsSheet::IsCleared(uint32_t nRow, unsigned nColumn) const {
  return std::any_of(cleared_.begin(), cleared_.end(),
                     [=](const CellRange& range) { return Contains(range, int64_t{nRow} + 1, int64_t{nColumn} + 1); });
}

}  // namespace quillon
