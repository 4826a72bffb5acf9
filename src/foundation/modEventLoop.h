#pragma once
// The event loop within long work: one thread does all, so events run only where the work lets them.

#include <functional>
#include <string_view>

#include "modFailure.h"

namespace quillon {

/// Set together with a pause by an interrupted run and by a window that closes: what is being written is given up, so
/// that no half-written output stays.
extern bool gbAbandonOutput;

/// Runs pending events by the loop of the run in charge, if there is one. Long loops call it for each block of some 100
/// KB that they read, search, pack or write; whoever runs the events looks at the clock by itself. False: what only
/// reads or searches is to stop here.
bool RunEvents();

/// Puts a run in charge of the events for as long as it lives; the one before comes back with its end.
class clsEventLoop {
 public:
  explicit clsEventLoop(std::function<bool()> runEvents);
  clsEventLoop(const clsEventLoop&) = delete;
  clsEventLoop& operator=(const clsEventLoop&) = delete;
  ~clsEventLoop();

 private:
  std::function<bool()> before_;
};

/// The failure of work that stopped because the user said so.
Failure StoppedFailure(std::string_view sPath);
bool IsStopped(const Failure& failure);

}  // namespace quillon
