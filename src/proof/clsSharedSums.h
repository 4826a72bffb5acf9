#pragma once

#include <algorithm>
#include <string>
#include <unordered_map>

#include "modRunningSum.h"

namespace quillon {

/// The sums of columns of one name over all tables of a report.
class clsSharedSums {
 public:
  struct Column {
    RunningSum sum;
    size_t nLastTable = 0;  ///< The last table that has such a column
  };
  /// The column stays where it is.
  Column& Join(const std::string& sName, size_t nTable) {
    Column& column = columns_[sName];
    column.nLastTable = std::max(column.nLastTable, nTable);
    return column;
  }

 private:
  std::unordered_map<std::string, Column> columns_;
};

}  // namespace quillon
