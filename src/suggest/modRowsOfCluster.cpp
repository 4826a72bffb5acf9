#include "modRowsOfCluster.h"

#include <algorithm>
#include <map>

#include "clsTableShape.h"
#include "modGroupTitles.h"
#include "modRowKinds.h"

namespace quillon {

namespace {

class clsClusterRows {
 public:
  explicit clsClusterRows(const clsReportSample& report) : report_(report) {}

  /// Rows of a cluster: in rounds, since lines that are no rows blur the columns. Totals blur them most, being many and
  /// alike, so they are put aside; those of a statement, where texts are indented, are lines of it.
  std::vector<size_t> Settle(const std::vector<size_t>& lines) const {
    std::vector<size_t> rows;
    std::vector<size_t> totals;
    for (const size_t n : lines) (IsLikeTotal(report_.Lines()[n].sText) ? totals : rows).push_back(n);
    DropWords(rows);
    const std::vector<size_t> titles = TitlesAmong(report_, rows);
    std::erase_if(rows, [&](size_t n) { return std::binary_search(titles.begin(), titles.end(), n); });
    if (rows.size() < 2) return {};
    DropNames(rows);
    constexpr int32_t kRounds = 5;
    for (int32_t l = 0; l < kRounds && rows.size() > 1; ++l) {
      const clsTableShape shape(report_, rows);
      const std::vector<size_t> kept = RowsOfKinds(report_, shape, KindsOfRows(report_, shape, rows), rows);
      if (kept.size() == rows.size()) break;
      rows = kept;
    }
    if (rows.empty() || totals.empty()) return rows;
    const clsTableShape shape(report_, rows);
    const std::vector<ColumnKinds> kinds = KindsOfRows(report_, shape, rows);
    std::vector<size_t> kept = RowsOfKinds(report_, shape, kinds, totals);
    if (BeginsWithFigures(kinds)) std::erase_if(kept, [&](size_t n) { return !HasFigureFirst(shape, n); });
    if (!IsIndented(shape, rows)) std::erase_if(kept, [&](size_t n) { return !HasOtherTexts(shape, kinds, n); });
    rows.insert(rows.end(), kept.begin(), kept.end());
    std::sort(rows.begin(), rows.end());
    return rows;
  }

  /// "** REP 15      175.00", "Average:   7.12", "ENDING BALANCE   2,011.07"
  static bool IsLikeTotal(std::u32string_view sText) {
    sText = TrimPlaces(sText);
    std::u32string sLow(sText);
    for (char32_t& ch : sLow) ch = ch >= U'A' && ch <= U'Z' ? ch | 0x20U : ch;
    return SaysTotal(sText) || sText.starts_with(U"**") || sLow.starts_with(U"average") ||
           (!sText.empty() && !IsDigitPlace(sText.front()) && sLow.find(U"balance") != std::u32string::npos);
  }

  /// Dates, times, numbers in the first column.
  static bool BeginsWithFigures(const std::vector<ColumnKinds>& kinds) {
    return kinds.front().nFigures * 10 >= kinds.front().nRows * 9;
  }

  bool HasFigureFirst(const clsTableShape& shape, size_t n) const {
    std::vector<std::u32string_view> cells;
    shape.Cut(report_.Lines()[n].sText, cells);
    return cells.front().empty() || std::any_of(cells.front().begin(), cells.front().end(), IsDigitPlace);
  }

  /// A sign in place of a figure, not between words.
  static bool HasSignAlone(std::span<const LineMark> marks) {
    if (!marks.empty() && marks.front().kind == MarkKind::Sign) return true;
    for (size_t i = 1; i < marks.size(); ++i) {
      if (marks[i].kind == MarkKind::Sign && marks[i].lStart - marks[i - 1].lEnd > 2) return true;
    }
    return false;
  }

  /// One mark in place of all figures: M, M, M.
  bool HasMarksAlone(size_t n) const {
    const SampleLine& line = report_.Lines()[n];
    constexpr size_t kFewest = 3;
    std::u32string_view sMark;
    size_t nMarks = 0;
    for (const LineMark& mark : line.marks) {
      if (mark.kind == MarkKind::Number) continue;
      const auto nLength = static_cast<size_t>(mark.lEnd - mark.lStart) + 1;
      const std::u32string_view sText = line.sText.substr(static_cast<size_t>(mark.lStart), nLength);
      if (nLength > 2 || (nMarks > 0 && sText != sMark)) return false;
      sMark = sText;
      ++nMarks;
    }
    return nMarks >= kFewest;
  }

  /// Lines of words with one figure at most are titles if most of the others have several figures.
  void DropWords(std::vector<size_t>& rows) const {
    constexpr size_t kSeveral = 3;
    std::vector<size_t> kept;
    size_t nFull = 0;
    for (const size_t n : rows) {
      const auto marks = report_.Lines()[n].marks;
      const auto count = [&](MarkKind kind) {
        return static_cast<size_t>(
            std::count_if(marks.begin(), marks.end(), [&](const LineMark& mark) { return mark.kind == kind; }));
      };
      const size_t nNumbers = count(MarkKind::Number);
      nFull += nNumbers >= kSeveral ? 1U : 0U;
      if (nNumbers > 1 || HasSignAlone(marks) || HasMarksAlone(n)) kept.push_back(n);
    }
    if (nFull > 1 && nFull * 3 >= rows.size()) rows = std::move(kept);
  }

  /// The first line may be the names of the columns; they may come again further down.
  void DropNames(std::vector<size_t>& rows) const {
    const clsTableShape shape(report_, rows);
    std::vector<std::u32string_view> cells;
    const std::u32string_view sFirst = report_.Lines()[rows.front()].sText;
    shape.Cut(sFirst, cells);
    if (!AreNamesOfKinds(KindsOfRows(report_, shape, rows), cells)) return;
    std::erase_if(rows, [&](size_t n) { return report_.Lines()[n].sText == sFirst; });
  }

  /// A line that calls itself a total is a row if it has what only rows have: a second text, a date, a number of its
  /// own.
  bool HasOtherTexts(const clsTableShape& shape, const std::vector<ColumnKinds>& kinds, size_t n) const {
    std::vector<std::u32string_view> cells;
    shape.Cut(report_.Lines()[n].sText, cells);
    size_t nTexts = 0;
    for (size_t i = 0; i < cells.size(); ++i) {
      nTexts += !cells[i].empty() && !kinds[i].IsUsual({}) && (!kinds[i].IsNumeric() || i == 0) ? 1U : 0U;
    }
    return nTexts >= 2;
  }

  /// Whether the texts of the first column begin at several places, and few at the same end.
  bool IsIndented(const clsTableShape& shape, const std::vector<size_t>& rows) const {
    std::map<int32_t, size_t> starts;
    const ShapeColumn& first = shape.Columns().front();
    if (first.bNumber || first.bFigures) return false;
    for (const size_t n : rows) ++starts[report_.Lines()[n].marks.front().lStart];
    constexpr size_t kMost = 6;
    return starts.size() > 1 && starts.size() <= kMost;
  }

  /// Small tables one below the other share edges by chance. Their runs of lines are one table only if they have as
  /// many columns together as alone.
  std::vector<std::vector<size_t>> AlikeRuns(const std::vector<size_t>& lines) const {
    constexpr size_t kFewest = 3;
    constexpr size_t kMostRuns = 24;
    std::vector<std::vector<size_t>> runs;
    for (const size_t n : lines) {
      const bool bGoesOn = !runs.empty() && OnlyBlank(runs.back().back() + 1, n);
      if (!bGoesOn) runs.emplace_back();
      runs.back().push_back(n);
    }
    const auto isLong = [&](const std::vector<size_t>& run) { return run.size() >= kFewest; };
    constexpr size_t kSmall = 40;
    DropTitles(runs);
    const bool bSmall = lines.size() <= kSmall && runs.size() <= kMostRuns;
    if (runs.size() == 1) return runs;
    if (!bSmall || std::count_if(runs.begin(), runs.end(), isLong) < 2) return {lines};
    std::vector<std::vector<size_t>> groups;
    for (const std::vector<size_t>& run : runs) {
      if (isLong(run)) AddRun(run, groups);
    }
    if (groups.size() == 1) return {lines};
    return groups;
  }

 private:
  std::u32string_view FirstWord(size_t n) const {
    const SampleLine& line = report_.Lines()[n];
    const LineMark& mark = line.marks.front();
    return line.sText.substr(static_cast<size_t>(mark.lStart), static_cast<size_t>(mark.lEnd - mark.lStart) + 1);
  }

  /// Beside one run of rows lines that stand alone and begin with one word, which no row does, are titles: SECTION 2.
  void DropTitles(std::vector<std::vector<size_t>>& runs) const {
    constexpr size_t kFewest = 3;
    const auto isAlone = [](const std::vector<size_t>& run) { return run.size() == 1; };
    const auto itRows = std::find_if_not(runs.begin(), runs.end(), isAlone);
    const auto nAlone = static_cast<size_t>(std::count_if(runs.begin(), runs.end(), isAlone));
    if (itRows == runs.end() || nAlone + 1 != runs.size() || nAlone < 2 || itRows->size() < kFewest) return;
    const std::u32string_view sWord = FirstWord(itRows == runs.begin() ? runs.back().front() : runs.front().front());
    const bool bLetters = std::all_of(sWord.begin(), sWord.end(), IsLetterPlace);
    const bool bTitles = std::all_of(runs.begin(), runs.end(), [&](const std::vector<size_t>& run) {
      return std::all_of(run.begin(), run.end(), [&](size_t n) { return (FirstWord(n) == sWord) == isAlone(run); });
    });
    if (bLetters && bTitles) runs = {std::vector<size_t>(*itRows)};
  }

  size_t ColumnsOf(const std::vector<size_t>& rows) const { return clsTableShape(report_, rows).Columns().size(); }

  size_t NumberColumnsOf(const std::vector<size_t>& rows) const {
    const clsTableShape shape(report_, rows);
    return static_cast<size_t>(std::count_if(shape.Columns().begin(), shape.Columns().end(),
                                             [](const ShapeColumn& column) { return column.bNumber; }));
  }

  /// In few rows the words of a text stand below each other by chance: columns of numbers tell more.
  bool HaveAsManyColumns(const std::vector<size_t>& both, const std::vector<size_t>& group,
                         const std::vector<size_t>& run) const {
    if (ColumnsOf(both) >= std::min(ColumnsOf(group), ColumnsOf(run))) return true;
    const size_t nNumbers = NumberColumnsOf(both);
    return nNumbers >= 2 && nNumbers == NumberColumnsOf(group) && nNumbers == NumberColumnsOf(run);
  }

  void AddRun(const std::vector<size_t>& run, std::vector<std::vector<size_t>>& groups) const {
    for (std::vector<size_t>& group : groups) {
      std::vector<size_t> both = group;
      both.insert(both.end(), run.begin(), run.end());
      if (!HaveAsManyColumns(both, group, run)) continue;
      group = std::move(both);
      return;
    }
    groups.push_back(run);
  }

  bool OnlyBlank(size_t nFrom, size_t nEnd) const {
    for (size_t n = nFrom; n < nEnd; ++n) {
      if (!report_.Lines()[n].IsBlank()) return false;
    }
    return true;
  }

  const clsReportSample& report_;
};

}  // namespace

std::vector<std::vector<size_t>> RowsOfCluster(const clsReportSample& report, const std::vector<size_t>& lines) {
  const clsClusterRows cluster(report);
  std::vector<std::vector<size_t>> tables;
  for (const std::vector<size_t>& alike : cluster.AlikeRuns(lines)) tables.push_back(cluster.Settle(alike));
  return tables;
}

}  // namespace quillon
