#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clsColumn.h"
#include "modTidyModel.h"

namespace quillon {

class clsOutputFile;

/// A block of consecutive lines of a report, exported row by row: section [Table n] with its [Table n Col m].
class clsTable {
 public:
  int32_t WriteTableTopRow = 0;     ///< First sheet row written by the last Process
  int32_t WriteTableBottomRow = 0;  ///< Last sheet row written by the last Process
  std::string ReadStartLine;        ///< Key text of the top of the table
  int32_t ReadStartLineOffset = 0;
  std::string ReadEndLine;  ///< Key text of the bottom of the table
  int32_t ReadEndLineOffset = 0;
  int32_t TotalColumns = 0;  ///< Always the count of ColumnsCollection once that is filled
  std::vector<clsColumn> ColumnsCollection;
  int32_t lDelimitationChar = 44;  ///< Field separator of CSV rows
  /// Set for a table of records, which has none of the members above but the key texts, and is run by clsTidyRun.
  std::optional<TidyTable> tidy;

  void ReadFromFile(RecipeContext& context, std::string_view file_name, int32_t table_number);
  /// Reports -5601 to -5603 and ends at the first failure.
  void ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t table_number);
  void WriteToFile(clsSectionWriter& file, int32_t table_number) const;
  /// Finds the block and exports its rows; csv_file_handle null: to the workbook. Reports -5604 to -5607, which set
  /// FatalProcessError. Adds the table to the account. False if a failure ends the walk without a report (see EndWalk).
  bool Process(RecipeContext& context, clsOutputFile* csv_file_handle);
  /// Does nothing.
  void PropertyPrint() const {}
};

}  // namespace quillon
