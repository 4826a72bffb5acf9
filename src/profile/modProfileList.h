#pragma once
// The profiles of the data folder. Whatever is named like one counts as one; the contents aren't looked at.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsHost.h"
#include "clsProfileGrid.h"

namespace quillon {

inline constexpr std::string_view kDefaultProfile = "Default-Profile";
inline constexpr std::string_view kProfilesSubFolder = "\\Profiles\\";

/// A drop-down list of profile names; nSelected counts from 0, -1 is none.
struct ProfileList {
  std::vector<std::string> names;
  int nSelected = -1;
};

/// The profiles of the subfolder of the data folder, in the file system's order, sSelect selected. If there is no file
/// of that name the first is selected; if there is no profile at all the default one is made, listed and selected.
void BuildListValidProfiles(ProfileList& list, std::string_view sSelect, std::string_view sSubFolder, clsHost& host);

/// Number of names in the subfolder in which ".txt" occurs; 0 if it can't be read.
int32_t GetCountOfValidProfiles(std::string_view sSubFolder);

/// With an empty list only: lists and selects the default profile, fills the grid with its rows and writes its file.
void CreateDefaultProfileIfNoneExists(ProfileList& list, clsProfileGrid& grid, clsHost& host);

}  // namespace quillon
