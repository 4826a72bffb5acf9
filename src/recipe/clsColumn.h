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

  // The field is that of the row in the context's line processor. False means a failure that ends the walk of sections
  // (EndWalk has noted it). Tables cut whole rows by clsRowFields; Process and GetCsvValue are for one field alone, and
  // nothing calls them.

  /// Writes the field to sheet 1. A cell that can't be written reports -5006 and is no such failure.
  bool Process(RecipeContext& context, int64_t write_row);
  /// The field quoted for CSV, as UTF-8.
  bool GetCsvValue(RecipeContext& context, std::string& sValue);
  /// The bare field, as UTF-8.
  bool TakeField(RecipeContext& context, std::string& sField);

 private:
  /// The operator's code for ProcessField; the member takes its trimmed upper-case form. Reports -5004.
  int32_t ParsePeriodOperator(RecipeContext& context);

  std::string sField_;  ///< Kept for its memory
};

}  // namespace quillon
