#include "modStarTotals.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "modNumbers.h"

namespace quillon {

namespace {

/// The numbers of a line by the places where they end. False if one is too large.
bool NumbersOf(const SampleLine& line, std::map<int32_t, ScaledNumber>& numbers) {
  for (const LineMark& mark : line.marks) {
    if (mark.kind != MarkKind::Number) continue;
    ScaledNumber value = 0;
    const auto nLength = static_cast<size_t>(mark.lEnd - mark.lStart) + 1;
    const ScaleStatus status = ParseScaled(Utf8Of(line.sText.substr(static_cast<size_t>(mark.lStart), nLength)), value);
    if (status == ScaleStatus::Overflow) return false;
    if (status == ScaleStatus::Ok) numbers[mark.lFigure] = value;
  }
  return true;
}

/// What was added up since the last line with so many stars or more.
using Sums = std::map<int32_t, ScaledNumber>;

bool AddTo(Sums& sums, const std::map<int32_t, ScaledNumber>& numbers) {
  for (const auto& [lEnd, value] : numbers) {
    const auto sum = AddScaled(sums[lEnd], value);
    if (!sum) return false;
    sums[lEnd] = *sum;
  }
  return true;
}

/// The sum that ends there, or nearest to it: totals are printed by hand and may stand beside their columns.
Sums::const_iterator Nearest(const Sums& sums, int32_t lEnd) {
  constexpr int32_t kNear = 2;
  auto itBest = sums.end();
  int32_t lLeast = kNear + 1;
  for (auto it = sums.lower_bound(lEnd - kNear); it != sums.end() && it->first <= lEnd + kNear; ++it) {
    const int32_t lApart = std::abs(it->first - lEnd);
    if (lApart >= lLeast) continue;
    lLeast = lApart;
    itBest = it;
  }
  return itBest;
}

/// Each number that has rows above it must agree.
bool AddsUp(const std::map<int32_t, ScaledNumber>& numbers, const Sums& sums) {
  size_t nAgree = 0;
  for (const auto& [lEnd, value] : numbers) {
    const auto it = Nearest(sums, lEnd);
    if (it == sums.end()) continue;
    if (it->second != value) return false;
    ++nAgree;
  }
  return nAgree > 0;
}

constexpr size_t kMostStars = 5;

}  // namespace

size_t StarsInFront(const SampleLine& line) {
  if (line.marks.size() < 2) return 0;
  const LineMark& first = line.marks.front();
  const auto nLength = static_cast<size_t>(first.lEnd - first.lStart) + 1;
  const std::u32string_view sMark = line.sText.substr(static_cast<size_t>(first.lStart), nLength);
  const bool bStars = std::all_of(sMark.begin(), sMark.end(), [](char32_t ch) { return ch == U'*'; });
  return bStars && nLength <= kMostStars ? nLength : 0;
}

std::vector<size_t> FindStarTotals(const clsReportSample& report) {
  std::vector<size_t> totals;
  std::vector<Sums> sums(kMostStars + 1);
  size_t nAgree = 0;
  for (size_t n = 0; n < report.Lines().size(); ++n) {
    const SampleLine& line = report.Lines()[n];
    std::map<int32_t, ScaledNumber> numbers;
    if (!NumbersOf(line, numbers)) return {};
    if (numbers.empty()) continue;
    const size_t nStars = StarsInFront(line);
    if (nStars == 0) {
      for (Sums& sum : sums) {
        if (!AddTo(sum, numbers)) return {};
      }
      continue;
    }
    totals.push_back(n);
    nAgree += AddsUp(numbers, sums[nStars]) ? 1U : 0U;
    for (size_t i = 0; i <= nStars; ++i) sums[i].clear();
  }
  return nAgree * 2 > totals.size() && nAgree > 1 ? totals : std::vector<size_t>();
}

}  // namespace quillon
