#include <algorithm>

#include "clsDesktopFixture.h"
#include "clsProfileCut.h"
#include "frmSpecifyFixedWidthText.h"

namespace quillon {
namespace {

using Grid = clsProfileGrid;

class ProfileEditor : public clsDesktopFixture {
 protected:
  void SetUp() override {
    clsDesktopFixture::SetUp();
    Load();
    editor_.Form_Load();
  }
  std::string Cell(int nRow, Grid::Column column) { return editor_.fgGrid.Text(nRow, column); }
  /// A grid column from top to bottom.
  std::string All(Grid::Column column) {
    std::string s;
    for (int n = 0; n < editor_.fgGrid.Rows(); ++n) s += Cell(n, column) + " ";
    return s;
  }
  std::string Positions() { return All(Grid::kPosition); }
  void Open(std::string_view sRows) {
    folder_.Write(Data("Profiles/p.txt"), sRows);
    editor_.Get("cbProfileList").items.push_back("p");
    editor_.SelectItem("cbProfileList", static_cast<int>(editor_.Get("cbProfileList").items.size()) - 1);
  }
  static std::string Row(const std::string& sNumber, const std::string& sWidth, const std::string& sPosition) {
    return sNumber + "\t" + sWidth + "\t[32] Space\tLeft\tNo\t" + sPosition + "\t\t\r\n";
  }
  frmSpecifyFixedWidthText editor_{form_};
};

TEST_F(ProfileEditor, StartsWithTheFiveDefaultRows) {
  ASSERT_EQ(editor_.fgGrid.Rows(), 5);
  EXPECT_EQ(Cell(3, Grid::kWidth), "15");
  EXPECT_EQ(Text("cbFixedWidthProfileList"), "Default-Profile");
  EXPECT_EQ(editor_.Get("txtColumnWidth").sText, "10");
  EXPECT_EQ(editor_.Height, frmSpecifyFixedWidthText::kDefaultHeight);
}

TEST_F(ProfileEditor, KeepsTheLastGoodWidthAndTakesDigitsFromTheGrid) {
  editor_.txtColumnWidth_KeyUp("22");
  EXPECT_EQ(Cell(0, Grid::kWidth), "22");
  editor_.txtColumnWidth_KeyUp("22x");
  EXPECT_EQ(editor_.Get("txtColumnWidth").sText, "22");
  editor_.txtColumnWidth_KeyUp("0");
  EXPECT_EQ(host_.messages.back().sText, "Please use only positive numbers for column width");
  EXPECT_EQ(editor_.Get("txtColumnWidth").sText, "");
  EXPECT_EQ(Cell(0, Grid::kWidth), "22");
  editor_.txtColumnWidth_KeyUp("5000");
  EXPECT_EQ(Cell(0, Grid::kWidth), "5000");
  editor_.txtColumnWidth_ArrowKey(true);
  EXPECT_EQ(editor_.CurrentRow(), 1);
  editor_.fgGrid_KeyUp('7');
  editor_.fgGrid_KeyUp('0');
  EXPECT_EQ(Cell(1, Grid::kWidth), "7");
  editor_.txtColumnWidth_ArrowKey(false);
  EXPECT_EQ(Cell(0, Grid::kWidth), "10");  // set back when the row is selected again
  editor_.Get("txtColumnWidth").sText = "abc";
  editor_.txtColumnWidth_LostFocus(true);
  const size_t nMessages = host_.messages.size();
  editor_.txtColumnWidth_LostFocus(false);
  EXPECT_EQ(host_.messages.size(), nMessages + 1);
}

TEST_F(ProfileEditor, TheFirstPadEntryIsNoCharacter) {
  editor_.SelectItem("cbPadWithCharacter", 65);
  EXPECT_EQ(Cell(0, Grid::kPad), "[65] A");
  editor_.SelectItem("cbPadWithCharacter", 0);
  EXPECT_EQ(Cell(0, Grid::kPad), "[65] A");
  editor_.fgGrid_Click(1);
  editor_.SelectItem("cbPadWithCharacter", 0);
  EXPECT_EQ(Cell(1, Grid::kPad), "[32] Space");
  editor_.fgGrid_Click(0);
  editor_.fgGrid_DblClick();
  EXPECT_EQ(Cell(0, Grid::kAlign), "Left");
  editor_.fgGrid_DblClick();
  EXPECT_EQ(Cell(0, Grid::kAlign), "Right");
}

TEST_F(ProfileEditor, ChangesTheNumberOfColumnsAtTheEnd) {
  editor_.TypeText("txtNumOfColumns", "3");
  editor_.Timer1_Timer();
  EXPECT_TRUE(editor_.Get("cmdApplyNumberOfColumns").bEnabled);
  editor_.Click("cmdApplyNumberOfColumns");
  editor_.Timer1_Timer();
  EXPECT_FALSE(editor_.Get("cmdApplyNumberOfColumns").bEnabled);
  editor_.TypeText("txtNumOfColumns", "5");
  editor_.Get("cmdApplyNumberOfColumns").bEnabled = true;
  editor_.Click("cmdApplyNumberOfColumns");
  EXPECT_EQ(Cell(4, Grid::kWidth), Cell(2, Grid::kWidth));
  EXPECT_EQ(Positions(), "1 2 3 4 5 ");
  editor_.TypeText("txtNumOfColumns", "x");
  editor_.Click("cmdApplyNumberOfColumns");
  EXPECT_EQ(host_.messages.back().sText, "Please use only positive numbers for the number of columns");
  editor_.TypeText("txtNumOfColumns", "99999999999");
  editor_.Click("cmdApplyNumberOfColumns");
  EXPECT_EQ(editor_.Get("txtNumOfColumns").sText + " " + Cell(4, Grid::kWidth), "10001 2");
}

TEST_F(ProfileEditor, MovesAColumnAndMendsPositionsThatAreNoOrder) {
  Open(Row("1", "5", "3") + Row("2", "5", "1") + Row("3", "5", "2"));
  EXPECT_EQ(Positions(), "3 1 2 ");
  editor_.SelectItem("cbPosition", 0);  // column 1 to place 1
  EXPECT_EQ(Positions(), "1 3 2 ");
  Open(Row("1", "5", "2") + Row("2", "5", "2") + Row("3", "5", "3"));
  EXPECT_EQ(Positions(), "1 2 3 ");
  Open(Row("1", "5", "7"));
  EXPECT_EQ(Positions(), "1 ");
}

TEST_F(ProfileEditor, SavesDeletesAndRenamesProfiles) {
  editor_.Click("cmdDeleteProfile");
  EXPECT_EQ(host_.messages.back().sText, "You must have at least one profile.");
  editor_.TypeText("cbProfileList", "Bank");
  editor_.Timer1_Timer();
  EXPECT_FALSE(editor_.Get("cmdRenameProfile").bEnabled);
  EXPECT_FALSE(editor_.Get("cmdReloadProfile").bVisible);
  editor_.Click("cmdSave");
  EXPECT_EQ(folder_.Read(Data("Profiles/Bank.txt")).substr(0, 33), "1\t10\t[32] Space\tRight\tNo\t1\t\t\r\n2\t1");
  editor_.TypeText("cbProfileList", "BANK");
  editor_.Click("cmdSave");
  EXPECT_EQ(editor_.Get("cbProfileList").sText, "BANK");
  EXPECT_FALSE(folder_.Has(Data("Profiles/BANK.txt")));
  const std::vector<std::string>& names = editor_.Get("cbProfileList").items;
  editor_.SelectItem("cbProfileList", static_cast<int>(std::find(names.begin(), names.end(), "Bank") - names.begin()));
  editor_.Timer1_Timer();
  screen_.onModal = [](clsForm& dialog) {
    EXPECT_EQ(dialog.Get("txtChoose").sText, "Bank");
    dialog.TypeText("txtChoose", "Ledger");
    dialog.Click("cmdApply");
  };
  editor_.Click("cmdRenameProfile");
  EXPECT_TRUE(folder_.Has(Data("Profiles/Ledger.txt")) && !folder_.Has(Data("Profiles/Bank.txt")));
  screen_.onModal = [](clsForm& dialog) {
    dialog.TypeText("txtChoose", "a/b");
    dialog.Click("cmdApply");
  };
  editor_.Click("cmdRenameProfile");
  EXPECT_NE(host_.messages.back().sText.find("Unable to rename profile."), std::string::npos);
  editor_.Click("cmdDeleteProfile");
  EXPECT_FALSE(folder_.Has(Data("Profiles/Ledger.txt")));
}

TEST_F(ProfileEditor, AFailedSaveKeepsTheRowsAndTheNameOnTheScreen) {
  editor_.txtColumnWidth_KeyUp("99");
  for (const char* const pButton : {"cmdSave", "cmdApply"}) {
    editor_.TypeText("cbProfileList", "no/folder");
    editor_.Click(pButton);
    EXPECT_EQ(host_.messages.back().sText, "Unable to create file. Try a different folder such as 'My Documents'");
    EXPECT_EQ(editor_.Get("cbProfileList").sText + " " + Cell(0, Grid::kWidth), "no/folder 99");
  }
  EXPECT_FALSE(editor_.IsUnloaded());
}

TEST_F(ProfileEditor, CancelClearsTheMarkOfAChangedJobAndSaveAndCloseSetsIt) {
  form_.bAskToSaveBMKFileBeforeExit = true;
  screen_.onModal = [](clsForm& dialog) { dialog.KeyPressed("Escape"); };
  form_.Click("cmdEditProfile");
  EXPECT_FALSE(form_.bAskToSaveBMKFileBeforeExit);
  screen_.onModal = [](clsForm& dialog) {
    dialog.TypeText("cbProfileList", "Other");
    dialog.Click("cbAdvancedOptionsShow");
    dialog.Click("cmdApply");
  };
  form_.Click("cmdEditProfile");
  EXPECT_TRUE(form_.bAskToSaveBMKFileBeforeExit);
  EXPECT_EQ(Text("cbFixedWidthProfileList"), "Other");
  EXPECT_TRUE(form_.bShowAdvancedOptions_Profile_Editor);
}

TEST_F(ProfileEditor, MendsACellThatNoFieldCanShowWhenItsRowIsSelected) {
  Open(
      "1\t10\t[32] Space\tLeft\tNo\t1\t\t\r\n2\tabc\tSpace\tRight and Left\tNope\t2\t\t\r\n"
      "3\t2001\t[256] ?\tboth\tjust Y\tx\t\t\r\n4\t2000\t[65] A\tRight\tYes\t4\t\t\r\n");
  for (int n = 1; n < 4; ++n) editor_.fgGrid_Click(n);
  EXPECT_EQ(All(Grid::kWidth), "10 10 10 2000 ");
  EXPECT_EQ(All(Grid::kPad), "[32] Space [32] Space [32] Space [65] A ");
  EXPECT_EQ(All(Grid::kAlign), "Left Left Right Right ");
  EXPECT_EQ(All(Grid::kRemove), "No No Yes Yes ");
  EXPECT_EQ(editor_.Get("lblColumnNumber").sCaption, "4");
  EXPECT_EQ(editor_.Get("cbPadWithCharacter").lListIndex, 65);
  editor_.fgGrid_Click(4);  // no such row
  EXPECT_EQ(editor_.CurrentRow(), 3);
}

TEST_F(ProfileEditor, NextRecordsMovesAndScrollsTenRowsBelowTheTop) {
  std::string sRows;
  for (int n = 1; n <= 13; ++n) sRows += Row(std::to_string(n), "5", std::to_string(n));
  Open(sRows);
  editor_.Get("txtColumnWidth").sText = "8";
  for (int n = 0; n < 9; ++n) editor_.Click("cmdColumnNext");
  EXPECT_EQ(Cell(0, Grid::kWidth), "8");
  EXPECT_EQ(editor_.TopRow(), 0);
  editor_.Click("cmdColumnNext");
  EXPECT_EQ(editor_.TopRow(), 1);
  editor_.Get("txtColumnWidth").sText.clear();
  editor_.Click("cmdColumnNext");
  EXPECT_EQ(editor_.CurrentRow(), 10) << "an empty width holds the row";
  editor_.Get("txtColumnWidth").sText = "-3";
  editor_.Click("cmdColumnNext");
  EXPECT_EQ(host_.messages.back().sText, "Please use only positive numbers for column width");
  EXPECT_EQ(editor_.CurrentRow(), 11) << "a bad one is told, and doesn't";
  EXPECT_EQ(Cell(10, Grid::kWidth), "5");
  editor_.Get("txtNumOfColumns").sText = "0";
  editor_.cmdColumnNext_Click(true);
  EXPECT_EQ(editor_.Get("txtNumOfColumns").sText, "1");
  EXPECT_EQ(editor_.fgGrid.Rows(), 1);
  editor_.Click("cmdColumnNext");
  EXPECT_EQ(editor_.CurrentRow(), 0);
}

TEST_F(ProfileEditor, MakesAWidthWholeWhenTheBoxIsLeft) {
  editor_.Get("txtColumnWidth").sText = "7.4";
  editor_.txtColumnWidth_LostFocus(false);
  EXPECT_EQ(Cell(0, Grid::kWidth), "7");
  editor_.Get("txtColumnWidth").sText = "0.2";
  editor_.txtColumnWidth_LostFocus(false);
  EXPECT_EQ(host_.messages.back().sText, "Please use only positive numbers for column width");
  editor_.Get("txtColumnWidth").sText = "wide";
  editor_.txtColumnWidth_LostFocus(false);
  EXPECT_EQ(host_.messages.back().sText, "Please use only numeric values for column width");
  EXPECT_EQ(Cell(0, Grid::kWidth), "7");
  editor_.Get("txtColumnWidth").sText = "12";
  editor_.LoseFocus("cbPadWithCharacter");
  EXPECT_EQ(Cell(0, Grid::kWidth), "12") << "leaving the pad list records all fields";
}

TEST_F(ProfileEditor, TheAdvancedFieldsAreShownAtWillAndStopTheDoubleClick) {
  EXPECT_FALSE(editor_.Get("frameAdvancedOptions").bVisible);
  editor_.Click("cbAdvancedOptionsShow");
  EXPECT_TRUE(editor_.Get("frameAdvancedOptions").bVisible);
  editor_.fgGrid_DblClick();
  EXPECT_EQ(Cell(0, Grid::kAlign), "Right");
  editor_.SelectItem("cbRemove", 1);
  editor_.SelectItem("cbJustification", 0);
  EXPECT_EQ(Cell(0, Grid::kRemove) + Cell(0, Grid::kAlign), "YesLeft");
  editor_.Height = 6300;
  editor_.Form_Unload();
  frmSpecifyFixedWidthText again(form_);
  again.Form_Load();
  EXPECT_TRUE(again.AdvancedShown());
  EXPECT_EQ(again.Height, 6300);
  again.Height = 6199;
  again.Form_Unload();
  frmSpecifyFixedWidthText low(form_);
  low.Form_Load();
  EXPECT_EQ(low.Height, frmSpecifyFixedWidthText::kDefaultHeight);
}

TEST_F(ProfileEditor, ReloadAndChoosingAProfileDropEditsWithoutAQuestion) {
  editor_.txtColumnWidth_KeyUp("99");
  editor_.Timer1_Timer();
  editor_.Click("mnuReloadProfile");
  EXPECT_EQ(Cell(0, Grid::kWidth), "10");
  editor_.txtColumnWidth_KeyUp("99");
  Open("1\t4\t[32] Space\tRight\t\t\r\n\r\n2\t6\t[48] 0\tLeft\t\t\r\n");  // an old one with a blank line
  EXPECT_EQ(All(Grid::kWidth) + All(Grid::kRemove) + Positions(), "4 6 No No 1 2 ");
  EXPECT_EQ(editor_.Get("txtNumOfColumns").sText, "2");
  editor_.Get("cmdReloadProfile").bVisible = false;
  editor_.Timer1_Timer();
  EXPECT_TRUE(editor_.Get("cmdReloadProfile").bVisible);
  EXPECT_TRUE(host_.messages.empty());
  editor_.Click("mnuManuallyEdit");
  ASSERT_EQ(host_.opened.size(), 1U);
  EXPECT_NE(host_.opened[0].find("Profiles/p.txt"), std::string::npos);
}

TEST_F(ProfileEditor, ARenameThatIsCancelledOrEmptyDoesNothing) {
  for (const bool bCancelled : {true, false}) {
    screen_.onModal = [&](clsForm& dialog) {
      EXPECT_EQ(dialog.Get("txtChoose").lSelLength, 15);
      dialog.TypeText("txtChoose", bCancelled ? "Other" : "");
      bCancelled ? static_cast<void>(dialog.KeyPressed("Escape")) : dialog.Click("cmdApply");
    };
    editor_.Click("mnuSaveAs");
    EXPECT_EQ(editor_.Get("cbProfileList").sText, "Default-Profile");
  }
  EXPECT_TRUE(host_.messages.empty());
}

TEST_F(ProfileEditor, KeepsAllTenThousandAndOneRows) {
  std::string sRows;
  for (int n = 1; n <= 10005; ++n) sRows += Row(std::to_string(n), "3", std::to_string(n));
  Open(sRows);
  EXPECT_EQ(editor_.fgGrid.Rows(), 10001);
  editor_.cmdColumnNext_Click(true);  // applies the number that is shown
  EXPECT_EQ(editor_.fgGrid.Rows(), 10001);
  editor_.SelectItem("cbPosition", 10000);
  EXPECT_EQ(Cell(0, Grid::kPosition) + " " + Cell(1, Grid::kPosition), "10001 1");
}

/// The profile editor with a report drawn beside it.
class ProfileDrawing : public ProfileEditor {
 protected:
  void SetUp() override {
    ProfileEditor::SetUp();
    form_.Get("cbInputFile").sText = folder_.Write("in.txt", "Ann   12 x\nBob    7 y\nCid  123 z and more\n");
    Open(Row("1", "4", "2") + Row("2", "5", "1") + Row("3", "2", "3"));
    cut_.Update();
  }
  const CutPicture& Picture() { return cut_.Picture(); }
  clsProfileCut source_{editor_};
  clsReportCut cut_{source_};
};

TEST_F(ProfileDrawing, ShowsTheCutTheCellsAndWhatIsLost) {
  EXPECT_EQ(Picture().Fields(), (std::vector<CutField>{{1, 4}, {5, 9}, {10, 11}}));
  EXPECT_EQ(Picture().tables[0].letters, (std::vector<std::string>{"B", "A", "C"}));
  ASSERT_EQ(Picture().cells.size(), 3U);
  EXPECT_EQ(Picture().cells[0].cells[1], "Ann");
  EXPECT_EQ(Picture().lines[2].sMarks, "           !!! !!!!");
  EXPECT_TRUE(Picture().notes.back().bWarning);
  form_.sStartColRow = "B2";
  cut_.Update();
  EXPECT_EQ(Picture().lines[0].nTable, -1) << "rows above the first cell are no part of the table";
  EXPECT_EQ(Picture().tables[0].letters, (std::vector<std::string>{"", "A", "B"}));
  form_.bIsUnicode = true;
  cut_.Update();
  EXPECT_EQ(Picture().lines.size(), 3U) << "what was read stays";
}

TEST_F(ProfileDrawing, ADraggedBoundaryChangesTheTwoWidthsBesideIt) {
  editor_.fgGrid_Click(2);
  EXPECT_TRUE(cut_.Move(0, 5));
  EXPECT_EQ(All(Grid::kWidth), "5 4 2 ");
  EXPECT_EQ(editor_.CurrentRow(), 0);
  EXPECT_EQ(editor_.Get("txtColumnWidth").sText, "5");
  EXPECT_TRUE(cut_.Move(2, 19));
  EXPECT_EQ(All(Grid::kWidth), "5 4 10 ");
  EXPECT_FALSE(Picture().notes.back().bWarning);
  // Selecting a row this wide would set it back, so it isn't selected.
  editor_.fgGrid_Click(0);
  EXPECT_TRUE(cut_.Move(2, 3000));
  EXPECT_EQ(All(Grid::kWidth), "5 4 2991 ");
  EXPECT_EQ(editor_.CurrentRow(), 0);
  editor_.txtColumnWidth_LostFocus(false);
  EXPECT_EQ(All(Grid::kWidth), "5 4 2991 ");
}

TEST_F(ProfileDrawing, AddedAndRemovedBoundariesKeepAttributesAndAnOrder) {
  editor_.SelectItem("cbPadWithCharacter", 48);
  EXPECT_TRUE(cut_.Add(1));  // splits the column that is second in the output
  EXPECT_EQ(All(Grid::kWidth) + All(Grid::kNumber), "1 3 5 2 1 2 3 4 ");
  EXPECT_EQ(Positions(), "2 3 1 4 ");
  EXPECT_EQ(Cell(1, Grid::kPad), "[48] 0");
  EXPECT_EQ(editor_.Get("txtNumOfColumns").sText, "4");
  EXPECT_EQ(editor_.Get("cbPosition").items.size(), 4U);
  EXPECT_TRUE(cut_.Add(20));
  EXPECT_EQ(All(Grid::kWidth) + Positions(), "1 3 5 2 9 2 3 1 4 5 ");
  EXPECT_TRUE(cut_.Remove(1));  // joins columns 2 and 3
  EXPECT_EQ(All(Grid::kWidth) + Positions(), "1 8 2 9 1 2 3 4 ");
  EXPECT_TRUE(cut_.Remove(3));
  EXPECT_EQ(All(Grid::kWidth) + Positions(), "1 8 2 1 2 3 ");
  while (cut_.Remove(static_cast<int>(cut_.Boundaries().size()) - 1)) {
  }
  EXPECT_EQ(editor_.fgGrid.Rows(), 1) << "one column stays";
}

TEST_F(ProfileDrawing, WorksTheColumnsOutAndTakesThemWithTheirAlignment) {
  cut_.WorkOut();
  ASSERT_TRUE(cut_.HasProposal());
  EXPECT_EQ(editor_.fgGrid.Rows(), 3) << "shown before it is taken";
  EXPECT_EQ(Picture().Fields(), (std::vector<CutField>{{1, 4}, {5, 9}, {10, 19}}));
  cut_.TakeProposal();
  EXPECT_EQ(All(Grid::kWidth) + All(Grid::kAlign) + Positions(), "4 5 10 Left Right Left 1 2 3 ");
  EXPECT_FALSE(Picture().notes.back().bWarning);
  folder_.Write("in.txt", "12345\n67890\n");
  cut_.Update();
  cut_.WorkOut();
  EXPECT_EQ(Picture().notes.back().sText, "No column of characters is blank in all lines.");
}

}  // namespace
}  // namespace quillon
