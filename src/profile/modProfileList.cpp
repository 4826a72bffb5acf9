#include "modProfileList.h"

#include <filesystem>

#include "modFiles.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modText.h"

namespace quillon {

namespace {

std::string FolderPath(std::string_view sSubFolder) {
  const size_t nFirst = std::min(sSubFolder.find_first_not_of("\\/"), sSubFolder.size());
  return JoinPath(gsDataFolder, RemoveTrailingBackslash(sSubFolder.substr(nFirst)));
}

/// Names up to the last ".txt" of the files of the folder that hold one.
std::vector<std::string> ProfileNames(std::string_view sSubFolder) {
  std::vector<std::string> names;
  std::error_code failed;
  const std::filesystem::directory_iterator end;
  for (std::filesystem::directory_iterator it(HostPath(FolderPath(sSubFolder)), failed); !failed && it != end;
       it.increment(failed)) {
    std::error_code ignored;
    if (it->is_directory(ignored)) continue;
    const std::string sName = it->path().filename().string();
    // Not by UpperText: ".txt" is ASCII and the name may be no valid UTF-8.
    for (size_t n = sName.size(); n-- > 0;) {
      if (!EqualNoCase(std::string_view(sName).substr(n, 4), ".txt")) continue;
      names.push_back(sName.substr(0, n));
      break;
    }
  }
  return names;
}

}  // namespace

void BuildListValidProfiles(ProfileList& list, std::string_view sSelect, std::string_view sSubFolder, clsHost& host) {
  list = {ProfileNames(sSubFolder), -1};
  for (size_t i = 0; i < list.names.size(); ++i) {
    if (list.names[i] == sSelect) list.nSelected = static_cast<int>(i);
  }
  if (IsFile(JoinPath(FolderPath(sSubFolder), std::string(sSelect) + ".txt"))) return;
  if (list.names.empty()) {
    clsProfileGrid grid;
    CreateDefaultProfileIfNoneExists(list, grid, host);
  } else {
    list.nSelected = 0;
  }
}

int32_t GetCountOfValidProfiles(std::string_view sSubFolder) {
  return static_cast<int32_t>(ProfileNames(sSubFolder).size());
}

void CreateDefaultProfileIfNoneExists(ProfileList& list, clsProfileGrid& grid, clsHost& host) {
  if (!list.names.empty()) return;
  list = {{std::string(kDefaultProfile)}, 0};
  CreateDefaultProfile(grid);
  SaveProfileToDisk(kDefaultProfile, grid, host);
}

}  // namespace quillon
