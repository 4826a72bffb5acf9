#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsSectionWriter.h"
#include "modRecipeGlobals.h"
#include "modSectionFile.h"

namespace quillon {

/// Fixed lines of text in one column of a sheet: section [Title n].
class clsTitle {
 public:
  int32_t WriteSheet = 1;
  std::string WriteColumn = "A";
  std::vector<std::string> TextLines;

  void ReadFromFile(RecipeContext& context, std::string_view file_name, int32_t title_number);
  /// Reports -5801 to -5803 and ends at the first failure; the title is kept as far as it was read.
  void ReadFromFileSequentially(RecipeContext& context, clsSectionFile& filehandle, int32_t title_number);
  void WriteToFile(clsSectionWriter& file, int32_t title_number) const;
  /// Writes the lines at the sheet's write pointer and moves it. False if a cell can't be written, as in a CSV run.
  bool Process(RecipeContext& context);

  /// "sheet,row,column" decoded; what is wrong becomes 1, 1 or "A", with the warning -5804. Nothing calls it yet.
  static void ParseSheetRowColumn(clsHost& host, std::string_view sCode, int32_t& lSheet, int32_t& lRow,
                                  std::string& sColumn);
};

}  // namespace quillon
