#include "clsDepartment.h"
#include "clsWorkbook.h"
#include "modColumnLetters.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"

namespace quillon {

namespace {

bool ReadCellOf(RecipeContext& context, int sheet, int64_t nRow, int32_t lColumn, std::string& sText) {
  Failure failure;
  context.host.LetEventsRun();
  if (context.pWorkbook == nullptr) return EndWalk(context, "A consolidation needs a workbook");
  return context.pWorkbook->ReadCell(sheet, nRow, lColumn, sText, failure) || EndWalkAtCell(context, failure);
}

}  // namespace

bool clsDepartment::FindKeyRow(RecipeContext& context, int sheet, std::string_view accounts_column, int32_t first_row,
                               int32_t last_row, std::string_view text, int32_t& lRow) {
  const int32_t lColumn = ColumnOfLetters(accounts_column);
  std::string sCell;
  for (lRow = first_row; lRow <= last_row; ++lRow) {
    if (!ReadCellOf(context, sheet, lRow, lColumn, sCell)) return false;
    if (text.empty() ? !sCell.empty() : sCell.find(text) != std::string::npos) return true;
  }
  lRow = 0;
  return true;
}

bool clsDepartment::ReadAccountNames(RecipeContext& context, int32_t table_start_row, int32_t table_end_row,
                                     std::string_view accounts_column) {
  AccountsNames.clear();
  AccReadRowNumbers.clear();
  const auto find = [&](std::string_view text, int32_t& lRow) {
    return FindKeyRow(context, 1, accounts_column, table_start_row, table_end_row, text, lRow);
  };
  const auto report = [&](RecipeCode code, std::initializer_list<std::string_view> values) {
    ReportRecipe(context.host, code, values);
    return true;
  };
  int32_t lStart = 0;
  int32_t lEnd = 0;
  if (!find(ReadStartLine, lStart)) return false;
  if (lStart == 0) return report(kDepartmentStartNotFound, {ReadStartLine});
  const int64_t lFirst = int64_t{lStart} + ReadStartLineOffset;
  if (!find(ReadEndLine, lEnd)) return false;
  if (lEnd == 0) return report(kDepartmentEndNotFound, {ReadEndLine});
  if (lEnd < lFirst) return report(kDepartmentEndInFront, {ReadEndLine, ReadStartLine});
  const int64_t lLast = int64_t{lEnd} + ReadEndLineOffset;
  const int32_t lColumn = AlphaToNum2(context.host, accounts_column);
  for (int64_t lRow = lFirst; lRow <= lLast; ++lRow) {
    std::string sName;
    if (!ReadCellOf(context, 1, lRow, lColumn, sName)) return false;
    AccountsNames.push_back(std::move(sName));
    AccReadRowNumbers.push_back(static_cast<int32_t>(lRow));
  }
  return true;
}

}  // namespace quillon
