#pragma once

#include <cstddef>
#include <cstdint>

#include "modFailure.h"

namespace quillon {

/// Bytes that can be read once, from the front: what stands under a report that is no plain file.
class clsByteSource {
 public:
  clsByteSource() = default;
  clsByteSource(const clsByteSource&) = delete;
  clsByteSource& operator=(const clsByteSource&) = delete;
  virtual ~clsByteSource() = default;

  /// Up to nBytes (above 0); 0 at the end, and on a failure (see LastFailure).
  virtual size_t Read(char* pBytes, size_t nBytes) = 0;
  /// Bytes of the file behind it that were taken so far.
  virtual int64_t BytesTaken() const = 0;
  const Failure& LastFailure() const { return failure_; }

 protected:
  Failure failure_;
};

}  // namespace quillon
