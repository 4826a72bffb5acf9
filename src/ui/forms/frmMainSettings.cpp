// The main form's keys of the settings file. Between load and unload the form's fields hold the truth.

#include <functional>

#include "frmMain.h"
#include "modFailure.h"
#include "modFiles.h"
#include "modNumbers.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr std::string_view kGeneral = "General";
constexpr int32_t kRecentFiles = 6;

bool ReadUpper(const clsIniFile& file, std::string_view sKey, std::string_view sDefault) {
  return UpperText(file.Get(kGeneral, sKey, sDefault)) != "FALSE";
}

/// Leading digits as a number; a text without any is 0, one beyond 32 bits is a failure of the form's load.
int32_t ReadNumber(const clsIniFile& file, std::string_view sKey, std::string_view sDefault) {
  const double value = LeadingNumber(file.Get(kGeneral, sKey, sDefault));
  const std::optional<int32_t> number = ParseWholeNumber(ShortestDouble(value));
  if (!number) throw UnhandledFailure(gsSettingsFile + ": " + std::string(sKey) + " is beyond 32 bits");
  return *number;
}

const char* UpperWord(bool bValue) {
  return bValue ? "TRUE" : "FALSE";
}

}  // namespace

void frmMain::ReadIniFile() {
  if (!FileExists(gsSettingsFile)) {
    host_.ShowMessage(gsSettingsFile + Translate(" Cannot be found!"), sCaption, MessageIcon::Critical,
                      MessageButtons::Ok);
    return;
  }
  clsIniFile file;
  Failure ignored;
  file.Load(gsSettingsFile, ignored);
  fields_.bWarnedAboutTabsInFile = ReadUpper(file, "bWarnedAboutTabsInFile", "FALSE");
  bClearOutputFileBeforeProcessing = ReadUpper(file, "bClearOutputFileBeforeProcessing", "FALSE");
  sSheetTarget = file.Get(kGeneral, "sSheetTarget", "1");
  lDelimitationCharacter = ReadNumber(file, "lDelimitationCharacter", "44");
  const int32_t lMethod = ReadNumber(file, "lConversionMethod", "0");
  ShowMethod(lMethod >= 0 && lMethod <= 2 ? lMethod : 0);
  bUnix = file.Get(kGeneral, "bUnix", "False") == "True";
  lTabSize = ReadNumber(file, "lTabSize", "8");
  ShowProfile(file.Get("frmMain", "sActiveFixedWidthProfile", "Default-Profile"));
  sStartColRow = file.Get(kGeneral, "sStartColRow", "A1");
  bTreatDataAsText = ReadUpper(file, "bTreatDataAsText", "FALSE");
  lUseDoubleQuotes = ReadNumber(file, "lUseDoubleQuotes", "1");
  bIsUnicode = ReadUpper(file, "bIsUnicode", "FALSE");
  bShowAdvancedOptions_Profile_Editor = ReadUpper(file, "bShowAdvancedOptions_Profile_Editor", "FALSE");
  fields_.bTrimInputTextFilesPadCharacter = ReadUpper(file, "bTrimInputTextFilesPadCharacter", "TRUE");
  mruInputFile.Setup(kRecentFiles, gsSettingsFile, "mruInputFile", "-1");
  mruOutputFile.Setup(kRecentFiles, gsSettingsFile, "mruOutputFile", "-1");
  mruRecipeFile.Setup(kRecentFiles, gsSettingsFile, "mruRecipeFile", "-1");
  FillComboFromMRU("cbInputFile", mruInputFile);
  FillComboFromMRU("cbOutputFile", mruOutputFile);
  FillComboFromMRU("cbRecipeFile", mruRecipeFile);
  asRead_.clear();
  for (const IniEntry& entry : Settings()) {
    asRead_.push_back({entry.sValue, file.Get(entry.sSection, entry.sKey, {})});
  }
  UpdateFileControls();
  if (!gbCommandLineMode && onMaximise) onMaximise();
}

std::vector<IniEntry> frmMain::Settings() {
  const auto general = [](std::string_view sKey, std::string sValue) {
    return IniEntry{std::string(kGeneral), std::string(sKey), std::move(sValue)};
  };
  return {general("bWarnedAboutTabsInFile", UpperWord(fields_.bWarnedAboutTabsInFile)),
          general("bClearOutputFileBeforeProcessing", UpperWord(bClearOutputFileBeforeProcessing)),
          general("sSheetTarget", sSheetTarget),
          general("lDelimitationCharacter", std::to_string(lDelimitationCharacter)),
          general("lConversionMethod", std::to_string(lConversionMethod)),
          general("lTabSize", std::to_string(lTabSize)),
          general("bUnix", bUnix ? "True" : "False"),
          {"frmMain", "sActiveFixedWidthProfile", Get("cbFixedWidthProfileList").sText},
          general("sStartColRow", sStartColRow),
          general("bTreatDataAsText", UpperWord(bTreatDataAsText)),
          general("lUseDoubleQuotes", std::to_string(lUseDoubleQuotes)),
          general("bIsUnicode", UpperWord(bIsUnicode)),
          general("bTrimInputTextFilesPadCharacter", UpperWord(fields_.bTrimInputTextFilesPadCharacter)),
          general("bShowAdvancedOptions_Profile_Editor", UpperWord(bShowAdvancedOptions_Profile_Editor))};
}

void frmMain::SaveIniFile() {
  if (gbCommandLineMode && !options_.bOpenConversionJobOnly) return;
  const std::vector<IniEntry> settings = Settings();
  ChangePrivateProfile(gsSettingsFile, [&](clsIniFile& file) {
    for (size_t i = 0; i < settings.size(); ++i) {
      const IniEntry& entry = settings[i];
      // What was left alone here and changed by another window meanwhile stays as that one wants it.
      const std::string sNow = file.Get(entry.sSection, entry.sKey, {});
      const bool bTheirs =
          i < asRead_.size() && entry.sValue == asRead_[i].sShown && !sNow.empty() && sNow != asRead_[i].sInFile;
      if (!bTheirs) file.Set(entry.sSection, entry.sKey, entry.sValue);
    }
  });
  for (clsMRU* const pList : {&mruInputFile, &mruOutputFile, &mruRecipeFile, &mruFileOpen}) pList->ShutDown();
}

}  // namespace quillon
