#include <algorithm>

#include "clsScreen.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

std::vector<std::pair<std::string, std::string>> FiltersOf(std::string_view sFilter) {
  std::vector<std::pair<std::string, std::string>> filters;
  while (!sFilter.empty()) {
    const size_t nLabel = std::min(sFilter.find('|'), sFilter.size());
    const std::string_view sRest = sFilter.substr(std::min(nLabel + 1, sFilter.size()));
    const size_t nMasks = std::min(sRest.find('|'), sRest.size());
    filters.emplace_back(sFilter.substr(0, nLabel), sRest.substr(0, nMasks));
    sFilter = sRest.substr(std::min(nMasks + 1, sRest.size()));
  }
  return filters;
}

std::string PickFile(clsScreen& screen, FileQuestion& question, std::string_view sStartPath) {
  if (!sStartPath.empty()) question.sInitDir = HostPath(NearestExistingPath(sStartPath));
  // A language that has the title but not yet the word must not keep anyone from saving.
  question.bSave = question.bSave || FindNoCase(question.sTitle, Translate("save")) != std::string_view::npos;
  return screen.AskFile(question);
}

std::string PickFolder(clsScreen& screen, std::string_view sStartPath) {
  // A wildcard path still points into a folder.
  const std::string sStart = RemoveTrailingBackslash(ReplaceAll(ExpandedPath(sStartPath), "*", "A"));
  return RemoveTrailingBackslash(screen.AskFolder(Translate("Browse For Folder"), sStart));
}

}  // namespace quillon
