#include "clsSideThread.h"

#include <utility>

namespace quillon {

namespace {

bool& Uses() {
  static bool bUses = std::thread::hardware_concurrency() > 1;
  return bUses;
}

}  // namespace

bool UsesSideThreads() {
  return Uses();
}

void UseSideThreads(bool bUse) {
  Uses() = bUse;
}

clsSideThread::clsSideThread(Take take) : take_(std::move(take)), thread_([this] { Run(); }) {}

clsSideThread::~clsSideThread() {
  End(true);
}

void clsSideThread::Run() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return bEnds_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    std::string sPiece = std::move(waiting_.front());
    waiting_.pop_front();
    const bool bTakes = thrown_ == nullptr;
    std::exception_ptr thrown;
    lock.unlock();
    try {
      if (bTakes) take_(sPiece);
    } catch (...) {
      thrown = std::current_exception();
    }
    lock.lock();
    if (thrown != nullptr) thrown_ = thrown;
    idle_.push_back(std::move(sPiece));
    changed_.notify_all();
  }
}

void clsSideThread::Put(std::string_view sPiece) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return waiting_.size() < kMostWaiting; });
  if (thrown_ != nullptr) std::rethrow_exception(thrown_);
  std::string sOwn;
  if (!idle_.empty()) {
    sOwn = std::move(idle_.back());
    idle_.pop_back();
  }
  lock.unlock();
  sOwn.assign(sPiece);
  lock.lock();
  waiting_.push_back(std::move(sOwn));
  changed_.notify_all();
}

void clsSideThread::End(bool bDrop) {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    if (bDrop) waiting_.clear();
    bEnds_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void clsSideThread::Finish() {
  End(false);
  if (thrown_ != nullptr) std::rethrow_exception(thrown_);
}

}  // namespace quillon
