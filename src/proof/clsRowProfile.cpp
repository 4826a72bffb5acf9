#include "clsRowProfile.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

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

/// Words in the first characters of a line; no more than lEnough are counted.
int64_t WordsOf(std::string_view sLine, size_t nWidth, int64_t lEnough) {
  sLine = sLine.substr(0, nWidth);
  int64_t lWords = 0;
  for (size_t i = 0; lWords < lEnough; ++lWords) {
    i = sLine.find_first_not_of(' ', i);
    if (i == std::string_view::npos) return lWords;
    i = std::min(sLine.find(' ', i), sLine.size());
  }
  return lWords;
}

}  // namespace

clsRowProfile::Kind clsRowProfile::KindOf(std::string_view sCell, const ProofColumn& column) {
  sCell = TrimBlanks(sCell);
  if (sCell.empty()) return Empty;
  if (column.bNumber && ReadTidyNumber(sCell, column.typing, nullptr)) return Figures;
  if (std::string sPlain; column.typing.type == TidyType::Date) {
    return ReadTidyDate(sCell, column.typing.sDateForm, sPlain) ? Figures : Marks;
  }
  bool bDigits = false;
  bool bLetters = false;
  for (const char c : sCell) {
    bDigits = bDigits || IsAsciiDigit(c);
    bLetters = bLetters || IsAsciiLetter(c) || static_cast<unsigned char>(c) >= 0x80;
    if (bDigits && bLetters) break;
  }
  return bDigits ? (bLetters ? Both : Figures) : bLetters ? Letters : Marks;
}

clsRowProfile::clsRowProfile(std::vector<ProofColumn> columns, std::optional<clsTidyCutter> cutter)
    : columns_(std::move(columns)), cutter_(std::move(cutter)), counts_(columns_.size()) {
  for (const ProofColumn& column : columns_) {
    if (column.nStart > 0) nFront_ = nFront_ == 0 ? column.nStart : std::min(nFront_, column.nStart);
    const bool bOpen = column.nEnd < 1 && (column.nStart > 0 || cutter_);
    nWidth_ = bOpen ? std::numeric_limits<size_t>::max() : std::max(nWidth_, static_cast<size_t>(column.nEnd));
    gapBehind_.push_back(
        column.nEnd > 0 && std::none_of(columns_.begin(), columns_.end(), [&](const ProofColumn& other) {
          return other.nStart > 0 && other.nStart <= column.nEnd + 1 && (other.nEnd == 0 || other.nEnd > column.nEnd);
        }));
  }
}

std::string_view clsRowProfile::FrontOf(std::string_view sLine) const {
  return nFront_ > 1 && !cutter_ ? TrimBlanks(MidChars(sLine, 1, nFront_ - 1)) : std::string_view();
}

/// A word goes on behind the column's end.
bool clsRowProfile::IsCut(std::string_view sLine, size_t nColumn) const {
  const auto nEnd = static_cast<size_t>(columns_[nColumn].nEnd);
  return gapBehind_[nColumn] && nEnd < sLine.size() && sLine[nEnd] != ' ' && sLine[nEnd - 1] != ' ';
}

void clsRowProfile::KindsOf(std::string_view sLine, std::vector<Kind>& kinds) const {
  const bool bAscii = IsAscii(sLine);
  kinds.clear();
  if (cutter_) cutter_->Split(sLine, pieces_);
  for (size_t i = 0; i < columns_.size(); ++i) {
    const ProofColumn& column = columns_[i];
    const bool bHere = cutter_ ? column.nPiece < pieces_.size() : column.nStart > 0;
    Kind kind = !bHere    ? Empty
                : cutter_ ? KindOf(pieces_[column.nPiece], column)
                          : KindOf(Piece(sLine, bAscii, column.nStart, column.nEnd), column);
    if (bHere && !cutter_ && bAscii && IsCut(sLine, i)) kind = kind == Figures ? Figures : Cut;
    kinds.push_back(kind);
  }
}

void clsRowProfile::Row(std::string_view sLine) {
  if (lRows_++ >= kAllOfFirst && lRows_ % kThenEach != 0) return;
  const int64_t lWords = WordsOf(sLine, nWidth_, std::numeric_limits<int64_t>::max());
  lLeastWords_ = lLooked_++ == 0 ? lWords : std::min(lLeastWords_, lWords);
  if (lLooked_ == 1) sFront_ = FrontOf(sLine);
  bSameFront_ = bSameFront_ && FrontOf(sLine) == sFront_;
  KindsOf(sLine, kinds_);
  for (size_t i = 0; i < kinds_.size(); ++i) ++counts_[i][kinds_[i]];
}

clsRowProfile::Kind clsRowProfile::UsualKind(size_t nColumn) const {
  const auto& counts = counts_[nColumn];
  if (lLooked_ == 0 || (lLooked_ - counts[Empty]) * kParts < lLooked_ * kMostParts) return Empty;
  // Texts with digits in them are texts, and so are wide ones.
  const int64_t lTexts = counts[Letters] + counts[Both] + counts[Cut];
  return counts[Figures] > lTexts && counts[Figures] >= counts[Marks] ? Figures
         : lTexts > counts[Marks]                                     ? Letters
                                                                      : Marks;
}

void clsRowProfile::FindUsualKinds() const {
  usual_.clear();
  for (size_t i = 0; i < columns_.size(); ++i) usual_.push_back(UsualKind(i));
  lUsualOf_ = lLooked_;
}

bool clsRowProfile::IsWeak() const {
  if (!cutter_ || !cutter_->IsSplitAtText()) return false;
  constexpr int64_t kFew = 3;
  int64_t lUsual = 0;
  for (size_t i = 0; i < columns_.size(); ++i) lUsual += UsualKind(i) == Empty ? 0 : 1;
  return lUsual < kFew;
}

bool clsRowProfile::Fits(std::string_view sLine, Demand demand) const {
  // One long word that happens to be cut at the columns is no row of many values.
  KindsOf(sLine, kinds_);
  const auto lFilled = static_cast<int64_t>(kinds_.size()) - std::count(kinds_.begin(), kinds_.end(), Empty);
  const int64_t lNeeded = std::min(lFilled, (lLeastWords_ * kMostParts + kParts - 1) / kParts);
  if (WordsOf(sLine, nWidth_, lNeeded) < lNeeded) return false;
  if (demand == Demand::All && bSameFront_ && lLooked_ > 1 && FrontOf(sLine) != sFront_) return false;
  if (lUsualOf_ != lLooked_) FindUsualKinds();
  int64_t lUsual = 0;
  int64_t lFits = 0;
  bool bFigures = false;
  for (size_t i = 0; i < columns_.size(); ++i) {
    const Kind usual = usual_[i];
    if (usual == Empty) continue;
    ++lUsual;
    // Marks such as --- say that nothing is there.
    const bool bNothing = kinds_[i] == Marks && counts_[i][Marks] > 0;
    const bool bText = kinds_[i] == Both || (kinds_[i] == Cut && counts_[i][Cut] > 0);
    if (!bNothing && (bText ? Letters : kinds_[i]) != usual) {
      if (demand == Demand::NothingElse && kinds_[i] != Empty) return false;
      continue;
    }
    ++lFits;
    bFigures = bFigures || kinds_[i] == Figures || kinds_[i] == Both;
  }
  // A table of one column, or of texts alone, looks like any text.
  return lUsual > 1 && bFigures && lFits * kParts >= lUsual * (demand == Demand::All ? kParts : kMostParts);
}

}  // namespace quillon
