#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "clsKeySearch.h"

namespace quillon {

/// Looks out for texts while a file is passed block by block for another reason, and keeps the first row of each.
class clsKeyWatch {
 public:
  struct Row {
    int64_t lRow = 0;     ///< From 1; 0 if the text was not seen
    int64_t nOffset = 0;  ///< Of its first byte
  };

  /// Texts in the bytes of the file. What is empty, very long or has line ends is not looked for, nor what comes when
  /// there is enough.
  void Expect(const std::vector<std::string>& texts);
  /// The file is passed from here on.
  void Start(int64_t nOffset);
  /// The next bytes of the file. Rows end at LF.
  void Look(std::string_view sBlock);
  /// Null for a text that isn't expected.
  const Row* RowOf(std::string_view sText) const;
  size_t TextCount() const { return texts_.size(); }
  /// True if the rest of the file could tell nothing new.
  bool IsDone() const { return nLeft_ == 0; }

  static constexpr size_t kMostBytes = clsKeySearch::kMostBytes;  ///< Of all texts
  static constexpr size_t kLongest = 4096;

 private:
  struct Text {
    std::string sText;
    Row row;
  };
  /// Place of a text's hit in the block, and which text it is.
  using Hits = std::vector<std::pair<size_t, size_t>>;

  Hits Few(std::string_view sBlock) const;
  Hits Many(std::string_view sBlock);
  size_t FindIn(std::string_view sBlock, std::string_view sText) const;
  void PassTo(std::string_view sBlock, size_t nTo);
  void KeepTail(std::string_view sBlock);

  std::vector<Text> texts_;
  std::unordered_map<std::string, size_t> byText_;
  std::optional<clsKeySearch> search_;  ///< Where there are more texts than are found one by one
  size_t nBytes_ = 0;
  size_t nLongest_ = 1;
  size_t nLeft_ = 0;       ///< Texts not seen so far
  std::string sTail_;      ///< The last bytes before the block
  int64_t nBlock_ = 0;     ///< File offset of the block
  size_t nPassed_ = 0;     ///< Bytes of the block whose line ends are counted
  int64_t lRows_ = 0;      ///< Line ends so far
  int64_t nRowStart_ = 0;  ///< File offset behind the last of them
};

}  // namespace quillon
