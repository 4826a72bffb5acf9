#include "modFindTables.h"

#include <algorithm>
#include <map>
#include <set>

#include "clsTableShape.h"
#include "modCodeColumns.h"
#include "modColumnNames.h"
#include "modDistantLines.h"
#include "modFurtherLines.h"
#include "modGroupHeadings.h"
#include "modGroupTitles.h"
#include "modMendTables.h"
#include "modNamesByKind.h"
#include "modRecordsByLabel.h"
#include "modRowClusters.h"
#include "modRowKinds.h"
#include "modRowsOfCluster.h"
#include "modSideBySide.h"
#include "modSplitTables.h"
#include "modStarTotals.h"
#include "modStretchKeys.h"
#include "modTidyOfShape.h"

namespace quillon {

namespace {

class clsTableFinder {
 public:
  explicit clsTableFinder(const clsReportSample& report) : report_(report), claimed_(report.Lines().size()) {}

  std::vector<FoundTable> Find() {
    std::vector<bool> taken(report_.Lines().size());
    tables_ = FindRecordsByLabel(report_, taken);
    for (FoundTable& table : FindLabelLists(report_, taken)) tables_.push_back(std::move(table));
    for (FoundTable& table : FindLabelSheets(report_, taken)) tables_.push_back(std::move(table));
    for (FoundTable& table : FindMarkedTables(report_, taken)) tables_.push_back(std::move(table));
    owners_.totals.assign(report_.Lines().size(), false);
    std::vector<bool> noRows = taken;
    for (const size_t n : FindStarTotals(report_)) noRows[n] = owners_.totals[n] = true;
    for (const size_t n : FindLoneLabels(report_, taken)) noRows[n] = true;
    for (const RowCluster& cluster : FindRowClusters(report_, noRows)) AddCluster(cluster.rows);
    AddLeft(std::move(noRows));
    while (MergeTables()) {
    }
    DropTitleTables();
    FindSplitTables(report_, taken, tables_);
    JoinDistantLines(report_, tables_);
    for (FoundTable& table : tables_) PartSideBySide(report_, table);
    MarkOwners();
    for (FoundTable& table : tables_) {
      if (table.bDoubtful || table.bRecords) continue;
      const clsTableShape shape(report_, table.rows, table.headingLines);
      KeepCodes(report_, shape, table.rows, table.tidy.row);
      for (const size_t n : FindIndentedTitles(report_, shape, table.rows, owners_, table.tidy)) {
        table.furtherLines.push_back(n);
      }
    }
    std::vector<size_t> before;
    for (const FoundTable& table : tables_) before.push_back(table.rows.size());
    MendTables();
    Reshape(before);
    DropRepeated();
    MarkOwners();
    for (FoundTable& table : tables_) {
      if (table.bDoubtful) continue;
      const clsTableShape shape(report_, table.rows, table.headingLines);
      if (!table.bRecords) FindFurtherLines(report_, shape, table.rows, owners_, table.tidy);
      if (table.tidy.join == TidyJoin::Up) DropBalances(report_, owners_, table.rows, table.tidy);
      const size_t nNames = table.headingLines.empty() ? table.rows.front() : table.headingLines.back();
      table.tidy.headings =
          FindGroupHeadings(report_, table.rows, owners_, nNames, table.tidy.join != TidyJoin::None, shape.Columns());
    }
    MendTables();
    for (FoundTable& table : tables_) {
      table.namesByKind = NamesByKind(report_, table);
      table.lFirstLine = static_cast<int64_t>(table.rows.front()) + 1;
      table.lLastLine = static_cast<int64_t>(table.rows.back()) + 1;
    }
    std::stable_partition(tables_.begin(), tables_.end(), [](const FoundTable& table) { return !table.bDoubtful; });
    return std::move(tables_);
  }

 private:
  /// Rows under one heading.
  struct Part {
    std::vector<size_t> rows;
    std::vector<size_t> heading;  ///< Lines of the first one
  };

  void AddCluster(const std::vector<size_t>& lines) {
    for (const std::vector<size_t>& rows : RowsOfCluster(report_, lines)) AddRows(rows);
  }

  /// Lines that a cluster of other lines shut out have another chance, if they stand below names of their own.
  void AddLeft(std::vector<bool> noRows) {
    constexpr size_t kFewest = 3;
    for (const FoundTable& table : tables_) {
      for (const size_t n : table.headingLines) noRows[n] = true;
    }
    for (size_t n = 0; n < noRows.size(); ++n) noRows[n] = noRows[n] || claimed_[n];
    const size_t nBefore = tables_.size();
    for (const RowCluster& cluster : FindRowClusters(report_, noRows)) AddCluster(cluster.rows);
    size_t n = 0;
    std::erase_if(tables_, [&](const FoundTable& table) {
      const bool bSure = !table.bDoubtful && !table.headingLines.empty() && table.rows.size() >= kFewest;
      return n++ >= nBefore && !(bSure && StandClose(table.rows));
    });
  }

  void AddRows(const std::vector<size_t>& rows) {
    if (rows.empty()) return;
    const clsTableShape shape(report_, rows);
    if (shape.Columns().size() < 2) return;
    for (const Part& part : PartsByHeading(shape, rows)) AddTable(part);
  }

  /// Rows under other names are another table, though their edges are the same.
  std::vector<Part> PartsByHeading(const clsTableShape& shape, const std::vector<size_t>& rows) const {
    std::map<size_t, std::vector<size_t>> headings;  // by the index of the row below
    for (size_t i = 0; i < rows.size(); ++i) {
      if (i > 0 && rows[i] == rows[i - 1] + 1) continue;
      std::vector<size_t> heading = HeadingLines(report_, shape, rows[i], FreeFrom(rows, i));
      // What follows a row at once is a line of its record, unless the names are printed again there.
      const bool bBehindRow = i > 0 && !heading.empty() && heading.front() == rows[i - 1] + 1;
      if (bBehindRow && !IsKnownHeading(headings, heading)) continue;
      if (!heading.empty()) headings.emplace(i, std::move(heading));
    }
    DropChanging(headings);
    DropTitles(shape, rows, headings);
    std::vector<Part> parts(1);
    size_t nPart = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
      const auto it = headings.find(i);
      if (it != headings.end()) nPart = PartUnder(shape, it->second, parts);
      if (it != headings.end() && parts[nPart].heading.empty()) parts[nPart].heading = it->second;
      parts[nPart].rows.push_back(rows[i]);
    }
    std::erase_if(parts, [](const Part& part) { return part.rows.empty(); });
    return parts;
  }

  bool IsKnownHeading(const std::map<size_t, std::vector<size_t>>& headings, const std::vector<size_t>& heading) const {
    return std::any_of(headings.begin(), headings.end(), [&](const auto& known) {
      return report_.Lines()[known.second.back()].sText == report_.Lines()[heading.back()].sText;
    });
  }

  /// The part that has most of these names already, or a new one.
  size_t PartUnder(const clsTableShape& shape, const std::vector<size_t>& heading, std::vector<Part>& parts) const {
    const std::vector<std::u32string> names = NamesOfColumns(report_, shape, heading);
    for (size_t i = 0; i < parts.size(); ++i) {
      if (parts[i].heading.empty()) return i;
      const std::vector<std::u32string> known = NamesOfColumns(report_, shape, parts[i].heading);
      size_t nNamed = 0;
      size_t nSame = 0;
      for (size_t c = 0; c < names.size(); ++c) {
        nNamed += names[c].empty() && known[c].empty() ? 0U : 1U;
        nSame += names[c] == known[c] && !names[c].empty() ? 1U : 0U;
      }
      if (nSame * 2 >= nNamed) return i;
    }
    parts.emplace_back();
    return parts.size() - 1;
  }

  /// The first line behind the row above, be it one of these or of a table that is known.
  size_t FreeFrom(const std::vector<size_t>& rows, size_t i) const {
    size_t n = rows[i];
    while (n > 0 && !claimed_[n - 1] && (i == 0 || n - 1 > rows[i - 1])) --n;
    return n;
  }

  /// Where names come again above each group, a line beside them that begins alike and goes on otherwise is the group's
  /// title.
  void DropChanging(std::map<size_t, std::vector<size_t>>& headings) const {
    std::map<std::u32string_view, size_t> counts;
    std::map<std::u32string_view, std::set<std::u32string_view>> byFirst;
    for (const auto& [i, heading] : headings) {
      for (const size_t n : heading) {
        ++counts[report_.Lines()[n].sText];
        byFirst[FirstWord(n)].insert(report_.Lines()[n].sText);
      }
    }
    for (auto& [i, heading] : headings) {
      const auto comesAgain = [&](size_t n) { return counts[report_.Lines()[n].sText] > 1; };
      if (std::none_of(heading.begin(), heading.end(), comesAgain)) continue;
      std::erase_if(heading, [&](size_t n) { return !comesAgain(n) && byFirst[FirstWord(n)].size() > 1; });
    }
  }

  /// With the blanks in front of it.
  std::u32string_view FirstWord(size_t n) const {
    const SampleLine& line = report_.Lines()[n];
    return line.sText.substr(0, static_cast<size_t>(line.marks.front().lEnd) + 1);
  }

  /// Lines of one text that begin alike and go on otherwise are titles of groups, even where their words stand over
  /// columns; the names may stand above them.
  void DropTitles(const clsTableShape& shape, const std::vector<size_t>& rows,
                  std::map<size_t, std::vector<size_t>>& headings) const {
    std::map<std::u32string_view, std::set<std::u32string_view>> byFirst;
    for (const auto& [i, heading] : headings)
      byFirst[FirstWord(heading.back())].insert(report_.Lines()[heading.back()].sText);
    const auto isTitle = [&](size_t n) {
      return byFirst[FirstWord(n)].size() > 1 && (IsOneText(report_.Lines()[n]) || HasFigures(report_.Lines()[n]));
    };
    for (auto& [i, heading] : headings) {
      if (!isTitle(heading.back())) continue;
      heading = HeadingLines(report_, shape, heading.back(), FreeFrom(rows, i));
      if (!heading.empty() && isTitle(heading.back())) heading.clear();
    }
    std::erase_if(headings, [](const auto& heading) { return heading.second.empty(); });
  }

  static bool HasFigures(const SampleLine& line) {
    return std::any_of(line.marks.begin(), line.marks.end(),
                       [](const LineMark& mark) { return mark.kind == MarkKind::Number; });
  }

  static bool IsOneText(const SampleLine& line) {
    for (size_t i = 1; i < line.marks.size(); ++i) {
      if (line.marks[i].lStart - line.marks[i - 1].lEnd > 2) return false;
    }
    return true;
  }

  /// Stretches of a line that two blanks part.
  static size_t PiecesOf(const SampleLine& line) {
    size_t nPieces = 1;
    for (size_t i = 1; i < line.marks.size(); ++i)
      nPieces += line.marks[i].lStart - line.marks[i - 1].lEnd > 2 ? 1U : 0U;
    return nPieces;
  }

  void SetColumns(const clsTableShape& shape, FoundTable& table) const {
    table.tidy.row = TidyOfShape(report_, shape, table.rows);
    table.tidy.fills = FilledFromAbove(report_, shape, table.rows);
    for (const std::u32string& sName : NamesOfColumns(report_, shape, table.headingLines)) {
      table.tidy.row.names.push_back(Utf8Of(sName));
    }
  }

  /// Rows that a recipe takes beside those that were found may have values where those have none: columns of their own.
  void Reshape(const std::vector<size_t>& before) {
    for (size_t i = 0; i < tables_.size(); ++i) {
      FoundTable& table = tables_[i];
      const bool bGrown = table.rows.size() >= before[i] + 2;
      if (table.bDoubtful || table.bRecords || !bGrown || table.headingLines.empty()) continue;
      if (table.tidy.row.cut.places.size() != 1 || !table.tidy.row.likes.empty()) continue;
      const clsTableShape shape(report_, table.rows, table.headingLines);
      if (shape.Columns().size() <= table.tidy.row.cut.places.front().size()) continue;
      if (shape.Columns().size() != PiecesOf(report_.Lines()[table.headingLines.back()])) continue;
      SetColumns(shape, table);
      KeepCodes(report_, shape, table.rows, table.tidy.row);
    }
  }

  void AddTable(const Part& part) {
    const std::vector<size_t>& rows = part.rows;
    const std::vector<size_t>& heading = part.heading;
    const clsTableShape shape(report_, rows, heading);
    if (shape.Columns().size() < 2) return;
    FoundTable table;
    table.rows = rows;
    for (const size_t n : heading) table.headingLines.push_back(n);
    SetColumns(shape, table);
    const std::vector<std::string>& names = table.tidy.row.names;
    const auto nNamed =
        static_cast<size_t>(std::count_if(names.begin(), names.end(), [](const std::string& s) { return !s.empty(); }));
    if (rows.size() == 1 && nNamed < names.size()) return;
    table.bDoubtful = IsDoubtful(shape, rows, nNamed * 5 >= names.size() * 3);
    if (!table.bDoubtful) {
      for (const size_t n : rows) claimed_[n] = true;
    }
    tables_.push_back(std::move(table));
  }

  bool IsDoubtful(const clsTableShape& shape, const std::vector<size_t>& rows, bool bHeading) const {
    constexpr size_t kFew = 4;
    const std::vector<ColumnKinds> kinds = KindsOfRows(report_, shape, rows);
    const auto nFigures = static_cast<size_t>(std::count_if(
        kinds.begin(), kinds.end(), [](const ColumnKinds& kind) { return kind.IsNumeric() || kind.IsDate(); }));
    constexpr size_t kEnough = 4;
    if (bHeading && rows.size() < kFew) {
      return rows.size() == 1 ? kinds.size() < kEnough || nFigures * 5 < kinds.size() * 3 : nFigures == 0;
    }
    if (kinds.size() == 2 && (nFigures == 0 || rows.size() < 8)) return true;
    if (bHeading) return nFigures == 0 && rows.size() < 8;
    if (rows.size() < kFew) return !AreAll(rows) || nFigures < 2 || kinds.size() < 3;
    constexpr size_t kMany = 8;
    return !StandClose(rows) ||
           (nFigures == 0 ? kinds.size() < 3 || rows.size() < kMany : rows.size() < kMany && kinds.size() < 4);
  }

  /// Most lines between the first and the last row, blank and drawn ones aside, are rows.
  bool StandClose(const std::vector<size_t>& rows) const {
    size_t nLines = 0;
    for (size_t n = rows.front(); n <= rows.back(); ++n) {
      const SampleLine& line = report_.Lines()[n];
      nLines += line.IsBlank() || line.bDrawn ? 0U : 1U;
    }
    return rows.size() * 2 > nLines;
  }

  /// The report has no other line, blank ones aside.
  bool AreAll(const std::vector<size_t>& rows) const {
    constexpr size_t kFewest = 3;
    const std::vector<SampleLine>& lines = report_.Lines();
    const auto nFilled =
        std::count_if(lines.begin(), lines.end(), [](const SampleLine& line) { return !line.IsBlank(); });
    return rows.size() >= kFewest && rows.size() == static_cast<size_t>(nFilled) && report_.IsWhole();
  }

  /// Titles of groups share edges, too, but are no table of their own; nor are those of several tables.
  void DropTitleTables() {
    const auto isTitles = [&](const FoundTable& table) {
      std::vector<size_t> below;
      for (const FoundTable& other : tables_) {
        if (&other == &table || other.bDoubtful) continue;
        if (AreTitlesOf(report_, table.rows, other.rows)) return true;
        below.insert(below.end(), other.rows.begin(), other.rows.end());
      }
      std::sort(below.begin(), below.end());
      return !table.bRecords && AreTitlesOfTables(report_, table.rows, below);
    };
    std::vector<bool> titles;
    for (const FoundTable& table : tables_) titles.push_back(isTitles(table));
    size_t n = 0;
    std::erase_if(tables_, [&](const FoundTable&) { return titles[n++]; });
  }

  /// Tables whose columns stand in the same places under the same names are one that the clusters divided.
  bool MergeTables() {
    for (size_t i = 0; i < tables_.size(); ++i) {
      for (size_t j = i + 1; j < tables_.size(); ++j) {
        if (tables_[i].bDoubtful || tables_[i].bRecords || tables_[j].bRecords ||
            !HaveSameColumns(tables_[i], tables_[j]))
          continue;
        Part both{tables_[i].rows, tables_[i].headingLines};
        both.rows.insert(both.rows.end(), tables_[j].rows.begin(), tables_[j].rows.end());
        std::sort(both.rows.begin(), both.rows.end());
        const size_t nColumns = tables_[i].tidy.row.cut.places.front().size();
        if (both.heading.empty()) both.heading = tables_[j].headingLines;
        if (clsTableShape(report_, both.rows, both.heading).Columns().size() != nColumns) continue;
        tables_.erase(tables_.begin() + static_cast<ptrdiff_t>(j));
        tables_.erase(tables_.begin() + static_cast<ptrdiff_t>(i));
        AddTable(both);
        std::rotate(tables_.begin() + static_cast<ptrdiff_t>(i), tables_.end() - 1, tables_.end());
        return true;
      }
    }
    return false;
  }

  bool HaveSameColumns(const FoundTable& a, const FoundTable& b) const {
    const std::vector<TidyPlace>& places = a.tidy.row.cut.places.front();
    const std::vector<TidyPlace>& others = b.tidy.row.cut.places.front();
    if (places.size() != others.size()) return false;
    size_t nNamed = 0;
    size_t nSame = 0;
    for (size_t i = 0; i < places.size(); ++i) {
      const bool bNumber = a.tidy.row.types[i].type == TidyType::Number;
      if (bNumber != (b.tidy.row.types[i].type == TidyType::Number)) return false;
      constexpr int32_t kNear = 3;
      const bool bLast = places[i].nEnd == 0 || others[i].nEnd == 0;
      if (!bLast && bNumber && std::abs(places[i].nEnd - others[i].nEnd) > kNear) return false;
      if (!bNumber && std::abs(places[i].nStart - others[i].nStart) > kNear) return false;
      const std::string& sName = a.tidy.row.names[i];
      const std::string& sOther = b.tidy.row.names[i];
      nNamed += sName.empty() || sOther.empty() ? 0U : 1U;
      nSame += sName == sOther && !sName.empty() ? 1U : 0U;
    }
    return nSame * 2 >= nNamed;
  }

  /// A table without names whose rows a much larger one takes, too, is a part of that one whose words stand below each
  /// other.
  void DropRepeated() {
    const auto isPartOf = [](const FoundTable& table, const FoundTable& other) {
      return !other.bDoubtful && other.rows.size() >= table.rows.size() * 3 && !other.headingLines.empty() &&
             std::includes(other.rows.begin(), other.rows.end(), table.rows.begin(), table.rows.end());
    };
    std::vector<bool> repeated;
    for (const FoundTable& table : tables_) {
      repeated.push_back(
          table.headingLines.empty() && !table.bRecords &&
          std::any_of(tables_.begin(), tables_.end(), [&](const FoundTable& other) { return isPartOf(table, other); }));
    }
    size_t n = 0;
    std::erase_if(tables_, [&](const FoundTable&) { return repeated[n++]; });
  }

  void MendTables() {
    for (size_t i = 0; i < tables_.size(); ++i) {
      FoundTable& table = tables_[i];
      if (table.bDoubtful) continue;
      MendTable(report_, owners_, static_cast<uint32_t>(i) + 1, table);
      // A recipe that takes much else beside the rows tells no table.
      const auto lRows = static_cast<int64_t>(table.rows.size());
      if (table.lStrangers * 4 > lRows || table.lMissing * 4 > lRows) table.bDoubtful = true;
    }
  }

  /// Rows, and column names wherever they are printed again.
  void MarkOwners() {
    owners_.tables.assign(report_.Lines().size(), 0);
    owners_.names.assign(report_.Lines().size(), false);
    std::set<std::u32string_view> names;
    for (size_t i = 0; i < tables_.size(); ++i) {
      const FoundTable& table = tables_[i];
      if (table.bDoubtful) continue;
      for (const size_t n : table.rows) owners_.tables[n] = static_cast<uint32_t>(i) + 1;
      for (const size_t n : table.furtherLines) owners_.tables[n] = static_cast<uint32_t>(i) + 1;
      for (const size_t n : table.headingLines) names.insert(report_.Lines()[n].sText);
    }
    for (size_t n = 0; n < owners_.names.size(); ++n) owners_.names[n] = names.contains(report_.Lines()[n].sText);
  }

  const clsReportSample& report_;
  std::vector<FoundTable> tables_;
  std::vector<bool> claimed_;  ///< Rows of tables that leave little doubt
  LineOwners owners_;
};

}  // namespace

std::vector<FoundTable> FindTables(const clsReportSample& report) {
  return clsTableFinder(report).Find();
}

}  // namespace quillon
