#pragma once

#include <cstdint>
#include <string>
#include <string_view>

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
  int64_t Size() const { return nFlushed_ + static_cast<int64_t>(buffer_.size()); }
  const Failure& LastFailure() const { return failure_; }
  /// Up to nBytes from the offset on; 0 at the end and on a failure.
  size_t ReadAt(int64_t nOffset, char* pBytes, size_t nBytes);
  bool CopyTo(clsOutputFile& file, Failure& failure);
  void Clear();

  static constexpr size_t kMemoryBytes = size_t{1} << 20;

 private:
  void Flush();

  std::string buffer_;  ///< What lies behind the file's bytes
  int nHandle_ = -1;
  int64_t nFlushed_ = 0;
  Failure failure_;
};

}  // namespace quillon
