#include "clsXlsCellTable.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace quillon {

namespace {

constexpr uint32_t kBlockRows = 32;
constexpr size_t kRowRecord = 20;

}  // namespace

bool RkOfNumber(double nValue, uint32_t& nRk) {
  constexpr double kLimit = 536870912.0;  // 2^29
  const auto nBits = std::bit_cast<uint64_t>(nValue);
  if (nValue > -kLimit && nValue < kLimit) {
    const auto nWhole = static_cast<int32_t>(nValue);
    if (static_cast<double>(nWhole) == nValue && !(nWhole == 0 && nBits != 0)) {
      nRk = static_cast<uint32_t>(nWhole) << 2 | 2;
      return true;
    }
    const double nHundred = std::nearbyint(nValue * 100);
    if (nHundred > -kLimit && nHundred < kLimit && nHundred != 0 && nHundred / 100 == nValue) {
      nRk = static_cast<uint32_t>(static_cast<int32_t>(nHundred)) << 2 | 3;
      return true;
    }
  }
  if ((nBits & 0x3FFFFFFFFULL) != 0) return false;
  nRk = static_cast<uint32_t>(nBits >> 32);
  return true;
}

double NumberOfRk(uint32_t nRk) {
  const double nValue = (nRk & 2) != 0 ? static_cast<double>(static_cast<int32_t>(nRk) >> 2)
                                       : std::bit_cast<double>(uint64_t{nRk & ~3U} << 32);
  return (nRk & 1) != 0 ? nValue / 100 : nValue;
}

void clsXlsCellTable::StartRow(uint32_t nRow, std::string_view sRowData) {
  CloseRow();
  if (blocks_.empty() && sRows_.empty()) nFirstRow_ = nRow;
  if (!sRows_.empty() && nRow - nBlockRow_ >= kBlockRows) CloseBlock();
  if (sRows_.empty()) nBlockRow_ = nRow - (nRow - nFirstRow_) % kBlockRows;
  bInRow_ = true;
  nRow_ = nRow;
  sRowData_ = sRowData;
  nRowFirst_ = nRowEnd_ = 0;
  rowStarts_.push_back(sCells_.size());
  nLastId_ = 0;
}

void clsXlsCellTable::Note(unsigned nColumn) {
  if (nRowEnd_ == 0) nRowFirst_ = nColumn;
  nRowEnd_ = nColumn + 1;
}

char* clsXlsCellTable::Begin(unsigned nColumn, unsigned nXf, uint16_t nId, size_t nData) {
  Note(nColumn);
  nLast_ = sCells_.size();
  nLastId_ = nId;
  sCells_.resize(nLast_ + 10 + nData);
  char* pRecord = sCells_.data() + nLast_;
  StoreAt(pRecord, nId);
  StoreAt(pRecord + 2, static_cast<uint16_t>(6 + nData));
  StoreAt(pRecord + 4, static_cast<uint16_t>(nRow_));
  StoreAt(pRecord + 6, static_cast<uint16_t>(nColumn));
  StoreAt(pRecord + 8, static_cast<uint16_t>(nXf));
  return pRecord + 10;
}

/// The last record is of the kind and ends in the column before.
bool clsXlsCellTable::Joins(uint16_t nId, uint16_t nMulId, unsigned nColumn) const {
  return (nLastId_ == nId || nLastId_ == nMulId) && nRowEnd_ == nColumn && nRowEnd_ != 0;
}

/// A run of cells in one record: row, first column, the items (format and value), last column.
void clsXlsCellTable::AddShared(unsigned nColumn, uint16_t nId, uint16_t nMulId, std::string_view sItem) {
  if (!Joins(nId, nMulId, nColumn)) {
    Begin(nColumn, 0, nId, sItem.size() - 2);
    sCells_.replace(nLast_ + 8, sItem.size(), sItem);
    return;
  }
  if (nLastId_ == nMulId) sCells_.resize(sCells_.size() - 2);
  sCells_.append(sItem);
  PutU16(sCells_, nColumn);
  SetAt(sCells_, nLast_, nMulId);
  SetAt(sCells_, nLast_ + 2, static_cast<uint16_t>(sCells_.size() - nLast_ - 4));
  nLastId_ = nMulId;
  Note(nColumn);
}

void clsXlsCellTable::AddRk(unsigned nColumn, unsigned nXf, uint32_t nRk) {
  char item[6];
  StoreAt(item, static_cast<uint16_t>(nXf));
  StoreAt(item + 2, nRk);
  AddShared(nColumn, xls::kRk, xls::kMulRk, {item, sizeof item});
}

void clsXlsCellTable::AddBlank(unsigned nColumn, unsigned nXf) {
  char item[2];
  StoreAt(item, static_cast<uint16_t>(nXf));
  AddShared(nColumn, xls::kBlank, xls::kMulBlank, {item, sizeof item});
}

void clsXlsCellTable::AddNumber(unsigned nColumn, unsigned nXf, double nValue) {
  uint32_t nRk = 0;
  if (RkOfNumber(nValue, nRk)) return AddRk(nColumn, nXf, nRk);
  StoreAt(Begin(nColumn, nXf, xls::kNumber, 8), nValue);
}

void clsXlsCellTable::AddLabelSst(unsigned nColumn, unsigned nXf, uint32_t nString) {
  StoreAt(Begin(nColumn, nXf, xls::kLabelSst, 4), nString);
}

void clsXlsCellTable::AddFormula(unsigned nColumn, unsigned nXf, std::string_view sTokens) {
  constexpr uint16_t kAlwaysAndOnLoad = 3;
  char* pData = Begin(nColumn, nXf, xls::kFormula, 14 + sTokens.size());
  xls::kNoResult.copy(pData, xls::kNoResult.size());
  StoreAt(pData + 8, kAlwaysAndOnLoad);
  StoreAt(pData + 10, uint32_t{0});
  sTokens.copy(pData + 14, sTokens.size());
}

void clsXlsCellTable::AddTruth(unsigned nColumn, unsigned nXf, bool bValue, std::string_view sTokens) {
  char* pData = Begin(nColumn, nXf, xls::kFormula, 14 + sTokens.size());
  const char result[] = {1, 0, static_cast<char>(bValue ? 1 : 0), 0, 0, 0, '\xFF', '\xFF'};
  std::copy_n(result, sizeof result, pData);
  StoreAt(pData + 8, uint16_t{0});
  StoreAt(pData + 10, uint32_t{0});
  sTokens.copy(pData + 14, sTokens.size());
}

void clsXlsCellTable::AddRaw(unsigned nColumn, std::string_view sRecords) {
  Note(nColumn);
  nLastId_ = 0;
  sCells_.append(sRecords);
}

void clsXlsCellTable::AddLoose(std::string_view sRecords) {
  nLastId_ = 0;
  sCells_.append(sRecords);
}

void clsXlsCellTable::CloseRow() {
  if (!bInRow_) return;
  bInRow_ = false;
  PutU16(sRows_, xls::kRow);
  PutU16(sRows_, 16);
  const size_t nData = sRows_.size();
  if (sRowData_.size() == 16) {
    sRows_.append(sRowData_);
  } else {
    sRows_.append(16, '\0');
    SetAt(sRows_, nData + 6, static_cast<uint16_t>(nDefaultHeight_));
    SetAt(sRows_, nData + 12, uint32_t{0x000F0100});
  }
  SetAt(sRows_, nData, static_cast<uint16_t>(nRow_));
  SetAt(sRows_, nData + 2, static_cast<uint16_t>(nRowFirst_));
  SetAt(sRows_, nData + 4, static_cast<uint16_t>(nRowEnd_));
  if (nRowEnd_ == 0) return;
  nFirstColumn_ = std::min(nFirstColumn_, nRowFirst_);
  nColumnsEnd_ = std::max(nColumnsEnd_, nRowEnd_);
}

void clsXlsCellTable::CloseBlock() {
  if (sRows_.empty()) return;
  blocks_.push_back({nBlockRow_, sTable_.size() + sRows_.size() + sCells_.size()});
  sTable_.append(sRows_).append(sCells_);
  if (bIndexed_) PutDbCell();
  sRows_.clear();
  sCells_.clear();
  rowStarts_.clear();
}

void clsXlsCellTable::PutDbCell() {
  PutU16(sTable_, xls::kDbCell);
  PutU16(sTable_, static_cast<unsigned>(4 + 2 * rowStarts_.size()));
  PutU32(sTable_, sRows_.size() + sCells_.size());
  // The first offset counts from behind the first ROW record, each other one from the row before.
  size_t nFrom = 0;
  for (size_t i = 0; i < rowStarts_.size(); ++i) {
    const size_t nOffset = i == 0 ? sRows_.size() - kRowRecord : rowStarts_[i] - nFrom;
    PutU16(sTable_, static_cast<unsigned>(std::min<size_t>(nOffset, 0xFFFF)));
    nFrom = rowStarts_[i];
  }
}

void clsXlsCellTable::Finish() {
  CloseRow();
  CloseBlock();
}

size_t clsXlsCellTable::IndexBytes() const {
  const size_t nBlocks = Empty() ? 0 : (nRow_ - nFirstRow_) / kBlockRows + 1;
  return 4 + 16 + 4 * nBlocks;
}

std::string clsXlsCellTable::Index(size_t nTableOffset, size_t nDefColWidth) const {
  std::string sIndex;
  PutU16(sIndex, xls::kIndex);
  PutU16(sIndex, static_cast<unsigned>(IndexBytes() - 4));
  PutU32(sIndex, 0);
  PutU32(sIndex, Empty() ? 0 : nFirstRow_);
  PutU32(sIndex, RowsEnd());
  PutU32(sIndex, nDefColWidth);
  uint32_t nRow = nFirstRow_;
  for (const Block& block : blocks_) {
    // A gap of whole blocks points to the next block there is.
    for (; nRow <= block.nFirstRow; nRow += kBlockRows) PutU32(sIndex, nTableOffset + block.nDbCell);
  }
  return sIndex;
}

}  // namespace quillon
