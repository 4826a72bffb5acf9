#include "clsFileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "modPaths.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

constexpr unsigned kOwnerOnly = 0600;
constexpr int kLongestWait = 10000;  // ms
constexpr int kBetweenTries = 5;

bool Lock(int nHandle) {
  for (int nWaited = 0; flock(nHandle, LOCK_EX | LOCK_NB) != 0; nWaited += kBetweenTries) {
    if ((errno != EWOULDBLOCK && errno != EINTR) || nWaited >= kLongestWait) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(kBetweenTries));
  }
  return true;
}

bool IsStillThere(int nHandle, const std::string& sPath) {
  struct stat held {};
  struct stat named {};
  return fstat(nHandle, &held) == 0 && stat(sPath.c_str(), &named) == 0 && held.st_ino == named.st_ino &&
         held.st_dev == named.st_dev;
}

}  // namespace

clsFileLock::clsFileLock(std::string_view sPath) : sLock_(HostPath(sPath) + ".lock") {
  do {
    if (nHandle_ >= 0) close(nHandle_);
    nHandle_ = OpenHandle(sLock_, O_RDWR | O_CREAT, kOwnerOnly);
    if (nHandle_ < 0) return;
    bHeld_ = Lock(nHandle_);
    // The holder before removed it, and another may hold the next one of that name already.
  } while (bHeld_ && !IsStillThere(nHandle_, sLock_));
}

clsFileLock::~clsFileLock() {
  if (bHeld_) unlink(sLock_.c_str());
  if (nHandle_ >= 0) close(nHandle_);
}

}  // namespace quillon
