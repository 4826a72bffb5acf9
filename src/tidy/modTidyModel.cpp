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

std::string TidyPart::NameOf(TidyColumn column) const {
  const auto isSkipped = [this](TidyColumn c) { return TypeOf(c).type == TidyType::Skip; };
  size_t nKept = 0;
  for (TidyColumn c = 0; c < ColumnCount(); ++c) nKept += isSkipped(c) ? 0 : 1;
  if (names.size() > nKept) return column < names.size() ? names[column] : std::string();
  if (isSkipped(column)) return {};
  size_t nIndex = column;
  for (TidyColumn c = 0; c < column; ++c) nIndex -= isSkipped(c) ? 1 : 0;
  return nIndex < names.size() ? names[nIndex] : std::string();
}

}  // namespace quillon
