#include "modProofColumns.h"

#include <algorithm>
#include <limits>

namespace quillon {

bool MaySum(const TidyTyping& typing) {
  return typing.type == TidyType::Number || typing.type == TidyType::Auto;
}

size_t RoomOf(const std::vector<TidyColumnInfo>& columns, size_t nColumn) {
  constexpr size_t kEndless = std::numeric_limits<size_t>::max();
  const TidyColumnInfo& own = columns[nColumn];
  size_t nRoom = kEndless;
  if (own.nStart < 1 || own.nEnd < own.nStart) return kEndless;
  for (const TidyColumnInfo& other : columns) {
    if (other.source != TidySource::Row || other.nStart <= own.nStart) continue;
    if (other.nStart <= own.nEnd) return kEndless;
    nRoom = std::min(nRoom, static_cast<size_t>(other.nStart - own.nStart));
  }
  return nRoom;
}

std::vector<ProofColumn> ProofColumnsOf(const std::vector<TidyColumnInfo>& columns) {
  std::vector<ProofColumn> found;
  for (const TidyColumnInfo& column : columns) {
    ProofColumn& proof = found.emplace_back();
    proof.sName = column.sName;
    if (column.source != TidySource::Row) continue;
    proof.nPiece = column.column;
    proof.nStart = column.nStart;
    proof.nEnd = column.nEnd;
    proof.bNumber = MaySum(column.typing);
    proof.typing = column.typing;
  }
  return found;
}

}  // namespace quillon
