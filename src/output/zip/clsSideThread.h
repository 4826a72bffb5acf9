#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace quillon {

/// A second thread that takes pieces of bytes one after the other, each as it was put, while the first one makes the
/// next. What it throws comes out at the next Put or at Finish.
class clsSideThread {
 public:
  using Take = std::function<void(std::string_view sPiece)>;

  /// Throws std::system_error if there is no thread to be had.
  explicit clsSideThread(Take take);
  clsSideThread(const clsSideThread&) = delete;
  clsSideThread& operator=(const clsSideThread&) = delete;
  /// What wasn't taken yet is dropped.
  ~clsSideThread();

  /// Waits while kMostWaiting pieces aren't taken yet.
  void Put(std::string_view sPiece);
  /// Waits until all are taken; nothing more is put then.
  void Finish();

 private:
  static constexpr size_t kMostWaiting = 4;
  void Run();
  void End(bool bDrop);

  Take take_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::string> waiting_;
  std::vector<std::string> idle_;  ///< Taken pieces, kept for their memory
  std::exception_ptr thrown_;
  bool bEnds_ = false;
  std::thread thread_;
};

/// Whether large streams are packed on a second thread. True from the start where there are two processors.
bool UsesSideThreads();
void UseSideThreads(bool bUse);

}  // namespace quillon
