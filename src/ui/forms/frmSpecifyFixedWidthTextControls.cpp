// What stands on the profile editor and which event does what.

#include <array>

#include "frmSpecifyFixedWidthText.h"

namespace quillon {

namespace {

struct ControlRow {
  ControlKind kind;
  std::string_view sName, sCaption, sToolTip;
};

constexpr std::array kControls{
    ControlRow{ControlKind::Frame, "frameTop", "", ""},
    ControlRow{ControlKind::Label, "lblProfileName", "Profile Name", ""},
    ControlRow{ControlKind::ComboBox, "cbProfileList", "", ""},
    ControlRow{ControlKind::CommandButton, "cmdSave", "Save", ""},
    ControlRow{ControlKind::CommandButton, "cmdRenameProfile", "Rename", ""},
    ControlRow{ControlKind::CommandButton, "cmdDeleteProfile", "Delete", ""},
    ControlRow{ControlKind::CommandButton, "cmdEditProfile", "Edit", ""},
    ControlRow{ControlKind::CommandButton, "cmdReloadProfile", "Reload", ""},
    ControlRow{ControlKind::Label, "lblNumOfColumns", "Total Number of Columns Within Input File", ""},
    ControlRow{ControlKind::TextBox, "txtNumOfColumns", "", ""},
    ControlRow{ControlKind::CommandButton, "cmdApplyNumberOfColumns", "&Apply", ""},
    ControlRow{ControlKind::Grid, "fgGrid", "", ""},
    ControlRow{ControlKind::Frame, "frameBottom", "", ""},
    ControlRow{ControlKind::Label, "lblColumn", "Column", ""},
    ControlRow{ControlKind::Label, "lblColumnNumber", "", ""},
    ControlRow{ControlKind::Label, "lblWidth", "Width", ""},
    ControlRow{ControlKind::TextBox, "txtColumnWidth", "", "The number of characters used for a specific column."},
    ControlRow{ControlKind::Label, "lblPadWith", "Pad With", ""},
    ControlRow{ControlKind::ComboBox, "cbPadWithCharacter", "",
               "What character to use to fill empty space. Empty space occurs when data is smaller than the width "
               "specified."},
    ControlRow{ControlKind::Label, "lblAlign", "Align", ""},
    ControlRow{ControlKind::ComboBox, "cbJustification", "", "Align the data to the right or left of any empty space."},
    ControlRow{ControlKind::CommandButton, "cmdColumnNext", "&Next", ""},
    ControlRow{ControlKind::CheckBox, "cbAdvancedOptionsShow", "Show Advanced Settings", ""},
    ControlRow{ControlKind::Frame, "frameAdvancedOptions", "", ""},
    ControlRow{ControlKind::Label, "lblRemove", "Remove", ""},
    ControlRow{ControlKind::ComboBox, "cbRemove", "", "Remove a column from the OUTPUT file."},
    ControlRow{ControlKind::Label, "lblPosition", "Position", ""},
    ControlRow{ControlKind::ComboBox, "cbPosition", "", "You may change the order of the columns in the OUTPUT file."},
    ControlRow{ControlKind::CommandButton, "cmdApply", "&Save and Close", ""},
    ControlRow{ControlKind::CommandButton, "cmdCancel", "&Cancel", ""},
};

struct MenuRow {
  std::string_view sName, sCaption, sButton;
};
constexpr std::array kMenus{MenuRow{"mnuSaveProfile", "Save Profile", "cmdSave"},
                            MenuRow{"mnuSaveAs", "Rename Profile", "cmdRenameProfile"},
                            MenuRow{"mnuDeleteProfile", "Delete Profile", "cmdDeleteProfile"},
                            MenuRow{"mnuManuallyEdit", "Manually Edit the Profile", "cmdEditProfile"},
                            MenuRow{"mnuReloadProfile", "Reload Profile", "cmdReloadProfile"}};

}  // namespace

void frmSpecifyFixedWidthText::MakeControls() {
  for (const ControlRow& row : kControls) Add(row.kind, row.sName, row.sCaption).sToolTip = row.sToolTip;
  for (const char* const pName : {"cbPadWithCharacter", "cbJustification", "cbRemove", "cbPosition"}) {
    Get(pName).bEditable = false;
  }
  for (const char* const pName : {"txtColumnWidth", "txtNumOfColumns"}) Get(pName).sTag = "TranslateFalse";
  Get("lblColumnNumber").sTag = "TranslateFalse";
  Add(ControlKind::Menu, "mnuFile", "&File");
  for (const MenuRow& row : kMenus) Add(ControlKind::Menu, row.sName, row.sCaption).sMenu = "mnuFile";
  Add(ControlKind::Menu, "mnuHelpMenuItem", "&Help");
  clsControl& help = Add(ControlKind::Menu, "mnuHelp", "Help &Contents");
  help.sMenu = "mnuHelpMenuItem";
  help.sShortcut = "F1";
}

void frmSpecifyFixedWidthText::Wire() {
  const auto record = [this] {
    bool bOk = true;
    if (!bLoading_) RecordChanges(bOk);
  };
  OnClick("cbJustification", record);
  OnClick("cbRemove", record);
  OnLostFocus("cbPadWithCharacter", record);
  OnLostFocus("cbJustification", record);
  OnClick("cbPadWithCharacter", [this] { cbPadWithCharacter_Click(); });
  OnClick("cbPosition", [this] { cbPosition_Click(); });
  OnClick("cbProfileList", [this] {
    if (!bLoading_) OpenProfile(ProfileName());
  });
  OnClick("cbAdvancedOptionsShow", [this] { ShowAdvanced(); });
  OnClick("cmdApplyNumberOfColumns", [this] { cmdApplyNumberOfColumns_Click(); });
  OnClick("cmdColumnNext", [this] { cmdColumnNext_Click(false); });
  OnClick("cmdSave", [this] { cmdSave_Click(); });
  OnClick("cmdApply", [this] { cmdApply_Click(); });
  OnClick("cmdCancel", [this] { cmdCancel_Click(); });
  OnClick("cmdDeleteProfile", [this] { cmdDeleteProfile_Click(); });
  OnClick("cmdEditProfile", [this] { cmdEditProfile_Click(); });
  OnClick("cmdReloadProfile", [this] { OpenProfile(ProfileName()); });
  OnClick("cmdRenameProfile", [this] { cmdRenameProfile_Click(); });
  OnClick("mnuHelp", [this] { KeyPressed("F1"); });
  for (const MenuRow& row : kMenus) {
    OnClick(row.sName, [this, sButton = row.sButton] { Click(sButton); });
  }
}

}  // namespace quillon
