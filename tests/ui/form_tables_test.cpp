// The tables that the forms are made of: settings, menus, buttons, options. Each row is tried by what it does.

#include <array>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>

#include "clsDesktopFixture.h"
#include "clsIniFile.h"
#include "frmMainMDI.h"
#include "frmQLNOptions.h"
#include "modHelp.h"
#include "modText.h"

namespace quillon {
namespace {

class FormTables : public clsDesktopFixture {
 protected:
  std::string Ini() { return folder_.Read(Data("QLN.INI")); }
};

const char* Word(bool bValue) {
  return bValue ? "TRUE" : "FALSE";
}

struct SettingRow {
  const char *pSection, *pKey, *pDefault, *pOther;
  std::function<std::string(frmMain&, clsRunFields&)> shown;
};

/// Each key with its value in a fresh file and another one.
std::vector<SettingRow> SettingRows() {
  using F = frmMain;
  const auto text = [](std::string F::*pField) { return [=](F& f, clsRunFields&) { return f.*pField; }; };
  const auto number = [](int32_t F::*pField) { return [=](F& f, clsRunFields&) { return std::to_string(f.*pField); }; };
  const auto truth = [](bool F::*pField) { return [=](F& f, clsRunFields&) { return std::string(Word(f.*pField)); }; };
  const auto unix = [](F& f, clsRunFields&) { return std::string(f.bUnix ? "True" : "False"); };
  const auto method = [](F& f, clsRunFields&) {
    for (int i = 0; i < 3; ++i) {
      if (f.Get("rbConversionMethod", i).bChecked && f.Get("frameInnerGUI", i).bVisible) return std::to_string(i);
    }
    return std::string();
  };
  const auto profile = [](F& f, clsRunFields&) { return f.Get("cbFixedWidthProfileList").sText; };
  const auto warned = [](F&, clsRunFields& fields) { return std::string(Word(fields.bWarnedAboutTabsInFile)); };
  const auto trims = [](F& f, clsRunFields&) { return std::string(Word(f.Trims())); };
  return {{"General", "bWarnedAboutTabsInFile", "FALSE", "TRUE", warned},
          {"General", "bClearOutputFileBeforeProcessing", "FALSE", "TRUE", truth(&F::bClearOutputFileBeforeProcessing)},
          {"General", "sSheetTarget", "1", "Budget, Expense", text(&F::sSheetTarget)},
          {"General", "lDelimitationCharacter", "44", "9", number(&F::lDelimitationCharacter)},
          {"General", "lConversionMethod", "0", "2", method},
          {"General", "bUnix", "False", "True", unix},
          {"General", "lTabSize", "8", "-3", number(&F::lTabSize)},
          {"frmMain", "sActiveFixedWidthProfile", "Default-Profile", "Second", profile},
          {"General", "sStartColRow", "A1", "B4", text(&F::sStartColRow)},
          {"General", "bTreatDataAsText", "FALSE", "TRUE", truth(&F::bTreatDataAsText)},
          {"General", "lUseDoubleQuotes", "1", "2", number(&F::lUseDoubleQuotes)},
          {"General", "bIsUnicode", "FALSE", "TRUE", truth(&F::bIsUnicode)},
          {"General", "bShowAdvancedOptions_Profile_Editor", "FALSE", "TRUE",
           truth(&F::bShowAdvancedOptions_Profile_Editor)},
          {"General", "bTrimInputTextFilesPadCharacter", "TRUE", "FALSE", trims}};
}

TEST_F(FormTables, EverySettingHasItsDefaultIsReadAndWritten) {
  for (const char* const pProfile : {"Default-Profile", "Second"}) {
    folder_.Write(Data("Profiles/" + std::string(pProfile) + ".txt"), "1\t2\t[32] Space\tLeft\tNo\t1\t\t\r\n");
  }
  Load();
  std::vector<IniEntry> others;
  for (const SettingRow& row : SettingRows()) {
    EXPECT_EQ(row.shown(form_, fields_), row.pDefault) << row.pKey;
    others.push_back({row.pSection, row.pKey, row.pOther});
  }
  WritePrivateProfileStrings(gsSettingsFile, others);
  Load();
  for (const SettingRow& row : SettingRows()) EXPECT_EQ(row.shown(form_, fields_), row.pOther) << row.pKey;
  // A file without keys gets them all, in the order in which the form writes them.
  folder_.Write(Data("QLN.INI"), "");
  form_.Form_Unload();
  clsIniFile written;
  written.LoadText(Ini());
  for (const SettingRow& row : SettingRows()) EXPECT_EQ(written.Get(row.pSection, row.pKey, "?"), row.pOther);
  gbCommandLineMode = true;
  folder_.Write(Data("QLN.INI"), "x");
  form_.SaveIniFile();
  EXPECT_EQ(Ini(), "x") << "an unattended run changes no settings";
}

TEST_F(FormTables, TheWindowIsPlacedByItsKeys) {
  struct Row {
    const char* pKey;
    double WindowPlacement::*pField;
    double fDefault;
  };
  constexpr std::array kRows{Row{"Left", &WindowPlacement::Left, 150}, Row{"Top", &WindowPlacement::Top, 150},
                             Row{"Width", &WindowPlacement::Width, 13695},
                             Row{"Height", &WindowPlacement::Height, 12350}};
  frmMainMDI frame;
  frame.ReadIniFile();
  EXPECT_EQ(frame.placement.lWindowState, 0);
  for (const Row& row : kRows) {
    EXPECT_EQ(frame.placement.*row.pField, row.fDefault) << row.pKey;
    WritePrivateProfileString(gsSettingsFile, "frmMainMDI", row.pKey, "20000");
    frame.ReadIniFile();
    EXPECT_EQ(frame.placement.*row.pField, 20000) << row.pKey;
  }
  for (const Row& row : kRows) frame.placement.*row.pField = 16000.5;
  frame.SaveIniFile(true);
  EXPECT_EQ(Ini().find("16000.5"), std::string::npos);
  frame.SaveIniFile(false);
  for (const Row& row : kRows) EXPECT_NE(Ini().find("\n" + std::string(row.pKey) + "=16000.5\r\n"), std::string::npos);
}

TEST_F(FormTables, RecentListsShowTheirNewestFirst) {
  std::string sIni;
  for (const char* const pList : {"mruInputFile", "mruOutputFile", "mruRecipeFile", "mruFileOpen"}) {
    sIni += "[" + std::string(pList) + "]\r\n";
    for (int i = 1; i <= 7; ++i) sIni += pList + std::to_string(i) + "=" + pList + "-" + std::to_string(i) + "\r\n";
  }
  folder_.Write(Data("QLN.INI"), sIni);
  Load();
  struct Row {
    const char *pCombo, *pList;
  };
  for (const Row& row : {Row{"cbInputFile", "mruInputFile"}, Row{"cbOutputFile", "mruOutputFile"},
                         Row{"cbRecipeFile", "mruRecipeFile"}}) {
    const clsControl& combo = form_.Get(row.pCombo);
    ASSERT_EQ(combo.items.size(), 6U) << row.pCombo;
    EXPECT_EQ(combo.items.front(), std::string(row.pList) + "-6");
    EXPECT_EQ(combo.sText, combo.items.front());
    EXPECT_EQ(combo.items.back(), std::string(row.pList) + "-1");
  }
  EXPECT_EQ(form_.Get("mnuMRU", 5).sCaption, "&5 mruFileOpen-1");
  EXPECT_EQ(form_.Find("mnuMRU", 6), nullptr);
  form_.Click("mnuMRU", 1);
  EXPECT_EQ(host_.messages.back().sText, "mruFileOpen-5 does not exist.");
  EXPECT_EQ(form_.mruFileOpen.Count(), 5) << "the entry stays";
  form_.ConversionJobOpen(folder_.Write("sixth.QLN", "[QLN]\r\n"));
  EXPECT_EQ(form_.Get("mnuMRU", 1).sCaption, "&1 " + folder_.Path("sixth.QLN"));
  EXPECT_EQ(form_.Get("mnuMRU", 5).sCaption, "&5 mruFileOpen-2");
  form_.TypeText("cbInputFile", "typed");
  form_.UpdateMRUs();
  EXPECT_EQ(form_.Get("cbInputFile").items.size(), 6U);
  EXPECT_EQ(form_.Get("cbInputFile").items.front(), "typed");
  EXPECT_EQ(form_.Get("cbOutputFile").items.size(), 6U) << "a text that is there moves to the front";
}

TEST_F(FormTables, MenusAndToolButtonsDoWhatTheySay) {
  Load();
  const auto asksFor = [&](const char* pTitle) { return screen_.lastQuestion.sTitle == pTitle; };
  const auto opens = [&](int nTopic) { return host_.opened.back() == "file://" + HelpPage(nTopic); };
  bool bExit = false;
  std::string sModal;
  form_.onExit = [&] { bExit = true; };
  const auto shows = [&](const char* pForm) { return sModal == pForm; };
  struct Row {
    const char *pName, *pMenu, *pCaption, *pShortcut;
    std::function<bool()> done;
  };
  const auto refuses = [&] { return host_.Codes() == std::vector<int32_t>{-1}; };
  const std::vector<Row> rows{
      {"mnuSaveConversionJob", "mnuFile", "&Save Conversion Job", "Ctrl+S", [&] { return asksFor("Save"); }},
      {"mnuSaveConversionJobAs", "mnuFile", "Save Conversion Job &As..", "", [&] { return asksFor("Save"); }},
      {"mnuOpenConversionJob", "mnuFile", "&Open Conversion Job", "Ctrl+O",
       [&] { return asksFor("Open Conversion Job"); }},
      {"mnuFileExit", "mnuFile", "E&xit", "", [&] { return bExit; }},
      {"mnuBeginConversionJob", "mnuConvert", "&Begin Conversion", "F5", refuses},
      {"keyConvert", "", "Convert", "", refuses},
      {"mnuConversionOptions", "mnuConvert", "&Options..", "", [&] { return shows("frmQLNOptions"); }},
      {"KeyOptions", "", "Options", "", [&] { return shows("frmQLNOptions"); }},
      {"mnuGettingStarted", "mnuHelpMenuItem", "&Getting Started", "", [&] { return shows("frmGettingStarted"); }},
      {"mnuHelp", "mnuHelpMenuItem", "Help &Contents", "F1", [&] { return opens(0); }},
      {"mnuHelpWeb", "mnuHelpMenuItem", "&Web Help (most up to date)", "", [&] { return opens(0); }},
      {"mnuLanguage", "mnuHelpMenuItem", "&Language..", "", [&] { return shows("frmLanguage"); }},
      {"mnuAbout", "mnuHelpMenuItem", "&About", "",
       [&] { return host_.messages.back().sText.find("no toolkit, fmt") != std::string::npos; }},
      {"mnuHelpProductHomePage", "mnuHelpMenuItem", "&Product Home Page", "", [&] { return opens(2); }},
      {"mnuHelpProductUpdates", "mnuHelpMenuItem", "Product &Updates", "", [&] { return opens(60); }},
      {"mnuBrindlemarkHomePage", "mnuHelpMenuItem", "&Brindlemark Home Page", "", [&] { return opens(2); }},
      {"cmdHelpConversionMethod", "", "?", "", [&] { return opens(16); }},
      {"cmdHelpOutputFile", "", "?", "", [&] { return opens(15); }},
      {"cmdHelpInputFile", "", "?", "", [&] { return opens(14); }},
      {"cmdHelpProfileFile", "", "?", "", [&] { return opens(50); }},
      {"cmdHelpRecipeFile", "", "?", "", [&] { return opens(13); }},
      {"cmdHelpMarkup", "", "?", "", [&] { return opens(12); }}};
  for (const Row& row : rows) {
    const clsControl& control = form_.Get(row.pName);
    EXPECT_EQ(control.sCaption, row.pCaption);
    EXPECT_EQ(control.sMenu, row.pMenu) << row.pName;
    EXPECT_EQ(control.sShortcut, row.pShortcut) << row.pName;
    screen_.lastQuestion = {};
    host_.reports.clear();
    host_.opened = {""};
    host_.messages = {{"", "", MessageIcon::None}};
    sModal.clear();
    screen_.onModal = [&](clsForm& dialog) { sModal = dialog.sFormName; };
    form_.Click(row.pName);
    EXPECT_TRUE(row.done()) << row.pName;
  }
  // F9 does something only in a run, and what stands in the way of one is put aside then.
  for (const char* const pName : {"keyPause", "mnuPause"}) EXPECT_FALSE(form_.Get(pName).bEnabled);
  EXPECT_EQ(form_.Get("mnuPause").sShortcut, "F9");
  form_.DisableGUIForRunning();
  for (const char* const pName : {"keyPause", "mnuPause"}) EXPECT_TRUE(form_.Get(pName).bEnabled);
  for (const char* const pName :
       {"keyConvert", "KeyOptions", "mnuBeginConversionJob", "mnuConversionOptions", "picSelectOutputFolder",
        "picSelectInputFile", "picSelectInputFolder", "picSelectRecipe", "picSelectOutput"}) {
    EXPECT_FALSE(form_.Get(pName).bEnabled) << pName;
  }
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(form_.Get("frameGUI", i).bEnabled || form_.Get("frameInnerGUI", i).bEnabled);
  form_.EnableGUIForRunning();
  EXPECT_TRUE(form_.Get("frameGUI", 2).bEnabled && form_.Get("keyConvert").bEnabled && !form_.Get("keyPause").bEnabled);
}

TEST_F(FormTables, ButtonsOfTheStepsOpenWhatTheirBoxesName) {
  Load();
  const std::string sFile = folder_.Write("in/a.txt", "x");
  struct Row {
    const char *pBox, *pText, *pButton, *pOpened;
  };
  for (const Row& row : {Row{"cbInputFile", "in/a.txt", "cmdEditInput", "in/a.txt"},
                         Row{"cbOutputFile", "in/a.txt", "cmdEditOutput", "in/a.txt"},
                         Row{"cbInputFile", "in/*.txt", "cmdExploreInputFolder", "in"},
                         Row{"cbOutputFile", "in/new/sub/*.csv", "cmdExploreOutputFolder", "in"}}) {
    form_.TypeText(row.pBox, folder_.Path(row.pText));
    form_.Click(row.pButton);
    ASSERT_FALSE(host_.opened.empty()) << row.pButton;
    std::string sOpened = host_.opened.back();
    if (sOpened.ends_with('/')) sOpened.pop_back();
    EXPECT_EQ(sOpened, folder_.Path(row.pOpened)) << row.pButton;
  }
  // The filter shown first follows the output's extension.
  struct Filter {
    const char* pOutput;
    int lIndex;
  };
  form_.TypeText("cbInputFile", sFile);
  for (const Filter& filter :
       {Filter{"a.csv", 1}, Filter{"a.xls", 4}, Filter{"a.XLSX", 3}, Filter{"a.txt", 5}, Filter{"", 1}}) {
    form_.TypeText("cbOutputFile", filter.pOutput);
    form_.Click("cmdOutputBrowse");
    EXPECT_EQ(screen_.lastQuestion.lFilterIndex, filter.lIndex) << filter.pOutput;
  }
}

/// Each option: what shows it, what the user does, what the form's field holds then, and whether that marks the job.
struct OptionRow {
  const char* pControl;
  std::function<void(clsForm&)> change;
  std::function<std::string(frmMain&)> field;
  const char *pBefore, *pAfter;
  bool bMarks;
};

std::vector<OptionRow> OptionRows() {
  using F = frmMain;
  const auto click = [](const char* pName, int nIndex = 0) {
    return [=](clsForm& dialog) { dialog.Click(pName, nIndex); };
  };
  const auto type = [](const char* pName, const char* pText) {
    return [=](clsForm& dialog) { dialog.TypeText(pName, pText); };
  };
  return {
      {"txtTabSize", type("txtTabSize", "-4"), [](F& f) { return std::to_string(f.lTabSize); }, "8", "-4", true},
      {"cbUnix", click("cbUnix"), [](F& f) { return std::string(Word(f.bUnix)); }, "FALSE", "TRUE", true},
      {"cbTrimFields", click("cbTrimFields"), [](F& f) { return std::string(Word(f.bTrimFields)); }, "FALSE", "TRUE",
       true},
      {"rbInputFileFormat", click("rbInputFileFormat", 1), [](F& f) { return std::string(Word(f.bIsUnicode)); },
       "FALSE", "TRUE", false},
      {"cbTreatDataAsText", click("cbTreatDataAsText"), [](F& f) { return std::string(Word(f.bTreatDataAsText)); },
       "FALSE", "TRUE", false},
      {"txtStartColRow", type("txtStartColRow", "any text"), [](F& f) { return f.sStartColRow; }, "A1", "any text",
       false},
      {"cbClearOutputFileBeforeProcessing", click("cbClearOutputFileBeforeProcessing"),
       [](F& f) { return std::string(Word(f.bClearOutputFileBeforeProcessing)); }, "FALSE", "TRUE", true},
      {"txtSheetTarget", type("txtSheetTarget", "Budget"), [](F& f) { return f.sSheetTarget; }, "1", "Budget", true},
      {"cbCharacter1", [](clsForm& dialog) { dialog.SelectItem("cbCharacter1", 0); },
       [](F& f) { return std::to_string(f.lDelimitationCharacter); }, "44", "0", false},
      {"cbRemoveExtraPadChars", click("cbRemoveExtraPadChars"), [](F& f) { return std::string(Word(f.Trims())); },
       "TRUE", "FALSE", false},
      {"rbUseDoubleQuotes", click("rbUseDoubleQuotes", 2), [](F& f) { return std::to_string(f.lUseDoubleQuotes); }, "1",
       "2", false}};
}

TEST_F(FormTables, EveryOptionIsShownAppliedAndLeftAloneByCancel) {
  Load();
  for (const OptionRow& row : OptionRows()) {
    EXPECT_EQ(row.field(form_), row.pBefore) << row.pControl;
    for (const bool bApply : {false, true}) {
      form_.bAskToSaveBMKFileBeforeExit = false;
      screen_.onModal = [&](clsForm& dialog) {
        for (const int lTab : {0, 1}) {
          dialog.SelectItem("tsDisplay", lTab);
          row.change(dialog);
          EXPECT_TRUE(dialog.Get("FrameArray", lTab).bVisible && !dialog.Get("FrameArray", 1 - lTab).bVisible);
          if (lTab == 0 && dialog.Get(row.pControl).kind == ControlKind::CheckBox) row.change(dialog);
        }
        dialog.Click(bApply ? "cmdApply" : "cmdCancel");
        EXPECT_TRUE(dialog.IsUnloaded());
      };
      form_.ConfigureQLNOptions();
      EXPECT_EQ(row.field(form_), bApply ? row.pAfter : row.pBefore) << row.pControl;
      EXPECT_EQ(form_.bAskToSaveBMKFileBeforeExit, row.bMarks) << row.pControl << bApply;
    }
  }
  EXPECT_EQ(form_.lLastOptionsTabDisplayed, 1);
  // What is shown again is what was applied.
  screen_.onModal = [](clsForm& dialog) {
    EXPECT_EQ(dialog.Get("txtTabSize").sText, "-4");
    EXPECT_TRUE(dialog.Get("rbUseDoubleQuotes", 2).bChecked && dialog.Get("rbInputFileFormat", 1).bChecked);
    EXPECT_TRUE(dialog.Get("cbUnix").bChecked && !dialog.Get("cbRemoveExtraPadChars").bChecked);
    EXPECT_EQ(dialog.Get("tsDisplay").lListIndex, 1);
  };
  form_.ConfigureQLNOptions();
}

/// Access keys of menu entries and buttons that several share, by the menu or form they stand in.
std::string SharedAccessKeys(const clsForm& form) {
  std::map<std::string, std::map<std::string, int>> uses;
  for (const auto& pControl : form.Controls()) {
    const bool bButton = pControl->kind == ControlKind::CommandButton || pControl->kind == ControlKind::CheckBox;
    const size_t n = pControl->sCaption.find('&');
    if ((!bButton && pControl->kind != ControlKind::Menu) || n == std::string::npos) continue;
    size_t nEnd = n + 1;
    DecodeUtf8(pControl->sCaption, nEnd);
    ++uses[pControl->sMenu][UpperText(pControl->sCaption.substr(n + 1, nEnd - n - 1))];
  }
  std::string sShared;
  for (const auto& [sMenu, keys] : uses) {
    for (const auto& [sKey, nUses] : keys) sShared += nUses > 1 ? sMenu + ":" + sKey + " " : "";
  }
  return sShared;
}

TEST_F(FormTables, NoMenuAndNoFormSharesAnAccessKeyOrLacksATextInAnyLanguage) {
  for (const char* const pLanguage : {"English", "German", "French", "Spanish", "Japanese"}) {
    ResetTranslator();
    const std::string sName = std::string(pLanguage) + "-Quillon.txt";
    std::string sPhrases;
    if (sName[0] != 'E') {
      std::ifstream in(std::string(QUILLON_SOURCE_DIR) + "/data/Languages/" + sName);
      sPhrases.assign(std::istreambuf_iterator<char>(in), {});
      folder_.Write(Data("Languages/" + sName), sPhrases);
    }
    SaveLanguage(pLanguage);
    InitializeTranslator(host_, nullptr);
    frmMainMDI frame;
    frame.MDIForm_Load(screen_);
    EXPECT_EQ(frame.sCaption, Translate("Quillon - Text to Excel/CSV File Conversion"));
    frmMain form(host_, screen_, gConversionOptions, log_, fields_);
    bool bFirst = false;
    form.Form_Load(bFirst);
    EXPECT_EQ(SharedAccessKeys(form), "") << pLanguage;
    for (const char* const pOpens : {"KeyOptions", "mnuGettingStarted", "mnuLanguage"}) {
      screen_.onModal = [&](clsForm& dialog) {
        // "&Clear sheet contents" and "&Cancel": the captions are as they are, and Esc cancels.
        const std::string sShared = SharedAccessKeys(dialog);
        EXPECT_TRUE(sShared.empty() || (sShared == ":C " && pOpens[0] == 'K')) << pLanguage << pOpens << sShared;
      };
      form.Click(pOpens);
    }
    form.Click("cmdEditProfile");
    screen_.onModal = [this](clsForm& editor) {
      screen_.onModal = [](clsForm& table) { table.Click("cmdAddColumn"); };
      editor.Click("cmdAddTable");
    };
    form.Click("cmdEditRecipe");
    log_.LogClear(true);
    const std::string sFile = sPhrases.empty() ? "" : folder_.Read(Data("Languages/" + sName));
    EXPECT_EQ(sFile.substr(sPhrases.size()), "") << pLanguage;
  }
}

}  // namespace
}  // namespace quillon
