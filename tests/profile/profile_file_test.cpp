#include <gtest/gtest.h>

#include "clsProfileGrid.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "clsWorkbook.h"
#include "modCellwright_DLL.h"
#include "modCharacterList.h"
#include "modFixedWidthAttributes.h"
#include "modProfileFile.h"
#include "modProfileList.h"
#include "modSettings.h"

namespace quillon {
namespace {

class Profiles : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetFoundationGlobals();
    ResetProfileGlobals();
    OverrideSystemCodePage(&clsCodePage::Windows1252(), false);
    gsDataFolder = folder.Path();
  }
  void TearDown() override {
    ResetFoundationGlobals();
    ResetProfileGlobals();
    OverrideSystemCodePage(nullptr, false);
  }
  void WriteProfile(std::string_view sName, std::string_view sText) {
    folder.Write("Profiles/" + std::string(sName) + ".txt", sText);
  }
  int32_t Assign(std::string_view sName, bool bTrim = true) {
    return AssignFixedWidthAttributes(sName, true, bTrim, host, fault);
  }
  /// "width/order/trimmed character/side" of each column that the engine holds.
  static std::string Held() {
    std::string sOut;
    for (const CellwrightColumn& column : Cellwright().Held().columns) {
      sOut += (sOut.empty() ? "" : " ") + std::to_string(column.lCount) + "/" + std::to_string(column.lOrder) + "/" +
              std::to_string(column.inputPad) + "/" + std::to_string(column.lInputSide);
    }
    return sOut;
  }

  clsTempFolder folder;
  clsTestHost host;
  ProfileFault fault;
};

TEST(ProfileLine, FieldsReadAsWrittenAndLeniently) {
  struct Case {
    const char* sLine;
    int32_t lWidth, lPad, lSide;
    bool bRemove;
    int32_t lPosition;
  };
  for (const Case& c : std::initializer_list<Case>{
           {"1\t10\t[32] Space\tRight\tNo\t1\t\t", 10, 32, 2, false, 1},
           {"1\t10\t[65] A\tLeft\tYes\t3\t\t", 10, 65, 1, true, 3},
           {"1\t10\t[32] Space\tRight\t\t", 10, 32, 2, false, -1},  // old form
           {"x\t0\t[0]\tneither\tno\tabc", -1, 32, 2, false, -1},   // width 0 is left out
           {"\t-5\t[256]\tRIGHT or left\tmay be\t-7", -5, 32, 1, true, -7},
           {"\tabc-\t[x]\t\t\t", -1, 32, 2, false, -1},
           {"\tabc\t[]\t\tY\t 2 ", 1, 32, 2, true, 2},
           {"\t2.5\t[ 48 ]\t\t\t3.5", 2, 48, 2, false, 4},  // halves to even
           {"\t2147483647\tany[255]\t\t\t0", 2147483647, 255, 2, false, 0},
       }) {
    ProfileColumn column;
    ProfileFault fault;
    ASSERT_TRUE(DecipherLineOfFixedWidthProfile(c.sLine, column, fault)) << c.sLine << fault.sExpected;
    EXPECT_EQ(column.lWidth, c.lWidth) << c.sLine;
    EXPECT_EQ(column.lPadCharacter, c.lPad) << c.sLine;
    EXPECT_EQ(column.lJustification, c.lSide) << c.sLine;
    EXPECT_EQ(column.bRemove, c.bRemove) << c.sLine;
    EXPECT_EQ(column.lPosition, c.lPosition) << c.sLine;
  }
}

TEST(ProfileLine, ABadLineSaysWhatIsExpected) {
  struct Case {
    const char* sLine;
    const char* sSays;
  };
  for (const Case& c : std::initializer_list<Case>{
           {"", "found 0"},
           {"1\t10\t[32] Space\tRight\tNo", "found 5"},
           {"1\t10\tSpace\tRight\tNo\t1", "Pad character [Space] lacks a code in brackets"},
           {"1\t2147483648\t[32]\tRight\tNo\t1", "Width [2147483648] is too large"},
           {"1\t10\t[99999999999]\tRight\tNo\t1", "Pad character [99999999999] is too large"},
           {"1\t10\t[32]\tRight\tNo\t1E99", "Position [1E99] is too large"},
       }) {
    ProfileColumn column;
    ProfileFault fault;
    EXPECT_FALSE(DecipherLineOfFixedWidthProfile(c.sLine, column, fault)) << c.sLine;
    EXPECT_NE(fault.sExpected.find(c.sSays), std::string::npos) << fault.sExpected;
  }
}

TEST_F(Profiles, ColumnsReachTheEngineWithTheTrimOnTheOtherSide) {
  WriteProfile("Two", "1\t4\t[32] Space\tRight\tNo\t2\t\t\r\n2\t6\t[48] 0\tLeft\tYes\t1\t\t\r\n");
  ASSERT_EQ(Assign("Two"), kProfileDone);
  EXPECT_EQ(Held(), "4/2/32/1 -6/1/48/2");
  ASSERT_EQ(Assign("TWO.TXT", false), kProfileDone);  // by file name, in any case
  EXPECT_EQ(Held(), "4/2/255/1 -6/1/255/2");
  ASSERT_EQ(Assign(folder.Path("Profiles/Two.txt")), kProfileDone);
}

TEST_F(Profiles, AShorterProfileClosesTheColumnsOfALongerOne) {
  std::string sLong;
  for (int i = 1; i <= 8; ++i) sLong += std::to_string(i) + "\t3\t[32]\tRight\tNo\t" + std::to_string(i) + "\t\t\r\n";
  WriteProfile("A", sLong);
  WriteProfile("B", "1\t5\t[32]\tRight\tNo\t1\t\t\r\n");
  ASSERT_EQ(Assign("A"), kProfileDone);
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(Assign("B"), kProfileDone);
    EXPECT_EQ(lMostColumnsAssigned, 8);
    EXPECT_EQ(Cellwright().Held().columns[0].lCount, 5);
    for (size_t n = 1; n < 8; ++n) EXPECT_EQ(Cellwright().Held().columns[n].lCount, -1);
    OptInputFileSet(folder.Write("in.txt", "aaaaabbbbbccccc").c_str());
    OptOutputFileTypeSet(kFormatCsv);
    OptOutputFileSet(folder.Path("out.csv").c_str());
    ASSERT_EQ(ConvertFile(), 0);
    EXPECT_EQ(folder.Read("out.csv"), "aaaaa\r\n");
  }
}

TEST_F(Profiles, AProfileThatCannotBeUsedGivesItsStatusAndThePlace) {
  const std::string sGood = "1\t4\t[32] Space\tRight\tNo\t1\t\t\r\n";
  struct Case {
    std::string sText;
    const char* sSays;
  };
  for (const Case& c : std::initializer_list<Case>{
           {sGood + "\r\n", "Line 2 of profile [P]: six fields"},
           {sGood + sGood + "\x01\x02\xFF", "Line 3 of profile [P]: six fields"},
           {"1\t4\t[32]\tRight\tNo\t40000\t\t\r\n", "Line 1 of profile [P]: Position [40000] is outside"},
       }) {
    WriteProfile("P", c.sText);
    EXPECT_EQ(Assign("P"), kProfileBad);
    EXPECT_TRUE(fault.Text("P").starts_with(c.sSays)) << fault.Text("P");
  }
  EXPECT_EQ(lMostColumnsAssigned, 2);  // what a bad profile gave doesn't outlive the next one
  EXPECT_EQ(Assign("Nowhere"), kProfileMissing);
  WriteProfile("Empty", "");
  EXPECT_EQ(Assign("Empty"), kProfileDone);
  EXPECT_EQ(Held(), "-1/1/32/1 -1/1/32/1");
}

TEST_F(Profiles, ALongProfileLetsEventsRun) {
  std::string sText;
  for (int i = 0; i < 10000; ++i) sText += "\t1\t[32]\tLeft\tNo\t\t\t\r\n";
  WriteProfile("Long", sText);
  int nTurns = 0;
  host.onEvents = [&] { ++nTurns; };
  EXPECT_EQ(Assign("Long"), kProfileDone);
  EXPECT_EQ(nTurns, 10);
  EXPECT_EQ(Cellwright().Held().columns.size(), 10000U);
}

TEST_F(Profiles, TheGridIsWrittenAsSevenTabbedFields) {
  clsProfileGrid grid;
  CreateDefaultProfile(grid);
  grid.SetText(1, clsProfileGrid::kPad, "[228] \u00E4");
  ASSERT_TRUE(SaveProfileToDisk("New", grid, host));
  EXPECT_EQ(folder.Read("Profiles/New.txt"),
            "1\t10\t[32] Space\tRight\tNo\t1\t\t\r\n2\t12\t[228] \xE4\tRight\tNo\t2\t\t\r\n"
            "3\t2\t[32] Space\tRight\tNo\t3\t\t\r\n4\t15\t[32] Space\tRight\tNo\t4\t\t\r\n"
            "5\t7\t[32] Space\tRight\tNo\t5\t\t\r\n");
  std::string sName = "New";
  clsProfileGrid again;
  ASSERT_TRUE(OpenProfileFromDisk(sName, again, host));
  EXPECT_EQ(sName, folder.Path("Profiles/New.txt"));
  ASSERT_EQ(again.Rows(), 5);
  EXPECT_EQ(again.Text(1, clsProfileGrid::kPad), "[228] \u00E4");
  EXPECT_EQ(again.Text(4, clsProfileGrid::kPosition), "5");
  EXPECT_EQ(again.Text(4, clsProfileGrid::kSpare), "");
}

TEST_F(Profiles, TheEditorRepairsOldFormsAndBlankLines) {
  WriteProfile("Old", "1\t10\t[32] Space\tRight\t\t\r\n  \r\n2\t12\t[48] 0\tLeft\t\t\r\n");
  std::string sName = "Old";
  clsProfileGrid grid;
  ASSERT_TRUE(OpenProfileFromDisk(sName, grid, host));
  ASSERT_TRUE(SaveProfileToDisk("Old", grid, host));
  EXPECT_EQ(folder.Read("Profiles/Old.txt"),
            "1\t10\t[32] Space\tRight\tNo\t1\t\t\r\n2\t12\t[48] 0\tLeft\tNo\t2\t\t\r\n");

  std::string sLong;
  for (int i = 0; i < 10020; ++i) sLong += "\t1\t[32]\tLeft\tNo\t\t\t\r\n";
  WriteProfile("Long", sLong);
  sName = "Long";
  ASSERT_TRUE(OpenProfileFromDisk(sName, grid, host));
  EXPECT_EQ(grid.Rows(), 10001);

  sName = "Nowhere";
  EXPECT_FALSE(OpenProfileFromDisk(sName, grid, host));
  EXPECT_EQ(grid.Rows(), 0);
}

TEST_F(Profiles, AProfileThatCannotBeWrittenIsTold) {
  folder.Write("Profiles", "a file where the folder should be");
  EXPECT_FALSE(SaveProfileToDisk("New", {}, host));
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].sText, "Unable to create file. Try a different folder such as 'My Documents'");
}

TEST_F(Profiles, TheListHoldsWhatIsNamedLikeAProfile) {
  ProfileList list;
  EXPECT_EQ(GetCountOfValidProfiles(kProfilesSubFolder), 0);
  BuildListValidProfiles(list, "Missing", kProfilesSubFolder, host);
  EXPECT_EQ(list.names, std::vector<std::string>{"Default-Profile"});
  EXPECT_EQ(list.nSelected, 0);
  EXPECT_TRUE(folder.Has("Profiles/Default-Profile.txt"));

  folder.Write("Profiles/a.txt.bak", "");
  folder.Write("Profiles/B.TXT", "");
  folder.Write("Profiles/notes.doc", "");
  folder.Write("Profiles/sub.txt/inner.txt", "");
  BuildListValidProfiles(list, "B", kProfilesSubFolder, host);
  EXPECT_EQ(GetCountOfValidProfiles(kProfilesSubFolder), 3);
  ASSERT_GE(list.nSelected, 0);
  EXPECT_EQ(list.names[static_cast<size_t>(list.nSelected)], "B");
  std::sort(list.names.begin(), list.names.end());
  EXPECT_EQ(list.names, (std::vector<std::string>{"B", "Default-Profile", "a"}));
  BuildListValidProfiles(list, "Missing", kProfilesSubFolder, host);
  EXPECT_EQ(list.nSelected, 0);
}

TEST_F(Profiles, TheCharacterListIsIndexedByCode) {
  const auto entries = FillInCharacterSelectionListBox();
  EXPECT_EQ(entries[0], "ASCII Char");
  EXPECT_EQ(entries[9], "[9] TAB");
  EXPECT_EQ(entries[31], "[31] US");
  EXPECT_EQ(entries[32], "[32] Space");
  EXPECT_EQ(entries[65], "[65] A");
  EXPECT_EQ(entries[128], "[128] \u20AC");
  OverrideSystemCodePage(clsCodePage::Find("cp437"), false);
  EXPECT_EQ(FillInCharacterSelectionListBox()[196], "[196] \u2500");
}

}  // namespace
}  // namespace quillon
