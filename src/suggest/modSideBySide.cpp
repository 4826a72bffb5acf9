#include "modSideBySide.h"

#include <algorithm>

#include "clsTableShape.h"

namespace quillon {

namespace {

std::string NameAt(const TidyPart& part, size_t n) {
  return n < part.names.size() ? part.names[n] : std::string();
}

/// Whether the columns come nRecords times, each time at a distance of their own: texts by their left edge, numbers by
/// their right one.
bool ComesAgain(const std::vector<ShapeColumn>& columns, size_t nRecords) {
  const size_t nColumns = columns.size() / nRecords;
  if (nColumns == 0 || nColumns * nRecords != columns.size()) return false;
  constexpr int32_t kNear = 1;
  for (size_t r = 1; r < nRecords; ++r) {
    int32_t lPitch = 0;
    for (size_t i = 0; i < nColumns; ++i) {
      const ShapeColumn& column = columns[r * nColumns + i];
      if (column.bNumber != columns[i].bNumber) return false;
      const int32_t lFar = column.bNumber ? column.lLast - columns[i].lLast : column.lFirst - columns[i].lFirst;
      if (i == 0) lPitch = lFar;
      if (std::abs(lFar - lPitch) > kNear) return false;
    }
  }
  return true;
}

bool HaveOneName(const TidyPart& part, size_t nRecords, bool& bNamed) {
  const size_t nColumns = part.cut.places.front().size() / nRecords;
  for (size_t n = 0; n < part.cut.places.front().size(); ++n) {
    const std::string sName = NameAt(part, n);
    bNamed = bNamed || !sName.empty();
    if (sName != NameAt(part, n % nColumns)) return false;
  }
  return true;
}

/// Whether values are as wide each time, as far as different ones can be.
bool AreAsWide(const std::vector<ShapeColumn>& columns, size_t nRecords) {
  const size_t nColumns = columns.size() / nRecords;
  for (size_t n = nColumns; n < columns.size(); ++n) {
    const int32_t lWidth = columns[n].lLast - columns[n].lFirst + 1;
    const int32_t lFirst = columns[n % nColumns].lLast - columns[n % nColumns].lFirst + 1;
    constexpr int32_t kFar = 4;
    if (columns[n].bNumber ? std::abs(lWidth - lFirst) > kFar : lWidth > lFirst * 3 || lFirst > lWidth * 3)
      return false;
  }
  return true;
}

bool HasBothKinds(const std::vector<ShapeColumn>& columns) {
  const auto isText = [](const ShapeColumn& column) { return !column.bNumber; };
  return std::any_of(columns.begin(), columns.end(), isText) && !std::all_of(columns.begin(), columns.end(), isText);
}

bool AreTexts(const std::vector<ShapeColumn>& columns) {
  return std::none_of(columns.begin(), columns.end(), [](const ShapeColumn& column) { return column.bNumber; });
}

bool SameType(const TidyTyping& a, const TidyTyping& b) {
  return a.type == b.type && a.bComma == b.bComma && a.sDateForm == b.sDateForm;
}

/// What the columns of each record need: what one of them has must do for all. Blanks of the further ones are records
/// that lack.
std::vector<TidyNeed> NeedsOfAll(const std::vector<TidyNeed>& needs, size_t nColumns, size_t nAll) {
  std::vector<TidyNeed> common;
  const auto needOf = [&](size_t n) {
    return std::find_if(needs.begin(), needs.end(), [&](const TidyNeed& need) { return need.column == n; });
  };
  for (size_t c = 0; c < nColumns; ++c) {
    if (needOf(c) == needs.end()) continue;
    TidyNeed& need = common.emplace_back(*needOf(c));
    for (size_t n = c + nColumns; n < nAll; n += nColumns) {
      if (needOf(n) == needs.end()) need.alternatives = {{TidyKind::Any, {}}};
      if (needOf(n) == needs.end()) break;
      for (const TidyKindOrText& kind : needOf(n)->alternatives) {
        const bool bKnown = std::any_of(need.alternatives.begin(), need.alternatives.end(), [&](const auto& known) {
          return known.kind == kind.kind && known.sText == kind.sText;
        });
        if (!bKnown && kind.kind != TidyKind::Blank) need.alternatives.push_back(kind);
      }
    }
  }
  return common;
}

void PartPlaces(TidyPart& part, size_t nRecords) {
  const std::vector<TidyPlace> all = part.cut.places.front();
  const size_t nColumns = all.size() / nRecords;
  part.cut.places.clear();
  for (size_t r = 0; r < nRecords; ++r) {
    const auto itFrom = all.begin() + static_cast<ptrdiff_t>(r * nColumns);
    part.cut.places.emplace_back(itFrom, itFrom + static_cast<ptrdiff_t>(nColumns));
  }
  for (size_t n = nColumns; n < part.types.size(); ++n) {
    TidyTyping& typing = part.types[n % nColumns];
    if (SameType(typing, part.types[n])) continue;
    typing = {};
    typing.type = TidyType::Text;
  }
  part.types.resize(std::min(part.types.size(), nColumns));
  part.names.resize(std::min(part.names.size(), nColumns));
  part.needs = NeedsOfAll(part.needs, nColumns, all.size());
}

/// The columns that the places of a part were made of; none if that can't be told.
std::vector<ShapeColumn> ColumnsOf(const clsReportSample& report, const std::vector<size_t>& lines,
                                   const std::vector<size_t>& heading, const TidyPart& part) {
  if (part.cut.places.size() != 1) return {};
  for (const std::vector<size_t>& names : {heading, std::vector<size_t>()}) {
    const clsTableShape shape(report, lines, names);
    if (shape.Columns().size() == part.cut.places.front().size()) return shape.Columns();
  }
  return {};
}

/// Lines at the distance below the rows.
std::vector<size_t> LinesBelow(const clsReportSample& report, const FoundTable& table, int32_t lDistance) {
  std::vector<size_t> lines;
  for (const size_t n : table.rows) {
    const size_t nBelow = n + static_cast<size_t>(lDistance);
    if (nBelow < report.Lines().size() && !report.Lines()[nBelow].IsBlank()) lines.push_back(nBelow);
  }
  return lines;
}

}  // namespace

void PartSideBySide(const clsReportSample& report, FoundTable& table) {
  TidyPart& row = table.tidy.row;
  constexpr size_t kFewest = 3;
  if (table.rows.size() < kFewest || !table.tidy.fills.empty()) return;
  const std::vector<ShapeColumn> columns = ColumnsOf(report, table.rows, table.headingLines, row);
  std::vector<std::vector<ShapeColumn>> below;
  for (const TidyFurtherLine& line : table.tidy.lines) {
    if (!line.IsByDistance()) return;
    below.push_back(ColumnsOf(report, LinesBelow(report, table, line.nDistance), {}, line.part));
  }
  for (size_t nRecords = columns.size(); nRecords >= 2; --nRecords) {
    bool bNamed = false;
    if (!ComesAgain(columns, nRecords) || !HaveOneName(row, nRecords, bNamed)) continue;
    const bool bOneText = nRecords == columns.size() && AreTexts(columns) && !table.tidy.lines.empty();
    if (!bNamed && (!(HasBothKinds(columns) || bOneText) || !AreAsWide(columns, nRecords))) continue;
    const bool bBelow = std::all_of(below.begin(), below.end(), [&](const std::vector<ShapeColumn>& line) {
      return !line.empty() && ComesAgain(line, nRecords);
    });
    if (!bBelow) continue;
    PartPlaces(row, nRecords);
    for (TidyFurtherLine& line : table.tidy.lines) PartPlaces(line.part, nRecords);
    return;
  }
}

namespace {

/// Where the texts of a line begin, parted by gaps; none if one of them is a number.
std::vector<int32_t> StartsOf(const SampleLine& line) {
  std::vector<int32_t> starts;
  for (size_t i = 0; i < line.marks.size(); ++i) {
    const bool bBegins = i == 0 || line.marks[i].lStart - line.marks[i - 1].lEnd > 2;
    const bool bEnds = i + 1 == line.marks.size() || line.marks[i + 1].lStart - line.marks[i].lEnd > 2;
    if (bBegins && bEnds && line.marks[i].kind == MarkKind::Number) return {};
    if (bBegins) starts.push_back(line.marks[i].lStart);
  }
  return starts;
}

/// Runs of lines with starts.
std::vector<std::vector<size_t>> BlocksOf(const clsReportSample& report, const std::vector<bool>& taken) {
  std::vector<std::vector<size_t>> blocks;
  for (size_t n = 0; n < report.Lines().size(); ++n) {
    const SampleLine& line = report.Lines()[n];
    if (line.IsBlank() || line.bDrawn || taken[n]) continue;
    if (blocks.empty() || blocks.back().back() + 1 != n) blocks.emplace_back();
    blocks.back().push_back(n);
  }
  return blocks;
}

/// The starts that all lines of all blocks but the last one have; none if they differ or have no common distance.
std::vector<int32_t> CommonStarts(const clsReportSample& report, const std::vector<std::vector<size_t>>& blocks) {
  std::vector<int32_t> common;
  for (size_t b = 0; b < blocks.size(); ++b) {
    for (const size_t n : blocks[b]) {
      const std::vector<int32_t> starts = StartsOf(report.Lines()[n]);
      if (common.empty()) common = starts;
      const bool bShort = b + 1 == blocks.size() && !starts.empty() && starts.size() < common.size() &&
                          std::equal(starts.begin(), starts.end(), common.begin());
      if (common.size() < 2 || (starts != common && !bShort)) return {};
    }
  }
  for (size_t i = 2; i < common.size(); ++i) {
    if (common[i] - common[i - 1] != common[1] - common[0]) return {};
  }
  return common;
}

TidyPart PartOfLabels(const std::vector<int32_t>& starts) {
  TidyPart part;
  for (size_t i = 0; i < starts.size(); ++i) {
    const bool bLast = i + 1 == starts.size();
    part.cut.places.push_back({{starts[i] + 1, bLast ? 0 : starts[i + 1] - 1}});
  }
  part.types.push_back({TidyType::Text, false, 0, {}});
  return part;
}

}  // namespace

std::vector<FoundTable> FindLabelSheets(const clsReportSample& report, std::vector<bool>& taken) {
  constexpr size_t kFewestBlocks = 4;
  constexpr size_t kMostLines = 8;
  const std::vector<std::vector<size_t>> blocks = BlocksOf(report, taken);
  const size_t nLines = blocks.empty() ? 0 : blocks.front().size();
  const bool bAlike =
      std::all_of(blocks.begin(), blocks.end(), [&](const auto& block) { return block.size() == nLines; });
  if (blocks.size() < kFewestBlocks || !bAlike || nLines < 2 || nLines > kMostLines) return {};
  const std::vector<int32_t> starts = CommonStarts(report, blocks);
  if (starts.empty()) return {};
  FoundTable table;
  table.bRecords = true;
  table.tidy.row = PartOfLabels(starts);
  for (size_t k = 1; k < nLines; ++k) {
    TidyFurtherLine further;
    further.nDistance = static_cast<int32_t>(k);
    further.part = PartOfLabels(starts);
    table.tidy.lines.push_back(std::move(further));
  }
  for (const std::vector<size_t>& block : blocks) {
    table.rows.push_back(block.front());
    table.furtherLines.insert(table.furtherLines.end(), block.begin() + 1, block.end());
    for (const size_t n : block) taken[n] = true;
  }
  std::vector<FoundTable> tables;
  tables.push_back(std::move(table));
  return tables;
}

}  // namespace quillon
