#include "modCollections.h"

#include <numeric>

#include "modReport.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int32_t kCollectionIndex = -5900;

/// Sifts position p down within the first n entries of a max-heap of indices.
void SiftDown(std::vector<size_t>& heap, size_t p, size_t n, const std::vector<std::string>& keys) {
  while (p < n / 2) {
    size_t child = 2 * p + 1;
    if (child + 1 < n && keys[heap[child]] < keys[heap[child + 1]]) ++child;
    if (keys[heap[p]] >= keys[heap[child]]) return;
    std::swap(heap[p], heap[child]);
    p = child;
  }
}

}  // namespace

void ReportInvalidCollectionIndex(clsHost& host) {
  ReportCode(host, EntryType::Error, kCollectionIndex, Translate("Invalid Index in CollectionItemSet!"));
}

std::vector<std::string> SortCollection(const std::vector<std::string>& items, bool bCaseSensitive) {
  std::vector<std::string> keys = items;
  if (!bCaseSensitive) {
    for (std::string& sKey : keys) sKey = UpperText(sKey);
  }
  std::vector<size_t> heap(items.size());
  std::iota(heap.begin(), heap.end(), size_t{0});
  for (size_t p = heap.size() / 2; p-- > 0;) SiftDown(heap, p, heap.size(), keys);
  for (size_t m = heap.size(); m >= 2; --m) {
    std::swap(heap[0], heap[m - 1]);
    SiftDown(heap, 0, m - 1, keys);
  }
  std::vector<std::string> sorted;
  sorted.reserve(items.size());
  for (const size_t n : heap) sorted.push_back(items[n]);
  return sorted;
}

}  // namespace quillon
