#pragma once
// One [Table n] of a short recipe, as it stands in the file and as it is measured in a report.

#include <cstdint>
#include <string>
#include <string_view>

#include "clsTable.h"
#include "modSectionFile.h"

namespace quillon {

/// The keys of a section [Table n], not checked.
struct ShortTable {
  std::string sStartLine, sStartOffset;  ///< An offset that is missing is "0"
  std::string sEndLine, sEndOffset;
  std::string sTemplate;  ///< Parsing in upper case, its leading blanks kept
  std::string sWriteColumn;
};

/// Tables of a short recipe: its lines that look like a header of one.
int64_t CountShortTables(clsSectionFile& recipe);
ShortTable ReadShortTable(clsSectionFile& recipe, int32_t lTable);

/// Key texts of the tables 1 to lTables, as they stand there.
std::vector<std::string> KeyTextsOf(clsSectionFile& recipe, int64_t lTables);

/// True if the report must be looked at for what the template leaves open.
bool IsOpenTemplate(std::string_view sTemplate);
/// Works out from the report what the template leaves open; table has the key texts and offsets. Nothing to do, and no
/// look at the report, for a drawn one. False, at times with a report, if the table can't be found.
bool FixTemplate(RecipeContext& context, std::string_view sTextFile, int32_t lTabSize, const clsTable& table,
                 std::string& sTemplate);

}  // namespace quillon
