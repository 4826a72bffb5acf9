#include "modTurns.h"

#include <cerrno>
#include <utility>

namespace quillon {

namespace {

std::function<bool()> gTurn;

}  // namespace

bool gbAbandonOutput = false;

bool GiveTurn() {
  return !gTurn || gTurn();
}

clsTurns::clsTurns(std::function<bool()> turn) : before_(std::exchange(gTurn, std::move(turn))) {}

clsTurns::~clsTurns() {
  gTurn = std::move(before_);
}

Failure StoppedFailure(std::string_view sPath) {
  return SystemFailure(sPath, ECANCELED);
}

bool IsStopped(const Failure& failure) {
  return failure.nError == ECANCELED;
}

}  // namespace quillon
