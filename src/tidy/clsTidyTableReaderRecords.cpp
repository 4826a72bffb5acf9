// Records of clsTidyTableReader: what is added to them, and their end.

#include <algorithm>

#include "clsTidyTableReader.h"
#include "modTidyText.h"
#include "modTidyValues.h"

namespace quillon {

void clsTidyTableReader::Append(std::string& sValue, std::string_view sPiece) {
  if (sPiece.empty()) return;
  if (!sValue.empty()) sValue += ' ';
  sValue += sPiece;
}

/// To a text that means nothing there is nothing to add, so the piece takes its place.
void clsTidyTableReader::AddTo(Open& open, size_t nValue, std::string_view sPiece) {
  std::string& sValue = open.values[nValue];
  if (!sPiece.empty() && nValue < cutter_.Columns() && IsTidyBlank(sValue, table_.row.blanks)) sValue.clear();
  Append(sValue, sPiece);
}

bool clsTidyTableReader::IsOpen() const {
  return std::any_of(open_.begin(), open_.end(), [](const Open& open) { return open.bOpen; });
}

/// A further line that is known by nothing but how far below the row it stands.
bool clsTidyTableReader::AddByDistance(int64_t lLine) {
  if (byDistance_.empty()) return false;
  // Records of one line are open together.
  const auto open = std::find_if(open_.begin(), open_.end(), [](const Open& record) { return record.bOpen; });
  if (open == open_.end() || lLine - open->lLine >= static_cast<int64_t>(byDistance_.size())) return false;
  const size_t nPart = byDistance_[static_cast<size_t>(lLine - open->lLine)];
  if (nPart == kNoPart) return false;
  further_[nPart].Cut(line_);
  AddFurther(nPart, lLine);
  return true;
}

bool clsTidyTableReader::AddByShape(int64_t lLine) {
  if (table_.lines.empty() || !IsOpen()) return false;
  for (size_t k = 0; k < table_.lines.size(); ++k) {
    if (table_.lines[k].IsByDistance() || !further_[k].Reads(line_)) continue;
    AddFurther(k, lLine);
    return true;
  }
  return false;
}

void clsTidyTableReader::AddFurther(size_t nPart, int64_t lLine) {
  for (size_t nGroup = 0; nGroup < further_[nPart].Groups() && nGroup < open_.size(); ++nGroup) {
    Open& open = open_[nGroup];
    if (!open.bOpen) continue;
    open.lLastLine = lLine;
    const auto& cells = further_[nPart].Cells(nGroup);
    for (TidyColumn column = 0; column < cells.size(); ++column) {
      const size_t nTarget = columns_.TargetOf(nPart, column);
      if (nTarget == clsTidyColumns::kNowhere || IsTidyBlank(cells[column], table_.lines[nPart].part.blanks)) continue;
      AddTo(open, nTarget, cells[column]);
    }
  }
}

/// A line with text in the column of the levels alone. A wrapped one takes what waits above it.
bool clsTidyTableReader::OpensLevel(int64_t lLine) {
  if (table_.levelColumn == kNoTidyColumn || table_.bLevelRows) return false;
  auto& cells = cells_[0];
  cutter_.Cut(line_, 0, cells);
  for (TidyColumn column = 0; column < cells.size(); ++column) {
    if (cells[column].empty() == (column == table_.levelColumn)) return false;
  }
  const std::string_view sCell = cells[table_.levelColumn];
  if (table_.join == TidyJoin::Down && !sCell.ends_with(':')) return false;
  nFrontIndent_ = IndentOf(sCell);
  GatherWaiting();
  Append(sInFront_, WithoutLeader(sCell));
  ReleaseWaiting(true);
  EndJoin();
  Flush();
  levels_.Open(nFrontIndent_, sInFront_, lLine);
  return true;
}

bool clsTidyTableReader::JoinUp(int64_t lLine) {
  if (table_.join != TidyJoin::Up || bJoinEnded_ || !IsOpen()) return false;
  for (size_t nGroup = 0; nGroup < open_.size(); ++nGroup) {
    Open& open = open_[nGroup];
    if (!open.bOpen) continue;
    open.lLastLine = lLine;
    if (table_.joinColumn != kNoTidyColumn) {
      AddTo(open, table_.joinColumn, TrimBlanks(line_.Text()));
      continue;
    }
    if (cutter_.IsSplit()) {
      Append(open.sWhole, TrimBlanks(line_.Text()));
      continue;
    }
    cutter_.Cut(line_, nGroup, cells_[nGroup]);
    for (TidyColumn column = 0; column < cells_[nGroup].size(); ++column) {
      AddTo(open, column, cells_[nGroup][column]);
    }
  }
  return true;
}

/// True for a line that may go in front of the row below: it stands wholly under that row's first text column.
bool clsTidyTableReader::WaitForRow() {
  if (table_.join != TidyJoin::Down) return false;
  const auto [nFrom, nEnd] = cutter_.Range(downColumn_);
  const size_t nFirst = IndentOf(TrimLeftBlanks(line_.Text()));
  bWaits_ = nFirst >= nFrom && line_.Size() <= nEnd;
  return bWaits_;
}

void clsTidyTableReader::EndLongGroup(int64_t lLine) {
  if (waiting_.size() > static_cast<size_t>(clsTidyReport::kMaxGroup)) {
    listener_.GroupTooLong(nTable_, lLine);
    EndJoin();
  }
  if (!bKeeps_) return;
  for (const Open& open : open_) {
    if (!open.bOpen || lLine - open.lLine < clsTidyReport::kMaxGroup) continue;
    // Nothing was added for long: the record was at its end anyhow.
    if (lLine - open.lLastLine < clsTidyReport::kMaxGroup / 2) listener_.GroupTooLong(nTable_, lLine);
    bJoinEnded_ = true;
    return Flush();
  }
}

void clsTidyTableReader::Flush() {
  if (!bKeeps_) return;
  for (Open& open : open_) {
    if (open.bOpen) Finish(open);
  }
}

void clsTidyTableReader::Finish(Open& open) {
  open.bOpen = false;
  const bool bSplitsAtEnd = cutter_.IsSplit() && open.lLastLine > open.lLine && table_.join == TidyJoin::Up &&
                            table_.joinColumn == kNoTidyColumn;
  values_.resize(columns_.Values());
  for (size_t i = 0; i < values_.size(); ++i) values_[i] = open.values[i];
  if (bSplitsAtEnd) {
    // The cells of the line in hand are still needed.
    cutter_.Split(open.sWhole, pieces_);
    for (TidyColumn column = 0; column < pieces_.size(); ++column) {
      if (!pieces_[column].empty()) values_[column] = pieces_[column];
    }
  }
  record_.lLine = open.lLine;
  record_.lLastLine = open.lLastLine;
  Build(record_, values_, false);
  CountMisfits(record_);
  listener_.Record(record_);
}

void clsTidyTableReader::Build(TidyRecord& record, std::span<const std::string_view> values, bool bMatched) {
  const auto& columns = columns_.All();
  record.nTable = nTable_;
  record.cells.resize(columns.size());
  plains_.resize(columns.size());
  for (size_t i = 0; i < columns.size(); ++i) {
    const TidyColumnInfo& column = columns[i];
    TidyCell& cell = record.cells[i];
    if (column.source == TidySource::Heading) {
      // Stays as it was filled in until another value comes.
      if (bHeadingsNew_) cell = headings_.Cell(column.nPart, column.column);
      continue;
    }
    if (column.source == TidySource::Level) {
      const std::string_view sText = levels_.Text(column.nPart);
      cell = {sText.empty() ? TidyCellKind::Empty : TidyCellKind::Text, sText, sText, {}};
      continue;
    }
    const size_t nValue = columns_.ValueOf(i);
    const std::string_view sValue = nValue < values.size() ? values[nValue] : std::string_view();
    if (bMatched && column.source == TidySource::Row && column.typing.type == TidyType::Number) {
      if (const clsTidyMatcher::Known* const pKnown = matcher_.KnownNumber(column.column, sValue); pKnown != nullptr) {
        cell.kind = TidyCellKind::Number;
        cell.sPrinted = sValue;
        cell.sPlain = pKnown->sPlain;
        cell.number = pKnown->number;
        continue;
      }
    }
    if (sValue.empty()) {
      cell = {};
      continue;
    }
    const auto& blanks = column.source == TidySource::Row ? table_.row.blanks : table_.lines[column.nPart].part.blanks;
    cell = TypeTidyCell(sValue, column.typing, blanks, plains_[i]);
  }
  bHeadingsNew_ = false;
}

void clsTidyTableReader::CountMisfits(const TidyRecord& record) {
  for (size_t i = 0; i < record.cells.size(); ++i) {
    if (record.cells[i].kind != TidyCellKind::Misfit || state_.lMisfits++ > 0) continue;
    state_.lMisfitLine = record.lLine;
    state_.sMisfit.assign(record.cells[i].sPrinted);
    state_.nMisfitColumn = i;
    const TidyColumnInfo& column = columns_.All()[i];
    state_.sMisfitColumn = column.sName.empty() ? TidyColumnLetters(column.column) : column.sName;
  }
}

}  // namespace quillon
