#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modTidyModel.h"

namespace quillon {

/// The hierarchy that the indentation of a column makes.
///
/// A level closes those as far in or further in. A row belongs to the levels that it is further in than, and to the one
/// directly above it also if both are as far in; one further in than its level's first row is a total, and of the
/// outermost level alone.
class clsTidyLevels {
 public:
  explicit clsTidyLevels(const TidyTable& table) : bRows_(table.bLevelRows), texts_(table.levelNames.size()) {}

  void Open(size_t nIndent, std::string_view sText, int64_t lLine);
  /// Finds the levels of a row. sText: what stands in its column, which is a level itself where rows are.
  void Row(size_t nIndent, std::string_view sText, int64_t lLine);
  void Clear() { stack_.clear(); }
  /// Of the row taken last, from the outermost on; "" where it has none.
  std::string_view Text(size_t nLevel) const { return texts_[nLevel]; }

 private:
  struct Level {
    size_t nIndent;
    std::string sText;
    int64_t lLine;
    bool bHasRow = false;
    size_t nFirstRow = 0;  ///< Indent of its first row
  };
  void Show(size_t nLevels);

  bool bRows_;
  std::vector<Level> stack_;
  std::vector<std::string> texts_;
};

}  // namespace quillon
