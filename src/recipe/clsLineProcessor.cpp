#include "clsLineProcessor.h"

#include "clsRecipe.h"
#include "modFiles.h"
#include "modNumbers.h"
#include "modRecipeMessages.h"
#include "modRows.h"

namespace quillon {

clsLineProcessor& gLineProcessor() {
  static clsLineProcessor lineProcessor;
  return lineProcessor;
}

bool clsLineProcessor::ReadRowPeriod1Only(RecipeContext& context, clsLineReader* filehandle, int32_t tab_size) {
  if (filehandle == nullptr) return true;
  std::string_view sRow;
  if (!ReadNextRow(filehandle, context.options.text.bUnix, sRow)) return false;
  clsRow& row = RowCollection[0];
  row.SetView(sRow, filehandle->CodePage(), !sRow.empty() && sRow.back() != ' ', filehandle->RoomBehind());
  return tab_size < 1 || !filehandle->RowMayHaveTab() || row.Expand(tab_size);
}

void clsLineProcessor::ClearRows() {
  for (clsRow& row : RowCollection) row.Clear();
}

clsRow* clsLineProcessor::SlotOf(int32_t lPeriod) {
  return lPeriod >= 1 && lPeriod <= kPeriods ? &RowCollection[static_cast<size_t>(lPeriod) - 1] : nullptr;
}

bool clsLineProcessor::ReadRow(RecipeContext& context, int32_t row, int32_t tab_size) {
  if (row < 1) {
    ReportRecipe(context.host, kPeriodRow, {std::to_string(row)});
    return true;
  }
  ClearRows();
  for (int32_t lPeriod = context.recipe.InputFileFirst; lPeriod <= context.recipe.InputFileLast; ++lPeriod) {
    clsRow* const slot = SlotOf(lPeriod);
    if (slot == nullptr) return false;
    const std::string& sName = context.recipe.InputFileNameOf(lPeriod);
    if (!PathExists(sName)) {
      ReportRecipe(context.host, kNoPeriodFile, {sName});
      continue;
    }
    std::string sLine;
    if (!ReadTextLine(context, sName, row, sLine)) return false;
    slot->SetText(sLine);
    if (tab_size > 0 && !slot->Expand(tab_size)) return false;
  }
  return true;
}

bool clsLineProcessor::ReadTextLine(RecipeContext& context, std::string_view file_name, int32_t row,
                                    std::string& sLine) {
  sLine.clear();
  if (row < 1) {
    ReportRecipe(context.host, kPeriodLine, {std::to_string(row)});
    return true;
  }
  if (row > INT16_MAX) return false;
  std::vector<std::string> lines(1);
  file_read(context.host, lines, file_name, context.options.text, static_cast<int16_t>(row), 1);
  sLine = std::move(lines[0]);
  return true;
}

bool clsLineProcessor::ProcessField(RecipeContext& context, int32_t lOperator, int32_t field_start, int32_t field_end,
                                    std::string& sField) {
  sField.clear();
  if (field_end < field_start) return true;
  const clsRecipe& recipe = context.recipe;
  if (lOperator == kSum || lOperator == kAverage) return TotalOf(recipe, lOperator, field_start, field_end, sField);
  if (lOperator != kLast && lOperator != kFirst) {
    ReportRecipe(context.host, kPeriodNoOperator);
    return true;
  }
  clsRow* const slot = SlotOf(lOperator == kLast ? recipe.InputFileLast : recipe.InputFileFirst);
  if (slot == nullptr) return false;
  slot->Page().Decode(slot->Field(field_start, field_end), sField);
  return true;
}

bool clsLineProcessor::TotalOf(const clsRecipe& recipe, int32_t lOperator, int32_t field_start, int32_t field_end,
                               std::string& sField) {
  ScaledNumber total = 0;
  int32_t lCount = 0;
  bool bAllNumeric = true;
  std::string sPeriod;
  for (int32_t lPeriod = recipe.InputFileFirst; lPeriod <= recipe.InputFileLast; ++lPeriod) {
    clsRow* const slot = SlotOf(lPeriod);
    if (slot == nullptr) return false;
    sPeriod.clear();
    slot->Page().Decode(slot->Field(field_start, field_end), sPeriod);
    ScaledNumber value = 0;
    const ScaleStatus status = ParseScaled(sPeriod, value);
    if (status == ScaleStatus::NotNumeric) {
      bAllNumeric = false;
      sField = sPeriod;
      continue;
    }
    const auto sum = status == ScaleStatus::Ok ? AddScaled(total, value) : std::nullopt;
    if (!sum) return false;
    total = *sum;
    ++lCount;
  }
  if (!bAllNumeric) return true;
  if (lOperator == kAverage && lCount == 0) return false;
  const double average = static_cast<double>(total) / static_cast<double>(kNumberScale) / lCount;
  sField = RoundByDataFormat(lOperator == kSum ? ScaledText(total) : ShortestDouble(average), recipe.WriteDataFormat);
  return true;
}

}  // namespace quillon
