#pragma once
// Lines that have their edges in common.

#include <cstdint>
#include <vector>

#include "clsReportSample.h"

namespace quillon {

/// How many lines have a mark that begins, ends, or has its decimal point at each place.
class clsEdges {
 public:
  void Add(const SampleLine& line);
  /// How many of the lines' marks stand at edges that enough of the lines have in common; nMarks: how many count.
  size_t Matching(const SampleLine& line, size_t& nMarks) const;
  size_t Lines() const { return nLines_; }
  double MarksOfALine() const { return static_cast<double>(nMarks_) / static_cast<double>(nLines_); }
  /// Whether the line has most of its edges in common with these.
  bool Fits(const SampleLine& line) const;
  /// Whether all marks of the line stand at common edges, so that it is a row whose other values are blank.
  bool Holds(const SampleLine& line) const;

 private:
  bool IsCommon(const LineMark& mark) const;

  std::vector<uint32_t> starts_, ends_, points_;
  size_t nLines_ = 0;
  size_t nMarks_ = 0;
};

struct RowCluster {
  clsEdges edges;
  std::vector<size_t> rows;  ///< Indexes of the sample's lines, ascending
};

/// Lines clustered by their edges: texts by their left one, numbers by their right one or their point. Those with the
/// most lines come first. Lines that are taken (as many entries as the sample has lines) belong to none.
std::vector<RowCluster> FindRowClusters(const clsReportSample& report, const std::vector<bool>& taken);

}  // namespace quillon
