#include "modSettings.h"

#include <array>
#include <map>
#include <optional>

#include "clsCodePageScope.h"
#include "clsFileLock.h"
#include "clsOutputFile.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modText.h"

namespace quillon {

std::string gsSettingsFile;
std::string gsDataFolder;
std::string gsAppDataFolder;
bool gbCommandLineMode = false;
bool gbSuppressChanges = false;

namespace {

constexpr std::string_view kFolderTail = "\\Brindlemark, Inc\\Quillon";
constexpr std::string_view kIniName = "QLN.INI";

struct PageOverride {
  bool bSet = false;
  const clsCodePage* pPage = nullptr;
};
PageOverride gPageOverride;
std::optional<const clsCodePage*> gPageFromSettings;

const clsCodePage* PageFromSettings() {
  return CodePageNamed(GetPrivateProfileString(gsSettingsFile, "General", "sCodePage", kFoundByContent));
}

std::string StoreFile() {
  return AppDataFolder() + "Store.ini";
}

}  // namespace

void ResetFoundationGlobals() {
  gsSettingsFile.clear();
  gsDataFolder.clear();
  gsAppDataFolder.clear();
  gbCommandLineMode = false;
  gbSuppressChanges = false;
  gPageOverride = {};
  gPageFromSettings.reset();
}

std::string AppDataFolder() {
  return ExpandedPath("%appdata%" + std::string(kFolderTail) + "\\");
}

// The per-user folder is taken whatever the probe says; the probe leaves its key in the file.
std::string FindSettingsFile() {
  if (!gsSettingsFile.empty()) return gsSettingsFile;
  gsDataFolder = ExpandedPath("%appdata%" + std::string(kFolderTail));
  gsSettingsFile = JoinPath(gsDataFolder, kIniName);
  bool bNew = !FileExists(gsSettingsFile);
  if (bNew) {
    MakeFolderPath(gsDataFolder);
    // Of two first starts at once the second must not write over what the first has put in by then.
    const clsFileLock lock(gsSettingsFile);
    bNew = !FileExists(gsSettingsFile);
    if (bNew) CreateDefaultSettingsFile(gsSettingsFile);
  }
  // A file that has passed the probe once isn't written to at every start.
  if (bNew || GetPrivateProfileString(gsSettingsFile, "Main", "Partial", "0") != "Level3") {
    TestFolderIsWritable(gsSettingsFile);
  }
  return gsSettingsFile;
}

bool TestFolderIsWritable(std::string_view sPath) {
  for (const std::string_view sWrong : {"Special Folder Does Not Exist", "Folder Not Valid On this OS"}) {
    if (sPath.find(sWrong) != std::string_view::npos) return false;
  }
  const std::string sFolder = FolderOfPath(sPath);
  if (!FolderExists(sFolder)) MakeFolderPath(sFolder);
  if (!FolderExists(sFolder)) return false;
  for (const std::string_view sValue : {"level2", "Level3"}) {
    WritePrivateProfileString(sPath, "Main", "Partial", sValue);
    if (GetPrivateProfileString(sPath, "Main", "Partial", "0") != sValue) return false;
  }
  return true;
}

void CreateDefaultSettingsFile(std::string_view sPath) {
  static constexpr std::array<std::string_view, 11> kLines{
      "[Header]",          "Product=QLN_B",      "FileType=CONFIG", "FileFormat=1.0",     "", "[General]",
      "DefaultInputFile=", "DefaultOutputFile=", "UseRecipeFile=",  "DefaultRecipeFile=", ""};
  std::string sText;
  for (const std::string_view sLine : kLines) sText.append(sLine).append("\r\n");
  Failure ignored;
  WriteWholeFile(sPath, sText, ignored);
}

const clsCodePage* CodePageNamed(std::string_view sName) {
  if (EqualNoCase(sName, kFoundByContent)) return nullptr;
  const clsCodePage* const pPage = clsCodePage::Find(sName);
  return pPage != nullptr ? pPage : &clsCodePage::Windows1252();
}

const clsCodePage* SystemCodePage() {
  if (gPageOverride.bSet) return gPageOverride.pPage;
  if (!gPageFromSettings) gPageFromSettings = PageFromSettings();
  return *gPageFromSettings;
}

void OverrideSystemCodePage(const clsCodePage* pPage, bool bAuto) {
  gPageOverride = {bAuto || pPage != nullptr, pPage};
}

clsCodePageScope::clsCodePageScope(std::string_view sName)
    : bWasSet_(gPageOverride.bSet), pBefore_(gPageOverride.pPage) {
  if (!sName.empty()) gPageOverride = {true, CodePageNamed(sName)};
}

clsCodePageScope::~clsCodePageScope() {
  gPageOverride = {bWasSet_, pBefore_};
}

std::string StoreGet(std::string_view sSection, std::string_view sKey, std::string_view sDefault) {
  return GetPrivateProfileString(StoreFile(), sSection, sKey, sDefault);
}

void StoreSet(std::string_view sSection, std::string_view sKey, std::string_view sValue) {
  MakeFolderPath(AppDataFolder());
  WritePrivateProfileString(StoreFile(), sSection, sKey, sValue);
}

}  // namespace quillon
