#pragma once
// Codes -5000 to -5804: text, kind and message box of each in one table.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "clsHost.h"

namespace quillon {

/// Codes of recipes and their tables.
enum RecipeCode : int32_t {
  kReadColumnStart = -5000,
  kReadColumnEnd = -5001,
  kWriteColumn = -5002,
  kPeriodOperator = -5003,
  kUnknownOperator = -5004,
  kLeadingEqualSign = -5005,
  kCellsFailed = -5006,
  kConTableNumber = -5101,
  kConNoSuchTable = -5102,
  kConAccountsColumn = -5103,
  kConTableGone = -5104,
  kConTooFewColumns = -5105,
  kConNoNumber = -5106,
  kConNoDepartments = -5107,
  kDepartmentNoStartText = -5200,
  kDepartmentNoEndText = -5201,
  kDepartmentStartNotFound = -5202,
  kDepartmentEndNotFound = -5203,
  kDepartmentEndInFront = -5204,
  kNoShortRecipe = -5300,
  kTemplateNotFound = -5301,
  kNoTemplateRuler = -5302,
  kMarksUnreadable = -5303,
  kNextRowSheet = -5304,
  kSetRowSheet = -5305,
  kNoSuchSpec = -5306,
  kSectionCount = -5307,
  kSectionType = -5308,
  kSeparator = -5309,
  kPeriodRow = -5400,
  kNoPeriodFile = -5401,
  kPeriodNoOperator = -5402,
  kPeriodLine = -5403,
  kShortRecipeUnreadable = -5500,
  kNoRecipeFile = -5501,
  kRecipeUnreadable = -5502,
  kRecipeHeader = -5503,
  kNoSpecsFile = -5504,
  kTableStartLine = -5601,
  kTableEndLine = -5602,
  kTableColumns = -5603,
  kTableStartNotFound = -5604,
  kTableEndNotFound = -5605,
  kTableEndInFront = -5606,
  kTableColumnPlace = -5607,
  kTemplateAnalyzer = -5700,
  kTemplateRows = -5701,
  kTitleSheet = -5801,
  kTitleColumn = -5802,
  kTitleLines = -5803,
  kSheetRowColumn = -5804,
};

/// The code's entry for the run log, its text with the values put in and its phrases translated one by one.
ReportEntry RecipeEntry(RecipeCode code, std::initializer_list<std::string_view> values = {});
/// Reports the code to the run log.
/// bShowMessageBox False keeps the box away from a code that else wants one.
void ReportRecipe(clsHost& host, RecipeCode code, std::initializer_list<std::string_view> values = {},
                  bool bShowMessageBox = true, std::string sThirdLine = {});

/// A failure of the system inside an operation that goes on without its result: its own number as the code, no box.
void ReportTrappedFailure(clsHost& host, int32_t lNumber, std::string_view sDescription);

}  // namespace quillon
