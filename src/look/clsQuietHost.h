#pragma once

#include <string>
#include <string_view>

#include "clsHost.h"

namespace quillon {

/// The host of work that only looks: nothing is shown, nothing is logged, and what would have been said is kept as the
/// text of a fault.
class clsQuietHost : public clsHost {
 public:
  /// The first thing that was said; "" if nothing was.
  const std::string& Fault() const { return sFault_; }

  MessageAnswer ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                            MessageButtons buttons) override;
  void Report(const ReportEntry& entry) override { Keep(entry.sErr2 + (entry.sErr3.empty() ? "" : " ") + entry.sErr3); }
  void LetEventsRun() override {}
  std::string Caption() const override { return {}; }
  void SetCaption(std::string_view) override {}
  void SetStatusPanel(StatusBar, int, std::string_view) override {}
  void ShowProgress(const RunProgress&) override {}
  void Wait(int) override {}
  bool OpenPath(std::string_view, OpenVerb) override { return false; }
  std::time_t Now() override { return 0; }
  int64_t TickMilliseconds() override { return 0; }

 private:
  void Keep(std::string_view sText) {
    if (sFault_.empty()) sFault_ = sText;
  }
  std::string sFault_;
};

}  // namespace quillon
