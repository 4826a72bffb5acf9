#include "modFurtherLines.h"

#include <algorithm>
#include <map>
#include <set>

#include "modRowKinds.h"

namespace quillon {

namespace {

/// The first column of texts, which wrap and are indented. None: as many as there are columns.
size_t FirstTextColumn(const clsTableShape& shape) {
  const std::vector<ShapeColumn>& columns = shape.Columns();
  return static_cast<size_t>(
      std::find_if(columns.begin(), columns.end(),
                   [](const ShapeColumn& column) { return !column.bNumber && !column.bFigures; }) -
      columns.begin());
}

bool EndsInColon(const SampleLine& line) {
  return line.sText.back() == U':';
}

class clsFurtherLines {
 public:
  clsFurtherLines(const clsReportSample& report, const clsTableShape& shape, std::span<const size_t> rows,
                  const LineOwners& owners)
      : report_(report), shape_(shape), rows_(rows), owners_(owners), nText_(FirstTextColumn(shape)) {
    for (const size_t n : rows_) isRow_.insert(n);
  }

  void Find(TidyTable& table) {
    FindByIndent(table);
    if (!table.lines.empty()) return;
    CountJoins();
    constexpr size_t kFewest = 2;
    if (nDown_ >= kFewest && nDown_ > nUp_ && nDown_ > nNeither_) {
      table.join = TidyJoin::Down;
    } else if ((nUp_ >= kFewest || (nUp_ == 1 && nDown_ == 0)) && nUp_ > 2 * nNeither_ && nUp_ * 20 >= rows_.size()) {
      table.join = TidyJoin::Up;
    }
    FindLevels(table);
  }

  std::vector<size_t> FindTitles(TidyTable& table) const {
    int32_t lStart = -1;
    for (const size_t n : rows_) {
      const int32_t lHere = nText_ < shape_.Columns().size() ? StartOfText(n) : -1;
      if (lHere < 0 || (lStart >= 0 && lHere != lStart)) return {};
      lStart = lHere;
    }
    return FindTitles(lStart, table);
  }

 private:
  const SampleLine& Line(size_t n) const { return report_.Lines()[n]; }
  bool IsFree(size_t n) const {
    return n < report_.Lines().size() && !Line(n).IsBlank() && !Line(n).bDrawn && owners_.tables[n] == 0 &&
           !owners_.names[n] && !owners_.totals[n];
  }
  bool IsRow(size_t n) const { return isRow_.contains(n); }

  /// Lines directly below rows that begin further left or right than any column, each at one place: texts of a record
  /// that have lines of their own.
  void FindByIndent(TidyTable& table) {
    std::map<int32_t, size_t> starts;
    size_t nWith = 0;
    size_t nBelow = 0;
    size_t nUnder = 0;
    for (const size_t nRow : rows_) {
      constexpr size_t kMostBelow = 3;
      bool bAny = false;
      for (size_t n = nRow + 1; n <= nRow + kMostBelow && IsFree(n) && !SaysTotal(Line(n).sText); ++n) {
        ++starts[Line(n).marks.front().lStart];
        ++nBelow;
        nUnder += StandsUnderOneText(n) ? 1U : 0U;
        bAny = true;
      }
      nWith += bAny ? 1U : 0U;
    }
    // The head of a page may follow a row, and so may what belongs to the rows below: it stands above the first one,
    // too.
    std::erase_if(starts, [&](const auto& start) {
      return start.second * 10 < nBelow || (StandsAboveFirst(start.first) && !StandsBelowLast(start.first));
    });
    if (starts.empty()) return;
    constexpr size_t kMostKinds = 3;
    if (nWith * 3 < rows_.size() || starts.size() > kMostKinds || rows_.size() < kMostKinds) return;
    if (nUnder * 2 > nBelow) return;
    for (auto it = starts.rbegin(); it != starts.rend(); ++it) {
      TidyFurtherLine further;
      further.part.likes.push_back(std::string(static_cast<size_t>(it->first), '_') + "X");
      further.part.cut.places = {{{it->first + 1, 0}}};
      further.part.names.push_back("Line " + std::to_string(table.lines.size() + 2));
      further.part.types.push_back({TidyType::Text, false, 0, {}});
      table.lines.push_back(std::move(further));
    }
  }

  bool StandsAboveFirst(int32_t lStart) const {
    constexpr size_t kNear = 4;
    for (size_t n = rows_.front(); n > 0 && rows_.front() - n < kNear; --n) {
      if (!Line(n - 1).IsBlank() && Line(n - 1).marks.front().lStart == lStart) return IsFree(n - 1);
    }
    return false;
  }
  bool StandsBelowLast(int32_t lStart) const {
    const size_t n = rows_.back() + 1;
    return IsFree(n) && Line(n).marks.front().lStart == lStart;
  }

  /// Inside of one column of texts: what is wrapped, and no text of its own.
  bool StandsUnderOneText(size_t n) const {
    const int32_t lStart = Line(n).marks.front().lStart;
    const int32_t lEnd = Line(n).marks.back().lEnd;
    return std::any_of(shape_.Columns().begin(), shape_.Columns().end(), [&](const ShapeColumn& column) {
      return !column.bNumber && lStart >= column.lPlaceFirst && lEnd <= column.lPlaceLast;
    });
  }

  /// Whether all of a line stands under the texts of the rows.
  bool StandsUnderTexts(size_t n) const {
    if (!BeginsAtText(n)) return false;
    for (const LineMark& mark : Line(n).marks) {
      bool bUnder = false;
      for (const ShapeColumn& column : shape_.Columns()) {
        const bool bInside = mark.lStart >= column.lPlaceFirst && mark.lStart <= column.lPlaceLast;
        bUnder = bUnder || (bInside && !column.bNumber);
      }
      if (!bUnder) return false;
    }
    return true;
  }

  bool BeginsAtText(size_t n) const {
    constexpr int32_t kIndent = 3;
    const LineMark& first = Line(n).marks.front();
    return first.kind == MarkKind::Word &&
           std::any_of(shape_.Columns().begin(), shape_.Columns().end(), [&](const ShapeColumn& column) {
             const int32_t lIn = first.lStart - column.lFirst;
             return !column.bNumber && lIn >= 0 && lIn <= (column.bFigures ? 0 : kIndent);
           });
  }

  bool StandsUnderFirstText(size_t n) const {
    if (nText_ >= shape_.Columns().size()) return false;
    const ShapeColumn& column = shape_.Columns()[nText_];
    return Line(n).marks.front().lStart >= column.lPlaceFirst && Line(n).marks.back().lEnd <= column.lPlaceLast;
  }

  /// How many lines beside rows go on with the row above, or begin the one below.
  void CountJoins() {
    for (size_t i = 0; i < rows_.size(); ++i) {
      const size_t nBelow = rows_[i] + 1;
      const size_t nAbove = rows_[i] - 1;
      if (rows_[i] > 0 && MayGoDown(nAbove) && i > 0) {
        size_t nTop = nAbove;
        while (nTop > 0 && IsFree(nTop - 1)) --nTop;
        const bool bBetween = nTop > 0 && IsRow(nTop - 1);
        nSureDown_ += bBetween ? 0U : 1U;
        (!bBetween ? nDown_ : GoesDown(nAbove) ? nBetweenDown_ : nBetweenUp_) += 1;
      } else if (i > 0 && rows_[i] == rows_[i - 1] + 2 && IsFree(nAbove) && StandsUnderOneText(nAbove)) {
        ++nUp_;
      }
      if (!IsFree(nBelow) || SaysTotal(Line(nBelow).sText)) continue;
      const bool bAtRowBelow = IsRow(nBelow + 1);
      if (!bAtRowBelow && StandsUnderTexts(nBelow)) {
        ++nUp_;
        size_t nBottom = nBelow;
        while (IsFree(nBottom + 1)) ++nBottom;
        nSureUp_ += IsRow(nBottom + 1) ? 0U : 1U;
      } else if (!bAtRowBelow) {
        ++nNeither_;
      }
    }
    // Lines between two rows go where those do that have a row on one side alone.
    const bool bAllUp = nSureUp_ > 0 && nSureDown_ == 0;
    const bool bAllDown = nSureDown_ > 0 && nSureUp_ == 0;
    nUp_ += bAllDown ? 0 : nBetweenUp_ + (bAllUp ? nBetweenDown_ : 0);
    nDown_ += bAllUp ? 0 : nBetweenDown_ + (bAllDown ? nBetweenUp_ : 0);
  }

  bool MayGoDown(size_t n) const {
    return IsFree(n) && StandsUnderFirstText(n) && !EndsInColon(Line(n)) && !SaysTotal(Line(n).sText);
  }

  /// A line between two rows begins the one below if that one is further in, or goes on with a small letter where the
  /// line itself doesn't.
  bool GoesDown(size_t n) const {
    const SampleLine& below = Line(n + 1);
    const auto isSmall = [](char32_t ch) { return ch >= U'a' && ch <= U'z'; };
    const bool bSmall = isSmall(Line(n).sText[static_cast<size_t>(Line(n).marks.front().lStart)]);
    for (const LineMark& mark : below.marks) {
      const ShapeColumn& column = shape_.Columns()[nText_];
      if (mark.lStart < column.lPlaceFirst) continue;
      const char32_t ch = below.sText[static_cast<size_t>(mark.lStart)];
      return mark.lStart > Line(n).marks.front().lStart || (isSmall(ch) && !bSmall);
    }
    return false;
  }

  void FindLevels(TidyTable& table) {
    if (table.levelColumn != kNoTidyColumn || nText_ >= shape_.Columns().size()) return;
    std::map<int32_t, size_t> starts;
    size_t nAtOneEnd = 0;
    std::map<int32_t, size_t> ends;
    bool bByOne = true;
    std::vector<int32_t> open;
    for (const size_t n : rows_) {
      const int32_t lStart = StartOfText(n);
      if (lStart < 0) return;
      ++starts[lStart];
      ++ends[EndOfText(n)];
      while (!open.empty() && open.back() >= lStart) open.pop_back();
      open.push_back(lStart);
    }
    for (const auto& [lEnd, nCount] : ends) nAtOneEnd = std::max(nAtOneEnd, nCount);
    constexpr size_t kMostLevels = 5;
    const size_t nTitles = CountTitles(starts);
    const bool bRightAligned = nAtOneEnd * 2 > rows_.size();
    if (bRightAligned || starts.size() > kMostLevels || !bByOne) return;
    if (nTitles >= 2) {
      table.levelColumn = nText_;
      table.levelNames = starts.size() + (starts.begin()->first > TitleStart() ? 1U : 0U) > 2
                             ? std::vector<std::string>{"Group", "Subgroup"}
                             : std::vector<std::string>{"Group"};
    } else if (starts.size() >= 2 && StartOfText(rows_.front()) == starts.begin()->first && nTitles == 0 &&
               StandAlone()) {
      table.levelColumn = nText_;
      table.bLevelRows = true;
      table.levelNames = {"Parent"};
    }
  }

  /// Lines of one text further out than all rows, which stand at one indentation: a title for each group below it. Rows
  /// are told from titles by the blanks in front of them.
  std::vector<size_t> FindTitles(int32_t lRows, TidyTable& table) const {
    if (lRows <= 0 || nText_ != 0) return {};
    std::vector<size_t> titles;
    std::map<int32_t, size_t> starts;
    size_t nOthers = 0;
    size_t nFirst = rows_.front();
    while (nFirst > 0 && IsTitle(nFirst - 1, lRows)) --nFirst;
    for (size_t n = nFirst; n < rows_.back(); ++n) {
      if (!IsFree(n)) continue;
      if (!IsTitle(n, lRows)) {
        ++nOthers;
        continue;
      }
      titles.push_back(n);
      ++starts[Line(n).marks.front().lStart];
    }
    constexpr size_t kFewest = 2;
    constexpr size_t kMostLevels = 3;
    if (titles.size() < kFewest || nOthers * 4 > titles.size() || starts.size() > kMostLevels) return {};
    if (nFirst == rows_.front() || table.row.cut.places.size() != 1) return {};
    table.levelColumn = nText_;
    const std::vector<std::string> names{"Group", "Subgroup", "Subgroup 2"};
    table.levelNames.assign(names.begin(), names.begin() + static_cast<ptrdiff_t>(starts.size()));
    table.row.likes.push_back(std::string(static_cast<size_t>(lRows), '_') + "X");
    table.row.cut.places.front()[nText_].nStart = starts.begin()->first + 1;
    return titles;
  }

  /// A line of one text further out than the rows, above a row or another title that is further in.
  bool IsTitle(size_t n, int32_t lRows) const {
    if (!IsFree(n) || SaysTotal(Line(n).sText)) return false;
    const auto& marks = Line(n).marks;
    if (marks.front().lStart >= lRows || marks.front().kind == MarkKind::Number) return false;
    for (size_t i = 1; i < marks.size(); ++i) {
      if (marks[i].lStart - marks[i - 1].lEnd > 2) return false;
    }
    size_t nBelow = n + 1;
    while (nBelow < report_.Lines().size() && Line(nBelow).IsBlank()) ++nBelow;
    return nBelow < report_.Lines().size() && (IsRow(nBelow) || IsFree(nBelow)) &&
           Line(nBelow).marks.front().lStart > marks.front().lStart;
  }

  /// Rows of which nearly none is followed by anything else.
  bool StandAlone() const {
    size_t nFollowed = 0;
    for (const size_t n : rows_) nFollowed += IsRow(n + 1) ? 1U : 0U;
    return nFollowed * 10 >= rows_.size() * 8;
  }

  int32_t TitleStart() const { return lTitleStart_; }

  /// Lines of one text in the column alone that end in a colon, above rows that are further in or as far.
  size_t CountTitles(const std::map<int32_t, size_t>& starts) {
    size_t nTitles = 0;
    for (const size_t n : rows_) {
      for (size_t k = n; k > 0 && n - k < 3; --k) {
        if (IsRow(k - 1) || Line(k - 1).IsBlank()) break;
        if (!IsFree(k - 1) || !StandsUnderFirstText(k - 1) || !EndsInColon(Line(k - 1))) continue;
        ++nTitles;
        lTitleStart_ = std::min(lTitleStart_, Line(k - 1).marks.front().lStart);
      }
    }
    return starts.empty() ? 0 : nTitles;
  }

  /// Where the row's text begins; -1 if it has none.
  int32_t StartOfText(size_t n) const {
    const ShapeColumn& column = shape_.Columns()[nText_];
    const std::u32string_view sText = Line(n).sText;
    const auto lEnd = std::min(static_cast<int32_t>(sText.size()), column.lPlaceLast + 1);
    for (int32_t l = column.lPlaceFirst; l < lEnd; ++l) {
      if (!IsBlankPlace(sText[static_cast<size_t>(l)])) return l;
    }
    return -1;
  }
  int32_t EndOfText(size_t n) const {
    const ShapeColumn& column = shape_.Columns()[nText_];
    int32_t lEnd = -1;
    for (const LineMark& mark : Line(n).marks) {
      if (mark.lStart >= column.lPlaceFirst && mark.lStart <= column.lPlaceLast) lEnd = mark.lEnd;
    }
    return lEnd;
  }

  const clsReportSample& report_;
  const clsTableShape& shape_;
  std::span<const size_t> rows_;
  const LineOwners& owners_;
  size_t nText_;
  std::set<size_t> isRow_;
  size_t nUp_ = 0, nDown_ = 0, nNeither_ = 0;
  size_t nSureUp_ = 0, nSureDown_ = 0;        ///< With a row on one side alone
  size_t nBetweenUp_ = 0, nBetweenDown_ = 0;  ///< Between two rows, by their texts
  int32_t lTitleStart_ = INT32_MAX;
};

}  // namespace

void FindFurtherLines(const clsReportSample& report, const clsTableShape& shape, std::span<const size_t> rows,
                      const LineOwners& owners, TidyTable& table) {
  clsFurtherLines(report, shape, rows, owners).Find(table);
}

std::vector<size_t> FindIndentedTitles(const clsReportSample& report, const clsTableShape& shape,
                                       std::span<const size_t> rows, const LineOwners& owners, TidyTable& table) {
  return clsFurtherLines(report, shape, rows, owners).FindTitles(table);
}

}  // namespace quillon
