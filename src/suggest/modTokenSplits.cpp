#include "modTokenSplits.h"

#include <algorithm>
#include <array>
#include <map>

#include "modCellKinds.h"

namespace quillon {

namespace {

constexpr size_t kFewest = 4;

char32_t At(std::u32string_view sText, int32_t lPlace) {
  return lPlace >= 0 && static_cast<size_t>(lPlace) < sText.size() ? sText[static_cast<size_t>(lPlace)] : U' ';
}

/// The marks of a line that stand wholly between two places.
std::span<const LineMark> MarksIn(const SampleLine& line, int32_t lFirst, int32_t lLast) {
  size_t n = 0;
  while (n < line.marks.size() && line.marks[n].lStart < lFirst) ++n;
  size_t nEnd = n;
  while (nEnd < line.marks.size() && line.marks[nEnd].lEnd <= lLast) ++nEnd;
  return line.marks.subspan(n, nEnd - n);
}

/// The place where most last numbers end, and how many of them do.
std::pair<int32_t, size_t> CommonEnd(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst,
                                     int32_t lLast) {
  std::map<int32_t, size_t> ends;
  for (const size_t n : rows) {
    const std::span<const LineMark> marks = MarksIn(report.Lines()[n], lFirst, lLast);
    if (!marks.empty() && marks.back().kind == MarkKind::Number) ++ends[marks.back().lFigure];
  }
  std::pair<int32_t, size_t> most{0, 0};
  for (const auto& [lEnd, nCount] : ends) {
    if (nCount > most.second) most = {lEnd, nCount};
  }
  return most;
}

}  // namespace

std::optional<TokenSplit> SplitAtNumber(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst,
                                        int32_t lLast) {
  if (rows.size() < kFewest) return std::nullopt;
  const auto [lEnd, nEnding] = CommonEnd(report, rows, lFirst, lLast);
  if (nEnding * 10 < rows.size() * 6) return std::nullopt;
  int32_t lStart = lEnd;
  int32_t lTextLast = -1;
  size_t nTexts = 0;
  size_t nOdd = 0;
  for (const size_t n : rows) {
    const std::span<const LineMark> marks = MarksIn(report.Lines()[n], lFirst, lLast);
    for (const LineMark& mark : marks) {
      const bool bNumber = &mark == &marks.back() && mark.kind == MarkKind::Number && mark.lFigure == lEnd;
      if (bNumber) {
        lStart = std::min(lStart, mark.lStart);
        continue;
      }
      // A long word may cover the place of a number that isn't there.
      if (mark.lEnd >= lEnd || mark.kind == MarkKind::Number) {
        ++nOdd;
        continue;
      }
      lTextLast = std::max(lTextLast, mark.lEnd);
      nTexts += &mark == &marks.front() ? 1U : 0U;
    }
  }
  if (nTexts * 10 < rows.size() * 6 || nOdd * 10 > rows.size()) return std::nullopt;
  const TokenSplit split{std::min(lTextLast, lStart - 2), lStart};
  return split.lLeftLast > lFirst ? std::optional(split) : std::nullopt;
}

namespace {

/// Whether all rows have a date there.
bool AreDates(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst, int32_t lLast) {
  return std::all_of(rows.begin(), rows.end(), [&](size_t n) {
    const std::u32string_view sText = report.Lines()[n].sText;
    if (static_cast<size_t>(lLast) >= sText.size()) return false;
    return IsDateText(sText.substr(static_cast<size_t>(lFirst), static_cast<size_t>(lLast - lFirst) + 1));
  });
}

/// Whether most rows go on with a letter.
bool HasTextsAt(const clsReportSample& report, std::span<const size_t> rows, int32_t lPlace) {
  const auto nTexts = std::count_if(rows.begin(), rows.end(),
                                    [&](size_t n) { return IsLetterPlace(At(report.Lines()[n].sText, lPlace)); });
  return static_cast<size_t>(nTexts) * 2 > rows.size();
}

/// 0.56s, 12.5M: what is counted, not a flag beside it.
bool IsUnit(std::u32string_view sText) {
  constexpr std::array<std::u32string_view, 14> kUnits{U"s",  U"ms", U"K",  U"M",   U"G",   U"T",   U"k",
                                                       U"KB", U"MB", U"GB", U"KiB", U"MiB", U"GiB", U"kB"};
  return std::find(kUnits.begin(), kUnits.end(), sText) != kUnits.end();
}

/// A sign or a unit behind a number is no column of its own.
bool HasMoreThanSigns(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst, int32_t lLast) {
  size_t nMore = 0;
  for (const size_t n : rows) {
    const std::u32string_view sText = report.Lines()[n].sText;
    if (static_cast<size_t>(lFirst) >= sText.size()) continue;
    const std::u32string_view sRest =
        TrimPlaces(sText.substr(static_cast<size_t>(lFirst), static_cast<size_t>(lLast - lFirst) + 1));
    const bool bSign =
        std::all_of(sRest.begin(), sRest.end(), [](char32_t ch) { return !IsDigitPlace(ch) && !IsLetterPlace(ch); });
    nMore += bSign || sRest == U"CR" || sRest == U"DR" || sRest == U"C" || sRest == U"D" || IsUnit(sRest) ? 0U : 1U;
  }
  return nMore * 2 > rows.size();
}

/// How many digits, two or three, all rows have behind a decimal point at this place; 0 if some row has none there, or
/// it parts thousands.
int32_t DecimalsAt(const clsReportSample& report, std::span<const size_t> rows, int32_t lPoint) {
  constexpr int32_t kFewestDecimals = 2;
  constexpr int32_t kMost = 4;
  int32_t lDecimals = kMost;
  char32_t chPoint = 0;
  for (const size_t n : rows) {
    const std::u32string_view sText = report.Lines()[n].sText;
    const char32_t ch = At(sText, lPoint);
    if ((ch != U'.' && ch != U',') || (chPoint != 0 && ch != chPoint) || !IsDigitPlace(At(sText, lPoint - 1))) return 0;
    chPoint = ch;
    int32_t lBefore = lPoint - 1;
    while (IsDigitPlace(At(sText, lBefore))) --lBefore;
    if (At(sText, lBefore) == ch) return 0;  // 10.0.0.18
    int32_t l = 0;
    while (l < lDecimals && IsDigitPlace(At(sText, lPoint + l + 1))) ++l;
    lDecimals = l;
    const char32_t chNext = At(sText, lPoint + l + 1);
    const char32_t chSign = At(sText, lPoint + l + 2);
    const bool bExponent = std::u32string_view(U"EeDd").find(chNext) != std::u32string_view::npos &&
                           (chSign == U'+' || chSign == U'-' || IsDigitPlace(chSign));
    if (chNext == U'.' || chNext == U',' || bExponent) return 0;
  }
  return lDecimals >= kFewestDecimals && lDecimals < kMost ? lDecimals : 0;
}

/// The place behind the sign of the numbers that end in front of lPlace, if the signs are theirs: no digit follows.
int32_t BehindSign(const clsReportSample& report, std::span<const size_t> rows, int32_t lPlace) {
  bool bSign = false;
  for (const size_t n : rows) {
    const std::u32string_view sText = report.Lines()[n].sText;
    const char32_t ch = At(sText, lPlace);
    if (ch != U'-' && !IsBlankPlace(ch)) return lPlace;
    if (ch == U'-' && IsDigitPlace(At(sText, lPlace + 1))) return lPlace;
    bSign = bSign || ch == U'-';
  }
  return bSign ? lPlace + 1 : lPlace;
}

}  // namespace

std::optional<TokenSplit> SplitBehindForm(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst,
                                          int32_t lLast) {
  if (rows.size() < kFewest) return std::nullopt;
  for (const int32_t lWidth : {11, 10, 9, 8}) {
    if (lFirst + lWidth <= lLast && AreDates(report, rows, lFirst, lFirst + lWidth - 1))
      return HasTextsAt(report, rows, lFirst + lWidth) ? std::optional(TokenSplit{lFirst + lWidth - 1, lFirst + lWidth})
                                                       : std::nullopt;
  }
  for (int32_t l = lFirst + 1; l + 2 < lLast; ++l) {
    const int32_t lDecimals = DecimalsAt(report, rows, l);
    if (lDecimals == 0) continue;
    const int32_t lNext = BehindSign(report, rows, l + lDecimals + 1);
    return lNext <= lLast && HasMoreThanSigns(report, rows, lNext, lLast) ? std::optional(TokenSplit{lNext - 1, lNext})
                                                                          : std::nullopt;
  }
  return std::nullopt;
}

bool IsTail(const clsReportSample& report, std::span<const size_t> rows, int32_t lFirst, int32_t lLast,
            int32_t lRightFirst, int32_t lRightLast) {
  if (lRightFirst != lLast + 2) return false;
  size_t nBoth = 0;
  size_t nShort = 0;
  size_t nReach = 0;
  for (const size_t n : rows) {
    const std::u32string_view sText = report.Lines()[n].sText;
    const auto filled = [&](int32_t lFrom, int32_t lTo) {
      for (int32_t l = lFrom; l <= lTo; ++l) {
        if (!IsBlankPlace(At(sText, l))) return true;
      }
      return false;
    };
    const bool bReaches = !IsBlankPlace(At(sText, lLast));
    nReach += bReaches ? 1U : 0U;
    if (filled(lRightFirst, lRightLast)) {
      if (!bReaches) return false;
      ++nBoth;
    } else {
      nShort += !bReaches && filled(lFirst, lLast) ? 1U : 0U;
    }
  }
  // Codes of one width reach the end without anything behind.
  return nBoth > 0 && nShort > 0 && nBoth * 3 >= nReach * 2;
}

}  // namespace quillon
