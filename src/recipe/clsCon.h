#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsDepartment.h"

namespace quillon {

class clsTable;

/// Adds the accounts of several departments up on sheet 2: section [Consolidate n] with its [Con n Dept d].
class clsCon {
 public:
  int32_t WriteConTopRow = 0;      ///< First row of the result on sheet 2
  int32_t WriteConBottomRow = 0;   ///< Nothing reads it
  int32_t Table = 0;               ///< Number of the table to consolidate, from 1
  int32_t ReadAccountsColumn = 1;  ///< Index of the accounts column among the table's columns, from 1
  int32_t TotalDepartments = 1;    ///< The count of DepartmentsCollection once that was read
  std::vector<clsDepartment> DepartmentsCollection;
  std::vector<std::string> AccNames;           ///< The distinct accounts in order of first appearance
  std::vector<int32_t> AccReadRowNumbers;      ///< Sheet 1 row of each entry of AccNames
  std::vector<int32_t> DupAccReadRowNumbers;   ///< Sheet 1 row of each repeated account
  std::vector<int32_t> DupAccWriteRowNumbers;  ///< Sheet 2 row that each repeated account adds to

  /// Calls that of each department and prints nothing.
  void PropertyPrint() const;
  /// Nothing, and no report, if the file can't be read.
  void ReadFromFile(RecipeContext& context, std::string_view file_name, int32_t con_number);
  /// Looks at the tables of the recipe's ExportSpecs, which must have been read before. Reports -5101 to -5103 and ends
  /// at the first failure.
  void ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t con_number);
  void WriteToFile(clsSectionWriter& file, int32_t con_number) const;
  /// Reports -5104 to -5107. False if a cell can't be read or written or a sum leaves the 64-bit range (see EndWalk).
  bool Process(RecipeContext& context);

 private:
  bool CollectDepartments(RecipeContext& context, const clsTable& table);
  bool WriteAccountRows(RecipeContext& context, const clsTable& table);
  bool CopyAccountRow(RecipeContext& context, const clsTable& table, int32_t source, int32_t target, bool accumulate);
  bool MergeAccountCell(RecipeContext& context, int32_t source, int32_t target, int column, bool accumulate);
  void BuildAccountList(RecipeContext& context);

  std::string sCurrent_, sSource_;  ///< Cell texts, kept for their memory
};

}  // namespace quillon
