#include "frmQLNOptions.h"

#include "frmMain.h"
#include "modCharacterList.h"
#include "modFormTranslation.h"
#include "modHelp.h"
#include "modNumbers.h"
#include "modTranslator.h"

namespace quillon {

frmQLNOptions::frmQLNOptions(frmMain& owner) : clsForm("frmQLNOptions"), oOwner_(owner) {
  sCaption = "Quillon Options";
  Add(ControlKind::TabStrip, "tsDisplay").items = {"Input File", "Output File"};
  MakeInputTab();
  MakeOutputTab();
  Add(ControlKind::CommandButton, "cmdApply", "&Apply");
  Add(ControlKind::CommandButton, "cmdCancel", "&Cancel");
  OnClick("cmdApply", [this] { cmdApply_Click(); });
  OnClick("cmdCancel", [this] { Unloaded(); });
  OnClick("tsDisplay", [this] { ShowTab(); });
  OnClick("cbClearOutputFileBeforeProcessing", [this] { MarkJobChanged(); });
  OnClick("cbUnix", [this] { MarkJobChanged(); });
  OnClick("cbTrimFields", [this] { MarkJobChanged(); });
  OnChange("txtSheetTarget", [this] { MarkJobChanged(); });
  OnChange("txtTabSize", [this] { MarkJobChanged(); });
}

void frmQLNOptions::MakeInputTab() {
  Add(ControlKind::Frame, "FrameArray", "Input File Options", 0);
  Add(ControlKind::Frame, "frameRecipeInput", "Recipe and Marked File Specific Options");
  Add(ControlKind::Label, "lblTabSize", "Tab Size:");
  Add(ControlKind::TextBox, "txtTabSize").sTag = "TranslateFalse";
  Add(ControlKind::Label, "lblTabSizeNote",
      "When the text in the input file contains tab characters you must specify the tab stop size that was used when "
      "the "
      "file was created. Typical values are 2 to 16, with 8 used most commonly.");
  Add(ControlKind::CheckBox, "cbUnix", "Support Unix style text files");
  Add(ControlKind::CheckBox, "cbTrimFields", "Drop the blanks around fields");
  Add(ControlKind::Frame, "frameProfileInput", "Profile Method Specific Options");
  Add(ControlKind::Frame, "frameInputFormat", "Input File Format");
  Add(ControlKind::OptionButton, "rbInputFileFormat", "ASCII", 0);
  Add(ControlKind::OptionButton, "rbInputFileFormat", "UNICODE", 1);
  Add(ControlKind::CheckBox, "cbTreatDataAsText", "Treat values as text (i.e. leave leading zeroes intact)");
  Add(ControlKind::Label, "lblTreatDataAsTextNote",
      "When the text within the input file contains data beginning with a zero and converting to Excel, Excel will "
      "truncate the leading zero. Try this option to overcome this issue and retain the leading zeros.");
  Add(ControlKind::TextBox, "txtStartColRow").sTag = "TranslateFalse";
  Add(ControlKind::Label, "lblStartColRowNote",
      "Begin to gather data at specific row/column. For example: B4 = 2nd column 4th row.");
}

void frmQLNOptions::MakeOutputTab() {
  Add(ControlKind::Frame, "FrameArray", "Output File Options", 1);
  Add(ControlKind::Frame, "frameExcel", "Excel");
  Add(ControlKind::CheckBox, "cbClearOutputFileBeforeProcessing", "&Clear sheet contents before processing");
  Add(ControlKind::Label, "lblSheetTarget", "Sheet by name or number");
  Add(ControlKind::TextBox, "txtSheetTarget").sTag = "TranslateFalse";
  Add(ControlKind::Label, "lblSheetTargetNote", "e.g. \"Budget, Expense\" or \"2\"  for 2nd sheet.");
  Add(ControlKind::Frame, "frameCsv", "CSV");
  Add(ControlKind::Label, "lblCharacter1", "Delimitation Character (i.e. Separation Character)");
  Add(ControlKind::ComboBox, "cbCharacter1").bEditable = false;
  Add(ControlKind::Label, "lblCharacter1Note",
      "Specify the separation character used when converting to a CSV file. The most frequently used characters are: "
      "Comma [44]  Tab [9]  Bar [124].");
  Add(ControlKind::Frame, "frameProfileOutput", "Profile Method Specific Options");
  Add(ControlKind::CheckBox, "cbRemoveExtraPadChars", "Remove extra pad character(s) from the output file.");
  Add(ControlKind::Frame, "frameQuotes", "Use Double Quotes");
  Add(ControlKind::OptionButton, "rbUseDoubleQuotes", "Never", 0);
  Add(ControlKind::OptionButton, "rbUseDoubleQuotes", "Sometimes", 1);
  Add(ControlKind::OptionButton, "rbUseDoubleQuotes", "Always", 2);
}

void frmQLNOptions::Form_Load() {
  TranslateForm(*this, oOwner_.Screen());
  Get("txtTabSize").sText = std::to_string(oOwner_.lTabSize);
  Get("cbUnix").bChecked = oOwner_.bUnix;
  Get("cbTrimFields").bChecked = oOwner_.bTrimFields;
  Get("cbClearOutputFileBeforeProcessing").bChecked = oOwner_.bClearOutputFileBeforeProcessing;
  Get("txtSheetTarget").sText = oOwner_.sSheetTarget;
  clsControl& list = Get("cbCharacter1");
  const auto characters = FillInCharacterSelectionListBox();
  list.items.assign(characters.begin(), characters.end());
  // A separator that the list lacks leaves its first entry selected; Apply then writes what is shown.
  const int32_t lCode = oOwner_.lDelimitationCharacter;
  list.lListIndex = lCode >= 0 && static_cast<size_t>(lCode) < list.items.size() ? lCode : 0;
  list.sText = list.items[static_cast<size_t>(list.lListIndex)];
  Get("txtStartColRow").sText = oOwner_.sStartColRow;
  Get("cbTreatDataAsText").bChecked = oOwner_.bTreatDataAsText;
  const int32_t lQuotes = oOwner_.lUseDoubleQuotes;
  Get("rbUseDoubleQuotes", lQuotes == 1 || lQuotes == 2 ? lQuotes : 0).bChecked = true;
  Get("rbInputFileFormat", oOwner_.bIsUnicode ? 1 : 0).bChecked = true;
  Get("cbRemoveExtraPadChars").bChecked = oOwner_.Trims();
  Get("tsDisplay").lListIndex = oOwner_.lLastOptionsTabDisplayed;
  ShowTab();
}

void frmQLNOptions::ShowTab() {
  const int lTab = Get("tsDisplay").lListIndex;
  for (int i = 0; i < 2; ++i) Get("FrameArray", i).bVisible = i == lTab;
}

void frmQLNOptions::MarkJobChanged() {
  oOwner_.bAskToSaveBMKFileBeforeExit = true;
}

void frmQLNOptions::cmdApply_Click() {
  const std::optional<int32_t> lTabSize = ParseWholeNumber(Get("txtTabSize").sText);
  if (!lTabSize) {
    // Nothing has been copied yet; the dialog stays open, where the size stands.
    oOwner_.Host().ShowMessage(Translate("The tab size must be a whole number."), Translate("Error"),
                               MessageIcon::Critical, MessageButtons::Ok);
    Get("tsDisplay").lListIndex = 0;
    ShowTab();
    Refresh();
    Focus("txtTabSize");
    return;
  }
  oOwner_.lTabSize = *lTabSize;
  oOwner_.bClearOutputFileBeforeProcessing = Get("cbClearOutputFileBeforeProcessing").bChecked;
  oOwner_.bUnix = Get("cbUnix").bChecked;
  oOwner_.bTrimFields = Get("cbTrimFields").bChecked;
  oOwner_.sSheetTarget = Get("txtSheetTarget").sText;
  oOwner_.lDelimitationCharacter = Get("cbCharacter1").lListIndex;
  oOwner_.lLastOptionsTabDisplayed = Get("tsDisplay").lListIndex;
  oOwner_.sStartColRow = Get("txtStartColRow").sText;
  oOwner_.bTreatDataAsText = Get("cbTreatDataAsText").bChecked;
  oOwner_.bIsUnicode = Get("rbInputFileFormat", 1).bChecked;
  oOwner_.lUseDoubleQuotes = Get("rbUseDoubleQuotes", 2).bChecked ? 2 : Get("rbUseDoubleQuotes", 1).bChecked ? 1 : 0;
  oOwner_.SetTrims(Get("cbRemoveExtraPadChars").bChecked);
  Unloaded();
}

bool frmQLNOptions::KeyPressed(std::string_view sKey) {
  if (sKey == "Escape") Click("cmdCancel");
  if (sKey == "F1") OpenHelpTopic(oOwner_.Host(), 0);
  return sKey == "Escape" || sKey == "F1";
}

}  // namespace quillon
