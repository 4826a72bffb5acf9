#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modFailure.h"

namespace quillon {

class clsOutputFile;

/// Bytes put aside until their place in a file is known. Up to kMemoryBytes stay in memory; what goes beyond stands in
/// a temporary file without a name ($TMPDIR, else /var/tmp, else /tmp), which is gone with the object. A failure is
/// kept: writing then goes on without effect, and reading fails with it.
class clsSpool {
 public:
  clsSpool() = default;
  clsSpool(const clsSpool&) = delete;
  clsSpool& operator=(const clsSpool&) = delete;
  ~clsSpool();

  void Write(std::string_view sBytes);
  int64_t Size() const { return nSize_; }
  const Failure& LastFailure() const { return failure_; }
  /// Up to nBytes from the offset on; 0 at the end and on a failure.
  size_t ReadAt(int64_t nOffset, char* pBytes, size_t nBytes);
  bool CopyTo(clsOutputFile& file, Failure& failure);
  void Clear();

  static constexpr size_t kMemoryBytes = size_t{16} << 20;

 private:
  /// The memory that the next bytes go to; empties it into the file where memory is full.
  std::string& Chunk();
  void Flush(std::string_view sBytes);

  std::vector<std::string> chunks_;  ///< The first bytes
  std::string tail_;                 ///< What isn't in the file yet of the others
  int nHandle_ = -1;
  int64_t nInFile_ = 0;
  int64_t nSize_ = 0;
  Failure failure_;
};

}  // namespace quillon
