#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "clsConsoleHost.h"
#include "modFileStory.h"

namespace quillon {

/// The host of a process that converts for another: what it would say is kept, to be said there.
class clsWorkerHost : public clsConsoleHost {
 public:
  clsWorkerHost() : clsConsoleHost(Voice::Mute) {}
  /// Entries go to this log as well.
  void AttachLog(clsRunLog& log) { pOwnLog_ = &log; }
  std::vector<HostEvent> TakeEvents() { return std::exchange(events_, {}); }

  MessageAnswer ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                            MessageButtons buttons) override;
  void Report(const ReportEntry& entry) override;
  void ShowProgress(const RunProgress&) override {}

 private:
  clsRunLog* pOwnLog_ = nullptr;
  std::vector<HostEvent> events_;
};

}  // namespace quillon
