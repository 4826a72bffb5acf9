#include "clsColumn.h"
#include "clsLineProcessor.h"
#include "clsWorkbook.h"
#include "modColumnLetters.h"
#include "modCsvField.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"
#include "modText.h"

namespace quillon {

int32_t clsColumn::ParsePeriodOperator(RecipeContext& context) {
  if (PeriodOperator.empty()) return clsLineProcessor::kLast;
  PeriodOperator = UpperText(TrimBlanks(PeriodOperator));
  if (PeriodOperator == "FIRST") return clsLineProcessor::kFirst;
  if (PeriodOperator == "SUM") return clsLineProcessor::kSum;
  // "AVG" is a word without a code of its own.
  const bool bKnown = PeriodOperator.empty() || PeriodOperator == "LAST" || PeriodOperator == "AVG";
  if (!bKnown) {
    ReportRecipe(context.host, kUnknownOperator, {PeriodOperator}, true,
                 context.options.More("In section [Table " + std::to_string(context.account.tables.size()) +
                                      "], the column for " + WriteColumn));
  }
  return clsLineProcessor::kLast;
}

bool clsColumn::TakeField(RecipeContext& context, bool bShowMessageBox, std::string& sField) {
  const int32_t lOperator = ParsePeriodOperator(context);
  if (!context.lineProcessor.ProcessField(context, lOperator, ReadColumnStart, ReadColumnEnd, sField)) {
    return EndWalk(context, "A field could not be taken from the rows of the periods", WriteColumn);
  }
  if (TrimLeftBlanks(sField).starts_with('=') && context.account.lEqualSigns++ == 0) {
    ReportRecipe(context.host, kLeadingEqualSign, {}, bShowMessageBox);
  }
  return true;
}

bool clsColumn::Process(RecipeContext& context, int64_t write_row) {
  if (!TakeField(context, false, sField_)) return false;
  const std::string_view sText = context.options.bTrimFields ? TrimBlanks(sField_) : std::string_view(sField_);
  Failure failure;
  if (context.pWorkbook == nullptr) return EndWalk(context, "There is no workbook");
  const int32_t lColumn = AlphaToNum2(context.host, WriteColumn);
  if (!context.pWorkbook->WriteCell(1, write_row, lColumn, sText, failure)) ReportCellFailure(context, failure);
  return true;
}

bool clsColumn::GetCsvValue(RecipeContext& context, std::string& sValue) {
  sValue.clear();
  if (!TakeField(context, true, sField_)) return false;
  AlphaToNum2(context.host, WriteColumn);  // for its message box alone
  AppendCsvField(sField_, context.options, sValue);
  return true;
}

}  // namespace quillon
