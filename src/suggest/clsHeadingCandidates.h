#pragma once

#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "clsReportSample.h"
#include "clsTableShape.h"

namespace quillon {

/// What each line of the sample belongs to: a table's number from 1, 0 for none.
struct LineOwners {
  std::vector<uint32_t> tables;
  std::vector<bool> names;   ///< Lines that hold column names
  std::vector<bool> totals;  ///< Lines that are proved to be totals
};

/// A value found in a line in front of a group of rows. Places count from 0.
struct HeadingHit {
  size_t nLine = 0;
  int32_t lFirst = 0, lLast = 0;
  int32_t lNumberLast = -1, lName = -1;  ///< Of a number and a name: the end of the one, the first place of the other
};

/// Lines that have a label, a pattern or a shape in common, with the value that each of them tells.
struct HeadingCandidate {
  enum class Way : uint8_t { Label, Figures, Words, Shape };
  Way way = Way::Label;
  std::u32string sText;    ///< Stands in front of the value
  std::u32string sBehind;  ///< Stands behind it
  std::u32string sEnds;    ///< Ends some of the values without being part of them: (continued)
  std::vector<HeadingHit> hits;
  bool bNumbered = false;  ///< Each value is a number and a name: 824 Security
  bool bPrefix = false;    ///< Its words tell nothing elsewhere on a line, so they must stand where they do
  bool bLetters = false;   ///< Of a shape: each value begins with a letter
  int32_t lBehind = 0;     ///< Of a shape: from this place on nothing stands on its lines; 0: anything may
};

/// Collects what the lines between the rows of a table have in common.
class clsHeadingCandidates {
 public:
  clsHeadingCandidates(const clsReportSample& report, std::span<const size_t> rows, const LineOwners& owners,
                       size_t nNames, bool bJoined, std::span<const ShapeColumn> columns);
  /// Those that come again with changing values in front of groups, in the order of their first lines and places.
  std::vector<HeadingCandidate> Find();

 private:
  void Collect();
  void AddLabels(size_t nLine);
  void AddFigures(size_t nLine);
  void AddWords(size_t nLine);
  void AddShape(size_t nLine);
  void FindNumbered(HeadingCandidate& candidate) const;
  bool FindNumberAndName(HeadingCandidate::Way way, HeadingHit& hit) const;
  void DropContinued(HeadingCandidate& candidate) const;
  bool IsBalance(const HeadingCandidate& candidate) const;
  void FinishWords();
  void FinishShapes();
  bool FindEndOfShape(HeadingCandidate& candidate) const;
  bool ShapeFits(const HeadingCandidate& candidate, const SampleLine& line) const;
  bool StandsBelowNames(const HeadingCandidate& candidate) const;
  bool PrefixFits(const HeadingCandidate& candidate, const SampleLine& line) const;
  bool IsItsOwn(const HeadingCandidate& candidate) const;
  bool StandsInFront(const HeadingCandidate& candidate) const;
  bool Changes(const HeadingCandidate& candidate) const;
  std::u32string_view ValueOf(const HeadingHit& hit) const;
  size_t GroupOf(size_t nLine) const;

  const clsReportSample& report_;
  std::span<const size_t> rows_;
  const LineOwners& owners_;
  size_t nNames_;
  bool bJoined_;
  std::span<const ShapeColumn> columns_;  ///< Of the table
  std::vector<size_t> lines_;             ///< Between the rows, near the row below
  std::map<std::u32string, HeadingCandidate> byText_;
  std::map<std::u32string, std::vector<size_t>> byFirstWord_;
  std::map<int32_t, std::vector<size_t>> byIndent_;
};

}  // namespace quillon
