#include "modLabelOrder.h"

#include <algorithm>
#include <map>

namespace quillon {

namespace {

/// How many records have one label somewhere in front of another one.
class clsPrecedence {
 public:
  clsPrecedence(std::span<const size_t> starts, const std::vector<std::vector<size_t>>& labels)
      : nLabels_(labels.size()), counts_(nLabels_ * nLabels_) {
    std::map<size_t, std::vector<std::pair<size_t, size_t>>> records;  // line and label
    for (size_t i = 0; i < nLabels_; ++i) {
      for (const size_t n : labels[i]) {
        const auto nRecord = static_cast<size_t>(std::upper_bound(starts.begin(), starts.end(), n) - starts.begin());
        records[nRecord].emplace_back(n, i);
      }
    }
    for (auto& [nRecord, lines] : records) Add(lines);
  }

  bool ComesBefore(size_t a, size_t b) const { return counts_[a * nLabels_ + b] > counts_[b * nLabels_ + a]; }

 private:
  void Add(std::vector<std::pair<size_t, size_t>>& lines) {
    constexpr size_t kMost = 100;
    std::sort(lines.begin(), lines.end());
    if (lines.size() > kMost) lines.resize(kMost);
    for (size_t i = 0; i < lines.size(); ++i) {
      for (size_t k = i + 1; k < lines.size(); ++k) ++counts_[lines[i].second * nLabels_ + lines[k].second];
    }
  }

  size_t nLabels_;
  std::vector<size_t> counts_;
};

}  // namespace

std::vector<size_t> OrderInRecords(std::span<const size_t> starts, const std::vector<std::vector<size_t>>& labels) {
  constexpr size_t kMostLabels = 200;
  std::vector<size_t> left;
  for (size_t i = 0; i < labels.size(); ++i) left.push_back(i);
  if (labels.size() > kMostLabels) return left;
  const clsPrecedence precedence(starts, labels);
  std::vector<size_t> order;
  while (!left.empty()) {
    const auto isFirst = [&](size_t a) {
      return std::none_of(left.begin(), left.end(), [&](size_t b) { return precedence.ComesBefore(b, a); });
    };
    auto it = std::find_if(left.begin(), left.end(), isFirst);
    if (it == left.end()) it = left.begin();  // Labels that stand in a circle.
    order.push_back(*it);
    left.erase(it);
  }
  return order;
}

}  // namespace quillon
