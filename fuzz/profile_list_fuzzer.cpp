// Any names in the folder of profiles: each that holds ".txt" is listed once, and one of the list is selected.

#include <filesystem>
#include <fstream>
#include <set>

#include "clsFuzzInput.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modProfileList.h"
#include "modSettings.h"
#include "modText.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  clsFuzzInput input(pData, nSize);
  gsDataFolder = folder.Path();
  const std::string sFolder = folder.Path("Profiles");
  std::filesystem::remove_all(sFolder);
  std::filesystem::create_directories(sFolder);
  const std::string sSelect(input.TakePart());
  std::set<std::string> names;
  for (int i = 0; i < 8 && !input.sInput.empty(); ++i) {
    const std::string sName(input.TakePart().substr(0, 200));
    if (sName.empty() || sName == "." || sName == ".." || sName.find('/') != std::string::npos) continue;
    std::ofstream(sFolder + "/" + sName) << "1\t5\t[32] Space\tLeft\tNo\t1\t\r\n";
    if (FindNoCase(sName, ".txt") != std::string::npos) names.insert(sName);
  }
  clsTestHost host;
  ProfileList list;
  BuildListValidProfiles(list, sSelect, kProfilesSubFolder, host);
  const auto nNames = static_cast<int>(list.names.size());
  Must(!list.names.empty() && list.nSelected < nNames, "one of the list is selected, if any");
  Must(names.empty() ? nNames == 1 : list.names.size() == names.size(), "each profile is listed once");
  Must(GetCountOfValidProfiles(kProfilesSubFolder) == nNames, "and counted");
  return 0;
}
