#include "clsRowMeasure.h"

#include <algorithm>
#include <utility>

#include "modCellTyping.h"
#include "modText.h"

namespace quillon {

namespace {

bool IsBlank(char32_t ch) {
  return ch == U' ' || ch == 0xA0;
}

constexpr std::string_view kDigits = "0123456789";

/// Takes an exponent such as E+02 or D3 off the end of what has a sign in it or a point in front of it: 5D10 is a code.
std::string_view WithoutExponent(std::string_view sText) {
  const size_t nMark = sText.find_last_of("EeDd");
  if (nMark == std::string_view::npos || nMark == 0) return sText;
  std::string_view sPower = sText.substr(nMark + 1);
  const bool bSign = sPower.starts_with('+') || sPower.starts_with('-');
  if (bSign) sPower.remove_prefix(1);
  if (sPower.empty() || sPower.find_first_not_of(kDigits) != std::string_view::npos) return sText;
  const bool bPoint = sText.substr(0, nMark).find('.') != std::string_view::npos;
  return bSign || bPoint ? sText.substr(0, nMark) : sText;
}

/// Addresses such as 10.101.1.27: groups of digits that no thousands make.
bool HasGroupsOfACode(std::string_view sText, char cMark) {
  constexpr size_t kThousand = 3;
  int32_t lMarks = 0;
  bool bLong = false;
  bool bUneven = false;
  for (size_t nMark = sText.find(cMark); nMark != std::string_view::npos; nMark = sText.find(cMark, nMark + 1)) {
    const size_t nDigits = std::min(sText.find_first_not_of(kDigits, nMark + 1), sText.size()) - nMark - 1;
    bLong = bLong || nDigits > kThousand;
    bUneven = bUneven || nDigits != kThousand;
    ++lMarks;
  }
  return (lMarks > 1 && bLong) || (lMarks > 2 && bUneven);
}

/// More letters than those of an exponent, or of CR and DR.
bool HasWords(std::string_view sText) {
  constexpr std::ptrdiff_t kMost = 2;
  return std::count_if(sText.begin(), sText.end(), IsAsciiLetter) > kMost;
}

/// Digits among nothing but what goes with amounts, "CR" and "DR" included: a person would add it up.
bool LooksLikeNumber(std::string_view sText) {
  if (HasWords(sText) || std::none_of(sText.begin(), sText.end(), IsAsciiDigit)) return false;
  sText = WithoutExponent(sText);
  if (HasGroupsOfACode(sText, '.') || HasGroupsOfACode(sText, ',')) return false;
  if (sText.ends_with("CR") || sText.ends_with("DR")) sText.remove_suffix(2);
  if (sText.find_first_of(kDigits) == std::string_view::npos) return false;
  // A date or a code such as 10-11-12 has its separators between digits, a number's sign stands at an end.
  const size_t nMinus = sText.find('-', 1);
  if (nMinus != std::string_view::npos && nMinus + 1 < sText.size()) return false;
  // Digits with a blank behind them and digits again are two numbers, or a code.
  const size_t nBlank = sText.find(' ', sText.find_first_of(kDigits));
  if (nBlank != std::string_view::npos && sText.find_first_of(kDigits, nBlank) != std::string_view::npos) return false;
  return sText.find_first_not_of("0123456789.,' $%()+-*") == std::string_view::npos;
}

std::vector<TidyPlace> PlacesOf(const std::vector<PreviewColumn>& columns) {
  std::vector<TidyPlace> places;
  for (const PreviewColumn& column : columns) {
    // An end of 0 would be an open column.
    if (column.lEnd >= column.lStart) places.push_back({column.lStart, column.lEnd});
  }
  return places;
}

std::vector<bool> TakenCharacters(const std::vector<PreviewColumn>& columns) {
  std::vector<bool> taken;
  for (const PreviewColumn& column : columns) {
    if (column.lStart < 1 || column.lEnd < column.lStart) continue;
    taken.resize(std::max(taken.size(), static_cast<size_t>(column.lEnd)));
    std::fill(taken.begin() + column.lStart - 1, taken.begin() + column.lEnd, true);
  }
  return taken;
}

}  // namespace

clsRowMeasure::clsRowMeasure(const std::vector<PreviewColumn>& columns, clsCutMeasure::Touching touching)
    : measure_(PlacesOf(columns), touching) {}

void clsRowMeasure::Measure(PreviewRow& row, ReportPreview& preview) {
  const CharacterLoss& loss = measure_.Text(row.sText, row.lLine);
  row.lLeftOut = loss.Characters();
  row.lBehind = loss.lBehind;
  row.cuts = measure_.Cuts();
  ++preview.lRows;
}

void clsRowMeasure::Finish(ReportPreview& preview) const {
  const CharacterLoss loss = measure_.Loss();
  preview.lLeftOut = loss.Characters();
  preview.lBehind = loss.lBehind;
  preview.lCuts = loss.lCuts;
  preview.lFirstLossLine = loss.lFirstLine;
}

std::string LossMarks(const PreviewRow& row, const std::vector<PreviewColumn>& columns) {
  if (row.lLeftOut == 0 && row.cuts.empty()) return {};
  const std::vector<bool> taken = TakenCharacters(columns);
  std::string sMarks;
  for (size_t i = 0; i < row.sText.size();) {
    const bool bTaken = sMarks.size() < taken.size() && taken[sMarks.size()];
    sMarks += IsBlank(DecodeUtf8(row.sText, i)) || bTaken ? ' ' : '!';
  }
  for (const int32_t lCut : row.cuts) sMarks[static_cast<size_t>(lCut) - 1] = '^';
  sMarks.resize(sMarks.find_last_not_of(' ') + 1);
  return sMarks;
}

void CountCell(std::string_view sCell, int64_t lLine, CellCensus& census) {
  static const CellTypingOptions kOptions{.bDayFirst = LocaleIsDayFirst()};
  static const ColumnRule kRule = RuleAlone(kOptions);
  std::string sScratch;
  const std::string_view sText = TrimBlanks(sCell);
  switch (TypeCell(sText, kOptions, kRule, sScratch).kind) {
    case CellKind::Empty:
      ++census.lEmpty;
      return;
    case CellKind::Number:
      ++census.lNumbers;
      return;
    case CellKind::Date:
      ++census.lDates;
      return;
    case CellKind::Text:
      break;
    default:
      ++census.lOthers;
      return;
  }
  ++census.lTexts;
  if (!LooksLikeNumber(sText)) return;
  if (census.lLikeNumbers++ > 0) return;
  census.lLikeNumberLine = lLine;
  census.sLikeNumber = sText;
}

}  // namespace quillon
