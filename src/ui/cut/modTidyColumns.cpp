#include "modTidyColumns.h"

#include <algorithm>

namespace quillon {

namespace {

/// Names and types for each column, so that they can be moved together.
void Spread(TidyPart& part) {
  const size_t nColumns = part.ColumnCount();
  const bool bNamed =
      std::any_of(part.names.begin(), part.names.end(), [](const std::string& s) { return !s.empty(); });
  std::vector<std::string> names = part.ColumnNames();
  for (size_t i = part.types.size(); i < nColumns; ++i) part.types.push_back(part.otherTypes);
  part.otherTypes = {};
  part.names = bNamed ? std::move(names) : std::vector<std::string>();
}

/// What a column's index becomes; kNoTidyColumn for one that goes.
template <typename NewIndex>
void MoveIndexes(TidyTable& table, NewIndex newIndex) {
  std::vector<TidyNeed> needs;
  for (TidyNeed& need : table.row.needs) {
    need.column = newIndex(need.column);
    if (need.column != kNoTidyColumn) needs.push_back(std::move(need));
  }
  table.row.needs = std::move(needs);
  for (TidyColumn& column : table.fills) column = newIndex(column);
  std::erase(table.fills, kNoTidyColumn);
  for (TidyColumn* const pColumn : {&table.joinColumn, &table.levelColumn}) {
    if (*pColumn != kNoTidyColumn) *pColumn = newIndex(*pColumn);
  }
}

void InsertColumn(TidyTable& table, size_t nAt, const TidyTyping& typing) {
  MoveIndexes(table, [nAt](TidyColumn column) { return column >= nAt ? column + 1 : column; });
  TidyPart& row = table.row;
  row.types.insert(row.types.begin() + static_cast<ptrdiff_t>(nAt), typing);
  if (!row.names.empty()) row.names.insert(row.names.begin() + static_cast<ptrdiff_t>(nAt), std::string());
}

void EraseColumn(TidyTable& table, size_t nAt) {
  MoveIndexes(table, [nAt](TidyColumn column) {
    return column == nAt ? kNoTidyColumn : column > nAt ? column - 1 : column;
  });
  TidyPart& row = table.row;
  row.types.erase(row.types.begin() + static_cast<ptrdiff_t>(nAt));
  if (!row.names.empty()) row.names.erase(row.names.begin() + static_cast<ptrdiff_t>(nAt));
}

}  // namespace

bool CanMoveColumns(const TidyTable& table) {
  if (table.row.cut.places.size() != 1) return false;
  int32_t nDone = 0;
  for (const TidyPlace& place : table.row.cut.places.front()) {
    if (nDone < 0 || place.nStart <= nDone) return false;
    nDone = place.nEnd > 0 ? place.nEnd : -1;
  }
  return true;
}

void ChangeColumns(TidyTable& table, const CutChange& change) {
  Spread(table.row);
  std::vector<TidyPlace>& places = table.row.cut.places.front();
  const bool bOpen = !places.empty() && places.back().nEnd == 0;
  const size_t nField = change.nField;
  if (change.step == CutStep::Split) InsertColumn(table, nField + 1, table.row.types[nField]);
  if (change.step == CutStep::Insert) InsertColumn(table, nField, {});
  if (change.step == CutStep::Merge) EraseColumn(table, nField + 1);
  if (change.step == CutStep::Remove) EraseColumn(table, nField);
  places.clear();
  for (const CutField& field : change.fields) places.push_back({field.lStart, field.lEnd});
  // An open column stays open unless its right edge was what the hand moved.
  const bool bMoved = !places.empty() && change.step != CutStep::Merge && change.lAfter == places.back().nEnd;
  if (bOpen && !bMoved && !places.empty()) places.back().nEnd = 0;
}

TidyPart& PartOf(TidyTable& table, const PointedColumn& column) {
  if (column.part == ColumnSource::Heading) return table.headings[column.nPart];
  return column.part == ColumnSource::Further ? table.lines[column.nPart].part : table.row;
}

void NameColumn(TidyTable& table, const PointedColumn& column, std::string_view sName) {
  TidyPart& part = PartOf(table, column);
  std::vector<std::string> names = part.ColumnNames();
  names.resize(std::max(part.ColumnCount(), column.column + 1));
  names[column.column] = sName;
  part.names = std::move(names);
}

void TypeColumn(TidyTable& table, const PointedColumn& column, const TidyTyping& typing) {
  TidyPart& part = PartOf(table, column);
  Spread(part);
  part.types.resize(std::max(part.types.size(), column.column + 1));
  part.types[column.column] = typing;
}

void FillColumn(TidyTable& table, TidyColumn column, bool bFill) {
  std::erase(table.fills, column);
  if (bFill) table.fills.push_back(column);
  std::sort(table.fills.begin(), table.fills.end());
}

}  // namespace quillon
