#include "clsTidyTableReader.h"

#include <algorithm>
#include <limits>

#include "modTidyValues.h"

namespace quillon {

namespace {

TidyColumn FirstTextColumn(const TidyTable& table, const clsTidyCutter& cutter) {
  if (table.levelColumn != kNoTidyColumn) return table.levelColumn;
  for (TidyColumn column = 0; column < cutter.Columns(); ++column) {
    if (cutter.IsTextColumn(column)) return column;
  }
  return 0;
}

/// A stretch that begins above its start text concerns lines that passed, and a heading without a text may be any line.
bool MaySleep(const TidyTable& table) {
  return (table.sStartLine.empty() || table.lStartOffset >= 0) &&
         std::none_of(table.headings.begin(), table.headings.end(),
                      [](const TidyPart& heading) { return heading.texts.empty(); });
}

}  // namespace

clsTidyTableReader::clsTidyTableReader(const TidyTable& table, size_t nTable, clsTidyListener& listener,
                                       clsTidyLineSink& sink)
    : table_(table),
      nTable_(nTable),
      listener_(listener),
      sink_(sink),
      matcher_(table.row),
      cutter_(table.row),
      columns_(table, cutter_),
      headings_(table.headings),
      levels_(table),
      stretch_(table),
      bMaySleep_(MaySleep(table)),
      bKeeps_(table.join == TidyJoin::Up || !table.lines.empty()),
      downColumn_(FirstTextColumn(table, cutter_)),
      cells_(cutter_.Groups()),
      open_(cutter_.Groups()),
      fills_(cutter_.Groups(), std::vector<std::string>(cutter_.Columns())) {
  for (const TidyFurtherLine& line : table.lines) {
    further_.emplace_back(line.part, !line.part.texts.empty());
    if (!line.IsByDistance()) continue;
    const auto nDistance = static_cast<size_t>(line.nDistance);
    if (byDistance_.size() <= nDistance) byDistance_.resize(nDistance + 1, kNoPart);
    byDistance_[nDistance] = further_.size() - 1;
  }
  ring_.resize(static_cast<size_t>(stretch_.Delay()));
  state_.headingsFound.resize(table.headings.size());
  state_.nearColumn = kNoTidyColumn;
}

void clsTidyTableReader::Arrives(int64_t lLine, std::string_view sLine) {
  arriving_ = sLine;
  lArriving_ = lLine;
  stretch_.Arrives(lLine, sLine);
  if (ring_.empty()) return Process(lLine, sLine);
  const int64_t lDelay = stretch_.Delay();
  std::string& sSlot = ring_[static_cast<size_t>(lLine % lDelay)];
  if (lLine - lDelay >= lFirst_) Process(lLine - lDelay, sSlot);
  sSlot.assign(sLine);
}

void clsTidyTableReader::End(int64_t lLines) {
  const int64_t lDelay = stretch_.Delay();
  for (int64_t lLine = std::max(lFirst_, lLines - lDelay + 1); lDelay > 0 && lLine <= lLines; ++lLine) {
    lArriving_ = lLines;
    arriving_ = ring_[static_cast<size_t>(lLines % lDelay)];
    Process(lLine, ring_[static_cast<size_t>(lLine % lDelay)]);
  }
  if (bInStretch_) EndStretch(lLines);
  EndJoin();
  Flush();
  state_.bStarted = stretch_.WasFound();
  state_.bEnded = stretch_.EndWasFound();
  gaps_.Settle(state_.left.lost, state_.left.same);
}

std::vector<std::string> clsTidyTableReader::KeyTexts() const {
  std::vector<std::string> texts;
  if (!table_.sStartLine.empty()) texts.push_back(table_.sStartLine);
  for (const TidyPart& heading : table_.headings) texts.insert(texts.end(), heading.texts.begin(), heading.texts.end());
  return texts;
}

bool clsTidyTableReader::IsIdle(int64_t lLastKey) const {
  return bMaySleep_ && !bInStretch_ && stretch_.IsIdle() && lLastKey <= lArriving_ - stretch_.Delay() &&
         waiting_.empty() && (bStarted_ || !columns_.NotesLines()) && !IsOpen();
}

int64_t clsTidyTableReader::Sleeps() {
  const int64_t lUntold = std::max(lFirst_, lArriving_ - stretch_.Delay() + 1);
  lFirst_ = std::numeric_limits<int64_t>::max();
  return lUntold;
}

void clsTidyTableReader::Process(int64_t lLine, std::string_view sLine) {
  line_.Set(sLine);
  const bool bIn = stretch_.Covers(lLine);
  if (bIn && !bInStretch_) StartStretch(lLine);
  bWaits_ = false;
  const TidyLineKind kind = Classify(lLine, bIn);
  if (!bStarted_) columns_.NoteLine(line_);
  Tell(lLine, sLine, kind);
  if (bIn && stretch_.EndsAt(lLine)) EndStretch(lLine);
  EndLongGroup(lLine);
}

void clsTidyTableReader::StartStretch(int64_t lLine) {
  bInStretch_ = true;
  bRowInStretch_ = false;
  if (state_.lFirstLine == 0) state_.lFirstLine = lLine;
  listener_.StretchStarts(nTable_, lLine);
}

void clsTidyTableReader::EndStretch(int64_t lLine) {
  EndJoin();
  Flush();
  bInStretch_ = false;
  state_.lLastLine = lLine;
  listener_.StretchEnds(nTable_, lLine);
}

TidyLineKind clsTidyTableReader::Classify(int64_t lLine, bool bIn) {
  if (line_.IsBlank()) return TakeBlank(lLine, bIn);
  if (headings_.Count() > 0 && (bIn || !stretch_.IsOver(lLine)) && headings_.Reads(line_))
    return TakeHeading(lLine, bIn);
  if (!bIn) return TidyLineKind::Outside;
  if (!table_.drops.empty() && HoldsAny(line_.Text(), table_.drops)) return TidyLineKind::Dropped;
  if (!table_.totals.empty() && HoldsAny(line_.Text(), table_.totals)) {
    EndJoin();
    return TidyLineKind::Total;
  }
  if (AddByDistance(lLine)) return TidyLineKind::Further;
  if (FindRecords(lLine)) {
    StartRow(lLine);
    return TidyLineKind::Row;
  }
  if (AddByShape(lLine)) return TidyLineKind::Further;
  if (line_.IsDrawn()) {
    EndJoin();
    return TidyLineKind::Dropped;
  }
  if (OpensLevel(lLine)) return TidyLineKind::Heading;
  if (JoinUp(lLine)) return TidyLineKind::Joined;
  if (WaitForRow()) return TidyLineKind::LeftOut;
  EndJoin();
  return TidyLineKind::LeftOut;
}

TidyLineKind clsTidyTableReader::TakeBlank(int64_t lLine, bool bIn) {
  EndJoin();
  if (bIn && table_.bUntilBlank && bRowInStretch_) EndUntil(lLine);
  return TidyLineKind::Blank;
}

/// The stretch ends here, and what arrived since may begin another one.
void clsTidyTableReader::EndUntil(int64_t lLine) {
  if (!stretch_.EndHere(lLine)) return;
  for (int64_t l = lLine + 1; l < lArriving_; ++l) {
    stretch_.Arrives(l, ring_[static_cast<size_t>(l % stretch_.Delay())]);
  }
  if (lArriving_ > lLine) stretch_.Arrives(lArriving_, arriving_);
}

TidyLineKind clsTidyTableReader::TakeHeading(int64_t lLine, bool bIn) {
  for (size_t i = 0; i < headings_.Count(); ++i) {
    if (headings_.Found()[i]) ++state_.headingsFound[i];
  }
  EndJoin();
  if (const size_t nChange = headings_.FirstChange(); nChange != clsTidyHeadings::kNone) {
    Flush();
    headings_.Apply();
    bHeadingsNew_ = true;
    levels_.Clear();
    for (auto& above : fills_) above.assign(above.size(), {});
    listener_.HeadingChanges(nTable_, nChange, lLine);
  }
  const bool bMayBeRow = bIn && (matcher_.HasPictures() || matcher_.HasNeeds()) &&
                         !HoldsAny(line_.Text(), table_.drops) && !HoldsAny(line_.Text(), table_.totals);
  if (!bMayBeRow || !FindRecords(lLine)) return TidyLineKind::Heading;
  StartRow(lLine);
  return TidyLineKind::Row;
}

void clsTidyTableReader::Tell(int64_t lLine, std::string_view sLine, TidyLineKind kind) {
  if (!bWaits_ && waiting_.empty()) return sink_.Classified(nTable_, lLine, sLine, kind);
  waiting_.push_back({lLine, std::string(sLine), kind, bWaits_});
}

void clsTidyTableReader::ReleaseWaiting(bool bJoined) {
  for (const Waiting& line : waiting_) {
    sink_.Classified(nTable_, line.lLine, line.sLine, bJoined && line.bJoins ? TidyLineKind::Joined : line.kind);
  }
  waiting_.clear();
}

void clsTidyTableReader::EndJoin() {
  bJoinEnded_ = true;
  if (!waiting_.empty()) ReleaseWaiting(false);
}

/// Which records stand on the line, with their cells.
bool clsTidyTableReader::FindRecords(int64_t lLine) {
  fitting_.clear();
  const bool bPicture = matcher_.FitsPicture(line_);
  const bool bLooksOn = state_.lRecords == 0 && !bStarted_ && state_.lNearLine == 0;
  if (!bPicture && !(bLooksOn && matcher_.HasNeeds())) return false;
  // A text that means nothing fits every kind, so "---" might.
  if (line_.IsDrawn()) return false;
  // A line that has all that is asked for is a row though nothing stands in its columns: further lines may fill them.
  const bool bAsked = cells_.size() == 1 && (matcher_.HasPictures() || matcher_.HasNeeds());
  for (size_t nGroup = 0; nGroup < cells_.size(); ++nGroup) {
    auto& cells = cells_[nGroup];
    cutter_.Cut(line_, nGroup, cells);
    if (!bAsked && std::all_of(cells.begin(), cells.end(), [](std::string_view s) { return s.empty(); })) continue;
    const bool bNeeds = matcher_.FitsNeeds(cells);
    if (bPicture && bNeeds) fitting_.push_back(nGroup);
    if (!bLooksOn || !fitting_.empty()) continue;
    TidyColumn failing = kNoTidyColumn;
    const size_t nFailing = bNeeds ? 0 : matcher_.CountFailing(cells, failing);
    NoteNearMiss(lLine, bPicture, nFailing, failing);
  }
  return !fitting_.empty();
}

void clsTidyTableReader::NoteNearMiss(int64_t lLine, bool bPicture, size_t nFailing, TidyColumn failing) {
  const bool bNear =
      bPicture ? nFailing == 1 && (table_.row.needs.size() > 1 || matcher_.HasPictures()) : nFailing == 0;
  if (!bNear || state_.lNearLine != 0) return;
  state_.lNearLine = lLine;
  state_.nearColumn = failing;
}

void clsTidyTableReader::StartTable() {
  bStarted_ = true;
  columns_.TakeNames(cutter_);
  listener_.TableStarts(nTable_, columns_.All());
}

void clsTidyTableReader::StartRow(int64_t lLine) {
  Flush();
  if (!bStarted_) StartTable();
  bRowInStretch_ = true;
  bJoinEnded_ = false;
  const bool bLeft = cutter_.AddLeft(line_, lLine, fitting_, gaps_, state_.left);
  if (bLeft && fitting_.size() == 1 && cutter_.LastCutLeavesText(line_)) {
    if (state_.lGapLines++ == 0) state_.lGapLine = lLine;
  }
  for (const size_t nGroup : fitting_) TakeRecord(lLine, nGroup);
}

void clsTidyTableReader::TakeRecord(int64_t lLine, size_t nGroup) {
  auto& cells = cells_[nGroup];
  lFrontLine_ = lLine;
  nFrontIndent_ = table_.levelColumn == kNoTidyColumn ? 0 : IndentOf(cells[table_.levelColumn]);
  if (!waiting_.empty()) PutInFront(cells);
  FillCells(cells, fills_[nGroup]);
  if (table_.levelColumn != kNoTidyColumn) levels_.Row(nFrontIndent_, cells[table_.levelColumn], lFrontLine_);
  record_.lLine = record_.lLastLine = lLine;
  Build(record_, cells, true);
  listener_.Row(record_);
  ++state_.lRecords;
  if (!bKeeps_) {
    CountMisfits(record_);
    return listener_.Record(record_);
  }
  Open& open = open_[nGroup];
  open.bOpen = true;
  open.lLine = open.lLastLine = lLine;
  open.values.resize(columns_.Values());
  for (size_t i = 0; i < open.values.size(); ++i)
    open.values[i].assign(i < cells.size() ? cells[i] : std::string_view());
  if (cutter_.IsSplit()) open.sWhole.assign(line_.Text());
}

/// Lines from above go in front of the first text of the row.
void clsTidyTableReader::PutInFront(std::vector<std::string_view>& cells) {
  GatherWaiting();
  Append(sInFront_, cells[downColumn_]);
  cells[downColumn_] = sInFront_;
  ReleaseWaiting(true);
}

/// What waits as one text, with the place where it begins.
void clsTidyTableReader::GatherWaiting() {
  sInFront_.clear();
  for (const Waiting& line : waiting_) {
    if (!line.bJoins) continue;
    clsTidyLine printed;
    printed.Set(line.sLine);
    const std::string_view sText = TrimBlanks(printed.Text());
    if (sInFront_.empty()) {
      nFrontIndent_ = printed.PositionOf(static_cast<size_t>(sText.data() - printed.Text().data()));
      lFrontLine_ = line.lLine;
    }
    Append(sInFront_, sText);
  }
}

/// From the row above, of the same record of its line.
void clsTidyTableReader::FillCells(std::vector<std::string_view>& cells, std::vector<std::string>& above) const {
  for (const TidyColumn column : table_.fills) {
    if (cells[column].empty() || cells[column] == "\"" || IsTidyBlank(cells[column], table_.row.blanks)) {
      cells[column] = above[column];
    } else {
      above[column].assign(cells[column]);
    }
  }
}

size_t clsTidyTableReader::IndentOf(std::string_view sCell) const {
  if (sCell.empty()) return 0;
  return line_.PositionOf(static_cast<size_t>(sCell.data() - line_.Text().data()));
}

}  // namespace quillon
