#include "modRecordHeadings.h"

#include <algorithm>
#include <map>

#include "modColumnNames.h"
#include "modMendTables.h"
#include "modRowKinds.h"
#include "modTidyOfShape.h"

namespace quillon {

namespace {

class clsRecordHeadings {
 public:
  clsRecordHeadings(const clsReportSample& report, std::span<const size_t> rows, const LineOwners& owners)
      : report_(report), rows_(rows), owners_(owners) {}

  /// The last line in front of each group, if most groups have one that begins at the same place, the first one too.
  std::vector<size_t> Lines() const {
    std::map<int32_t, std::vector<size_t>> byStart;
    size_t nGroups = 0;
    for (size_t i = 0; i < rows_.size(); ++i) {
      if (i > 0 && rows_[i] == rows_[i - 1] + 1) continue;
      const size_t n = LineAbove(i);
      if (n == report_.Lines().size() && i > 0 && IsPlainGap(i)) continue;
      ++nGroups;
      if (n < report_.Lines().size() && IsRecord(Line(n))) byStart[Line(n).marks.front().lStart].push_back(n);
    }
    for (const auto& [lStart, lines] : byStart) {
      const bool bMost = lines.size() >= 2 && lines.size() * 2 > nGroups && lines.front() < rows_.front();
      if (bMost && Change(lines)) return lines;
    }
    return {};
  }

  std::optional<TidyPart> PartOf(const std::vector<size_t>& lines) const {
    const clsTableShape bare(report_, lines);
    if (bare.Columns().size() < 2) return std::nullopt;
    std::vector<size_t> above = HeadingLines(report_, bare, lines.front(), 0);
    if (above.size() > 1) above = {NameLine(bare, above)};
    const clsTableShape shape(report_, lines, above);
    if (shape.Columns().size() < 2) return std::nullopt;
    TidyPart part = TidyOfShape(report_, shape, lines);
    for (std::u32string sName : NamesOfColumns(report_, shape, above)) {
      if (part.names.empty() && !above.empty() && BeginsWithControl(Line(above.front()), shape)) sName.erase(0, 2);
      const std::string sOwn = part.names.empty() ? "Group" : "Group " + std::to_string(part.names.size() + 1);
      part.names.push_back(sName.empty() ? sOwn : Utf8Of(sName));
    }
    if (TakesThese(part, lines)) return part;
    part.likes.push_back(std::string(static_cast<size_t>(Line(lines.front()).marks.front().lStart), '_') + "X");
    return TakesThese(part, lines) ? std::optional(std::move(part)) : std::nullopt;
  }

 private:
  const SampleLine& Line(size_t n) const { return report_.Lines()[n]; }

  /// The line whose words begin where most columns do: others name the rows, or are titles of the report. The last one
  /// of equals.
  size_t NameLine(const clsTableShape& shape, const std::vector<size_t>& above) const {
    const auto atColumns = [&](size_t n) {
      return std::count_if(Line(n).marks.begin(), Line(n).marks.end(), [&](const LineMark& mark) {
        return std::any_of(shape.Columns().begin(), shape.Columns().end(),
                           [&](const ShapeColumn& column) { return column.lFirst == mark.lStart; });
      });
    };
    return *std::max_element(above.rbegin(), above.rend(),
                             [&](size_t a, size_t b) { return atColumns(a) < atColumns(b); });
  }

  /// The last line above row i that is no name; as many as there are lines if a row comes first.
  size_t LineAbove(size_t i) const {
    for (size_t n = rows_[i]; n > 0 && (i == 0 || n - 1 > rows_[i - 1]); --n) {
      if (Line(n - 1).IsBlank() || Line(n - 1).bDrawn || owners_.names[n - 1] || owners_.totals[n - 1]) continue;
      return owners_.tables[n - 1] == 0 ? n - 1 : report_.Lines().size();
    }
    return report_.Lines().size();
  }

  /// Nothing but blank and drawn lines above row i.
  bool IsPlainGap(size_t i) const {
    for (size_t n = rows_[i - 1] + 1; n < rows_[i]; ++n) {
      if (!Line(n).IsBlank() && !Line(n).bDrawn) return false;
    }
    return true;
  }

  /// One character at the very front, where no column is, is meant for the printer.
  static bool BeginsWithControl(const SampleLine& line, const clsTableShape& shape) {
    const LineMark& first = line.marks.front();
    return line.marks.size() > 1 && first.lStart == 0 && first.lEnd == 0 && IsDigitPlace(line.sText.front()) &&
           shape.Columns().front().lFirst > 1;
  }

  /// Several values, one of them with a digit, without labels.
  static bool IsRecord(const SampleLine& line) {
    if (line.marks.size() < 2 || SaysPage(line.sText) || SaysTotal(line.sText)) return false;
    constexpr size_t kFewest = 3;
    size_t nPieces = 1;
    for (size_t i = 0; i < line.marks.size(); ++i) {
      const char32_t ch = line.sText[static_cast<size_t>(line.marks[i].lEnd)];
      if (ch == U':' || ch == U'=') return false;
      nPieces += i > 0 && line.marks[i].lStart - line.marks[i - 1].lEnd > 2 ? 1U : 0U;
    }
    return nPieces >= kFewest && std::any_of(line.sText.begin(), line.sText.end(), IsDigitPlace);
  }

  /// The head of a page is the same again.
  bool Change(const std::vector<size_t>& lines) const {
    std::set<std::u32string_view> firsts;
    for (const size_t n : lines) {
      const LineMark& first = Line(n).marks.front();
      firsts.insert(
          Line(n).sText.substr(static_cast<size_t>(first.lStart), static_cast<size_t>(first.lEnd - first.lStart) + 1));
    }
    return firsts.size() >= 2 && firsts.size() * 2 > lines.size();
  }

  bool TakesThese(const TidyPart& part, const std::vector<size_t>& lines) const {
    TidyTable table;
    table.row = part;
    std::vector<size_t> taken = RowsTaken(report_, table);
    std::erase_if(taken, [&](size_t n) { return n > rows_.back(); });
    return taken == lines;
  }

  const clsReportSample& report_;
  std::span<const size_t> rows_;
  const LineOwners& owners_;
};

}  // namespace

std::optional<TidyPart> FindRecordHeading(const clsReportSample& report, std::span<const size_t> rows,
                                          const LineOwners& owners, const std::set<size_t>& taken) {
  const clsRecordHeadings headings(report, rows, owners);
  const std::vector<size_t> lines = headings.Lines();
  const bool bTaken = std::any_of(lines.begin(), lines.end(), [&](size_t n) { return taken.contains(n); });
  if (lines.empty() || bTaken) return std::nullopt;
  return headings.PartOf(lines);
}

}  // namespace quillon
