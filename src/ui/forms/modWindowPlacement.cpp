#include "modWindowPlacement.h"

#include "clsIniFile.h"
#include "modNumbers.h"
#include "modSettings.h"

namespace quillon {

void ReadPlacement(std::string_view sSection, WindowPlacement& placement) {
  clsIniFile file;
  Failure ignored;
  file.Load(gsSettingsFile, ignored);
  const auto read = [&](std::string_view sKey, double fallback) {
    return static_cast<double>(file.GetInt(sSection, sKey, static_cast<int32_t>(fallback)));
  };
  placement.lWindowState = file.GetInt(sSection, "WindowState", 0);
  placement.Left = read("Left", placement.Left);
  placement.Top = read("Top", placement.Top);
  placement.Width = read("Width", placement.Width);
  placement.Height = read("Height", placement.Height);
}

void SavePlacement(std::string_view sSection, const WindowPlacement& placement) {
  const std::string sName(sSection);
  std::vector<IniEntry> entries{{sName, "WindowState", std::to_string(placement.lWindowState)}};
  if (placement.lWindowState == 0) {
    entries.push_back({sName, "Left", ShortestDouble(placement.Left)});
    entries.push_back({sName, "Top", ShortestDouble(placement.Top)});
    entries.push_back({sName, "Width", ShortestDouble(placement.Width)});
    entries.push_back({sName, "Height", ShortestDouble(placement.Height)});
  }
  WritePrivateProfileStrings(gsSettingsFile, entries);
}

}  // namespace quillon
