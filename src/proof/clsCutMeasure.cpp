#include "clsCutMeasure.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "modText.h"

namespace quillon {

namespace {

constexpr int32_t kEndless = std::numeric_limits<int32_t>::max();

bool IsOfValue(char32_t ch) {
  return ch >= 0x80 || IsAsciiDigit(static_cast<char>(ch)) || IsAsciiLetter(static_cast<char>(ch));
}

/// A row of bytes, each of them a character.
struct ByteRow {
  std::string_view sBytes;
  char cBlank;
  size_t size() const { return sBytes.size(); }
  bool IsBlank(size_t i) const { return sBytes[i] == ' ' || sBytes[i] == cBlank; }
  char32_t At(size_t i) const { return static_cast<unsigned char>(sBytes[i]); }
};
struct CharRow {
  std::u32string_view sChars;
  size_t size() const { return sChars.size(); }
  bool IsBlank(size_t i) const { return sChars[i] == U' ' || sChars[i] == 0xA0; }
  char32_t At(size_t i) const { return sChars[i]; }
};

/// Writes the characters to pOut and returns how many there are; no more than bytes. Stretches of ASCII, eight at once.
size_t Widen(std::string_view sText, char32_t* pOut) {
  constexpr size_t kStep = sizeof(uint64_t);
  constexpr uint64_t kHighBits = 0x8080808080808080U;
  const char32_t* const pStart = pOut;
  size_t i = 0;
  while (i < sText.size()) {
    uint64_t bytes = kHighBits;
    if (i + kStep <= sText.size()) std::memcpy(&bytes, sText.data() + i, kStep);
    if ((bytes & kHighBits) == 0) {
      for (size_t j = 0; j < kStep; ++j) pOut[j] = static_cast<unsigned char>(sText[i + j]);
      pOut += kStep;
      i += kStep;
    } else {
      *pOut++ = DecodeUtf8(sText, i);
    }
  }
  return static_cast<size_t>(pOut - pStart);
}

}  // namespace

void CharacterLoss::Add(const CharacterLoss& other) {
  lInFront += other.lInFront;
  lBetween += other.lBetween;
  lBehind += other.lBehind;
  lCuts += other.lCuts;
  if (lFirstLine == 0 || (other.lFirstLine > 0 && other.lFirstLine < lFirstLine)) lFirstLine = other.lFirstLine;
}

clsCutMeasure::clsCutMeasure(std::span<const TidyPlace> places) {
  std::vector<TidyPlace> taken;
  for (const TidyPlace& place : places) {
    const int32_t nEnd = place.nEnd > 0 ? place.nEnd : kEndless;
    if (place.nStart < 1 || nEnd < place.nStart) continue;
    taken.push_back({place.nStart, nEnd});
    if (place.nStart > 1) edges_.push_back(place.nStart - 1);
    if (nEnd != kEndless) edges_.push_back(nEnd);
  }
  std::sort(edges_.begin(), edges_.end());
  edges_.erase(std::unique(edges_.begin(), edges_.end()), edges_.end());
  std::sort(taken.begin(), taken.end(), [](const auto& a, const auto& b) { return a.nStart < b.nStart; });
  for (const TidyPlace& place : taken) {
    if (place.nStart > nLast_ + 1) gaps_.push_back({nLast_ + 1, place.nStart - 1});
    nLast_ = std::max(nLast_, place.nEnd);
  }
  nFirst_ = taken.empty() ? 1 : taken.front().nStart;
  if (nLast_ != kEndless) gaps_.push_back({nLast_ + 1, kEndless});
}

template <typename Row>
void clsCutMeasure::Measure(const Row& row, int64_t lLine) {
  row_ = {};
  cuts_.clear();
  const size_t nSize = row.size();
  for (const TidyPlace& gap : gaps_) {
    if (static_cast<size_t>(gap.nStart) > nSize) break;
    int64_t& lCount = gap.nStart > nLast_ ? row_.lBehind : gap.nStart < nFirst_ ? row_.lInFront : row_.lBetween;
    const size_t nEnd = std::min(static_cast<size_t>(gap.nEnd), nSize);
    for (auto i = static_cast<size_t>(gap.nStart - 1); i < nEnd; ++i) lCount += row.IsBlank(i) ? 0 : 1;
  }
  for (const int32_t nEdge : edges_) {
    const auto nNext = static_cast<size_t>(nEdge);
    if (nNext >= nSize) break;
    if (!row.IsBlank(nNext - 1) && !row.IsBlank(nNext)) cuts_.push_back(nEdge);
  }
  if (!cuts_.empty()) {
    bool bValue = false;
    for (size_t i = 0; i < nSize && !bValue; ++i) bValue = IsOfValue(row.At(i));
    if (!bValue) cuts_.clear();
  }
  row_.lCuts = static_cast<int64_t>(cuts_.size());
  if (!row_.Any()) return;
  row_.lFirstLine = lLine;
  loss_.Add(row_);
}

const CharacterLoss& clsCutMeasure::Bytes(std::string_view sRow, int64_t lLine, char cBlank) {
  Measure(ByteRow{sRow, cBlank}, lLine);
  return row_;
}

const CharacterLoss& clsCutMeasure::Text(std::string_view sRow, int64_t lLine) {
  if (IsAscii(sRow)) return Bytes(sRow, lLine);
  if (characters_.size() < sRow.size()) characters_.resize(sRow.size());
  Measure(CharRow{{characters_.data(), Widen(sRow, characters_.data())}}, lLine);
  return row_;
}

}  // namespace quillon
