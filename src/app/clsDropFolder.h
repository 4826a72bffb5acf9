#pragma once

#include <chrono>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "modFailure.h"
#include "modFileState.h"

namespace quillon {

/// A folder into which others drop reports. A file is ready when it has not changed for a while, or at once when it was
/// renamed into the folder. To be worked on it is moved to ".taken" under a name that none before it had; from there it
/// goes to "done" or "failed". So each file is in one place at any moment, whatever ends the process. Hidden files,
/// folders and names that end in ".part" or ".tmp" are left alone.
class clsDropFolder {
 public:
  using Clock = std::chrono::steady_clock;

  clsDropFolder() = default;
  clsDropFolder(const clsDropFolder&) = delete;
  clsDropFolder& operator=(const clsDropFolder&) = delete;
  ~clsDropFolder();

  /// False with the reason; another process that works on the folder is one.
  bool Open(const std::string& sFolder, std::chrono::milliseconds settle, Failure& failure);
  /// To be polled for events; -1 where the system tells of none.
  int EventHandle() const { return nEvents_; }
  /// Waiting for a file to settle.
  bool IsPending() const { return !seen_.empty(); }

  /// Names in the folder that are ready, sorted.
  std::vector<std::string> Ready();
  /// Names that an earlier process had taken, sorted.
  std::vector<std::string> Taken() const;
  /// Moves a ready file to ".taken"; its new name, or "" if it is gone.
  std::string Take(const std::string& sName);
  std::string TakenPath(const std::string& sName) const { return sTaken_ + sName; }
  /// Moves a taken file on. False with errno.
  bool PutAway(const std::string& sName, bool bDone) const;
  const std::string& DoneFolder() const { return sDone_; }

 private:
  struct Seen {
    FileState state;
    Clock::time_point since;
  };
  void ReadEvents();
  bool IsUsed(const std::string& sName) const;

  std::string sFolder_, sTaken_, sDone_, sFailed_;  ///< Each with a "/" behind
  std::chrono::milliseconds settle_{};
  std::map<std::string, Seen> seen_;
  std::set<std::string> moved_;  ///< Renamed into the folder
  int nEvents_ = -1;
  int nLock_ = -1;
};

}  // namespace quillon
