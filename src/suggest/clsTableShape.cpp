#include "clsTableShape.h"

#include <algorithm>
#include <array>
#include <map>

#include "modColumnParts.h"
#include "modDigitSplits.h"
#include "modTokenSplits.h"

namespace quillon {

namespace {

constexpr size_t kMostRows = 3000;

/// Rows spread over all of them.
std::vector<size_t> Spread(std::span<const size_t> rows) {
  std::vector<size_t> some;
  const size_t nStep = rows.size() / kMostRows + 1;
  for (size_t i = 0; i < rows.size(); i += nStep) some.push_back(rows[i]);
  return some;
}

/// True for a mark inside of a value: the colon of a time, a slash between words.
bool StandsInside(std::u32string_view sText, size_t n) {
  if (n + 1 >= sText.size()) return false;
  // A path begins with a slash.
  if (sText[n] == U'/' && (n == 0 || IsBlankPlace(sText[n - 1]))) return !IsBlankPlace(sText[n + 1]);
  if (n == 0) return false;
  const char32_t chBefore = sText[n - 1];
  const char32_t chAfter = sText[n + 1];
  constexpr std::u32string_view kParting = U"|:;/,";
  const auto parts = [&](char32_t ch) { return IsBlankPlace(ch) || kParting.find(ch) != std::u32string_view::npos; };
  if (parts(chBefore) || parts(chAfter)) return false;
  const bool bAlike =
      (IsDigitPlace(chBefore) && IsDigitPlace(chAfter)) || (IsLetterPlace(chBefore) && IsLetterPlace(chAfter));
  return bAlike || (sText[n] != U':' && sText[n] != U'|');
}

}  // namespace

struct clsTableShape::Part : ColumnPart {};

clsTableShape::clsTableShape(const clsReportSample& report, std::span<const size_t> rows,
                             std::span<const size_t> headingLines)
    : report_(report), rows_(Spread(rows)) {
  for (const size_t n : headingLines) {
    for (const LineMark& mark : report_.Lines()[n].marks) nameEnds_.insert(mark.lEnd);
  }
  if (!headingLines.empty()) names_ = report_.Lines()[headingLines.back()].marks;
  CountPlaces();
  FindPartingPlaces();
  Parts parts = PartsOfPlaces();
  for (Part& part : parts) Measure(part);
  SplitParts(parts);
  JoinParts(parts);
  for (const Part& part : parts)
    columns_.push_back({part.lFirst, part.lLast, 0, 0, part.IsNumber(), part.dFigures >= 0.6});
  SetPlaces();
}

void clsTableShape::CountPlaces() {
  for (const size_t n : rows_) {
    const std::u32string_view sText = report_.Lines()[n].sText;
    if (filled_.size() < sText.size()) filled_.resize(sText.size());
    for (size_t i = 0; i < sText.size(); ++i) filled_[i] += IsBlankPlace(sText[i]) ? 0U : 1U;
  }
}

/// Bars, colons and the like that stand at one place in nearly all rows are printed to part columns, unless they stand
/// between two digits or two letters, as in times.
void clsTableShape::FindPartingPlaces() {
  constexpr std::u32string_view kParting = U"|:;/,=\u2502\u2503";
  constexpr size_t kFewest = 3;
  parting_.assign(filled_.size(), false);
  size_t nBySign = 0;
  if (rows_.size() < kFewest) return;
  for (size_t p = 0; p < filled_.size(); ++p) {
    if (filled_[p] * 20 < rows_.size() * 17) continue;
    std::array<size_t, kParting.size()> counts{};
    size_t nInside = 0;
    for (const size_t n : rows_) {
      const std::u32string_view sText = report_.Lines()[n].sText;
      const size_t nMark = p < sText.size() ? kParting.find(sText[p]) : std::u32string_view::npos;
      if (nMark == std::u32string_view::npos) continue;
      ++counts[nMark];
      nInside += StandsInside(sText, p) ? 1U : 0U;
    }
    const size_t nMost = *std::max_element(counts.begin(), counts.end());
    const auto nMark = static_cast<size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin());
    constexpr std::u32string_view kBars = U"|\u2502\u2503";
    const bool bBar = kBars.find(kParting[nMark]) != std::u32string_view::npos;
    if (nMost * 20 < rows_.size() * (bBar ? 17U : 19U) || nInside * 5 >= rows_.size()) continue;
    filled_[p] = 0;
    parting_[p] = true;
    nBySign += kParting[nMark] == U',' || kParting[nMark] == U';' || kParting[nMark] == U'|' ? 1U : 0U;
    if (kParting[nMark] == U'=' && lEquals_ < 0) lEquals_ = static_cast<int32_t>(p);
  }
  constexpr size_t kEnough = 3;
  bByMarks_ = nBySign >= kEnough;
}

clsTableShape::Parts clsTableShape::PartsOfPlaces() const {
  constexpr size_t kOneInSoMany = 250;
  const auto lFew = static_cast<uint32_t>(rows_.size() / kOneInSoMany);
  Parts parts;
  bool bIn = false;
  for (size_t p = 0; p < filled_.size(); ++p) {
    const bool bFilled = filled_[p] > lFew;
    if (bFilled && !bIn) parts.emplace_back().lFirst = static_cast<int32_t>(p);
    if (bFilled) parts.back().lLast = static_cast<int32_t>(p);
    bIn = bFilled;
  }
  return parts;
}

std::u32string_view clsTableShape::CellAt(std::u32string_view sLine, int32_t lFirst, int32_t lLast) const {
  const auto nFirst = static_cast<size_t>(lFirst);
  if (nFirst >= sLine.size() || lLast < lFirst) return {};
  return TrimPlaces(sLine.substr(nFirst, static_cast<size_t>(lLast - lFirst) + 1));
}

void clsTableShape::Measure(Part& part) const {
  clsPartMeasure measure(rows_.size());
  for (const size_t n : rows_) {
    const std::u32string_view sText = report_.Lines()[n].sText;
    const std::u32string_view sCell = CellAt(sText, part.lFirst, part.lLast);
    if (!sCell.empty()) measure.Add(sCell, static_cast<int32_t>(sCell.data() - sText.data()));
  }
  measure.Finish(part);
}

/// In one or two rows a blank between words, or a word and a number, parts nothing.
bool clsTableShape::IsOnePiece(const Part& left, const Part& right) const {
  constexpr size_t kFew = 3;
  return rows_.size() < kFew && right.lFirst - left.lLast <= 2 && !(left.IsNumber() && right.IsNumber());
}

/// A blank between a number and a text, or between texts, parts nothing where one word of the names stands over both.
bool clsTableShape::HaveOneName(const Part& left, const Part& right) const {
  if (right.lFirst - left.lLast > 2) return false;
  constexpr double kAll = 0.99;
  if (right.IsNumber()) {
    // Two groups of digits of one width under one name: a phone number.
    const bool bFixed = left.IsNumber() && left.dStart >= kAll && left.dEnd >= kAll && right.dStart >= kAll &&
                        right.dEnd >= kAll && right.dFilled >= kAll;
    const auto over = [&](const Part& part) {
      return std::any_of(names_.begin(), names_.end(),
                         [&](const LineMark& mark) { return mark.lStart <= part.lLast && mark.lEnd >= part.lFirst; });
    };
    return bFixed && over(left) && !over(right);
  }
  bool bOver = false;
  for (const LineMark& mark : names_) {
    const bool bRight = mark.lStart <= right.lLast && mark.lEnd >= right.lFirst;
    const bool bLeft = mark.lStart <= left.lLast && mark.lEnd >= left.lFirst;
    if (bRight && !bLeft) return false;
    bOver = bOver || (bRight && bLeft);
  }
  return bOver;
}

bool clsTableShape::IsParted(const Part& left, const Part& right) const {
  for (int32_t l = left.lLast + 1; l < right.lFirst; ++l) {
    if (parting_[static_cast<size_t>(l)]) return true;
  }
  return false;
}

void clsTableShape::JoinParts(Parts& parts) const {
  for (size_t i = 0; i + 1 < parts.size();) {
    if (parts[i].lLast + 1 == parts[i + 1].lFirst) {  // parted on purpose
      ++i;
      continue;
    }
    const bool bLabel = parts[i + 1].lLast < lEquals_;
    const bool bJoin = bByMarks_ || bLabel
                           ? !IsParted(parts[i], parts[i + 1])
                           : AreOneColumn(parts[i], parts[i + 1]) || IsTailOf(parts[i + 1], parts[i]) ||
                                 TakeEventLoop(parts[i], parts[i + 1]) || IsOnePiece(parts[i], parts[i + 1]) ||
                                 HaveOneName(parts[i], parts[i + 1]);
    if (!bJoin) {
      ++i;
      continue;
    }
    const bool bSign = parts[i].bSigns || parts[i + 1].bSigns;
    parts[i].lLast = parts[i + 1].lLast;
    parts[i].dates = JoinedDates(parts[i].dates, parts[i + 1].dates);
    const DateParts dates = parts[i].dates;
    parts.erase(parts.begin() + static_cast<ptrdiff_t>(i) + 1);
    Measure(parts[i]);
    if (dates != DateParts::None) parts[i].dates = dates;
    if (bSign && i > 0) --i;
  }
}

bool clsTableShape::IsTailOf(const Part& right, const Part& left) const {
  return !left.IsNumber() && !right.IsNumber() && right.dFigures < left.dFigures + 0.5 &&
         IsTail(report_, rows_, left.lFirst, left.lLast, right.lFirst, right.lLast);
}

/// A word in rows that have no number, such as <DIR> in place of a size, is a value of the number's column; and so is
/// one that stands elsewhere from some page on.
bool clsTableShape::TakeEventLoop(const Part& left, const Part& right) const {
  constexpr int32_t kNear = 5;
  constexpr double kMost = 0.85;
  if (right.lFirst - left.lLast > kNear) return false;
  if (left.dFilled + right.dFilled < kMost || left.dFilled + right.dFilled > 1) return false;
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

void clsTableShape::SplitParts(Parts& parts) const {
  Parts result;
  for (const Part& part : parts) {
    if (!SplitPart(part, result)) result.push_back(part);
  }
  parts = std::move(result);
}

/// A number of one width in all rows, with a word directly behind it.
bool clsTableShape::SplitAfterDigits(const Part& part, Parts& into) const {
  constexpr size_t kFewest = 4;
  constexpr int32_t kShortest = 3;
  if (rows_.size() < kFewest) return false;
  int32_t lWidth = -1;
  for (const size_t n : rows_) {
    const std::u32string_view sText = report_.Lines()[n].sText;
    const auto nFirst = static_cast<size_t>(part.lFirst);
    size_t nEnd = nFirst;
    while (nEnd < sText.size() && IsDigitPlace(sText[nEnd])) ++nEnd;
    const bool bWord = nEnd < sText.size() && static_cast<int32_t>(nEnd) <= part.lLast && IsLetterPlace(sText[nEnd]);
    const auto l = static_cast<int32_t>(nEnd - nFirst);
    // 777DR is one number.
    if (!bWord || l < kShortest || (lWidth >= 0 && l != lWidth)) return false;
    if (IsNumberText(CellAt(sText, part.lFirst, part.lLast))) return false;
    lWidth = l;
  }
  Part left = part;
  Part right = part;
  left.lLast = part.lFirst + lWidth - 1;
  right.lFirst = left.lLast + 1;
  Measure(left);
  Measure(right);
  if (!SplitPart(left, into)) into.push_back(left);
  if (!SplitPart(right, into)) into.push_back(right);
  return true;
}

/// Whether some row has a number that goes over the place.
bool clsTableShape::CutsNumber(int32_t lPlace) const {
  return std::any_of(rows_.begin(), rows_.end(), [&](size_t n) {
    const SampleLine& line = report_.Lines()[n];
    return std::any_of(line.marks.begin(), line.marks.end(), [&](const LineMark& mark) {
      return mark.kind == MarkKind::Number && mark.lStart <= lPlace && mark.lEnd >= lPlace;
    });
  });
}

/// Most texts of the right part have a word one blank in front of them: they are no column.
bool clsTableShape::GoesOnFrom(const Part& left, const Part& right) const {
  if (left.IsNumber() || right.IsNumber()) return false;
  size_t nFilled = 0;
  size_t nBehindWord = 0;
  for (const size_t n : rows_) {
    const std::u32string_view sText = report_.Lines()[n].sText;
    const std::u32string_view sCell = CellAt(sText, right.lFirst, right.lLast);
    if (sCell.empty()) continue;
    ++nFilled;
    // A gap in most rows parts two columns, though in some of them a longer text leaves one blank of it.
    const bool bAtOnce = sCell.data() - sText.data() == static_cast<ptrdiff_t>(left.lLast) + 2;
    nBehindWord += bAtOnce && !CellAt(sText, left.lLast, left.lLast).empty() ? 1U : 0U;
  }
  return nBehindWord * 5 > nFilled * 3;
}

/// Columns of which the words of the rows tell that they are two.
bool clsTableShape::SplitAtTokens(const Part& part, Parts& into) const {
  auto split = SplitAtPlainDate(report_, rows_, part.lFirst, part.lLast);
  if (!split) split = SplitBehindForm(report_, rows_, part.lFirst, part.lLast);
  if (!split) split = SplitAtNumber(report_, rows_, part.lFirst, part.lLast);
  if (!split) return false;
  Part left = part;
  Part right = part;
  left.lLast = split->lLeftLast;
  right.lFirst = split->lRightFirst;
  Measure(left);
  Measure(right);
  if (!SplitPart(left, into)) into.push_back(left);
  if (!SplitPart(right, into)) into.push_back(right);
  return true;
}

/// Whether most words that go over the place have no number behind it: they are values themselves.
bool clsTableShape::CutsWords(int32_t lPlace, const Part& right) const {
  size_t nOver = 0;
  size_t nWords = 0;
  for (const size_t n : rows_) {
    const std::u32string_view sText = report_.Lines()[n].sText;
    if (static_cast<size_t>(lPlace) >= sText.size() || IsBlankPlace(sText[static_cast<size_t>(lPlace)])) continue;
    ++nOver;
    nWords += IsNumberText(CellAt(sText, right.lFirst, right.lLast)) ? 0U : 1U;
  }
  return nWords * 2 > nOver;
}

/// Columns that touch in a few rows: a place that is blank in most rows, beside an edge that most rows have.
bool clsTableShape::SplitPart(const Part& part, Parts& into) const {
  if (SplitAfterDigits(part, into) || SplitAtTokens(part, into)) return true;
  constexpr uint32_t kOneInSoMany = 4;
  constexpr uint32_t kFewOneIn = 7;
  const auto nRows = static_cast<uint32_t>(rows_.size());
  const uint32_t lMost = nameEnds_.empty() ? nRows / kOneInSoMany : nRows / 2;
  constexpr size_t kFewest = 4;
  if (rows_.size() < kFewest) return false;
  for (int32_t p = part.lFirst + 1; p < part.lLast; ++p) {
    if (filled_[static_cast<size_t>(p)] > lMost) continue;
    int32_t lBest = p;
    int32_t lEnd = p;
    for (; lEnd < part.lLast && filled_[static_cast<size_t>(lEnd)] <= lMost; ++lEnd) {
      if (filled_[static_cast<size_t>(lEnd)] <= filled_[static_cast<size_t>(lBest)]) lBest = lEnd;
    }
    Part left = part;
    Part right = part;
    left.lLast = lBest - 1;
    right.lFirst = lBest + 1;
    Measure(left);
    Measure(right);
    // Many touching rows need an edge that leaves no doubt.
    const bool bFew = filled_[static_cast<size_t>(lBest)] <= static_cast<uint32_t>(rows_.size()) / kFewOneIn;
    constexpr double kSure = 0.9;
    const bool bNamed = filled_[static_cast<size_t>(lBest)] * kOneInSoMany <= nRows || nameEnds_.contains(right.lLast);
    const bool bSure = bNamed && !CutsNumber(lBest) && !left.IsNumber() && right.IsNumber() && right.dEnd >= kSure &&
                       right.dFilled >= kSure && !CutsWords(lBest, right);
    if (HaveEdgeBetween(left, right) && !GoesOnFrom(left, right) && ((bFew && rows_.size() > kFewest) || bSure)) {
      if (!SplitPart(left, into)) into.push_back(left);
      if (!SplitPart(right, into)) into.push_back(right);
      return true;
    }
    p = lEnd;
  }
  return false;
}

/// Room between two columns goes to the one that would need it: numbers grow to the left, texts to the right.
void clsTableShape::SetPlaces() {
  constexpr int32_t kRoom = 4;
  for (size_t i = 0; i < columns_.size(); ++i) {
    ShapeColumn& column = columns_[i];
    column.lPlaceFirst = column.lFirst;
    column.lPlaceLast = column.lLast;
    if (i == 0) {
      if (column.bNumber) column.lPlaceFirst = std::max(0, column.lFirst - kRoom);
      continue;
    }
    ShapeColumn& before = columns_[i - 1];
    const int32_t lGap = column.lFirst - before.lLast - 1;
    if (before.bNumber && column.bNumber) column.lPlaceFirst = before.lLast + std::min(lGap, 1) + (lGap > 0 ? 1 : 0);
    if (before.bNumber && column.bNumber && lGap <= 1) column.lPlaceFirst = before.lLast + 1;
    if (!before.bNumber && column.bNumber) {
      column.lPlaceFirst = column.lFirst - std::min(kRoom, lGap / 2);
      before.lPlaceLast = std::max(before.lLast, column.lPlaceFirst - 2);
    }
    if (!before.bNumber && !column.bNumber) before.lPlaceLast = std::max(before.lLast, column.lFirst - 2);
    if (before.bNumber && !column.bNumber && lGap > 2) before.lPlaceLast = before.lLast + 1;
  }
  constexpr int32_t kOpen = static_cast<int32_t>(clsReportSample::kWidest);
  if (!columns_.empty()) columns_.back().lPlaceLast = kOpen;
  for (ShapeColumn& column : columns_) StopAtPartingPlaces(column);
}

/// What is printed to part columns belongs to none.
void clsTableShape::StopAtPartingPlaces(ShapeColumn& column) const {
  const auto parts = [&](int32_t l) {
    return static_cast<size_t>(l) < parting_.size() && parting_[static_cast<size_t>(l)];
  };
  for (int32_t l = column.lFirst; l > column.lPlaceFirst; --l) {
    if (parts(l - 1)) column.lPlaceFirst = l;
  }
  for (int32_t l = column.lLast; l < column.lPlaceLast && static_cast<size_t>(l) < parting_.size(); ++l) {
    if (parts(l + 1)) column.lPlaceLast = l;
  }
}

void clsTableShape::Cut(std::u32string_view sLine, std::vector<std::u32string_view>& cells) const {
  cells.clear();
  int32_t lFrom = 0;
  for (size_t i = 0; i < columns_.size(); ++i) {
    const int32_t lFirst = std::max(columns_[i].lPlaceFirst, lFrom);
    int32_t lLast = columns_[i].lPlaceLast;
    const int32_t lNext = i + 1 < columns_.size() ? columns_[i + 1].lPlaceFirst : lLast + 1;
    // A value that goes on into the gap goes on to the next blank.
    const auto at = [&](int32_t l) {
      return static_cast<size_t>(l) < sLine.size() ? sLine[static_cast<size_t>(l)] : U' ';
    };
    if (lLast + 1 < lNext && (IsLetterPlace(at(lLast + 1)) || IsDigitPlace(at(lLast + 1))) &&
        !IsBlankPlace(at(lLast))) {
      while (!IsBlankPlace(at(lLast + 1))) ++lLast;
    }
    cells.push_back(CellAt(sLine, lFirst, lLast));
    lFrom = lLast + 1;
  }
}

}  // namespace quillon
