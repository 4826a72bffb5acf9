#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillon {

/// Lines of one shape: how many, and the first of them.
struct ShapeOfLines {
  std::string sKey;    ///< LineShapeKey of its lines
  std::string sShape;  ///< "9999 AAAA 999.99"
  std::string sFirst;  ///< The first line, shortened to some 1,000 bytes
  int64_t lLines = 0;
  int64_t lFirstLine = 0;
  bool bLikeRow = false;  ///< Looks like a row of a table
  bool bOutside = false;  ///< Outside of all tables, not left out within one
};

/// Those that look like a row first, then the most frequent.
void SortShapes(std::vector<ShapeOfLines>& shapes);

/// Groups lines by their shape. One line a shape is kept, and not more than kMost shapes: what comes with a further one
/// is counted under the last.
class clsLineShapes {
 public:
  static constexpr size_t kMost = 5000;

  /// nClass keeps lines apart that look alike.
  void Add(int64_t lLine, std::string_view sLine, size_t nClass = 0);

  /// The shapes, sorted. isLikeRow is asked for the first line of
  /// each shape whose lines aren't the same word for word; those of a class that isOut names are left out, their lines
  /// counted in lOut.
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
