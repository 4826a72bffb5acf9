#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsSectionWriter.h"
#include "modRecipeGlobals.h"
#include "modSectionFile.h"

namespace quillon {

/// One department of a consolidation, a stretch of rows of a written table: section [Con n Dept d].
class clsDepartment {
 public:
  std::vector<std::string> AccountsNames;  ///< Text of the accounts column, row by row
  std::vector<int32_t> AccReadRowNumbers;  ///< Sheet 1 row of each entry of AccountsNames

  /// Does nothing.
  void PropertyPrint() const {}
  /// Reports -5200, -5201 and ends at the first failure.
  void ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t con_number,
                                int32_t dept_number);
  void WriteToFile(clsSectionWriter& file, int32_t con_number, int32_t dept_number) const;
  /// Does nothing.
  void Process() const {}
  /// The accounts between the key texts in the column of sheet 1, looked for in the table's rows. Reports -5202 to
  /// -5204, with the lists empty. False if a cell can't be read (see EndWalk).
  bool ReadAccountNames(RecipeContext& context, int32_t table_start_row, int32_t table_end_row,
                        std::string_view accounts_column);

  std::string ReadStartLine;  ///< Key text of the department's first row
  int32_t ReadStartLineOffset = 0;
  std::string ReadEndLine;  ///< Key text of the department's last row
  int32_t ReadEndLineOffset = 0;

 private:
  bool FindKeyRow(RecipeContext& context, int sheet, std::string_view accounts_column, int32_t first_row,
                  int32_t last_row, std::string_view text, int32_t& lRow);
};

}  // namespace quillon
