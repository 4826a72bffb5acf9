#include "modTidyOfShape.h"

#include <algorithm>

namespace quillon {

namespace {

/// What the cells of a column have in common.
struct ColumnFacts {
  ColumnKinds kinds;
  clsDateForms dates;
  std::map<std::u32string, size_t, std::less<>> odd;  ///< Of a number column: what is none
  bool bLeadingZero = false;
  bool bUnevenDigits = false;
  bool bDecimalComma = false, bPoint = false;

  void Add(std::u32string_view sCell) {
    constexpr size_t kMostOdd = 8;
    kinds.Add(sCell);
    if (sCell.empty()) return;
    dates.Add(sCell);
    const FieldKind kind = KindOfCell(sCell);
    if (kind == FieldKind::Digits) {
      bLeadingZero = bLeadingZero || (sCell.size() > 1 && sCell.front() == U'0');
      return;
    }
    if (kind == FieldKind::Number) {
      LookAtComma(sCell);
    } else if (odd.size() < kMostOdd || odd.contains(sCell)) {
      ++odd[std::u32string(sCell)];
    }
  }

  void LookAtComma(std::u32string_view sCell) {
    const size_t nComma = sCell.rfind(U',');
    const size_t nPoint = sCell.rfind(U'.');
    const size_t nLast = sCell.find_last_of(U"0123456789");
    // 238.406 may be thousands as well.
    const bool bThree = nPoint != std::u32string_view::npos && nPoint > 0 && nPoint <= 3 && nLast == nPoint + 3;
    const bool bPointLast =
        nPoint != std::u32string_view::npos && (nComma == std::u32string_view::npos || nPoint > nComma);
    bPoint = bPoint || (bPointLast && !bThree);
    const bool bLastComma =
        nComma != std::u32string_view::npos && (nPoint == std::u32string_view::npos || nComma > nPoint);
    const bool bThousands = nPoint != std::u32string_view::npos && nPoint < nComma;
    // Thousands are never written as 4197,351.
    size_t nWhole = 0;
    while (bLastComma && nWhole < nComma && IsDigitPlace(sCell[nComma - nWhole - 1])) ++nWhole;
    if (bLastComma && (bThousands || nWhole > 3 || nLast != nComma + 3) && nLast > nComma) bDecimalComma = true;
  }
};

TidyTyping TypeOf(const ColumnFacts& facts, bool bComma) {
  TidyTyping typing;
  const std::string_view sForm = facts.dates.Form();
  if (!sForm.empty()) {
    typing.type = TidyType::Date;
    typing.sDateForm = sForm;
    return typing;
  }
  const bool bOnlyBlankMarks =
      std::all_of(facts.odd.begin(), facts.odd.end(), [](const auto& odd) { return IsBlankMark(odd.first); });
  if (facts.kinds.IsNumeric() && bOnlyBlankMarks && !facts.bLeadingZero) {
    typing.type = TidyType::Number;
    typing.bComma = bComma;
  } else if (!facts.kinds.IsNumeric() || facts.bLeadingZero) {
    typing.type = TidyType::Text;
  }
  return typing;
}

TidyNeed NeedOf(const ColumnFacts& facts, TidyColumn column) {
  TidyNeed need{column, {}};
  const ColumnKinds& kinds = facts.kinds;
  const auto add = [&](TidyKind kind) { need.alternatives.push_back({kind, {}}); };
  if (kinds.IsNumeric()) {
    const bool bDigits = kinds.Count(FieldKind::Number) == 0 && facts.odd.empty() && kinds.nRows > 2;
    add(bDigits ? TidyKind::Digits : TidyKind::Number);
    // A mark that comes again, such as T or M, holds for the next report; a value of one record doesn't.
    constexpr size_t kLongestMark = 4;
    bool bValues = false;
    for (const auto& [sText, nCount] : facts.odd) {
      if (IsBlankMark(sText)) continue;
      bValues = bValues || nCount < 2 || sText.size() > kLongestMark;
      need.alternatives.push_back({TidyKind::Holds, Utf8Of(sText)});
    }
    constexpr size_t kMostOdd = 4;
    if (bValues || need.alternatives.size() > kMostOdd) need.alternatives = {{TidyKind::Any, {}}};
  } else if (!facts.dates.Form().empty()) {
    add(TidyKind::Date);
  } else {
    const bool bLetters = kinds.Count(FieldKind::Letters) == kinds.Filled();
    add(bLetters ? TidyKind::Letters : TidyKind::Any);
  }
  if (kinds.Count(FieldKind::Blank) > 0) add(TidyKind::Blank);
  if (need.alternatives.front().kind == TidyKind::Any && need.alternatives.size() > 1) need.alternatives.clear();
  return need;
}

std::vector<ColumnFacts> FactsOf(const clsReportSample& report, const clsTableShape& shape,
                                 std::span<const size_t> rows) {
  std::vector<ColumnFacts> facts(shape.Columns().size());
  std::vector<std::u32string_view> cells;
  for (const size_t n : rows) {
    shape.Cut(report.Lines()[n].sText, cells);
    for (size_t i = 0; i < cells.size(); ++i) facts[i].Add(cells[i]);
  }
  return facts;
}

void AddBlankMarks(const ColumnFacts& facts, std::vector<std::string>& blanks) {
  if (!facts.kinds.IsNumeric()) return;
  for (const auto& [sText, nCount] : facts.odd) {
    const std::string sMark = Utf8Of(sText);
    if (IsBlankMark(sText) && std::find(blanks.begin(), blanks.end(), sMark) == blanks.end()) blanks.push_back(sMark);
  }
}

}  // namespace

TidyTyping TypingOfValues(const clsReportSample& report, std::span<const std::u32string_view> cells,
                          std::vector<std::string>& blanks) {
  ColumnFacts facts;
  for (const std::u32string_view sCell : cells) facts.Add(sCell);
  AddBlankMarks(facts, blanks);
  return TypeOf(facts, report.HasDecimalComma() || (facts.bDecimalComma && !facts.bPoint));
}

namespace {

TidyPart TidyOfFacts(const clsReportSample& report, const std::vector<ColumnFacts>& facts) {
  TidyPart part;
  bool bComma = false;
  bool bPoint = false;
  for (const ColumnFacts& fact : facts) {
    bComma = bComma || (fact.kinds.IsNumeric() && fact.bDecimalComma);
    bPoint = bPoint || (fact.kinds.IsNumeric() && fact.bPoint);
  }
  // 791,804 beside 18.12.20: those who print dates so have a decimal comma.
  bComma = bComma || std::any_of(facts.begin(), facts.end(), [](const ColumnFacts& fact) {
             return !fact.kinds.IsNumeric() && fact.dates.Form().starts_with("DD.MM");
           });
  for (size_t i = 0; i < facts.size(); ++i) {
    part.types.push_back(TypeOf(facts[i], report.HasDecimalComma() || (bComma && !bPoint)));
    TidyNeed need = NeedOf(facts[i], i);
    if (!need.alternatives.empty()) part.needs.push_back(std::move(need));
    AddBlankMarks(facts[i], part.blanks);
  }
  return part;
}

}  // namespace

TidyPart TidyOfCells(const clsReportSample& report, const std::vector<std::vector<std::u32string_view>>& rows) {
  std::vector<ColumnFacts> facts(rows.empty() ? 0 : rows.front().size());
  for (const std::vector<std::u32string_view>& cells : rows) {
    for (size_t i = 0; i < cells.size(); ++i) facts[i].Add(cells[i]);
  }
  return TidyOfFacts(report, facts);
}

TidyPart TidyOfShape(const clsReportSample& report, const clsTableShape& shape, std::span<const size_t> rows) {
  TidyPart part = TidyOfFacts(report, FactsOf(report, shape, rows));
  std::vector<TidyPlace>& places = part.cut.places.emplace_back();
  for (const ShapeColumn& column : shape.Columns()) {
    const bool bOpen = static_cast<size_t>(column.lPlaceLast) >= clsReportSample::kWidest;
    places.push_back({column.lPlaceFirst + 1, bOpen ? 0 : column.lPlaceLast + 1});
  }
  return part;
}

std::vector<TidyColumn> FilledFromAbove(const clsReportSample& report, const clsTableShape& shape,
                                        std::span<const size_t> rows) {
  constexpr size_t kFewest = 2;
  std::vector<TidyColumn> filled;
  std::vector<std::u32string_view> cells;
  const size_t nColumns = shape.Columns().size();
  for (size_t i = 0; i + 1 < nColumns; ++i) {
    size_t nBlank = 0;
    size_t nTogether = 0;
    bool bFirst = false;
    for (size_t r = 0; r < rows.size(); ++r) {
      shape.Cut(report.Lines()[rows[r]].sText, cells);
      const bool bBlank = cells[i].empty() || cells[i] == U"\"";
      if (r == 0) bFirst = !bBlank;
      nBlank += bBlank ? 1U : 0U;
      nTogether += bBlank && (i == 0 || cells[i - 1].empty() || cells[i - 1] == U"\"" || filled.empty()) ? 1U : 0U;
    }
    // What is printed once a group is a text; a missing number is rather a missing number.
    // Beside one that is filled from above few blanks are enough, as long as none stands alone.
    const bool bBeside = !filled.empty() && nBlank > 0 && !shape.Columns()[i].bFigures;
    const bool bOften = nBlank * 5 >= rows.size() || bBeside;
    const bool bMany = nBlank >= kFewest || (nBlank > 0 && !shape.Columns()[i].bFigures);
    if (!bFirst || !bMany || !bOften || nTogether < nBlank) break;
    filled.push_back(i);
  }
  return filled;
}

}  // namespace quillon
