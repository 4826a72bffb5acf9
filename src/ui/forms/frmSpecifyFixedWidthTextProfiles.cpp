// The profile editor's positions of columns, and its profiles on disk.

#include <algorithm>

#include "frmMain.h"
#include "frmSpecifyFixedWidthText.h"
#include "modFiles.h"
#include "modFormTranslation.h"
#include "modNumbers.h"
#include "modPaths.h"
#include "modProfileFile.h"
#include "modProfileList.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

void frmSpecifyFixedWidthText::PositionDropDownListBoxPopulate() {
  clsControl& list = Get("cbPosition");
  list.items.clear();
  for (int n = 1; n <= fgGrid.Rows(); ++n) list.items.push_back(std::to_string(n));
}

// A pair of sums and a test for duplicates, no full test of a permutation.
void frmSpecifyFixedWidthText::PositionCollectionCreateViaGui(bool bCheckUnique) {
  colPositions_.clear();
  double nPositions = 0;
  double nNumbers = 0;
  bool bOk = true;
  for (int i = 1; i <= fgGrid.Rows() && bOk; ++i) {
    std::string sText = fgGrid.Text(i - 1, clsProfileGrid::kPosition);
    const std::optional<double> value = NumericValue(sText);
    if (value) {
      nPositions += *value;
    } else {
      sText = std::to_string(i);
    }
    nNumbers += i;
    PositionCollectionCreateAddUniqueItem(sText, bCheckUnique, bOk);
  }
  if (bOk && nPositions == nNumbers) return;
  const bool bBefore = std::exchange(bLoading_, true);
  PositionCollectionCreateDefault();
  bLoading_ = bBefore;
  clsControl& list = Get("cbPosition");
  list.lListIndex = list.items.empty() ? -1 : 0;
  list.sText = list.items.empty() ? std::string() : list.items.front();
}

void frmSpecifyFixedWidthText::PositionCollectionCreateAddUniqueItem(const std::string& sItem, bool bCheckUnique,
                                                                     bool& bOk) {
  if (positionsSeen_.size() != colPositions_.size()) {
    positionsSeen_.clear();
    positionsSeen_.insert(colPositions_.begin(), colPositions_.end());
  }
  bOk = IsNumericText(sItem) && (!bCheckUnique || positionsSeen_.insert(sItem).second);
  if (bOk) colPositions_.push_back(sItem);
}

void frmSpecifyFixedWidthText::PositionCollectionCreateDefault() {
  colPositions_.clear();
  for (int n = 1; n <= fgGrid.Rows(); ++n) {
    colPositions_.push_back(std::to_string(n));
    fgGrid.SetText(n - 1, clsProfileGrid::kPosition, colPositions_.back());
  }
}

// Moves one column; it doesn't swap two.
void frmSpecifyFixedWidthText::cbPosition_Click() {
  if (bLoading_) return;
  const std::string sChosen = Get("cbPosition").sText;
  const auto found = std::find(colPositions_.begin(), colPositions_.end(), sChosen);
  if (found == colPositions_.end()) return;
  colPositions_.erase(found);
  const auto nAt = std::min(static_cast<size_t>(nRow_), colPositions_.size());
  colPositions_.insert(colPositions_.begin() + static_cast<std::ptrdiff_t>(nAt), sChosen);
  for (size_t n = 0; n < colPositions_.size(); ++n) {
    fgGrid.SetText(static_cast<int>(n), clsProfileGrid::kPosition, colPositions_[n]);
  }
  bool bOk = true;
  RecordChanges(bOk);
}

void frmSpecifyFixedWidthText::OpenProfile(std::string sName) {
  oOwner_.SetBusyPointer(true);
  OpenProfileFromDisk(sName, fgGrid, oOwner_.Host());
  PositionDropDownListBoxPopulate();
  PositionCollectionCreateViaGui(true);
  nTopRow_ = 0;
  const bool bBefore = bLoading_;
  SelectRow(0);
  bLoading_ = bBefore;
  Get("txtNumOfColumns").sText = std::to_string(fgGrid.Rows());
  gbSuppressChanges = false;
  oOwner_.SetBusyPointer(false);
}

void frmSpecifyFixedWidthText::FillProfileList(std::string_view sSelect) {
  clsControl& combo = Get("cbProfileList");
  oOwner_.FillProfileList(combo, sSelect);
  // A profile that is there in other letters is not selected; what was typed stays.
  if (combo.lListIndex < 0) combo.sText = sSelect;
}

void frmSpecifyFixedWidthText::CreateDefaultProfileIfNone() {
  clsControl& combo = Get("cbProfileList");
  if (!combo.items.empty()) return;
  ProfileList list;
  CreateDefaultProfileIfNoneExists(list, fgGrid, oOwner_.Host());
  combo.items = list.names;
  combo.lListIndex = list.nSelected;
  combo.sText = kDefaultProfile;
}

void frmSpecifyFixedWidthText::cmdSave_Click() {
  const std::string sName = ProfileName();
  // Else the list would name another profile over these rows.
  if (SaveProfileToDisk(sName, fgGrid, oOwner_.Host())) FillProfileList(sName);
}

void frmSpecifyFixedWidthText::cmdApply_Click() {
  if (!SaveProfileToDisk(ProfileName(), fgGrid, oOwner_.Host())) return;
  oOwner_.sActiveFixedWidthProfile = ProfileName();
  bSaved = true;
  Unloaded();
  Form_Unload();
}

void frmSpecifyFixedWidthText::cmdCancel_Click() {
  bTimerOn_ = false;
  bSaved = false;
  Unloaded();
  Form_Unload();
}

void frmSpecifyFixedWidthText::cmdDeleteProfile_Click() {
  if (GetCountOfValidProfiles(kProfilesSubFolder) < 2) return Tell("You must have at least one profile.");
  DeleteFileForced(ProfilePath(ProfileName()));
  FillProfileList(oOwner_.Get("cbFixedWidthProfileList").sText);
  OpenProfile(ProfileName());
}

void frmSpecifyFixedWidthText::cmdEditProfile_Click() {
  oOwner_.Host().OpenPath(HostPath(ProfilePath(ProfileName())), OpenVerb::Edit);
  Get("cmdReloadProfile").bVisible = true;
}

void frmSpecifyFixedWidthText::cmdRenameProfile_Click() {
  const std::string sOld = ProfileName();
  frmChooseText dialog(sOld);
  dialog.Form_Load(oOwner_.Screen());
  oOwner_.Screen().ShowModal(dialog);
  if (dialog.bCancelled || dialog.sChosenText.empty()) return;
  const std::string sNew = dialog.sChosenText;
  const bool bRenamed =
      !HasSeparator(sNew) && !FileExists(ProfilePath(sNew)) && MoveFileOver(ProfilePath(sOld), ProfilePath(sNew));
  if (!bRenamed) {
    return Tell(
        "Unable to rename profile. Check that the file exists in the 'Profiles' folder. Also, only use valid file "
        "names.");
  }
  Get("cbProfileList").sText = sNew;
  SaveProfileToDisk(sNew, fgGrid, oOwner_.Host());
  FillProfileList(sNew);
}

frmChooseText::frmChooseText(std::string_view sNow) : clsForm("frmChooseText") {
  sCaption = "Rename Profile";
  Add(ControlKind::Label, "Label1", "New Profile Name");
  clsControl& text = Add(ControlKind::TextBox, "txtChoose");
  text.sText = sNow;
  text.sTag = "TranslateFalse";
  text.lSelStart = 0;
  text.lSelLength = static_cast<int64_t>(CharCount(sNow));
  Add(ControlKind::CommandButton, "cmdApply", "&Done");
  Add(ControlKind::CommandButton, "cmdCancel", "&Cancel");
  OnClick("cmdApply", [this] {
    sChosenText = Get("txtChoose").sText;
    bCancelled = false;
    Unloaded();
  });
  OnClick("cmdCancel", [this] { CloseRequested(); });
}

void frmChooseText::Form_Load(clsScreen& screen) {
  TranslateForm(*this, screen);
}

void frmChooseText::CloseRequested() {
  bCancelled = true;
  Unloaded();
}

bool frmChooseText::KeyPressed(std::string_view sKey) {
  if (sKey == "Escape") CloseRequested();
  return sKey == "Escape";
}

}  // namespace quillon
