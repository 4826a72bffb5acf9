#include "clsLineShapes.h"

#include <algorithm>
#include <functional>
#include <map>
#include <tuple>
#include <utility>

#include "modLineShape.h"
#include "modText.h"

namespace quillon {

namespace {
constexpr size_t kMostKept = 1000;
}

void SortShapes(std::vector<ShapeOfLines>& shapes) {
  std::stable_sort(shapes.begin(), shapes.end(), [](const ShapeOfLines& a, const ShapeOfLines& b) {
    return std::tuple(!a.bLikeRow, a.bMeant, !a.bFigures, -a.lLines, a.lFirstLine) <
           std::tuple(!b.bLikeRow, b.bMeant, !b.bFigures, -b.lLines, b.lFirstLine);
  });
}

void clsLineShapes::Add(int64_t lLine, std::string_view sLine, size_t nClass) {
  std::string sKey = LineShapeKey(sLine);
  if (nClass != 0) sKey += "|" + std::to_string(nClass);
  const size_t nHash = std::hash<std::string_view>()(sLine);
  const auto found = groupOf_.find(sKey);
  if (found == groupOf_.end() && groups_.size() < kMost) {
    groupOf_.emplace(std::move(sKey), groups_.size());
    Group& group = groups_.emplace_back();
    group.nClass = nClass;
    group.nHash = nHash;
    group.shape = {LineShapeKey(sLine), LineShape(sLine), std::string(sLine.substr(0, kMostKept)), 1, lLine};
    return;
  }
  Group& group = found != groupOf_.end() ? groups_[found->second] : groups_.back();
  ++group.shape.lLines;
  group.bAllSame = group.bAllSame && group.nHash == nHash;
}

std::vector<ShapeOfLines> clsLineShapes::Sorted(const std::function<bool(std::string_view)>& isLikeRow,
                                                const std::function<bool(size_t)>& isOut, int64_t& lOut) const {
  std::vector<ShapeOfLines> shapes;
  std::map<std::pair<std::string_view, bool>, size_t> indexes;
  lOut = 0;
  for (const Group& group : groups_) {
    if (group.nClass != 0 && isOut(group.nClass)) {
      lOut += group.shape.lLines;
      continue;
    }
    const bool bPrintedAgain = group.bAllSame && group.shape.lLines > 1;
    const bool bLikeRow = !bPrintedAgain && isLikeRow(group.shape.sFirst);
    const auto [known, bNew] = indexes.try_emplace({group.shape.sKey, bLikeRow}, shapes.size());
    if (!bNew) {
      shapes[known->second].lLines += group.shape.lLines;
      continue;
    }
    shapes.push_back(group.shape);
    shapes.back().bLikeRow = bLikeRow;
    shapes.back().bAgain = bPrintedAgain;
    shapes.back().bFigures =
        !bPrintedAgain && !bLikeRow && HasSeveralFigures(group.shape.sFirst) && !CountsColumns(group.shape.sFirst);
  }
  SortShapes(shapes);
  return shapes;
}

}  // namespace quillon
