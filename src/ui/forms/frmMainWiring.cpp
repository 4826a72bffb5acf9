// Which event of the main form does what.

#include "frmLanguage.h"
#include "frmMain.h"
#include "modFiles.h"
#include "modHelp.h"
#include "modPaths.h"
#include "modSettings.h"

namespace quillon {

void frmMain::WireSteps() {
  for (const char* const pName : {"cbInputFile", "cbOutputFile", "cbRecipeFile", "cbFixedWidthProfileList"}) {
    const Handler changed = [this, bOutput = std::string_view(pName) == "cbOutputFile"] {
      if (bOutput) sOutputOf_ = Get("cbInputFile").sText;
      JobChanged();
      UpdateFileControls();
    };
    OnChange(pName, changed);
    OnClick(pName, changed);
  }
  OnClick("cbCodePage", [this] { cbCodePage_Click(); });
  OnClick("cbDoSubfolders", [this] { JobChanged(); });
  OnClick("cbSaveToOriginalFolder", [this] {
    JobChanged();
    UpdateFileControls();
  });
  for (int i = 0; i < 3; ++i) {
    const Handler clicked = [this, i] {
      JobChanged();
      ShowMethod(i);
    };
    OnClick("rbConversionMethod", clicked, i);
  }
}

void frmMain::WireButtons() {
  // A picture beside a button does what the button does.
  const auto both = [this](const char* pButton, const char* pPicture, const Handler& handler) {
    OnClick(pButton, handler);
    OnClick(pPicture, handler);
  };
  both("cmdInputBrowse", "picSelectInputFile", [this] { cmdInputBrowse_Click(); });
  both("cmdSelectInputFolder", "picSelectInputFolder", [this] { cmdSelectInputFolder_Click(); });
  both("cmdOutputBrowse", "picSelectOutput", [this] { cmdOutputBrowse_Click(); });
  both("cmdSelectOutputFolder", "picSelectOutputFolder", [this] { cmdSelectOutputFolder_Click(); });
  both("cmdRecipeBrowse", "picSelectRecipe", [this] { cmdRecipeBrowse_Click(); });
  OnClick("cmdEditInput", [this] { LaunchFile(Get("cbInputFile").sText); });
  OnClick("cmdEditOutput", [this] { LaunchFile(Get("cbOutputFile").sText); });
  OnClick("cmdExploreInputFolder", [this] { ExploreFolderOf("cbInputFile"); });
  OnClick("cmdExploreOutputFolder", [this] { ExploreFolderOf("cbOutputFile"); });
  OnClick("cmdOpenResult", [this] { LaunchFile(sResult_); });
  OnClick("cmdShowResult", [this] { LaunchFile(FolderOfPath(ExpandedPath(sResult_))); });
  OnClick("cmdProof", [this] { cmdProof_Click(); });
  OnClick("cmdEditProfile", [this] { cmdEditProfile_Click(); });
  OnClick("cmdFindTables", [this] { cmdFindTables_Click(); });
  OnClick("cmdEditRecipe", [this] { cmdEditRecipe_Click(); });
}

void frmMain::WireMenus() {
  const Handler convert = [this] {
    int32_t lResult = 0;
    Go(lResult);
  };
  OnClick("keyConvert", convert);
  OnClick("mnuBeginConversionJob", convert);
  for (const char* const pName : {"keyPause", "mnuPause"}) OnClick(pName, [this] { ConversionJobPause(); });
  for (const char* const pName : {"KeyOptions", "mnuConversionOptions", "cmdChangeOptions"}) {
    OnClick(pName, [this] { ConfigureQLNOptions(); });
  }
  OnClick("cmdClearOptions", [this] { cmdClearOptions_Click(); });
  OnClick("mnuOpenConversionJob", [this] { ConversionJobOpen(""); });
  OnClick("mnuSaveConversionJob", [this] { ConversionJobSave(); });
  OnClick("mnuSaveConversionJobAs", [this] { ConversionJobSaveAs(); });
  OnClick("mnuFileExit", [this] {
    if (onExit) onExit();
  });
  OnClick("mnuGettingStarted", [this] { mnuGettingStarted_Click(); });
  OnClick("mnuHelp", [this] { OpenHelpTopic(host_, 0); });
  OnClick("mnuLanguage", [this] { ChooseLanguage(host_, screen_, true); });
  OnClick("mnuAbout", [this] {
    host_.ShowMessage(AboutText(screen_.Toolkit()), "Quillon", MessageIcon::Information, MessageButtons::Ok);
  });
  for (const WebMenu& menu : kWebMenus) {
    OnClick(menu.sName, [this, nTopic = menu.nTopic] { OpenHelpTopic(host_, nTopic); });
  }
}

void frmMain::ExploreFolderOf(std::string_view sControl) {
  const std::string sFolder = DeepestExistingFolder(FolderOfPath(ExpandedPath(Get(sControl).sText)));
  if (FolderExists(sFolder)) host_.OpenPath(HostPath(sFolder), OpenVerb::Open);
}

}  // namespace quillon
