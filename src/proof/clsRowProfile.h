#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clsTidyCutter.h"
#include "modLineNumbers.h"

namespace quillon {

/// What the rows of a table usually look like: which columns they fill, and with what kind of words. Tells lines that
/// look like rows.
class clsRowProfile {
 public:
  /// cutter: of rows that are split; their columns tell their piece in place of places.
  explicit clsRowProfile(std::vector<ProofColumn> columns, std::optional<clsTidyCutter> cutter = std::nullopt);

  /// A row as it stands in the report: UTF-8, tabs expanded. Not all of many rows are looked at.
  void Row(std::string_view sLine);
  /// True if three quarters of the columns that rows usually fill hold a value of the usual kind, one of figures
  /// among them.
  bool LooksLikeRow(std::string_view sLine) const { return Fits(sLine, Demand::Most); }
  /// True while too few rows were seen to tell anything.
  bool IsYoung() const { return lLooked_ < kYoung; }
  /// True for rows of two pieces parted by a text: "total = 12" is one, and so is much else.
  bool IsWeak() const;
  /// The same, and the others are empty.
  bool HoldsNothingElse(std::string_view sLine) const { return Fits(sLine, Demand::NothingElse); }
  /// The same of all of these columns, behind the label that all rows have in front, if they have one.
  bool IsLikeRow(std::string_view sLine) const { return Fits(sLine, Demand::All); }
  const std::vector<ProofColumn>& Columns() const { return columns_; }

 private:
  enum Kind : uint8_t { Empty, Figures, Letters, Both, Marks, Cut };
  static constexpr size_t kKinds = 6;
  static constexpr int64_t kParts = 4, kMostParts = 3, kYoung = 32;

  enum class Demand : uint8_t { Most, NothingElse, All };
  /// Columns that are usually filled hold what they usually hold.
  bool Fits(std::string_view sLine, Demand demand) const;
  /// The kinds of a line's cells, by column.
  void KindsOf(std::string_view sLine, std::vector<Kind>& kinds) const;
  static Kind KindOf(std::string_view sCell, const ProofColumn& column);
  /// What stands in front of all columns: a label, as forms have them.
  std::string_view FrontOf(std::string_view sLine) const;
  bool IsCut(std::string_view sLine, size_t nColumn) const;
  /// What the column usually holds; Empty if rows don't usually fill it.
  Kind UsualKind(size_t nColumn) const;
  void FindUsualKinds() const;

  std::vector<ProofColumn> columns_;
  int32_t nFront_ = 0;           ///< Where the first column begins
  std::string sFront_;           ///< What the first row has in front of it,
  bool bSameFront_ = true;       ///< and all others have, too
  size_t nWidth_ = 0;            ///< Characters up to the end of the last column
  std::vector<bool> gapBehind_;  ///< By column: no other one begins right behind it
  std::optional<clsTidyCutter> cutter_;
  std::vector<std::array<int64_t, kKinds>> counts_;
  mutable std::vector<Kind> usual_;  ///< What columns usually hold, of the first lUsualOf_ rows looked at
  mutable int64_t lUsualOf_ = -1;
  mutable std::vector<Kind> kinds_;  ///< Kept for their memory
  mutable std::vector<std::string_view> pieces_;
  int64_t lRows_ = 0, lLooked_ = 0;
  int64_t lLeastWords_ = 0;  ///< Of all rows looked at
};

}  // namespace quillon
