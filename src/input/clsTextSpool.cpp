#include "clsTextSpool.h"

#include <cerrno>
#include <utility>

#include "modEventLoop.h"
#include "modSystemIo.h"
#include "modTranslator.h"

namespace quillon {

clsTextSpool::~clsTextSpool() {
  if (nHandle_ >= 0) CloseHandle(nHandle_);
}

bool clsTextSpool::Write(std::string_view sBytes, int64_t nTaken) {
  if (failure_.Failed() || bEnough_) return false;
  if (nHandle_ < 0) nHandle_ = OpenNamelessFile();
  nSize_ += static_cast<int64_t>(sBytes.size());
  if (nSize_ > kMostBytes || (nSize_ > kFreeBytes && nSize_ / kMostTimes > nTaken)) {
    failure_ = OwnFailure(sPath_, Translate("unpacks to more than a report can be"));
  } else if (nHandle_ < 0 || !WriteHandle(nHandle_, sBytes.data(), sBytes.size())) {
    const int nError = errno;
    failure_ = SystemFailure(sPath_, nError);
    failure_.sText += Translate(" (temporary file)");
  } else if (!RunEvents()) {
    failure_ = StoppedFailure(sPath_);
  }
  bEnough_ = nMost_ > 0 && nSize_ >= nMost_;
  return !failure_.Failed() && !bEnough_;
}

int clsTextSpool::Release() {
  if (nHandle_ < 0 && !failure_.Failed()) nHandle_ = OpenNamelessFile();
  return failure_.Failed() ? -1 : std::exchange(nHandle_, -1);
}

}  // namespace quillon
