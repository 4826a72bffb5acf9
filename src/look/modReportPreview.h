#pragma once
// How a recipe or a profile cuts a report: the rows as they stand, the cells they give, and what the cut would lose.
// Looks only; nothing is written, logged or shown.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "clsExportSpecs.h"
#include "clsLineReader.h"
#include "clsSectionFile.h"
#include "modCutPlan.h"
#include "modProfileFile.h"
#include "modRecipeGlobals.h"

namespace quillon {

struct PreviewRequest {
  std::string sInput;
  TextFileOptions text;  ///< How the report is read; a page found by content goes by the report's beginning
  int32_t lTabSize = 8;
  int32_t lTable = 1;  ///< From 1
  int64_t lRows = 20;  ///< Rows that are kept
  /// Measures every row of the table and types its cells. Else the report is read no further than the rows kept, and a
  /// table's end that lies behind them isn't looked for.
  bool bWholeTable = false;
  /// Looks for the table's end as far as text.lMostBytes lets it, so that one that isn't there is told.
  bool bFindEnd = false;
};

enum class KeyPlace : uint8_t {
  NotLookedFor,
  Found,
  Missing,
  FurtherDown,  ///< Not looked for any further, as it matters to no row that is kept
  NotReached,   ///< Not in the first text.lMostBytes of a longer report
};
struct PreviewKey {
  std::string sText;
  int32_t lOffset = 0;
  KeyPlace place = KeyPlace::NotLookedFor;
  int64_t lLine = 0;  ///< First line that holds the text, from 1
};

/// Cells of a column by what they become in a workbook. Filled for a whole table.
struct CellCensus {
  int64_t lNumbers = 0, lDates = 0, lTexts = 0, lOthers = 0, lEmpty = 0;
  int64_t lLikeNumbers = 0;  ///< Of the texts: those that look like numbers
  int64_t lLikeNumberLine = 0;
  std::string sLikeNumber;  ///< The first of them
};

struct PreviewColumn {
  int32_t lStart = 1, lEnd = 1;  ///< Characters, from 1
  std::string sLetters;          ///< Of the sheet column; "" for one that is left out
  CellCensus census;
};

struct PreviewRow {
  int64_t lLine = 0;               ///< Of the report, from 1
  std::string sText;               ///< UTF-8, tabs expanded
  std::vector<std::string> cells;  ///< UTF-8, in the order of the output
  int64_t lLeftOut = 0;            ///< Characters other than blanks that no column takes
  int64_t lBehind = 0;             ///< Those of them that stand behind the last column
  /// Positions of characters after which a value is cut: neither it nor its neighbour is blank. Lines without a letter
  /// or digit hold no value.
  std::vector<int32_t> cuts;
};

struct ReportPreview {
  std::string sFault;  ///< Why there are no rows; "" if there is no reason
  int32_t lTable = 0, lTables = 0;
  PreviewKey start, end;               ///< Of a recipe
  int64_t lFirstLine = 0;              ///< Of the table; 0 if it isn't found
  int64_t lLastLine = 0;               ///< The last one that is in the report; 0 if it wasn't looked for
  std::string sRuler;                  ///< As wide as the cut; a profile's columns begin with "|"
  std::vector<PreviewColumn> columns;  ///< In the order of the report
  std::vector<PreviewRow> rows;
  bool bMore = false;  ///< The table goes on behind the rows kept

  // Sums over all rows that were looked at.
  int64_t lRows = 0;
  int64_t lLeftOut = 0, lBehind = 0;
  int64_t lCuts = 0;
  int64_t lFirstLossLine = 0;  ///< First line that loses something

  bool Loses() const { return lLeftOut > 0 || lCuts > 0; }
};

/// By table request.lTable of a short recipe, with the bounds that a run would find. With specs, those that were read
/// from the section file of a specification, their columns take the place of a ruler.
ReportPreview PreviewByRecipe(const PreviewRequest& request, clsSectionFile& recipe,
                              const clsExportSpecs* pSpecs = nullptr);

/// Whole looks at the tables of one recipe: the report is opened once, and one pass finds the key texts of all of them.
class clsRecipeCheck {
 public:
  /// Recipe and specs outlive the object. Of the request lTable doesn't count, and bWholeTable is taken as set.
  clsRecipeCheck(const PreviewRequest& request, clsSectionFile& recipe, const clsExportSpecs* pSpecs = nullptr);
  int32_t Tables() const { return lTables_; }
  ReportPreview Look(int32_t lTable);

 private:
  PreviewRequest request_;
  clsSectionFile& recipe_;
  const clsExportSpecs* pSpecs_;
  std::shared_ptr<clsReports> pReports_;
  int32_t lTables_;
};

/// By a profile (a path or a name), pads trimmed as in a run; all lines of the report are rows.
ReportPreview PreviewByProfile(const PreviewRequest& request, std::string_view sProfile);

/// What a run by a profile is given.
struct ProfileCut {
  std::vector<ProfileColumn> columns;
  bool bTrim = true;  ///< Pads are trimmed
  StartCell start;    ///< Rows above it and columns before it are left out
};
ReportPreview PreviewByColumns(const PreviewRequest& request, const ProfileCut& cut);

/// Lines lFirst to lLast of a report, from 1.
struct LineRange {
  int64_t lFirst = 1, lLast = 1;
};
/// Lines of a report as a run reads them, whatever any recipe says.
struct ReportStretches {
  std::string sFault;            ///< Why the report can't be read; "" if it can
  std::vector<PreviewRow> rows;  ///< Line number and text alone
  bool bMore = false;            ///< The report goes on behind them
  bool bBinary = false;          ///< They hold control characters that no report has
};
/// The lines of the ranges (ascending, apart), in one pass; no more than nMostCharacters of each.
ReportStretches ReadStretches(const PreviewRequest& request, const std::vector<LineRange>& ranges,
                              size_t nMostCharacters);

/// What a row loses, position by position: "^" under the last character before a cut, "!" under what no column takes,
/// else a blank; "" if nothing is lost.
std::string LossMarks(const PreviewRow& row, const std::vector<PreviewColumn>& columns);

}  // namespace quillon
