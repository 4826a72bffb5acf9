// Short recipes and marks become an export specification by measuring the report.

#include <chrono>

#include "clsRecipeTest.h"
#include "modFailure.h"

namespace quillon {
namespace {

constexpr const char* kReport =
    "Ledger\r\n"
    "Account   Amount\r\n"
    "Cash     1,200\r\n"
    "Rent       300\r\n"
    "Total    1,500\r\n";

constexpr const char* kHeader =
    "[Header]\r\nProduct=QLN\r\nFileType=EXPORT SPEC\r\nFileFormat=1.1\r\n[General]\r\nName=\r\n";

class ShortToLong : public clsRecipeTest {
 protected:
  void SetUp() override {
    clsRecipeTest::SetUp();
    gsInputFile = folder.Write("report.txt", kReport);
  }
  static std::string Table(int n, const std::string& sParsing, const std::string& sWriteColumn = "A") {
    return "[Table " + std::to_string(n) +
           "]\nReadStartLine=Account\nReadStartLineOffset=1\nReadEndLine=Total\nReadEndLineOffset=-1\nParsing=" +
           sParsing + "\nWriteColumn=" + sWriteColumn + "\n";
  }
  std::string Convert(const std::string& sRecipe) {
    const std::string sShort = folder.Write("short.rcp", sRecipe);
    recipe.ExportSpecs.FileConvertShortToLong(context, sShort, folder.Path("long.t2x"), gsInputFile);
    const std::string sLong = folder.Read("long.t2x");
    std::filesystem::remove(folder.Path("long.t2x"));
    return sLong;
  }
  /// The columns of the first table as "1-9 A, 10-15 B".
  std::string Columns(const std::string& sParsing, const std::string& sWriteColumn = "A") {
    folder.Write("long.t2x", Convert(Table(1, sParsing, sWriteColumn)));
    recipe.ExportSpecs.ReadFromFile(context, folder.Path("long.t2x"));
    std::filesystem::remove(folder.Path("long.t2x"));
    std::string sOut;
    for (const clsTable& table : recipe.ExportSpecs.TablesCollection) {
      for (const clsColumn& column : table.ColumnsCollection) {
        sOut += (sOut.empty() ? "" : ", ") + std::to_string(column.ReadColumnStart) + "-" +
                std::to_string(column.ReadColumnEnd) + " " + column.WriteColumn;
      }
    }
    return sOut;
  }
};

TEST_F(ShortToLong, WritesTheSpecificationByteForByte) {
  const std::string sColumns =
      "[Table 1 Col 1]\r\nReadColumnStart=1\r\nReadColumnEnd=9\r\nWriteColumn=C\r\nPeriodOperator=\r\n"
      "[Table 1 Col 2]\r\nReadColumnStart=10\r\nReadColumnEnd=15\r\nWriteColumn=D\r\nPeriodOperator=\r\n";
  EXPECT_EQ(Convert(Table(1, "=", " c ; third column")),
            std::string(kHeader) +
                "[Table 1]\r\nReadStartLine=Account\r\nReadStartLineOffset=1\r\nReadEndLine=Total\r\n"
                "ReadEndLineOffset=-1\r\nTotalColumns=2\r\n" +
                sColumns);
}

TEST_F(ShortToLong, MeasuresWhatTheTemplateLeavesOpen) {
  EXPECT_EQ(Columns("="), "1-9 A, 10-15 B");
  EXPECT_EQ(Columns("=L"), "1-9 A, 10-15 B");
  EXPECT_EQ(Columns("=r"), "1-5 A, 6-15 B");
  EXPECT_EQ(Columns("  =R  "), "1-5 A, 6-15 B");
  EXPECT_EQ(Columns("-"), "1-15 A");
  EXPECT_EQ(Columns("-- --"), "1-3 A, 4-5 B");
  EXPECT_EQ(Columns("    --- ---"), "5-8 A, 9-11 B") << "leading blanks keep their columns";
  EXPECT_EQ(Columns("=", "Y"), "1-9 Y, 10-15 Z");
  EXPECT_EQ(Columns("===================R"), "1-5 A, 6-15 B") << "a longer template keeps its last character";
  EXPECT_EQ(Columns("==== ===="), "1-5 A, 6-9 B");
  EXPECT_EQ(TakeCodes(), Codes{});
}

TEST_F(ShortToLong, StopsAtTheFirstTableThatFailsAndKeepsThoseBefore) {
  std::string sLost = Table(2, "=");
  sLost.replace(sLost.find("Account"), 7, "account");
  EXPECT_NE(Convert(Table(1, "-- --") + sLost + Table(3, "-")).find("[Table 1 Col 2]"), std::string::npos);
  ASSERT_EQ(host.reports.size(), 1U);
  EXPECT_EQ(host.reports[0].sErr1, "Error [-5301]");
  EXPECT_EQ(host.reports[0].sErr2, "Table 2 not found!");
  EXPECT_EQ(TakeCodes(), Codes{-5301});
  EXPECT_EQ(Convert(Table(1, "")), kHeader);
  EXPECT_EQ(Convert(Table(2, "-")), kHeader) << "the sections must be numbered from 1";
  EXPECT_EQ(TakeCodes(), (Codes{-5302, -5302}));
}

TEST_F(ShortToLong, MissingRecipeGivesTheHeaderAlone) {
  recipe.ExportSpecs.FileConvertShortToLong(context, folder.Path("none.rcp"), folder.Path("long.t2x"), gsInputFile);
  EXPECT_EQ(folder.Read("long.t2x"), kHeader);
  ASSERT_EQ(host.reports.size(), 1U);
  EXPECT_EQ(host.reports[0].sErr1, "Warning [-5300]");
  EXPECT_EQ(host.reports[0].sErr2, "Short format recipe file does not exist!");
  EXPECT_EQ(host.reports[0].sErr3, "    " + folder.Path("none.rcp"));
}

TEST_F(ShortToLong, OffsetThatIsNoNumberEndsTheProgram) {
  for (const char* const sOffset : {"abc", "4294967296", "1e99"}) {
    EXPECT_THROW(Convert(std::string("[Table 1]\nReadStartLineOffset=") + sOffset + "\nParsing=-\n"), UnhandledFailure);
  }
}

TEST_F(ShortToLong, RefusesColumnsThatNoSheetHas) {
  EXPECT_EQ(Columns("- -", ""), "1-2 A, 3-3 A") << "a column that can't be read keeps its defaults";
  EXPECT_EQ(TakeCodes(), Codes{-5002});
  EXPECT_EQ(host.messages.size(), 2U) << "one for the letters, one for the column before A";
  Columns("- - -", "YZ");
  EXPECT_EQ(TakeCodes(), (Codes{-5002, -5002})) << "two-letter columns end before ZA";
}

TEST_F(ShortToLong, CaptionIsKeptAndPutBackInARunWithWindows) {
  gbCommandLineMode = false;
  host.sCaption = "Frame";
  options.sFormCaption = "a.QLN";
  std::string sSeen;
  host.onEvents = [&] { sSeen += host.sCaption + "|"; };
  Convert(Table(1, "-") + Table(2, "-"));
  EXPECT_EQ(sSeen, "a.QLN - Scanning Table 1|a.QLN - Scanning Table 2|");
  EXPECT_EQ(host.sCaption, "Frame");
}

TEST_F(ShortToLong, LoadGoesThroughPrivateFilesToThePublicOnes) {
  folder.Write("_ExportSpecs.t2x", "of another run");
  recipe.InputFileLast = 3;
  recipe.WriteDataFormat = "NearestCent";
  recipe.LoadFromFileShort(context, folder.Write("short?.rcp", Table(1, "=")));
  EXPECT_EQ(recipe.InputFileLast, 1);
  EXPECT_EQ(recipe.WriteDataFormat, "");
  EXPECT_EQ(recipe.InputFileName[0], gsInputFile);
  EXPECT_EQ(recipe.ExportSpecFileName, folder.Path("_ExportSpecs.t2x"));
  EXPECT_FALSE(folder.Has("_ExportSpecs.t2x")) << "not public before it was read";
  ASSERT_TRUE(recipe.ReadExportSpecs(context));
  EXPECT_EQ(TakeCodes(), Codes{}) << "a question mark in a name is no wildcard here";
  EXPECT_TRUE(folder.Has("_ExportSpecs.t2x"));
  EXPECT_EQ(recipe.ExportSpecs.TablesCollection.size(), 1U);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 3);

  recipe.LoadFromFileShort(context, folder.Path("none.rcp"));
  EXPECT_EQ(host.reports[0].sErr2, "Cannot find recipe file: " + folder.Path("none.rcp"));
  EXPECT_EQ(TakeCodes(), (Codes{-5500, -5300}));
  gsAppDataFolder = folder.Path("gone/");
  recipe.LoadFromFileShort(context, folder.Path("short?.rcp"));
  EXPECT_FALSE(recipe.ReadExportSpecs(context)) << "a folder that can't be written";
}

class Markup : public ShortToLong {
 protected:
  std::string AutoRecipe(const std::string& sText) {
    context.pReports->Close();  // Another text under the same name
    recipe.ExportSpecs.FileCreateShort(context, folder.Write("marked.txt", sText), folder.Path("auto.rcp"));
    const std::string sRecipe = folder.Read("auto.rcp");
    const size_t nTables = sRecipe.find("[Table");
    return nTables == std::string::npos ? "" : sRecipe.substr(nTables);
  }
};

TEST_F(Markup, MarksBecomeAShortRecipe) {
  const std::string sTable =
      "ReadStartLine=>>1\r\nReadStartLineOffset=2\r\nReadEndLine=<<1\r\nReadEndLineOffset=-1\r\n"
      "Parsing=  ---- ----\r\nWriteColumn=A\r\n";
  EXPECT_EQ(AutoRecipe("x\n>>1 stock\n  ---- ----\n  a    1\n  b    2\n<<1\ny\n"), "[Table 1]\r\n" + sTable);
  EXPECT_TRUE(
      folder.Read("auto.rcp").starts_with("[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n"));
  const std::string sTwo = AutoRecipe(">>1\n-\n<<1\n>>3\n=R\n<<3\n");
  EXPECT_NE(sTwo.find("[Table 2]\r\nReadStartLine=>>2\r\n"), std::string::npos) << "the scan counts for itself";
}

TEST_F(Markup, UnfinishedTablesAreDropped) {
  EXPECT_EQ(AutoRecipe("no marks\n"), "");
  EXPECT_EQ(AutoRecipe(" >>1\n-\n<<1\n"), "") << "a mark stands at the start of its line";
  EXPECT_EQ(AutoRecipe(">>1\n-\nx\n"), "");
  EXPECT_EQ(AutoRecipe(">>1"), "");
  EXPECT_EQ(AutoRecipe(">>1\n\nx\n<<1\n>>2\n-\n<<2\n"), "") << "an empty template ends the scan";
  EXPECT_NE(AutoRecipe(">>1\n  \nx\n<<1\n"), "") << "a template of blanks is one";
  EXPECT_EQ(TakeCodes(), Codes{});
  recipe.ExportSpecs.FileCreateShort(context, folder.Path("none.txt"), folder.Path("auto.rcp"));
  ASSERT_EQ(host.reports.size(), 1U);
  EXPECT_EQ(host.reports[0].sErr1, "Error [-5303]");
  EXPECT_TRUE(host.reports[0].sErr2.starts_with("Error: [2] ")) << host.reports[0].sErr2;
  EXPECT_FALSE(host.reports[0].bShowMessageBox);
}

TEST_F(Markup, MarkedFileLoadsAsItsOwnRecipe) {
  gsInputFile = folder.Write("marked.txt", ">>1\n=R\nCash     1,200\nRent       300\n<<1\n>>2\n-- -\nab 1\n<<2\n");
  recipe.LoadFromMarks(context);
  ASSERT_TRUE(recipe.ReadExportSpecs(context));
  EXPECT_EQ(TakeCodes(), Codes{});
  ASSERT_EQ(recipe.ExportSpecs.TablesCollection.size(), 2U);
  EXPECT_EQ(recipe.ExportSpecs.TablesCollection[0].ColumnsCollection.at(1).ReadColumnStart, 6);
  EXPECT_EQ(recipe.ExportSpecs.TablesCollection[1].ReadStartLine, ">>2");
  EXPECT_TRUE(folder.Has("_AutoRecipe.rcp"));
}

TEST_F(Markup, MessagesSpeakOfTheRecipeByItsPublicName) {
  gsInputFile = folder.Path("none.txt");
  recipe.LoadFromMarks(context);
  ASSERT_EQ(host.reports.size(), 3U);
  EXPECT_EQ(host.reports[1].sErr2, "Cannot find recipe file: " + gsAppDataFolder + "_AutoRecipe.rcp");
  EXPECT_EQ(host.reports[2].sErr3, "    " + gsAppDataFolder + "_AutoRecipe.rcp");
}

/// Loads the recipe as a batch does for its next report; True if the specification was made anew.
class BatchOfReports : public ShortToLong {
 protected:
  bool Load(const std::string& sRecipe) {
    const std::string sSpecs = folder.Path("_ExportSpecs.t2x");
    if (std::filesystem::exists(sSpecs)) folder.Write("_ExportSpecs.t2x", "left alone");
    recipe.LoadFromFileShort(context, sRecipe);
    EXPECT_TRUE(recipe.ReadExportSpecs(context));
    EXPECT_EQ(recipe.InputFileName[0], gsInputFile);
    return folder.Read("_ExportSpecs.t2x") != "left alone";
  }
  std::string Recipe(const std::string& sParsing, const std::string& sWriteColumn = "B") {
    const std::string sPath = folder.Write("r.rcp", Table(1, sParsing, sWriteColumn));
    std::filesystem::last_write_time(sPath,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(++nHours_));
    return sPath;
  }

 private:
  int nHours_ = 0;
};

TEST_F(BatchOfReports, MakesASpecificationOnceFromARecipeThatSaysAllByItself) {
  const std::string sPath = Recipe("---- ------");
  EXPECT_TRUE(Load(sPath));
  recipe.ExportSpecs.TablesCollection[0].WriteTableTopRow = 7;
  gsInputFile = folder.Write("second.txt", kReport);
  EXPECT_FALSE(Load(sPath));
  ASSERT_EQ(recipe.ExportSpecs.TablesCollection.size(), 1U);
  EXPECT_EQ(recipe.ExportSpecs.TablesCollection[0].WriteTableTopRow, 0) << "nothing of the file before";
  EXPECT_EQ(recipe.ExportSpecs.TablesCollection[0].ColumnsCollection[1].WriteColumn, "C");
  std::filesystem::remove(folder.Path("_ExportSpecs.t2x"));
  EXPECT_TRUE(Load(sPath)) << "what a run leaves must be there";
  Recipe("---- ----- ");
  EXPECT_TRUE(Load(sPath)) << "another recipe under the name";
  EXPECT_FALSE(Load(sPath));
  options.pRecipePage = &clsCodePage::Utf8();
  EXPECT_TRUE(Load(sPath)) << "read in another page";
  gbCommandLineMode = false;
  EXPECT_TRUE(Load(sPath)) << "a window shows what is scanned";
}

TEST_F(BatchOfReports, MakesItForEachReportWhereThatIsMeasuredOrSomethingIsSaid) {
  EXPECT_TRUE(Load(Recipe("=")));
  EXPECT_TRUE(Load(folder.Path("r.rcp")));
  EXPECT_EQ(host.messages.size(), 0U);
  EXPECT_TRUE(Load(Recipe("----", "1")));
  const size_t nSaid = host.messages.size() + host.reports.size();
  EXPECT_GT(nSaid, 0U);
  EXPECT_TRUE(Load(folder.Path("r.rcp")));
  EXPECT_EQ(host.messages.size() + host.reports.size(), 2 * nSaid) << "said once for each report";
}

}  // namespace
}  // namespace quillon
