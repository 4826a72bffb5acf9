#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsTidyLine.h"
#include "modTidyModel.h"
#include "modTidyValues.h"

namespace quillon {

/// True if a line holds one of the texts.
bool HoldsAny(std::string_view sLine, const std::vector<std::string>& texts);
/// True if a cell is one of the texts that mean nothing, beside a sign of currency as well.
bool IsOneOfTidyBlanks(std::string_view sCell, const std::vector<std::string>& blanks);
inline bool IsTidyBlank(std::string_view sCell, const std::vector<std::string>& blanks) {
  return !blanks.empty() && IsOneOfTidyBlanks(sCell, blanks);
}

/// Tells whether a line has the shape that a part asks for.
class clsTidyMatcher {
 public:
  explicit clsTidyMatcher(const TidyPart& part);

  bool HasPictures() const { return !pictures_.empty(); }
  bool HasNeeds() const { return !part_.needs.empty(); }
  /// One of the pictures, or none is asked for.
  bool FitsPicture(const clsTidyLine& line) const;
  /// All needs. pFailing, if given, gets how many fail, and the column of one of them.
  bool FitsNeeds(std::span<const std::string_view> cells) const;
  /// A cell that turned out to be a number.
  struct Known {
    std::string_view sCell;  ///< Null data: none
    std::string sPlain;
    TidyNumber number;
  };
  /// What FitsNeeds found to be a number at its last call, so that none is read twice; null for any other cell. To be
  /// asked while that call's cells are there.
  const Known* KnownNumber(TidyColumn column, std::string_view sCell) const {
    if (sCell.empty() || column >= known_.size() || known_[column].sCell.data() != sCell.data()) return nullptr;
    return known_[column].sCell.size() == sCell.size() ? &known_[column] : nullptr;
  }
  size_t CountFailing(std::span<const std::string_view> cells, TidyColumn& failing) const;

 private:
  struct Step {
    char kind;  ///< '9', 'A', 'X', '_', '.', or '=' for the character itself
    char32_t ch;
  };
  using Picture = std::vector<Step>;
  static Picture Compile(std::string_view sLike);
  static bool FitsStep(const clsTidyLine& line, size_t nPosition, const Step& step);
  bool FitsNeed(const TidyNeed& need, std::string_view sCell) const;
  bool FitsKind(const TidyKindOrText& kind, TidyColumn column, std::string_view sCell) const;
  bool FitsNumber(TidyColumn column, std::string_view sCell) const;

  const TidyPart& part_;
  mutable std::vector<Known> known_;  ///< By column; only as many as needs reach
  std::vector<Picture> pictures_;
  mutable std::string sPlain_;  ///< Kept for its memory
};

}  // namespace quillon
