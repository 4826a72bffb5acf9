#include "modHelp.h"

#include <fmt/format.h>

#include "modLibraries.h"
#include "modPaths.h"
#include "modTranslator.h"
#include "modVersion.h"

namespace quillon {

namespace {

struct Topic {
  int nTopic;
  std::string_view sPage;
  std::string_view sSection = {};
};

constexpr std::array kTopics{Topic{0, "index"},
                             Topic{2, "tutorial"},
                             Topic{12, "methods", "Markup"},
                             Topic{13, "methods", "Recipe"},
                             Topic{14, "window"},
                             Topic{15, "window"},
                             Topic{16, "methods"},
                             Topic{17, "command-line"},
                             Topic{22, "window"},
                             Topic{25, "automation"},
                             Topic{50, "methods", "Profile"},
                             Topic{60, "changelog"},
                             Topic{70, "languages"}};

}  // namespace

std::string HelpPage(int nTopic) {
  Topic page = kTopics.front();
  for (const Topic& topic : kTopics) {
    if (topic.nTopic == nTopic) page = topic;
  }
  const std::string sPage = ShippedPath("Help/" + std::string(page.sPage) + ".html");
  return page.sSection.empty() ? sPage : sPage + "#" + std::string(page.sSection);
}

void OpenHelpTopic(clsHost& host, int nTopic) {
  const std::string sPage = HelpPage(nTopic);
  // A section of a page can only be named in an address.
  if (host.OpenPath("file://" + sPage, OpenVerb::Open)) return;
  host.ShowMessage(Translate("The page could not be opened:") + "\r\n\r\n" + sPage, Translate("Error"),
                   MessageIcon::Warning, MessageButtons::Ok);
}

std::string AboutText(std::string_view sToolkit) {
  return fmt::format("Quillon {}\r\n{}\r\n\r\nBrindlemark, Inc. {}\r\n\r\n{} {}, fmt {}.{}.{}, {}", VersionText,
                     Translate("Text to Excel/CSV File Conversion"), Translate("All rights reserved."),
                     Translate("Built with:"), sToolkit, FMT_VERSION / 10000, FMT_VERSION / 100 % 100,
                     FMT_VERSION % 100, WorkbookLibraries());
}

}  // namespace quillon
