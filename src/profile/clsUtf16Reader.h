#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsUtf16Text.h"
#include "modFailure.h"

namespace quillon {

/// Rows of a UTF-16 file as UTF-8, by the rules of clsLineReader with bUnix off. A BOM tells the byte order;
/// without one it is little-endian. An odd last byte and each surrogate without its partner become U+FFFD and are
/// counted. The file is read in blocks; memory is one block or the longest row.
class clsUtf16Reader {
 public:
  clsUtf16Reader() = default;
  clsUtf16Reader(const clsUtf16Reader&) = delete;
  clsUtf16Reader& operator=(const clsUtf16Reader&) = delete;
  ~clsUtf16Reader() { Close(); }

  /// sPath is a path text. False with the reason.
  bool Open(std::string_view sPath, Failure& failure);
  void Close();

  /// The next row as UTF-8, valid until the next call. False at the end and on a failure (see LastFailure).
  bool ReadRow(std::string_view& sRow);
  /// Passes over nRows rows; returns how many there were.
  int64_t SkipRows(int64_t nRows);
  int64_t RowNumber() const { return lRow_; }
  int64_t BytesDone() const { return nPos_; }
  int64_t BytesTotal() const { return nEnd_; }
  /// Characters that could not be read, each of which became U+FFFD.
  int64_t Replaced() const { return units_.Replaced(); }
  const Failure& LastFailure() const { return failure_; }

 private:
  bool Prepare();
  bool FindEndOfText();
  bool FindLineEnd();
  bool ReadBlock(int64_t nPos, size_t& nGot);
  bool Fill();
  void EndConversion();

  int nHandle_ = -1;
  std::string sPath_;
  Failure failure_;
  clsUtf16Text units_;
  char end_ = '\n';
  int64_t nPos_ = 0;  ///< Byte of the file behind what was converted
  int64_t nEnd_ = 0;
  int64_t lRow_ = 0;
  bool bEnded_ = false;
  std::vector<char> block_;
  std::string text_;  ///< Converted, not yet handed out from nText_ on
  size_t nText_ = 0;
};

}  // namespace quillon
