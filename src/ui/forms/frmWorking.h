#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "clsForm.h"

namespace quillon {

class frmMain;

/// Work of the window that may take long, on the one thread that there is: the pointer says busy, and once it takes
/// more than a moment a box stands over the window, which tells how far the work is and can stop it. Nothing else of
/// the program can be clicked on meanwhile.
class frmWorking : public clsForm {
 public:
  static constexpr int64_t kMoment = 400;  ///< Milliseconds

  frmWorking(frmMain& owner, std::string_view sWhat);

  /// Events run where the work lets them (modEventLoop). False if it was stopped.
  bool Run(const std::function<void()>& work);
  /// How far the work is; not known before the first time.
  void Progress(int64_t lDone, int64_t lTotal);
  int Percent() const { return nPercent_; }  ///< -1: not known
  void CloseRequested() override { Stop(); }

 private:
  bool Turn();
  void Stop();

  frmMain& oOwner_;
  std::string sWhat_;
  int64_t lBegin_ = 0;
  int nPercent_ = -1;
  bool bStopped_ = false, bInTurn_ = false, bShown_ = false;
  std::shared_ptr<void> shown_;
};

}  // namespace quillon
