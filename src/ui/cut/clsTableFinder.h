#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "modCutFields.h"
#include "modReportPreview.h"
#include "modSuggestRecipe.h"

namespace quillon {

/// A table that was found in a report, as a list shows it and a drawing draws it.
struct ListedTable {
  std::string sName;  ///< "" if the report prints none
  int64_t lRows = 0;
  int32_t lColumns = 0;
  bool bDoubtful = false;        ///< May be a list of labels or a side note
  std::vector<LineRange> parts;  ///< Where it lies, ascending: pages that it runs over, or the times it comes again
  std::vector<CutField> fields;  ///< Its columns
};

/// The tables of a report that no recipe describes yet, and the recipe of those that were chosen.
class clsTableFinder {
 public:
  /// False with the reason if the report can't be read or holds none.
  bool Find(const PreviewRequest& report, std::string& sFault);
  const std::vector<ListedTable>& Tables() const { return tables_; }
  /// False if the report goes on behind the lines that were looked at.
  bool IsWhole() const { return found_.bWholeReport; }
  /// A recipe of the tables whose place in the list is true here, UTF-8 with LF.
  std::string Recipe(const std::vector<bool>& chosen) const;

 private:
  SuggestedRecipe found_;
  std::vector<ListedTable> tables_;
};

}  // namespace quillon
