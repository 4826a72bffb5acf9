#pragma once

#include <string_view>
#include <vector>

#include "modCellKinds.h"
#include "modTidyModel.h"

namespace quillon {

/// Tells lines that look like rows of a table though it doesn't take them.
class clsRowLikeness {
 public:
  explicit clsRowLikeness(const TidyTable& table);
  /// Three quarters of the columns hold a value of the kind that the table wants there.
  bool LooksLikeRow(std::u32string_view sLine) const;

 private:
  struct Column {
    TidyPlace place;
    std::vector<TidyKindOrText> wanted;
  };
  static bool Fits(std::u32string_view sCell, const std::vector<TidyKindOrText>& wanted);

  std::vector<Column> columns_;
};

}  // namespace quillon
