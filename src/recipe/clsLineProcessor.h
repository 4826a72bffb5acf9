#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "clsRow.h"
#include "modRecipeGlobals.h"

namespace quillon {

/// The row of report text that the run is on, one slot for each period, and the fields cut out of it. Nothing is
/// tokenised: a field is a range of character positions (from 1, both ends inside).
///
/// Operations that can meet a failure which nobody in the section handles give False for it (see EndWalk).
class clsLineProcessor {
 public:
  static constexpr int32_t kPeriods = 12;
  enum Operator : int32_t { kLast = 0, kFirst = 1, kSum = 2, kAverage = 3 };

  /// The present row of each period; slot n stands at index n - 1, "" means no row.
  std::array<clsRow, kPeriods> RowCollection;

  /// The file's next row into slot 1, a blank appended unless it is empty or ends in one, tabs expanded for a tab_size
  /// above 0. The other slots stay. Nothing happens without a file. The row is good until the file's next one. False if
  /// there is no row to be had or the tabs make it too long.
  bool ReadRowPeriod1Only(RecipeContext& context, clsLineReader* filehandle, int32_t tab_size);
  /// Line number row of the file of each period in range into its slot, no blank appended. A row below 1 reports -5400,
  /// a missing file -5401. False for a period without a slot and for a row above 32,767 (line numbers are 16 bits here;
  /// clsPeriodFiles has no such limit).
  bool ReadRow(RecipeContext& context, int32_t row, int32_t tab_size);

  /// The field as UTF-8: of the last or first period in range as it stands; or the sum or average over the range,
  /// rounded by WriteDataFormat, and the field of the highest period that isn't numeric if there is one. A width below
  /// 1 gives "", another operator reports -5402. False for a sum beyond the 64-bit range, an average of nothing and a
  /// period without a slot.
  bool ProcessField(RecipeContext& context, int32_t lOperator, int32_t field_start, int32_t field_end,
                    std::string& sField);

 private:
  void ClearRows();
  bool ReadTextLine(RecipeContext& context, std::string_view file_name, int32_t row, std::string& sLine);
  bool TotalOf(const clsRecipe& recipe, int32_t lOperator, int32_t field_start, int32_t field_end, std::string& sField);
  clsRow* SlotOf(int32_t lPeriod);
};

}  // namespace quillon
