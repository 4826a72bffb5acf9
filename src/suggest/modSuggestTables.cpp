#include "modSuggestTables.h"

#include <fmt/format.h>

#include <algorithm>

#include "clsSuggestAccount.h"
#include "clsTidyReport.h"
#include "modEventLoop.h"
#include "modNumbers.h"
#include "modRecipeOfTables.h"
#include "modStarTotals.h"
#include "modText.h"

namespace quillon {

namespace {

bool IsWanted(const SuggestChoices& choices, const TidyPart& heading) {
  if (choices.sHeadings == "all") return true;
  if (choices.sHeadings == "none") return false;
  return std::any_of(heading.names.begin(), heading.names.end(), [&](const std::string& sName) {
    return FindNoCase(sName, choices.sHeadings) != std::string_view::npos;
  });
}

void Choose(const SuggestChoices& choices, std::vector<FoundTable>& tables) {
  const bool bAllDoubtful = std::all_of(tables.begin(), tables.end(), [](const FoundTable& t) { return t.bDoubtful; });
  for (size_t i = 0; i < tables.size(); ++i) {
    FoundTable& table = tables[i];
    const auto lNumber = static_cast<int32_t>(i) + 1;
    table.bChosen = choices.tables.empty()
                        ? !table.bDoubtful || (bAllDoubtful && i == 0)
                        : std::find(choices.tables.begin(), choices.tables.end(), lNumber) != choices.tables.end();
    for (auto it = table.tidy.headings.begin(); it != table.tidy.headings.end();) {
      if (IsWanted(choices, *it)) {
        ++it;
      } else {
        table.otherHeadings.push_back(std::move(*it));
        it = table.tidy.headings.erase(it);
      }
    }
  }
}

/// No name yet, or one that NameSheets made; another is a person's.
bool IsOwnSheetName(std::string_view sSheet) {
  constexpr std::string_view kOwn = "Table ";
  return sSheet.empty() || (sSheet.starts_with(kOwn) &&
                            sSheet.substr(kOwn.size()).find_first_not_of("0123456789") == std::string_view::npos);
}

bool RunOver(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, TableSuggestion& suggestion,
             Failure& failure, const SuggestProgress& progress) {
  std::vector<FoundTable*> found;
  std::vector<TidyTable> tables;
  for (FoundTable& table : suggestion.tables) {
    if (!table.bChosen) continue;
    found.push_back(&table);
    tables.push_back(table.tidy);
  }
  clsLineReader reader;
  if (!reader.Open(sInput, options, failure)) return false;
  for (size_t i = 0; i < tables.size(); ++i) tables[i].lNumber = static_cast<int32_t>(i) + 1;
  clsSuggestAccount account(tables, std::move(found), suggestion.bStarTotals);
  clsTidyReport run(tables, account);
  std::string sHeld;
  constexpr int64_t kRowsBetween = 1000;
  for (std::string_view sRow; reader.ReadRow(sRow);) {
    if (progress && reader.RowNumber() % kRowsBetween == 0) progress(reader.BytesDone(), reader.BytesTotal());
    if (sRow.starts_with('\f')) account.PageBegins();
    if (!IsAscii(sRow)) {
      sHeld = reader.CodePage().ToUtf8(sRow);
      sRow = sHeld;
    }
    if (lTabSize > 0 && sRow.find('\t') != std::string_view::npos) {
      sHeld = TabsExpanded(sRow, lTabSize);
      sRow = sHeld;
    }
    run.Line(sRow);
  }
  run.End();
  account.Finish(run, suggestion.leftOut);
  suggestion.lLines = reader.RowNumber();
  failure = reader.LastFailure();
  return !failure.Failed();
}

std::string LinesText(int64_t lFirst, int64_t lLast) {
  return lFirst == lLast ? fmt::format("line {}", lFirst) : fmt::format("lines {} to {}", lFirst, lLast);
}

/// A text in a comment. No bracket may stand there: it would begin a section.
std::string CommentText(std::string_view sText) {
  return ReplaceAll(ReplaceAll(WithoutControls(sText), "[", "("), "]", ")");
}

/// Names from the report, or a person's, stay.
void FillNames(const std::vector<std::string>& names, TidyPart& part) {
  part.names.resize(std::max(part.names.size(), names.size()));
  for (size_t i = 0; i < names.size(); ++i) {
    if (part.names[i].empty()) part.names[i] = names[i];
  }
}

TidyTable WithNamesByKind(const FoundTable& table) {
  TidyTable named = table.tidy;
  if (table.namesByKind.empty()) return named;
  FillNames(table.namesByKind.front(), named.row);
  for (size_t k = 0; k < named.lines.size() && k + 1 < table.namesByKind.size(); ++k)
    FillNames(table.namesByKind[k + 1], named.lines[k].part);
  return named;
}

std::string TableText(const FoundTable& table, size_t nSuggestion, size_t nTable) {
  std::string sText = fmt::format("\n; Suggestion {}: {} rows, {}, {} columns", nSuggestion,
                                  table.bChosen ? table.lRows : static_cast<int64_t>(table.rows.size()),
                                  LinesText(table.lFirstLine, table.lLastLine), table.tidy.row.ColumnCount());
  if (table.bDoubtful) sText += "; perhaps no table";
  if (!table.bChosen) sText += fmt::format("; off, --tables {} has it", nSuggestion);
  sText += ".\n";
  if (table.lMissing > 0) sText += fmt::format("; {} lines that look like its rows are not taken.\n", table.lMissing);
  if (table.lStrangers > 0) sText += fmt::format("; {} lines are taken that may be no rows.\n", table.lStrangers);
  const TidyTable named = WithNamesByKind(table);
  const std::string sSections = RecipeOfTable(named, nTable);
  sText += table.bChosen ? sSections : SwitchedOff(sSections);
  for (size_t k = 0; table.bChosen && k < table.otherHeadings.size(); ++k) {
    sText += "; A heading that is no column.\n";
    sText += SwitchedOff(RecipeOfHeading(table.otherHeadings[k], nTable, table.tidy.headings.size() + k + 1));
  }
  return sText;
}

}  // namespace

size_t TableSuggestion::Chosen() const {
  return static_cast<size_t>(
      std::count_if(tables.begin(), tables.end(), [](const FoundTable& table) { return table.bChosen; }));
}

bool TableSuggestion::LooksIncomplete() const {
  return leftOut.lLines > 0 || std::any_of(tables.begin(), tables.end(), [](const FoundTable& t) {
           return t.bChosen && (t.lMissing > 0 || t.bDoubtful || !t.doubts.empty());
         });
}

std::vector<std::string> TableSuggestion::Reasons() const {
  std::vector<std::string> reasons;
  for (const ShapeOfLines& shape : leftOut.shapes) {
    reasons.push_back(fmt::format("{} left out, though like rows, the first on line {}: {}",
                                  CountedText(shape.lLines, "line", "lines"), shape.lFirstLine,
                                  WithoutControls(TrimBlanks(shape.sFirst))));
  }
  size_t nSuggestion = 0;
  for (const FoundTable& table : tables) {
    ++nSuggestion;
    if (!table.bChosen) continue;
    if (table.bDoubtful) reasons.push_back(fmt::format("suggestion {} may be no table", nSuggestion));
    if (table.lMissing > 0) {
      reasons.push_back(fmt::format("suggestion {}: {} like its rows not taken", nSuggestion,
                                    CountedText(table.lMissing, "line is", "lines are")));
    }
    for (const std::string& sDoubt : table.doubts)
      reasons.push_back(fmt::format("suggestion {}: {}", nSuggestion, WithoutControls(sDoubt)));
  }
  return reasons;
}

bool SuggestTables(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize,
                   const SuggestChoices& choices, TableSuggestion& suggestion, Failure& failure,
                   const SuggestProgress& progress) {
  suggestion = {};
  {
    clsReportSample sample;
    if (!sample.Read(sInput, options, lTabSize, failure)) return false;
    suggestion.bWholeSample = sample.IsWhole();
    suggestion.tables = FindTables(sample);
    suggestion.bStarTotals = !FindStarTotals(sample).empty();
  }
  if (!RunEvents()) {
    failure = StoppedFailure(sInput);
    return false;
  }
  Choose(choices, suggestion.tables);
  suggestion.NameSheets();
  return RunOver(sInput, options, lTabSize, suggestion, failure, progress);
}

bool CountTables(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, TableSuggestion& suggestion,
                 Failure& failure, const SuggestProgress& progress) {
  suggestion.leftOut = {};
  for (FoundTable& table : suggestion.tables) {
    if (!table.bChosen) continue;
    table.lRows = table.lPages = table.lFirstLine = table.lLastLine = 0;
    table.doubts.clear();
  }
  return RunOver(sInput, options, lTabSize, suggestion, failure, progress);
}

void TableSuggestion::NameSheets() {
  std::vector<FoundTable*> chosen;
  for (FoundTable& table : tables) {
    if (table.bChosen) chosen.push_back(&table);
  }
  size_t nOff = chosen.size();
  for (FoundTable& table : tables) {
    if (!table.bChosen && IsOwnSheetName(table.tidy.sSheet)) table.tidy.sSheet = fmt::format("Table {}", ++nOff);
  }
  for (size_t i = 0; i < chosen.size(); ++i) {
    std::string& sSheet = chosen[i]->tidy.sSheet;
    if (!IsOwnSheetName(sSheet)) continue;
    const std::vector<std::string>& names = chosen[i]->tidy.row.names;
    const bool bNamed = std::any_of(names.begin(), names.end(), [](const std::string& s) { return !s.empty(); });
    const auto itHere = chosen.begin() + static_cast<ptrdiff_t>(i);
    const auto itSame =
        std::find_if(chosen.begin(), itHere, [&](const FoundTable* p) { return bNamed && p->tidy.row.names == names; });
    sSheet = itSame != itHere ? (*itSame)->tidy.sSheet : i == 0 ? "" : fmt::format("Table {}", i + 1);
  }
}

std::string TableSuggestion::Text() const {
  std::string sText =
      "; Suggested by the shape of the report. Look at it before you trust it. A section whose name begins with "
      "- is off.\n; Take the - away to switch it on, the first one first; put it before the name of the last one to "
      "switch "
      "that off.\n";
  if (!bWholeSample)
    sText += "; The tables were looked for in the first part of the report, and counted in all of it.\n";
  if (LooksIncomplete()) sText += "; It looks incomplete.\n";
  for (const std::string& sReason : Reasons()) sText += ";   " + CommentText(sReason) + "\n";
  sText += "[Header]\nProduct=QLN-B\nFileType=RECIPE\nFileFormat=1.0\n";
  size_t nTable = 0;
  size_t nOff = Chosen();
  for (size_t i = 0; i < tables.size(); ++i) {
    nTable += tables[i].bChosen ? 1U : 0U;
    sText += TableText(tables[i], i + 1, tables[i].bChosen ? nTable : ++nOff);
  }
  return sText;
}

}  // namespace quillon
