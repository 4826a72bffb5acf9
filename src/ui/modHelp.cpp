#include "modHelp.h"

#include <fmt/format.h>

#include "modPaths.h"
#include "modTranslator.h"
#include "modVersion.h"

namespace quillon {

namespace {

struct Topic {
  int nTopic;
  std::string_view sPage;
};

constexpr std::array kTopics{Topic{0, "index"},       Topic{2, "getting-started"}, Topic{12, "markup"},
                             Topic{13, "recipe"},     Topic{14, "window"},         Topic{15, "window"},
                             Topic{16, "methods"},    Topic{17, "command-line"},   Topic{22, "window"},
                             Topic{25, "automation"}, Topic{50, "profile"},        Topic{60, "changelog"},
                             Topic{70, "languages"}};

}  // namespace

std::string HelpPage(int nTopic) {
  std::string_view sPage = kTopics.front().sPage;
  for (const Topic& topic : kTopics) {
    if (topic.nTopic == nTopic) sPage = topic.sPage;
  }
  return ShippedPath("Help/" + std::string(sPage) + ".html");
}

void OpenHelpTopic(clsHost& host, int nTopic) {
  const std::string sPage = HelpPage(nTopic);
  if (host.OpenPath(sPage, OpenVerb::Open)) return;
  host.ShowMessage(Translate("The page could not be opened:") + "\r\n\r\n" + sPage, Translate("Error"),
                   MessageIcon::Warning, MessageButtons::Ok);
}

std::string AboutText() {
  return fmt::format(
      "Quillon {}\r\nBrindlemark, Inc.\r\n\r\n{}\r\n\r\n{} Qt, fmt {}.{}.{}, pugixml, libzip, ISA-L, libgsf",
      VersionText, Translate("Text to Excel/CSV File Conversion"), Translate("Built with:"), FMT_VERSION / 10000,
      FMT_VERSION / 100 % 100, FMT_VERSION % 100);
}

}  // namespace quillon
