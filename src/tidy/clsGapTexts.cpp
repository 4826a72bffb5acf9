#include "clsGapTexts.h"

#include <algorithm>

#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMostPieces = 24;
constexpr size_t kMostBytes = 80;

bool IsOfNumber(char c) {
  return std::string_view("+-.,()$%").find(c) != std::string_view::npos;
}
bool IsOfValue(char c) {
  return IsAsciiDigit(c) || IsAsciiLetter(c) || static_cast<unsigned char>(c) >= 0x80;
}

/// Whether a value goes on from one to the other.
bool Touch(char cText, char cBeside) {
  return IsOfValue(cBeside) && (IsOfValue(cText) || IsOfNumber(cText));
}

/// The side of an amount.
bool IsSide(std::string_view sText) {
  return sText == "CR" || sText == "DR" || sText == "Cr" || sText == "Dr";
}

}  // namespace

void clsGapTexts::Add(GapCharacters& sum, GapSide side, int64_t lCharacters, int64_t lLine) {
  (side == GapSide::InFront ? sum.lInFront : side == GapSide::Between ? sum.lBetween : sum.lBehind) += lCharacters;
  if (lLine > 0 && (sum.lFirstLine == 0 || lLine < sum.lFirstLine)) sum.lFirstLine = lLine;
}

void clsGapTexts::Take(size_t nGap, GapSide side, std::string_view sText, int64_t lCharacters, char cBefore,
                       char cBehind, int64_t lLine) {
  if (sText.empty()) return;
  const bool bPart = Touch(sText.front(), cBefore) || Touch(sText.back(), cBehind);
  if (bPart || IsSide(sText) || sText.size() > kMostBytes) return Add(lost_, side, lCharacters, lLine);
  const auto known = std::find_if(pieces_.begin(), pieces_.end(), [&](const Piece& piece) {
    return piece.nGap == nGap && piece.side == side && piece.sText == sText;
  });
  if (known != pieces_.end()) {
    ++known->lRows;
    return;
  }
  if (pieces_.size() >= kMostPieces) return Add(lost_, side, lCharacters, lLine);
  pieces_.push_back({nGap, side, std::string(sText), lCharacters, 1, lLine});
}

void clsGapTexts::Settle(GapCharacters& lost, GapCharacters& same) const {
  constexpr int64_t kParts = 4;
  constexpr int64_t kMost = 3;
  lost = lost_;
  same = {};
  for (const Piece& piece : pieces_) {
    // In a table of one row a stroke is no value, but a word may be.
    const bool bSeveral =
        piece.lRows > 1 || (lRows_ == 1 && std::none_of(piece.sText.begin(), piece.sText.end(), IsOfValue));
    const bool bSame = bSeveral && piece.lRows * kParts >= lRows_ * kMost;
    Add(bSame ? same : lost, piece.side, piece.lCharacters * piece.lRows, piece.lFirstLine);
  }
}

}  // namespace quillon
