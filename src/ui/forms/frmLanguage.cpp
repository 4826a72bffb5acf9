#include "frmLanguage.h"

#include <algorithm>

#include "modFormTranslation.h"
#include "modHelp.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int kLanguageTopic = 70;

}  // namespace

frmLanguage::frmLanguage(clsHost& host, clsScreen& screen) : clsForm("frmLanguage"), host_(host), screen_(screen) {
  sCaption = "Language";
  Add(ControlKind::Label, "Label1", "Select a Language:");
  Add(ControlKind::ListBox, "List1");
  Add(ControlKind::CommandButton, "cmdDone", "&Done");
  Add(ControlKind::CommandButton, "cmdCancel", "&Cancel");
  Add(ControlKind::CommandButton, "cmdEditLanguageFile", "&Edit Language");
  Add(ControlKind::CommandButton, "cmdSelectFont", "Select &Font");
  Add(ControlKind::CommandButton, "cmdHelpLanguage", "&Help");
  OnClick("cmdDone", [this] { Done(); });
  OnClick("cmdCancel", [this] { Cancel(); });
  OnClick("List1", [this] { Get("cmdEditLanguageFile").bEnabled = Get("List1").sText != "English"; });
  OnClick("cmdEditLanguageFile", [this] { EditLanguageFile(); });
  OnClick("cmdSelectFont", [this] { SelectFont(); });
  OnClick("cmdHelpLanguage", [this] { OpenHelpTopic(host_, kLanguageTopic); });
}

void frmLanguage::Form_Load() {
  TranslateForm(*this, screen_);
  FillLanguageList();
}

void frmLanguage::FillLanguageList() {
  clsControl& list = Get("List1");
  list.items = LanguageList();
  const auto found = std::find(list.items.begin(), list.items.end(), gsLanguage);
  list.lListIndex = found == list.items.end() ? 0 : static_cast<int>(found - list.items.begin());
  list.sText = list.items[static_cast<size_t>(list.lListIndex)];
  if (gsLanguage == "English") Get("cmdEditLanguageFile").bEnabled = false;
}

void frmLanguage::Done() {
  sChosenLanguage = Get("List1").sText;
  Unloaded();
}

void frmLanguage::Cancel() {
  sChosenLanguage.clear();
  sChosenFont.clear();
  Unloaded();
}

void frmLanguage::EditLanguageFile() {
  host_.OpenPath(HostPath(OwnLanguageFile(Get("List1").sText)), OpenVerb::Edit);
}

void frmLanguage::SelectFont() {
  const std::string sFont = screen_.AskFont(Get("cmdSelectFont").sFontName);
  if (!sFont.empty()) sChosenFont = sFont;
}

bool frmLanguage::KeyPressed(std::string_view sKey) {
  if (sKey == "Escape") Cancel();
  if (sKey == "F1") OpenHelpTopic(host_, kLanguageTopic);
  return sKey == "Escape" || sKey == "F1";
}

bool ChooseLanguage(clsHost& host, clsScreen& screen, bool bTellUser) {
  if (gbCommandLineMode) {
    gsLanguage = "English";
    return false;
  }
  frmLanguage dialog(host, screen);
  dialog.Form_Load();
  screen.ShowModal(dialog);
  if (dialog.sChosenLanguage.empty()) return false;
  const std::string sOldLanguage = gsLanguage;
  const std::string sOldFont = gsLanguageFont;
  // What was chosen before in this session is stored, too, and can be taken back.
  const auto differs = [](const std::string& sChosen, const std::string& sNow, const std::string& sStored) {
    return sChosen != sNow || (!sStored.empty() && sChosen != sStored);
  };
  bool bChanged = false;
  if (differs(dialog.sChosenLanguage, sOldLanguage, GetLanguage())) {
    SaveLanguage(dialog.sChosenLanguage);
    bChanged = true;
  } else {
    bTellUser = false;
  }
  if (!dialog.sChosenFont.empty() && differs(dialog.sChosenFont, sOldFont, GetLanguageFont())) {
    SaveLanguageFont(dialog.sChosenFont);
    bChanged = true;
  }
  if (bTellUser) {
    // The stored choice waits for the next start; this one goes on in its language.
    gsLanguage = sOldLanguage;
    gsLanguageFont = sOldFont;
    host.ShowMessage(Translate("Your changes will take effect next time you run") + " " + gsProductName, gsProductName,
                     MessageIcon::Information, MessageButtons::Ok);
  }
  return bChanged;
}

}  // namespace quillon
