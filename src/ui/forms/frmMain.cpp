#include "frmMain.h"

#include <algorithm>
#include <array>

#include "frmGettingStarted.h"
#include "frmQLNOptions.h"
#include "modFiles.h"
#include "modFormTranslation.h"
#include "modHelp.h"
#include "modPaths.h"
#include "modProfileList.h"
#include "modSettings.h"
#include "modStrings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

frmMain::frmMain(clsHost& host, clsScreen& screen, clsConversionOptions& options, clsRunLog& log, clsRunFields& fields)
    : clsForm("frmMain"), host_(host), screen_(screen), options_(options), log_(log), fields_(fields) {
  sCaption = "Quillon";
  MakeControls();
  MakeMenus();
  WireSteps();
  WireButtons();
  WireMenus();
}

void frmMain::Form_Load(bool& bFirstTimeUser) {
  sJobFile = "*";
  lLoadDemo = 0;
  gbSuppressChanges = true;
  TranslateForm(*this, screen_);
  ReadIniFile();
  gbSuppressChanges = false;
  mruFileOpen.Setup(5, gsSettingsFile, "mruFileOpen", "-1");
  FillMenuFromMRU();
  if (!bFirstTimeUser) return;
  const std::string sExample = gsAppDataFolder + "Example1-Profile.QLN";
  if (FileExists(sExample)) ConversionJobOpen(sExample);
  Refresh();
  mnuGettingStarted_Click();
  bFirstTimeUser = false;
}

void frmMain::Form_Unload() {
  if (gbProcessing) {
    gbPauseRequested = true;
    host_.Wait(1000);
    // After a section that failed there is no run behind the flag, and the job is the user's to keep.
    if (bRunning_) return;
  }
  CheckToSaveFileBeforeErasing();
  SaveIniFile();
}

bool frmMain::KeyPressed(std::string_view sKey) {
  if (sKey != "F1") return false;
  OpenHelpTopic(host_, 0);
  return true;
}

void frmMain::JobChanged() {
  if (!gbSuppressChanges) bAskToSaveBMKFileBeforeExit = true;
}

void frmMain::SetComboText(std::string_view sControl, std::string_view sText) {
  clsControl& control = Get(sControl);
  if (control.sText != sText) JobChanged();
  control.sText = sText;
  if (sControl == "cbOutputFile") sOutputOf_ = Get("cbInputFile").sText;
  UpdateFileControls();
}

void frmMain::ShowMethod(int32_t lIndex) {
  lConversionMethod = lIndex;
  for (int i = 0; i < 3; ++i) {
    Get("frameInnerGUI", i).bVisible = i == lIndex;
    Get("rbConversionMethod", i).bChecked = i == lIndex;
  }
}

void frmMain::GetOptionsFromGUI() {
  options_.sInputFile = Get("cbInputFile").sText;
  options_.sOutputFile = Get("cbOutputFile").sText;
  if (Get("rbConversionMethod", 0).bChecked) {
    options_.lConversionMethod = kMethodProfile;
    options_.sFixedWidthProfile = Get("cbFixedWidthProfileList").sText;
  } else if (Get("rbConversionMethod", 1).bChecked) {
    options_.lConversionMethod = kMethodRecipe;
    options_.sRecipeFile = Get("cbRecipeFile").sText;
  } else {
    options_.lConversionMethod = kMethodMarkup;
  }
  options_.bDoSubfolders = Get("cbDoSubfolders").bChecked;
  options_.bSaveInOriginalFolder = Get("cbSaveToOriginalFolder").bChecked;
  options_.bClearOutputFileBeforeProcessing = bClearOutputFileBeforeProcessing;
  options_.sSheetTarget = sSheetTarget;
  options_.lDelimitationCharacter = lDelimitationCharacter;
  options_.lTabSize = lTabSize;
  options_.bUnix = bUnix;
  options_.sCodePage = sCodePage;
  options_.bTrimFields = bTrimFields;
  options_.sStartColRow = sStartColRow;
  options_.bTreatDataAsText = bTreatDataAsText;
  options_.lUseDoubleQuotes = lUseDoubleQuotes;
  options_.bIsUnicode = bIsUnicode;
  options_.bTrimInputTextFilesPadCharacter = fields_.bTrimInputTextFilesPadCharacter;
}

void frmMain::SetGUIFromOptions() {
  gbSuppressChanges = true;
  Get("cbInputFile").sText = options_.sInputFile;
  Get("cbOutputFile").sText = options_.sOutputFile;
  sOutputOf_ = options_.sInputFile;
  // A method that no button has shows none of the three; the run takes it as the Markup method.
  ShowMethod(options_.lConversionMethod);
  Get("cbRecipeFile").sText = options_.sRecipeFile;
  Get("cbDoSubfolders").bChecked = options_.bDoSubfolders;
  Get("cbSaveToOriginalFolder").bChecked = options_.bSaveInOriginalFolder;
  bClearOutputFileBeforeProcessing = options_.bClearOutputFileBeforeProcessing;
  sSheetTarget = options_.sSheetTarget;
  lDelimitationCharacter = options_.lDelimitationCharacter;
  lTabSize = options_.lTabSize;
  bUnix = options_.bUnix;
  sCodePage = options_.sCodePage;
  bTrimFields = options_.bTrimFields;
  sStartColRow = options_.sStartColRow;
  bTreatDataAsText = options_.bTreatDataAsText;
  lUseDoubleQuotes = options_.lUseDoubleQuotes;
  bIsUnicode = options_.bIsUnicode;
  fields_.bTrimInputTextFilesPadCharacter = options_.bTrimInputTextFilesPadCharacter;
  ShowProfile(options_.sFixedWidthProfile);
  gbSuppressChanges = false;
}

void frmMain::FillProfileList(clsControl& combo, std::string_view sSelect) {
  ProfileList list;
  BuildListValidProfiles(list, sSelect, kProfilesSubFolder, host_);
  combo.items = list.names;
  combo.lListIndex = list.nSelected;
  combo.sText = list.nSelected < 0 ? std::string() : list.names[static_cast<size_t>(list.nSelected)];
}

void frmMain::ShowProfile(std::string_view sProfile) {
  clsControl& combo = Get("cbFixedWidthProfileList");
  FillProfileList(combo, sProfile);
  if (combo.lListIndex >= 0) return;
  const auto found = std::find_if(combo.items.begin(), combo.items.end(),
                                  [&](const std::string& sName) { return EqualNoCase(sName, sProfile); });
  if (found == combo.items.end()) return;
  combo.lListIndex = static_cast<int>(found - combo.items.begin());
  combo.sText = *found;
}

void frmMain::UpdateFileControls() {
  const bool bWild = HasWildcards(Get("cbInputFile").sText);
  Get("cbDoSubfolders").bEnabled = bWild;
  Get("cmdEditInput").bVisible = !bWild;
  Get("cmdExploreInputFolder").bVisible = bWild;
  clsControl& original = Get("cbSaveToOriginalFolder");
  original.bEnabled = bWild;
  if (!bWild) original.bChecked = false;
  const bool bOutputFolder = bWild && !original.bChecked;
  Get("cmdSelectOutputFolder").bVisible = Get("picSelectOutputFolder").bVisible = bOutputFolder;
  Get("cmdOutputBrowse").bVisible = Get("picSelectOutput").bVisible = !bWild;
  Get("cmdEditOutput").bVisible = !bWild;
  Get("cmdExploreOutputFolder").bVisible = bWild;
  Get("cbOutputFile").bEnabled = !bWild || !original.bChecked;
  EnableButtonsWithTargets();
  ShowCodePage();
  ShowOptionsInForce();
  ShowOutputPath();
}

void frmMain::EnableButtonsWithTargets() {
  const auto folderThere = [](std::string_view sPath) {
    return FolderExists(DeepestExistingFolder(FolderOfPath(ExpandedPath(sPath))));
  };
  Get("cmdExploreInputFolder").bEnabled = folderThere(Get("cbInputFile").sText);
  Get("cmdExploreOutputFolder").bEnabled = folderThere(Get("cbOutputFile").sText);
  Get("cmdFindTables").bEnabled =
      !HasWildcards(Get("cbInputFile").sText) && IsFile(ExpandedPath(Get("cbInputFile").sText));
  Get("cmdEditInput").bEnabled = FileExists(ExpandedPath(Get("cbInputFile").sText));
  Get("cmdEditOutput").bEnabled = FileExists(ExpandedPath(Get("cbOutputFile").sText));
}

void frmMain::FocusOutputButtons() {
  for (const char* const pName : {"cmdEditOutput", "cmdExploreOutputFolder"}) {
    if (Get(pName).bVisible) Focus(pName);
  }
}

void frmMain::EnableForRun(bool bEnabled) {
  for (const char* const pName : {"keyPause", "mnuPause"}) Get(pName).bEnabled = !bEnabled;
  for (const char* const pName :
       {"keyConvert", "KeyOptions", "mnuBeginConversionJob", "mnuConversionOptions", "picSelectOutputFolder",
        "picSelectInputFile", "picSelectInputFolder", "picSelectRecipe", "picSelectOutput"}) {
    Get(pName).bEnabled = bEnabled;
  }
  for (int i = 0; i < 3; ++i) Get("frameGUI", i).bEnabled = Get("frameInnerGUI", i).bEnabled = bEnabled;
  Refresh();
}

void frmMain::FillComboFromMRU(std::string_view sControl, const clsMRU& list) {
  clsControl& combo = Get(sControl);
  combo.items.clear();
  combo.lListIndex = -1;
  for (int32_t i = 1; i <= list.Count(); ++i) combo.items.push_back(list.FromNewest(i));
  if (combo.items.empty()) return;
  combo.lListIndex = 0;
  combo.sText = combo.items.front();
}

void frmMain::FillMenuFromMRU() {
  Unload("mnuMRU", 1);
  for (int32_t i = 1; i <= mruFileOpen.Count(); ++i) {
    clsControl& menu = Add(ControlKind::Menu, "mnuMRU", "&" + std::to_string(i) + " " + mruFileOpen.FromNewest(i), i);
    menu.sMenu = "mnuFile";
    menu.sTag = "TranslateFalse";
    OnClick(
        "mnuMRU", [this, i] { OpenRecentJob(i); }, i);
  }
}

void frmMain::UpdateMRUs() {
  struct Row {
    const char* pControl;
    clsMRU* pList;
  };
  for (const Row& row :
       {Row{"cbInputFile", &mruInputFile}, Row{"cbOutputFile", &mruOutputFile}, Row{"cbRecipeFile", &mruRecipeFile}}) {
    row.pList->AddUniqueItemToCollection(Get(row.pControl).sText);
    FillComboFromMRU(row.pControl, *row.pList);
  }
}

void frmMain::ConfigureQLNOptions() {
  frmQLNOptions dialog(*this);
  dialog.Form_Load();
  screen_.ShowModal(dialog);
  UpdateFileControls();
}

void frmMain::mnuGettingStarted_Click() {
  static constexpr std::array<std::string_view, 5> kJobs{"", "Example1-Profile.QLN", "Example2-Recipe.QLN",
                                                         "Example3-Recipe.QLN", "Example4-File-Marking.QLN"};
  frmGettingStarted guide(*this);
  guide.Form_Load();
  screen_.ShowModal(guide);
  if (lLoadDemo == 0) return;
  const bool bKnown = lLoadDemo > 0 && static_cast<size_t>(lLoadDemo) < kJobs.size();
  const std::string sJob = bKnown ? AppDataFolder() + std::string(kJobs[static_cast<size_t>(lLoadDemo)]) : "";
  lLoadDemo = 0;
  if (FileExists(sJob)) ConversionJobOpen(sJob);
}

void frmMain::LaunchFile(std::string_view sFileToLaunch) {
  const std::string sPath = ExpandedPath(sFileToLaunch);
  if (IsFile(sPath)) {
    host_.OpenPath(HostPath(sPath), OpenVerb::Open);
  } else if (FolderExists(sPath)) {
    host_.OpenPath(HostPath(sPath), OpenVerb::Explore);
  } else {
    host_.ShowMessage(Translate("File/Folder does not exist:") + "\r\n\r\n" + sPath, Translate("Error"),
                      MessageIcon::Critical, MessageButtons::Ok);
  }
}

}  // namespace quillon
