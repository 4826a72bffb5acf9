#include "clsSuggestAccount.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "modNumbers.h"
#include "modRowKinds.h"
#include "modStarTotals.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMostStrays = 2000;
constexpr int64_t kLooked = 20000;  ///< Rows or lines, as many as tell what the others are like

/// The words of a line without its figures: lines that come again on each page have the same ones.
std::string WordsOf(std::string_view sLine) {
  std::string sWords;
  for (const char c : sLine) {
    if (!IsAsciiDigit(c) && c > ' ') sWords += c;
  }
  return sWords;
}

/// The head of a page is the same with and without a form feed.
std::string_view OnPage(std::string_view sLine) {
  return sLine.substr(std::min(sLine.find_first_not_of('\f'), sLine.size()));
}

}  // namespace

clsSuggestAccount::clsSuggestAccount(const std::vector<TidyTable>& tables, std::vector<FoundTable*> found,
                                     bool bStarTotals)
    : tidy_(tables),
      found_(std::move(found)),
      bStarTotals_(bStarTotals),
      pageOf_(tables.size()),
      proof_(tables, {0, 0}),
      tables_(tables.size()) {
  for (const TidyTable& table : tables) likeness_.emplace_back(table);
}

void clsSuggestAccount::TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) {
  proof_.TableStarts(nTable, columns);
  tables_[nTable].cells.TableStarts(columns);
}

void clsSuggestAccount::Row(const TidyRecord& row) {
  proof_.Row(row);
  FoundTable& table = *found_[row.nTable];
  if (table.lRows++ == 0) table.lFirstLine = row.lLine;
  table.lLastLine = row.lLine;
  if (std::exchange(pageOf_[row.nTable], lPage_) != lPage_) ++table.lPages;
  tables_[row.nTable].cells.Row(row);
}

void clsSuggestAccount::HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) {
  proof_.HeadingChanges(nTable, nHeading, lLine);
}

/// A heading or a foot of pages.
bool clsSuggestAccount::IsFurniture(std::string_view sLine) const {
  if (const auto it = above_.find(std::string(OnPage(sLine))); it != above_.end() && it->second > 1) return true;
  const auto it = strays_.find(WordsOf(sLine));
  return it != strays_.end() && it->second.lLines > 1 && it->second.bSame;
}

void clsSuggestAccount::AddStray(int64_t lLine, std::string_view sLine) {
  constexpr size_t kMostAbove = 200;
  constexpr size_t kLongest = 1000;
  if (!bRowSeen_) {
    if (above_.size() < kMostAbove) ++above_[std::string(OnPage(sLine))];
    return;
  }
  if (const auto itAbove = above_.find(std::string(OnPage(sLine))); itAbove != above_.end()) {
    ++itAbove->second;
    return;
  }
  const std::string sWords = WordsOf(sLine);
  const auto it = pending_.find(sWords);
  if (it == pending_.end() && pending_.size() >= kMostStrays) return;
  Stray& stray = pending_[sWords];
  stray.bSame = stray.bSame && (stray.lLines == 0 || OnPage(stray.sFirst) == OnPage(sLine));
  if (stray.lLines++ > 0) return;
  stray.lFirstLine = lLine;
  stray.sFirst = sLine.substr(0, kLongest);
}

void clsSuggestAccount::AddTotal(std::string_view sLine) {
  constexpr size_t kMost = 500;
  if (!SaysTotal(sLine)) return;
  const std::string sWords = WordsOf(sLine);
  const auto it = totalLines_.find(sWords);
  if (it != totalLines_.end()) {
    ++it->second.lLines;
  } else if (totalLines_.size() < kMost) {
    totalLines_.emplace(sWords, Stray{1, 0, std::string(sLine), true});
  }
}

int64_t clsSuggestAccount::LinesWith(std::string_view sText) const {
  int64_t lLines = 0;
  for (const auto& [sWords, line] : totalLines_)
    lLines += line.sFirst.find(sText) != std::string::npos ? line.lLines : 0;
  return lLines;
}

void clsSuggestAccount::TakePending() {
  for (auto& [sWords, stray] : pending_) {
    if (strays_.size() >= kMostStrays && !strays_.contains(sWords)) continue;
    Stray& into = strays_[sWords];
    if (into.lLines == 0) {
      into = std::move(stray);
    } else {
      into.bSame = into.bSame && stray.bSame && OnPage(into.sFirst) == OnPage(stray.sFirst);
      into.lLines += stray.lLines;
    }
  }
}

void clsSuggestAccount::Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) {
  proof_.Line(lLine, sLine, kind, nTable);
  if (kind == TidyLineKind::Row) {
    // What stands between two tables is none of their rows.
    if (!pending_.empty() && nTable == nLastTable_) TakePending();
    pending_.clear();
    bRowSeen_ = true;
    nLastTable_ = nTable;
    tables_[nTable].cells.Line(sLine);
    constexpr size_t kMost = 100;
    std::vector<std::string>& saying = tables_[nTable].rowsOfTotals;
    if (lLine <= kLooked && saying.size() < kMost && SaysTotal(sLine)) saying.emplace_back(sLine);
    return;
  }
  if (kind == TidyLineKind::Further || kind == TidyLineKind::Joined) AddSwallowed(lLine, sLine, nTable);
  if (kind == TidyLineKind::Blank || kind == TidyLineKind::Further || kind == TidyLineKind::Joined) return;
  AddTotal(sLine);
  if (kind != TidyLineKind::LeftOut && kind != TidyLineKind::Outside) return;
  if (sLine.find_first_not_of(" \t\f-=_*+|.~") == std::string_view::npos || IsStarTotal(sLine)) return;
  AddStray(lLine, sLine);
}

/// A line that a record takes in though it looks like a row of the same table.
void clsSuggestAccount::AddSwallowed(int64_t lLine, std::string_view sLine, size_t nTable) {
  TakePlaces(sLine, 0, characters_);
  if (!likeness_[nTable].LooksLikeRow(characters_)) return;
  Stray& swallowed = tables_[nTable].swallowed;
  if (swallowed.lLines++ > 0) return;
  swallowed.lFirstLine = lLine;
  swallowed.sFirst = sLine;
}

namespace {

/// "May 31, 2024"
bool IsWrittenDate(std::u32string_view sLine, const std::vector<LineMark>& marks) {
  constexpr size_t kLongest = 5;
  constexpr size_t kShortest = 3;
  return marks.size() <= kLongest && std::any_of(marks.begin(), marks.end(), [&](const LineMark& mark) {
           const std::u32string_view sWord = sLine.substr(static_cast<size_t>(mark.lStart), kShortest);
           return mark.kind == MarkKind::Word && std::all_of(sWord.begin(), sWord.end(), IsLetterPlace) &&
                  IsDateText(U"01-" + std::u32string(sWord) + U"-01");
         });
}

}  // namespace

/// As the tables want it, or several figures and little else.
bool clsSuggestAccount::LooksLikeRow(std::string_view sLine) {
  TakePlaces(sLine, 0, characters_);
  if (IsDrawn(characters_)) return false;
  FindMarks(characters_, marks_);
  size_t nFigures = 0;
  size_t nTexts = 0;
  size_t nNumbers = 0;
  for (const LineMark& mark : marks_) {
    const bool bNumber = mark.kind == MarkKind::Number;
    nNumbers += bNumber ? 1U : 0U;
    const bool bDate = !bNumber && IsDateText(std::u32string_view(characters_)
                                                  .substr(static_cast<size_t>(mark.lStart),
                                                          static_cast<size_t>(mark.lEnd - mark.lStart) + 1));
    (bNumber || bDate ? nFigures : nTexts) += mark.bGoesOn ? 0U : 1U;
  }
  const bool bApart = nFigures > 2 || (marks_.size() > 1 && marks_.back().lStart - marks_[marks_.size() - 2].lEnd > 2);
  if (nNumbers >= 2 && bApart && nFigures > nTexts && !IsWrittenDate(characters_, marks_)) return true;
  return std::any_of(likeness_.begin(), likeness_.end(),
                     [&](const clsRowLikeness& likeness) { return likeness.LooksLikeRow(characters_); });
}

bool clsSuggestAccount::IsProvedTotal(std::string_view sLine) const {
  return std::any_of(totals_.begin(), totals_.end(),
                     [&](const std::string& sWords) { return sLine.find(sWords) != std::string_view::npos; });
}

bool clsSuggestAccount::IsStarTotal(std::string_view sLine) {
  if (!bStarTotals_) return false;
  TakePlaces(sLine, 0, characters_);
  FindMarks(characters_, marks_);
  SampleLine line;
  line.sText = characters_;
  line.marks = marks_;
  return StarsInFront(line) > 0;
}

/// Words that tell next month, too, what must agree: those of several lines, and of one total of all; not those with
/// the name of each group in them.
void clsSuggestAccount::SetTotals(const ReportProof& proof) {
  for (const auto& [lTable, sWords] : proof.words) totals_.push_back(sWords);
  for (size_t i = 0; i < tidy_.size(); ++i) {
    std::vector<std::string> words;
    size_t nOnce = 0;
    for (const auto& [lTable, sWords] : proof.words) {
      if (lTable != tidy_[i].lNumber || !SaysTotal(sWords) || StandsInRow(sWords)) continue;
      words.push_back(sWords);
      nOnce += LinesWith(sWords) == 1 ? 1U : 0U;
    }
    if (nOnce > 1) std::erase_if(words, [&](const std::string& sWords) { return LinesWith(sWords) == 1; });
    constexpr size_t kMostWords = 4;
    if (words.size() <= kMostWords) found_[i]->tidy.totals = std::move(words);
  }
}

bool clsSuggestAccount::StandsInRow(std::string_view sText) const {
  return std::any_of(tables_.begin(), tables_.end(), [&](const Table& table) {
    return std::any_of(table.rowsOfTotals.begin(), table.rowsOfTotals.end(),
                       [&](const std::string& sRow) { return sRow.find(sText) != std::string::npos; });
  });
}

void clsSuggestAccount::SetDoubts(const clsTidyReport& run) {
  for (size_t i = 0; i < tidy_.size(); ++i) {
    const TidyTableState& state = run.State(i);
    std::vector<std::string>& doubts = found_[i]->doubts;
    if (state.lMisfits > 0) {
      doubts.push_back(fmt::format("{} are no number or date where others are, the first on line {}: {}",
                                   CountedText(state.lMisfits, "value", "values"), state.lMisfitLine, state.sMisfit));
    }
    // Labels stand in the gaps of rows that are known by a picture.
    if (state.lGapLines > 0 && tidy_[i].row.likes.empty()) {
      doubts.push_back(fmt::format("{} have text between the columns, the first is line {}",
                                   CountedText(state.lGapLines, "row", "rows"), state.lGapLine));
    }
    // Where most records have such a line, it is one of theirs.
    const Stray& swallowed = tables_[i].swallowed;
    if (swallowed.lLines > 0 && swallowed.lLines * 2 < found_[i]->lRows) {
      doubts.push_back(fmt::format("{} like a row {} part of the record above, the first on line {}: {}",
                                   CountedText(swallowed.lLines, "line", "lines"), swallowed.lLines == 1 ? "is" : "are",
                                   swallowed.lFirstLine, TrimBlanks(swallowed.sFirst)));
    }
    for (std::string& sDoubt : tables_[i].cells.Doubts()) doubts.push_back(std::move(sDoubt));
  }
}

/// The same words with an amount in several groups: Beginning balance.
bool clsSuggestAccount::IsBalance(int64_t lLines) {
  constexpr int64_t kSeveral = 3;
  FindMarks(characters_, marks_);
  const auto nNumbers =
      std::count_if(marks_.begin(), marks_.end(), [](const LineMark& mark) { return mark.kind == MarkKind::Number; });
  return lLines >= kSeveral && nNumbers > 0 && !marks_.empty() && marks_.front().kind == MarkKind::Word &&
         marks_.back().kind == MarkKind::Number;
}

void clsSuggestAccount::SetLeftOut(const ReportProof& proof, LeftOutRows& leftOut) {
  constexpr size_t kMostShapes = 20;
  for (const ShapeOfLines& shape : proof.shapes) {
    TakePlaces(shape.sFirst, 0, characters_);
    if (SaysPage(characters_) || SaysTotal(characters_) || IsFurniture(shape.sFirst)) continue;
    if (shape.bMeant || IsStarTotal(shape.sFirst)) continue;
    if (!shape.bLikeRow && !LooksLikeRow(shape.sFirst)) continue;
    leftOut.lLines += shape.lLines;
    if (leftOut.shapes.size() < kMostShapes) leftOut.shapes.push_back(shape);
  }
  int64_t lStrays = 0;
  int64_t lRows = 0;
  for (const FoundTable* pTable : found_) lRows += pTable->lRows;
  const Stray* pFirst = nullptr;
  for (const auto& [sWords, stray] : strays_) {
    TakePlaces(stray.sFirst, 0, characters_);
    const bool bFurniture = SaysPage(characters_) || (stray.lLines > 1 && stray.bSame);
    if (bFurniture || IsBalance(stray.lLines) || SaysTotal(characters_) || IsProvedTotal(stray.sFirst)) continue;
    lStrays += stray.lLines;
    if (pFirst == nullptr || stray.lFirstLine < pFirst->lFirstLine) pFirst = &stray;
  }
  constexpr int64_t kOneIn = 10;
  if (pFirst != nullptr && lStrays * kOneIn > lRows && leftOut.lLines == 0) {
    leftOut.lLines = lStrays;
    ShapeOfLines& shape = leftOut.shapes.emplace_back();
    shape.lLines = lStrays;
    shape.lFirstLine = pFirst->lFirstLine;
    shape.sFirst = pFirst->sFirst;
  }
  if (leftOut.shapes.empty()) return;
  std::sort(leftOut.shapes.begin(), leftOut.shapes.end(),
            [](const ShapeOfLines& a, const ShapeOfLines& b) { return a.lFirstLine < b.lFirstLine; });
  leftOut.lFirstLine = leftOut.shapes.front().lFirstLine;
  leftOut.sFirst = leftOut.shapes.front().sFirst;
}

void clsSuggestAccount::Finish(const clsTidyReport& run, LeftOutRows& leftOut) {
  for (size_t i = 0; i < tidy_.size(); ++i) proof_.AddLeft(run.State(i).left);
  const ReportProof proof = proof_.Finish();
  SetTotals(proof);
  SetDoubts(run);
  SetLeftOut(proof, leftOut);
}

}  // namespace quillon
