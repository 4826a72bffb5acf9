#include <algorithm>
#include <filesystem>

#include "clsDesktopFixture.h"
#include "frmGettingStarted.h"
#include "frmLanguage.h"
#include "frmMainMDI.h"
#include "frmProof.h"
#include "frmQLNOptions.h"
#include "frmTextDisplay.h"
#include "modFailure.h"

namespace quillon {
namespace {

class MainForm : public clsDesktopFixture {
 protected:
  bool Visible(const char* pName) { return form_.Get(pName).bVisible; }
  bool Enabled(const char* pName) { return form_.Get(pName).bEnabled; }
};

TEST_F(MainForm, AWildcardInputFlipsTheButtonsOfBothSteps) {
  Load();
  form_.TypeText("cbInputFile", folder_.Path("a.txt"));
  EXPECT_FALSE(Enabled("cbDoSubfolders"));
  EXPECT_TRUE(Visible("cmdEditInput") && !Visible("cmdExploreInputFolder"));
  EXPECT_TRUE(Visible("cmdOutputBrowse") && !Visible("cmdSelectOutputFolder"));
  EXPECT_FALSE(Enabled("cmdEditInput"));

  form_.TypeText("cbInputFile", folder_.Path("*.txt"));
  EXPECT_TRUE(Enabled("cbDoSubfolders") && Enabled("cbSaveToOriginalFolder"));
  EXPECT_TRUE(!Visible("cmdEditInput") && Visible("cmdExploreInputFolder") && Enabled("cmdExploreInputFolder"));
  EXPECT_TRUE(!Visible("cmdOutputBrowse") && Visible("cmdSelectOutputFolder") && Enabled("cbOutputFile"));

  form_.Click("cbSaveToOriginalFolder");
  EXPECT_TRUE(!Visible("cmdSelectOutputFolder") && !Enabled("cbOutputFile"));
  form_.TypeText("cbInputFile", folder_.Write("a.txt", "x"));
  EXPECT_FALSE(form_.Get("cbSaveToOriginalFolder").bChecked);
  EXPECT_TRUE(Enabled("cbOutputFile") && Enabled("cmdEditInput"));
}

TEST_F(MainForm, OnlyTheUserMarksAJobAsChanged) {
  Load();
  EXPECT_FALSE(form_.bAskToSaveBMKFileBeforeExit);
  for (const char* const pName : {"cbInputFile", "cbOutputFile"}) {
    form_.bAskToSaveBMKFileBeforeExit = false;
    form_.TypeText(pName, "x*");
    EXPECT_TRUE(form_.bAskToSaveBMKFileBeforeExit) << pName;
  }
  for (const char* const pName : {"cbDoSubfolders", "cbSaveToOriginalFolder"}) {
    form_.bAskToSaveBMKFileBeforeExit = false;
    form_.Click(pName);
    EXPECT_TRUE(form_.bAskToSaveBMKFileBeforeExit) << pName;
  }
  form_.bAskToSaveBMKFileBeforeExit = false;
  form_.Click("rbConversionMethod", 2);
  EXPECT_TRUE(form_.bAskToSaveBMKFileBeforeExit);
  EXPECT_TRUE(form_.Get("frameInnerGUI", 2).bVisible && !form_.Get("frameInnerGUI", 0).bVisible);
  form_.ConversionJobOpen(folder_.Write("j.QLN", "[QLN]\r\nsInputFile=a.txt\r\nlConversionMethod=1\r\n"));
  EXPECT_FALSE(form_.bAskToSaveBMKFileBeforeExit);
}

TEST_F(MainForm, OpensAJobWithItsNotesAndRemembersIt) {
  Load();
  const std::string sJob = folder_.Write(
      "My job.QLN",
      "[QLN]\r\nReadMe=line one\r\nReadMe2=two%lf%three\r\nsInputFile=%APPDATA%\\a.txt\r\nsOutputFile=b.csv\r\n"
      "sRecipeFile=r.rcp\r\nlConversionMethod=1\r\nlTabSize=4\r\nbUnix=TRUE\r\n");
  form_.ConversionJobOpen(sJob);
  EXPECT_EQ(form_.sCaption, "My job.QLN");
  EXPECT_EQ(Text("cbInputFile"), "%APPDATA%\\a.txt");
  EXPECT_EQ(Text("cbRecipeFile"), "r.rcp");
  EXPECT_TRUE(form_.Get("rbConversionMethod", 1).bChecked);
  EXPECT_EQ(form_.lTabSize, 4);
  EXPECT_TRUE(form_.bUnix);
  EXPECT_EQ(log_.txtLog(),
            "QLN File Opened Successfully\r\n ----------- QLN File Notes ------------------START\r\nline one\r\n"
            "two\r\nthree\r\n ----------- QLN File Notes ------------------END");
  EXPECT_EQ(form_.Get("mnuMRU", 1).sCaption, "&1 " + sJob);
  EXPECT_EQ(form_.Get("mnuMRU", 1).sTag, "TranslateFalse");
}

TEST_F(MainForm, AJobKeepsAProfileThatItNamesInOtherLetters) {
  folder_.Write(Data("Profiles/Odd.txt"), "1\t10\t[32] Space\tLeft\tNo\t1\t\t\r\n");
  form_.ConversionJobOpen(folder_.Write("odd.QLN", "[QLN]\r\nsFixedWidthProfile=oDD\r\n"));
  EXPECT_EQ(Text("cbFixedWidthProfileList"), "Odd");
}

TEST_F(MainForm, SavesAJobWhereItIsAndAsksWhenItHasNoPlace) {
  Load();
  form_.TypeText("cbInputFile", "in.txt");
  screen_.files = {folder_.Path("new.QLN")};
  form_.Click("mnuSaveConversionJob");
  EXPECT_EQ(form_.sJobFile, folder_.Path("new.QLN"));
  EXPECT_NE(folder_.Read("new.QLN").find("sInputFile=in.txt"), std::string::npos);
  EXPECT_TRUE(screen_.lastQuestion.bSave);
  form_.TypeText("cbInputFile", "other.txt");
  form_.Click("mnuSaveConversionJob");
  EXPECT_NE(folder_.Read("new.QLN").find("sInputFile=other.txt"), std::string::npos);
  form_.TypeText("cbInputFile", "third.txt");
  host_.answer = MessageAnswer::Yes;
  form_.CheckToSaveFileBeforeErasing();
  EXPECT_NE(folder_.Read("new.QLN").find("sInputFile=third.txt"), std::string::npos);
  const std::string sBroken = folder_.Write("broken.QLN", "[QLN]\r\nsInputFile=b.txt\r\nlTabSize=wide\r\n");
  EXPECT_THROW(form_.ConversionJobOpen(sBroken), UnhandledFailure);
  EXPECT_EQ(form_.sJobFile, folder_.Path("new.QLN")) << "changes of one job must not be saved over another";
  // A cancelled open leaves the job that was open.
  screen_.files = {""};
  form_.ConversionJobOpen("");
  EXPECT_EQ(form_.sJobFile, folder_.Path("new.QLN"));
  screen_.files = {folder_.Path("named")};
  form_.ConversionJobSaveAs();
  EXPECT_TRUE(folder_.Has("named.QLN") && !folder_.Has("named"));
  EXPECT_EQ(form_.sCaption, "named.QLN");
  form_.sJobFile.clear();
  screen_.files = {folder_.Path("never.QLN")};
  form_.ConversionJobSaveAs();
  EXPECT_FALSE(folder_.Has("never.QLN"));
  EXPECT_EQ(host_.messages.back().sText, "Unable to create file. Try a different folder such as 'My Documents'");
}

TEST_F(MainForm, TwoWindowsLoseNothingOfEachOther) {
  Load();
  clsRunFields fields;
  frmMain other(host_, screen_, gConversionOptions, log_, fields);
  bool bFirst = false;
  other.Form_Load(bFirst);
  other.lTabSize = 4;
  other.mruInputFile.AddUniqueItemToCollection("theirs");
  other.Form_Unload();
  form_.sStartColRow = "B2";
  form_.mruInputFile.AddUniqueItemToCollection("mine");
  form_.Form_Unload();
  const std::string sIni = folder_.Read(Data("QLN.INI"));
  for (const char* const pLine : {"lTabSize=4", "sStartColRow=B2", "mruInputFile1=theirs", "mruInputFile2=mine"}) {
    EXPECT_NE(sIni.find(pLine), std::string::npos) << sIni;
  }
}

TEST_F(MainForm, KeepsItsSettingsInTheirTwoFormsOfTruth) {
  folder_.Write(
      Data("QLN.INI"),
      "[General]\r\nbTreatDataAsText=\r\nbUnix=TRUE\r\nlTabSize=abc\r\nbIsUnicode=no\r\n"
      "lUseDoubleQuotes=2\r\nlConversionMethod=1\r\n[mruInputFile]\r\nmruInputFile1=old\r\nmruInputFile2=new\r\n");
  Load();
  EXPECT_TRUE(form_.bTreatDataAsText);
  EXPECT_FALSE(form_.bUnix);
  EXPECT_EQ(form_.lTabSize, 0);
  EXPECT_TRUE(form_.bIsUnicode);
  EXPECT_TRUE(fields_.bTrimInputTextFilesPadCharacter);
  EXPECT_EQ(form_.lConversionMethod, 1);
  EXPECT_EQ(Text("cbInputFile"), "new");
  EXPECT_EQ(form_.Get("cbInputFile").items, (std::vector<std::string>{"new", "old"}));
  EXPECT_EQ(Text("cbFixedWidthProfileList"), "Default-Profile");
  form_.bUnix = true;
  form_.Form_Unload();
  const std::string sIni = folder_.Read(Data("QLN.INI"));
  EXPECT_NE(sIni.find("bUnix=True\r\n"), std::string::npos);
  EXPECT_NE(sIni.find("bTreatDataAsText=TRUE\r\n"), std::string::npos);
  EXPECT_NE(sIni.find("sActiveFixedWidthProfile=Default-Profile\r\n"), std::string::npos);
  folder_.Write(Data("QLN.INI"), "[General]\r\nlTabSize=99999999999\r\n");
  EXPECT_THROW(Load(), UnhandledFailure);
}

TEST_F(MainForm, ConvertsWithConvertAndComesBackToIdle) {
  Load();
  form_.Click("rbConversionMethod", 2);
  form_.TypeText("cbInputFile", folder_.Write("a.txt", ">>1\r\n---- ----\r\nab   cd\r\n<<1\r\n"));
  form_.TypeText("cbOutputFile", folder_.Path("a.csv"));
  bool bDisabledDuringRun = false;
  host_.onEvents = [&] { bDisabledDuringRun = !Enabled("keyConvert") && Enabled("keyPause"); };
  form_.Click("keyConvert");
  EXPECT_EQ(folder_.Read("a.csv"), "ab   ,cd \r\n");
  EXPECT_TRUE(bDisabledDuringRun);
  EXPECT_TRUE(Enabled("keyConvert") && !Enabled("keyPause") && Enabled("cmdEditOutput"));
  EXPECT_EQ(form_.mruInputFile.FromNewest(1), folder_.Path("a.txt"));
  EXPECT_NE(log_.txtLog().find("Errors: 0\r\nWarnings: 0\r\nConversion Complete. Total Time: "), std::string::npos);
  form_.TypeText("cbInputFile", folder_.Path("missing.txt"));
  form_.Click("mnuBeginConversionJob");
  EXPECT_EQ(host_.Codes().back(), -1);
  EXPECT_TRUE(Enabled("keyConvert"));
}

TEST_F(MainForm, TwoFilesOfOneOutputAreToldBeforeTheRun) {
  Load();
  form_.Click("rbConversionMethod", 2);
  const char* const pMarked = ">>1\n-- -\nab 1\n<<1\n";
  for (const char* const pName : {"in/a.prt", "in/a.txt", "in/b.txt"}) folder_.Write(pName, pMarked);
  form_.TypeText("cbInputFile", folder_.Path("in/*.txt"));
  form_.TypeText("cbOutputFile", folder_.Path("*.csv"));
  EXPECT_TRUE(Visible("lblOutputPath"));
  EXPECT_EQ(form_.Get("lblOutputPath").sCaption, "First output: " + folder_.Path("in/a.csv"));
  form_.Click("keyConvert");
  EXPECT_EQ(folder_.Read("in/a.csv"), "ab ,1\r\n");
  std::filesystem::remove(folder_.Path("in/a.csv"));
  form_.TypeText("cbInputFile", folder_.Path("in/a.*"));
  host_.messages.clear();
  host_.answer = MessageAnswer::No;
  form_.Click("keyConvert");
  ASSERT_EQ(host_.messages.size(), 1U);
  EXPECT_NE(host_.messages[0].sText.find("-> " + folder_.Path("in/a.csv")), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("in/a.csv")));
  EXPECT_FALSE(form_.IsRunning());
  host_.answer = MessageAnswer::Yes;
  form_.Click("keyConvert");
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("in/a.csv")));
  form_.TypeText("cbInputFile", folder_.Path("in/a.txt"));
  EXPECT_FALSE(Visible("lblOutputPath"));
}

TEST_F(MainForm, WhatMarksTakeIsProvedWhenThatIsAsked) {
  Load();
  form_.Click("rbConversionMethod", 2);
  form_.TypeText("cbInputFile",
                 folder_.Write("a.txt", ">>1\n---- ----\nab   12\ncd   30\nef   40     x\n<<1\nstray\ngh   50\n"));
  form_.TypeText("cbOutputFile", folder_.Path("a.csv"));
  form_.Click("keyConvert");
  ASSERT_TRUE(Visible("cmdProof"));
  bool bShown = false;
  screen_.onModal = [&](clsForm& form) {
    auto& dialog = static_cast<frmProof&>(form);
    EXPECT_EQ(dialog.Proof().Lines(TidyLineKind::Row), 3);
    EXPECT_EQ(dialog.Proof().loss.lBehind, 1);
    EXPECT_EQ(dialog.Proof().lLikeRows, 1);
    EXPECT_NE(dialog.Recipe().find("ReadStartLine=>>1"), std::string::npos);
    EXPECT_EQ(dialog.Report().sInput, folder_.Path("a.txt"));
    bShown = true;
  };
  form_.Click("cmdProof");
  EXPECT_TRUE(bShown);
}

TEST_F(MainForm, ReadsAReportByThePageItShowsAndKeepsAnotherInTheJob) {
  Load();
  form_.Click("rbConversionMethod", 2);
  form_.TypeText("cbOutputFile", folder_.Path("a.csv"));
  form_.TypeText("cbInputFile", folder_.Write("a.txt",
                                              ">>1\n-- -\n\xC3\xA9"
                                              "1 2\n<<1\n"));
  EXPECT_EQ(Text("cbCodePage"), "By content: UTF-8");
  form_.Click("keyConvert");
  EXPECT_EQ(folder_.Read("a.csv"),
            "\xC3\xA9"
            "1 ,2\r\n");
  const auto& pages = form_.Get("cbCodePage").items;
  form_.SelectItem("cbCodePage", static_cast<int>(std::find(pages.begin(), pages.end(), "cp437") - pages.begin()));
  form_.Click("keyConvert");
  EXPECT_EQ(folder_.Read("a.csv"),
            "\xC3\xA9"
            "1, \r\n")
      << "each byte is a character";
  screen_.files = {folder_.Path("a.QLN")};
  form_.ConversionJobSaveAs();
  EXPECT_NE(folder_.Read("a.QLN").find("sCodePage=cp437\r\n"), std::string::npos);
  form_.ConversionJobOpen(folder_.Write("b.QLN", "[QLN]\r\nsInputFile=" + folder_.Write("b.txt", "\xE9") + "\r\n"));
  EXPECT_EQ(Text("cbCodePage"), "By content: windows-1252");
  form_.ConversionJobOpen(folder_.Path("a.QLN"));
  EXPECT_EQ(Text("cbCodePage"), "cp437");
}

TEST_F(MainForm, TellsHowTheRecordsOfAReportLieAndReadsThemSo) {
  Load();
  form_.Click("rbConversionMethod", 2);
  form_.TypeText("cbOutputFile", folder_.Path("a.csv"));
  // ">>1", "-- -", four times "ABCDEFGH 7", and "<<1" as EBCDIC lines with ASA carriage control.
  const std::string sRow = "\x40\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\x40\xF7\x15";
  form_.TypeText("cbInputFile", folder_.Write("a.txt", "\xF1\x6E\x6E\xF1\x15\x40\x60\x60\x40\x60\x15" + sRow + sRow +
                                                           sRow + sRow + "\x40\x4C\x4C\xF1\x15"));
  EXPECT_EQ(Text("cbCodePage"), "By content: read as EBCDIC (cp037), lines, ASA carriage control");
  form_.Click("keyConvert");
  EXPECT_EQ(folder_.Read("a.csv"), "ABC,D\r\nABC,D\r\nABC,D\r\nABC,D\r\n");
  // What a job says of a file that is no EBCDIC.
  form_.ConversionJobOpen(folder_.Write("b.QLN", "[QLN]\r\nsInputFile=" + folder_.Write("b.txt", "\xE9 1ab2cd") +
                                                     "\r\nsRecords=fixed\r\nlRecordLength=4\r\n"));
  EXPECT_EQ(Text("cbCodePage"), "By content: windows-1252: read as records of a length of 4");
  form_.TypeText("cbInputFile", folder_.Write("c.txt", "%PDF-1.4\n"));
  EXPECT_EQ(Text("cbCodePage"), "By content: PDF");
}

TEST_F(MainForm, TellsTheOptionsThatAnExampleOrAJobLeftBehindAndClearsThem) {
  Load();
  EXPECT_FALSE(Visible("cmdClearOptions"));
  form_.ConversionJobOpen(
      folder_.Write("a.QLN", "[QLN]\r\nsStartColRow=B6\r\nlTabSize=4\r\nbUnix=TRUE\r\nlDelimitationCharacter=124\r\n"));
  const std::string sLine = "Start cell B6;  Tab Size: 4;  Support Unix style text files;  Separator [124] |";
  EXPECT_EQ(form_.OptionsInForce(), sLine);
  EXPECT_EQ(form_.Get("lblOptionsInForce").sCaption, "Options in force: " + sLine);
  form_.Click("cmdClearOptions");
  EXPECT_EQ(form_.OptionsInForce(), "");
  EXPECT_FALSE(Visible("lblOptionsInForce"));
  EXPECT_EQ(form_.sStartColRow, "A1");
}

TEST_F(MainForm, AFailureThatNobodyHandlesEndsTheRunAlone) {
  Load();
  form_.Click("rbConversionMethod", 2);
  folder_.Write("in/a.txt", ">>1\n-- -\nab 1\n<<1\n");
  form_.TypeText("cbInputFile", folder_.Path("in/*.txt"));
  form_.TypeText("cbOutputFile", folder_.Path("longer/*.csv"));
  bool bTroubled = false;
  form_.onTrouble = [&] { bTroubled = true; };
  form_.Click("keyConvert");
  ASSERT_FALSE(host_.reports.empty());
  EXPECT_EQ(host_.reports.back().lErr, -1005);
  EXPECT_EQ(host_.reports.back().sErr3, "Choose an output folder with a shorter name, or save to the original folder.");
  EXPECT_TRUE(Enabled("keyConvert") && !form_.IsRunning());
  form_.TypeText("cbOutputFile", folder_.Path("io/*.csv"));
  form_.Click("keyConvert");
  EXPECT_EQ(folder_.Read("io/a.csv"), "ab ,1\r\n");
}

TEST_F(MainForm, PickersFillTheBoxes) {
  Load();
  screen_.files = {"/x/in.txt", "/x/out.xlsx", "/x/r.rcp"};
  form_.Click("cmdInputBrowse");
  form_.Click("cmdOutputBrowse");
  EXPECT_EQ(screen_.lastQuestion.filters.size(), 5U);
  EXPECT_TRUE(screen_.lastQuestion.bMayBeNew);
  form_.Click("rbConversionMethod", 1);
  form_.Click("cmdRecipeBrowse");
  EXPECT_EQ(Text("cbInputFile") + Text("cbOutputFile") + Text("cbRecipeFile"), "/x/in.txt/x/out.xlsx/x/r.rcp");
  screen_.folders = {"/in/", "/out", ""};
  form_.Click("cmdSelectInputFolder");
  EXPECT_EQ(Text("cbInputFile"), "/in/*.TXT");
  form_.Click("cmdSelectOutputFolder");
  EXPECT_EQ(Text("cbOutputFile"), "/out/*.xlsx");
  form_.Click("cmdSelectInputFolder");
  EXPECT_EQ(Text("cbInputFile"), "/in/*.TXT");
}

TEST_F(MainForm, LaunchesFilesAndFoldersAndSaysWhatIsGone) {
  Load();
  const std::string sFile = folder_.Write("a.txt", "x");
  form_.LaunchFile(sFile);
  form_.LaunchFile(folder_.Path());
  EXPECT_EQ(host_.opened, (std::vector<std::string>{sFile, folder_.Path()}));
  form_.LaunchFile("/no/such");
  EXPECT_EQ(host_.messages.back().sText, "File/Folder does not exist:\r\n\r\n/no/such");
}

TEST_F(MainForm, TheGuideLoadsAnExampleOnlyIfItsJobIsThere) {
  folder_.Write(Data("Example2-Recipe.QLN"), "[QLN]\r\nsInputFile=two\r\n");
  Load();
  screen_.onModal = [](clsForm& guide) { guide.Click("cmdLoadDemo2"); };
  form_.Click("mnuGettingStarted");
  EXPECT_EQ(Text("cbInputFile"), "two");
  screen_.onModal = [](clsForm& guide) { guide.Click("cmdLoadDemo3"); };
  form_.Click("mnuGettingStarted");
  EXPECT_EQ(Text("cbInputFile"), "two");
  EXPECT_EQ(form_.lLoadDemo, 0);
  screen_.onModal = [&](clsForm& guide) {
    guide.Click("cmdOpenBrowserToDemo1bat");
    EXPECT_EQ(host_.messages.back().sTitle, "Error");
    EXPECT_TRUE(guide.KeyPressed("Escape"));
  };
  form_.Click("mnuGettingStarted");
  EXPECT_EQ(Text("cbInputFile"), "two");
}

TEST_F(MainForm, OptionsAreCopiedOnApplyOnlyAndMarkTheJobAsTheyDo) {
  Load();
  form_.lDelimitationCharacter = 9;
  screen_.onModal = [](clsForm& dialog) {
    EXPECT_EQ(dialog.Get("cbCharacter1").sText, "[9] TAB");
    dialog.SelectItem("cbCharacter1", 124);
    dialog.Click("rbUseDoubleQuotes", 2);
    dialog.SelectItem("tsDisplay", 1);
    dialog.Click("cmdApply");
  };
  form_.ConfigureQLNOptions();
  EXPECT_EQ(form_.lDelimitationCharacter, 124);
  EXPECT_EQ(form_.lUseDoubleQuotes, 2);
  EXPECT_EQ(form_.lLastOptionsTabDisplayed, 1);
  EXPECT_FALSE(form_.bAskToSaveBMKFileBeforeExit);
  screen_.onModal = [](clsForm& dialog) {
    dialog.SelectItem("tsDisplay", 0);
    dialog.TypeText("txtTabSize", "");
    dialog.Click("cmdApply");
    EXPECT_FALSE(dialog.IsUnloaded());
    dialog.KeyPressed("Escape");
  };
  form_.ConfigureQLNOptions();
  EXPECT_EQ(form_.lTabSize, 8);
  EXPECT_TRUE(form_.bAskToSaveBMKFileBeforeExit);
}

TEST_F(MainForm, TheFrameKeepsTheLastNormalPlaceAndAMinimumSize) {
  frmMainMDI frame;
  frame.ReadIniFile();
  EXPECT_EQ(frame.placement.Width, 13695);
  frame.placement.Left = 300;
  frame.SaveIniFile(false);
  frame.placement = {2, 0, 0, 99999, 99999};
  frame.SaveIniFile(false);
  frmMainMDI again;
  again.ReadIniFile();
  EXPECT_EQ(again.placement.lWindowState, 2);
  EXPECT_EQ(again.placement.Left, 300);
  again.placement = {0, 0, 0, 10, 10};
  again.MDIForm_Resize();
  EXPECT_EQ(again.placement.Height, frmMainMDI::kMinHeight);
  EXPECT_TRUE(again.bFirstTimeUser);
  again.NoteFirstStartEnded();
  EXPECT_FALSE(frmMainMDI().bFirstTimeUser);
}

TEST_F(MainForm, ALanguageIsChosenAtOnceOrForTheNextStart) {
  folder_.Write(Data("Languages/Klingon-Quillon.txt"), "\"!\"\r\n\"&Done\",\"&rIn\"\r\n");
  InitializeTranslator(host_, nullptr);
  const auto choose = [](clsForm& dialog) {
    clsControl& list = dialog.Get("List1");
    const auto found = std::find(list.items.begin(), list.items.end(), "Klingon");
    dialog.SelectItem("List1", static_cast<int>(found - list.items.begin()));
    EXPECT_TRUE(dialog.Get("cmdEditLanguageFile").bEnabled);
    dialog.Click("cmdDone");
  };
  screen_.onModal = choose;
  EXPECT_TRUE(ChooseLanguage(host_, screen_, true));
  EXPECT_EQ(gsLanguage, "English");
  EXPECT_EQ(GetLanguage(), "Klingon");
  EXPECT_EQ(host_.messages.back().sText, "Your changes will take effect next time you run Quillon");
  screen_.onModal = [](clsForm& dialog) {
    dialog.SelectItem("List1", 0);
    dialog.Click("cmdDone");
  };
  EXPECT_TRUE(ChooseLanguage(host_, screen_, true));
  EXPECT_EQ(GetLanguage(), "English") << "a wrong choice can be taken back";
  screen_.onModal = choose;
  ChooseLanguage(host_, screen_, true);
  ResetTranslator();
  InitializeTranslator(host_, nullptr);
  frmLanguage dialog(host_, screen_);
  dialog.Form_Load();
  EXPECT_EQ(dialog.Get("cmdDone").sCaption, "&rIn");
  EXPECT_EQ(dialog.Get("List1").sText, "Klingon");
  const std::vector<std::string>& languages = dialog.Get("List1").items;
  dialog.SelectItem("List1",
                    static_cast<int>(std::find(languages.begin(), languages.end(), "German") - languages.begin()));
  dialog.Click("cmdEditLanguageFile");
  EXPECT_EQ(host_.opened, std::vector<std::string>{folder_.Path(Data("Languages/German-Quillon.txt"))});
  EXPECT_TRUE(folder_.Has(Data("Languages/German-Quillon.txt"))) << "the user edits a copy of the shipped file";
}

TEST_F(MainForm, SmallFormsShowWhatTheyAreGiven) {
  frmTextDisplay viewer(host_, screen_, folder_.Write("h.txt", "a\r\nb\r\n"));
  viewer.Form_Load();
  EXPECT_EQ(viewer.Get("lstData").items, (std::vector<std::string>{"a", "b"}));
  frmTextDisplay missing(host_, screen_, "/no/such");
  missing.Form_Load();
  EXPECT_EQ(host_.messages.back().sText, "Help file /no/such does not exist!");
}

}  // namespace
}  // namespace quillon
