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

namespace {

/// The extension that a filter stands for: of several the last, which is the newest form; "" for all files.
std::string ExtensionOfFilter(const FileQuestion& question) {
  const auto nFilter = static_cast<size_t>(question.lFilterIndex) - 1;
  if (nFilter >= question.filters.size()) return {};
  const std::string& sMasks = question.filters[nFilter].second;
  const std::string sExtension = sMasks.substr(sMasks.rfind('.') + 1);
  return sExtension.find('*') == std::string::npos ? sExtension : std::string();
}

/// A name that was typed without an extension gets that of the kind of file that is asked for.
std::string WithExtension(const std::string& sChosen, const FileQuestion& question) {
  const bool bNamed = question.bSave || question.bMayBeNew;
  if (!bNamed || sChosen.empty() || !ExtensionOfPath(sChosen).empty() || FileExists(sChosen)) return sChosen;
  const std::string sExtension = ExtensionOfFilter(question);
  return sExtension.empty() ? sChosen : sChosen + (sChosen.back() == '.' ? "" : ".") + sExtension;
}

}  // namespace

std::string PickFile(clsScreen& screen, FileQuestion& question, std::string_view sStartPath) {
  if (!sStartPath.empty()) question.sInitDir = HostPath(NearestExistingPath(sStartPath));
  // A language that has the title but not yet the word must not keep anyone from saving.
  question.bSave = question.bSave || FindNoCase(question.sTitle, Translate("save")) != std::string_view::npos;
  const std::string sChosen = screen.AskFile(question);
  return WithExtension(sChosen, question);
}

std::string PickFolder(clsScreen& screen, std::string_view sStartPath) {
  // A wildcard path still points into a folder.
  const std::string sStart = RemoveTrailingBackslash(ReplaceAll(ExpandedPath(sStartPath), "*", "A"));
  return RemoveTrailingBackslash(screen.AskFolder(Translate("Browse For Folder"), sStart));
}

}  // namespace quillon
