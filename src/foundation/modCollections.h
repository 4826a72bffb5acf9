#pragma once
// Ordered collections addressed from 1.

#include <cstddef>
#include <string>
#include <vector>

#include "clsHost.h"

namespace quillon {

/// Reports -5900 "Invalid Index in CollectionItemSet!".
void ReportInvalidCollectionIndex(clsHost& host);

template <typename T>
void CollectionClear(std::vector<T>& items) {
  items.clear();
}

/// Replaces the item at the index (from 1). An index outside reports -5900 and changes nothing.
template <typename T>
void CollectionItemSet(clsHost& host, std::vector<T>& items, int lIndex, T value) {
  if (lIndex < 1 || static_cast<size_t>(lIndex) > items.size()) {
    ReportInvalidCollectionIndex(host);
    return;
  }
  items[static_cast<size_t>(lIndex) - 1] = std::move(value);
}

/// A sorted copy (heap sort); without regard to case the upper-cased texts are compared. Equal entries keep no order.
std::vector<std::string> SortCollection(const std::vector<std::string>& items, bool bCaseSensitive);

}  // namespace quillon
