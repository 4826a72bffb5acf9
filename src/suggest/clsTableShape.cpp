#include "clsTableShape.h"

#include <algorithm>
#include <array>
#include <map>

#include "clsColumnJoiner.h"
#include "modColumnParts.h"
#include "modDigitSplits.h"
#include "modEventLoop.h"
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

clsTableShape::clsTableShape(const clsReportSample& report, std::span<const size_t> rows,
                             std::span<const size_t> headingLines)
    : report_(report), rows_(Spread(rows)) {
  for (const size_t n : headingLines) {
    const auto marks = report_.Lines()[n].marks;
    allNames_.insert(allNames_.end(), marks.begin(), marks.end());
    for (const LineMark& mark : marks) nameEnds_.insert(mark.lEnd);
  }
  // A search makes one at each of its steps.
  RunEvents();
  if (!headingLines.empty()) names_ = report_.Lines()[headingLines.back()].marks;
  CountPlaces();
  FindPartingPlaces();
  Parts parts = PartsOfPlaces();
  for (ColumnPart& part : parts) MeasurePart(report_, rows_, part);
  SplitParts(parts);
  clsColumnJoiner(report_, rows_, {names_, allNames_, parting_, bByMarks_, lEquals_}).Join(parts);
  for (const ColumnPart& part : parts)
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

void clsTableShape::SplitParts(Parts& parts) const {
  Parts result;
  for (const ColumnPart& part : parts) {
    if (!SplitPart(part, result)) result.push_back(part);
  }
  parts = std::move(result);
}

/// A number of one width in all rows, with a word directly behind it.
bool clsTableShape::SplitAfterDigits(const ColumnPart& part, Parts& into) const {
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
  ColumnPart left = part;
  ColumnPart right = part;
  left.lLast = part.lFirst + lWidth - 1;
  right.lFirst = left.lLast + 1;
  MeasurePart(report_, rows_, left);
  MeasurePart(report_, rows_, right);
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
bool clsTableShape::GoesOnFrom(const ColumnPart& left, const ColumnPart& right) const {
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
bool clsTableShape::SplitAtTokens(const ColumnPart& part, Parts& into) const {
  auto split = SplitAtPlainDate(report_, rows_, part.lFirst, part.lLast);
  if (!split) split = SplitBehindForm(report_, rows_, part.lFirst, part.lLast);
  if (!split) split = SplitAtNumber(report_, rows_, part.lFirst, part.lLast);
  if (!split) return false;
  ColumnPart left = part;
  ColumnPart right = part;
  left.lLast = split->lLeftLast;
  right.lFirst = split->lRightFirst;
  MeasurePart(report_, rows_, left);
  MeasurePart(report_, rows_, right);
  if (!SplitPart(left, into)) into.push_back(left);
  if (!SplitPart(right, into)) into.push_back(right);
  return true;
}

/// Whether most words that go over the place have no number behind it: they are values themselves.
bool clsTableShape::CutsWords(int32_t lPlace, const ColumnPart& right) const {
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
bool clsTableShape::SplitPart(const ColumnPart& part, Parts& into) const {
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
    ColumnPart left = part;
    ColumnPart right = part;
    left.lLast = lBest - 1;
    right.lFirst = lBest + 1;
    MeasurePart(report_, rows_, left);
    MeasurePart(report_, rows_, right);
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
    lFrom = std::max(lFrom, lLast + 1);
  }
}

}  // namespace quillon
