#include "clsDesktopFixture.h"
#include "frmExportBuilder.h"
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
  std::string Positions() {
    std::string s;
    for (int n = 0; n < editor_.fgGrid.Rows(); ++n) s += Cell(n, Grid::kPosition) + " ";
    return s;
  }
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
  editor_.cbPadWithCharacter_DropDown();
  editor_.SelectItem("cbPadWithCharacter", 65);
  EXPECT_EQ(Cell(0, Grid::kPad), "[65] A");
  editor_.cbPadWithCharacter_DropDown();
  editor_.SelectItem("cbPadWithCharacter", 0);
  EXPECT_EQ(Cell(0, Grid::kPad), "[65] A");
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

class RecipeEditor : public clsDesktopFixture {
 protected:
  void SetUp() override {
    clsDesktopFixture::SetUp();
    Load();
  }
  void AddFields(std::initializer_list<std::pair<const char*, bool>> fields) {
    screen_.onModal = [this, fields](clsForm& builder) {
      for (const auto& [pWidth, bMulti] : fields) {
        screen_.onModal = [pWidth = pWidth, bMulti = bMulti](clsForm& dialog) {
          dialog.TypeText("txtFieldWidth", pWidth);
          if (bMulti) dialog.Click("Option1");
          dialog.Click("cmdOK");
        };
        builder.Click("cmdAddColumn");
      }
      builder.Click("cmdOK");
    };
    editor_.Click("cmdAddTable");
  }
  std::string Parsing() {
    const std::string& s = editor_.Get("txtFileEditor").sText;
    const size_t n = s.rfind("Parsing=");
    return s.substr(n, s.find("\r\n", n) - n);
  }
  frmExportBuilder editor_{form_};
};

TEST_F(RecipeEditor, WritesTableSectionsInTheirTextForm) {
  editor_.Form_Load();
  EXPECT_FALSE(editor_.bDirty);
  AddFields({{"5", false}, {"3", false}});
  EXPECT_EQ(editor_.Get("txtFileEditor").sText,
            "[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n\r\n[Table 1]\r\n"
            "ReadStartLine=KEY TEXT AT TOP\r\nReadStartLineOffset=0\r\nReadEndLine=KEY TEXT AT BOTTOM\r\n"
            "ReadEndLineOffset=0\r\nParsing=---- ---\r\nWriteColumn=A\r\n");
  EXPECT_EQ(editor_.sCaption, "Recipe Editor - Tables = 1");
  EXPECT_TRUE(editor_.bDirty);
  AddFields({});
  EXPECT_EQ(Parsing(), "Parsing=-");
  AddFields({{"1", false}});
  EXPECT_EQ(Parsing(), "Parsing=-");
  AddFields({{"4", true}, {"1", false}, {"2", false}});
  EXPECT_EQ(Parsing(), "Parsing====  --");
  EXPECT_EQ(editor_.TableCounter, 4);
}

TEST_F(RecipeEditor, ChecksEachFieldOnLeavingIt) {
  editor_.Form_Load();
  screen_.onModal = [&](clsForm& builder) {
    struct Case {
      const char *pControl, *pText, *pMessage, *pRestored;
    };
    for (const Case& c : {Case{"txtReadStartLine", " ", "Top Key Text should not be a blank!", "KEY TEXT AT TOP"},
                          Case{"txtReadEndLine", "", "Bottom Key Text should not be a blank!", "KEY TEXT AT BOTTOM"},
                          Case{"txtReadStartLineOffset", "x", "Top Line offset must be a number", "0"},
                          Case{"txtReadEndLineOffset", "", "Bottom Line offset must be a number", "0"},
                          Case{"txtTableNumber", "0", "Table Number must be a number larger than 0", "1"}}) {
      builder.TypeText(c.pControl, c.pText);
      builder.LoseFocus(c.pControl);
      EXPECT_EQ(host_.messages.back().sText, c.pMessage);
      EXPECT_EQ(builder.Get(c.pControl).sText, c.pRestored);
    }
    EXPECT_EQ(builder.Get("frameTop").sCaption, "Top Boundry");
    builder.Click("cmdCancel");
  };
  editor_.Click("cmdAddTable");
  EXPECT_EQ(editor_.TableCounter, 0);
}

TEST_F(RecipeEditor, LoadsSavesAndAsks) {
  const std::string sFile = folder_.Write("r.rcp", "[Header]\r\n[Table 1]\r\n[Table 1 Col 1]\r\n[Table 2]\r\nx=\xE9");
  editor_.Form_Load();
  editor_.LoadRecipeIntoEditor(sFile);
  EXPECT_EQ(editor_.TableCounter, 2);
  EXPECT_EQ(editor_.Get("txtFileEditor").sText, "[Header]\r\n[Table 1]\r\n[Table 1 Col 1]\r\n[Table 2]\r\nx=é\r\n");
  EXPECT_FALSE(editor_.bDirty);
  editor_.TypeText("txtFileEditor", "changed é\r\n");
  host_.answer = MessageAnswer::No;
  screen_.files = {folder_.Write("other.rcp", "keep")};
  editor_.Click("cmdSaveAs");
  EXPECT_EQ(folder_.Read("other.rcp"), "keep");
  EXPECT_EQ(editor_.sLastRecipeFileName, folder_.Path("other.rcp"));
  host_.answer = MessageAnswer::Yes;
  editor_.TypeText("txtFileEditor", "again é\r\n");
  editor_.CloseRequested();
  EXPECT_EQ(host_.messages.back().sText, "You've edited the file, do you want to save your changes?");
  EXPECT_EQ(folder_.Read("other.rcp"), "again \xE9\r\n");
  EXPECT_TRUE(editor_.IsUnloaded());
}

TEST_F(RecipeEditor, ACancelledOpenKeepsTheTextAndLosesTheName) {
  editor_.Form_Load();
  editor_.LoadRecipeIntoEditor(folder_.Write("r.rcp", "[Table 1]\r\n"));
  editor_.Click("cmdLoadFile");
  EXPECT_EQ(editor_.sLastRecipeFileName, "");
  gConversionOptions.sRecipeFile = "job.rcp";
  editor_.Click("cmdLoadFile");
  EXPECT_EQ(screen_.lastQuestion.sFileName, "job.rcp") << "the dialog proposes the job's recipe then";
  EXPECT_EQ(editor_.Get("txtFileEditor").sText, "[Table 1]\r\n");
  const size_t nMessages = host_.messages.size();
  editor_.Click("cmdSave");
  EXPECT_EQ(host_.messages.size(), nMessages + 1);
}

}  // namespace
}  // namespace quillon
