#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "modFailure.h"

namespace quillon {

/// The file without a name that a report's text is made into.
class clsTextSpool {
 public:
  static constexpr int64_t kMostBytes = int64_t{256} << 30;
  /// From here on a text may be kMostTimes as long as the file that it was packed in.
  static constexpr int64_t kFreeBytes = int64_t{1} << 30;
  static constexpr int64_t kMostTimes = 300;

  /// sPath names the report in failures. nMost above 0: the text may end behind so many bytes.
  clsTextSpool(std::string_view sPath, int64_t nMost) : sPath_(sPath), nMost_(nMost) {}
  clsTextSpool(const clsTextSpool&) = delete;
  clsTextSpool& operator=(const clsTextSpool&) = delete;
  ~clsTextSpool();

  /// nTaken: how many bytes of the packed file the text came from so far. False on a failure, and when it is enough.
  bool Write(std::string_view sBytes, int64_t nTaken);
  bool IsEnough() const { return bEnough_; }
  int64_t Size() const { return nSize_; }
  int Handle() const { return nHandle_; }
  /// The handle becomes the caller's. -1 after a failure.
  int Release();
  const Failure& LastFailure() const { return failure_; }

 private:
  std::string sPath_;
  int64_t nMost_;
  int nHandle_ = -1;
  int64_t nSize_ = 0;
  bool bEnough_ = false;
  Failure failure_;
};

}  // namespace quillon
