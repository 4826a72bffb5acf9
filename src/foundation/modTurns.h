#pragma once
// How long work gives the world around it a turn: one thread does all, so events run only where the work lets them.

#include <functional>
#include <string_view>

#include "modFailure.h"

namespace quillon {

/// Set together with a pause by an interrupted run and by a window that closes: what is being written is given up, so
/// that no half-written output stays.
extern bool gbAbandonOutput;

/// Gives events a turn by the run in charge, if there is one. Long loops call it for each block of some 100 KB that
/// they read, search, pack or write; whoever runs the events looks at the clock by itself. False: what only reads or
/// searches is to stop here.
bool GiveTurn();

/// Puts a run in charge of the turns for as long as it lives; the one before comes back with its end.
class clsTurns {
 public:
  explicit clsTurns(std::function<bool()> turn);
  clsTurns(const clsTurns&) = delete;
  clsTurns& operator=(const clsTurns&) = delete;
  ~clsTurns();

 private:
  std::function<bool()> before_;
};

/// The failure of work that stopped because the user said so.
Failure StoppedFailure(std::string_view sPath);
bool IsStopped(const Failure& failure);

}  // namespace quillon
