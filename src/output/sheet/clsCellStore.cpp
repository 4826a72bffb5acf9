#include "clsCellStore.h"

#include <algorithm>
#include <cstring>

#include "clsCellRanges.h"

namespace quillon {

// A record: pointer to the row's older record (8 bytes), length of that chain (1), count of cells, then for each cell
// by column: distance from the column before, length of the text, the text. Counts and lengths are 7 bits a byte, low
// first.

namespace {

constexpr size_t kChunkBytes = size_t{1} << 20;
constexpr size_t kMaxPendingBytes = size_t{16} << 20;
constexpr size_t kHeadBytes = sizeof(char*) + 1;
/// A chain that gets longer is joined, so that reading a row stays cheap however it was written.
constexpr uint8_t kMaxChain = 16;

void AppendNumber(std::string& sOut, uint32_t nValue) {
  for (; nValue >= 0x80; nValue >>= 7) sOut.push_back(static_cast<char>(nValue | 0x80));
  sOut.push_back(static_cast<char>(nValue));
}

uint32_t TakeNumber(const char*& p) {
  uint32_t nValue = 0;
  for (int nShift = 0;; nShift += 7) {
    const auto nByte = static_cast<uint8_t>(*p++);
    nValue |= static_cast<uint32_t>(nByte & 0x7F) << nShift;
    if (nByte < 0x80) return nValue;
  }
}

const char* OlderRecord(const char* pRecord) {
  const char* pOlder = nullptr;
  std::memcpy(&pOlder, pRecord, sizeof pOlder);
  return pOlder;
}

uint8_t ChainLength(const char* pRecord) {
  return pRecord == nullptr ? uint8_t{0} : static_cast<uint8_t>(pRecord[8]);
}
static_assert(sizeof(char*) == 8);

/// Calls back for the cells of one record until that gives false.
template <typename F>
void ForCells(const char* pRecord, F&& take) {
  const char* p = pRecord + kHeadBytes;
  StoredCell cell;
  for (uint32_t nCells = TakeNumber(p); nCells > 0; --nCells) {
    cell.nColumn += static_cast<int>(TakeNumber(p));
    const uint32_t nLength = TakeNumber(p);
    cell.sText = {p, nLength};
    p += nLength;
    if (!take(cell)) return;
  }
}

/// By column, each column's newest (the last of those given) only.
void KeepNewest(std::vector<StoredCell>& cells) {
  const auto Before = [](const StoredCell& a, const StoredCell& b) { return a.nColumn < b.nColumn; };
  if (!std::is_sorted(cells.begin(), cells.end(), Before)) std::stable_sort(cells.begin(), cells.end(), Before);
  size_t nKept = 0;
  for (size_t i = 0; i < cells.size(); ++i)
    if (i + 1 == cells.size() || cells[i + 1].nColumn != cells[i].nColumn) cells[nKept++] = cells[i];
  cells.resize(nKept);
}

}  // namespace

void clsCellStore::Write(int64_t nRow, int nColumn, std::string_view sText) {
  if (nRow != nPendingRow_ || sPending_.size() > kMaxPendingBytes) Seal();
  nPendingRow_ = nRow;
  pending_.push_back({nColumn, static_cast<uint32_t>(sPending_.size()), static_cast<uint32_t>(sText.size())});
  sPending_.append(sText);
  Include(range_, {nRow, nColumn, nRow, nColumn});
}

void clsCellStore::Seal() {
  if (pending_.empty()) return;
  const auto nIndex = static_cast<size_t>(nPendingRow_ - 1);
  if (rows_.size() <= nIndex) rows_.resize(nIndex + 1);
  const uint8_t nChain = ChainLength(rows_[nIndex]);
  const bool bJoin = nChain >= kMaxChain;
  std::vector<StoredCell>& cells = sealing_;
  cells.clear();
  if (bJoin) Collect(nPendingRow_, cells);
  for (const PendingCell& cell : pending_)
    cells.push_back({cell.nColumn, std::string_view(sPending_).substr(cell.nStart, cell.nLength)});
  KeepNewest(cells);

  char* const pOlder = bJoin ? nullptr : rows_[nIndex];
  sRecord_.assign(sizeof pOlder, '\0');
  std::memcpy(sRecord_.data(), &pOlder, sizeof pOlder);
  sRecord_.push_back(static_cast<char>(bJoin ? 1 : nChain + 1));
  AppendNumber(sRecord_, static_cast<uint32_t>(cells.size()));
  int nColumn = 0;
  for (const StoredCell& cell : cells) {
    AppendNumber(sRecord_, static_cast<uint32_t>(cell.nColumn - nColumn));
    AppendNumber(sRecord_, static_cast<uint32_t>(cell.sText.size()));
    sRecord_.append(cell.sText);
    nColumn = cell.nColumn;
  }
  rows_[nIndex] = static_cast<char*>(std::memcpy(Allocate(sRecord_.size()), sRecord_.data(), sRecord_.size()));
  pending_.clear();
  sPending_.clear();
}

char* clsCellStore::Allocate(size_t nBytes) {
  if (nBytes > nFree_) {
    const size_t nChunk = std::max(nBytes, kChunkBytes);
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(nChunk));
    nArenaBytes_ += nChunk;
    pFree_ = chunks_.back().get();
    nFree_ = nChunk;
  }
  char* const pTaken = pFree_;
  pFree_ += nBytes;
  nFree_ -= nBytes;
  return pTaken;
}

bool clsCellStore::Read(int64_t nRow, int nColumn, std::string_view& sText) {
  if (nRow == nPendingRow_) Seal();
  if (nRow < 1 || static_cast<uint64_t>(nRow) > rows_.size()) return false;
  bool bFound = false;
  for (const char* p = rows_[static_cast<size_t>(nRow - 1)]; p != nullptr && !bFound; p = OlderRecord(p)) {
    ForCells(p, [&](const StoredCell& cell) {
      if (cell.nColumn == nColumn) {
        sText = cell.sText;
        bFound = true;
      }
      return cell.nColumn < nColumn;
    });
  }
  return bFound;
}

void clsCellStore::Collect(int64_t nRow, std::vector<StoredCell>& cells) const {
  std::vector<const char*> chain;
  for (const char* p = rows_[static_cast<size_t>(nRow - 1)]; p != nullptr; p = OlderRecord(p)) chain.push_back(p);
  for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
    ForCells(*it, [&cells](const StoredCell& cell) {
      cells.push_back(cell);
      return true;
    });
  }
}

void clsCellStore::Row(int64_t nRow, std::vector<StoredCell>& cells) {
  cells.clear();
  if (nRow == nPendingRow_) Seal();
  if (nRow < 1 || static_cast<uint64_t>(nRow) > rows_.size()) return;
  Collect(nRow, cells);
  KeepNewest(cells);
}

void clsCellStore::Clear() {
  rows_ = {};
  chunks_.clear();
  nFree_ = nArenaBytes_ = 0;
  pFree_ = nullptr;
  nPendingRow_ = 0;
  pending_.clear();
  sPending_.clear();
  range_ = {};
}

size_t clsCellStore::Bytes() const {
  return nArenaBytes_ + rows_.capacity() * sizeof(char*) + sPending_.capacity() +
         pending_.capacity() * sizeof(PendingCell);
}

}  // namespace quillon
