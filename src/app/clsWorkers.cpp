#include "clsWorkers.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <utility>

#include "clsConsoleHost.h"
#include "modShard.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

constexpr size_t kMostFilesAtOnce = 64;
constexpr int64_t kMostBytesAtOnce = int64_t{16} << 20;
constexpr int64_t kSmall = int64_t{256} << 10;
/// Stories wait here for those of the files above them.
constexpr size_t kMostAhead = 16384;
constexpr int kWaitMilliseconds = 100;

int64_t WeightOf(const PlannedFile& file) {
  return std::max<int64_t>(file.lBytes, 0) + kShardFileWeight;
}

bool ReadWhole(int nSocket, void* p, size_t n) {
  auto* pTo = static_cast<char*>(p);
  while (n > 0) {
    const int64_t nGot = ReadHandle(nSocket, pTo, n);
    if (nGot <= 0) return false;
    pTo += nGot;
    n -= static_cast<size_t>(nGot);
  }
  return true;
}

/// The life of a worker.
void Serve(int nSocket, const std::function<bool(size_t nFile, FileStory&)>& convert) {
  clsWorkers::Part part;
  while (InterruptSignal() == 0 && ReadWhole(nSocket, &part, sizeof(part))) {
    for (size_t nFile = part.nFrom; nFile < part.nEnd; ++nFile) {
      FileStory story;
      story.nFile = nFile;
      if (InterruptSignal() != 0 || !convert(nFile, story)) return;
      const std::string sStory = PackedStory(story);
      const uint64_t nBytes = sStory.size();
      std::string sMessage(reinterpret_cast<const char*>(&nBytes), sizeof(nBytes));
      sMessage += sStory;
      if (!WriteHandle(nSocket, sMessage.data(), sMessage.size())) return;
    }
  }
}

}  // namespace

clsWorkers::~clsWorkers() {
  for (Worker& worker : workers_) {
    if (worker.nProcess > 0) kill(worker.nProcess, SIGTERM);
  }
  for (Worker& worker : workers_) End(worker);
}

bool clsWorkers::Start(size_t nWorkers) {
  workers_.resize(nWorkers);
  for (Worker& worker : workers_) {
    if (!Begin(worker)) break;
  }
  std::erase_if(workers_, [](const Worker& worker) { return worker.nProcess < 0; });
  for (Worker& worker : workers_) Give(worker);
  return !workers_.empty();
}

/// The copy never comes back.
bool clsWorkers::Begin(Worker& worker) {
  std::array<int, 2> sockets{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) return false;
  const pid_t nParent = getpid();
  const pid_t nProcess = fork();
  if (nProcess == 0) {
    // Of the others only this process may hold the ends, or they would never hear that it is gone.
    close(sockets[0]);
    for (const Worker& other : workers_) {
      if (other.nSocket >= 0) close(other.nSocket);
    }
    int nStatus = EXIT_FAILURE;
    try {
      prctl(PR_SET_PDEATHSIG, SIGKILL);  // As if one process had been killed.
      if (getppid() == nParent) Serve(sockets[1], calls_.makeConverter());
      nStatus = EXIT_SUCCESS;
    } catch (const std::exception&) {
      // The other end sees that the story doesn't come.
    }
    _exit(nStatus);
  }
  close(sockets[1]);
  if (nProcess < 0) {
    close(sockets[0]);
    return false;
  }
  worker = {nProcess, sockets[0], {}, {}};
  return true;
}

void clsWorkers::End(Worker& worker) {
  if (worker.nProcess <= 0) return;
  close(std::exchange(worker.nSocket, -1));
  int nStatus = 0;
  while (waitpid(worker.nProcess, &nStatus, 0) < 0 && errno == EINTR) {
  }
  nDeathSignal_ = WIFSIGNALED(nStatus) ? WTERMSIG(nStatus) : 0;
  worker.nProcess = -1;
}

/// Parts become smaller towards the end of the list, so that all end at about the same time.
bool clsWorkers::NextPart(Part& part) {
  if (!returned_.empty()) {
    part = returned_.front();
    returned_.pop_front();
    return true;
  }
  if (nNext_ >= files_.size() || nNext_ >= nTold_ + kMostAhead) return false;
  const size_t nShare = (files_.size() - nNext_) / (4 * workers_.size());
  const size_t nMost = std::clamp<size_t>(nShare, 1, kMostFilesAtOnce);
  part.nFrom = nNext_;
  int64_t lBytes = 0;
  do {
    lBytes += WeightOf(files_[nNext_++]);
  } while (nNext_ < files_.size() && nNext_ - part.nFrom < nMost &&
           lBytes + WeightOf(files_[nNext_]) <= kMostBytesAtOnce);
  part.nEnd = nNext_;
  return true;
}

void clsWorkers::Give(Worker& worker) {
  // One small file is left to it, so that it needn't wait for the next.
  const bool bNearlyDone = worker.parts.size() == 1 && worker.parts[0].nEnd - worker.parts[0].nFrom == 1 &&
                           WeightOf(files_[worker.parts[0].nFrom]) < kSmall;
  Part part;
  if (bEnding_ || worker.nSocket < 0 || (!worker.parts.empty() && !bNearlyDone) || !NextPart(part)) return;
  calls_.begins(part);
  worker.parts.push_back(part);
  WriteHandle(worker.nSocket, reinterpret_cast<const char*>(&part), sizeof(part));  // that it is gone its reading tells
}

/// The file in hand died with the worker; the others of its part go to who takes them.
void clsWorkers::Lose(Worker& worker) {
  End(worker);
  std::deque<Part> parts = std::exchange(worker.parts, {});
  worker.sGot.clear();
  if (bEnding_ || parts.empty()) return;
  deaths_[parts.front().nFrom++] = nDeathSignal_;
  for (const Part& part : parts) {
    if (part.nFrom < part.nEnd) returned_.push_back(part);
  }
  if (!returned_.empty() || nNext_ < files_.size()) Begin(worker);
}

void clsWorkers::TakeStories(Worker& worker) {
  size_t nAt = 0;
  uint64_t nBytes = 0;
  while (worker.sGot.size() - nAt >= sizeof(nBytes)) {
    worker.sGot.copy(reinterpret_cast<char*>(&nBytes), sizeof(nBytes), nAt);
    if (worker.sGot.size() - nAt - sizeof(nBytes) < nBytes || worker.parts.empty()) break;
    Part& part = worker.parts.front();
    stories_[part.nFrom++] = worker.sGot.substr(nAt + sizeof(nBytes), nBytes);
    if (part.nFrom == part.nEnd) worker.parts.pop_front();
    nAt += sizeof(nBytes) + nBytes;
  }
  worker.sGot.erase(0, nAt);
}

void clsWorkers::Read(Worker& worker) {
  constexpr size_t kBlock = size_t{64} << 10;
  const size_t nOld = worker.sGot.size();
  worker.sGot.resize(nOld + kBlock);
  const int64_t nGot = ReadHandle(worker.nSocket, worker.sGot.data() + nOld, kBlock);
  worker.sGot.resize(nOld + static_cast<size_t>(std::max<int64_t>(nGot, 0)));
  if (nGot <= 0) return Lose(worker);
  TakeStories(worker);
}

void clsWorkers::Receive() {
  std::vector<pollfd> sockets;
  for (const Worker& worker : workers_) sockets.push_back({worker.nSocket, POLLIN, 0});
  const int nReady = poll(sockets.data(), sockets.size(), kWaitMilliseconds);
  if (InterruptSignal() != 0 && !std::exchange(bEnding_, true)) {
    for (const Worker& worker : workers_) {
      if (worker.nProcess > 0) kill(worker.nProcess, SIGTERM);
    }
  }
  if (nReady <= 0) return;
  for (size_t i = 0; i < workers_.size(); ++i) {
    if (sockets[i].revents != 0) Read(workers_[i]);
  }
}

bool clsWorkers::AllEnded() const {
  return std::all_of(workers_.begin(), workers_.end(), [](const Worker& worker) { return worker.nSocket < 0; });
}

clsWorkers::Got clsWorkers::Wait(size_t nFile, FileStory& story) {
  nTold_ = nFile;
  while (true) {
    if (const auto found = stories_.find(nFile); found != stories_.end()) {
      const bool bWhole = TakeStory(found->second, story);
      stories_.erase(found);
      if (bWhole) return Got::Story;
      deaths_[nFile] = 0;
    }
    if (const auto died = deaths_.find(nFile); died != deaths_.end()) {
      nDeathSignal_ = died->second;
      return Got::Died;
    }
    if (AllEnded()) return bEnding_ || InterruptSignal() != 0 ? Got::Nothing : Got::Died;
    for (Worker& worker : workers_) Give(worker);
    calls_.waits();
    Receive();
  }
}

}  // namespace quillon
