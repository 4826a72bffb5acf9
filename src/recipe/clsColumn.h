#pragma once

#include <cstdint>
#include <string>

#include "clsSectionWriter.h"
#include "modRecipeGlobals.h"
#include "modSectionFile.h"

namespace quillon {

/// Which characters of a row form a field, and which sheet column receives it: section [Table n Col m].
class clsColumn {
 public:
  int32_t ReadColumnStart = 1;  ///< First character of the field, from 1
  int32_t ReadColumnEnd = 1;    ///< Last character of the field
  std::string WriteColumn = "A";
  std::string PeriodOperator;  ///< How the field is taken when several input files are in range

  /// Does nothing.
  void PropertyPrint() const {}
  /// Reports -5000 to -5003 and ends at the first failure; keys not reached keep their values.
  void ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t table_number,
                                int32_t col_number);
  void WriteToFile(clsSectionWriter& file, int32_t table_number, int32_t col_number) const;

  /// Takes the field from the present row and writes it to sheet 1.
  void Process(RecipeContext& context, int64_t write_row);
  /// Takes the field from the present row, quoted for CSV.
  std::string GetCsvValue(RecipeContext& context);

 private:
  int32_t ParsePeriodOperator(clsHost& host);
};

}  // namespace quillon
