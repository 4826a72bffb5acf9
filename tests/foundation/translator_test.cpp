#include <gtest/gtest.h>

#include <filesystem>

#include "clsMRU.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modFailure.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {
namespace {

class Translator : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("APPDATA", folder_.Path().c_str(), 1);
    setenv("LC_ALL", "C", 1);
    ResetFoundationGlobals();
    ResetTranslator();
    FindSettingsFile();
    gsAppDataFolder = AppDataFolder();
  }
  void TearDown() override {
    ResetTranslator();
    ResetFoundationGlobals();
  }
  void Start(std::string_view sLanguage) {
    WritePrivateProfileString(gsSettingsFile, "Language", "Language_Code", sLanguage);
    InitializeTranslator(host_, nullptr);
  }
  static constexpr const char* kFile = "Brindlemark, Inc/Quillon/Languages/Klingon-Quillon.txt";
  clsTempFolder folder_;
  clsTestHost host_;
};

TEST_F(Translator, ReadsPairsCommentsAndTheEndMark) {
  folder_.Write(kFile,
                "\"! comment\r\n\r\n\"Save\",\"qon\"\r\n\"Save\",\"again\"\r\n\" Close \",\"SoQ\"\r\n\"Plain\"\r\n"
                "\"Error\",\"Fehler\",\"x\"\r\n\"****\r\n\"Open\",\"poS\"\r\n");
  Start("Klingon");
  EXPECT_EQ(Translate("Save"), "qon");
  EXPECT_EQ(Translate(" Close "), "SoQ");
  EXPECT_EQ(Translate("Plain"), "Plain");
  EXPECT_EQ(Translate("Error"), "Fehler");
  EXPECT_EQ(Translate("Open"), "Open");
  EXPECT_EQ(Translate("  "), "  ");
}

TEST_F(Translator, AppendsAMissingPhraseOnceInTheFormatOfTheFile) {
  folder_.Write(kFile, "\"!\"");
  Start("Klingon");
  EXPECT_EQ(Translate("New text"), "New text");
  EXPECT_EQ(Translate("New text"), "New text");
  EXPECT_EQ(folder_.Read(kFile), "\"!\"\r\n\"New text\"\r\n");

  const std::string sWide("\xFF\xFE\"\0!\0\"\0\r\0\n\0", 12);
  folder_.Write(kFile, sWide);
  ResetTranslator();
  Start("Klingon");
  EXPECT_EQ(giLanguageFileFormat, -1);
  Translate("A");
  EXPECT_EQ(folder_.Read(kFile), sWide + std::string("\"\0A\0\"\0\r\0\n\0", 10));

  // Half a character at the end doesn't shift the new line.
  folder_.Write(kFile, sWide + "x");
  ResetTranslator();
  Start("Klingon");
  Translate("B");
  EXPECT_EQ(folder_.Read(kFile), sWide + std::string("x\0\r\0\n\0\"\0B\0\"\0\r\0\n\0", 16));
}

TEST_F(Translator, TellsOnceThatThePhrasesCannotBeAdded) {
  folder_.Write(kFile, "\"!\"\r\n");
  Start("Klingon");
  // A folder in its place can't be written to, whoever asks.
  std::filesystem::remove(folder_.Path(kFile));
  std::filesystem::create_directory(folder_.Path(kFile));
  EXPECT_EQ(Translate("One") + Translate("Two"), "OneTwo");
  ASSERT_EQ(host_.messages.size(), 1U);
  EXPECT_EQ(host_.messages[0].sTitle + ": " + host_.messages[0].sText, "Error: Unable to add to Language file");
}

TEST_F(Translator, RefusesAFileThatIsMissingOrNoLanguageFile) {
  try {
    Start("Klingon");
    ADD_FAILURE() << "started without a language file";
  } catch (const UnhandledFailure& failure) {
    EXPECT_EQ(failure.what(), "InitializeTranslator: Unable to locate Language file: \r\n" + gsAppDataFolder +
                                  "Languages\\Klingon-Quillon.txt");
  }
  folder_.Write(kFile, "Save,qon\r\n");
  EXPECT_THROW(Start("Klingon"), UnhandledFailure);
  folder_.Write(kFile, "");
  EXPECT_THROW(Start("Klingon"), UnhandledFailure);
}

TEST_F(Translator, StaysEnglishAndAsksOnlyOnASystemThatIsNot) {
  int nAsked = 0;
  InitializeTranslator(host_, [&] { ++nAsked; });
  EXPECT_EQ(nAsked, 0);
  EXPECT_EQ(GetLanguage(), "English");
  WritePrivateProfileString(gsSettingsFile, "Language", "Language_Code", "");
  setenv("LC_ALL", "ja_JP.UTF-8", 1);
  InitializeTranslator(host_, [&] { ++nAsked; });
  EXPECT_EQ(nAsked, 1);
  EXPECT_TRUE(gbDoubleByteLocale);
  EXPECT_EQ(Translate("Never written"), "Never written");
  EXPECT_FALSE(folder_.Has("Brindlemark, Inc/Quillon/Languages"));
}

TEST_F(Translator, RecentListsMoveReplaceAndBoundTheirEntries) {
  clsMRU list;
  list.Setup(3, gsSettingsFile, "mruInputFile", "-1");
  list.WriteCollectionToIniFile();
  EXPECT_EQ(folder_.Read("Brindlemark, Inc/Quillon/QLN.INI").find("mru"), std::string::npos);
  for (const char* s : {"a", "", "b", "c", "A", "d"}) list.AddUniqueItemToCollection(s);
  EXPECT_EQ(list.colItems, (std::vector<std::string>{"c", "A", "d"}));
  EXPECT_EQ(list.FromNewest(1), "d");
  list.ShutDown();
  EXPECT_NE(folder_.Read("Brindlemark, Inc/Quillon/QLN.INI")
                .find("[mruInputFile]\r\nmruInputFile1=c\r\nmruInputFile2=A\r\nmruInputFile3=d\r\n"
                      "mruInputFile4=MRU_DONE\r\n"),
            std::string::npos);
  clsMRU again;
  again.Setup(2, gsSettingsFile, "mruInputFile", "-1");
  EXPECT_EQ(again.colItems, (std::vector<std::string>{"c", "A"}));
  EXPECT_TRUE(again.bItemExistsInMRU("a", false));
  EXPECT_FALSE(again.bItemExistsInMRU("a", true));
}

}  // namespace
}  // namespace quillon
