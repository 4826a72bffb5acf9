#include "modDistantLines.h"

#include <algorithm>
#include <map>
#include <set>

#include "clsTableShape.h"
#include "modColumnNames.h"
#include "modMendTables.h"
#include "modRecordsByLabel.h"
#include "modTidyOfShape.h"

namespace quillon {

namespace {

constexpr size_t kFurthest = 8;

class clsDistantLines {
 public:
  clsDistantLines(const clsReportSample& report, std::vector<FoundTable>& tables) : report_(report), tables_(tables) {}

  void Join() {
    for (size_t i = 0; i < tables_.size(); ++i) SplitByTurns(i);
    gone_.assign(tables_.size(), false);
    MarkOwners();
    for (size_t i = 0; i < tables_.size(); ++i) {
      if (!gone_[i] && !tables_[i].bRecords && tables_[i].rows.size() >= 3) JoinTo(i);
    }
    for (size_t i = tables_.size(); i > 0; --i) {
      if (gone_[i - 1]) tables_.erase(tables_.begin() + static_cast<ptrdiff_t>(i) - 1);
    }
  }

 private:
  /// A line of each record.
  struct Distant {
    size_t nDistance = 0;
    std::vector<size_t> lines;
  };

  void MarkOwners() {
    owners_.assign(report_.Lines().size(), 0);
    for (size_t i = tables_.size(); i > 0; --i) {
      for (const size_t n : tables_[i - 1].rows) owners_[n] = i;
      for (const size_t n : tables_[i - 1].furtherLines) owners_[n] = i;
    }
  }

  bool IsFree(size_t n) const {
    const SampleLine& line = report_.Lines()[n];
    return owners_[n] == 0 && !line.IsBlank() && !line.bDrawn;
  }

  // --- lines of one table that take turns

  /// Lines of several kinds that come in turns are a table for each kind.
  void SplitByTurns(size_t i) {
    constexpr size_t kFewest = 8;
    if (tables_[i].bRecords || tables_[i].rows.size() < kFewest) return;
    std::vector<size_t> rows = AllRows(tables_[i]);
    std::vector<size_t> heading = tables_[i].headingLines;
    if (heading.empty() && BeginWithNames(rows)) {
      heading.push_back(rows.front());
      const std::u32string_view sNames = report_.Lines()[rows.front()].sText;
      std::erase_if(rows, [&](size_t n) { return report_.Lines()[n].sText == sNames; });
    }
    const clsTableShape shape(report_, rows);
    std::vector<std::vector<FieldKind>> kinds;
    std::vector<std::u32string_view> cells;
    for (const size_t n : rows) {
      shape.Cut(report_.Lines()[n].sText, cells);
      std::vector<FieldKind>& row = kinds.emplace_back();
      for (const std::u32string_view sCell : cells) row.push_back(KindOfCell(sCell));
    }
    constexpr size_t kMostTurns = 6;
    for (size_t nTurns = 2; nTurns <= kMostTurns; ++nTurns) {
      const bool bTexts = heading.empty() && std::none_of(shape.Columns().begin(), shape.Columns().end(),
                                                          [](const ShapeColumn& column) { return column.bNumber; });
      if (!TakeTurns(rows, kinds, nTurns, bTexts)) continue;
      std::vector<std::vector<size_t>> lines(nTurns);
      size_t nTurn = 0;
      for (size_t r = 0; r < rows.size(); ++r) {
        nTurn = r > 0 && rows[r] == rows[r - 1] + 1 ? (nTurn + 1) % nTurns : 0;
        lines[nTurn].push_back(rows[r]);
      }
      const bool bDoubtful = tables_[i].bDoubtful;
      tables_[i] = TableOf(lines.front(), heading);
      tables_[i].bDoubtful = bDoubtful;
      for (size_t t = 1; t < nTurns; ++t) tables_.push_back(TableOf(lines[t], {}));
      return;
    }
  }

  /// The first line stands apart and has no figure, as all others have, but for those that are the same again.
  bool BeginWithNames(const std::vector<size_t>& rows) const {
    const std::u32string_view sFirst = report_.Lines()[rows.front()].sText;
    const auto hasDigit = [&](size_t n) {
      const std::u32string_view sText = report_.Lines()[n].sText;
      return std::any_of(sText.begin(), sText.end(), IsDigitPlace);
    };
    return rows.size() > 1 && rows[1] > rows[0] + 1 && !hasDigit(rows[0]) &&
           std::all_of(rows.begin(), rows.end(),
                       [&](size_t n) { return hasDigit(n) || report_.Lines()[n].sText == sFirst; });
  }

  /// Short runs without names may lack lines that another cluster has.
  std::vector<size_t> AllRows(const FoundTable& table) const {
    constexpr size_t kLongRun = 8;
    size_t nRuns = 1;
    for (size_t r = 1; r < table.rows.size(); ++r) nRuns += table.rows[r] == table.rows[r - 1] + 1 ? 0U : 1U;
    if (!table.headingLines.empty() || table.bDoubtful || table.rows.size() > nRuns * kLongRun) return table.rows;
    return RowsTaken(report_, table.tidy);
  }

  /// Whether runs of lines have a multiple of nTurns lines, and each turn has a column of a kind that the next one
  /// hasn't there; where there are only texts, one such turn is enough in runs of so many lines.
  static bool TakeTurns(const std::vector<size_t>& rows, const std::vector<std::vector<FieldKind>>& kinds,
                        size_t nTurns, bool bTexts) {
    size_t nRuns = 0;
    size_t nWhole = 0;
    size_t nExact = 0;
    size_t nLength = 0;
    for (size_t r = 0; r < rows.size(); ++r) {
      ++nLength;
      if (r + 1 < rows.size() && rows[r + 1] == rows[r] + 1) continue;
      ++nRuns;
      nWhole += nLength % nTurns == 0 ? 1U : 0U;
      nExact += nLength == nTurns ? 1U : 0U;
      nLength = 0;
    }
    if (nWhole * 10 < nRuns * 9) return false;
    const bool bParted = nExact * 10 >= nRuns * 9;
    size_t nOwn = 0;
    // How often each kind comes, by turn and column.
    std::vector<std::vector<std::map<FieldKind, size_t>>> counts(nTurns);
    for (auto& turn : counts) turn.resize(kinds.front().size());
    std::vector<size_t> of(nTurns);
    size_t nTurn = 0;
    for (size_t r = 0; r < rows.size(); ++r) {
      nTurn = r > 0 && rows[r] == rows[r - 1] + 1 ? (nTurn + 1) % nTurns : 0;
      ++of[nTurn];
      for (size_t c = 0; c < kinds[r].size(); ++c) ++counts[nTurn][c][kinds[r][c]];
    }
    for (size_t t = 0; t < nTurns; ++t) {
      const size_t nNext = (t + 1) % nTurns;
      for (const FieldKind kind : {FieldKind::Date, FieldKind::Digits, FieldKind::Number}) {
        const auto itHere = counts[t].front().find(kind);
        const auto itNext = counts[nNext].front().find(kind);
        const bool bBoth = itHere != counts[t].front().end() && itNext != counts[nNext].front().end();
        if (bBoth && itHere->second * 10 > of[t] * 9 && itNext->second * 10 > of[nNext] * 9) return false;
      }
      bool bOwn = false;
      for (size_t c = 0; c < counts[t].size(); ++c) {
        for (const auto& [kind, nCount] : counts[t][c]) {
          const auto it = counts[nNext][c].find(kind);
          const size_t nThere = it == counts[nNext][c].end() ? 0 : it->second;
          bOwn = bOwn || (nCount * 20 >= of[t] * 19 && nThere * 20 <= of[nNext]);
        }
      }
      nOwn += bOwn ? 1U : 0U;
    }
    return nOwn == nTurns || (bTexts && bParted && nOwn > 0);
  }

  FoundTable TableOf(const std::vector<size_t>& rows, const std::vector<size_t>& heading) const {
    FoundTable table;
    table.rows = rows;
    table.headingLines = heading;
    const clsTableShape shape(report_, rows, heading);
    table.tidy.row = TidyOfShape(report_, shape, rows);
    SetNames(shape, heading, table.tidy.row);
    return table;
  }

  void SetNames(const clsTableShape& shape, const std::vector<size_t>& heading, TidyPart& part) const {
    part.names.clear();
    for (const std::u32string& sName : NamesOfColumns(report_, shape, heading)) part.names.push_back(Utf8Of(sName));
  }

  // --- lines at a distance

  /// How many different texts the lines have.
  size_t Texts(const std::vector<size_t>& lines) const {
    std::set<std::u32string_view> texts;
    for (const size_t n : lines) texts.insert(report_.Lines()[n].sText);
    return texts.size();
  }

  void JoinTo(size_t i) {
    // What is printed again and again is a heading of pages.
    if (Texts(tables_[i].rows) * 2 < tables_[i].rows.size()) return;
    if (!tables_[i].bDoubtful && AttachLabels(i)) return;
    std::vector<Distant> found;
    std::vector<size_t> joined;
    for (size_t nDistance = 1; nDistance <= kFurthest; ++nDistance) {
      Distant distant{nDistance, {}};
      size_t nOwn = 0;
      const size_t nOther = OtherTable(i, nDistance, nOwn);
      if (nOwn * 10 > tables_[i].rows.size()) break;
      if (nOther != tables_.size()) {
        const std::vector<size_t>& rows = tables_[i].rows;
        for (const size_t n : tables_[nOther].rows) {
          if (n >= nDistance && std::binary_search(rows.begin(), rows.end(), n - nDistance)) distant.lines.push_back(n);
        }
        joined.push_back(nOther);
      } else {
        distant.lines = FreeLines(i, nDistance);
      }
      if (!distant.lines.empty() && Texts(distant.lines) > 1) found.push_back(std::move(distant));
    }
    if (found.empty() || (tables_[i].bDoubtful && IsTaken(i))) return;
    AddLines(tables_[i], found);
    for (const size_t nOther : joined) gone_[nOther] = true;
    MarkOwners();
    for (const size_t nOther : joined) {
      for (const size_t n : tables_[nOther].rows) owners_[n] = i + 1;
    }
  }

  bool AttachLabels(size_t i) {
    std::vector<bool> taken(owners_.size());
    for (size_t n = 0; n < owners_.size(); ++n) taken[n] = owners_[n] != 0;
    return AttachLabelledLines(report_, taken, tables_[i]);
  }

  /// Whether rows of a doubtful table are those of one that leaves less doubt.
  bool IsTaken(size_t i) const {
    const std::vector<size_t>& rows = tables_[i].rows;
    return std::any_of(tables_.begin(), tables_.end(), [&](const FoundTable& other) {
      if (other.bDoubtful || &other == &tables_[i]) return false;
      const std::vector<size_t> taken = RowsTaken(report_, other.tidy);
      const auto nTaken = std::count_if(rows.begin(), rows.end(),
                                        [&](size_t n) { return std::binary_search(taken.begin(), taken.end(), n); });
      return static_cast<size_t>(nTaken) * 5 > rows.size();
    });
  }

  /// The table whose rows all stand at this distance below those of table i; as many as there are tables if none.
  size_t OtherTable(size_t i, size_t nDistance, size_t& nOwn) const {
    std::map<size_t, size_t> counts;
    for (const size_t n : tables_[i].rows) {
      const size_t nBelow = n + nDistance;
      if (nBelow >= owners_.size() || owners_[nBelow] == 0) continue;
      if (owners_[nBelow] == i + 1) {
        ++nOwn;
      } else {
        ++counts[owners_[nBelow] - 1];
      }
    }
    for (const auto& [nOther, nCount] : counts) {
      const FoundTable& other = tables_[nOther];
      const bool bMost = nCount * 20 >= tables_[i].rows.size() * 17 && nCount * 20 >= other.rows.size() * 17;
      if (BeginAlike(tables_[i], other)) continue;
      if (bMost && !gone_[nOther] && !other.bRecords && ComesFirst(tables_[i], other)) return nOther;
    }
    return tables_.size();
  }

  /// Which of two tables that take turns begins the records: the one whose rows stand below a gap.
  bool ComesFirst(const FoundTable& table, const FoundTable& other) const {
    const auto belowGaps = [&](const FoundTable& t) {
      return std::count_if(t.rows.begin(), t.rows.end(), [&](size_t n) {
        return n == 0 || report_.Lines()[n - 1].IsBlank() || report_.Lines()[n - 1].bDrawn;
      });
    };
    const auto nTable = belowGaps(table);
    const auto nOther = belowGaps(other);
    return nTable != nOther ? nTable > nOther : table.rows.front() < other.rows.front();
  }

  /// Dates or numbers below each other at the front of both are rows of one table.
  bool BeginAlike(const FoundTable& table, const FoundTable& other) const {
    const auto kindOf = [&](const FoundTable& t) {
      const SampleLine& line = report_.Lines()[t.rows.front()];
      const LineMark& first = line.marks.front();
      const FieldKind kind = KindOfCell(
          line.sText.substr(static_cast<size_t>(first.lStart), static_cast<size_t>(first.lEnd - first.lStart) + 1));
      return std::pair(kind, first.lEnd);
    };
    const auto [kind, lEnd] = kindOf(table);
    const auto [kindOther, lEndOther] = kindOf(other);
    const bool bFigures = kind == FieldKind::Date || kind == FieldKind::Digits || kind == FieldKind::Number;
    return bFigures && kind == kindOther && lEnd == lEndOther;
  }

  /// Lines of no table at this distance, if nearly all rows have one that begins at the same place.
  std::vector<size_t> FreeLines(size_t i, size_t nDistance) const {
    const std::vector<size_t>& rows = tables_[i].rows;
    constexpr size_t kFewest = 5;
    std::vector<size_t> lines;
    std::map<int32_t, size_t> starts;
    for (const size_t n : rows) {
      const size_t nBelow = n + nDistance;
      if (nBelow >= owners_.size() || !IsFree(nBelow)) continue;
      lines.push_back(nBelow);
      ++starts[report_.Lines()[nBelow].marks.front().lStart];
    }
    size_t nMost = 0;
    for (const auto& [lStart, nCount] : starts) nMost = std::max(nMost, nCount);
    const bool bAll = rows.size() >= kFewest && lines.size() * 10 >= rows.size() * 9 && nMost * 10 >= lines.size() * 9;
    return bAll ? lines : std::vector<size_t>();
  }

  void AddLines(FoundTable& table, const std::vector<Distant>& found) const {
    const std::vector<size_t> names = NameLines(table, found);
    if (!names.empty()) {
      const clsTableShape shape(report_, table.rows, std::vector<size_t>{names.front()});
      table.tidy.row = TidyOfShape(report_, shape, table.rows);
      SetNames(shape, {names.front()}, table.tidy.row);
      table.headingLines = names;
    }
    for (size_t k = 0; k < found.size(); ++k) {
      const std::vector<size_t> above = names.empty() ? std::vector<size_t>() : std::vector<size_t>{names[k + 1]};
      const clsTableShape shape(report_, found[k].lines, above);
      TidyFurtherLine further;
      further.nDistance = static_cast<int32_t>(found[k].nDistance);
      further.part = IsOneText(found[k].lines) ? OneText(found[k].lines) : TidyOfShape(report_, shape, found[k].lines);
      further.part.needs.clear();
      if (further.part.cut.places.front().size() == shape.Columns().size()) SetNames(shape, above, further.part);
      MakeOwn(table, further.part);
      table.tidy.lines.push_back(std::move(further));
      table.furtherLines.insert(table.furtherLines.end(), found[k].lines.begin(), found[k].lines.end());
    }
    table.bRecords = true;
    table.bDoubtful = false;
  }

  /// Lines without a gap.
  bool IsOneText(const std::vector<size_t>& lines) const {
    return std::all_of(lines.begin(), lines.end(), [&](size_t n) {
      const auto& marks = report_.Lines()[n].marks;
      for (size_t i = 1; i < marks.size(); ++i) {
        if (marks[i].lStart - marks[i - 1].lEnd > 2) return false;
      }
      return true;
    });
  }

  TidyPart OneText(const std::vector<size_t>& lines) const {
    int32_t lStart = report_.Lines()[lines.front()].marks.front().lStart;
    for (const size_t n : lines) lStart = std::min(lStart, report_.Lines()[n].marks.front().lStart);
    TidyPart part;
    part.cut.places = {{{lStart + 1, 0}}};
    std::vector<std::u32string_view> values;
    for (const size_t n : lines) values.push_back(TrimPlaces(report_.Lines()[n].sText));
    part.types.push_back(TypingOfValues(report_, values, part.blanks));
    return part;
  }

  /// Columns of one name would become one.
  static void MakeOwn(const FoundTable& table, TidyPart& part) {
    for (std::string& sName : part.names) {
      const auto known = [&](const TidyPart& other) {
        return !sName.empty() && std::find(other.names.begin(), other.names.end(), sName) != other.names.end();
      };
      bool bKnown = known(table.tidy.row);
      for (const TidyFurtherLine& line : table.tidy.lines) bKnown = bKnown || known(line.part);
      if (bKnown) sName += " " + std::to_string(table.tidy.lines.size() + 2);
    }
  }

  /// As many lines of words as a record has lines, above the first one; none if there are none.
  std::vector<size_t> NameLines(const FoundTable& table, const std::vector<Distant>& found) const {
    constexpr size_t kMostPassed = 6;
    std::vector<size_t> names;
    size_t n = table.rows.front();
    for (size_t nPassed = 0; n > 0 && nPassed < kMostPassed && names.size() <= found.size(); --n) {
      const SampleLine& line = report_.Lines()[n - 1];
      if (line.IsBlank() || line.bDrawn) {
        if (!names.empty()) break;
        ++nPassed;
        continue;
      }
      const bool bWords = std::all_of(line.marks.begin(), line.marks.end(),
                                      [](const LineMark& mark) { return mark.kind != MarkKind::Number; });
      if (!bWords) break;
      names.insert(names.begin(), n - 1);
    }
    if (names.size() != found.size() + 1) return {};
    const clsTableShape shape(report_, table.rows);
    return NamesMost(shape, names.front()) ? names : std::vector<size_t>();
  }

  bool NamesMost(const clsTableShape& shape, size_t nLine) const {
    const std::vector<std::u32string> names = NamesOfColumns(report_, shape, {nLine});
    const auto nNamed = static_cast<size_t>(
        std::count_if(names.begin(), names.end(), [](const std::u32string& sName) { return !sName.empty(); }));
    return nNamed * 2 > names.size() && nNamed > 1;
  }

  const clsReportSample& report_;
  std::vector<FoundTable>& tables_;
  std::vector<size_t> owners_;  ///< Table of each line from 1, 0 for none
  std::vector<bool> gone_;      ///< Tables that became lines of another one
};

}  // namespace

void JoinDistantLines(const clsReportSample& report, std::vector<FoundTable>& tables) {
  clsDistantLines(report, tables).Join();
}

}  // namespace quillon
