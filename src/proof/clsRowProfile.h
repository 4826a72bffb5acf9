#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "modLineNumbers.h"

namespace quillon {

/// What the rows of a table usually look like: which columns they fill, and with what kind of words. Tells lines that
/// look like rows.
class clsRowProfile {
 public:
  explicit clsRowProfile(std::vector<ProofColumn> columns) : columns_(std::move(columns)), counts_(columns_.size()) {}

  /// A row as it stands in the report: UTF-8, tabs expanded. Not all of many rows are looked at.
  void Row(std::string_view sLine);
  /// True if three quarters of the columns that rows usually fill hold a value of the usual kind, one of figures
  /// among them.
  bool LooksLikeRow(std::string_view sLine) const;
  const std::vector<ProofColumn>& Columns() const { return columns_; }

 private:
  enum Kind : uint8_t { Empty, Figures, Letters, Both, Marks };
  static constexpr size_t kKinds = 5;

  /// The kinds of a line's cells, by column.
  void KindsOf(std::string_view sLine, std::vector<Kind>& kinds) const;
  static Kind KindOf(std::string_view sCell, const ProofColumn& column);

  std::vector<ProofColumn> columns_;
  std::vector<std::array<int64_t, kKinds>> counts_;
  std::vector<Kind> kinds_;  ///< Kept for its memory
  int64_t lRows_ = 0, lLooked_ = 0;
};

}  // namespace quillon
