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
  if (!groups_.empty()) {
    for (const Place& place : groups_.front()) order_.push_back(place.column);
  } else {
    for (TidyColumn column = 0; column < nColumns_; ++column) order_.push_back(column);
  }
  for (size_t i = 1; i < order_.size(); ++i) bMovesCurrency_ = bMovesCurrency_ || numbers_[order_[i]];
}

void clsTidyCutter::AddGroup(const std::vector<TidyPlace>& places) {
  Group& group = groups_.emplace_back();
  for (TidyColumn column = 0; column < places.size(); ++column) {
    const auto nFrom = static_cast<size_t>(places[column].nStart) - 1;
    const size_t nEnd = places[column].nEnd == 0 ? kOpen : static_cast<size_t>(places[column].nEnd);
    group.push_back({column, nFrom, nEnd, kOpen, 0, false, false});
  }
  std::stable_sort(group.begin(), group.end(), [](const Place& a, const Place& b) { return a.nFrom < b.nFrom; });
  SetGaps(group);
}

/// Columns may overlap, so what stands behind one is the first that begins behind its end.
void clsTidyCutter::SetGaps(Group& group) const {
  std::vector<size_t> ends;
  std::vector<size_t> furthest;  // end of all places up to one
  for (const Place& place : group) {
    ends.push_back(place.nEnd);
    furthest.push_back(std::max(place.nEnd, furthest.empty() ? 0 : furthest.back()));
  }
  std::sort(ends.begin(), ends.end());
  size_t nNext = 0;
  for (Place& place : group) {
    if (place.nEnd != kOpen) {
      const auto behind = std::lower_bound(group.begin(), group.end(), place.nEnd,
                                           [](const Place& other, size_t nEnd) { return other.nFrom < nEnd; });
      place.nGapEnd = behind == group.end() ? kOpen : behind->nFrom;
      // A column that covers the place behind leaves no gap there.
      const bool bCovered = furthest[static_cast<size_t>(behind - group.begin()) - 1] > place.nEnd;
      place.bGap = place.nGapEnd > place.nEnd && !bCovered;
    }
    while (nNext < ends.size() && ends[nNext] <= place.nFrom) ++nNext;
    place.nGapStart = nNext > 0 ? ends[nNext - 1] : 0;
    place.bGapBefore = nNext > 0 && place.nGapStart < place.nFrom;
  }
}

bool clsTidyCutter::IsWide(const clsTidyLine& line, const Place& place) const {
  if (!place.bGap || line.IsBlankAt(place.nEnd)) return false;
  if (line.IsLetterOrDigitAt(place.nEnd)) return true;
  // A sign behind a number is part of it.
  const char ch = line.Text()[line.Offset(place.nEnd)];
  return numbers_[place.column] && (ch == '-' || ch == ')' || ch == '%') && place.nEnd > 0 &&
         !line.IsBlankAt(place.nEnd - 1);
}

/// A number that is wider than its column has grown into the gap in front.
bool clsTidyCutter::BeginsEarlier(const clsTidyLine& line, const Place& place) const {
  if (!place.bGapBefore || line.IsBlankAt(place.nFrom) || line.IsBlankAt(place.nFrom - 1)) return false;
  if (line.IsDigitAt(place.nFrom - 1)) return true;
  const char ch = line.Text()[line.Offset(place.nFrom - 1)];
  return numbers_[place.column] && std::string_view("-+($.,").find(ch) != std::string_view::npos;
}

/// Where the cells of a group stand, by position.
void clsTidyCutter::Spans(const clsTidyLine& line, const Group& group, std::vector<Span>& spans) const {
  spans.clear();
  size_t nTaken = 0;  // by a wide cell before
  for (const Place& place : group) {
    Span span{std::max(place.nFrom, place.nFrom < nTaken ? nTaken : 0), place.nEnd};
    if (BeginsEarlier(line, place)) {
      size_t nFrom = place.nFrom;
      while (nFrom > place.nGapStart && nFrom > nTaken && !line.IsBlankAt(nFrom - 1)) --nFrom;
      // What hangs on to the column before is that one's.
      const bool bOthers = nFrom == place.nGapStart && nFrom > 0 && !line.IsBlankAt(nFrom - 1);
      if (!bOthers && nFrom >= nTaken) span.nFrom = nFrom;
    }
    if (IsWide(line, place)) {
      size_t nEnd = place.nEnd;
      while (!line.IsBlankAt(nEnd)) ++nEnd;
      const bool bOwn = place.nEnd > 0 && !line.IsBlankAt(place.nEnd - 1);
      const bool bNext = nEnd > place.nGapEnd && place.nGapEnd != kOpen;
      if (bOwn || !bNext) {
        span.nEnd = nEnd;
        nTaken = std::max(nTaken, nEnd);
      }
    }
    span.nEnd = std::max(span.nEnd, span.nFrom);
    spans.push_back(span);
  }
}

void clsTidyCutter::Cut(const clsTidyLine& line, size_t nGroup, std::vector<std::string_view>& cells) const {
  if (IsSplit()) return Split(line.Text(), cells);
  cells.assign(nColumns_, {});
  const Group& group = groups_[nGroup];
  Spans(line, group, spans_);
  for (size_t i = 0; i < group.size(); ++i) {
    cells[group[i].column] = line.Trimmed(spans_[i].nFrom, spans_[i].nEnd);
  }
  if (bMovesCurrency_) MoveCurrency(cells);
}

void clsTidyCutter::Split(std::string_view sText, std::vector<std::string_view>& cells) const {
  cells.assign(nColumns_, {});
  std::string_view s = TrimBlanks(sText);
  const std::string_view sAt = split_ == TidySplit::AtGaps     ? std::string_view("  ")
                               : split_ == TidySplit::AtBlanks ? std::string_view(" ")
                                                               : std::string_view(sSplit_);
  for (TidyColumn column = 0; column < nColumns_; ++column) {
    const size_t nEnd = column + 1 == nColumns_ ? std::string_view::npos : s.find(sAt);
    cells[column] = TrimBlanks(s.substr(0, nEnd));
    if (nEnd == std::string_view::npos) break;
    s = TrimLeftBlanks(s.substr(nEnd + sAt.size()));
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
  if (groups_.size() != 1) return false;
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

void clsTidyCutter::AddLeft(const clsTidyLine& line, int64_t lLine, TidyLeft& left) const {
  if (groups_.size() != 1) return;
  const int64_t lBefore = left.lInFront + left.lBetween + left.lBehind;
  size_t nDone = 0;
  for (const Span& span : spans_) {
    int64_t& lCount = nDone == 0 ? left.lInFront : left.lBetween;
    for (size_t n = nDone; n < span.nFrom && n < line.Size(); ++n) lCount += line.IsBlankAt(n) ? 0 : 1;
    const bool bTouches = nDone > 0 && nDone == span.nFrom && span.nFrom < line.Size();
    if (bTouches && !line.IsBlankAt(nDone - 1) && !line.IsBlankAt(nDone) && left.lDivided++ == 0)
      left.lDividedLine = lLine;
    nDone = std::max(nDone, span.nEnd);
  }
  for (size_t n = nDone; n < line.Size(); ++n) left.lBehind += line.IsBlankAt(n) ? 0 : 1;
  if (left.lFirstLine == 0 && left.lInFront + left.lBetween + left.lBehind > lBefore) left.lFirstLine = lLine;
}

std::pair<size_t, size_t> clsTidyCutter::Range(TidyColumn column) const {
  for (const Group& group : groups_) {
    for (const Place& place : group) {
      if (place.column == column) return {place.nFrom, place.nEnd};
    }
    break;
  }
  return {0, 0};
}

}  // namespace quillon
