// The INI services on a path: one key or a batch, with a lock against other processes.

#include "clsFileLock.h"
#include "clsIniFile.h"

namespace quillon {

std::string GetPrivateProfileString(std::string_view sPath, std::string_view sSection, std::string_view sKey,
                                    std::string_view sDefault) {
  clsIniFile file;
  Failure ignored;
  file.Load(sPath, ignored);
  return file.Get(sSection, sKey, sDefault);
}

bool WritePrivateProfileString(std::string_view sPath, std::string_view sSection, std::string_view sKey,
                               std::string_view sValue) {
  return WritePrivateProfileStrings(sPath, {{std::string(sSection), std::string(sKey), std::string(sValue)}});
}

bool WritePrivateProfileStrings(std::string_view sPath, const std::vector<IniEntry>& entries,
                                const clsCodePage* pPage) {
  const auto setAll = [&entries](clsIniFile& file) {
    for (const IniEntry& entry : entries) file.Set(entry.sSection, entry.sKey, entry.sValue);
  };
  return ChangePrivateProfile(sPath, setAll, pPage);
}

bool ChangePrivateProfile(std::string_view sPath, const std::function<void(clsIniFile&)>& change,
                          const clsCodePage* pPage) {
  const clsFileLock lock(sPath);
  clsIniFile file(pPage);
  Failure failure;
  if (!file.Load(sPath, failure)) return false;
  const std::string sBefore = file.Bytes();
  change(file);
  return file.Bytes() == sBefore || file.Save(sPath, failure);
}

}  // namespace quillon
