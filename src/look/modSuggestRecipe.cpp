#include "modSuggestRecipe.h"

#include <fmt/format.h>

#include <algorithm>

#include "modNumbers.h"
#include "modPreviewText.h"
#include "modTableKeys.h"
#include "modTableKinds.h"

namespace quillon {

namespace {

/// Bytes that a run of the recipe may have to read: each section looks for its key texts from the report's top.
constexpr size_t kMostWork = size_t{4} << 30;
constexpr size_t kMostSections = 1000;
constexpr size_t kFewestSections = 50;

constexpr std::string_view kNoKey = "no text of the report tells where it lies";
constexpr std::string_view kNoColumns = "no column is blank in all of its rows";
constexpr std::string_view kTooMany = "a recipe with that many sections would be slow";
constexpr std::string_view kOddLine = "it does not fit the columns of the table around it";

using Bounds = std::pair<size_t, size_t>;  ///< First and last line of a part, indexes

/// Turns kinds of tables into sections.
class clsSections {
 public:
  clsSections(const clsReportLines& report, SuggestedRecipe& recipe) : report_(report), recipe_(recipe) {
    nLeft_ = std::clamp(kMostWork / (report.Bytes() + 1), kFewestSections, kMostSections);
  }

  void Make() {
    const std::vector<TableKind> kinds = FindTableKinds(report_);
    for (const TableKind& kind : kinds) {
      for (const TableBlock& part : kind.parts) all_.emplace_back(part.nFirst, part.nLast);
    }
    std::sort(all_.begin(), all_.end());
    for (const TableKind& kind : kinds) AddKind(kind);
    std::sort(recipe_.leftOut.begin(), recipe_.leftOut.end(),
              [](const LeftOutStretch& a, const LeftOutStretch& b) { return a.lFirstLine < b.lFirstLine; });
  }

 private:
  void AddKind(const TableKind& kind) {
    SuggestedTable table;
    table.lColumns = kind.lColumns;
    table.sRuler = kind.sRuler;
    table.bDoubtful = kind.bDoubtful;
    std::vector<Bounds> parts;
    for (const TableBlock& part : kind.parts) parts.emplace_back(part.nFirst, part.nLast);
    if (kind.lColumns < 2) {
      for (const Bounds& part : parts) LeaveOut(part, kNoColumns);
      return;
    }
    if (parts.size() > nLeft_ && nLeft_ > 0 && StandAlone(parts)) {
      table.bWithFurniture = true;
      parts = {{parts.front().first, parts.back().second}};
      Widen(table.sRuler, parts.front());
    }
    for (const Bounds& part : parts) AddSection(part, table);
    NoteOddLines(parts);
    if (!table.sections.empty()) recipe_.tables.push_back(std::move(table));
  }

  /// True if no table of another kind stands between the parts.
  bool StandAlone(const std::vector<Bounds>& parts) const {
    const auto itFirst = std::lower_bound(all_.begin(), all_.end(), parts.front());
    return static_cast<size_t>(all_.end() - itFirst) >= parts.size() &&
           *(itFirst + static_cast<ptrdiff_t>(parts.size()) - 1) == parts.back();
  }

  /// What stands between the pages is not to be lost behind the last column.
  void Widen(std::string& sRuler, const Bounds& part) const {
    int32_t lWidest = 0;
    for (size_t n = part.first; n <= part.second; ++n) lWidest = std::max(lWidest, report_.Lines()[n].lWidth);
    if (static_cast<size_t>(lWidest) > sRuler.size()) sRuler.resize(static_cast<size_t>(lWidest), '-');
  }

  void AddSection(const Bounds& part, SuggestedTable& table) {
    if (nLeft_ == 0) return LeaveOut(part, kTooMany);
    const auto it = std::lower_bound(all_.begin(), all_.end(), Bounds{part.first, 0});
    const size_t nAfter = it == all_.begin() ? 0 : (it - 1)->second + 1;
    const auto itNext = std::upper_bound(all_.begin(), all_.end(), Bounds{part.second, SIZE_MAX});
    const size_t nBefore = itNext == all_.end() ? report_.Lines().size() : itNext->first;
    const auto start = FindStartKey(report_, part.first, part.second, std::min(nAfter, part.first));
    const auto end = FindEndKey(report_, part.first, part.second, nBefore);
    if (!start || !end) return LeaveOut(part, kNoKey);
    --nLeft_;
    SuggestedSection section;
    section.lFirstLine = static_cast<int64_t>(part.first) + 1;
    section.lLastLine = static_cast<int64_t>(part.second) + 1;
    section.sStartLine = start->sText;
    section.lStartOffset = static_cast<int64_t>(part.first) - static_cast<int64_t>(start->nLine);
    section.sEndLine = end->sText;
    section.lEndOffset = static_cast<int64_t>(part.second) - static_cast<int64_t>(end->nLine);
    section.bKeyInRows = start->bInRows || end->bInRows;
    section.bKeyFar = start->bFar || end->bFar;
    table.lRows += section.lLastLine - section.lFirstLine + 1;
    table.sections.push_back(std::move(section));
  }

  /// Lines between two parts that stand close together, such as a row that is shifted: a person must know of them.
  void NoteOddLines(const std::vector<Bounds>& parts) {
    constexpr size_t kClose = 3;
    for (size_t i = 1; i < parts.size(); ++i) {
      const Bounds between{parts[i - 1].second + 1, parts[i].first - 1};
      if (between.second < between.first || between.second - between.first >= kClose) continue;
      const auto odd = [&](size_t n) {
        const ReportLine& line = report_.Lines()[n];
        return !line.IsBlank() && !line.bRule && !line.bFurniture && line.lFigures > 0;
      };
      bool bOdd = true;
      for (size_t n = between.first; n <= between.second; ++n) bOdd = bOdd && odd(n);
      if (bOdd) LeaveOut(between, kOddLine);
    }
  }

  void LeaveOut(const Bounds& part, std::string_view sReason) {
    recipe_.leftOut.push_back({static_cast<int64_t>(part.first) + 1, static_cast<int64_t>(part.second) + 1, sReason});
  }

  const clsReportLines& report_;
  SuggestedRecipe& recipe_;
  std::vector<Bounds> all_;  ///< Of all kinds, in the order of the report
  size_t nLeft_ = 0;         ///< Sections that the recipe may still have
};

std::string LinesText(int64_t lFirst, int64_t lLast) {
  return lFirst == lLast ? fmt::format("line {}", lFirst) : fmt::format("lines {} to {}", lFirst, lLast);
}

std::string TableText(const SuggestedTable& table, size_t nTable) {
  std::string sText =
      fmt::format("\n; Suggestion {}: {}, {}, {} columns{}.\n", nTable,
                  LinesText(table.sections.front().lFirstLine, table.sections.back().lLastLine),
                  CountedText(table.lRows, "row", "rows"), table.lColumns, table.bDoubtful ? "; perhaps no table" : "");
  if (table.sections.size() > 1) {
    sText += fmt::format(
        "; It goes over pages or comes again: {} sections with one ruler, so that their rows come under each other.\n"
        "; Headings and titles between them are left out.\n",
        table.sections.size());
  }
  if (table.bWithFurniture) {
    sText += "; It goes over too many pages for a section each: the headings of the pages come along as rows.\n";
  }
  return sText;
}

std::string SectionText(const SuggestedTable& table, const SuggestedSection& section, size_t nSection) {
  std::string sNote;
  if (section.bKeyFar) sNote += "; a key text is far away, so lines put in between would shift it";
  if (section.bKeyInRows) sNote += "; a key text is from the rows, so the next report may not have it";
  const std::string sLines = LinesText(section.lFirstLine, section.lLastLine);
  std::string sText;
  if (table.sections.size() > 1 || !sNote.empty()) {
    sText = fmt::format("; L{}{}.\n", std::string_view(sLines).substr(1), sNote);
  }
  return sText + fmt::format(
                     "[Table {}]\nReadStartLine={}\nReadStartLineOffset={}\nReadEndLine={}\nReadEndLineOffset={}\n"
                     "Parsing={}\nWriteColumn=A\n",
                     nSection, section.sStartLine, section.lStartOffset, section.sEndLine, section.lEndOffset,
                     table.sRuler);
}

}  // namespace

bool SuggestRecipe(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, SuggestedRecipe& recipe,
                   Failure& failure) {
  recipe = {};
  clsReportLines report;
  if (!report.Read(sInput, options, lTabSize, failure)) return false;
  recipe.bWholeReport = report.IsWhole();
  recipe.lLinesLookedAt = static_cast<int64_t>(report.Lines().size());
  clsSections(report, recipe).Make();
  return true;
}

std::string SuggestedRecipe::Text() const {
  std::string sText = std::string(kSuggestionBegins) +
                      " Each key text stands on the line meant for the first time, and each\n"
                      "; ruler is drawn over the columns that are blank in all rows. Look at it before you trust it.\n";
  if (!bWholeReport) {
    sText += fmt::format(
        "; Only the first {} lines of the report were looked at: tables behind them are missing here, and one that\n"
        "; reaches line {} ends there.\n",
        lLinesLookedAt, lLinesLookedAt);
  }
  for (const LeftOutStretch& stretch : leftOut) {
    sText += fmt::format("; Left out: {}, as {}.\n", LinesText(stretch.lFirstLine, stretch.lLastLine), stretch.sReason);
  }
  sText += "[Header]\nProduct=QLN-B\nFileType=RECIPE\nFileFormat=1.0\n";
  size_t nSection = 0;
  for (size_t i = 0; i < tables.size(); ++i) {
    sText += TableText(tables[i], i + 1);
    for (const SuggestedSection& section : tables[i].sections) sText += SectionText(tables[i], section, ++nSection);
  }
  return sText;
}

}  // namespace quillon
