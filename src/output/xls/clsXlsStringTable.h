#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsXlsStrings.h"

namespace quillon {

/// Appends the text of a string that begins at nPos, in a record that ends at nRecordEnd, and may go on in CONTINUEs.
bool ReadXlsString(std::string_view sStream, size_t nPos, size_t nRecordEnd, std::string& sUtf8);

/// The shared string table of a stream that is being changed: where each string lies, and the table with more strings
/// behind them.
class clsXlsStringTable {
 public:
  /// Looks at the SST record at an offset of the stream, which must outlive the object. False if it is damaged.
  bool Parse(std::string_view sStream, size_t nOffset);
  uint32_t Count() const { return static_cast<uint32_t>(starts_.size()); }
  /// Text of a string, from 0; "" for one that isn't there.
  std::string Text(uint32_t nIndex) const;
  /// Offset behind the table's last CONTINUE.
  size_t End() const { return nEnd_; }

  /// Strings that no cell has any more: those behind the last one kept go, the others become blanks in the stream,
  /// which is the one that was parsed. kept is by number; what it doesn't reach isn't kept.
  void Drop(const std::vector<bool>& kept, std::string& sStream);

  /// Appends to sOut the table with the added strings, then the EXTSST that belongs to it. sOut begins at offset
  /// nBase of the stream. An object without Parse gives a table of the added strings alone.
  void Write(const clsXlsStrings& added, size_t nBase, std::string& sOut) const;

 private:
  struct Buckets;
  size_t WriteOwn(size_t nBase, Buckets& buckets, std::string& sOut) const;

  std::string_view sStream_;
  size_t nOffset_ = 0;
  size_t nStringsEnd_ = 0;  ///< Behind the last string; what stands between it and nEnd_ is dropped on writing
  size_t nEnd_ = 0;
  std::vector<uint32_t> starts_;   ///< Of the strings, from nOffset_
  std::vector<uint32_t> records_;  ///< Of the SST record and its CONTINUEs, from nOffset_
};

}  // namespace quillon
