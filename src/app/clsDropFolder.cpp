#include "clsDropFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include "modSystemIo.h"
#include "modTranslator.h"

namespace quillon {

namespace fs = std::filesystem;

namespace {

bool IsForUs(const std::string& sName) {
  return !sName.starts_with(".") && !sName.ends_with(".part") && !sName.ends_with(".tmp");
}

std::vector<std::string> FilesIn(const std::string& sFolder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator it(sFolder, error), end; !error && it != end; it.increment(error)) {
    std::error_code gone;
    if (it->is_regular_file(gone)) names.push_back(it->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

clsDropFolder::~clsDropFolder() {
  if (nEvents_ >= 0) CloseHandle(nEvents_);
  if (nLock_ >= 0) CloseHandle(nLock_);
}

bool clsDropFolder::Open(const std::string& sFolder, std::chrono::milliseconds settle, Failure& failure) {
  settle_ = settle;
  sFolder_ = sFolder + "/";
  sTaken_ = sFolder_ + ".taken/";
  sDone_ = sFolder_ + "done/";
  sFailed_ = sFolder_ + "failed/";
  for (const std::string& s : {sTaken_, sDone_, sFailed_}) {
    if (mkdir(s.c_str(), 0777) == 0 || errno == EEXIST) continue;
    failure = SystemFailure(s, errno);
    return false;
  }
  nLock_ = OpenHandle(sTaken_, O_RDONLY | O_DIRECTORY);
  if (nLock_ < 0 || flock(nLock_, LOCK_EX | LOCK_NB) != 0) {
    const bool bBusy = nLock_ >= 0 && errno == EWOULDBLOCK;
    failure =
        bBusy ? OwnFailure(sFolder, Translate("another process watches this folder")) : SystemFailure(sTaken_, errno);
    return false;
  }
  nEvents_ = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
  const bool bTold =
      nEvents_ >= 0 && inotify_add_watch(nEvents_, sFolder_.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO | IN_ONLYDIR) >= 0;
  if (!bTold && nEvents_ >= 0) CloseHandle(std::exchange(nEvents_, -1));
  return true;
}

void clsDropFolder::ReadEvents() {
  alignas(inotify_event) std::array<char, size_t{16} << 10> block{};
  for (int64_t nGot = 1; nEvents_ >= 0 && nGot > 0;) {
    nGot = ReadHandle(nEvents_, block.data(), block.size());
    for (int64_t n = 0; n < nGot;) {
      inotify_event event{};
      std::memcpy(&event, block.data() + n, sizeof event);
      const char* const pName = block.data() + n + sizeof event;
      if ((event.mask & IN_MOVED_TO) != 0 && event.len > 0) moved_.emplace(pName);
      n += static_cast<int64_t>(sizeof event) + event.len;
    }
  }
}

std::vector<std::string> clsDropFolder::Ready() {
  ReadEvents();
  std::vector<std::string> ready;
  std::map<std::string, Seen> seen;
  const Clock::time_point now = Clock::now();
  for (const std::string& sName : FilesIn(sFolder_)) {
    if (!IsForUs(sName)) continue;
    const FileState state = FileState::Of(sFolder_ + sName);
    const auto before = seen_.find(sName);
    const bool bSame = before != seen_.end() && before->second.state == state;
    const Seen here{state, bSame ? before->second.since : now};
    if (moved_.contains(sName) || now - here.since >= settle_) ready.push_back(sName);
    seen.emplace(sName, here);
  }
  for (const std::string& sName : ready) seen.erase(sName);
  seen_ = std::move(seen);
  moved_.clear();
  return ready;
}

std::vector<std::string> clsDropFolder::Taken() const {
  return FilesIn(sTaken_);
}

bool clsDropFolder::IsUsed(const std::string& sName) const {
  for (const std::string& s : {sTaken_, sDone_, sFailed_}) {
    if (access((s + sName).c_str(), F_OK) == 0) return true;
  }
  return false;
}

std::string clsDropFolder::Take(const std::string& sName) {
  std::string sFree = sName;
  const size_t nDot = std::min(sName.find('.'), sName.size());
  for (int i = 2; IsUsed(sFree); ++i) sFree = sName.substr(0, nDot) + "-" + std::to_string(i) + sName.substr(nDot);
  return rename((sFolder_ + sName).c_str(), (sTaken_ + sFree).c_str()) == 0 ? sFree : "";
}

bool clsDropFolder::PutAway(const std::string& sName, bool bDone) const {
  return rename((sTaken_ + sName).c_str(), ((bDone ? sDone_ : sFailed_) + sName).c_str()) == 0;
}

}  // namespace quillon
