#include "clsWorkerHost.h"

#include <string>

namespace quillon {

MessageAnswer clsWorkerHost::ShowMessage(std::string_view sText, std::string_view sTitle, MessageIcon icon,
                                         MessageButtons buttons) {
  HostEvent event;
  event.bMessage = true;
  event.entry.sErr1 = sTitle;
  event.entry.sErr2 = sText;
  event.icon = icon;
  event.buttons = buttons;
  // A question about the interrupt itself is none of the file's.
  if (buttons == MessageButtons::Ok || InterruptSignal() == 0) events_.push_back(std::move(event));
  return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Yes;
}

void clsWorkerHost::Report(const ReportEntry& entry) {
  if (pOwnLog_ == nullptr || !pOwnLog_->Report(entry)) {
    // Said before; whoever hears of it decides whether it has said it.
    if (entry.sCause.empty()) return;
  }
  HostEvent event;
  event.entry = entry;
  events_.push_back(std::move(event));
}

}  // namespace quillon
