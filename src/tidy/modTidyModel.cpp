#include "modTidyModel.h"

#include <algorithm>

namespace quillon {

size_t TidyPart::ColumnCount() const {
  if (!cut.places.empty()) return cut.places.front().size();
  if (cut.split == TidySplit::None && texts.empty()) return 1;
  size_t nCount = std::max({names.size(), types.size(), size_t{1}});
  for (const TidyNeed& need : needs) nCount = std::max(nCount, need.column + 1);
  return nCount;
}

std::vector<std::string> TidyPart::ColumnNames() const {
  const size_t nColumns = ColumnCount();
  size_t nKept = 0;
  for (TidyColumn column = 0; column < nColumns; ++column) {
    if (TypeOf(column).type != TidyType::Skip) ++nKept;
  }
  const bool bAll = names.size() > nKept;
  std::vector<std::string> all(nColumns);
  size_t nName = 0;
  for (TidyColumn column = 0; column < nColumns && nName < names.size(); ++column) {
    if (bAll || TypeOf(column).type != TidyType::Skip) all[column] = names[nName++];
  }
  return all;
}

}  // namespace quillon
