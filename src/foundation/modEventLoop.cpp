#include "modEventLoop.h"

#include <cerrno>
#include <utility>

namespace quillon {

namespace {

std::function<bool()> gRunEvents;

}  // namespace

bool gbAbandonOutput = false;

bool RunEvents() {
  return !gRunEvents || gRunEvents();
}

clsEventLoop::clsEventLoop(std::function<bool()> runEvents)
    : before_(std::exchange(gRunEvents, std::move(runEvents))) {}

clsEventLoop::~clsEventLoop() {
  gRunEvents = std::move(before_);
}

Failure StoppedFailure(std::string_view sPath) {
  return SystemFailure(sPath, ECANCELED);
}

bool IsStopped(const Failure& failure) {
  return failure.nError == ECANCELED;
}

}  // namespace quillon
