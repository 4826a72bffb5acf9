#include <gtest/gtest.h>

#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modParseCommandLine.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {
namespace {

class CommandLine : public testing::Test {
 protected:
  CommandLine() {
    setenv("TZ", "UTC", 1);
    gsAppDataFolder = folder.Path() + "/";
  }
  ~CommandLine() override { ResetFoundationGlobals(); }

  bool Parse(std::string_view sText) {
    options = clsConversionOptions();
    const bool run = ParseCommandLine(sText, options, host);
    EXPECT_EQ(RunsUnattended(sText), run) << sText;
    return run;
  }

  clsTempFolder folder;
  clsTestHost host;
  clsConversionOptions options;
};

TEST_F(CommandLine, IsOneTextCutAtSlashes) {
  std::string letter;
  EXPECT_EQ(CountOccurrences("/Ia /Ob", "/"), 3);
  EXPECT_EQ(GetArgument(2, "/I a b /Ob", "/", letter), "a b");
  EXPECT_EQ(letter, "I");
  EXPECT_EQ(GetArgument(3, "/Ia//Ob", "/", letter), "");
  EXPECT_EQ(letter, "I") << "a field without any character leaves the letter";
  EXPECT_EQ(GetArgument(3, "/Ia/", "/", letter), "");
  EXPECT_EQ(letter, "") << "the blank that closes the text is a field of its own";
  EXPECT_EQ(GetArgument(4, "/Ia/", "/", letter), "");
}

TEST_F(CommandLine, TellsRunFromWindow) {
  EXPECT_FALSE(Parse(""));
  EXPECT_FALSE(gbCommandLineMode);
  EXPECT_TRUE(Parse("no switch at all"));
  EXPECT_TRUE(gbCommandLineMode);
  EXPECT_EQ(options.lConversionMethod, kMethodMarkup);

  EXPECT_FALSE(Parse("/!C:\\j\\a.QLN /S"));
  EXPECT_TRUE(OpensJobInWindow("/G /!C:\\j\\a.QLN /?"));
  EXPECT_FALSE(OpensJobInWindow("/? /!C:\\j\\a.QLN"));
  EXPECT_TRUE(options.bOpenConversionJobOnly);
  EXPECT_EQ(options.sCLBatchJobFile, "C:\\j\\a.QLN");
  EXPECT_FALSE(options.bDoSubfolders) << "nothing behind /! is read";

  EXPECT_FALSE(Parse("/S /? /G"));
  EXPECT_TRUE(options.bDoSubfolders);
  EXPECT_FALSE(options.bSaveInOriginalFolder);
  EXPECT_EQ(host.opened, std::vector<std::string>{CommandLineHelpPage()});
}

TEST_F(CommandLine, SwitchesFillTheRecord) {
  EXPECT_TRUE(
      Parse("/c/g/IC:\\My Files\\a.txt /OC:\\o\\a.csv /d9 /W\"Budget, Expense\" /ZB4 /E2 /Y /U /M /V /T4 /A /S /Qx"));
  EXPECT_FALSE(options.bClearOutputFileBeforeProcessing);
  EXPECT_TRUE(options.bSaveInOriginalFolder);
  EXPECT_EQ(options.sInputFile, "C:\\My Files\\a.txt");
  EXPECT_EQ(options.sOutputFile, "C:\\o\\a.csv");
  EXPECT_EQ(options.lDelimitationCharacter, 9);
  EXPECT_EQ(options.sSheetTarget, "Budget, Expense");
  EXPECT_EQ(options.sStartColRow, "B4");
  EXPECT_EQ(options.lUseDoubleQuotes, 2);
  EXPECT_TRUE(options.bTreatDataAsText && options.bIsUnicode && options.bVerbose && options.bUnix &&
              options.bDoSubfolders);
  EXPECT_FALSE(options.bTrimInputTextFilesPadCharacter);
  EXPECT_EQ(options.lTabSize, 4);

  Parse("/Dx /T99999999999 /E(1)");
  EXPECT_EQ(options.lDelimitationCharacter, 44) << "what is no number leaves the option";
  EXPECT_EQ(options.lTabSize, 8);
  EXPECT_EQ(options.lUseDoubleQuotes, -1);
}

TEST_F(CommandLine, LastMethodWinsAndKeepsTheOtherName) {
  Parse("/RC:\\r\\a.rcp /P\"Ledger\"");
  EXPECT_EQ(options.lConversionMethod, kMethodProfile);
  EXPECT_EQ(options.sRecipeFile, "C:\\r\\a.rcp");
  EXPECT_EQ(options.sFixedWidthProfile, "Ledger");
  Parse("/PLedger /Ra.rcp");
  EXPECT_EQ(options.lConversionMethod, kMethodRecipe);
}

TEST_F(CommandLine, PathRulesDifferBySwitch) {
  Parse("/Ia.txt /O\"a.csv\" /I\"C:\\in\\a.txt\" /Rr.rcp");
  EXPECT_EQ(options.sInputFile, "C:\\in\\a.txt") << "quotes go from a path";
  EXPECT_EQ(options.sOutputFile, JoinPath(gsAppDataFolder, "\"a.csv\"")) << "and stay on a bare name";
  EXPECT_EQ(options.sRecipeFile, JoinPath(ProgramFolder(), "r.rcp"));

  setenv("APPDATA", folder.Path().c_str(), 1);
  Parse("/I%APPDATA%\\a.txt /P%APPDATA%");
  EXPECT_EQ(HostPath(options.sInputFile), folder.Path("a.txt"));
  EXPECT_EQ(options.sFixedWidthProfile, "%APPDATA%");
  unsetenv("APPDATA");

  const std::string here = AbsolutePath("");
  ASSERT_EQ(chdir(folder.Path().c_str()), 0);
  folder.Write("here.QLN", "");
  Parse("/J \"here.QLN\"");
  EXPECT_EQ(HostPath(options.sCLBatchJobFile), HostPath(AbsolutePath("here.QLN")));
  Parse("/Jgone.QLN");
  EXPECT_EQ(options.sCLBatchJobFile, JoinPath(ProgramFolder(), "gone.QLN"));
  ASSERT_EQ(chdir(here.c_str()), 0);
}

TEST_F(CommandLine, LogRuleMakesTheFolderThenExpandsStamps) {
  setenv("QUILLON_DRIVE_C", folder.Path().c_str(), 1);
  Parse("/L\"C:\\logs\\run [YMD] [y].log\"");
  EXPECT_EQ(options.sLogFile, "C:\\logs\\run 20240102 [y].log");
  EXPECT_TRUE(folder.Has("logs"));
  Parse("/Lrun [H][I][S].log");
  EXPECT_EQ(options.sLogFile, JoinPath(gsAppDataFolder, "run 030405.log"));
  EXPECT_EQ(ExpandDateTimeStamps("", host.now), "");
  unsetenv("QUILLON_DRIVE_C");
}

}  // namespace
}  // namespace quillon
