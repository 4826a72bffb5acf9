#include "modShard.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <numeric>
#include <queue>

#include "clsFingerprint.h"

namespace quillon {

namespace {

constexpr int32_t kMostParts = 1000000;

/// A whole number from 1, digits alone.
std::optional<int32_t> Count(std::string_view sText) {
  int32_t lValue = 0;
  const auto [pEnd, error] = std::from_chars(sText.data(), sText.data() + sText.size(), lValue);
  const bool bWhole = error == std::errc() && pEnd == sText.data() + sText.size() && sText.front() != '-';
  return bWhole && lValue >= 1 && lValue <= kMostParts ? std::optional(lValue) : std::nullopt;
}

int64_t BytesOf(const PlannedFile& file) {
  return std::max<int64_t>(file.lBytes, 0);
}

}  // namespace

std::optional<Shard> ParseShard(std::string_view sText) {
  const size_t nSlash = sText.find('/');
  if (nSlash == std::string_view::npos || nSlash == 0 || nSlash + 1 == sText.size()) return std::nullopt;
  const auto part = Count(sText.substr(0, nSlash));
  const auto parts = Count(sText.substr(nSlash + 1));
  if (!part || !parts || *part > *parts) return std::nullopt;
  return Shard{*part, *parts};
}

std::vector<PlannedFile> FilesOfShard(const std::vector<PlannedFile>& files, const Shard& shard,
                                      ShardSummary& summary) {
  std::vector<size_t> order(files.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::sort(order.begin(), order.end(), [&files](size_t a, size_t b) {
    return files[a].lBytes != files[b].lBytes ? files[a].lBytes > files[b].lBytes : files[a].sInput < files[b].sInput;
  });

  using Part = std::pair<int64_t, int32_t>;  // Weight, number
  std::priority_queue<Part, std::vector<Part>, std::greater<>> lightest;
  for (int32_t lPart = 1; lPart <= shard.lParts; ++lPart) lightest.emplace(0, lPart);
  clsFingerprint listing;
  std::vector<size_t> taken;
  for (const size_t n : order) {
    const int64_t lBytes = BytesOf(files[n]);
    auto [lWeight, lPart] = lightest.top();
    lightest.pop();
    lightest.emplace(lWeight + lBytes + kShardFileWeight, lPart);
    listing.Add(files[n].sInput).Add(files[n].lBytes);
    summary.lAllBytes += lBytes;
    if (lPart != shard.lPart) continue;
    taken.push_back(n);
    summary.lBytes += lBytes;
  }
  std::sort(taken.begin(), taken.end());
  std::vector<PlannedFile> part;
  part.reserve(taken.size());
  for (const size_t n : taken) part.push_back(files[n]);
  summary.nFiles = part.size();
  summary.nAllFiles = files.size();
  summary.sListing = listing.Text();
  return part;
}

}  // namespace quillon
