#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "clsHost.h"

namespace quillon {

/// Keeps all that the core says; answers as told beforehand.
class clsTestHost : public clsHost {
 public:
  struct Message {
    std::string sText, sTitle;
    MessageIcon icon;
  };
  std::vector<Message> messages;
  std::vector<ReportEntry> reports;
  std::string sCaption;
  std::vector<std::string> opened;
  MessageAnswer answer = MessageAnswer::Yes;
  std::function<void()> onEvents;
  std::time_t now = 1704164645;  // 2024-01-02 03:04:05 UTC
  int64_t lTick = 0;
  bool bTickRuns = false;  ///< A second passes each time that the clock is looked at

  std::vector<int32_t> Codes() const {
    std::vector<int32_t> codes;
    for (const ReportEntry& entry : reports) codes.push_back(entry.lErr);
    return codes;
  }

  MessageAnswer ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                            MessageButtons buttons) override {
    messages.push_back({std::string(sText), std::string(sTitle), icon});
    return buttons == MessageButtons::Ok ? MessageAnswer::Ok : answer;
  }
  void Report(const ReportEntry& entry) override { reports.push_back(entry); }
  void LetEventsRun() override {
    if (onEvents) onEvents();
  }
  std::string Caption() const override { return sCaption; }
  void SetCaption(std::string_view sText) override { sCaption = sText; }
  void SetStatusPanel(StatusBar, int, std::string_view) override {}
  void ShowProgress(const RunProgress&) override {}
  void Wait(int nMilliseconds) override { lTick += nMilliseconds; }
  bool OpenPath(std::string_view sPath, OpenVerb) override {
    opened.emplace_back(sPath);
    return true;
  }
  std::time_t Now() override { return now; }
  int64_t TickMilliseconds() override { return bTickRuns ? lTick += 1000 : lTick; }
};

}  // namespace quillon
