#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "clsForm.h"
#include "clsProfileGrid.h"
#include "clsScreen.h"
#include "modCutFields.h"
#include "modProfileFile.h"

namespace quillon {

class frmMain;

/// The profile editor: manages the profiles of the Profiles folder and edits one, row by row. The edit fields mirror
/// the current row of the grid. Nothing reaches the file until Save, "Save and Close" or Rename. Grid rows count from
/// 0.
class frmSpecifyFixedWidthText : public clsForm {
 public:
  static constexpr double kDefaultHeight = 8355, kMinHeight = 6200;  ///< Twips
  static constexpr int kTimerMilliseconds = 300;
  static constexpr int kMaxShownWidth = 2000;  ///< A wider one is set back to 10 when its row is selected

  explicit frmSpecifyFixedWidthText(frmMain& owner);

  bool bSaved = false;  ///< The dialog closed through "Save and Close"
  double Height = kDefaultHeight;
  clsProfileGrid fgGrid;
  int CurrentRow() const { return nRow_; }
  int TopRow() const { return nTopRow_; }
  bool AdvancedShown() const { return Get("cbAdvancedOptionsShow").bChecked; }
  const std::vector<std::string>& Positions() const { return colPositions_; }
  frmMain& Owner() { return oOwner_; }

  // The cut as a drawing shows and edits it.
  /// The rows as a run would read them from the file; one that it couldn't is a column of one character.
  std::vector<ProfileColumn> Columns() const;
  /// Does an edit of the columns' edges in the rows. A column that is put in takes the attributes of the one it was cut
  /// from, or else of the one before it, and the place behind it in the output.
  void ChangeFields(const CutChange& change);
  /// Replaces all rows by one for each field, aligned to the left or the right, padded with blanks.
  void TakeFields(const std::vector<CutField>& fields, const std::vector<bool>& left);

  void Form_Load();
  /// Stores what the view has left in Height by then.
  void Form_Unload();
  void CloseRequested() override { cmdCancel_Click(); }
  bool KeyPressed(std::string_view sKey) override;

  // Events that only this form's grid and width box have.
  void fgGrid_Click(int nRow);
  /// A digit of the main keyboard or the number pad, 1 to 9, becomes the row's width.
  void fgGrid_KeyUp(char digit);
  void fgGrid_DblClick();
  void fgGrid_Scrolled(int nTopRow) { nTopRow_ = nTopRow; }
  void txtColumnWidth_ArrowKey(bool bDown);
  void txtColumnWidth_KeyUp(std::string_view sText);
  void txtColumnWidth_LostFocus(bool bToCancel);
  void cmdColumnNext_Click(bool bInNumberOfColumns);
  void Timer1_Timer();

 private:
  void MakeControls();
  void Wire();
  void SetupGrid();
  void SelectRow(int nRow);
  void ShowWidth();
  void ShowPad();
  void ShowChoices();
  void RecordChanges(bool& bOk);
  bool ValidWidth();
  void OpenProfile(std::string sName);
  void FillProfileList(std::string_view sSelect);
  void CreateDefaultProfileIfNone();
  void ShowAdvanced();

  void PositionDropDownListBoxPopulate();
  void PositionCollectionCreateViaGui(bool bCheckUnique);
  void PositionCollectionCreateAddUniqueItem(const std::string& sItem, bool bCheckUnique, bool& bOk);
  void PositionCollectionCreateDefault();
  void cbPadWithCharacter_Click();
  void cbPosition_Click();
  void ChangePositions(double nFrom, int nBy);
  double PositionOf(int nRow) const;
  void SetFieldWidth(int nRow, const CutField& field);
  void InsertRowBehind(int nRow, bool bInPlace);
  void RemoveRow(int nRow);
  bool HasShownWidth(int nRow) const;
  void CountRows();

  void cmdApplyNumberOfColumns_Click();
  void cmdSave_Click();
  void cmdApply_Click();
  void cmdCancel_Click();
  void cmdDeleteProfile_Click();
  void cmdEditProfile_Click();
  void cmdRenameProfile_Click();
  void Tell(std::string_view sText, bool bCritical = false);
  std::string ProfileName() const { return Get("cbProfileList").sText; }

  frmMain& oOwner_;
  bool bLoading_ = false;
  bool bUnloadDone_ = false;
  bool bTimerOn_ = true;
  std::string sLastGoodWidth_ = "10";
  int lPadIndexBeforeDropDown_ = 32;  ///< The pad to go back to from the entry that is none
  int nRow_ = 0, nTopRow_ = 0;
  std::vector<std::string> colPositions_;
  std::unordered_set<std::string> positionsSeen_;
};

/// Asks for a new name.
class frmChooseText : public clsForm {
 public:
  explicit frmChooseText(std::string_view sNow);
  void Form_Load(clsScreen& screen);
  std::string sChosenText;
  bool bCancelled = false;
  bool KeyPressed(std::string_view sKey) override;
  void CloseRequested() override;
};

}  // namespace quillon
