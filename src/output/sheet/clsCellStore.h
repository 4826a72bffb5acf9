#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "clsWorkbook.h"

namespace quillon {

/// A cell as written; the text is valid until the next change of the store.
struct StoredCell {
  int nColumn = 0;
  std::string_view sText;
};

/// Texts of one sheet's cells, compact: a record per row in an arena, one pointer per row beside it. Made for cells
/// that come row by row; any order is right. A cell written twice holds its last text; an empty text is a written cell
/// too.
class clsCellStore {
 public:
  clsCellStore() = default;
  clsCellStore(const clsCellStore&) = delete;
  clsCellStore& operator=(const clsCellStore&) = delete;

  /// Row and column from 1, checked by the caller.
  void Write(int64_t nRow, int nColumn, std::string_view sText);
  /// False if the cell was never written.
  bool Read(int64_t nRow, int nColumn, std::string_view& sText);
  /// The cells of a row by column, each once. Empty if nothing was written there.
  void Row(int64_t nRow, std::vector<StoredCell>& cells);
  int64_t LastRow() const { return range_.nBottom; }
  /// Smallest range that holds every written cell.
  const CellRange& Range() const { return range_; }
  bool Empty() const { return range_.Empty(); }
  void Clear();
  /// Bytes held, roughly.
  size_t Bytes() const;

 private:
  struct PendingCell {
    int nColumn;
    uint32_t nStart, nLength;
  };
  void Seal();
  void Collect(int64_t nRow, std::vector<StoredCell>& cells) const;
  char* Allocate(size_t nBytes);

  std::vector<char*> rows_;  ///< By row - 1: the newest record, null if none
  std::vector<std::unique_ptr<char[]>> chunks_;
  size_t nFree_ = 0;  ///< Bytes left in the last chunk
  char* pFree_ = nullptr;
  size_t nArenaBytes_ = 0;
  int64_t nPendingRow_ = 0;
  std::vector<PendingCell> pending_;
  std::string sPending_;
  std::string sRecord_;              ///< Scratch of Seal
  std::vector<StoredCell> sealing_;  ///< Scratch of Seal
  CellRange range_;
};

}  // namespace quillon
