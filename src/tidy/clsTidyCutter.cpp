#include "clsTidyCutter.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

constexpr std::array<std::string_view, 4> kCurrencies{"$", "\u00A3", "\u20AC", "\u00A5"};

}  // namespace

clsTidyCutter::clsTidyCutter(const TidyPart& part)
    : nColumns_(part.ColumnCount()), split_(part.cut.split), sSplit_(part.cut.sSplit) {
  numbers_.resize(nColumns_);
  texts_.resize(nColumns_, true);
  for (TidyColumn column = 0; column < nColumns_; ++column) {
    const TidyType type = part.TypeOf(column).type;
    numbers_[column] = type == TidyType::Number;
    texts_[column] = type == TidyType::Text || type == TidyType::Auto;
  }
  for (const TidyNeed& need : part.needs) {
    if (need.column >= nColumns_ || part.TypeOf(need.column).type != TidyType::Auto) continue;
    for (const TidyKindOrText& kind : need.alternatives) {
      if (kind.kind == TidyKind::Number) numbers_[need.column] = true;
      if (kind.kind == TidyKind::Number || kind.kind == TidyKind::Digits || kind.kind == TidyKind::Date) {
        texts_[need.column] = false;
      }
    }
  }
  if (split_ == TidySplit::None && part.cut.places.empty()) {
    AddGroup({TidyPlace{1, 0}});
  }
  for (const auto& places : part.cut.places) AddGroup(places);
  SetGaps();
  ranges_.resize(nColumns_);
  if (!groups_.empty()) {
    for (const Place& place : groups_.front()) ranges_[place.column] = {place.nFrom, place.nEnd};
    for (const Place& place : groups_.front()) order_.push_back(place.column);
  } else {
    for (TidyColumn column = 0; column < nColumns_; ++column) order_.push_back(column);
  }
  FindClear();
  for (size_t i = 1; i < order_.size(); ++i) bMovesCurrency_ = bMovesCurrency_ || numbers_[order_[i]];
}

void clsTidyCutter::AddGroup(const std::vector<TidyPlace>& places) {
  Group& group = groups_.emplace_back();
  for (TidyColumn column = 0; column < places.size(); ++column) {
    const auto nFrom = static_cast<size_t>(places[column].nStart) - 1;
    const size_t nEnd = places[column].nEnd == 0 ? kOpen : static_cast<size_t>(places[column].nEnd);
    group.push_back({column, nFrom, nEnd, kOpen, 0, false, false, false, numbers_[column]});
  }
  std::stable_sort(group.begin(), group.end(), [](const Place& a, const Place& b) { return a.nFrom < b.nFrom; });
}

/// Columns may overlap, so what stands behind one is the first that begins behind its end, of any record of the line.
void clsTidyCutter::SetGaps() {
  std::vector<Place*> all;
  for (Group& group : groups_) {
    for (Place& place : group) all.push_back(&place);
  }
  std::stable_sort(all.begin(), all.end(), [](const Place* a, const Place* b) { return a->nFrom < b->nFrom; });
  std::vector<size_t> ends;
  std::vector<size_t> furthest;  // end of all places up to one
  for (const Place* const place : all) {
    ends.push_back(place->nEnd);
    furthest.push_back(std::max(place->nEnd, furthest.empty() ? 0 : furthest.back()));
  }
  std::sort(ends.begin(), ends.end());
  size_t nNext = 0;
  for (Place* const place : all) {
    if (place->nEnd != kOpen) {
      const auto behind = std::lower_bound(all.begin(), all.end(), place->nEnd,
                                           [](const Place* other, size_t nEnd) { return other->nFrom < nEnd; });
      place->nGapEnd = behind == all.end() ? kOpen : (*behind)->nFrom;
      place->bNumberBehind = behind != all.end() && (*behind)->bNumber;
      // A column that covers the place behind leaves no gap there.
      const bool bCovered = furthest[static_cast<size_t>(behind - all.begin()) - 1] > place->nEnd;
      place->bGap = place->nGapEnd > place->nEnd && !bCovered;
    }
    while (nNext < ends.size() && ends[nNext] <= place->nFrom) ++nNext;
    place->nGapStart = nNext > 0 ? ends[nNext - 1] : 0;
    place->bGapBefore = nNext > 0 && place->nGapStart < place->nFrom;
  }
}

/// Maps the gaps. A line that has nothing there is cut at its places and leaves nothing.
void clsTidyCutter::FindClear() {
  constexpr size_t kWord = 64;
  if (groups_.size() != 1 || groups_.front().empty() || IsSplit()) return;
  const Group& group = groups_.front();
  const bool bOpen = group.back().nEnd == kOpen;
  size_t nDone = 0;
  gapMap_.assign((bOpen ? group.back().nFrom : group.back().nEnd) / kWord + 1, ~uint64_t{0});
  nGapBehind_ = bOpen ? 0 : ~uint64_t{0};
  for (const Place& place : group) {
    if (place.nFrom < nDone) return;
    if (nDone > 0 && place.nFrom == nDone) touches_.push_back(nDone);
    nDone = place.nEnd;
    for (size_t n = place.nFrom; n < std::min(nDone, gapMap_.size() * kWord); ++n)
      gapMap_[n / kWord] &= ~(uint64_t{1} << (n % kWord));
  }
  bOrderly_ = true;
}

bool clsTidyCutter::IsClear(const clsTidyLine& line) const {
  if (!bOrderly_ || !line.IsAscii()) return false;
  const size_t nWords = line.InkWords();
  uint64_t nInGaps = 0;
  for (size_t i = 0; i < std::min(nWords, gapMap_.size()); ++i) nInGaps |= line.Ink()[i] & gapMap_[i];
  for (size_t i = gapMap_.size(); i < nWords && nGapBehind_ != 0; ++i) nInGaps |= line.Ink()[i];
  return nInGaps == 0;
}

/// Where a cell ends behind whose column something stands in a gap.
size_t clsTidyCutter::WideEnd(const clsTidyLine& line, const Place& place) const {
  const bool bOwn = place.nEnd > 0 && !line.IsBlankAt(place.nEnd - 1);
  if (!line.IsLetterOrDigitAt(place.nEnd)) {
    // A sign behind a number is part of it.
    const char ch = line.Text()[line.Offset(place.nEnd)];
    if (!bOwn || !place.bNumber || (ch != '-' && ch != ')' && ch != '%')) return place.nEnd;
  }
  size_t nEnd = place.nEnd;
  while (!line.IsBlankAt(nEnd)) ++nEnd;
  if (bOwn || !place.bNumberBehind || nEnd <= place.nGapEnd) return nEnd;
  // What reaches the column of numbers behind, and is one, is a number that has grown into the gap.
  const std::string_view sPiece = line.Piece(place.nEnd, nEnd);
  return sPiece.find_first_not_of("0123456789.,-%)") == std::string_view::npos ? place.nEnd : nEnd;
}

/// A number that is wider than its column has grown into the gap in front.
size_t clsTidyCutter::EarlyStart(const clsTidyLine& line, const Place& place, size_t nTaken) const {
  if (line.IsBlankAt(place.nFrom)) return place.nFrom;
  const char ch = line.Text()[line.Offset(place.nFrom - 1)];
  if (!IsAsciiDigit(ch) && std::string_view("-+($.,").find(ch) == std::string_view::npos) return place.nFrom;
  size_t nFrom = place.nFrom;
  while (nFrom > place.nGapStart && nFrom > nTaken && !line.IsBlankAt(nFrom - 1)) --nFrom;
  // What hangs on to the column before is that one's.
  const bool bOthers = nFrom == place.nGapStart && nFrom > 0 && !line.IsBlankAt(nFrom - 1);
  return bOthers || nFrom < nTaken ? place.nFrom : nFrom;
}

/// Where the cells of a group stand, by position. nTaken: by wide cells of the record before; gives the same for the
/// next one.
size_t clsTidyCutter::Spans(const clsTidyLine& line, const Group& group, size_t nTaken,
                            std::vector<Span>& spans) const {
  spans.clear();
  for (const Place& place : group) {
    Span span{std::max(place.nFrom, nTaken), place.nEnd};
    if (place.bGapBefore && place.bNumber && !line.IsBlankAt(place.nFrom - 1) && nTaken <= place.nFrom)
      span.nFrom = EarlyStart(line, place, nTaken);
    if (place.bGap && !line.IsBlankAt(place.nEnd)) span.nEnd = WideEnd(line, place);
    if (span.nEnd != place.nEnd) nTaken = std::max(nTaken, span.nEnd);
    span.nEnd = std::max(span.nEnd, span.nFrom);
    spans.push_back(span);
  }
  return nTaken;
}

void clsTidyCutter::Cut(const clsTidyLine& line, size_t nGroup, std::vector<std::string_view>& cells) const {
  if (IsSplit()) return Split(line.Text(), cells);
  const Group& group = groups_[nGroup];
  if (cells.size() != nColumns_ || group.size() != nColumns_) cells.assign(nColumns_, {});
  bLastClear_ = IsClear(line);
  if (bLastClear_) {
    for (const Place& place : group) cells[place.column] = line.Trimmed(place.nFrom, place.nEnd);
    if (bMovesCurrency_ && line.MayHaveCurrency()) MoveCurrency(cells);
    return;
  }
  const size_t nTaken = nGroup == 0 ? 0 : Spans(line, groups_[nGroup - 1], 0, spans_);
  Spans(line, group, nTaken, spans_);
  for (size_t i = 0; i < group.size(); ++i) {
    cells[group[i].column] = line.Trimmed(spans_[i].nFrom, spans_[i].nEnd);
  }
  if (bMovesCurrency_ && line.MayHaveCurrency()) MoveCurrency(cells);
}

void clsTidyCutter::Split(std::string_view sText, std::vector<std::string_view>& cells) const {
  cells.assign(nColumns_, {});
  // A text parts wherever it stands, also when blanks are part of it; blanks alone are one gap however many they are.
  const bool bAtText = split_ == TidySplit::AtText;
  std::string_view s = bAtText ? sText : TrimBlanks(sText);
  const std::string_view sAt = bAtText                       ? std::string_view(sSplit_)
                               : split_ == TidySplit::AtGaps ? std::string_view("  ")
                                                             : std::string_view(" ");
  for (TidyColumn column = 0; column < nColumns_; ++column) {
    const size_t nEnd = column + 1 == nColumns_ ? std::string_view::npos : s.find(sAt);
    cells[column] = TrimBlanks(s.substr(0, nEnd));
    if (nEnd == std::string_view::npos) break;
    s = s.substr(nEnd + sAt.size());
    if (!bAtText) s = TrimLeftBlanks(s);
  }
  if (bMovesCurrency_) MoveCurrency(cells);
}

/// A sign of currency alone at the end of a text is that of the number behind.
void clsTidyCutter::MoveCurrency(std::vector<std::string_view>& cells) const {
  for (size_t i = 1; i < order_.size(); ++i) {
    if (!numbers_[order_[i]]) continue;
    std::string_view& sCell = cells[order_[i - 1]];
    if (sCell.empty() || (sCell.back() != '$' && static_cast<unsigned char>(sCell.back()) < 0x80)) continue;
    for (const std::string_view sSign : kCurrencies) {
      if (!sCell.ends_with(sSign)) continue;
      const std::string_view sRest = sCell.substr(0, sCell.size() - sSign.size());
      if (sRest.empty() || sRest.back() == ' ') sCell = TrimRightBlanks(sRest);
    }
  }
}

bool clsTidyCutter::LastCutLeavesText(const clsTidyLine& line) const {
  if (groups_.size() != 1 || bLastClear_) return false;
  size_t nDone = kOpen;
  for (const Span& span : spans_) {
    for (size_t n = nDone; n < span.nFrom && n < line.Size(); ++n) {
      if (line.IsLetterOrDigitAt(n)) return true;
    }
    nDone = nDone == kOpen ? span.nEnd : std::max(nDone, span.nEnd);
  }
  for (size_t n = nDone; n < line.Size(); ++n) {
    if (line.IsLetterOrDigitAt(n)) return true;
  }
  return false;
}

/// What stands between two columns, or in front of the first or behind the last.
bool clsTidyCutter::TakeGap(const clsTidyLine& line, int64_t lLine, size_t nGap, GapSide side, Span gap,
                            clsGapTexts& gaps) {
  gap.nEnd = std::min(gap.nEnd, line.Size());
  while (gap.nFrom < gap.nEnd && line.IsBlankAt(gap.nFrom)) ++gap.nFrom;
  if (gap.nFrom >= gap.nEnd) return false;
  while (line.IsBlankAt(gap.nEnd - 1)) --gap.nEnd;
  const auto at = [&](size_t n) { return n < line.Size() ? line.Text()[line.Offset(n)] : ' '; };
  gaps.Take(nGap, side, line.Piece(gap.nFrom, gap.nEnd), line.InkOf(gap.nFrom, gap.nEnd),
            gap.nFrom > 0 ? at(gap.nFrom - 1) : ' ', at(gap.nEnd), lLine);
  return true;
}

/// The cells of all records of a line from left to right.
const std::vector<clsTidyCutter::Span>& clsTidyCutter::SpansOf(const clsTidyLine& line,
                                                               const std::vector<size_t>& records) const {
  if (groups_.size() == 1) return spans_;
  left_.clear();
  for (const size_t nGroup : records) {
    const size_t nTaken = nGroup == 0 ? 0 : Spans(line, groups_[nGroup - 1], 0, spans_);
    Spans(line, groups_[nGroup], nTaken, spans_);
    left_.insert(left_.end(), spans_.begin(), spans_.end());
  }
  std::sort(left_.begin(), left_.end(), [](const Span& a, const Span& b) { return a.nFrom < b.nFrom; });
  return left_;
}

/// Of a line that leaves nothing.
void clsTidyCutter::AddDivided(const clsTidyLine& line, int64_t lLine, TidyLeft& left) const {
  for (const size_t nAt : touches_) {
    if (!line.IsBlankAt(nAt - 1) && !line.IsBlankAt(nAt) && left.lDivided++ == 0) left.lDividedLine = lLine;
  }
}

bool clsTidyCutter::AddLeft(const clsTidyLine& line, int64_t lLine, const std::vector<size_t>& records,
                            clsGapTexts& gaps, TidyLeft& left) const {
  if (IsSplit()) return false;
  if (bLastClear_) {
    AddDivided(line, lLine, left);
    gaps.RowEnds();
    return false;
  }
  bool bLeft = false;
  const std::vector<Span>& spans = SpansOf(line, records);
  size_t nDone = 0;
  for (size_t i = 0; i < spans.size(); ++i) {
    const Span& span = spans[i];
    if (nDone < span.nFrom) {
      const GapSide side = i == 0 ? GapSide::InFront : GapSide::Between;
      bLeft = TakeGap(line, lLine, i, side, {nDone, span.nFrom}, gaps) || bLeft;
    }
    const bool bTouches = nDone > 0 && nDone == span.nFrom && span.nFrom < line.Size();
    if (bTouches && !line.IsBlankAt(nDone - 1) && !line.IsBlankAt(nDone) && left.lDivided++ == 0)
      left.lDividedLine = lLine;
    nDone = std::max(nDone, span.nEnd);
  }
  if (nDone < line.Size()) {
    bLeft = TakeGap(line, lLine, spans.size(), GapSide::Behind, {nDone, line.Size()}, gaps) || bLeft;
  }
  gaps.RowEnds();
  return bLeft;
}

}  // namespace quillon
