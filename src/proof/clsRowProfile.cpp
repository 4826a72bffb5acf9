#include "clsRowProfile.h"

#include <algorithm>

#include "modText.h"

namespace quillon {

namespace {

constexpr int64_t kAllOfFirst = 256;
constexpr int64_t kThenEach = 32;

/// The characters of a line from nStart to nEnd; 0: to its end.
std::string_view Piece(std::string_view sLine, bool bAscii, int32_t nStart, int32_t nEnd) {
  const auto nFrom = static_cast<size_t>(nStart - 1);
  if (!bAscii) return MidChars(sLine, nStart, nEnd > 0 ? nEnd - nStart + 1 : static_cast<int64_t>(sLine.size()));
  if (nFrom >= sLine.size()) return {};
  return sLine.substr(nFrom, nEnd > 0 ? static_cast<size_t>(nEnd) - nFrom : std::string_view::npos);
}

}  // namespace

clsRowProfile::Kind clsRowProfile::KindOf(std::string_view sCell, const ProofColumn& column) {
  sCell = TrimBlanks(sCell);
  if (sCell.empty()) return Empty;
  if (column.bNumber) return ReadTidyNumber(sCell, column.typing, nullptr) ? Figures : Letters;
  const bool bDigits = std::any_of(sCell.begin(), sCell.end(), IsAsciiDigit);
  const bool bLetters = std::any_of(sCell.begin(), sCell.end(),
                                    [](char c) { return IsAsciiLetter(c) || static_cast<unsigned char>(c) >= 0x80; });
  return bDigits ? (bLetters ? Both : Figures) : bLetters ? Letters : Marks;
}

void clsRowProfile::KindsOf(std::string_view sLine, std::vector<Kind>& kinds) const {
  const bool bAscii = IsAscii(sLine);
  kinds.clear();
  for (const ProofColumn& column : columns_) {
    kinds.push_back(column.nStart < 1 ? Empty : KindOf(Piece(sLine, bAscii, column.nStart, column.nEnd), column));
  }
}

void clsRowProfile::Row(std::string_view sLine) {
  if (lRows_++ >= kAllOfFirst && lRows_ % kThenEach != 0) return;
  ++lLooked_;
  KindsOf(sLine, kinds_);
  for (size_t i = 0; i < kinds_.size(); ++i) ++counts_[i][kinds_[i]];
}

bool clsRowProfile::LooksLikeRow(std::string_view sLine) const {
  std::vector<Kind> kinds;
  KindsOf(sLine, kinds);
  constexpr int64_t kParts = 4;
  constexpr int64_t kMost = 3;
  int64_t lUsual = 0;
  int64_t lFits = 0;
  bool bFigures = false;
  for (size_t i = 0; i < columns_.size(); ++i) {
    const auto& counts = counts_[i];
    if (columns_[i].nStart < 1 || (lLooked_ - counts[Empty]) * kParts < lLooked_ * kMost) continue;
    // Texts with digits in them are texts.
    const int64_t lTexts = counts[Letters] + counts[Both];
    const Kind usual = counts[Figures] > lTexts && counts[Figures] >= counts[Marks] ? Figures
                       : lTexts > counts[Marks]                                     ? Letters
                                                                                    : Marks;
    ++lUsual;
    if ((kinds[i] == Both ? Letters : kinds[i]) != usual) continue;
    ++lFits;
    bFigures = bFigures || kinds[i] == Figures || kinds[i] == Both;
  }
  // A table of one column, or of texts alone, looks like any text.
  return lUsual > 1 && bFigures && lFits * kParts >= lUsual * kMost;
}

}  // namespace quillon
