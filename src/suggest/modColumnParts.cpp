#include "modColumnParts.h"

#include <algorithm>
#include <array>

#include "modCellKinds.h"
#include "modLineMarks.h"
#include "modRowKinds.h"

namespace quillon {

namespace {

constexpr uint32_t Bit(DateParts part) {
  return 1U << static_cast<uint32_t>(part);
}

bool IsOneOf(std::u32string_view sText, std::u32string_view sNames, size_t nLetters) {
  if (sText.size() < nLetters) return false;
  std::u32string sLow(sText.substr(0, nLetters));
  for (char32_t& ch : sLow) ch |= 0x20U;
  for (size_t i = 0; i < sNames.size(); i += nLetters) {
    if (sNames.substr(i, nLetters) == sLow) return true;
  }
  return false;
}

bool IsTime(std::u32string_view sCell) {
  const size_t nColon = sCell.find(U':');
  if (nColon == std::u32string_view::npos || nColon == 0 || nColon > 2 || sCell.size() < nColon + 3) return false;
  return std::all_of(sCell.begin(), sCell.end(),
                     [](char32_t ch) { return IsDigitPlace(ch) || ch == U':' || ch == U'.'; });
}

uint32_t DatePartsOf(std::u32string_view sCell) {
  constexpr size_t kShortest = 3;
  constexpr size_t kLongest = 9;
  uint32_t lParts = 0;
  const bool bDigits = std::all_of(sCell.begin(), sCell.end(), IsDigitPlace);
  const bool bLetters = std::all_of(sCell.begin(), sCell.end(), IsLetterPlace);
  if (bLetters && sCell.size() >= kShortest && sCell.size() <= kLongest) {
    if (IsOneOf(sCell, U"sunmontuewedthufrisat", 3)) lParts |= Bit(DateParts::Weekday);
    if (IsOneOf(sCell, U"janfebmaraprmayjunjulaugsepoctnovdec", 3)) lParts |= Bit(DateParts::Month);
  }
  if (bLetters && sCell.size() == 2 && IsOneOf(sCell, U"ampm", 2)) lParts |= Bit(DateParts::HalfDay);
  std::u32string_view sDay = sCell;
  if (sDay.ends_with(U',')) sDay.remove_suffix(1);
  if (!sDay.empty() && sDay.size() <= 2 && std::all_of(sDay.begin(), sDay.end(), IsDigitPlace)) {
    const char32_t chTens = sDay.size() == 2 ? sDay[0] : U'0';
    if (chTens < U'3' || (chTens == U'3' && sDay[1] < U'2')) lParts |= Bit(DateParts::Day);
  }
  if (bDigits && sCell.size() == 4 && (sCell.starts_with(U"19") || sCell.starts_with(U"20"))) {
    lParts |= Bit(DateParts::Year);
  }
  if (IsTime(sCell)) lParts |= Bit(DateParts::Time);
  return lParts;
}

double Most(const std::map<int32_t, size_t>& counts, size_t nAll) {
  size_t nMost = 0;
  for (const auto& [lPlace, nCount] : counts) nMost = std::max(nMost, nCount);
  return nAll == 0 ? 0 : static_cast<double>(nMost) / static_cast<double>(nAll);
}

bool IsBehindNumber(std::u32string_view sCell) {
  return sCell == U"-" || sCell == U"CR" || sCell == U"DR" || sCell == U"%" || sCell == U")";
}

}  // namespace

void clsPartMeasure::Add(std::u32string_view sCell, int32_t lStart) {
  ++nCells_;
  if (IsBlankMark(sCell)) ++nBlankMarks_;
  if (sCell.size() == 1 && IsCurrencyPlace(sCell.front())) ++nSigns_;
  if (IsBehindNumber(sCell)) ++nBehind_;
  if (std::any_of(sCell.begin(), sCell.end(), IsDigitPlace)) ++nFigures_;
  nOpen_ += std::count(sCell.begin(), sCell.end(), U'(') > std::count(sCell.begin(), sCell.end(), U')') ? 1U : 0U;
  lDates_ &= DatePartsOf(sCell);
  nWholeDates_ += IsDateText(sCell) ? 1U : 0U;
  if (nCells_ == 1) sFirst_ = sCell;
  nLikeFirst_ += sCell == sFirst_ ? 1U : 0U;
  ++starts_[lStart];
  int32_t lEnd = lStart + static_cast<int32_t>(sCell.size()) - 1;
  if (IsNumberText(sCell)) {
    ++nNumbers_;
    const size_t nLast = sCell.find_last_of(U"0123456789");
    lEnd = lStart + static_cast<int32_t>(nLast);
    ++points_[lStart + static_cast<int32_t>(std::min(sCell.find(U'.'), nLast + 1))];
  }
  ++ends_[lEnd];
}

void clsPartMeasure::Finish(ColumnPart& part) const {
  const auto share = [](size_t n, size_t nAll) {
    return nAll == 0 ? 0.0 : static_cast<double>(n) / static_cast<double>(nAll);
  };
  part.dFilled = share(nCells_, nRows_);
  part.dNumbers = nNumbers_ > 0 ? share(nNumbers_, nCells_ - std::min(nBlankMarks_, nCells_ - nNumbers_)) : 0;
  part.dFigures = share(nFigures_, nCells_);
  part.dStart = Most(starts_, nCells_);
  part.dEnd = Most(ends_, nCells_);
  part.dPoint = Most(points_, nNumbers_);
  part.bSigns = nCells_ > 0 && nSigns_ == nCells_;
  part.bSignsBehind = nCells_ > 0 && nBehind_ == nCells_;
  part.bOpen = nCells_ > 0 && nOpen_ == nCells_;
  constexpr size_t kFewest = 3;
  part.bWholeDates = nCells_ > 0 && nWholeDates_ == nCells_;
  part.bOneValue = nCells_ >= kFewest && nLikeFirst_ == nRows_ && nFigures_ == 0;
  part.dates = DateParts::None;
  if (nCells_ == 0) return;
  for (const DateParts kind :
       {DateParts::Weekday, DateParts::Month, DateParts::Day, DateParts::Year, DateParts::Time, DateParts::HalfDay}) {
    if ((lDates_ & Bit(kind)) != 0) part.dates = kind;
  }
}

std::u32string_view CellAt(std::u32string_view sLine, int32_t lFirst, int32_t lLast) {
  const auto nFirst = static_cast<size_t>(lFirst);
  if (nFirst >= sLine.size() || lLast < lFirst) return {};
  return TrimPlaces(sLine.substr(nFirst, static_cast<size_t>(lLast - lFirst) + 1));
}

void MeasurePart(const clsReportSample& report, std::span<const size_t> rows, ColumnPart& part) {
  clsPartMeasure measure(rows.size());
  for (const size_t n : rows) {
    const std::u32string_view sText = report.Lines()[n].sText;
    const std::u32string_view sCell = CellAt(sText, part.lFirst, part.lLast);
    if (!sCell.empty()) measure.Add(sCell, static_cast<int32_t>(sCell.data() - sText.data()));
  }
  measure.Finish(part);
}

DateParts JoinedDates(DateParts left, DateParts right) {
  using enum DateParts;
  if (left == Weekday && (right == Month || right == MonthAndDay || right == Date)) return right;
  if ((left == Month && right == Day) || (left == Day && right == Month)) return MonthAndDay;
  if (left == MonthAndDay && (right == Year || right == Time)) return Date;
  if (left == Date && (right == Time || right == Year)) return Date;
  if (left == Time && right == HalfDay) return Time;
  return None;
}

bool AreOneColumn(const ColumnPart& left, const ColumnPart& right) {
  constexpr double kMost = 0.8;
  constexpr double kMany = 0.6;
  constexpr double kSome = 0.3;
  const int32_t lGap = right.lFirst - left.lLast - 1;
  if (left.bWholeDates && right.dates == DateParts::None) return false;
  if (left.bOneValue && lGap <= 1 && !right.IsNumber() && !right.bWholeDates && right.dFilled > kMost) return true;
  if (left.bSigns) return right.dNumbers >= kMany || lGap <= 1;
  if (left.bOpen && lGap <= 1) return true;
  if (right.bSigns) return false;
  if (right.bSignsBehind && left.IsNumber() && lGap <= 1 && !right.IsNumber()) return true;
  if (lGap <= 2 && JoinedDates(left.dates, right.dates) != DateParts::None) return true;
  if (left.IsNumber() && (left.dEnd >= kMany || left.dPoint >= kMany || left.dStart >= kMost)) return false;
  if (right.IsNumber()) {
    if (lGap <= 1 && right.dFilled < kSome && !left.IsNumber()) return true;
    return right.dEnd < kMany && right.dStart < kMost && right.dPoint < kMany && lGap <= 2;
  }
  if (right.dStart >= kMost && (right.dFilled >= kSome || lGap >= 2)) return false;
  if (right.dEnd >= kMost && right.dFilled >= kSome) return false;
  constexpr int32_t kWide = 3;
  return lGap < kWide || right.dStart < kSome;
}

bool HaveEdgeBetween(const ColumnPart& left, const ColumnPart& right) {
  constexpr double kMost = 0.75;
  constexpr double kSome = 0.25;
  if (left.dFilled < kSome || right.dFilled < kSome || left.bOpen) return false;
  const bool bLeftEnds = left.IsNumber() && (left.dEnd >= kMost || left.dPoint >= kMost);
  const bool bRightEnds = right.IsNumber() && (right.dEnd >= kMost || right.dPoint >= kMost);
  return bLeftEnds || bRightEnds || right.dStart >= kMost;
}

}  // namespace quillon
