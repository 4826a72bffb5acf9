#pragma once

#include "clsHost.h"

namespace quillon {

/// Hands all on to the host behind it and remembers whether anything was said.
class clsHeardHost : public clsHost {
 public:
  explicit clsHeardHost(clsHost& host) : host_(host) {}
  bool Heard() const { return bHeard_; }

  MessageAnswer ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                            MessageButtons buttons) override {
    bHeard_ = true;
    return host_.ShowMessage(sText, sTitle, icon, buttons);
  }
  void Report(const ReportEntry& entry) override {
    bHeard_ = true;
    host_.Report(entry);
  }
  void LetEventsRun() override { host_.LetEventsRun(); }
  std::string Caption() const override { return host_.Caption(); }
  void SetCaption(std::string_view sText) override { host_.SetCaption(sText); }
  void SetStatusPanel(StatusBar bar, int nPanel, std::string_view sText) override {
    host_.SetStatusPanel(bar, nPanel, sText);
  }
  void ShowProgress(const RunProgress& progress) override { host_.ShowProgress(progress); }
  void Wait(int nMilliseconds) override { host_.Wait(nMilliseconds); }
  bool OpenPath(std::string_view sPath, OpenVerb verb) override { return host_.OpenPath(sPath, verb); }
  std::time_t Now() override { return host_.Now(); }
  int64_t TickMilliseconds() override { return host_.TickMilliseconds(); }

 private:
  clsHost& host_;
  bool bHeard_ = false;
};

}  // namespace quillon
