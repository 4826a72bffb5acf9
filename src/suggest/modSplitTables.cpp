#include "modSplitTables.h"

#include <algorithm>
#include <map>

#include "clsTableShape.h"
#include "modTidyOfShape.h"

namespace quillon {

namespace {

using Cells = std::vector<std::u32string_view>;

/// One way to part lines.
struct Way {
  TidySplit split = TidySplit::None;
  char32_t ch = 0;  ///< Of AtText
};

bool HasDigit(std::u32string_view sText) {
  return std::any_of(sText.begin(), sText.end(), IsDigitPlace);
}

/// All pieces of a line. With nMost pieces the last one is the rest of the line.
Cells PiecesOf(const SampleLine& line, const Way& way, size_t nMost) {
  Cells cells;
  std::u32string_view s = TrimPlaces(line.sText);
  const std::u32string sAt = way.split == TidySplit::AtGaps     ? U"  "
                             : way.split == TidySplit::AtBlanks ? U" "
                                                                : std::u32string(1, way.ch);
  while (cells.size() + 1 < nMost) {
    const size_t nEnd = s.find(sAt);
    if (nEnd == std::u32string_view::npos) break;
    cells.push_back(TrimPlaces(s.substr(0, nEnd)));
    s = s.substr(nEnd + sAt.size());
    if (way.split != TidySplit::AtText) s = TrimPlaces(s);
  }
  cells.push_back(TrimPlaces(s));
  return cells;
}

constexpr size_t kAll = 1000;

class clsSplitTables {
 public:
  clsSplitTables(const clsReportSample& report, std::vector<bool>& taken) : report_(report), taken_(taken) {}

  std::vector<FoundTable> FindMarked() {
    for (const char32_t ch : std::u32string_view(U",;|:")) FindMarked({TidySplit::AtText, ch});
    return std::move(tables_);
  }

  void FindSplit(std::vector<FoundTable>& tables) {
    known_ = &tables;
    FindPieces({TidySplit::AtGaps, 0});
    FindPieces({TidySplit::AtBlanks, 0});
    for (FoundTable& table : tables_) {
      std::erase_if(tables,
                    [&](const FoundTable& other) { return Shared(other.rows, table.rows) * 2 > other.rows.size(); });
    }
    for (FoundTable& table : tables_) tables.push_back(std::move(table));
  }

 private:
  const SampleLine& Line(size_t n) const { return report_.Lines()[n]; }
  bool IsFree(size_t n) const { return !taken_[n] && !Line(n).IsBlank() && !Line(n).bDrawn; }

  // --- parted by a character

  size_t CountOf(size_t n, char32_t ch) const {
    const std::u32string_view sText = Line(n).sText;
    return static_cast<size_t>(std::count(sText.begin(), sText.end(), ch));
  }

  /// Lines one below the other with as many marks each.
  void FindMarked(const Way& way) {
    std::map<size_t, std::vector<size_t>> byCount;
    constexpr size_t kFewest = 5;
    const size_t nFewestMarks = way.ch == U':' ? 4 : 2;
    for (size_t n = 0; n < report_.Lines().size();) {
      const size_t nMarks = IsFree(n) ? CountOf(n, way.ch) : 0;
      size_t nEnd = n + 1;
      while (nMarks > 0 && nEnd < report_.Lines().size() && IsFree(nEnd) && CountOf(nEnd, way.ch) == nMarks) ++nEnd;
      if (nMarks >= nFewestMarks && nEnd - n >= kFewest) {
        for (size_t k = n; k < nEnd; ++k) byCount[nMarks].push_back(k);
      }
      n = nEnd;
    }
    for (auto& [nMarks, rows] : byCount) {
      const bool bApart = MarksStandApart(rows, way.ch) && !FollowedByBlank(rows, way.ch);
      if (!bApart || HaveGaps(way, nMarks + 1, rows) || (way.ch == U',' && PartThousands(rows))) continue;
      if (way.ch != U':' || IsBetter(way, nMarks + 1, rows)) AddMarked(way, nMarks + 1, rows);
    }
  }

  /// Whether the last mark stands at different places: else the columns are places. A bar out of its place is enough.
  bool MarksStandApart(const std::vector<size_t>& rows, char32_t ch) const {
    std::map<size_t, size_t> last;
    for (const size_t n : rows) ++last[Line(n).sText.rfind(ch)];
    size_t nMost = 0;
    for (const auto& [nPlace, nCount] : last) nMost = std::max(nMost, nCount);
    return ch == U'|' ? nMost < rows.size() : nMost * 5 < rows.size() * 4;
  }

  /// Commas and colons of sentences have a blank behind them.
  bool FollowedByBlank(const std::vector<size_t>& rows, char32_t ch) const {
    if (ch == U'|') return false;
    size_t nMarks = 0;
    size_t nBlank = 0;
    for (const size_t n : rows) {
      const std::u32string_view sText = Line(n).sText;
      for (size_t i = sText.find(ch); i != std::u32string_view::npos; i = sText.find(ch, i + 1)) {
        ++nMarks;
        nBlank += i + 1 < sText.size() && IsBlankPlace(sText[i + 1]) ? 1U : 0U;
      }
    }
    return nBlank * 2 > nMarks;
  }

  /// Whether most commas stand in front of three digits and behind one.
  bool PartThousands(const std::vector<size_t>& rows) const {
    size_t nMarks = 0;
    size_t nThousands = 0;
    for (const size_t n : rows) {
      const std::u32string_view sText = Line(n).sText;
      for (size_t i = sText.find(U','); i != std::u32string_view::npos; i = sText.find(U',', i + 1)) {
        constexpr size_t kGroup = 3;
        const std::u32string_view sGroup = sText.substr(i + 1, kGroup);
        ++nMarks;
        const bool bEnds = i + 1 + kGroup >= sText.size() || !IsDigitPlace(sText[i + 1 + kGroup]);
        nThousands += i > 0 && IsDigitPlace(sText[i - 1]) && sGroup.size() == kGroup && bEnds &&
                              std::all_of(sGroup.begin(), sGroup.end(), IsDigitPlace)
                          ? 1U
                          : 0U;
      }
    }
    return nThousands * 2 > nMarks;
  }

  /// Values with a gap inside are several columns.
  bool HaveGaps(const Way& way, size_t nColumns, const std::vector<size_t>& rows) const {
    size_t nGaps = 0;
    for (const size_t n : rows) {
      const Cells cells = PiecesOf(Line(n), way, nColumns);
      nGaps += std::any_of(cells.begin(), cells.end() - 1,
                           [](std::u32string_view s) { return s.find(U"  ") != std::u32string_view::npos; })
                   ? 1U
                   : 0U;
    }
    return nGaps * 10 > rows.size();
  }

  void AddMarked(const Way& way, size_t nColumns, std::vector<size_t> rows) {
    std::vector<size_t> heading;
    const Cells first = PiecesOf(Line(rows.front()), way, nColumns);
    const Cells second = PiecesOf(Line(rows[1]), way, nColumns);
    const bool bWords = std::none_of(first.begin(), first.end(),
                                     [](std::u32string_view s) { return s.empty() || IsDigitPlace(s.front()); });
    const bool bFigures =
        std::any_of(second.begin(), second.end(), HasDigit) && std::none_of(first.begin(), first.end(), IsNumberText);
    if (bWords && bFigures) {
      heading.push_back(rows.front());
      rows.erase(rows.begin());
    }
    AddTable(way, nColumns, std::move(rows), heading);
  }

  // --- parted by blanks

  /// What the pieces at one index are.
  struct Index {
    size_t nFigures = 0;
    std::map<int32_t, size_t> starts, ends;
  };

  /// Lines with a digit and several pieces, one below the other; the longest runs tell what the pieces are.
  void FindPieces(const Way& way) {
    constexpr size_t kFewest = 3;
    constexpr size_t kFewestPieces = 3;
    std::vector<std::vector<size_t>> runs;
    for (size_t n = 0; n < report_.Lines().size(); ++n) {
      if (!IsFree(n) || !HasDigit(Line(n).sText) || PiecesOf(Line(n), way, kAll).size() < kFewestPieces) continue;
      if (runs.empty() || runs.back().back() + 1 != n) runs.emplace_back();
      runs.back().push_back(n);
    }
    std::stable_sort(runs.begin(), runs.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
    constexpr size_t kMostRuns = 4;
    for (size_t i = 0; i < std::min(runs.size(), kMostRuns); ++i) {
      if (runs[i].size() >= kFewest && TryRun(way, runs[i])) return;
    }
  }

  static bool IsMost(size_t nCount, size_t nAll) { return nCount * 100 >= nAll * 97; }

  bool TryRun(const Way& way, const std::vector<size_t>& run) {
    std::vector<Cells> cells;
    size_t nFewest = kAll;
    size_t nMost = 0;
    for (const size_t n : run) {
      cells.push_back(PiecesOf(Line(n), way, kAll));
      nFewest = std::min(nFewest, cells.back().size());
      nMost = std::max(nMost, cells.back().size());
    }
    // Up to the last figure all lines have the same pieces; what follows may be one text.
    std::vector<size_t> numbers;
    std::vector<size_t> figures;
    size_t nLast = 0;
    for (size_t i = 0; i < nFewest; ++i) {
      size_t nNumbers = 0;
      size_t nFigures = 0;
      for (const Cells& row : cells) {
        nNumbers += IsNumberText(row[i]) ? 1U : 0U;
        nFigures += HasDigit(row[i]) ? 1U : 0U;
      }
      if (IsMost(nNumbers, run.size())) numbers.push_back(i);
      if (IsMost(nFigures, run.size())) figures.push_back(i);
      if (IsMost(nNumbers, run.size()) || (IsMost(nFigures, run.size()) && nFigures > 0)) nLast = i;
    }
    const size_t nColumns = nFewest == nMost ? nFewest : std::min(nLast + 2, nFewest);
    const size_t nNeeded = way.split == TidySplit::AtGaps ? 1 : 2;
    constexpr size_t kFewestColumns = 3;
    if (nColumns < kFewestColumns || figures.size() < nNeeded || numbers.empty()) return false;
    if (way.split == TidySplit::AtBlanks && (figures.size() + 1) * 2 < nColumns) return false;
    if (way.split == TidySplit::AtGaps && nFewest != nMost) return false;
    const std::vector<size_t> rows = AllLines(way, nColumns, numbers, figures);
    const size_t kFewestRows = nFewest == nMost ? 3 : 6;
    if (rows.size() < kFewestRows || !StandClose(rows) || !StandApart(way, nColumns, rows)) return false;
    if (!IsBetter(way, nColumns, rows) && !PlacesCutOtherwise(way, nColumns, rows)) return false;
    AddTable(way, nColumns, rows, HeadingOf(way, nColumns, rows.front()));
    return true;
  }

  /// All lines of the report that have what the run has.
  std::vector<size_t> AllLines(const Way& way, size_t nColumns, const std::vector<size_t>& numbers,
                               const std::vector<size_t>& figures) const {
    std::vector<size_t> rows;
    for (size_t n = 0; n < report_.Lines().size(); ++n) {
      if (!IsFree(n)) continue;
      const Cells cells = PiecesOf(Line(n), way, nColumns);
      const bool bRow = cells.size() == nColumns &&
                        std::all_of(numbers.begin(), numbers.end(), [&](size_t i) { return IsNumberText(cells[i]); }) &&
                        std::all_of(figures.begin(), figures.end(), [&](size_t i) { return HasDigit(cells[i]); });
      if (bRow) rows.push_back(n);
    }
    return rows;
  }

  /// Whether some column has no edge in common, so that places don't take it.
  bool StandApart(const Way& way, size_t nColumns, const std::vector<size_t>& rows) const {
    std::vector<Index> index(nColumns);
    for (const size_t n : rows) {
      const Cells cells = PiecesOf(Line(n), way, nColumns);
      for (size_t i = 0; i < nColumns; ++i) {
        const auto lStart = static_cast<int32_t>(cells[i].data() - Line(n).sText.data());
        ++index[i].starts[lStart];
        ++index[i].ends[lStart + static_cast<int32_t>(cells[i].size())];
      }
    }
    size_t nApart = 0;
    for (const Index& i : index) nApart += std::max(MostOf(i.starts), MostOf(i.ends)) * 20 < rows.size() * 17 ? 1U : 0U;
    return nApart > 0;
  }

  /// Whether more columns of figures come apart than by the places of the tables that have these lines, or of the
  /// lines.
  bool IsBetter(const Way& way, size_t nColumns, const std::vector<size_t>& rows) const {
    size_t nKnown = 0;
    for (size_t i = 0; known_ != nullptr && i < known_->size(); ++i) {
      const FoundTable& table = (*known_)[i];
      const size_t nShared = table.bDoubtful ? 0 : Shared(table.rows, rows);
      if (nShared == 0) continue;
      const bool bByPlaces = table.bRecords || HasNamesByPlaces(table) ||
                             FiguresApart(way, nColumns, table.rows) <= FiguresByPlaces(table.rows);
      nKnown += bByPlaces ? nShared : 0U;
    }
    if (nKnown > 0) return nKnown * 2 < rows.size();
    return FiguresApart(way, nColumns, rows) > FiguresByPlaces(rows);
  }

  /// Each of the columns has one piece of the names: what parts the names parts the values, too.
  bool HasNamesByPlaces(const FoundTable& table) const {
    const std::vector<std::string>& names = table.tidy.row.names;
    if (table.headingLines.size() != 1 || std::find(names.begin(), names.end(), "") != names.end()) return false;
    const Cells pieces = PiecesOf(Line(table.headingLines.front()), {TidySplit::AtGaps, 0}, kAll);
    return std::equal(pieces.begin(), pieces.end(), names.begin(), names.end(),
                      [](std::u32string_view sPiece, const std::string& sName) { return Utf8Of(sPiece) == sName; });
  }

  /// Whether edges are common by chance: all lines, one below the other, have the same pieces with one blank between
  /// them, and places cut some of them otherwise.
  bool PlacesCutOtherwise(const Way& way, size_t nColumns, const std::vector<size_t>& rows) const {
    if (rows.back() - rows.front() + 1 != rows.size() || HaveKnownNames(rows)) return false;
    const clsTableShape shape(report_, rows);
    size_t nOtherwise = 0;
    Cells cells;
    for (const size_t n : rows) {
      const Cells pieces = PiecesOf(Line(n), way, kAll);
      if (pieces.size() != nColumns || TrimPlaces(Line(n).sText).find(U"  ") != std::u32string_view::npos) return false;
      shape.Cut(Line(n).sText, cells);
      nOtherwise += cells == pieces ? 0U : 1U;
    }
    return nOtherwise > 0;
  }

  /// Names above some of the rows by places.
  bool HaveKnownNames(const std::vector<size_t>& rows) const {
    return known_ != nullptr && std::any_of(known_->begin(), known_->end(), [&](const FoundTable& table) {
             return !table.headingLines.empty() && Shared(table.rows, rows) > 0;
           });
  }

  static size_t Shared(const std::vector<size_t>& lines, const std::vector<size_t>& rows) {
    return static_cast<size_t>(std::count_if(
        lines.begin(), lines.end(), [&](size_t n) { return std::binary_search(rows.begin(), rows.end(), n); }));
  }

  size_t FiguresApart(const Way& way, size_t nColumns, const std::vector<size_t>& rows) const {
    std::vector<size_t> figures(nColumns);
    for (const size_t n : rows) {
      const Cells cells = PiecesOf(Line(n), way, nColumns);
      for (size_t i = 0; i < cells.size(); ++i) figures[i] += IsFigure(cells[i]) ? 1U : 0U;
    }
    return static_cast<size_t>(
        std::count_if(figures.begin(), figures.end(), [&](size_t nCount) { return IsMost(nCount, rows.size()); }));
  }

  static bool IsFigure(std::u32string_view sCell) {
    return HasDigit(sCell) && sCell.find(U' ') == std::u32string_view::npos;
  }

  /// Columns of figures that places tell apart; inside of a column as many as stand at edges of their own.
  size_t FiguresByPlaces(const std::vector<size_t>& rows) const {
    const clsTableShape shape(report_, rows);
    std::vector<Cells> columns(shape.Columns().size());
    Cells cells;
    for (const size_t n : rows) {
      shape.Cut(Line(n).sText, cells);
      for (size_t i = 0; i < cells.size(); ++i) columns[i].push_back(cells[i]);
    }
    size_t nAll = 0;
    for (const Cells& column : columns) {
      const auto nFigures = static_cast<size_t>(std::count_if(column.begin(), column.end(), IsFigure));
      const auto nFilled = static_cast<size_t>(
          std::count_if(column.begin(), column.end(), [](std::u32string_view s) { return !s.empty(); }));
      nAll += nFilled * 10 > rows.size() && IsMost(nFigures, nFilled) ? 1U : FiguresInside(column, rows);
    }
    return nAll;
  }

  size_t FiguresInside(const Cells& column, const std::vector<size_t>& rows) const {
    std::vector<Index> index;
    for (size_t r = 0; r < column.size(); ++r) {
      const std::u32string_view sLine = Line(rows[r]).sText;
      size_t nToken = 0;
      for (const LineMark& mark : Line(rows[r]).marks) {
        if (column[r].empty() || mark.lStart < column[r].data() - sLine.data() ||
            mark.lEnd >= column[r].data() - sLine.data() + static_cast<ptrdiff_t>(column[r].size()))
          continue;
        if (index.size() <= nToken) index.emplace_back();
        Index& at = index[nToken++];
        at.nFigures +=
            HasDigit(sLine.substr(static_cast<size_t>(mark.lStart), static_cast<size_t>(mark.lEnd - mark.lStart) + 1))
                ? 1U
                : 0U;
        ++at.starts[mark.lStart];
        ++at.ends[mark.lEnd];
      }
    }
    return static_cast<size_t>(std::count_if(index.begin(), index.end(), [&](const Index& at) {
      return IsMost(at.nFigures, rows.size()) && std::max(MostOf(at.starts), MostOf(at.ends)) * 20 >= rows.size() * 17;
    }));
  }

  static size_t MostOf(const std::map<int32_t, size_t>& counts) {
    size_t nMost = 0;
    for (const auto& [lPlace, nCount] : counts) nMost = std::max(nMost, nCount);
    return nMost;
  }

  /// Most lines between the first and the last row, blank and drawn ones aside, are rows.
  bool StandClose(const std::vector<size_t>& rows) const {
    size_t nLines = 0;
    for (size_t n = rows.front(); n <= rows.back(); ++n) nLines += Line(n).IsBlank() || Line(n).bDrawn ? 0U : 1U;
    return rows.size() * 2 > nLines;
  }

  /// The line above with as many words, none of them a number.
  std::vector<size_t> HeadingOf(const Way& way, size_t nColumns, size_t nRow) const {
    constexpr size_t kNear = 3;
    for (size_t n = nRow; n > 0 && nRow - n < kNear; --n) {
      if (!IsFree(n - 1)) continue;
      const Cells cells = PiecesOf(Line(n - 1), way, kAll);
      const bool bWords = std::none_of(cells.begin(), cells.end(), IsNumberText);
      return bWords && cells.size() == nColumns ? std::vector<size_t>{n - 1} : std::vector<size_t>();
    }
    return {};
  }

  void AddTable(const Way& way, size_t nColumns, std::vector<size_t> rows, const std::vector<size_t>& heading) {
    std::vector<Cells> cells;
    for (const size_t n : rows) {
      cells.push_back(PiecesOf(Line(n), way, nColumns));
      cells.back().resize(nColumns);
      taken_[n] = true;
    }
    FoundTable table;
    table.tidy.row = TidyOfCells(report_, cells);
    table.tidy.row.cut.split = way.split;
    if (way.split == TidySplit::AtText) table.tidy.row.cut.sSplit = Utf8Of(std::u32string_view(&way.ch, 1));
    table.tidy.row.names.resize(nColumns);
    for (const size_t n : heading) {
      const Cells names = PiecesOf(Line(n), way, nColumns);
      for (size_t i = 0; i < names.size(); ++i) table.tidy.row.names[i] = Utf8Of(names[i]);
      taken_[n] = true;
    }
    table.rows = std::move(rows);
    table.headingLines = heading;
    table.bRecords = true;
    tables_.push_back(std::move(table));
  }

  const clsReportSample& report_;
  std::vector<bool>& taken_;
  const std::vector<FoundTable>* known_ = nullptr;  ///< Tables by places
  std::vector<FoundTable> tables_;
};

}  // namespace

std::vector<FoundTable> FindMarkedTables(const clsReportSample& report, std::vector<bool>& taken) {
  return clsSplitTables(report, taken).FindMarked();
}

void FindSplitTables(const clsReportSample& report, std::vector<bool>& taken, std::vector<FoundTable>& tables) {
  clsSplitTables(report, taken).FindSplit(tables);
}

}  // namespace quillon
