#include "modProofColumns.h"

#include <algorithm>
#include <limits>

namespace quillon {

TidyNumber PlainNumber(std::string_view sPlain) {
  constexpr size_t kMostDigits = 18;
  constexpr unsigned kTen = 10;
  TidyNumber number;
  const bool bMinus = sPlain.starts_with('-');
  if (bMinus) sPlain.remove_prefix(1);
  size_t nPoint = sPlain.size();
  uint64_t nValue = 0;
  for (size_t i = 0; i < sPlain.size(); ++i) {
    const unsigned nDigit = static_cast<unsigned char>(sPlain[i]) - unsigned{'0'};
    if (nDigit < kTen && i <= kMostDigits) {
      nValue = nValue * kTen + nDigit;
    } else if (sPlain[i] == '.' && nPoint == sPlain.size()) {
      nPoint = i;
    } else {
      return number;
    }
  }
  const size_t nDigits = sPlain.size() - (nPoint < sPlain.size() ? 1 : 0);
  if (nDigits == 0 || nDigits > kMostDigits) return number;
  number.nDecimals = static_cast<int>(nDigits - nPoint);
  number.nValue = bMinus ? -static_cast<int64_t>(nValue) : static_cast<int64_t>(nValue);
  number.bScaled = true;
  return number;
}

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
