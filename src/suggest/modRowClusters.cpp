#include "modRowClusters.h"

#include <algorithm>

namespace quillon {

namespace {

constexpr size_t kMostMarks = 200;  ///< Of a line, that are looked at
constexpr size_t kMostOpen = 48;    ///< Clusters that a line is held against
constexpr double kCommon = 0.25;    ///< Share of the lines that makes an edge a common one
constexpr double kOwnShare = 0.6;   ///< Of a line's marks, that must stand at common edges
constexpr double kRowShare = 0.55;  ///< Of the marks that a row has

void Count(std::vector<uint32_t>& counts, int32_t lPlace) {
  const auto n = static_cast<size_t>(lPlace);
  if (counts.size() <= n) counts.resize(n + 1);
  ++counts[n];
}

uint32_t At(const std::vector<uint32_t>& counts, int32_t lPlace) {
  const auto n = static_cast<size_t>(lPlace);
  return n < counts.size() ? counts[n] : 0;
}

}  // namespace

void clsEdges::Add(const SampleLine& line) {
  ++nLines_;
  for (const LineMark& mark : line.marks.first(std::min(line.marks.size(), kMostMarks))) {
    Count(starts_, mark.lStart);
    Count(ends_, mark.lFigure);
    if (mark.kind == MarkKind::Number) Count(points_, mark.lPoint);
    nMarks_ += mark.bGoesOn ? 0U : 1U;
  }
}

bool clsEdges::IsCommon(const LineMark& mark) const {
  const auto lFewest = static_cast<uint32_t>(std::max(1.0, kCommon * static_cast<double>(nLines_)));
  if (mark.kind == MarkKind::Number) {
    return At(ends_, mark.lFigure) >= lFewest || At(points_, mark.lPoint) >= lFewest ||
           At(starts_, mark.lStart) >= lFewest;
  }
  return At(starts_, mark.lStart) >= lFewest || At(ends_, mark.lFigure) >= lFewest;
}

size_t clsEdges::Matching(const SampleLine& line, size_t& nMarks) const {
  size_t nMatching = 0;
  nMarks = 0;
  for (const LineMark& mark : line.marks.first(std::min(line.marks.size(), kMostMarks))) {
    const bool bCommon = IsCommon(mark);
    if (mark.bGoesOn) continue;
    ++nMarks;
    nMatching += bCommon ? 1U : 0U;
  }
  return nMatching;
}

bool clsEdges::Fits(const SampleLine& line) const {
  size_t nMarks = 0;
  const auto nMatching = static_cast<double>(Matching(line, nMarks));
  return nMatching >= 2 && nMatching >= kOwnShare * static_cast<double>(nMarks) &&
         nMatching >= kRowShare * MarksOfALine();
}

bool clsEdges::Holds(const SampleLine& line) const {
  size_t nMarks = 0;
  return Matching(line, nMarks) == nMarks && nMarks >= 2 && IsCommon(line.marks.front());
}

namespace {

class clsClusters {
 public:
  clsClusters(const clsReportSample& report, const std::vector<bool>& taken) : report_(report), taken_(taken) {}

  std::vector<RowCluster> Find() {
    const std::vector<SampleLine>& lines = report_.Lines();
    for (size_t i = 0; i < lines.size(); ++i) {
      if (!taken_[i] && !lines[i].bDrawn && lines[i].marks.size() > 1) Place(lines[i], i);
    }
    while (Merge()) {
    }
    std::stable_sort(clusters_.begin(), clusters_.end(),
                     [](const RowCluster& a, const RowCluster& b) { return a.rows.size() > b.rows.size(); });
    return std::move(clusters_);
  }

 private:
  /// To the cluster that the line fits best; the one used last comes first among equals.
  void Place(const SampleLine& line, size_t nLine) {
    size_t nBest = clusters_.size();
    size_t nMost = 0;
    size_t nPlace = 0;
    for (size_t i = 0; i < open_.size(); ++i) {
      const clsEdges& edges = clusters_[open_[i]].edges;
      size_t nMarks = 0;
      const size_t nMatching = edges.Fits(line) ? edges.Matching(line, nMarks) : 0;
      if (nMatching <= nMost) continue;
      nMost = nMatching;
      nBest = open_[i];
      nPlace = i;
    }
    if (nBest == clusters_.size()) {
      clusters_.emplace_back();
      if (open_.size() >= kMostOpen) DropOne();
    } else {
      open_.erase(open_.begin() + static_cast<ptrdiff_t>(nPlace));
    }
    open_.insert(open_.begin(), nBest);
    clusters_[nBest].edges.Add(line);
    clusters_[nBest].rows.push_back(nLine);
  }

  /// The smallest of those not used for long.
  void DropOne() {
    const auto itHalf = open_.begin() + static_cast<ptrdiff_t>(open_.size() / 2);
    const auto it = std::min_element(
        itHalf, open_.end(), [&](size_t a, size_t b) { return clusters_[a].rows.size() < clusters_[b].rows.size(); });
    open_.erase(it);
  }

  /// Clusters that began as two and turned out to be one.
  bool Merge() {
    constexpr size_t kMostMerged = 60;
    std::stable_sort(clusters_.begin(), clusters_.end(),
                     [](const RowCluster& a, const RowCluster& b) { return a.rows.size() > b.rows.size(); });
    const size_t nLooked = std::min(clusters_.size(), kMostMerged);
    for (size_t i = 0; i < nLooked; ++i) {
      for (size_t j = i + 1; j < nLooked; ++j) {
        if (!AreOne(clusters_[i], clusters_[j])) continue;
        Join(clusters_[i], clusters_[j]);
        clusters_.erase(clusters_.begin() + static_cast<ptrdiff_t>(j));
        return true;
      }
    }
    return false;
  }

  bool AreOne(const RowCluster& large, const RowCluster& small) const {
    constexpr size_t kLook = 40;
    const size_t nStep = small.rows.size() / kLook + 1;
    size_t nSeen = 0;
    size_t nFit = 0;
    size_t nHeld = 0;
    for (size_t i = 0; i < small.rows.size(); i += nStep) {
      ++nSeen;
      const SampleLine& line = report_.Lines()[small.rows[i]];
      nFit += large.edges.Fits(line) ? 1U : 0U;
      nHeld += large.edges.Holds(line) && StandsBeside(small.rows[i], large.rows) ? 1U : 0U;
    }
    return nFit * 2 > nSeen || nHeld * 10 > nSeen * 9;
  }

  static bool StandsBeside(size_t nLine, const std::vector<size_t>& rows) {
    constexpr size_t kNear = 3;
    const auto it = std::lower_bound(rows.begin(), rows.end(), nLine);
    return (it != rows.end() && *it - nLine <= kNear) || (it != rows.begin() && nLine - *(it - 1) <= kNear);
  }

  void Join(RowCluster& into, const RowCluster& from) {
    for (const size_t n : from.rows) into.edges.Add(report_.Lines()[n]);
    const auto nMiddle = static_cast<ptrdiff_t>(into.rows.size());
    into.rows.insert(into.rows.end(), from.rows.begin(), from.rows.end());
    std::inplace_merge(into.rows.begin(), into.rows.begin() + nMiddle, into.rows.end());
  }

  const clsReportSample& report_;
  const std::vector<bool>& taken_;
  std::vector<RowCluster> clusters_;
  std::vector<size_t> open_;  ///< Used last first
};

}  // namespace

std::vector<RowCluster> FindRowClusters(const clsReportSample& report, const std::vector<bool>& taken) {
  return clsClusters(report, taken).Find();
}

}  // namespace quillon
