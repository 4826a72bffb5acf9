#include "frmWorking.h"

#include <algorithm>
#include <utility>

#include "frmMain.h"
#include "modEventLoop.h"
#include "modFormTranslation.h"
#include "modTranslator.h"

namespace quillon {

frmWorking::frmWorking(frmMain& owner, std::string_view sWhat) : clsForm("frmWorking"), oOwner_(owner), sWhat_(sWhat) {
  sCaption = "Please wait";
  Add(ControlKind::Label, "lblWhat");
  Get("lblWhat").sTag = "TranslateFalse";
  Add(ControlKind::CommandButton, "cmdCancel", "Cancel");
  OnClick("cmdCancel", [this] { Stop(); });
}

bool frmWorking::Run(const std::function<void()>& work) {
  TranslateForm(*this, oOwner_.Screen());
  Get("lblWhat").sCaption = sWhat_;
  lBegin_ = oOwner_.Host().TickMilliseconds();
  oOwner_.SetBusyPointer(true);
  {
    const clsEventLoop events([this] { return Turn(); });
    work();
  }
  shown_.reset();
  oOwner_.SetBusyPointer(false);
  return !bStopped_;
}

void frmWorking::Progress(int64_t lDone, int64_t lTotal) {
  constexpr int64_t kAll = 100;
  const int nPercent = lTotal > 0 ? static_cast<int>(std::min(lDone * kAll / lTotal, kAll)) : -1;
  if (std::exchange(nPercent_, nPercent) != nPercent && bShown_) Refresh();
}

/// What runs within the events and reads, too, is not what is to stop.
bool frmWorking::Turn() {
  if (bInTurn_) return true;
  bInTurn_ = true;
  if (!bShown_ && oOwner_.Host().TickMilliseconds() - lBegin_ > kMoment) {
    bShown_ = true;
    oOwner_.SetBusyPointer(false);
    shown_ = oOwner_.Screen().ShowAlong(*this);
  }
  if (bShown_) oOwner_.Host().LetEventsRun();
  bInTurn_ = false;
  return !bStopped_;
}

void frmWorking::Stop() {
  bStopped_ = true;
  Get("lblWhat").sCaption = Translate("Stopping...");
  Get("cmdCancel").bEnabled = false;
  Refresh();
}

}  // namespace quillon
