#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillon {

enum class ControlKind {
  Label,
  TextBox,
  CommandButton,
  CheckBox,
  OptionButton,
  Frame,
  ComboBox,  ///< Drop-down list; editable if bEditable
  ListBox,
  Menu,
  ToolButton,
  Panel,  ///< One panel of a status bar
  Grid,
  TabStrip,
  Picture
};

/// The state of one control, whatever draws it. Names are unique in a form together with the index, which counts the
/// members of a control array from 0.
struct clsControl {
  std::string sName;
  int nIndex = 0;
  ControlKind kind = ControlKind::Label;
  std::string sCaption;  ///< "&" marks the access key
  std::string sToolTip;
  std::string sText;  ///< Of text boxes, combo boxes and panels
  std::vector<std::string> items;
  int lListIndex = -1;    ///< Selected item, from 0; tab of a tab strip
  bool bChecked = false;  ///< Check boxes and option buttons
  bool bEnabled = true;
  bool bVisible = true;
  bool bEditable = true;                   ///< A combo box takes typed text
  std::string sTag;                        ///< "TranslateFalse" exempts the main text from translation
  std::string sFontName;                   ///< Forced by the language; empty: the toolkit's own
  std::string sShortcut;                   ///< Of menus: "Ctrl+S"
  std::string sMenu;                       ///< Of menus: the name of the menu that holds it; empty for a top menu
  int64_t lSelStart = -1, lSelLength = 0;  ///< Selection that the view is to make; -1: none asked for
};

}  // namespace quillon
