#pragma once

#include <array>
#include <cstdint>

#include "clsLineProcessor.h"

namespace quillon {

/// The files of all periods in range, read forward together: what clsLineProcessor::ReadRow does for one line number,
/// with each file opened once.
class clsPeriodFiles {
 public:
  /// Opens the files and passes over the rows before lFirstLine. A missing file reports -5401 and gives no rows. False
  /// (see EndWalk) for a period without a slot and for a file that can't be read.
  bool Open(RecipeContext& context, int64_t lFirstLine);
  /// The next row of each file into its slot, no blank appended; a file that has ended gives "". False: see EndWalk.
  bool ReadRows(RecipeContext& context, int32_t tab_size);
  /// True if no file has a row left.
  bool AtEnd();
  /// The reader of the first period in range, for progress and the count of lines.
  clsLineReader& First() { return reports_[nFirst_]->Reader(); }

 private:
  std::array<clsReport*, clsLineProcessor::kPeriods> reports_{};
  std::array<bool, clsLineProcessor::kPeriods> open_{};
  size_t nFirst_ = 0, nLast_ = 0;
};

}  // namespace quillon
