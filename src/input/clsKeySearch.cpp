#include "clsKeySearch.h"

#include <algorithm>
#include <bit>

namespace quillon {

clsKeySearch::clsKeySearch(std::span<const std::string> texts) : nLeft_(texts.size()) {
  size_t nBytes = 0;
  for (const std::string& sText : texts) nBytes += sText.size();
  edges_.resize(std::bit_ceil(2 * nBytes + 2));
  std::vector<Origin> origins;
  int32_t nText = 0;
  for (const std::string& sText : texts) Add(sText, nText++, origins);
  LinkStates(origins);
}

clsKeySearch::Edge& clsKeySearch::Slot(int32_t nState, unsigned char byte) {
  const size_t nMask = edges_.size() - 1;
  const uint64_t nKey = (static_cast<uint64_t>(nState) << 8 | byte) * 0x9E3779B97F4A7C15U;
  for (size_t i = static_cast<size_t>(nKey >> 32) & nMask;; i = (i + 1) & nMask) {
    Edge& edge = edges_[i];
    if (edge.nFrom < 0 || (edge.nFrom == nState && edge.byte == byte)) return edge;
  }
}

void clsKeySearch::Add(std::string_view sText, int32_t nText, std::vector<Origin>& origins) {
  int32_t nState = 0;
  int32_t nDepth = 0;
  for (const char c : sText) {
    const auto byte = static_cast<unsigned char>(c);
    Edge& edge = Slot(nState, byte);
    ++nDepth;
    if (edge.nFrom < 0) {
      edge = {nState, static_cast<int32_t>(nodes_.size()), byte};
      origins.push_back({nDepth, edge.nTo, nState, byte});
      nodes_.emplace_back();
    }
    nState = edge.nTo;
  }
  nodes_[static_cast<size_t>(nState)].nText = nText;
  nodes_[static_cast<size_t>(nState)].nLive = nState;
  const auto first = static_cast<unsigned char>(sText.front());
  if (sText.size() == 1) {
    first_.set(first);
    for (size_t second = 0; second < 256; ++second) pairs_.set(size_t{first} << 8 | second);
  } else {
    pairs_.set(size_t{first} << 8 | static_cast<unsigned char>(sText[1]));
  }
}

/// Each state after those that are shorter.
void clsKeySearch::LinkStates(std::vector<Origin>& origins) {
  std::stable_sort(origins.begin(), origins.end(),
                   [](const Origin& a, const Origin& b) { return a.nDepth < b.nDepth; });
  for (const Origin& origin : origins) {
    Node& node = nodes_[static_cast<size_t>(origin.nState)];
    node.nFail = origin.nParent == 0 ? 0 : Step(nodes_[static_cast<size_t>(origin.nParent)].nFail, origin.byte);
    if (node.nText < 0) node.nLive = node.nFail;
  }
}

/// The state behind the edge; 0 if there is none.
int32_t clsKeySearch::Next(int32_t nState, unsigned char byte) const {
  const size_t nMask = edges_.size() - 1;
  const uint64_t nKey = (static_cast<uint64_t>(nState) << 8 | byte) * 0x9E3779B97F4A7C15U;
  for (size_t i = static_cast<size_t>(nKey >> 32) & nMask;; i = (i + 1) & nMask) {
    const Edge& edge = edges_[i];
    if (edge.nFrom < 0) return 0;
    if (edge.nFrom == nState && edge.byte == byte) return edge.nTo;
  }
}

int32_t clsKeySearch::Step(int32_t nState, unsigned char byte) const {
  for (;; nState = nodes_[static_cast<size_t>(nState)].nFail) {
    const int32_t nNext = Next(nState, byte);
    if (nNext != 0 || nState == 0) return nNext;
  }
}

/// The nearest state on the way of failures whose text is looked for; 0 if there is none. Ways that were gone are
/// halved, so that states whose texts were found cost nothing.
int32_t clsKeySearch::Live(int32_t nState) {
  while (nState != 0) {
    Node& node = nodes_[static_cast<size_t>(nState)];
    if (node.nLive == nState) return nState;
    node.nLive = nodes_[static_cast<size_t>(node.nLive)].nLive;
    nState = node.nLive;
  }
  return 0;
}

}  // namespace quillon
