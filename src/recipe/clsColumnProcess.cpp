#include "clsColumn.h"
#include "clsLineProcessor.h"
#include "clsTableTarget.h"
#include "modColumnLetters.h"
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

bool clsColumn::TakeField(RecipeContext& context, std::string& sField) {
  const int32_t lOperator = ParsePeriodOperator(context);
  if (context.lineProcessor.ProcessField(context, lOperator, ReadColumnStart, ReadColumnEnd, sField)) return true;
  return EndWalk(context, "A field could not be taken from the rows of the periods", WriteColumn);
}

bool clsColumn::Process(RecipeContext& context, int64_t write_row) {
  if (!TakeField(context, sField_)) return false;
  std::unique_ptr<clsRowSink> sink;
  if (!SheetSink(context, sink)) return false;
  const int32_t lColumn = AlphaToNum2(context.host, WriteColumn);
  const std::string_view sField = sField_;
  sink->Begin(write_row, {&lColumn, 1});
  sink->PutRow({{&sField, 1}});
  return true;
}

bool clsColumn::GetCsvValue(RecipeContext& context, std::string& sValue) {
  sValue.clear();
  if (!TakeField(context, sField_)) return false;
  AlphaToNum2(context.host, WriteColumn);  // for its message box alone
  const CsvRules rules = RecipeCsvRules(context.options, ",");
  const std::string_view sField = rules.bTrim ? TrimBlanks(sField_) : std::string_view(sField_);
  sValue.resize(2 * sField.size() + 2);
  const char* const pEnd = NeedsQuotes(rules, sField) ? PutQuoted(sValue.data(), sField)
                                                      : std::copy(sField.begin(), sField.end(), sValue.data());
  sValue.resize(static_cast<size_t>(pEnd - sValue.data()));
  return true;
}

}  // namespace quillon
