#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Looks for many texts at once: an automaton that takes each byte of a row once, however many texts there are and
/// however they overlap. A text that was found is not looked for any further.
class clsKeySearch {
 public:
  /// Bytes of all texts together that one search is made for; more cost too much memory.
  static constexpr size_t kMostBytes = size_t{512} << 10;

  /// The texts are not empty and differ.
  explicit clsKeySearch(std::span<const std::string> texts);

  /// Calls found(n, nLast) for the index of each text that the row holds and the place of its last byte there, and
  /// forgets those.
  template <typename Found>
  void Look(std::string_view sRow, Found found) {
    Walk(sRow, [&](int32_t nState, size_t i) {
      for (int32_t n = Live(nState); n != 0; n = Live(nState)) {
        found(static_cast<size_t>(nodes_[static_cast<size_t>(n)].nText), i);
        nodes_[static_cast<size_t>(n)].nLive = nodes_[static_cast<size_t>(n)].nFail;
        --nLeft_;
      }
    });
  }
  /// The same without forgetting any: found(n) for each place where a text ends.
  template <typename Found>
  void LookForAll(std::string_view sRow, Found found) {
    Walk(sRow, [&](int32_t nState, size_t) {
      for (int32_t n = Live(nState); n != 0; n = Live(nodes_[static_cast<size_t>(n)].nFail))
        found(static_cast<size_t>(nodes_[static_cast<size_t>(n)].nText));
    });
  }
  /// Texts not found so far.
  size_t Left() const { return nLeft_; }

 private:
  /// Tells the state behind each byte that a text may begin or go on with.
  template <typename At>
  void Walk(std::string_view sRow, At at) {
    int32_t nState = 0;
    for (size_t i = 0; i < sRow.size(); ++i) {
      if (nState == 0 && !MayBegin(sRow, i)) continue;
      nState = Step(nState, static_cast<unsigned char>(sRow[i]));
      at(nState, i);
    }
  }

  struct Node {
    int32_t nFail = 0;   ///< The longest other state that ends the same
    int32_t nLive = 0;   ///< Itself if its text is looked for, else a state nearer to the next one that is
    int32_t nText = -1;  ///< Index of the text that ends here
  };
  struct Edge {
    int32_t nFrom = -1, nTo = 0;
    unsigned char byte = 0;
  };

  struct Origin {
    int32_t nDepth, nState, nParent;
    unsigned char byte;
  };

  void Add(std::string_view sText, int32_t nText, std::vector<Origin>& origins);
  void LinkStates(std::vector<Origin>& origins);
  Edge& Slot(int32_t nState, unsigned char byte);
  int32_t Next(int32_t nState, unsigned char byte) const;
  int32_t Step(int32_t nState, unsigned char byte) const;
  int32_t Live(int32_t nState);
  /// False if no text begins at this place of the row: told by its first two bytes, as most rows hold none.
  bool MayBegin(std::string_view sRow, size_t nAt) const {
    const auto first = static_cast<unsigned char>(sRow[nAt]);
    if (nAt + 1 >= sRow.size()) return first_[first];
    return pairs_[size_t{first} << 8 | static_cast<unsigned char>(sRow[nAt + 1])];
  }

  std::vector<Node> nodes_{1};
  std::vector<Edge> edges_;  ///< Open addressing; a free slot has nFrom -1
  std::bitset<256> first_;
  std::bitset<65536> pairs_;
  size_t nLeft_ = 0;
};

}  // namespace quillon
