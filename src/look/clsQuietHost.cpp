#include "clsQuietHost.h"

namespace quillon {

MessageAnswer clsQuietHost::ShowMessage(std::string_view sText, std::string_view, MessageIcon, MessageButtons buttons) {
  Keep(sText);
  return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Yes;
}

}  // namespace quillon
