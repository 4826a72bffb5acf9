#include "modConversionRun.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "MainModule.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modCellwright_DLL.h"
#include "modFiles.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {
namespace {

/// A host whose reports go to a log, as every program's do.
class clsLoggingHost : public clsTestHost {
 public:
  clsRunLog* pLog = nullptr;
  void Report(const ReportEntry& entry) override {
    clsTestHost::Report(entry);
    pLog->Report(entry);
  }
};

class ConversionRun : public testing::Test {
 protected:
  ConversionRun() {
    setenv("TZ", "UTC", 1);
    setenv("APPDATA", folder.Path("appdata").c_str(), 1);
    setenv("QUILLON_DRIVE_C", folder.Path().c_str(), 1);
    gsAppDataFolder = AppDataFolder();
    MakeFolderPath(gsAppDataFolder);
    gsDataFolder = folder.Path("appdata");
    folder.Write("appdata/Profiles/P.txt",
                 "1\t2\t[32] Space\tLeft\tNo\t1\t\t\r\n2\t2\t[32] Space\tLeft\tNo\t2\t\t\r\n");
    host.pLog = &log;
    gbCommandLineMode = true;
    fields.bWarnedAboutTabsInFile = true;
    options.lConversionMethod = kMethodProfile;
    options.sFixedWidthProfile = "P";
  }
  ~ConversionRun() override {
    ResetFoundationGlobals();
    ResetRecipeGlobals();
    ResetProfileGlobals();
    unsetenv("APPDATA");
    unsetenv("QUILLON_DRIVE_C");
  }

  int32_t Go() {
    int32_t result = 77;
    clsConversionRun(host, options, log, fields, pWindow, extras).Go(result);
    return result;
  }
  int32_t Go(std::string_view sInput, std::string_view sOutput) {
    options.sInputFile = sInput;
    options.sOutputFile = sOutput;
    return Go();
  }
  std::string LogBehindStamp() const {
    const size_t end = log.txtLog().find("\r\n");
    return end == std::string::npos ? "" : log.txtLog().substr(end + 2);
  }

  clsTempFolder folder;
  clsLoggingHost host;
  clsConversionOptions options;
  clsRunLog log{host, options};
  clsRunFields fields;
  RunExtras extras;
  clsRunWindow* pWindow = nullptr;
};

TEST_F(ConversionRun, RefusesAJobWithTheTextOfItsRule) {
  folder.Write("in/a.txt", "abcd\n");
  struct Case {
    const char* sInput;
    const char* sOutput;
    int32_t lResult;
    const char* sLog;
  };
  const std::vector<Case> cases{
      {"C:\\in\\b.txt", "C:\\o\\*.csv", -1,
       "!!!!!!!!!! Error [-1] Invalid Input File Specified\r\n"
       "    Input File\r\n    C:\\in\\b.txt\r\n    does not exist."},
      {"C:\\in\\a.txt", "C:\\o\\?.csv", -3,
       "!!!!!!!!!! Error [-3] Invalid Output File Specified\r\n"
       "    Output file cannot have a wildcard (*) in it unless the Input file does also.\r\n"
       "    To fix this: Remove asterisk from output file or add a wildcard (? or *) to the input file."},
      {"C:\\in\\?.txt", "C:\\o\\?.csv", -2,
       "!!!!!!!!!! Error [-2] Invalid Output File Specified\r\n"
       "    Output file must have wild card (*) since Input file has a wildcard.\r\n"
       "    To fix this: Add a wild card to the output file. For example: C:\\Output\\*.CSV"},
      {"C:\\in\\a.txt", "C:\\o\\a.pdf", -4,
       "!!!!!!!!!! Error [-4] Invalid Output File Specified\r\n"
       "    Output File must be of type CSV, XLS, or XLSX.\r\n"
       "    To fix this: Change the output file extension from: PDF to: CSV, XLS, or XLSX"},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(Go(one.sInput, one.sOutput), one.lResult);
    EXPECT_EQ(LogBehindStamp(), one.sLog);
    EXPECT_EQ(log.lErrorCount, 1);
  }
  EXPECT_TRUE(folder.Has("o")) << "the output's folder is made before its type is looked at";
  EXPECT_EQ(folder.Read("o/a.pdf"), "");
}

TEST_F(ConversionRun, RefusesAMissingJobAndALogFolderThatCantBeMade) {
  options.sCLBatchJobFile = "C:\\gone.QLN";
  EXPECT_EQ(Go(), -100);
  EXPECT_EQ(LogBehindStamp(),
            "!!!!!!!!!! Error [-100] Invalid Conversion Job File Specified\r\n"
            "    Conversion Job File\r\n    C:\\gone.QLN\r\n    does not exist.");
  options.sCLBatchJobFile.clear();
  folder.Write("file", "");
  options.sLogFile = "C:\\file\\logs\\a.log";
  EXPECT_EQ(Go(), -101);
  EXPECT_EQ(LogBehindStamp(),
            "!!!!!!!!!! Error [-101]\r\n    Unable to create/access log file folder.\r\n"
            "    Log Folder\r\n    C:\\file\\logs\\    does not exist.");
  gbCommandLineMode = false;
  options.sCLBatchJobFile = "C:\\gone.QLN";
  EXPECT_EQ(Go("C:\\x", "C:\\y"), -1) << "with windows neither is looked at";
}

TEST_F(ConversionRun, JobFileReplacesTheSwitchesButTheLog) {
  folder.Write("in/a.txt", "abcd\n");
  folder.Write("a.QLN",
               "[QLN]\r\nsInputFile=%appdata%\\..\\in\\a.txt\r\nsOutputFile=C:\\o\\a.csv\r\nsFixedWidthProfile=P\r\n"
               "ReadMe=window\r\nReadMeCommandLine=one%lf%two\r\n");
  options = clsConversionOptions();
  options.sInputFile = "C:\\none";
  options.bUnix = true;
  options.sLogFile = "C:\\l\\a.log";
  options.sCLBatchJobFile = "C:\\a.QLN";
  EXPECT_EQ(Go(), 0);
  EXPECT_FALSE(options.bUnix);
  EXPECT_EQ(options.sLogFile, "C:\\l\\a.log");
  EXPECT_EQ(folder.Read("o/a.csv"), "ab,cd\r\n");
  EXPECT_EQ(LogBehindStamp(), "one\r\ntwo\r\nErrors: 0    Warnings: 0\r\nConversion Complete. Total Time: 0.0 seconds");
}

TEST_F(ConversionRun, MirrorsByTheLengthsOfTheFolders) {
  folder.Write("in/sub/a.b.txt", "abcd\n");
  folder.Write("in/c.txt", "efgh\n");
  options.bDoSubfolders = true;
  EXPECT_EQ(Go("C:\\in\\*.txt", "C:\\ou\\*.csv"), 0);
  EXPECT_EQ(folder.Read("ou/sub/a.b.csv"), "ab,cd\r\n");
  EXPECT_EQ(folder.Read("ou/c.csv"), "ef,gh\r\n");
  EXPECT_EQ(LogBehindStamp(),
            "Processing:\r\n  C:\\in\\c.txt\r\n  C:\\in\\sub\\a.b.txt\r\n"
            "Errors: 0    Warnings: 0\r\nConversion Complete. Total Time: 0.0 seconds");

  const BatchOutput dropped("C:\\o\\x*y.csv");
  EXPECT_EQ(dropped.sOutputPrefix + "|" + dropped.sOutputFolder + "|" + dropped.sOutputExtension,
            "C:\\o\\x|C:\\o\\|csv");
  EXPECT_EQ(dropped.TargetFor("C:\\i\\"), "C:\\o\\x");
  EXPECT_EQ(dropped.TargetFor("C:\\input\\"), "C:\\o\\xput\\") << "only the lengths count";
  EXPECT_EQ(BatchOutput("C:\\ö\\*.csv").TargetFor("C:\\ab\\"), "C:\\ö\\\\") << "in characters";
}

TEST_F(ConversionRun, LongerOutputFolderEndsTheRunUnhandled) {
  folder.Write("in/a.txt", "abcd\n");
  EXPECT_THROW(Go("C:\\in\\*.txt", "C:\\in\\out\\*.csv"), UnhandledFailure);
  EXPECT_FALSE(folder.Has("in/out/a.csv"));
  options.bSaveInOriginalFolder = true;
  EXPECT_EQ(Go("C:\\in\\*.txt", "C:\\in\\out\\*.csv"), 0);
  EXPECT_TRUE(folder.Has("in/a.csv"));
}

TEST_F(ConversionRun, LogsFilesUpToAHundred) {
  for (int i = 0; i < 100; ++i) folder.Write("in/" + std::to_string(i) + ".txt", "abcd");
  const auto lines_of_a_run = [this] {
    EXPECT_EQ(Go("C:\\in\\*.txt", "C:\\ou\\*.csv"), 0);
    const std::string text = log.txtLog();
    return std::count(text.begin(), text.end(), '\n');
  };
  EXPECT_EQ(lines_of_a_run(), 100 + 3);
  folder.Write("in/last.txt", "abcd");
  EXPECT_EQ(lines_of_a_run(), 1 + 3);
  EXPECT_NE(log.txtLog().find("Processing:\r\n  C:\\in\\*.txt\r\n"), std::string::npos);
  EXPECT_TRUE(folder.Has("ou/last.csv"));
}

TEST_F(ConversionRun, GoesOnBehindAFileThatFailed) {
  folder.Write("in/a.txt", "abcd");
  folder.Write("in/b.txt", "abcd");
  folder.Write("in/c.txt", "abcd");
  folder.Write("ou/b.csv/x", "");  // a folder stands where b's output should go
  EXPECT_EQ(Go("C:\\in\\*.txt", "C:\\ou\\*.csv"), 0) << "the result is that of the last file";
  EXPECT_TRUE(folder.Has("ou/a.csv") && folder.Has("ou/c.csv"));
  EXPECT_EQ(log.lErrorCount, 1);

  EXPECT_EQ(Go("C:\\in\\*.nothing", "C:\\ou\\*.csv"), 0) << "nothing to convert is no error";
  EXPECT_EQ(LogBehindStamp(),
            "Processing:\r\nErrors: 0    Warnings: 0\r\nConversion Complete. Total Time: 0.0 seconds");
}

TEST_F(ConversionRun, TellsWhenAFileReplacesTheOutputOfAnother) {
  for (const char* const pName : {"in/a.prt", "in/a.txt", "in/b.txt"}) folder.Write(pName, "abcd");
  EXPECT_EQ(Go("C:\\in\\*.*", "C:\\ou\\*.csv"), 0);
  EXPECT_EQ(log.lWarningCount, 1);
  EXPECT_NE(log.txtLog().find("  C:\\in\\a.txt\r\n!!!!!!!!!! Warning [-1004]\r\n    The output of another file of "
                              "this run is replaced: C:\\ou\\a.csv\r\n"),
            std::string::npos);
}

TEST_F(ConversionRun, NeverWritesOverItsInput) {
  folder.Write("in/a.csv", "abcd\n");
  ASSERT_EQ(link(folder.Path("in/a.csv").c_str(), folder.Path("in/b.csv").c_str()), 0);
  EXPECT_EQ(Go("C:\\in\\a.csv", "C:\\in\\b.csv"), -1002);
  EXPECT_EQ(folder.Read("in/a.csv"), "abcd\n");
  options.bSaveInOriginalFolder = true;
  EXPECT_EQ(Go("C:\\in\\*.csv", "C:\\o\\*.csv"), -1002);
  EXPECT_EQ(log.lErrorCount, 2);
}

TEST_F(ConversionRun, PauseLeavesTheLoopAndIsForgotten) {
  for (const char* name : {"in/a.txt", "in/b.txt"}) folder.Write(name, "abcd");
  host.onEvents = [this] { gbPauseRequested = folder.Has("ou/a.csv"); };
  EXPECT_EQ(Go("C:\\in\\*.txt", "C:\\ou\\*.csv"), 0);
  EXPECT_TRUE(folder.Has("ou/a.csv"));
  EXPECT_FALSE(folder.Has("ou/b.csv"));
  EXPECT_FALSE(gbPauseRequested);
}

TEST_F(ConversionRun, ReportsProfilesByTheirStatus) {
  folder.Write("in/a.txt", "abcd");
  options.sFixedWidthProfile = "Gone";
  EXPECT_EQ(Go("C:\\in\\a.txt", "C:\\o\\a.csv"), -201);
  EXPECT_EQ(host.reports.back().sErr1, "Error [-201] Invalid Profile Specified");
  EXPECT_EQ(host.reports.back().sErr2, "Could not find specified profile [" + gsDataFolder + "\\Profiles\\Gone.txt]");
  folder.Write("appdata/Profiles/Bad.txt", "\r\n");
  options.sFixedWidthProfile = "Bad";
  EXPECT_EQ(Go("C:\\in\\a.txt", "C:\\o\\a.csv"), -202);
  EXPECT_EQ(host.reports.back().sErr2,
            "Profile format is not correct. Please check that the it is not corrupt. [Bad.txt]");
  EXPECT_EQ(host.reports.back().sErr3, "");
}

TEST_F(ConversionRun, RecipeRunNeedsInputAndRecipe) {
  folder.Write("in/a.txt", "abcd");
  options.lConversionMethod = kMethodRecipe;
  options.sRecipeFile = "C:\\r\\gone.rcp";
  EXPECT_EQ(Go("C:\\in\\a.txt", "C:\\o\\a.csv"), -2003);
  EXPECT_EQ(LogBehindStamp(),
            "!!!!!!!!!! Error [-2003] Invalid Recipe File Specified\r\n"
            "    Recipe File\r\n    C:\\r\\gone.rcp\r\n    does not exist.\r\n"
            "Errors: 1    Warnings: 0\r\nConversion Complete. Total Time: 0.0 seconds");
  EXPECT_FALSE(folder.Has("o/a.csv"));

  options.sInputFile = "C:\\in\\vanished.txt";
  clsConversionRun run(host, options, log, fields, nullptr);
  const FileOutcome& outcome = run.ConvertFile();
  EXPECT_EQ(outcome.lResult, -2002);
  EXPECT_EQ(outcome.status, FileStatus::Failed);
  EXPECT_EQ(outcome.sInput, options.sInputFile);
  ASSERT_EQ(outcome.reasons.size(), 1U);
  EXPECT_EQ(outcome.reasons[0].sText, "Input File\n    C:\\in\\vanished.txt\n    does not exist.");
  EXPECT_EQ(folder.Read("o/a.csv"), "");

  options.sRecipeFile = folder.Write("r.rcp", "[Table 1]\nReadStartLine=a\nReadEndLine=a\nParsing=-\nWriteColumn=A\n");
  folder.Write("o/a.csv", "old");
  const std::string kept = std::exchange(gsAppDataFolder, folder.Write("file", "") + "/");
  EXPECT_EQ(Go("C:\\in\\a.txt", "C:\\o\\a.csv"), -2001);
  EXPECT_TRUE(LogBehindStamp().starts_with("!!!!!!!!!! Error [-2001]\r\n    Cannot find Export Specs file: " +
                                           gsAppDataFolder + "_ExportSpecs.t2x\r\nErrors: 0    Warnings: 1"));
  EXPECT_EQ(folder.Read("o/a.csv"), "old");
  gsAppDataFolder = kept;
}

TEST_F(ConversionRun, WarnsAboutTabsOnceInTheLifeOfAnInstallation) {
  gsSettingsFile = folder.Path("QLN.INI");
  CreateDefaultSettingsFile(gsSettingsFile);
  folder.Write("in/a.txt", ">>1\n--- ---\na\tb\n<<1\n");
  options.lConversionMethod = kMethodMarkup;
  LoadRunFields(fields, host);
  Go("C:\\in\\a.txt", "C:\\o\\a.csv");
  ASSERT_EQ(host.Codes(), std::vector<int32_t>{-2004});
  EXPECT_EQ(host.reports[0].sErr1, "Warning [-2004] ");
  EXPECT_EQ(host.reports[0].type, EntryType::Warning);
  fields = clsRunFields();
  LoadRunFields(fields, host);
  Go("C:\\in\\a.txt", "C:\\o\\a.csv");
  EXPECT_EQ(host.Codes().size(), 1u);
}

/// A report of some 3 MB with a table of one row at its end: what takes long in it is the search.
std::string LateTable(bool bMarked) {
  // Few enough lines for a ruler to be worked out behind them.
  const std::string sLine(200, '.');
  std::string sText;
  while (sText.size() < size_t{3} << 20) sText += sLine + "\n";
  return sText + (bMarked ? ">>1\n--- ---\nabc def\n<<1\n" : "TOP\nabc def\nEND\n");
}

TEST_F(ConversionRun, GivesTurnsInEveryMethodWhereNoRowIsWritten) {
  constexpr int kBlocks = 12;  // of 256 KB
  folder.Write("r.rcp",
               "[Table 1]\nReadStartLine=TOP\nReadStartLineOffset=1\nReadEndLine=END\nReadEndLineOffset=-1\n"
               "Parsing===L ==L\nWriteColumn=A\n");
  options.sRecipeFile = "C:\\r.rcp";
  struct Row {
    int32_t lMethod;
    bool bMarked, bUnicode;
    int nPasses;  // over the report, in which nothing else lets events run
  };
  // The keys of a recipe are found in the pass that looks at the whole report; marks are looked for in passes of their
  // own.
  for (const Row& row : {Row{kMethodProfile, false, false, 1}, Row{kMethodProfile, false, true, 1},
                         Row{kMethodRecipe, false, false, 1}, Row{kMethodMarkup, true, false, 3}}) {
    folder.Write("in/a.txt", LateTable(row.bMarked));
    options.lConversionMethod = row.lMethod;
    options.bIsUnicode = row.bUnicode;
    int nTurns = 0;
    host.onEvents = [&] { ++nTurns; };
    Go("C:\\in\\a.txt", "C:\\o\\a.csv");
    EXPECT_GE(nTurns, row.nPasses * (kBlocks - 1)) << row.lMethod << row.bUnicode;
    EXPECT_EQ(log.lErrorCount, 0) << log.txtLog();
    folder.Write("o/a.csv", "old");
    host.onEvents = [&, nBefore = nTurns] { gbPauseRequested = gbAbandonOutput = ++nTurns > nBefore + 5; };
    Go("C:\\in\\a.txt", "C:\\o\\a.csv");
    EXPECT_EQ(folder.Read("o/a.csv"), "old") << "a run given up in its search keeps the old output";
    EXPECT_EQ(log.lErrorCount + log.lWarningCount, row.lMethod == kMethodProfile ? 1 : 0)
        << "the engine says that it was stopped, and nothing is missing: " << log.txtLog();
    gbAbandonOutput = gbPauseRequested = false;
  }
}

struct RecordingWindow : clsRunWindow {
  std::string sCalls;
  void GetOptionsFromGUI() override { sCalls += "get "; }
  void UpdateFileControls() override { sCalls += "update "; }
  void FocusOutputButtons() override { sCalls += "focus "; }
  void DisableGUIForRunning() override { sCalls += "disable "; }
  void EnableGUIForRunning() override { sCalls += "enable "; }
  void UpdateMRUs() override { sCalls += "mru "; }
  void SetBusyPointer(bool bBusy) override { sCalls += bBusy ? "busy " : "idle "; }
  const std::string& Caption() const override { return sCalls; }
};

TEST_F(ConversionRun, WithWindowsTheFormTakesPart) {
  folder.Write("in/a.txt", "abcd");
  RecordingWindow window;
  pWindow = &window;
  gbCommandLineMode = false;
  EXPECT_EQ(Go("C:\\in\\a.txt", "C:\\o\\a.csv"), 0);
  EXPECT_EQ(window.sCalls, "get disable mru enable update focus ");
  EXPECT_EQ(LogBehindStamp(),
            "Starting conversion...\r\nProcessing:  C:\\in\\a.txt\r\nErrors: 0\r\nWarnings: 0\r\n"
            "Conversion Complete. Total Time: 0.0 seconds");
}

}  // namespace
}  // namespace quillon
