#pragma once
// The run of all tidy tables of a specification over the report.

#include "modRecipeGlobals.h"

namespace quillon {

class clsOutputFile;

/// Reads the report once, with every tidy table of the context's recipe, and writes their records: to the CSV file and
/// the files of further sheets beside it, or with a null file to the sheets of the context's workbook. Reports -5604
/// and -5605, which set FatalProcessError, and what became of the tables (codes of modTidyFailures). Adds the tables
/// and the kinds of all lines to the account. False if a failure ends the walk without a report (see EndWalk).
bool RunTidyTables(RecipeContext& context, clsOutputFile* pCsv);

}  // namespace quillon
