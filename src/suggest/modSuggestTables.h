#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineShapes.h"
#include "modFindTables.h"

namespace quillon {

/// What a person chose of a suggestion.
struct SuggestChoices {
  std::vector<int32_t> tables;    ///< Numbers of tables, from 1; none: those that leave little doubt
  std::string sHeadings = "all";  ///< "all", "none", or a text that the name of a wanted heading holds
};

/// Lines that look like rows of a table and are none of it.
struct LeftOutRows {
  int64_t lLines = 0;
  int64_t lFirstLine = 0;
  std::string sFirst;                ///< The first of them
  std::vector<ShapeOfLines> shapes;  ///< Those of one shape together, by their first lines; not more than 20
};

/// The tables of a report, and the recipe that takes them.
struct TableSuggestion {
  std::vector<FoundTable> tables;  ///< Those that leave little doubt first
  int64_t lLines = 0;              ///< Of the report
  LeftOutRows leftOut;
  bool bWholeSample = true;  ///< False if only a part of the report was looked at for its tables
  bool bStarTotals = false;  ///< Lines that begin with stars are totals

  size_t Chosen() const;
  /// Rows are missing, lines that look like rows are left, cells speak against a table, or nothing leaves little doubt.
  bool LooksIncomplete() const;
  /// Each reason for that, for a person: "3 lines are left out, though like rows, the first on line 31: ...".
  std::vector<std::string> Reasons() const;
  /// Names the sheets of the chosen tables that have no name yet: those of the same columns share one, others get their
  /// own, but for the first one.
  void NameSheets();
  /// A recipe with comments, UTF-8, that converts as it stands.
  std::string Text() const;
};

/// Told again and again while rows are counted.
using SuggestProgress = std::function<void(int64_t lBytesDone, int64_t lBytesTotal)>;

/// Finds the tables of a report that nobody has described yet, runs their recipe over all of it, and counts what it
/// leaves. False with the reason if the report can't be read, or the work was stopped (modEventLoop).
bool SuggestTables(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize,
                   const SuggestChoices& choices, TableSuggestion& suggestion, Failure& failure,
                   const SuggestProgress& progress = {});
/// Counts rows, pages and lines of the chosen tables anew, after they were chosen otherwise.
bool CountTables(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, TableSuggestion& suggestion,
                 Failure& failure, const SuggestProgress& progress = {});

}  // namespace quillon
