#pragma once
// Widths of an existing sheet's columns, so that what a run has written can be read there.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsXmlScanner.h"

namespace quillon {

/// Width that holds so many characters, as the part has it: five of a character's eight pixels are the cell's margins.
std::string ColumnWidthText(size_t nChars);

/// The entries of a sheet's columns. Columns that a user has made as wide as they are stay so; others grow, and in a
/// file that is this program's own they are made anew.
class clsColumnWidths {
 public:
  /// longest: characters of the longest value written, by column - 1; 0 for none.
  clsColumnWidths(const std::vector<uint8_t>& longest, bool bAnew) : longest_(longest), bAnew_(bAnew) {}
  bool Empty() const { return longest_.empty(); }
  /// From the list's start tag to its end: the list as it is to be. False if the part is damaged.
  bool Rewrite(clsXmlScanner& scanner, std::string& sOut);
  /// The list of a sheet that has none; "" if it needs none.
  std::string NewList(const std::string& sPrefix) const;

 private:
  std::string Entry(std::string_view sTag, size_t nFirst, size_t nLast) const;
  void AppendMissing(const std::string& sPrefix, size_t nBefore, std::string& sOut);

  const std::vector<uint8_t>& longest_;
  bool bAnew_;
  size_t nNext_ = 1;  ///< First column with no entry yet
};

}  // namespace quillon
