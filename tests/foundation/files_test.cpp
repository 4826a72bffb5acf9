#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>

#include "clsIniFile.h"
#include "clsMRU.h"
#include "clsOutputFile.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modText.h"

namespace quillon {
namespace {

TEST(OutputFile, ReplacesTheOldFileOnlyWhenWhole) {
  const clsTempFolder folder;
  const std::string sFile = folder.Write("out.csv", "old");
  chmod(sFile.c_str(), 0640);
  Failure failure;
  {
    clsOutputFile file;
    ASSERT_TRUE(file.Open(sFile, failure));
    file.Write(std::string(3 << 20, 'x'));
    EXPECT_EQ(folder.Read("out.csv"), "old");
  }
  EXPECT_EQ(folder.Read("out.csv"), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
  ASSERT_TRUE(WriteWholeFile(sFile, "new", failure)) << failure.sText;
  EXPECT_EQ(folder.Read("out.csv"), "new");
  struct stat info {};
  ASSERT_EQ(stat(sFile.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777U, 0640U);
}

TEST(OutputFile, FollowsLinksAndRefusesFolders) {
  const clsTempFolder folder;
  folder.Write("real.csv", "old");
  std::filesystem::create_symlink("real.csv", folder.Path("link.csv"));
  Failure failure;
  ASSERT_TRUE(WriteWholeFile(folder.Path("link.csv"), "new", failure));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link.csv")));
  EXPECT_EQ(folder.Read("real.csv"), "new");
  std::filesystem::create_symlink("new.csv", folder.Path("dangling.csv"));
  ASSERT_TRUE(WriteWholeFile(folder.Path("dangling.csv"), "made", failure)) << failure.sText;
  EXPECT_EQ(folder.Read("new.csv"), "made");
  std::filesystem::create_symlink("loop.csv", folder.Path("loop.csv"));
  EXPECT_FALSE(WriteWholeFile(folder.Path("loop.csv"), "x", failure));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("loop.csv")));
  EXPECT_FALSE(WriteWholeFile(folder.Path(), "x", failure));
  EXPECT_FALSE(WriteWholeFile(folder.Path("no/such/a.csv"), "x", failure));
  failure = {};
  EXPECT_FALSE(WriteWholeFile("/dev/full", std::string(10, 'x'), failure));
  EXPECT_NE(failure.sText.find("No space left"), std::string::npos) << failure.sText;
}

TEST(OutputFile, IsPrivateInTheMakingAndGetsTheCallersPermissionsAtTheEnd) {
  const clsTempFolder folder;
  clsTemporaryFile temporary;
  struct stat info {};
  const mode_t old = umask(0);
  ASSERT_TRUE(temporary.Open(folder.Path() + "/") && fstat(temporary.Handle(), &info) == 0);
  EXPECT_EQ(info.st_mode & 0777U, 0600U);
  Failure failure;
  umask(027);
  EXPECT_TRUE(WriteWholeFile(folder.Path("new.csv"), "x", failure));
  umask(old);
  ASSERT_EQ(stat(folder.Path("new.csv").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777U, 0640U);
}

TEST(OutputFile, RemovesWhatKilledRunsLeftAndNothingElse) {
  const clsTempFolder folder;
  const auto aged = [&](const char* pName, int nHours) {
    const std::string sFile = folder.Write(pName, "x");
    const auto time = std::filesystem::file_time_type::clock::now() - std::chrono::hours(nHours);
    std::filesystem::last_write_time(sFile, time);
    return sFile;
  };
  aged(".quillon-unfinished-dead00", 1);
  aged(".quillon-unfinished-young0", 0);
  aged(".quillon-unfinished-by-hand", 1);
  const int nHeld = open(aged(".quillon-unfinished-alive0", 1).c_str(), O_RDWR);
  ASSERT_EQ(flock(nHeld, LOCK_EX), 0);
  Failure failure;
  ASSERT_TRUE(WriteWholeFile(folder.Write("out.csv", "old"), "new", failure));
  close(nHeld);
  EXPECT_FALSE(folder.Has(".quillon-unfinished-dead00"));
  EXPECT_TRUE(folder.Has(".quillon-unfinished-young0") && folder.Has(".quillon-unfinished-by-hand") &&
              folder.Has(".quillon-unfinished-alive0"));
  EXPECT_EQ(folder.Read("out.csv"), "new");
}

TEST(Paths, MapDrivesSeparatorsAndCase) {
  const clsTempFolder folder;
  folder.Write("In/Report.TXT", "x");
  setenv("QUILLON_DRIVE_C", folder.Path().c_str(), 1);
  EXPECT_EQ(HostPath("C:\\In\\Report.TXT"), folder.Path("In/Report.TXT"));
  EXPECT_EQ(HostPath("c:\\in\\report.txt"), folder.Path("In/Report.TXT"));
  EXPECT_EQ(HostPath("C:\\IN\\new.csv"), folder.Path("In/new.csv"));
  unsetenv("QUILLON_DRIVE_C");
  EXPECT_EQ(HostPath("C:\\no\\such"), "/no/such");
}

TEST(Paths, KeepNamesApartThatDifferInBytesThatAreNoCharacters) {
  clsTempFolder folder;
  const std::string sOther = folder.Write("r\xE8.csv", "precious");
  const std::string sNew = folder.Path("r\xE9.csv");
  EXPECT_EQ(HostPath(sNew), sNew);
  EXPECT_FALSE(IsFile(sNew));
  EXPECT_EQ(HostPath(folder.Path("R\xE8.CSV")), sOther);
  EXPECT_EQ(FindNoCase("a\xE8Z", "\xE9z"), std::string_view::npos);
}

TEST(Paths, SplitLikeTheTextsTheyAre) {
  EXPECT_EQ(FolderOfPath("C:\\in\\a.txt"), "C:\\in\\");
  EXPECT_EQ(FolderOfPath("a.txt"), "");
  EXPECT_EQ(FileNameOfPath("/x/a"), "a.");
  EXPECT_EQ(FileNameOfPath("C:\\x\\a.b.c"), "a.b.c");
  EXPECT_EQ(ParentFolderOfPath("C:\\in\\a.txt"), "C:\\in");
  EXPECT_EQ(ParentFolderOfPath("C:\\a.txt"), "C:\\");
  EXPECT_EQ(ParentFolderOfPath("/a.txt"), "/");
  EXPECT_EQ(ParentFolderOfPath("/"), "");
  EXPECT_EQ(ParentFolderOfPath("a.txt"), "");
  EXPECT_EQ(DriveOrShareRoot("C:\\a", true), "C:\\");
  EXPECT_EQ(DriveOrShareRoot("\\\\srv\\share\\x", false), "\\\\srv\\share");
  EXPECT_EQ(DriveOrShareRoot("/a", true), "");
  EXPECT_EQ(JoinPath("/a", "b"), "/a/b");
  EXPECT_EQ(JoinPath("C:\\a", "b"), "C:\\a\\b");
}

TEST(Paths, ExpandOnlyTheFirstKnownToken) {
  setenv("APPDATA", "/home/u/cfg", 1);
  setenv("HOME", "/home/u", 1);
  EXPECT_EQ(ExpandedPath(" %AppData%\\x.txt "), "\\home\\u\\cfg\\x.txt");
  EXPECT_EQ(ExpandedPath("%appdata%/x.txt"), "/home/u/cfg/x.txt");
  EXPECT_EQ(ExpandedPath("%HOMEPATH%\\x"), "%HOMEPATH%\\x");
  EXPECT_EQ(ExpandedPath("%APPDATA%\\%USERPROFILE%"), "%APPDATA%\\\\home\\u");
  EXPECT_EQ(ExpandedPath("%WINDIR%\\x"), "%WINDIR%\\x");
  EXPECT_EQ(ExpandedPath("~/in/*.txt") + ExpandedPath("~x/a~/b"), "/home/u/in/*.txt~x/a~/b");
}

TEST(Files, AnswerWithoutRaising) {
  const clsTempFolder folder;
  const std::string sFile = folder.Write("sub/a.txt", "x");
  EXPECT_TRUE(FileExists(" " + sFile + " "));
  EXPECT_FALSE(FileExists(""));
  EXPECT_FALSE(FileExists(folder.Path("sub/*.txt")));
  EXPECT_FALSE(FileExists(folder.Path("sub"))) << "a folder of a recipe's name is no recipe";
  EXPECT_TRUE(FolderHasEntries(folder.Path("sub")));
  EXPECT_EQ(NearestExistingPath(folder.Path("sub/no/such.txt")), folder.Path("sub/") + "such.txt");
  EXPECT_EQ(DeepestExistingFolder(folder.Path("sub/no/x")), folder.Path("sub"));
  MakeFolderPath(folder.Path("12:30/a"));
  EXPECT_EQ(DeepestExistingFolder(folder.Path("12:30/a/no")), folder.Path("12:30/a"));
  EXPECT_EQ(DeepestExistingFolder("C:" + folder.Path("sub/no")), "C:" + folder.Path("sub"));
  EXPECT_TRUE(IsFolderWriteable(folder.Path("sub/new.txt")));
  EXPECT_FALSE(IsFolderWriteable(""));
  EXPECT_EQ(UniqueTempFileName(folder.Path(), "12345678", "t"), folder.Path("12345678.t"));
  MakeFolderPath(folder.Path("a/b/c"));
  EXPECT_TRUE(FolderExists(folder.Path("a/b/c")));
  EXPECT_TRUE(CopyFolderOver(folder.Path("sub"), folder.Path("copy"), true));
  EXPECT_TRUE(MoveFileOver(folder.Path("copy/a.txt"), folder.Path("b.txt")));
  EXPECT_EQ(folder.Read("b.txt"), "x");
  EXPECT_FALSE(MoveFileOver(folder.Path("b.txt"), folder.Path("B.TXT")));
  EXPECT_EQ(folder.Read("b.txt"), "x");
  clsTestHost host;
  EXPECT_TRUE(DeleteFileWithRetry(host, folder.Path("absent")));
  EXPECT_FALSE(DeleteFileWithRetry(host, "/proc/version"));
  EXPECT_EQ(host.lTick, 20000);
}

TEST(RecentList, KeepsWhatAnotherProcessAddedMeanwhile) {
  const clsTempFolder folder;
  const std::string sFile = folder.Path("QLN.INI");
  clsMRU mine;
  clsMRU theirs;
  clsMRU cleared;
  for (clsMRU* const pList : {&mine, &theirs, &cleared}) pList->Setup(3, sFile, "mru", "-1");
  theirs.AddUniqueItemToCollection("b");
  theirs.AddUniqueItemToCollection("a");
  theirs.ShutDown();
  mine.AddUniqueItemToCollection("A");
  mine.AddUniqueItemToCollection("c");
  mine.ShutDown();
  EXPECT_EQ(mine.colItems, (std::vector<std::string>{"b", "A", "c"}));
  cleared.ClearAllItemsInList();
  cleared.AddUniqueItemToCollection("d");
  cleared.ShutDown();
  mine.ReadIniFileIntoCollection();
  EXPECT_EQ(mine.colItems, (std::vector<std::string>{"d"}));
  EXPECT_FALSE(folder.Has("QLN.INI.lock"));
}

TEST(IniFile, ChangesKeysInPlaceAndKeepsAllElse) {
  clsIniFile file;
  file.LoadText("; note\r\n[General]\r\nlTabSize=8\r\n;x=1\r\nOdd line\r\n\r\n[Other]\nA = \" b \" \n");
  EXPECT_EQ(file.Get("GENERAL", "LTABSIZE", "-"), "8");
  EXPECT_EQ(file.Get("General", "x", "-"), "-");
  EXPECT_EQ(file.Get("Other", "a", "-"), " b ");
  file.Set("general", "ltabsize", "4");
  file.Set("General", "New", "1");
  file.Set("Third", "K", "");
  EXPECT_EQ(file.Bytes(),
            "; note\r\n[General]\r\nltabsize=4\r\n;x=1\r\nOdd line\r\nNew=1\r\n\r\n[Other]\nA = \" b \" \n"
            "[Third]\r\nK=\r\n");
}

TEST(IniFile, CutsLongValuesAndKeepsWhatTheCodePageLacks) {
  clsIniFile file;
  file.Set("QLN", "s", std::string(600, 'x'));
  EXPECT_EQ(file.Get("QLN", "s", "").size(), 499U);
  file.LoadText("[QLN]\r\nsInputFile=caf\xE9\r\nn=12x\r\nb=-3\r\nw=wide\r\nh=99999999999");
  EXPECT_EQ(file.Get("QLN", "sInputFile", ""), "café");
  EXPECT_EQ(file.GetInt("QLN", "n", 7), 12);
  EXPECT_EQ(file.GetInt("QLN", "b", 7), -3);
  for (const char* const sNone : {"z", "w", "h"}) EXPECT_EQ(file.GetInt("QLN", sNone, 7), 7) << sNone;
  file.Set("QLN", "sOutputFile", "/out/報告.csv");
  clsIniFile again;
  again.LoadText(file.Bytes());
  EXPECT_EQ(again.Get("QLN", "sOutputFile", ""), "/out/報告.csv");
  EXPECT_EQ(again.Get("QLN", "sInputFile", ""), "café");
}

TEST(IniFile, HoldsOneLineForAKeyWhateverTheTextAndTheLastLine) {
  clsIniFile file;
  file.LoadText("[A]\r\nx=1\r");  // A CR alone ends no line.
  file.Set("MRU", "MRU1", "/in/odd\r\n[A]\nx=2\r");
  clsIniFile again;
  again.LoadText(file.Bytes());
  EXPECT_EQ(again.Get("A", "x", ""), "1");
  EXPECT_EQ(again.Get("MRU", "MRU1", ""), "/in/odd\r [A] x=2");
}

TEST(IniFile, KeepsThePageThatItsContentTells) {
  clsIniFile file(nullptr);
  file.LoadText("[A]\nx=Grün\n");
  file.Set("A", "y", "Ärger");
  clsIniFile again(nullptr);
  again.LoadText(file.Bytes());
  EXPECT_EQ(again.Get("A", "x", "") + again.Get("A", "y", ""), "GrünÄrger");

  file.LoadText("");
  file.Set("A", "x", "Ã¼");  // In windows-1252 these are the bytes of another text in UTF-8.
  again.LoadText(file.Bytes());
  EXPECT_EQ(again.Get("A", "x", ""), "Ã¼");
}

TEST(Settings, AreMadeOnceWithTheirFirstLinesAndTheProbe) {
  const clsTempFolder folder;
  setenv("APPDATA", folder.Path().c_str(), 1);
  ResetFoundationGlobals();
  const std::string sFile = FindSettingsFile();
  EXPECT_EQ(HostPath(sFile), folder.Path("Brindlemark, Inc/Quillon/QLN.INI"));
  EXPECT_EQ(folder.Read("Brindlemark, Inc/Quillon/QLN.INI"),
            "[Header]\r\nProduct=QLN_B\r\nFileType=CONFIG\r\nFileFormat=1.0\r\n\r\n[General]\r\nDefaultInputFile=\r\n"
            "DefaultOutputFile=\r\nUseRecipeFile=\r\nDefaultRecipeFile=\r\n\r\n[Main]\r\nPartial=Level3\r\n");
  StoreSet("Settings", "bDInstalled", "TRUE");
  EXPECT_EQ(StoreGet("settings", "bdinstalled", "FALSE"), "TRUE");
  ResetFoundationGlobals();
}

}  // namespace
}  // namespace quillon
