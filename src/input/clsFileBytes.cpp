#include "clsFileBytes.h"

#include <unistd.h>

#include <algorithm>

#include "modSystemIo.h"

namespace quillon {

void clsFileBytes::Use(int nHandle) {
  Close();
  nHandle_ = nHandle;
}

void clsFileBytes::Close() {
  if (nHandle_ >= 0) close(nHandle_);
  nHandle_ = -1;
  kept_.clear();
}

int64_t clsFileBytes::ReadAt(char* pBytes, size_t nBytes, int64_t nOffset) {
  const auto nAt = static_cast<size_t>(nOffset);
  if (nAt < kept_.size()) {
    const size_t nGot = std::min(nBytes, kept_.size() - nAt);
    std::copy_n(kept_.data() + nAt, nGot, pBytes);
    return static_cast<int64_t>(nGot);
  }
  const int64_t nGot = ReadHandleAt(nHandle_, pBytes, nBytes, nOffset);
  const size_t nRoom = nMost_ - std::min(nMost_, kept_.size());
  if (nAt == kept_.size() && nGot > 0)
    kept_.insert(kept_.end(), pBytes, pBytes + std::min<size_t>(nRoom, static_cast<size_t>(nGot)));
  return nGot;
}

}  // namespace quillon
