#include "clsColumnJoiner.h"

#include <algorithm>

#include "modTokenSplits.h"

namespace quillon {

namespace {

constexpr double kAll = 0.99;

bool StandsOver(const LineMark& mark, const ColumnPart& part) {
  return mark.lStart <= part.lLast && mark.lEnd >= part.lFirst;
}

size_t DigitsFrom(std::u32string_view sText, size_t n) {
  size_t nEnd = n;
  while (nEnd < sText.size() && IsDigitPlace(sText[nEnd])) ++nEnd;
  return nEnd - n;
}

/// "298,56", "041 298,56", "041": groups of three digits, and decimals behind the last one perhaps.
bool AreGroups(std::u32string_view sCell, bool& bDecimals) {
  constexpr size_t kGroup = 3;
  size_t n = 0;
  while (DigitsFrom(sCell, n) == kGroup && n + kGroup < sCell.size() && IsBlankPlace(sCell[n + kGroup]))
    n += kGroup + 1;
  if (DigitsFrom(sCell, n) != kGroup) return false;
  n += kGroup;
  if (n == sCell.size()) return true;
  bDecimals = (sCell[n] == U',' || sCell[n] == U'.') && DigitsFrom(sCell, n + 1) > 0;
  return bDecimals || sCell[n] == U'-';
}

/// "23", "-1 850", "(7": the digits in front of a group.
bool IsFrontOfGroups(std::u32string_view sCell) {
  if (!sCell.empty() && (sCell.front() == U'-' || sCell.front() == U'(' || sCell.front() == U'+')) {
    sCell.remove_prefix(1);
  }
  constexpr size_t kMost = 3;
  const size_t nDigits = DigitsFrom(sCell, 0);
  if (nDigits == 0 || nDigits > kMost || sCell.front() == U'0') return false;
  bool bDecimals = false;
  if (nDigits == sCell.size()) return true;
  return IsBlankPlace(sCell[nDigits]) && AreGroups(sCell.substr(nDigits + 1), bDecimals) && !bDecimals;
}

}  // namespace

void clsColumnJoiner::Join(std::vector<ColumnPart>& parts) const {
  if (!facts_.bByMarks) JoinThousands(parts);
  for (size_t i = 0; i + 1 < parts.size();) {
    if (!AreOne(parts[i], parts[i + 1]) && !IsSignBehind(parts, i + 1)) {
      ++i;
      continue;
    }
    const bool bSign = parts[i].bSigns || parts[i + 1].bSigns;
    JoinAt(parts, i);
    if (bSign && i > 0) --i;
  }
  if (!facts_.bByMarks) JoinNamelessTail(parts);
}

void clsColumnJoiner::JoinAt(std::vector<ColumnPart>& parts, size_t i) const {
  parts[i].lLast = parts[i + 1].lLast;
  const DateParts dates = JoinedDates(parts[i].dates, parts[i + 1].dates);
  parts.erase(parts.begin() + static_cast<ptrdiff_t>(i) + 1);
  MeasurePart(report_, rows_, parts[i]);
  if (dates != DateParts::None) parts[i].dates = dates;
}

bool clsColumnJoiner::AreOne(const ColumnPart& left, const ColumnPart& right) const {
  if (left.lLast + 1 == right.lFirst) return false;  // parted on purpose
  const bool bLabel = right.lLast < facts_.lEquals;
  if (facts_.bByMarks || bLabel) return !IsParted(left, right);
  if (HaveOwnNames(left, right)) return false;
  if (IsPhone(left, right)) return true;
  return AreOneColumn(left, right) || IsTailOf(right, left) || Alternate(left, right) || IsOnePiece(left, right) ||
         HaveOneName(left, right);
}

/// "334,75 €         50": a currency sign nearer to the number in front of it than to what follows.
bool clsColumnJoiner::IsSignBehind(const std::vector<ColumnPart>& parts, size_t i) const {
  if (!parts[i].bSigns || !parts[i - 1].IsNumber() || IsParted(parts[i - 1], parts[i])) return false;
  // A dollar is always printed in front.
  for (const size_t n : rows_) {
    if (CellAt(report_.Lines()[n].sText, parts[i].lFirst, parts[i].lLast) == U"$") return false;
  }
  const int32_t lGap = parts[i].lFirst - parts[i - 1].lLast;
  return lGap <= 2 && (i + 1 == parts.size() || parts[i + 1].lFirst - parts[i].lLast > lGap);
}

/// From the right, since the groups of a number end there: 1 234 567,89.
void clsColumnJoiner::JoinThousands(std::vector<ColumnPart>& parts) const {
  for (size_t i = parts.size(); i > 1; --i) {
    if (AreThousands(parts[i - 2], parts[i - 1])) JoinAt(parts, i - 2);
  }
}

/// Whether the left part is the thousands of the right one. Figures of two columns may look so by chance; that no name
/// stands over the left one alone and a group begins with a zero rules it out.
bool clsColumnJoiner::AreThousands(const ColumnPart& left, const ColumnPart& right) const {
  constexpr size_t kFewest = 3;
  if (right.lFirst - left.lLast != 2 || IsParted(left, right)) return false;
  size_t nBoth = 0;
  bool bSure = !facts_.allNames.empty();
  for (const size_t n : rows_) {
    const std::u32string_view sText = report_.Lines()[n].sText;
    const std::u32string_view sLeft = CellAt(sText, left.lFirst, left.lLast);
    const std::u32string_view sRight = CellAt(sText, right.lFirst, right.lLast);
    if (sLeft.empty()) continue;
    bool bDecimals = false;
    if (!IsFrontOfGroups(sLeft) || !AreGroups(sRight, bDecimals) ||
        IsBlankPlace(sText[static_cast<size_t>(left.lLast)]))
      return false;
    bSure = bSure || (sRight.front() == U'0' && bDecimals);
    ++nBoth;
  }
  return nBoth >= kFewest && bSure && !IsNamedBesides(left, right);
}

/// Behind the last name, one blank between each: the rest of a text that begins under the name.
void clsColumnJoiner::JoinNamelessTail(std::vector<ColumnPart>& parts) const {
  if (facts_.names.empty()) return;
  size_t nNamed = parts.size();
  while (nNamed > 0 && !IsNamed(parts[nNamed - 1])) --nNamed;
  if (nNamed == 0 || nNamed == parts.size()) return;
  const ColumnPart& named = parts[nNamed - 1];
  const LineMark& last = facts_.names.back();
  if (last.lStart != named.lFirst || last.lEnd >= named.lLast) return;
  for (size_t i = nNamed; i < parts.size(); ++i) {
    if (parts[i].lFirst - parts[i - 1].lLast != 2) return;
  }
  while (parts.size() > nNamed) JoinAt(parts, nNamed - 1);
}

bool clsColumnJoiner::IsNamed(const ColumnPart& part) const {
  return std::any_of(facts_.allNames.begin(), facts_.allNames.end(),
                     [&](const LineMark& mark) { return StandsOver(mark, part); });
}

bool clsColumnJoiner::IsNamedBesides(const ColumnPart& part, const ColumnPart& other) const {
  return std::any_of(facts_.allNames.begin(), facts_.allNames.end(),
                     [&](const LineMark& mark) { return StandsOver(mark, part) && !StandsOver(mark, other); });
}

/// In one or two rows a blank between words, or a word and a number, parts nothing.
bool clsColumnJoiner::IsOnePiece(const ColumnPart& left, const ColumnPart& right) const {
  constexpr size_t kFew = 3;
  return rows_.size() < kFew && right.lFirst - left.lLast <= 2 && !(left.IsNumber() && right.IsNumber());
}

/// Values that all rows have, at one edge each, a name at each of the edges.
bool clsColumnJoiner::HaveOwnNames(const ColumnPart& left, const ColumnPart& right) const {
  if (left.dStart < kAll || right.dStart < kAll || right.dFilled < kAll || left.dFilled < kAll) return false;
  const auto beginsAt = [&](const ColumnPart& part) {
    return std::any_of(facts_.names.begin(), facts_.names.end(),
                       [&](const LineMark& mark) { return mark.lStart == part.lFirst && !mark.bGoesOn; });
  };
  const auto isOwn = [&](const LineMark& mark) { return mark.lStart == right.lFirst && StandsOver(mark, right); };
  return left.dFigures >= kAll && right.dFigures < left.dFigures && left.dates == DateParts::None && beginsAt(left) &&
         std::any_of(facts_.names.begin(), facts_.names.end(), isOwn) && IsNamedBesides(left, right);
}

/// A blank between a number and a text, or between texts, parts nothing where one word of the names stands over both.
bool clsColumnJoiner::HaveOneName(const ColumnPart& left, const ColumnPart& right) const {
  if (right.lFirst - left.lLast > 2) return false;
  if (right.IsNumber()) {
    // Two groups of digits of one width under one name: a phone number.
    const bool bFixed = left.IsNumber() && left.dStart >= kAll && left.dEnd >= kAll && right.dStart >= kAll &&
                        right.dEnd >= kAll && right.dFilled >= kAll;
    return (bFixed && IsNamed(left) && !IsNamed(right)) || IsNumberOfText(left, right);
  }
  bool bOver = false;
  for (const LineMark& mark : facts_.names) {
    const bool bRight = StandsOver(mark, right);
    const bool bLeft = StandsOver(mark, left);
    if (bRight && !bLeft) return false;
    bOver = bOver || (bRight && bLeft);
  }
  // EB-Wert S/H over 45.293,31 H: a word for each.
  return bOver && !(left.IsNumber() && IsNamedBesides(left, right));
}

/// "(607) 555-6291": three digits in parentheses and seven with a dash.
bool clsColumnJoiner::IsPhone(const ColumnPart& left, const ColumnPart& right) const {
  if (right.lFirst - left.lLast != 2 || left.dFilled < kAll || right.dFilled < kAll) return false;
  return std::all_of(rows_.begin(), rows_.end(), [&](size_t n) {
    const std::u32string_view sArea = CellAt(report_.Lines()[n].sText, left.lFirst, left.lLast);
    const std::u32string_view sRest = CellAt(report_.Lines()[n].sText, right.lFirst, right.lLast);
    return sArea.size() == 5 && sArea.front() == U'(' && sArea.back() == U')' && DigitsFrom(sArea, 1) == 3 &&
           DigitsFrom(sRest, 0) == 3 && sRest.size() >= 8 && sRest[3] == U'-' && DigitsFrom(sRest, 4) == 4;
  });
}

/// "NET 30" under TERMS: whole numbers at one edge behind texts, with no name of their own.
bool clsColumnJoiner::IsNumberOfText(const ColumnPart& left, const ColumnPart& right) const {
  if (left.IsNumber() || left.dFilled < kAll || left.dEnd < kAll || right.dStart < kAll ||
      left.dates != DateParts::None)
    return false;
  if (!IsNamed(left) || IsNamedBesides(right, left)) return false;
  return std::all_of(rows_.begin(), rows_.end(), [&](size_t n) {
    const std::u32string_view sCell = CellAt(report_.Lines()[n].sText, right.lFirst, right.lLast);
    return DigitsFrom(sCell, 0) == sCell.size();
  });
}

bool clsColumnJoiner::IsParted(const ColumnPart& left, const ColumnPart& right) const {
  for (int32_t l = left.lLast + 1; l < right.lFirst; ++l) {
    if (facts_.parting[static_cast<size_t>(l)]) return true;
  }
  return false;
}

bool clsColumnJoiner::IsTailOf(const ColumnPart& right, const ColumnPart& left) const {
  return !left.IsNumber() && !right.IsNumber() && right.dFigures < left.dFigures + 0.5 &&
         IsTail(report_, rows_, left.lFirst, left.lLast, right.lFirst, right.lLast);
}

/// A word in rows that have no number, such as <DIR> in place of a size, is a value of the number's column; and so is
/// one that stands elsewhere from some page on.
bool clsColumnJoiner::Alternate(const ColumnPart& left, const ColumnPart& right) const {
  constexpr int32_t kNear = 5;
  constexpr double kMost = 0.85;
  if (right.lFirst - left.lLast > kNear) return false;
  if (left.dFilled + right.dFilled < kMost || left.dFilled + right.dFilled > 1) return false;
  if (IsNamedBesides(left, right) && IsNamedBesides(right, left)) return false;
  size_t nTurns = 0;
  bool bLeft = false;
  for (const size_t n : rows_) {
    const std::u32string_view sText = report_.Lines()[n].sText;
    const bool bInLeft = !CellAt(sText, left.lFirst, left.lLast).empty();
    const bool bInRight = !CellAt(sText, right.lFirst, right.lLast).empty();
    if (bInLeft && bInRight) return false;
    if (bInLeft || bInRight) nTurns += bInLeft == bLeft ? 0U : 1U;
    if (bInLeft || bInRight) bLeft = bInLeft;
  }
  return left.IsNumber() != right.IsNumber() || nTurns * 20 < rows_.size();
}

}  // namespace quillon
