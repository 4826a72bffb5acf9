#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "modTableBlocks.h"

namespace quillon {

/// Tables that are one: the pages that one table runs over, or the same table once for each period, group or folder.
struct TableKind {
  std::vector<TableBlock> parts;  ///< In the order of the report
  std::string sRuler;             ///< Over the columns that are blank in all of the parts
  int32_t lColumns = 0;
  int64_t lRows = 0;  ///< Lines of all parts
  bool bHeading = false;
  /// Nothing but its shape says that it is a table, and its shape is that of a list of labels or of few lines.
  bool bDoubtful = false;
};

/// All tables of the report by kind: those that leave little doubt first, and else in the order of the report. Parts
/// are of one kind if they have the same columns, and the same heading above where there is one above both.
std::vector<TableKind> FindTableKinds(const clsReportLines& report);

}  // namespace quillon
