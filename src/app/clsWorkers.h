#pragma once

#include <sys/types.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "modConversionRun.h"
#include "modFileStory.h"

namespace quillon {

/// Processes that convert the files of a list for this one. They are copies of it and share nothing but the file
/// system; what they have to say of a file comes back as its story. An interrupt of this process ends them all, and
/// none outlives it.
class clsWorkers {
 public:
  /// Some of the files, the end behind the last.
  struct Part {
    size_t nFrom = 0, nEnd = 0;
  };
  struct Calls {
    /// In a worker: converts the files that it is asked for, and answers false where it is to end.
    std::function<std::function<bool(size_t nFile, FileStory&)>()> makeConverter;
    /// In this process: a worker gets these files.
    std::function<void(const Part&)> begins;
    /// In this process, again and again while it waits.
    std::function<void()> waits;
  };

  /// The files outlive the object.
  clsWorkers(const std::vector<PlannedFile>& files, Calls calls) : files_(files), calls_(std::move(calls)) {}
  clsWorkers(const clsWorkers&) = delete;
  clsWorkers& operator=(const clsWorkers&) = delete;
  /// Ends those that still run and waits for them.
  ~clsWorkers();

  /// False if not one process can be had.
  bool Start(size_t nWorkers);

  enum class Got {
    Story,
    Nothing,  ///< The run was interrupted before the file was converted
    Died,     ///< The process that converted it was ended; story.outcome tells nothing
  };
  /// Waits for a file's story; files are asked for in the order of the list, each once.
  Got Wait(size_t nFile, FileStory& story);
  /// The signal by which the process ended that a file died with; 0 if it ended by itself.
  int DeathSignal() const { return nDeathSignal_; }

 private:
  struct Worker {
    pid_t nProcess = -1;
    int nSocket = -1;
    std::deque<Part> parts;  ///< What it still has to do
    std::string sGot;        ///< The beginning of a story
  };
  bool Begin(Worker& worker);
  void End(Worker& worker);
  void Give(Worker& worker);
  bool NextPart(Part& part);
  void Receive();
  void Read(Worker& worker);
  void TakeStories(Worker& worker);
  void Lose(Worker& worker);
  bool AllEnded() const;

  const std::vector<PlannedFile>& files_;
  Calls calls_;
  std::vector<Worker> workers_;
  std::deque<Part> returned_;              ///< Given to workers that ended before
  size_t nNext_ = 0;                       ///< First file that was given to nobody
  size_t nTold_ = 0;                       ///< Files before it were waited for
  std::map<size_t, std::string> stories_;  ///< By file, packed
  std::map<size_t, int> deaths_;           ///< The signal of those whose process ended
  bool bEnding_ = false;
  int nDeathSignal_ = 0;
};

}  // namespace quillon
