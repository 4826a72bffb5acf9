#include "frmSpecifyFixedWidthText.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "frmMain.h"
#include "modCharacterList.h"
#include "modFormTranslation.h"
#include "modHelp.h"
#include "modNumbers.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

using Grid = clsProfileGrid;

constexpr std::string_view kOnlyPositiveWidth = "Please use only positive numbers for column width";
constexpr std::string_view kOnlyNumericWidth = "Please use only numeric values for column width";
constexpr std::string_view kOnlyPositiveCount = "Please use only positive numbers for the number of columns";
constexpr int kSpace = 32;
constexpr int kProfileTopic = 50;
constexpr std::string_view kHeightSection = "SpecifyFixedWidthFormHeight";

void SelectAll(clsControl& box) {
  box.lSelStart = 0;
  box.lSelLength = static_cast<int64_t>(CharCount(box.sText));
}

void SelectIn(clsControl& list, int nIndex) {
  list.lListIndex = nIndex;
  list.sText = nIndex >= 0 && static_cast<size_t>(nIndex) < list.items.size() ? list.items[static_cast<size_t>(nIndex)]
                                                                              : std::string();
}

bool Holds(std::string_view sText, std::string_view sPiece) {
  return sText.find(sPiece) != std::string_view::npos;
}

/// A numeric text as a whole number that any control can show; 0 for what is none or too large.
int WholeOr0(std::string_view sText) {
  return ParseWholeNumber(sText).value_or(0);
}

}  // namespace

frmSpecifyFixedWidthText::frmSpecifyFixedWidthText(frmMain& owner)
    : clsForm("frmSpecifyFixedWidthText"), oOwner_(owner) {
  sCaption = "Converting to/from a Fixed Width Text File";
  MakeControls();
  Wire();
}

void frmSpecifyFixedWidthText::Form_Load() {
  sLastGoodWidth_ = "10";
  for (const std::string_view sMessage : {kOnlyPositiveWidth, kOnlyNumericWidth, kOnlyPositiveCount}) {
    Translate(sMessage);
  }
  TranslateForm(*this, oOwner_.Screen());
  bLoading_ = true;
  SetupGrid();
  const auto characters = FillInCharacterSelectionListBox();
  Get("cbPadWithCharacter").items.assign(characters.begin(), characters.end());
  Get("cbJustification").items = {Translate("Left"), Translate("Right")};
  Get("cbRemove").items = {Translate("No"), Translate("Yes")};
  Get("lblColumnNumber").sCaption = "1";
  FillProfileList(oOwner_.Get("cbFixedWidthProfileList").sText);
  CreateDefaultProfileIfNone();
  OpenProfile(ProfileName());
  Get("cbAdvancedOptionsShow").bChecked = oOwner_.bShowAdvancedOptions_Profile_Editor;
  ShowAdvanced();
  bLoading_ = false;
  bSaved = false;
  const double nStored = LeadingNumber(StoreGet(kHeightSection, "Height", ShortestDouble(kDefaultHeight)));
  if (nStored >= kMinHeight) Height = nStored;
  SelectAll(Get("txtColumnWidth"));
}

void frmSpecifyFixedWidthText::Form_Unload() {
  if (std::exchange(bUnloadDone_, true)) return;
  StoreSet(kHeightSection, "Height", ShortestDouble(Height));
  oOwner_.bShowAdvancedOptions_Profile_Editor = AdvancedShown();
}

bool frmSpecifyFixedWidthText::KeyPressed(std::string_view sKey) {
  if (sKey == "Escape") cmdCancel_Click();
  if (sKey == "F1") OpenHelpTopic(oOwner_.Host(), kProfileTopic);
  return sKey == "Escape" || sKey == "F1";
}

void frmSpecifyFixedWidthText::Tell(std::string_view sText, bool bCritical) {
  oOwner_.Host().ShowMessage(Translate(sText), sCaption, bCritical ? MessageIcon::Critical : MessageIcon::Information,
                             MessageButtons::Ok);
}

void frmSpecifyFixedWidthText::SetupGrid() {
  const bool bBefore = std::exchange(gbSuppressChanges, true);
  fgGrid.SetRows(0);
  gbSuppressChanges = bBefore;
}

void frmSpecifyFixedWidthText::ShowAdvanced() {
  Get("frameAdvancedOptions").bVisible = AdvancedShown();
}

void frmSpecifyFixedWidthText::fgGrid_Click(int nRow) {
  SelectRow(nRow);
  Refresh();
}

void frmSpecifyFixedWidthText::SelectRow(int nRow) {
  if (fgGrid.Rows() == 0 || nRow < 0 || nRow >= fgGrid.Rows()) return;
  nRow_ = nRow;
  bLoading_ = true;
  Get("lblColumnNumber").sCaption = std::to_string(nRow + 1);
  ShowWidth();
  ShowPad();
  ShowChoices();
  bLoading_ = false;
}

// The limit holds here only: a larger width can be typed and saved, and is set back when its row is selected again.
void frmSpecifyFixedWidthText::ShowWidth() {
  const std::string sShown = HasShownWidth(nRow_) ? fgGrid.Text(nRow_, Grid::kWidth) : "10";
  fgGrid.SetText(nRow_, Grid::kWidth, sShown);
  Get("txtColumnWidth").sText = sShown;
}

void frmSpecifyFixedWidthText::ShowPad() {
  clsControl& pads = Get("cbPadWithCharacter");
  std::string sPad = fgGrid.Text(nRow_, Grid::kPad);
  if (!Holds(sPad, "]") || !Holds(sPad, "[")) fgGrid.SetText(nRow_, Grid::kPad, sPad = "[32] Space");
  const size_t nOpen = sPad.find('[') + 1;
  const size_t nClose = sPad.find(']', nOpen);
  const std::string sCode = nClose == std::string::npos ? std::string() : sPad.substr(nOpen, nClose - nOpen);
  const int nCode = IsNumericText(sCode) ? WholeOr0(sCode) : -1;
  const bool bKnown = nCode >= 0 && static_cast<size_t>(nCode) < pads.items.size();
  SelectIn(pads, bKnown ? nCode : kSpace);
  lPadIndexBeforeDropDown_ = pads.lListIndex;
  if (!bKnown) fgGrid.SetText(nRow_, Grid::kPad, pads.sText);
}

void frmSpecifyFixedWidthText::ShowChoices() {
  const bool bLeft = Holds(fgGrid.Text(nRow_, Grid::kAlign), "Left");
  SelectIn(Get("cbJustification"), bLeft ? 0 : 1);
  fgGrid.SetText(nRow_, Grid::kAlign, bLeft ? "Left" : "Right");
  const bool bKept = Holds(fgGrid.Text(nRow_, Grid::kRemove), "No");
  SelectIn(Get("cbRemove"), bKept ? 0 : 1);
  fgGrid.SetText(nRow_, Grid::kRemove, bKept ? "No" : "Yes");
  const std::string& sPosition = fgGrid.Text(nRow_, Grid::kPosition);
  clsControl& positions = Get("cbPosition");
  if (!IsNumericText(sPosition)) return;
  const double nIndex = std::abs(NumericValue(sPosition).value_or(0) - 1);
  if (nIndex < static_cast<double>(positions.items.size())) SelectIn(positions, static_cast<int>(nIndex));
}

void frmSpecifyFixedWidthText::RecordChanges(bool& bOk) {
  clsControl& width = Get("txtColumnWidth");
  bOk = !width.sText.empty();
  if (!bOk) return;
  if (!IsNumericText(width.sText) || NumericValue(width.sText).value_or(0) < 1) {
    Tell(kOnlyPositiveWidth, true);
    width.sText.clear();
    width.lSelStart = 0;
    return;
  }
  if (fgGrid.Rows() == 0) return;
  fgGrid.SetText(nRow_, Grid::kWidth, width.sText);
  fgGrid.SetText(nRow_, Grid::kPad, Get("cbPadWithCharacter").sText);
  fgGrid.SetText(nRow_, Grid::kAlign, Get("cbJustification").lListIndex == 0 ? "Left" : "Right");
  fgGrid.SetText(nRow_, Grid::kRemove, Get("cbRemove").lListIndex == 0 ? "No" : "Yes");
  fgGrid.SetText(nRow_, Grid::kPosition, std::to_string(Get("cbPosition").lListIndex + 1));
}

void frmSpecifyFixedWidthText::txtColumnWidth_ArrowKey(bool bDown) {
  const int nTo = nRow_ + (bDown ? 1 : -1);
  SelectRow(nTo);
  SelectAll(Get("txtColumnWidth"));
  Refresh();
}

void frmSpecifyFixedWidthText::txtColumnWidth_KeyUp(std::string_view sText) {
  if (bLoading_) return;
  clsControl& width = Get("txtColumnWidth");
  width.sText = sText;
  if (!sText.empty()) {
    const bool bGood = IsNumericText(sText) && NumericValue(sText).value_or(-1) >= 0;
    if (bGood) {
      sLastGoodWidth_ = sText;
    } else {
      width.sText = sLastGoodWidth_;
      width.lSelStart = static_cast<int64_t>(CharCount(width.sText));
      width.lSelLength = 0;
    }
  }
  bool bOk = true;
  RecordChanges(bOk);
  Refresh();
}

bool frmSpecifyFixedWidthText::ValidWidth() {
  clsControl& width = Get("txtColumnWidth");
  const bool bNumeric = IsNumericText(width.sText);
  if (bNumeric) width.sText = std::to_string(WholeOr0(width.sText));
  if (bNumeric && WholeOr0(width.sText) >= 1) return true;
  Tell(bNumeric ? kOnlyPositiveWidth : kOnlyNumericWidth);
  SelectAll(width);
  return false;
}

void frmSpecifyFixedWidthText::txtColumnWidth_LostFocus(bool bToCancel) {
  if (bLoading_ || bToCancel || IsUnloaded()) return;
  bool bOk = true;
  if (ValidWidth()) RecordChanges(bOk);
  Refresh();
}

void frmSpecifyFixedWidthText::fgGrid_KeyUp(char digit) {
  if (digit < '1' || digit > '9' || fgGrid.Rows() == 0) return;
  clsControl& width = Get("txtColumnWidth");
  width.sText = std::string(1, digit);
  width.lSelStart = 1;
  width.lSelLength = 0;
  fgGrid.SetText(nRow_, Grid::kWidth, width.sText);
  Focus("txtColumnWidth");
  Refresh();
}

void frmSpecifyFixedWidthText::fgGrid_DblClick() {
  if (Get("frameAdvancedOptions").bVisible || fgGrid.Rows() == 0) return;
  SelectItem("cbJustification", fgGrid.Text(nRow_, Grid::kAlign) == "Left" ? 1 : 0);
}

void frmSpecifyFixedWidthText::cmdColumnNext_Click(bool bInNumberOfColumns) {
  if (bInNumberOfColumns) {
    cmdApplyNumberOfColumns_Click();
    Focus("fgGrid");
    return Refresh();
  }
  bool bOk = true;
  RecordChanges(bOk);
  if (bOk) {
    constexpr int kRowsBelowTop = 10;
    if (nRow_ + 1 < fgGrid.Rows()) {
      SelectRow(nRow_ + 1);
      if (nRow_ - nTopRow_ >= kRowsBelowTop) ++nTopRow_;
    }
    SelectAll(Get("txtColumnWidth"));
  }
  Refresh();
}

void frmSpecifyFixedWidthText::cbPadWithCharacter_Click() {
  if (bLoading_) return;
  clsControl& pads = Get("cbPadWithCharacter");
  // The first entry is no character.
  if (pads.lListIndex == 0) SelectIn(pads, lPadIndexBeforeDropDown_);
  lPadIndexBeforeDropDown_ = pads.lListIndex;
  bool bOk = true;
  RecordChanges(bOk);
}

void frmSpecifyFixedWidthText::cmdApplyNumberOfColumns_Click() {
  if (fgGrid.Rows() == 0) return;
  clsControl& box = Get("txtNumOfColumns");
  if (!IsNumericText(box.sText)) {
    Tell(kOnlyPositiveCount);
    Focus("txtNumOfColumns");
    return SelectAll(box);
  }
  // A grid is read up to this many rows and one; more could be saved but not read back.
  constexpr int kMost = Grid::kMostRows + 1;
  const double nAsked = NumericValue(box.sText).value_or(1);
  const int nWanted = nAsked > kMost ? kMost : std::max(WholeOr0(box.sText), 1);
  if (nAsked < 1 || nAsked > kMost) box.sText = std::to_string(nWanted);
  if (nWanted < fgGrid.Rows()) fgGrid.SetRows(nWanted);
  for (int n = fgGrid.Rows(); n < nWanted; ++n) {
    fgGrid.RepeatRow(n - 1);
    for (const auto column : {Grid::kNumber, Grid::kPosition}) fgGrid.SetText(n, column, std::to_string(n + 1));
  }
  PositionDropDownListBoxPopulate();
  PositionCollectionCreateViaGui(true);
  SelectRow(std::min(nRow_, fgGrid.Rows() - 1));
}

void frmSpecifyFixedWidthText::Timer1_Timer() {
  if (!bTimerOn_) return;
  const clsControl& count = Get("txtNumOfColumns");
  if (IsNumericText(count.sText)) {
    Get("cmdApplyNumberOfColumns").bEnabled = NumericValue(count.sText).value_or(0) != fgGrid.Rows();
  }
  const clsControl& list = Get("cbProfileList");
  const bool bKnown = std::find(list.items.begin(), list.items.end(), list.sText) != list.items.end();
  for (const char* const pName : {"cmdRenameProfile", "cmdDeleteProfile", "cmdEditProfile"}) {
    Get(pName).bEnabled = bKnown;
  }
  Get("cmdReloadProfile").bVisible = bKnown;
  Refresh();
}

}  // namespace quillon
