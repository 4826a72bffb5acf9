#include "modTableKinds.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace quillon {

namespace {

constexpr size_t kLook = 200;  ///< Rows of a block that tell its columns well enough to compare them

/// The first rows of a block.
TableBlock Sample(const TableBlock& block) {
  TableBlock sample = block;
  if (sample.rows.size() > kLook) sample.rows.resize(kLook);
  sample.nLast = sample.rows.back();
  return sample;
}

class clsKinds {
 public:
  explicit clsKinds(const clsReportLines& report) : report_(report) {}

  std::vector<TableKind> Find() {
    size_t nAfter = 0;
    for (TableBlock& block : FindTableBlocks(report_)) {
      const size_t nNext = block.nLast + 1;
      Add(std::move(block), nAfter);
      nAfter = nNext;
    }
    for (TableKind& kind : kinds_) Finish(kind);
    std::stable_partition(kinds_.begin(), kinds_.end(), [](const TableKind& kind) { return !kind.bDoubtful; });
    return std::move(kinds_);
  }

 private:
  struct Candidate {
    size_t nKind;
    TableBlock sample;
    int32_t lColumns;
    std::string sHeading;
  };
  static constexpr size_t kLast = 8;  ///< Kinds that a table may go on with, or without, a heading

  void Add(TableBlock block, size_t nAfter) {
    Candidate next{kinds_.size(), Sample(block), 0, {}};
    const std::string sRuler = RulerOfBlocks(report_, std::span(&next.sample, 1));
    next.lColumns = ColumnsOfRuler(sRuler);
    next.sHeading = HeadingOfBlock(report_, block, sRuler, nAfter);
    if (next.lColumns < 2) return;
    if (const Candidate* pSame = FindSame(next)) {
      AddPart(kinds_[pSame->nKind].parts, std::move(block));
      return;
    }
    if (!next.sHeading.empty()) byHeading_[next.sHeading].push_back(candidates_.size());
    TableKind& kind = kinds_.emplace_back();
    kind.bHeading = !next.sHeading.empty();
    kind.parts.push_back(std::move(block));
    candidates_.push_back(std::move(next));
  }

  /// What follows on the last part without a line between is no part of its own.
  static void AddPart(std::vector<TableBlock>& parts, TableBlock block) {
    TableBlock& last = parts.back();
    if (last.nLast + 1 < block.nFirst) return parts.push_back(std::move(block));
    last.nLast = block.nLast;
    last.rows.insert(last.rows.end(), block.rows.begin(), block.rows.end());
  }

  /// The known kind that the table agrees with best; the last one of those that do so equally.
  const Candidate* FindSame(const Candidate& next) const {
    const Candidate* pBest = nullptr;
    int32_t lBest = 0;
    const auto look = [&](const Candidate& known, int32_t lFewest) {
      const int32_t lColumns = CommonColumns(known, next);
      if (lColumns < lFewest || lColumns <= lBest) return;
      pBest = &known;
      lBest = lColumns;
    };
    const auto same = byHeading_.find(next.sHeading);
    if (same != byHeading_.end()) {
      const std::vector<size_t>& known = same->second;
      for (size_t n = known.size(); n > 0 && known.size() - n < kLast; --n) look(candidates_[known[n - 1]], 2);
      if (pBest != nullptr) return pBest;
    }
    constexpr int32_t kTelling = 3;  // two columns are too little to know each other by
    for (size_t n = candidates_.size(); n > 0 && candidates_.size() - n < kLast; --n) {
      const Candidate& known = candidates_[n - 1];
      if (!known.sHeading.empty() && !next.sHeading.empty()) continue;
      // A table without a heading goes on with one that has one only if it looks just like it.
      const bool bBothBare = known.sHeading.empty() && next.sHeading.empty();
      const int32_t lMost = std::max(known.lColumns, next.lColumns);
      look(known, std::max(kTelling, bBothBare ? lMost * 3 / 4 : lMost));
    }
    return pBest;
  }

  /// Columns of a ruler over both; 0 if their rows don't stand under each other.
  int32_t CommonColumns(const Candidate& known, const Candidate& next) const {
    if (!HasShapeOf(report_, known.sample, next.sample) && !HasShapeOf(report_, next.sample, known.sample)) return 0;
    const std::array<TableBlock, 2> both{known.sample, next.sample};
    const int32_t lColumns = ColumnsOfRuler(RulerOfBlocks(report_, both));
    return lColumns < std::min(known.lColumns, next.lColumns) ? 0 : lColumns;
  }

  void Finish(TableKind& kind) {
    constexpr int64_t kFew = 3;
    constexpr int64_t kShort = 10;
    kind.sRuler = RulerOfBlocks(report_, kind.parts);
    kind.lColumns = ColumnsOfRuler(kind.sRuler);
    for (const TableBlock& part : kind.parts) kind.lRows += static_cast<int64_t>(part.nLast - part.nFirst) + 1;
    kind.bDoubtful = kind.lRows < (kind.lColumns <= 2 ? kShort : kFew + (kind.bHeading ? 0 : 1));
  }

  const clsReportLines& report_;
  std::vector<TableKind> kinds_;
  std::vector<Candidate> candidates_;  ///< One for each kind
  std::unordered_map<std::string, std::vector<size_t>> byHeading_;
};

}  // namespace

std::vector<TableKind> FindTableKinds(const clsReportLines& report) {
  return clsKinds(report).Find();
}

}  // namespace quillon
