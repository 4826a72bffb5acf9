#include "clsTidySheet.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillon {

const clsTidySheet::Table* clsTidySheet::Find(size_t nTable) const {
  const auto found = placeOf_.find(nTable);
  return found == placeOf_.end() ? nullptr : &tables_[found->second];
}

clsTidySheet::Table* clsTidySheet::Find(size_t nTable) {
  return const_cast<Table*>(std::as_const(*this).Find(nTable));
}

/// A column takes the place of the first one of its name that this table hasn't used yet.
void clsTidySheet::SetColumns(size_t nTable, const std::vector<TidyColumnInfo>& columns) {
  Table* const table = Find(nTable);
  if (table == nullptr || !table->columns.empty()) return;
  std::multimap<std::string, size_t> free;
  for (size_t i = 0; i < names_.size(); ++i) free.emplace(names_[i], i);
  for (const TidyColumnInfo& column : columns) {
    table->types.push_back(column.typing);
    if (const auto known = free.find(column.sName); known != free.end()) {
      table->bInOrder = table->bInOrder && known->second == table->columns.size();
      table->columns.push_back(known->second);
      free.erase(known);
      continue;
    }
    table->bInOrder = table->bInOrder && names_.size() == table->columns.size();
    table->columns.push_back(names_.size());
    names_.push_back(column.sName);
  }
}

void clsTidySheet::Begins(size_t nTable, int64_t lLine) {
  if (tables_.size() == 1) return;
  Table* const table = Find(nTable);
  if (table == nullptr) return;
  Closes(*table);
  table->lOpen = lLine;
  open_.insert(lLine);
}

void clsTidySheet::Closes(Table& table) {
  if (table.lOpen > 0) open_.erase(open_.find(table.lOpen));
  table.lOpen = 0;
}

bool clsTidySheet::WriteHeading() {
  if (bHeadingDone_) return true;
  bHeadingDone_ = true;
  const bool bNamed = std::any_of(names_.begin(), names_.end(), [](const std::string& s) { return !s.empty(); });
  return !bNamed || output_->Heading(names_);
}

bool clsTidySheet::End() {
  return WriteHeading();
}

bool clsTidySheet::Write(const std::vector<TidyOutCell>& cells) {
  if (!WriteHeading()) return false;
  ++lRows_;
  return output_->Row(cells);
}

bool clsTidySheet::WritePlain(const TidyRecord& record) {
  if (!bHeadingDone_ && !WriteHeading()) return false;
  ++lRows_;
  return output_->PlainRow(record.cells);
}

void clsTidySheet::Place(const Table& table, const TidyRecord& record) {
  // A table that has all columns of its sheet leaves none of the row before.
  if (cells_.size() != names_.size() || table.columns.size() != names_.size()) cells_.assign(names_.size(), {});
  for (size_t i = 0; i < record.cells.size() && i < table.columns.size(); ++i) {
    const TidyCell& cell = record.cells[i];
    TidyOutCell& out = cells_[table.columns[i]];
    out.kind = cell.kind;
    out.pTyping = &table.types[i];
    out.sPrinted = cell.sPrinted;
    out.sPlain = cell.sPlain;
  }
}

bool clsTidySheet::Put(const TidyRecord& record) {
  Table* const table = tables_.size() == 1 ? &tables_.front() : Find(record.nTable);
  if (table == nullptr) return true;
  const bool bWhole = table->bInOrder && record.cells.size() == names_.size();
  if (tables_.size() == 1 && bWhole && output_->TakesPlainRows()) return WritePlain(record);
  Place(*table, record);
  if (tables_.size() == 1) return Write(cells_);
  Closes(*table);
  std::vector<KeptCell> kept;
  for (const TidyOutCell& cell : cells_) {
    kept.push_back({cell.kind, cell.pTyping, std::string(cell.sPrinted), std::string(cell.sPlain)});
  }
  kept_.emplace(record.lLine, std::move(kept));
  return true;
}

bool clsTidySheet::Release(bool bAll) {
  if (kept_.empty()) return true;
  int64_t lSafe = bAll ? std::numeric_limits<int64_t>::max() : lPassed_;
  if (!bAll && !open_.empty()) lSafe = std::min(lSafe, *open_.begin() - 1);
  while (!kept_.empty() && kept_.begin()->first <= lSafe) {
    cells_.clear();
    for (const KeptCell& cell : kept_.begin()->second) {
      cells_.push_back({cell.kind, cell.pTyping, cell.sPrinted, cell.sPlain});
    }
    if (!Write(cells_)) return false;
    kept_.erase(kept_.begin());
  }
  return true;
}

}  // namespace quillon
