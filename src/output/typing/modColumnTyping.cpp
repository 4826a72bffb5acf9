#include "modColumnTyping.h"

#include <algorithm>

#include "clsCellRanges.h"
#include "modNumberTyping.h"
#include "modSettledCell.h"
#include "modText.h"

namespace quillon {

void clsColumnFacts::NoteOther(std::string_view sText) {
  const size_t nStart = sText.find_first_not_of(' ');
  if (nStart == std::string_view::npos || (sText[nStart] > '9' && sText[nStart] <= '~')) return;
  sText = sText.substr(nStart, sText.find_last_not_of(' ') + 1 - nStart);
  switch (LikenessOf(sText)) {
    case NumberLikeness::Code:
      bCodes_ = true;
      return;
    case NumberLikeness::Unshown:
      bUnshown_ = true;
      return;
    case NumberLikeness::PointBehind:
      bPoints_ = true;
      return;
    case NumberLikeness::None:
      break;
  }
  const DateLikeness date = DateLikenessOf(sText);
  if (date.nForm < 0) return;
  Shape& shape = shapes_[static_cast<size_t>(date.nForm)];
  shape.bSeen = true;
  shape.bMonthFirst &= date.bMonthFirst;
  shape.bDayFirst &= date.bDayFirst;
  shape.bYearFirst &= date.bYearFirst;
}

DateReading clsColumnFacts::Shape::Decide(DateReading alone, bool bPoints, const CellTypingOptions& options) const {
  const auto Fits = [this](DateReading reading) {
    return reading == DateReading::MonthFirst ? bMonthFirst : reading == DateReading::DayFirst ? bDayFirst : bYearFirst;
  };
  if (alone == DateReading::YearFirst || options.order != DateOrder::ByColumn)
    return alone != DateReading::None && Fits(alone) ? alone : DateReading::None;
  // A day above 12 decides; else the order that is usual here.
  if (bDayFirst != bMonthFirst)
    return bDayFirst ? DateReading::DayFirst : bPoints ? DateReading::None : DateReading::MonthFirst;
  return bDayFirst ? alone : DateReading::None;
}

ColumnRule clsColumnFacts::Decide(const ColumnRule& alone, const CellTypingOptions& options) const {
  ColumnRule rule = alone;
  rule.bDigitsAreText = bDigits_ && bCodes_;
  rule.bNumbersAreText = bNumbers_ && bUnshown_;
  rule.bPointsAreNumbers = bNumbers_ && bPoints_ && !rule.bNumbersAreText;
  for (size_t nForm = 0; nForm < kDateForms; ++nForm)
    if (shapes_[nForm].bSeen) rule.dates[nForm] = shapes_[nForm].Decide(alone.dates[nForm], nForm % 3 == 2, options);
  return rule;
}

bool clsColumnFacts::OrderIsOpen(const ColumnRule& rule) const {
  for (size_t nForm = 0; nForm < kDateForms; ++nForm) {
    const Shape& shape = shapes_[nForm];
    if (shape.bSeen && shape.bDayFirst && shape.bMonthFirst && rule.dates[nForm] != DateReading::None) return true;
  }
  return false;
}

void clsSheetTyping::BeginTable(int64_t nLastRow) {
  if (tables_.empty()) tables_.emplace_back();
  if (nLastRow < tables_.back().nFirstRow) return;
  tables_.emplace_back().nFirstRow = nLastRow + 1;
  nNotedRow_ = 0;
}

size_t clsSheetTyping::TableOf(int64_t nRow) const {
  size_t nTable = tables_.size() - 1;
  while (nTable > 0 && tables_[nTable].nFirstRow > nRow) --nTable;
  return nTable;
}

clsColumnFacts& clsSheetTyping::FactsOf(int64_t nRow, int nColumn) {
  if (tables_.empty()) tables_.emplace_back();
  if (nRow != nNotedRow_) {
    nNotedRow_ = nRow;
    nCurrent_ = TableOf(nRow);
  }
  std::vector<clsColumnFacts>& facts = tables_[nCurrent_].facts;
  if (facts.size() < static_cast<size_t>(nColumn)) facts.resize(static_cast<size_t>(nColumn));
  return facts[static_cast<size_t>(nColumn) - 1];
}

void clsSheetTyping::NoteAll(clsCellStore& cells) {
  std::vector<StoredCell> row;
  std::string sScratch;
  for (int64_t nRow = cells.Range().nTop; nRow <= cells.LastRow(); ++nRow) {
    cells.Row(nRow, row);
    for (const StoredCell& cell : row) {
      const TypedCell typed = TypeCell(cell.sText, options_, alone_, sScratch);
      Note(nRow, cell.nColumn, typed, cell.sText);
      if (typed.kind == CellKind::Empty) continue;
      Include(used_, {nRow, cell.nColumn, nRow, cell.nColumn});
      if (typed.kind == CellKind::Formula) continue;
      const auto nIndex = static_cast<size_t>(cell.nColumn) - 1;
      if (widths_.size() <= nIndex) widths_.resize(nIndex + 1);
      if (cell.sText.size() <= widths_[nIndex]) continue;
      const std::string_view sShown = ShownOf(cell.sText);
      const size_t nChars = CharCount(typed.kind == CellKind::Text ? sShown : TrimBlanks(sShown));
      widths_[nIndex] = static_cast<uint8_t>(std::clamp<size_t>(nChars, widths_[nIndex], kMaxWidth));
    }
  }
}

bool clsSheetTyping::Decide() {
  bool bDiffers = false;
  for (Table& table : tables_) {
    table.rules.clear();
    for (const clsColumnFacts& facts : table.facts) table.rules.push_back(facts.Decide(alone_, options_));
    bDiffers |=
        std::any_of(table.rules.begin(), table.rules.end(), [&](const auto& rule) { return !(rule == alone_); });
  }
  return bDiffers;
}

bool clsSheetTyping::OrderIsOpen() const {
  if (options_.order != DateOrder::ByColumn) return false;
  for (const Table& table : tables_)
    for (size_t i = 0; i < table.rules.size(); ++i)
      if (table.facts[i].OrderIsOpen(table.rules[i])) return true;
  return false;
}

const ColumnRule& clsSheetTyping::RuleOf(int64_t nRow, int nColumn) const {
  if (tables_.empty()) return alone_;
  const std::vector<ColumnRule>& rules = tables_[TableOf(nRow)].rules;
  return static_cast<size_t>(nColumn) <= rules.size() ? rules[static_cast<size_t>(nColumn) - 1] : alone_;
}

}  // namespace quillon
