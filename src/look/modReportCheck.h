#pragma once
// What a recipe makes of a whole report: each line accounted for, with its printed totals. Looks only.

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "clsMixedProof.h"
#include "modReportPreview.h"

namespace quillon {

struct ReportCheck {
  std::string sFault;                  ///< Why the report or the recipe can't be read; "" if there is no reason
  std::vector<TidyTable> tables;       ///< The tidy ones
  std::vector<TidyTableState> states;  ///< Of each of them
  ReportProof proof;

  /// True if nothing is missing: no line that looks like a row or may be one was left out, no character is lost, no
  /// tidy table failed to be found, no printed total disagrees.
  bool IsWhole() const;
  /// All values of tidy tables are what their columns say.
  bool AllValuesFit() const;
};

/// Reads the report by the recipe's tidy tables; cutTables are what PreviewByRecipe found of its other tables.
ReportCheck CheckReport(const PreviewRequest& request, clsSectionFile& recipe,
                        const std::vector<ReportPreview>& cutTables, clsLineFollower* pFollower);

/// The blocks that PreviewByRecipe found.
std::vector<CutTable> CutsOf(const std::vector<ReportPreview>& previews);

/// Numbers of the tidy tables of a recipe.
std::set<int32_t> TidyTablesIn(clsSectionFile& recipe);

}  // namespace quillon
