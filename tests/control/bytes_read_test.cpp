#include <gtest/gtest.h>

#include <fstream>

#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modCellwright_DLL.h"
#include "modConversionRun.h"
#include "modFiles.h"
#include "modSettings.h"

namespace quillon {
namespace {

/// What this process has read through the system so far; below 0 where that isn't told.
int64_t BytesReadSoFar() {
  std::ifstream account("/proc/self/io");
  std::string sWord;
  int64_t nBytes = -1;
  while (account >> sWord && sWord != "rchar:") {
  }
  account >> nBytes;
  return nBytes;
}

std::string Rows(int nRows) {
  std::string sRows;
  for (int i = 0; i < nRows; ++i) {
    std::string sRow = std::to_string(i) + std::string(7 - std::to_string(i).size(), ' ') +
                       "B\xC3\xBC"
                       "cher & Co  ";
    sRow += std::string(200, static_cast<char>('a' + i % 7)) + "   " + std::to_string(i * 37 % 10007) + "\n";
    sRows += sRow;
  }
  return sRows;
}

std::string Table(int n, const std::string& sStart, const std::string& sEnd, const char* sParsing) {
  return "[Table " + std::to_string(n) + "]\nReadStartLine=" + sStart + "\nReadStartLineOffset=1\nReadEndLine=" + sEnd +
         "\nReadEndLineOffset=-1\nParsing=" + sParsing + "\nWriteColumn=A\n";
}

class BytesRead : public testing::Test {
 protected:
  BytesRead() {
    setenv("TZ", "UTC", 1);
    setenv("APPDATA", folder.Path("appdata").c_str(), 1);
    setenv("QUILLON_DRIVE_C", folder.Path().c_str(), 1);
    gsAppDataFolder = AppDataFolder();
    MakeFolderPath(gsAppDataFolder);
    gsDataFolder = folder.Path("appdata");
    folder.Write("appdata/Profiles/P.txt",
                 "1\t8\t[32] Space\tLeft\tNo\t1\t\t\r\n2\t200\t[32] Space\tLeft\tNo\t2\t\t\r\n");
    gbCommandLineMode = true;
    options.sFixedWidthProfile = "P";
    options.sInputFile = "C:\\in.txt";
    options.sOutputFile = "C:\\out.csv";
    options.sRecipeFile = "C:\\r.rcp";
  }
  ~BytesRead() override {
    ResetFoundationGlobals();
    ResetRecipeGlobals();
    ResetProfileGlobals();
    unsetenv("APPDATA");
    unsetenv("QUILLON_DRIVE_C");
  }

  /// How often the report was read in one conversion: bytes read by its size, with the little that other files add.
  double TimesRead() {
    clsRunFields fields;
    clsRunLog log{host, options};
    RunExtras extras;
    extras.bTouchSettings = false;
    int32_t lResult = 77;
    const int64_t nBefore = BytesReadSoFar();
    clsConversionRun(host, options, log, fields, nullptr, extras).Go(lResult);
    const int64_t nRead = BytesReadSoFar() - nBefore;
    EXPECT_EQ(lResult, 0);
    EXPECT_EQ(log.lErrorCount, 0) << log.txtLog();
    EXPECT_GT(folder.Read("out.csv").size(), sReport.size() / 5) << "its rows were converted";
    return static_cast<double>(nRead) / static_cast<double>(sReport.size());
  }

  clsTempFolder folder;
  clsTestHost host;
  clsConversionOptions options;
  std::string sReport;
};

TEST_F(BytesRead, AReportIsReadAtMostTwiceOnEachRoad) {
  if (BytesReadSoFar() < 0) GTEST_SKIP() << "the system keeps no account of it";
  constexpr double kMost = 2.1;
  const char* const kRuler = "------- ----------- ----------------------------------------";
  const std::string sRows = Rows(9000);
  const std::string sFew = Rows(600);
  std::string sMany;
  std::string sManyTables;
  std::string sMarked;
  for (int i = 1; i <= 14; ++i) {
    const std::string sNumber = std::to_string(i);
    sMany += "BEGIN \xC3\x84" + sNumber + "#\n" + sFew + "END " + sNumber + "#\n";
    sManyTables += Table(i, "BEGIN \xC3\x84" + sNumber + "#", "END " + sNumber + "#", kRuler);
    sMarked += ">>" + sNumber + "\n" + kRuler + "\n" + sFew + "<<" + sNumber + "\n";
  }
  struct Road {
    const char* sName;
    int32_t lMethod;
    std::string sReport, sRecipe;
  };
  const std::vector<Road> roads{
      {"drawn ruler", kMethodRecipe, "START\n" + sRows + "END\n", Table(1, "START", "END", kRuler)},
      {"worked out ruler", kMethodRecipe, "START\n" + sRows + "END\n", Table(1, "START", "END", "=")},
      {"key texts at the end", kMethodRecipe, sRows + "START\n1\nEND\n", Table(1, "4321  ", "END", kRuler)},
      {"many tables", kMethodRecipe, sMany, sManyTables},
      {"marks", kMethodMarkup, sMarked, ""},
      {"profile", kMethodProfile, sRows, ""},
  };
  for (const Road& road : roads) {
    sReport = road.sReport;
    folder.Write("in.txt", sReport);
    folder.Write("r.rcp", "\xEF\xBB\xBF" + road.sRecipe);
    options.lConversionMethod = road.lMethod;
    OverrideSystemCodePage(nullptr, true);
    EXPECT_LT(TimesRead(), kMost) << road.sName << ", page found by content";
    OverrideSystemCodePage(&clsCodePage::Utf8(), false);
    EXPECT_LT(TimesRead(), kMost) << road.sName << ", page told";
  }
}

}  // namespace
}  // namespace quillon
