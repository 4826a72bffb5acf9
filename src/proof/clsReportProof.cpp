#include "clsReportProof.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>

#include "modText.h"
#include "modTidyText.h"

namespace quillon {

namespace {

constexpr size_t kRow = static_cast<size_t>(-1);

/// A number in plain form, "-1234.50". Nothing if no integer of 64 bits holds it.
TidyNumber PlainNumber(std::string_view sPlain) {
  constexpr size_t kMostDigits = 18;
  TidyNumber number;
  const bool bMinus = sPlain.starts_with('-');
  size_t nDigits = 0;
  bool bPoint = false;
  for (const char c : sPlain.substr(bMinus ? 1 : 0)) {
    if (c == '.' && !bPoint) {
      bPoint = true;
      continue;
    }
    if (!IsAsciiDigit(c) || ++nDigits > kMostDigits) return number;
    number.nValue = number.nValue * 10 + (c - '0');
    number.nDecimals += bPoint ? 1 : 0;
  }
  if (bMinus) number.nValue = -number.nValue;
  number.bScaled = nDigits > 0;
  return number;
}

bool MaySum(const TidyTyping& typing) {
  return typing.type == TidyType::Number || typing.type == TidyType::Auto;
}

std::vector<ProofColumn> ProofColumns(const std::vector<TidyColumnInfo>& columns) {
  std::vector<ProofColumn> found;
  for (const TidyColumnInfo& column : columns) {
    ProofColumn& proof = found.emplace_back();
    proof.sName = column.sName;
    if (column.source != TidySource::Row) continue;
    proof.nStart = column.nStart;
    proof.nEnd = column.nEnd;
    proof.bNumber = MaySum(column.typing);
    proof.typing = column.typing;
  }
  return found;
}

}  // namespace

void ReportProof::Add(const ReportProof& other) {
  constexpr size_t kEnough = 10;
  for (size_t i = 0; i < lines.size(); ++i) lines[i] += other.lines[i];
  loss.Add(other.loss);
  lTotalsAgree += other.lTotalsAgree;
  lTotalsLastDigit += other.lTotalsLastDigit;
  lTotalsDisagree += other.lTotalsDisagree;
  lLikeRows += other.lLikeRows;
  for (size_t i = 0; i < other.totals.size() && totals.size() < kEnough; ++i) totals.push_back(other.totals[i]);
}

clsReportProof::clsReportProof(const std::vector<TidyTable>& tables, clsPrintedTotals::Limits limits)
    : tidy_(tables), limits_(limits), tables_(tables.size()) {}

void clsReportProof::TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) {
  const TidyTable& tidy = tidy_[nTable];
  Table& table = tables_[nTable];
  table.bStarted = true;
  table.bProof = tidy.bProof;
  table.columns = columns;
  table.nHeadings = tidy.headings.size();
  for (size_t i = 0; i < columns.size(); ++i) {
    const bool bFilled = columns[i].source == TidySource::Row &&
                         std::find(tidy.fills.begin(), tidy.fills.end(), columns[i].column) != tidy.fills.end();
    if (bFilled || columns[i].source == TidySource::Level) table.groupColumns.push_back(i);
  }
  table.groupValues.resize(table.groupColumns.size());
  table.totals.emplace_back(ProofColumns(columns), tidy.totals, limits_);
  table.profile.emplace_back(ProofColumns(columns));
}

void clsReportProof::HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) {
  events_.push_back({lLine, nTable, nHeading, 0, 0});
}

void clsReportProof::QueueGroups(Table& table, const TidyRecord& row) {
  std::optional<size_t> nChanged;
  for (size_t i = 0; i < table.groupColumns.size(); ++i) {
    const size_t nHash = std::hash<std::string_view>()(row.cells[table.groupColumns[i]].sPlain);
    if (nHash == table.groupValues[i]) continue;
    table.groupValues[i] = nHash;
    if (!nChanged) nChanged = i;
  }
  if (nChanged) events_.push_back({row.lLine, row.nTable, table.nHeadings + *nChanged, 0, 0});
}

void clsReportProof::QueueNumbers(const Table& table, const TidyRecord& row) {
  const size_t nFirst = numbers_.size();
  for (size_t i = 0; i < row.cells.size() && i < table.columns.size(); ++i) {
    const TidyColumnInfo& column = table.columns[i];
    const TidyCell& cell = row.cells[i];
    if (column.source != TidySource::Row || column.nStart < 1) continue;
    if (cell.kind == TidyCellKind::Number) {
      numbers_.emplace_back(i, PlainNumber(cell.sPlain));
    } else if (cell.kind == TidyCellKind::Text && column.typing.type == TidyType::Auto) {
      if (const auto number = ReadTidyNumber(cell.sPrinted, column.typing, nullptr)) numbers_.emplace_back(i, *number);
    }
  }
  events_.push_back({row.lLine, row.nTable, kRow, nFirst, numbers_.size()});
}

void clsReportProof::Row(const TidyRecord& row) {
  Table& table = tables_[row.nTable];
  if (!table.bProof) return;
  QueueGroups(table, row);
  QueueNumbers(table, row);
}

/// Takes what belongs to this line and those above it.
void clsReportProof::Catch(int64_t lLine) {
  for (; nNext_ < events_.size() && events_[nNext_].lLine <= lLine; ++nNext_) {
    const Event& event = events_[nNext_];
    Table& table = tables_[event.nTable];
    if (table.totals.empty()) continue;
    clsPrintedTotals& totals = table.totals.front();
    if (event.nLevel != kRow) {
      totals.GroupBegins(event.nLevel);
      continue;
    }
    for (size_t i = event.nFirst; i < event.nEnd; ++i) totals.Add(numbers_[i].first, numbers_[i].second);
    totals.RowEnds(event.lLine);
  }
  if (nNext_ < events_.size()) return;
  events_.clear();
  numbers_.clear();
  nNext_ = 0;
}

void clsReportProof::AddLeft(const TidyLeft& left) {
  loss_.Add({left.lInFront, left.lBetween, left.lBehind, 0, left.lFirstLine});
  lDivided_ += left.lDivided;
  if (lDividedLine_ == 0) lDividedLine_ = left.lDividedLine;
}

/// Looks for totals; gives the class of the shape, 0 for a line that is none of any table.
size_t clsReportProof::OtherLine(int64_t lLine, std::string_view sLine) {
  kinds_.clear();
  for (size_t i = 0; i < tables_.size(); ++i) {
    if (!tables_[i].bProof) continue;
    const size_t nKind = tables_[i].totals.front().Line(lLine, sLine);
    if (nKind != clsPrintedTotals::kNoKind) kinds_.emplace_back(i, nKind);
  }
  return kinds_.empty() ? 0 : classes_.try_emplace(kinds_, classes_.size() + 1).first->second;
}

void clsReportProof::MayBeTotal(int64_t lLine, std::string_view sLine) {
  Catch(lLine - 1);
  OtherLine(lLine, sLine);
}

void clsReportProof::Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) {
  ++lines_[static_cast<size_t>(kind)];
  if (!events_.empty()) Catch(kind == TidyLineKind::Row || kind == TidyLineKind::Heading ? lLine : lLine - 1);
  switch (kind) {
    case TidyLineKind::Row:
      if (!tables_[nTable].profile.empty()) tables_[nTable].profile.front().Row(sLine);
      return;
    case TidyLineKind::Further:
    case TidyLineKind::Joined:
    case TidyLineKind::Blank:
      return;
    case TidyLineKind::LeftOut:
      return leftOut_.Add(lLine, sLine, OtherLine(lLine, sLine));
    case TidyLineKind::Outside:
      return outside_.Add(lLine, sLine, OtherLine(lLine, sLine));
    default:
      OtherLine(lLine, sLine);
  }
}

void clsReportProof::FinishTable(size_t nTable, ReportProof& proof) {
  Table& table = tables_[nTable];
  if (table.totals.empty()) return;
  TotalsAccount account = table.totals.front().Finish();
  proof.lTotalsAgree += account.lAgree;
  proof.lTotalsLastDigit += account.lLastDigit;
  proof.lTotalsDisagree += account.lDisagree;
  const int32_t lNumber = tidy_[nTable].lNumber;
  for (PrintedTotal& total : account.totals) {
    const std::string& sName = table.columns[total.nColumn].sName;
    std::string sColumn =
        sName.empty() || sName == "^" ? TidyColumnLetters(table.columns[total.nColumn].column) : sName;
    proof.totals.push_back({lNumber, std::move(sColumn), std::move(total)});
  }
  for (std::string& sWords : account.words) proof.words.emplace_back(lNumber, std::move(sWords));
}

ReportProof clsReportProof::Finish() {
  Catch(std::numeric_limits<int64_t>::max());
  ReportProof proof;
  proof.lines = lines_;
  proof.loss = loss_;
  proof.lDivided = lDivided_;
  proof.lDividedLine = lDividedLine_;
  for (size_t i = 0; i < tables_.size(); ++i) FinishTable(i, proof);
  std::vector<bool> totalClass(classes_.size() + 1);
  for (const auto& [kinds, nClass] : classes_) {
    totalClass[nClass] = std::any_of(kinds.begin(), kinds.end(), [&](const auto& kind) {
      return tables_[kind.first].totals.front().IsTotal(kind.second);
    });
  }
  const auto isLikeRow = [&](std::string_view sLine) {
    return std::any_of(tables_.begin(), tables_.end(), [&](const Table& table) {
      return !table.profile.empty() && table.profile.front().LooksLikeRow(sLine);
    });
  };
  for (const auto& [pShapes, kind] :
       {std::pair(&leftOut_, TidyLineKind::LeftOut), std::pair(&outside_, TidyLineKind::Outside)}) {
    int64_t lTotals = 0;
    auto shapes = pShapes->Sorted(
        isLikeRow, [&](size_t nClass) { return totalClass[nClass]; }, lTotals);
    proof.lines[static_cast<size_t>(kind)] -= lTotals;
    proof.lines[static_cast<size_t>(TidyLineKind::Total)] += lTotals;
    for (ShapeOfLines& shape : shapes) {
      shape.bOutside = kind == TidyLineKind::Outside;
      proof.shapes.push_back(std::move(shape));
    }
  }
  SortShapes(proof.shapes);
  for (const ShapeOfLines& shape : proof.shapes) {
    if (!shape.bLikeRow) break;
    proof.lLikeRows += shape.lLines;
    proof.lFirstLikeRow = proof.lFirstLikeRow == 0 ? shape.lFirstLine : std::min(proof.lFirstLikeRow, shape.lFirstLine);
  }
  return proof;
}

}  // namespace quillon
