#pragma once
// In which order the lines of a record come, where some of them lack.

#include <cstddef>
#include <span>
#include <vector>

namespace quillon {

/// The indexes of the labels in the order in which they stand in most records. starts: the first lines of the records;
/// labels: the lines of each label. All ascending.
std::vector<size_t> OrderInRecords(std::span<const size_t> starts, const std::vector<std::vector<size_t>>& labels);

}  // namespace quillon
