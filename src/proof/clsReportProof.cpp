#include "clsReportProof.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>

#include "modLineShape.h"
#include "modProofColumns.h"
#include "modText.h"
#include "modTidyText.h"

namespace quillon {

namespace {

constexpr size_t kRow = static_cast<size_t>(-1);

/// "Rounded in millions", "detail may not add to totals", "Rundungsdifferenzen". Without the first letter, whatever its
/// case.
bool SaysRounded(std::string_view sLine) {
  constexpr std::array<std::string_view, 10> kWords{"ounded",     "OUNDED",  "ounding", "OUNDING", "ay not add",
                                                    "AY NOT ADD", "erundet", "undung",  "rrondi",  "edonde"};
  return std::any_of(kWords.begin(), kWords.end(),
                     [&](std::string_view sWord) { return sLine.find(sWord) != std::string_view::npos; });
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
  lMeantLikeRows += other.lMeantLikeRows;
  lFigureLines += other.lFigureLines;
  pages.lPages += other.pages.lPages;
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
    if (columns[i].source == TidySource::Row && MaySum(columns[i].typing))
      table.sumColumns.push_back({i, RoomOf(columns, i)});
  }
  table.groupValues.resize(table.groupColumns.size());
  const bool bSplit = tidy.row.cut.split != TidySplit::None;
  const auto cutter = bSplit ? std::optional(clsTidyCutter(tidy.row)) : std::optional<clsTidyCutter>();
  table.totals.emplace_back(ProofColumnsOf(columns), tidy.totals, limits_, cutter);
  table.profile.emplace_back(ProofColumnsOf(columns), cutter);
  if (table.bProof && tables_.size() > 1) table.totals.front().ShareSums(shared_, nTable);
}

void clsReportProof::HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) {
  events_.push_back({lLine, nTable, nHeading, 0, 0});
}

void clsReportProof::StretchStarts(size_t nTable, int64_t lLine) {
  Table& table = tables_[nTable];
  starts_.erase({table.lStretch, nTable});
  starts_.emplace(lLine, nTable);
  table.lStretch = lLine;
  table.lStretchEnd = 0;
  if (table.bRows) Hear(nTable);
}

void clsReportProof::StretchEnds(size_t nTable, int64_t lLine) {
  tables_[nTable].lStretchEnd = lLine;
}

/// Behind the table's end another one began, so what stands here is none of its totals.
bool clsReportProof::IsPast(size_t nTable, int64_t lLine) const {
  const int64_t lEnd = tables_[nTable].lStretchEnd;
  if (lEnd == 0 || lLine <= lEnd) return false;
  auto start = starts_.lower_bound({lEnd, 0});
  if (start != starts_.end() && start->second == nTable) ++start;
  return start != starts_.end() && start->first <= lLine;
}

void clsReportProof::Hear(size_t nTable) {
  if (tables_[nTable].bHeard || !tables_[nTable].bProof) return;
  tables_[nTable].bHeard = true;
  heard_.insert(nTable);
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

/// A cell goes on where a value sticks out of its column; a number that does so into the next column took its value.
void clsReportProof::CountReaching(int64_t lLine) {
  ++loss_.lCuts;
  if (loss_.lFirstLine == 0) loss_.lFirstLine = lLine;
}

void clsReportProof::QueueNumbers(const Table& table, const TidyRecord& row) {
  const size_t nFirst = numbers_.size();
  for (const auto& [i, nRoom] : table.sumColumns) {
    if (i >= row.cells.size()) break;
    const TidyCell& cell = row.cells[i];
    if (cell.kind == TidyCellKind::Number) {
      if (cell.sPrinted.size() > nRoom && CharCount(cell.sPrinted) > nRoom) CountReaching(row.lLine);
      numbers_.emplace_back(i, cell.number);
    } else if (cell.kind == TidyCellKind::Text && table.columns[i].typing.type == TidyType::Auto) {
      const auto number = ReadTidyNumber(cell.sPrinted, table.columns[i].typing, nullptr);
      if (number) numbers_.emplace_back(i, *number);
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
    table.bRows = true;
    Hear(event.nTable);
  }
  if (nNext_ < events_.size()) return;
  events_.clear();
  numbers_.clear();
  nNext_ = 0;
}

void clsReportProof::AddLeft(const TidyLeft& left) {
  loss_.Add(LossOf(left.lost, left.same));
  lDivided_ += left.lDivided;
  if (lDividedLine_ == 0) lDividedLine_ = left.lDividedLine;
}

/// Looks for totals; gives the class of the shape, 0 for a line that is none of any table.
size_t clsReportProof::OtherLine(int64_t lLine, std::string_view sLine) {
  bRounds_ = bRounds_ || SaysRounded(sLine);
  pages_.Line(lLine, sLine);
  kinds_.clear();
  for (auto table = heard_.begin(); table != heard_.end();) {
    const size_t i = *table;
    if (IsPast(i, lLine)) {
      tables_[i].bHeard = false;
      table = heard_.erase(table);
      continue;
    }
    ++table;
    const size_t nKind = tables_[i].totals.front().Line(lLine, sLine);
    if (nKind != clsPrintedTotals::kNoKind) kinds_.emplace_back(i, nKind);
  }
  return kinds_.empty() ? 0 : classes_.try_emplace(kinds_, classes_.size() + 1).first->second;
}

void clsReportProof::MayBeTotal(int64_t lLine, std::string_view sLine) {
  Catch(lLine - 1);
  OtherLine(lLine, sLine);
}

bool clsReportProof::IsOfSums(size_t nTable, int64_t lLine, std::string_view sLine) {
  Catch(lLine - 1);
  return !tables_[nTable].totals.empty() && tables_[nTable].totals.front().IsOfSums(sLine);
}

void clsReportProof::Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) {
  ++lines_[static_cast<size_t>(kind)];
  if (!events_.empty()) Catch(kind == TidyLineKind::Row || kind == TidyLineKind::Heading ? lLine : lLine - 1);
  switch (kind) {
    case TidyLineKind::Row:
      if (!tables_[nTable].profile.empty()) tables_[nTable].profile.front().Row(sLine);
      return;
    case TidyLineKind::Blank:
      return;
    case TidyLineKind::LeftOut:
    case TidyLineKind::Outside:
      return shapes_[static_cast<size_t>(kind)].Add(lLine, sLine, OtherLine(lLine, sLine));
    case TidyLineKind::Further:
    case TidyLineKind::Joined:
      return AddIfLikeRow(lLine, sLine, kind, 0);
    default: {
      const size_t nClass = OtherLine(lLine, sLine);
      if (kind != TidyLineKind::Total) AddIfLikeRow(lLine, sLine, kind, nClass);
    }
  }
}

/// A table hasn't begun, or has too few rows to tell others by.
bool clsReportProof::IsEarly() {
  const auto isGrown = [](const Table& table) { return !table.profile.empty() && !table.profile.front().IsYoung(); };
  while (nGrown_ < tables_.size() && isGrown(tables_[nGrown_])) ++nGrown_;
  return nGrown_ < tables_.size();
}

/// Keeps a line that the recipe takes for something else, if it looks like a row by the rows so far.
void clsReportProof::AddIfLikeRow(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nClass) {
  if (std::none_of(sLine.begin(), sLine.end(), IsAsciiDigit)) return;
  if (IsEarly() || LikenessOf(sLine, kind) == Likeness::Row)
    shapes_[static_cast<size_t>(kind)].Add(lLine, sLine, nClass);
}

/// By the rows so far. Lines that the recipe names otherwise must be like rows in all columns, headings in no other
/// way.
clsReportProof::Likeness clsReportProof::LikenessOf(std::string_view sLine, TidyLineKind kind) const {
  if (CountsColumns(sLine)) return Likeness::None;
  Likeness likeness = Likeness::None;
  for (size_t i = 0; i < tables_.size() && likeness != Likeness::Row; ++i) {
    if (tables_[i].profile.empty()) continue;
    const clsRowProfile& profile = tables_[i].profile.front();
    const bool bMeant = kind == TidyLineKind::Dropped || kind == TidyLineKind::Further;
    const bool bLike = bMeant                          ? profile.IsLikeRow(sLine)
                       : kind == TidyLineKind::Heading ? profile.HoldsNothingElse(sLine)
                                                       : profile.LooksLikeRow(sLine);
    // The pieces of a row that is split may go on over lines.
    const bool bGoesOn = kind == TidyLineKind::Joined && tidy_[i].row.cut.split != TidySplit::None;
    if (bLike && !bGoesOn) likeness = profile.IsWeak() ? Likeness::Weak : Likeness::Row;
  }
  return likeness;
}

void clsReportProof::FinishTable(size_t nTable, ReportProof& proof) {
  Table& table = tables_[nTable];
  if (table.totals.empty()) return;
  TotalsAccount account = table.totals.front().Finish(bRounds_);
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
  proof.pages = pages_.Order();
  proof.lDivided = lDivided_;
  proof.lDividedLine = lDividedLine_;
  for (size_t i = 0; i < tables_.size(); ++i) FinishTable(i, proof);
  FinishShapes(proof);
  CountShapes(proof);
  return proof;
}

void clsReportProof::FinishShapes(ReportProof& proof) const {
  std::vector<bool> totalClass(classes_.size() + 1);
  for (const auto& [kinds, nClass] : classes_) {
    totalClass[nClass] = std::any_of(kinds.begin(), kinds.end(), [&](const auto& kind) {
      return tables_[kind.first].totals.front().IsTotal(kind.second);
    });
  }
  const auto isTotal = [&](size_t nClass) { return totalClass[nClass]; };
  for (size_t i = 0; i < shapes_.size(); ++i) {
    const auto kind = static_cast<TidyLineKind>(i);
    const bool bFree = kind == TidyLineKind::LeftOut || kind == TidyLineKind::Outside;
    const auto isLikeRow = [&](std::string_view sLine) { return LikenessOf(sLine, kind) == Likeness::Row; };
    int64_t lTotals = 0;
    auto shapes = shapes_[i].Sorted(isLikeRow, isTotal, lTotals);
    if (bFree) {
      proof.lines[i] -= lTotals;
      proof.lines[static_cast<size_t>(TidyLineKind::Total)] += lTotals;
    }
    for (ShapeOfLines& shape : shapes) {
      if (!bFree && !shape.bLikeRow) continue;
      shape.kind = kind;
      // A line that is printed again is none of figures, and its shape says so.
      const bool bWeak = !shape.bLikeRow && !shape.bAgain && LikenessOf(shape.sFirst, kind) == Likeness::Weak;
      shape.bFigures = bFree && (shape.bFigures || bWeak);
      shape.bMeant = kind == TidyLineKind::Dropped || kind == TidyLineKind::Further;
      proof.shapes.push_back(std::move(shape));
    }
  }
  SortShapes(proof.shapes);
}

void clsReportProof::CountShapes(ReportProof& proof) {
  const auto count = [](const ShapeOfLines& shape, int64_t& lLines, int64_t& lFirst) {
    lLines += shape.lLines;
    lFirst = lFirst == 0 ? shape.lFirstLine : std::min(lFirst, shape.lFirstLine);
  };
  for (const ShapeOfLines& shape : proof.shapes) {
    if (shape.bLikeRow && shape.bMeant) count(shape, proof.lMeantLikeRows, proof.lFirstMeant);
    if (shape.bLikeRow && !shape.bMeant) count(shape, proof.lLikeRows, proof.lFirstLikeRow);
    if (shape.bFigures) count(shape, proof.lFigureLines, proof.lFirstFigures);
  }
}

}  // namespace quillon
