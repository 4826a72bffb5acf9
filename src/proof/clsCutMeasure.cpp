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
  std::string_view Piece(size_t nFrom, size_t nEnd, std::string& /*sScratch*/) const {
    return sBytes.substr(nFrom, nEnd - nFrom);
  }
};
struct CharRow {
  std::u32string_view sChars;
  size_t size() const { return sChars.size(); }
  bool IsBlank(size_t i) const { return sChars[i] == U' ' || sChars[i] == 0xA0; }
  char32_t At(size_t i) const { return sChars[i]; }
  std::string_view Piece(size_t nFrom, size_t nEnd, std::string& sScratch) const {
    sScratch.clear();
    for (size_t i = nFrom; i < nEnd; ++i) AppendUtf8(sChars[i], sScratch);
    return sScratch;
  }
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

CharacterLoss LossOf(const GapCharacters& lost, const GapCharacters& same) {
  return {lost.lInFront, lost.lBetween, lost.lBehind, 0, lost.lFirstLine, same.Sum()};
}

void CharacterLoss::Add(const CharacterLoss& other) {
  lInFront += other.lInFront;
  lBetween += other.lBetween;
  lBehind += other.lBehind;
  lCuts += other.lCuts;
  lSame += other.lSame;
  if (lFirstLine == 0 || (other.lFirstLine > 0 && other.lFirstLine < lFirstLine)) lFirstLine = other.lFirstLine;
}

clsCutMeasure::clsCutMeasure(std::span<const TidyPlace> places, Touching touching) {
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
    if (touching == Touching::IsNone && place.nStart == nLast_ + 1 && nLast_ > 0) touching_.push_back(nLast_);
    if (place.nStart > nLast_ + 1) gaps_.push_back({nLast_ + 1, place.nStart - 1});
    nLast_ = std::max(nLast_, place.nEnd);
  }
  nFirst_ = taken.empty() ? 1 : taken.front().nStart;
  if (nLast_ != kEndless) gaps_.push_back({nLast_ + 1, kEndless});
}

/// The characters of a gap that aren't blank.
template <typename Row>
int64_t clsCutMeasure::MeasureGap(const Row& row, size_t nGap, GapSide side, int64_t lLine) {
  auto nFrom = static_cast<size_t>(gaps_[nGap].nStart - 1);
  size_t nEnd = std::min(static_cast<size_t>(gaps_[nGap].nEnd), row.size());
  while (nFrom < nEnd && row.IsBlank(nFrom)) ++nFrom;
  if (nFrom >= nEnd) return 0;
  while (row.IsBlank(nEnd - 1)) --nEnd;
  int64_t lCount = 0;
  for (size_t i = nFrom; i < nEnd; ++i) lCount += row.IsBlank(i) ? 0 : 1;
  const auto at = [&](size_t i) {
    constexpr char kOther = '\x80';
    return row.IsBlank(i) ? ' ' : row.At(i) < 0x80 ? static_cast<char>(row.At(i)) : kOther;
  };
  texts_.Take(nGap, side, row.Piece(nFrom, nEnd, sPiece_), lCount, nFrom > 0 ? at(nFrom - 1) : ' ',
              nEnd < row.size() ? at(nEnd) : ' ', lLine);
  return lCount;
}

template <typename Row>
void clsCutMeasure::Measure(const Row& row, int64_t lLine) {
  row_ = {};
  cuts_.clear();
  texts_.RowEnds();
  const size_t nSize = row.size();
  for (size_t i = 0; i < gaps_.size() && static_cast<size_t>(gaps_[i].nStart) <= nSize; ++i) {
    const GapSide side = gaps_[i].nStart > nLast_    ? GapSide::Behind
                         : gaps_[i].nStart < nFirst_ ? GapSide::InFront
                                                     : GapSide::Between;
    int64_t& lCount = side == GapSide::Behind ? row_.lBehind : side == GapSide::InFront ? row_.lInFront : row_.lBetween;
    lCount += MeasureGap(row, i, side, lLine);
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
  row_.lCuts = std::count_if(cuts_.begin(), cuts_.end(), [&](int32_t nEdge) {
    return !std::binary_search(touching_.begin(), touching_.end(), nEdge);
  });
  if (!row_.Any()) return;
  row_.lFirstLine = lLine;
  lCuts_ += row_.lCuts;
  if (row_.lCuts > 0 && lFirstCutLine_ == 0) lFirstCutLine_ = lLine;
}

CharacterLoss clsCutMeasure::Loss() const {
  GapCharacters lost;
  GapCharacters same;
  texts_.Settle(lost, same);
  CharacterLoss loss = LossOf(lost, same);
  loss.Add({0, 0, 0, lCuts_, lFirstCutLine_, 0});
  return loss;
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
