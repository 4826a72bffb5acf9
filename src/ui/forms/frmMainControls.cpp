// What stands on the main form: its controls and menus as tables.

#include <array>

#include "frmMain.h"
#include "modHelp.h"

namespace quillon {

namespace {

struct ControlRow {
  ControlKind kind;
  std::string_view sName, sCaption;
  int nIndex = 0;
};

constexpr std::array kControls{
    ControlRow{ControlKind::ToolButton, "keyConvert", "Convert"},
    ControlRow{ControlKind::ToolButton, "keyPause", "Pause"},
    ControlRow{ControlKind::ToolButton, "KeyOptions", "Options"},
    ControlRow{ControlKind::Frame, "frameGUI", "STEP 1: Specify the input file(s)", 0},
    ControlRow{ControlKind::ComboBox, "cbInputFile", ""},
    ControlRow{ControlKind::Picture, "picSelectInputFile", ""},
    ControlRow{ControlKind::CommandButton, "cmdInputBrowse", "   File.."},
    ControlRow{ControlKind::Picture, "picSelectInputFolder", ""},
    ControlRow{ControlKind::CommandButton, "cmdSelectInputFolder", "        Folder.."},
    ControlRow{ControlKind::CommandButton, "cmdHelpInputFile", "?"},
    ControlRow{ControlKind::Label, "Label1", "Example: c:\\input\\test.txt or c:\\bills\\*.txt"},
    ControlRow{ControlKind::CheckBox, "cbDoSubfolders", "Do Subfolders"},
    ControlRow{ControlKind::Label, "lblCodePage", "Code page:"},
    ControlRow{ControlKind::ComboBox, "cbCodePage", ""},
    ControlRow{ControlKind::CommandButton, "cmdEditInput", "Edit Input File.."},
    ControlRow{ControlKind::CommandButton, "cmdExploreInputFolder", "Explore Input Folder.."},
    ControlRow{ControlKind::Frame, "frameGUI", "STEP 2: Specify the output file(s)", 1},
    ControlRow{ControlKind::ComboBox, "cbOutputFile", ""},
    ControlRow{ControlKind::Picture, "picSelectOutput", ""},
    ControlRow{ControlKind::CommandButton, "cmdOutputBrowse", "   File.."},
    ControlRow{ControlKind::Picture, "picSelectOutputFolder", ""},
    ControlRow{ControlKind::CommandButton, "cmdSelectOutputFolder", "        Folder.."},
    ControlRow{ControlKind::CommandButton, "cmdHelpOutputFile", "?"},
    ControlRow{ControlKind::Label, "Label5",
               "To convert to CSV use a file name with the *.CSV extension. To convert to Excel use *.XLS or *.XLSX"},
    ControlRow{ControlKind::Label, "Label2", "Example: c:\\output\\Out.csv or c:\\out\\*.xls or c:\\out\\*.xlsx"},
    ControlRow{ControlKind::Label, "lblOutputPath", ""},
    ControlRow{ControlKind::CheckBox, "cbSaveToOriginalFolder", "Save to Original folder"},
    ControlRow{ControlKind::CommandButton, "cmdEditOutput", "Edit Output File.."},
    ControlRow{ControlKind::CommandButton, "cmdExploreOutputFolder", "Explore Output Folder.."},
    ControlRow{ControlKind::Frame, "frameGUI", "STEP 3: Specify conversion method", 2},
    ControlRow{ControlKind::OptionButton, "rbConversionMethod", "Use a Profile", 0},
    ControlRow{ControlKind::OptionButton, "rbConversionMethod", "Use a Recipe", 1},
    ControlRow{ControlKind::OptionButton, "rbConversionMethod", "Use a Marked up text file", 2},
    ControlRow{ControlKind::CommandButton, "cmdFindTables", "Find &Tables.."},
    ControlRow{ControlKind::CommandButton, "cmdHelpConversionMethod", "?"},
    ControlRow{ControlKind::Frame, "frameInnerGUI", "Select or edit profile", 0},
    ControlRow{ControlKind::Label, "Label6", "Active Profile"},
    ControlRow{ControlKind::ComboBox, "cbFixedWidthProfileList", ""},
    ControlRow{ControlKind::CommandButton, "cmdEditProfile", "Edit/Manage Profiles"},
    ControlRow{ControlKind::CommandButton, "cmdHelpProfileFile", "?"},
    ControlRow{ControlKind::Frame, "frameInnerGUI", "Create or edit a recipe file.", 1},
    ControlRow{ControlKind::Label, "Label3", "Recipe File (*.rcp)"},
    ControlRow{ControlKind::ComboBox, "cbRecipeFile", ""},
    ControlRow{ControlKind::Picture, "picSelectRecipe", ""},
    ControlRow{ControlKind::CommandButton, "cmdRecipeBrowse", "   File.."},
    ControlRow{ControlKind::CommandButton, "cmdEditRecipe", "Edit Recipe"},
    ControlRow{ControlKind::CommandButton, "cmdHelpRecipeFile", "?"},
    ControlRow{ControlKind::Frame, "frameInnerGUI", "", 2},
    ControlRow{ControlKind::Label, "Label4", "Mark up the input file(s) by editing them."},
    ControlRow{ControlKind::CommandButton, "cmdHelpMarkup", "?"},
    ControlRow{ControlKind::Label, "lblOptionsInForce", ""},
    ControlRow{ControlKind::CommandButton, "cmdChangeOptions", "Options"},
    ControlRow{ControlKind::CommandButton, "cmdClearOptions", "Clear"},
    ControlRow{ControlKind::Label, "lblClosing", ""},
    ControlRow{ControlKind::CommandButton, "cmdOpenResult", "Open"},
    ControlRow{ControlKind::CommandButton, "cmdShowResult", "Show in folder"},
    ControlRow{ControlKind::CommandButton, "cmdProof", "P&roof.."},
    ControlRow{ControlKind::Frame, "frameLog", "Output Log"},
};

struct MenuRow {
  std::string_view sMenu, sName, sCaption, sShortcut;
};

constexpr std::array kMenus{
    MenuRow{"", "mnuFile", "&File", ""},
    MenuRow{"mnuFile", "mnuOpenConversionJob", "&Open Conversion Job", "Ctrl+O"},
    MenuRow{"mnuFile", "mnuSaveConversionJob", "&Save Conversion Job", "Ctrl+S"},
    MenuRow{"mnuFile", "mnuSaveConversionJobAs", "Save Conversion Job &As..", ""},
    MenuRow{"mnuFile", "mnuMRU", "-", ""},
    MenuRow{"mnuFile", "mnuFileExit", "E&xit", ""},
    MenuRow{"", "mnuConvert", "&Convert", ""},
    MenuRow{"mnuConvert", "mnuBeginConversionJob", "&Begin Conversion", "F5"},
    MenuRow{"mnuConvert", "mnuPause", "&Pause Conversion", "F9"},
    MenuRow{"mnuConvert", "mnuConversionOptions", "&Options..", ""},
    MenuRow{"", "mnuHelpMenuItem", "&Help", ""},
    MenuRow{"mnuHelpMenuItem", "mnuGettingStarted", "&Getting Started", ""},
    MenuRow{"mnuHelpMenuItem", "mnuHelp", "Help &Contents", "F1"},
    MenuRow{"mnuHelpMenuItem", "mnuHelpWeb", "&Web Help (most up to date)", ""},
    MenuRow{"mnuHelpMenuItem", "mnuLanguage", "&Language..", ""},
    MenuRow{"mnuHelpMenuItem", "mnuAbout", "&About", ""},
    MenuRow{"mnuHelpMenuItem", "mnuHelpProductHomePage", "&Product Home Page", ""},
    MenuRow{"mnuHelpMenuItem", "mnuHelpProductUpdates", "Product &Updates", ""},
    MenuRow{"mnuHelpMenuItem", "mnuBrindlemarkHomePage", "&Brindlemark Home Page", ""},
};

struct HelpButton {
  std::string_view sName;
  int nTopic;
};
constexpr std::array kHelpButtons{HelpButton{"cmdHelpConversionMethod", 16}, HelpButton{"cmdHelpMarkup", 12},
                                  HelpButton{"cmdHelpOutputFile", 15},       HelpButton{"cmdHelpProfileFile", 50},
                                  HelpButton{"cmdHelpRecipeFile", 13},       HelpButton{"cmdHelpInputFile", 14}};

}  // namespace

void frmMain::MakeControls() {
  for (const ControlRow& row : kControls) Add(row.kind, row.sName, row.sCaption, row.nIndex);
  for (const char* const pName : {"cbFixedWidthProfileList", "cbCodePage"}) Get(pName).bEditable = false;
  for (const char* const pName : {"cbCodePage", "lblOptionsInForce", "lblClosing", "lblOutputPath"})
    Get(pName).sTag = "TranslateFalse";
  for (const char* const pName : {"lblClosing", "cmdOpenResult", "cmdShowResult", "cmdProof"})
    Get(pName).bVisible = false;
  Get("keyPause").bEnabled = false;
  Get("rbConversionMethod", 0).bChecked = true;
  ShowMethod(0);
  for (const HelpButton& help : kHelpButtons) {
    Get(help.sName).sToolTip = "Help";
    OnClick(help.sName, [this, nTopic = help.nTopic] { OpenHelpTopic(host_, nTopic); });
  }
}

void frmMain::MakeMenus() {
  for (const MenuRow& row : kMenus) {
    clsControl& menu = Add(ControlKind::Menu, row.sName, row.sCaption);
    menu.sMenu = row.sMenu;
    menu.sShortcut = row.sShortcut;
  }
  Get("mnuPause").bEnabled = false;
}

}  // namespace quillon
