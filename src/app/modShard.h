#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "modConversionRun.h"

namespace quillon {

/// One part of a list of files that several processes share, as --shard I/N names it.
struct Shard {
  int32_t lPart = 1;
  int32_t lParts = 1;
};

/// "I/N" with 1 <= I <= N <= 1,000,000, digits only.
std::optional<Shard> ParseShard(std::string_view sText);

/// What a process takes of a list, for the person who started it.
struct ShardSummary {
  size_t nFiles = 0, nAllFiles = 0;
  int64_t lBytes = 0, lAllBytes = 0;
  /// Of the names and sizes of the whole list: two processes that saw the same list have the same.
  std::string sListing;
};

/// The files of one part, in the order of the list. All processes that see the same names and sizes make the same
/// parts, in whatever order the names came: the largest file first, of equal ones the first in byte order, each goes to
/// the part that is lightest so far, of equal ones the first. A file weighs its bytes and kShardFileWeight.
std::vector<PlannedFile> FilesOfShard(const std::vector<PlannedFile>& files, const Shard& shard, ShardSummary& summary);

/// What opening a file and naming its output costs, in bytes of input that take as long.
constexpr int64_t kShardFileWeight = int64_t{64} << 10;

}  // namespace quillon
