#pragma once

#include <string_view>
#include <vector>

#include "clsTidyCutter.h"
#include "clsTidyMatcher.h"

namespace quillon {

/// Finds the lines of a heading or of a further line, and the values in them.
class clsTidyPartReader {
 public:
  /// The part must outlive the object. bLeads: values lead on to what stands behind them, as a label or heading does;
  /// the ":" or ".." at their ends is none of theirs.
  clsTidyPartReader(const TidyPart& part, bool bLeads);

  /// True if the line is one of the part's; its values are cut then.
  bool Reads(const clsTidyLine& line);
  /// Cuts the values of any line.
  void Cut(const clsTidyLine& line);
  /// Those of record nGroup, as many as the part has columns.
  const std::vector<std::string_view>& Cells(size_t nGroup = 0) const { return cells_[nGroup]; }
  size_t Groups() const { return cells_.size(); }
  bool HasValue() const;
  const TidyPart& Part() const { return part_; }

 private:
  bool FindText(std::string_view sLine, size_t& nBehind) const;
  std::string_view ValueBehind(std::string_view sRest) const;

  const TidyPart& part_;
  const bool bLeads_;
  std::vector<size_t> rareBytes_;  ///< By text: where the byte stands that lines have least of
  clsTidyMatcher matcher_;
  clsTidyCutter cutter_;
  std::vector<std::vector<std::string_view>> cells_{1};
};

/// A value without what leads on to the next one: ":" or ".." at its end.
std::string_view WithoutLeader(std::string_view sValue);

}  // namespace quillon
