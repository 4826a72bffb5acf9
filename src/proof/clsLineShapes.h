#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "modProofModel.h"

namespace quillon {

/// Those that look like a row first, then those of figures, then the most frequent.
void SortShapes(std::vector<ShapeOfLines>& shapes);

/// Groups lines by their shape. One line a shape is kept, and not more than kMost shapes: what comes with a further one
/// is counted under the last.
class clsLineShapes {
 public:
  static constexpr size_t kMost = 5000;

  /// nClass keeps lines apart that look alike.
  void Add(int64_t lLine, std::string_view sLine, size_t nClass = 0);

  /// The shapes, sorted. isLikeRow is asked for the first line of each shape whose lines aren't the same word for word;
  /// those of a class that isOut names are left out, their lines counted in lOut.
  std::vector<ShapeOfLines> Sorted(const std::function<bool(std::string_view)>& isLikeRow,
                                   const std::function<bool(size_t)>& isOut, int64_t& lOut) const;

 private:
  struct Group {
    ShapeOfLines shape;
    size_t nClass = 0;
    size_t nHash = 0;
    bool bAllSame = true;  ///< All lines so far are the first one again
  };
  std::unordered_map<std::string, size_t> groupOf_;
  std::vector<Group> groups_;
};

}  // namespace quillon
