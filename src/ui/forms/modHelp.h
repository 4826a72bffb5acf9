#pragma once

#include <array>
#include <string>
#include <string_view>

#include "clsHost.h"

namespace quillon {

/// Opens a page of the manual by its topic number; the contents for a number that has none. The manual is installed
/// with the program and works offline.
void OpenHelpTopic(clsHost& host, int nTopic);
/// Host path of the page.
std::string HelpPage(int nTopic);

/// Topics that the menus open where a page on the web is named: the manual's own pages stand for them.
struct WebMenu {
  std::string_view sName;
  int nTopic;
};
inline constexpr std::array kWebMenus{WebMenu{"mnuHelpWeb", 0}, WebMenu{"mnuHelpProductHomePage", 2},
                                      WebMenu{"mnuHelpProductUpdates", 60}, WebMenu{"mnuBrindlemarkHomePage", 2}};

/// Name, version, maker, licence, and the libraries that the program stands on with their versions.
std::string AboutText(std::string_view sToolkit);

}  // namespace quillon
