#include "modRowKinds.h"

#include <algorithm>

namespace quillon {

namespace {

constexpr size_t kLongestMark = 4;

bool MayBeMark(std::u32string_view sCell) {
  const auto nLetters = std::count_if(sCell.begin(), sCell.end(), IsLetterPlace);
  const bool bDigit = std::any_of(sCell.begin(), sCell.end(), IsDigitPlace);
  return !bDigit && ((sCell.size() <= kLongestMark && nLetters <= 2) || nLetters == 0);
}

/// A letter, and none of them small.
bool HasCapitalsAlone(std::u32string_view sCell) {
  const auto isSmall = [](char32_t ch) { return ch >= U'a' && ch <= U'z'; };
  return std::any_of(sCell.begin(), sCell.end(), IsLetterPlace) && std::none_of(sCell.begin(), sCell.end(), isSmall);
}

}  // namespace

void ColumnKinds::Add(std::u32string_view sCell) {
  constexpr size_t kMostMarks = 12;
  ++nRows;
  ++counts[static_cast<size_t>(KindOfCell(sCell))];
  nFigures += std::any_of(sCell.begin(), sCell.end(), IsDigitPlace) ? 1U : 0U;
  nCapitals += HasCapitalsAlone(sCell) ? 1U : 0U;
  nBlankMarks += !sCell.empty() && IsBlankMark(sCell) ? 1U : 0U;
  if (sCell.empty() || !MayBeMark(sCell)) return;
  const auto it = marks.find(sCell);
  if (it != marks.end()) {
    ++it->second;
  } else if (marks.size() < kMostMarks) {
    marks.emplace(sCell, 1);
  }
}

bool ColumnKinds::IsNumeric() const {
  constexpr size_t kPercent = 60;
  const size_t nNumbers = Count(FieldKind::Digits) + Count(FieldKind::Number);
  return nNumbers > 0 && nNumbers * 100 >= (Filled() - nBlankMarks) * kPercent;
}

bool ColumnKinds::IsDate() const {
  constexpr size_t kPercent = 60;
  return Count(FieldKind::Date) * 100 >= Filled() * kPercent && Filled() > 0;
}

bool ColumnKinds::IsMark(std::u32string_view sCell) const {
  const auto it = marks.find(sCell);
  return it != marks.end() && it->second >= 2;
}

bool ColumnKinds::IsUsual(std::u32string_view sCell) const {
  constexpr double kOften = 0.08;
  const FieldKind kind = KindOfCell(sCell);
  if (kind == FieldKind::Blank) return Share(kind) >= kOften;
  if (IsNumeric()) return kind == FieldKind::Digits || kind == FieldKind::Number || IsMark(sCell) || IsBlankMark(sCell);
  if (IsDate()) return kind == FieldKind::Date || IsMark(sCell);
  return true;
}

bool AreNamesOfKinds(const std::vector<ColumnKinds>& kinds, const std::vector<std::u32string_view>& cells) {
  constexpr size_t kFewest = 3;
  constexpr size_t kFewestRows = 4;
  size_t nOverFigures = 0;
  size_t nOverSmall = 0;
  size_t nEmpty = 0;
  if (kinds.size() < kFewest || kinds.front().nRows < kFewestRows) return false;
  for (size_t i = 0; i < cells.size(); ++i) {
    if (cells[i].empty() && ++nEmpty * 4 <= cells.size()) continue;
    const bool bDigit = std::any_of(cells[i].begin(), cells[i].end(), IsDigitPlace);
    if (bDigit || !std::any_of(cells[i].begin(), cells[i].end(), IsLetterPlace)) return false;
    // The row itself is one of those that were counted.
    const size_t nOthers = kinds[i].Filled() - 1;
    nOverFigures += nOthers > 0 && kinds[i].nFigures * 10 >= nOthers * 9 ? 1U : 0U;
    nOverSmall += HasCapitalsAlone(cells[i]) && (kinds[i].nCapitals - 1) * 10 <= nOthers ? 1U : 0U;
  }
  return nOverFigures >= 2 || nOverSmall * 3 >= cells.size() * 2;
}

bool IsBlankMark(std::u32string_view sCell) {
  constexpr std::u32string_view kMarks = U"-.*_\u2013\u2014 ";
  return std::all_of(sCell.begin(), sCell.end(),
                     [&](char32_t ch) { return kMarks.find(ch) != std::u32string_view::npos; }) ||
         sCell == U"N/A" || sCell == U"n/a";
}

std::vector<ColumnKinds> KindsOfRows(const clsReportSample& report, const clsTableShape& shape,
                                     std::span<const size_t> rows) {
  std::vector<ColumnKinds> kinds(shape.Columns().size());
  std::vector<std::u32string_view> cells;
  for (const size_t n : rows) {
    shape.Cut(report.Lines()[n].sText, cells);
    for (size_t i = 0; i < cells.size(); ++i) kinds[i].Add(cells[i]);
  }
  return kinds;
}

bool SaysPage(std::u32string_view sText) {
  std::u32string sLow(sText);
  for (char32_t& ch : sLow) {
    if (ch >= U'A' && ch <= U'Z') ch |= 0x20U;
  }
  for (const std::u32string_view sWord :
       {U"page", U"seite", U"strona", U"pag.", U"(continued)", U"run date", U"run time"}) {
    if (sLow.find(sWord) != std::u32string::npos) return true;
  }
  return false;
}

bool SaysTotal(std::u32string_view sLine) {
  std::string sPlain;
  for (const char32_t ch : sLine) sPlain += ch < 0x80 ? static_cast<char>(ch) : '?';
  return SaysTotal(std::string_view(sPlain));
}

bool SaysTotal(std::string_view sLine) {
  std::string sLow(sLine);
  for (char& ch : sLow) {
    if (ch >= 'A' && ch <= 'Z') ch = static_cast<char>(ch | 0x20);
  }
  for (const std::string_view sWord : {"total", "summe", "razem", "saldo", "gesamt"}) {
    if (sLow.find(sWord) != std::string::npos) return true;
  }
  return false;
}

namespace {

/// No figure at all, and words where figures stand in other rows: names of columns, though they may come again.
bool IsOfWords(const std::vector<ColumnKinds>& kinds, const std::vector<std::u32string_view>& cells) {
  size_t nWords = 0;
  for (size_t i = 0; i < cells.size(); ++i) {
    if (std::any_of(cells[i].begin(), cells[i].end(), IsDigitPlace)) return false;
    if (!kinds[i].IsNumeric() || cells[i].empty()) continue;
    if (IsBlankMark(cells[i])) return false;
    ++nWords;
  }
  return nWords > 1;
}

/// The line ends in front of all columns that hold the figures of rows, of which there are several.
bool EndsBeforeFigures(const std::vector<ColumnKinds>& kinds, size_t nLast) {
  size_t nFigures = 0;
  for (size_t i = 0; i < kinds.size(); ++i) {
    if (!kinds[i].IsNumeric() && !kinds[i].IsDate()) continue;
    if (i < nLast) return false;
    nFigures += kinds[i].Filled() * 5 >= kinds[i].nRows * 4 ? 1U : 0U;
  }
  return nFigures > 1;
}

bool IsRow(const std::vector<ColumnKinds>& kinds, const std::vector<std::u32string_view>& cells, bool bTotal) {
  size_t nLast = cells.size();
  while (nLast > 0 && cells[nLast - 1].empty()) --nLast;
  size_t nFilled = 0;
  size_t nOdd = 0;
  size_t nNumeric = 0;
  size_t nNumericOdd = 0;
  for (size_t i = 0; i < nLast; ++i) {
    // The stars beside the word for a total are no blanks of its columns.
    const bool bStars = bTotal && !cells[i].empty() && IsBlankMark(cells[i]) && !kinds[i].IsMark(cells[i]);
    const bool bUsual = kinds[i].IsUsual(cells[i]) && !bStars;
    nFilled += cells[i].empty() ? 0U : 1U;
    nOdd += bUsual ? 0U : 1U;
    const bool bNumeric = (kinds[i].IsNumeric() || kinds[i].IsDate()) && !cells[i].empty();
    nNumeric += bNumeric ? 1U : 0U;
    nNumericOdd += bNumeric && !bUsual ? 1U : 0U;
  }
  // Values that lack at the end are no more than that, as long as the rest is as in other rows.
  const bool bShort = nLast < cells.size() && (nOdd > 0 || nLast * 3 < cells.size());
  for (size_t i = nLast; i < cells.size() && bShort; ++i) nOdd += kinds[i].IsUsual(cells[i]) ? 0U : 1U;
  if (IsOfWords(kinds, cells) || EndsBeforeFigures(kinds, nLast)) return false;
  size_t nUsual = 0;
  for (const ColumnKinds& kind : kinds) nUsual += kind.Filled();
  if (nFilled * 3 * kinds.front().nRows < nUsual) return false;
  const bool bHeadingLike = nNumeric > 0 && nNumericOdd * 2 > nNumeric;
  return nFilled > 1 && nOdd * 4 <= cells.size() && !bHeadingLike && (nOdd == 0 || !bTotal);
}

}  // namespace

std::vector<size_t> RowsOfKinds(const clsReportSample& report, const clsTableShape& shape,
                                const std::vector<ColumnKinds>& kinds, std::span<const size_t> rows) {
  std::vector<size_t> kept;
  std::vector<std::u32string_view> cells;
  for (const size_t n : rows) {
    shape.Cut(report.Lines()[n].sText, cells);
    if (IsRow(kinds, cells, SaysTotal(report.Lines()[n].sText))) kept.push_back(n);
  }
  return kept;
}

}  // namespace quillon
