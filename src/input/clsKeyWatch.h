#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Looks out for a few texts while a file is passed block by block for another reason, and keeps the row of each.
class clsKeyWatch {
 public:
  struct Row {
    int64_t lRow = 0;     ///< From 1; 0 if the text was not seen
    int64_t nOffset = 0;  ///< Of its first byte
  };

  /// ASCII without line ends; what isn't is not looked for, nor is anything beyond kMostTexts.
  void Expect(const std::vector<std::string>& texts);
  /// The file is passed from here on.
  void Start(int64_t nOffset);
  /// The next bytes of the file. Rows end at LF.
  void Look(std::string_view sBlock);
  /// Null for a text that isn't expected.
  const Row* RowOf(std::string_view sText) const;

  static constexpr size_t kMostTexts = 6;

 private:
  struct Text {
    std::string sText;
    Row row;
  };
  size_t FindIn(std::string_view sBlock, std::string_view sText) const;
  void PassTo(std::string_view sBlock, size_t nTo);

  std::vector<Text> texts_;
  size_t nLongest_ = 0;
  std::string sTail_;      ///< The last bytes before the block
  int64_t nBlock_ = 0;     ///< File offset of the block
  size_t nPassed_ = 0;     ///< Bytes of the block whose line ends are counted
  int64_t lRows_ = 0;      ///< Line ends so far
  int64_t nRowStart_ = 0;  ///< File offset behind the last of them
};

}  // namespace quillon
