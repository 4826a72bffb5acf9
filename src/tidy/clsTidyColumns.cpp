#include "clsTidyColumns.h"

#include <algorithm>
#include <map>

namespace quillon {

namespace {

constexpr std::string_view kPrinted = "^";
constexpr size_t kMostNameLines = 3;

}  // namespace

clsTidyColumns::clsTidyColumns(const TidyTable& table, const clsTidyCutter& cutter) : nValues_(cutter.Columns()) {
  AddHeadings(table);
  AddRow(table, cutter);
  AddFurther(table);
  printed_.resize(cutter.Columns());
}

void clsTidyColumns::AddHeadings(const TidyTable& table) {
  for (size_t k = 0; k < table.headings.size(); ++k) {
    const TidyPart& part = table.headings[k];
    const std::vector<std::string> names = part.ColumnNames();
    for (TidyColumn column = 0; column < names.size(); ++column) {
      if (part.TypeOf(column).type == TidyType::Skip) continue;
      columns_.push_back({TidySource::Heading, k, column, names[column], part.TypeOf(column), 0, 0});
    }
  }
  valueOf_.resize(columns_.size());
}

void clsTidyColumns::AddRow(const TidyTable& table, const clsTidyCutter& cutter) {
  const std::vector<std::string> names = table.row.ColumnNames();
  const bool bAllPrinted = table.row.names.size() == 1 && table.row.names[0] == kPrinted;
  for (TidyColumn column = 0; column < names.size(); ++column) {
    if (column == table.levelColumn) {
      for (size_t i = 0; i < table.levelNames.size(); ++i) {
        columns_.push_back({TidySource::Level, i, i, table.levelNames[i], {TidyType::Text, false, 0, {}}, 0, 0});
        valueOf_.push_back(kNowhere);
      }
    }
    if (table.row.TypeOf(column).type == TidyType::Skip) continue;
    const auto [nFrom, nEnd] = cutter.Range(column);
    TidyColumnInfo info{TidySource::Row, 0, column, bAllPrinted ? std::string(kPrinted) : names[column],
                        table.row.TypeOf(column)};
    if (nEnd != 0) info.nStart = static_cast<int32_t>(nFrom) + 1;
    if (nEnd != clsTidyCutter::kOpen) info.nEnd = static_cast<int32_t>(nEnd);
    bNamesAbove_ = bNamesAbove_ || info.sName == kPrinted;
    columns_.push_back(std::move(info));
    valueOf_.push_back(column);
  }
}

void clsTidyColumns::AddFurther(const TidyTable& table) {
  std::map<std::string, size_t> values;
  for (size_t i = 0; i < columns_.size(); ++i) {
    if (columns_[i].source == TidySource::Row && !columns_[i].sName.empty())
      values.emplace(columns_[i].sName, valueOf_[i]);
  }
  for (size_t k = 0; k < table.lines.size(); ++k) {
    const TidyPart& part = table.lines[k].part;
    const std::vector<std::string> names = part.ColumnNames();
    auto& targets = targets_.emplace_back(names.size(), kNowhere);
    for (TidyColumn column = 0; column < names.size(); ++column) {
      if (part.TypeOf(column).type == TidyType::Skip) continue;
      const auto known = values.find(names[column]);
      if (known != values.end() && !names[column].empty()) {
        targets[column] = known->second;
        continue;
      }
      targets[column] = nValues_;
      if (!names[column].empty()) values.emplace(names[column], nValues_);
      columns_.push_back({TidySource::Further, k, column, names[column], part.TypeOf(column), 0, 0});
      valueOf_.push_back(nValues_++);
    }
  }
}

void clsTidyColumns::NoteLine(const clsTidyLine& line) {
  if (!bNamesAbove_) return;
  if (line.IsBlank() || line.IsDrawn()) {
    bBlockEnded_ = true;
    return;
  }
  if (bBlockEnded_) block_.clear();
  bBlockEnded_ = false;
  if (block_.size() == kMostNameLines) block_.erase(block_.begin());
  block_.emplace_back(line.Text());
}

void clsTidyColumns::AddPiece(const clsTidyCutter& cutter, size_t nFrom, size_t nEnd, std::string_view sPiece) {
  TidyColumn best = kNoTidyColumn;
  size_t nMost = 0;
  for (TidyColumn column = 0; column < printed_.size(); ++column) {
    const auto [nStart, nStop] = cutter.Range(column);
    const size_t nLeft = std::max(nFrom, nStart);
    const size_t nRight = std::min(nEnd, nStop);
    if (nRight <= nLeft || nRight - nLeft <= nMost) continue;
    nMost = nRight - nLeft;
    best = column;
  }
  if (best == kNoTidyColumn) return;
  if (!printed_[best].empty()) printed_[best] += ' ';
  printed_[best] += sPiece;
}

void clsTidyColumns::TakeNames(const clsTidyCutter& cutter) {
  if (!bNamesAbove_) return;
  for (const std::string& sLine : block_) {
    clsTidyLine line;
    line.Set(sLine);
    for (size_t n = 0; n < line.Size();) {
      if (line.IsBlankAt(n)) {
        ++n;
        continue;
      }
      size_t nEnd = n;
      while (nEnd < line.Size() && !(line.IsBlankAt(nEnd) && line.IsBlankAt(nEnd + 1))) ++nEnd;
      AddPiece(cutter, n, nEnd, line.Piece(n, nEnd));
      n = nEnd;
    }
  }
  for (TidyColumnInfo& column : columns_) {
    if (column.source == TidySource::Row && column.sName == kPrinted) column.sName = printed_[column.column];
  }
  bNamesAbove_ = false;
}

}  // namespace quillon
