#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace quillon {

class clsSideThread;
class clsSpool;

/// Deflates a stream into a spool, what is beyond its first megabytes on a second thread where that is wanted: with the
/// same bytes, and nothing of the spool may be looked at before Close. The results of several deflaters, all but the
/// last closed with bLast false, follow one another as one deflate stream: each begins at a byte and looks back at
/// nothing before it.
class clsDeflater {
 public:
  explicit clsDeflater(clsSpool& spool);
  clsDeflater(const clsDeflater&) = delete;
  clsDeflater& operator=(const clsDeflater&) = delete;
  ~clsDeflater();

  void Write(std::string_view sBytes);
  /// Once, at the end. bLast ends the deflate stream; else more may follow it at the next byte.
  void Close(bool bLast);

  uint32_t Crc() const { return nCrc_; }   ///< Of the bytes that went in; known when it is closed
  int64_t Size() const { return nSize_; }  ///< Bytes that went in

 private:
  struct Stream;
  /// Streams that are done, for the next: a workbook has some ten parts, and making their memory anew costs more than
  /// all that goes through it.
  static std::vector<std::unique_ptr<Stream>>& Idle();
  void Run();
  void Pack(std::string_view sPiece);
  void MoveAside();

  clsSpool& spool_;
  std::unique_ptr<Stream> stream_;
  uint32_t nCrc_ = 0;
  int64_t nSize_ = 0;
  size_t nSinceTurn_ = 0;
  std::unique_ptr<clsSideThread> side_;  ///< Ends before what it works with
};

/// The checksum of two byte runs in a row, from theirs; the second has nSecondBytes bytes.
uint32_t CombineCrc(uint32_t nFirst, uint32_t nSecond, int64_t nSecondBytes);

}  // namespace quillon
