// Runs of tidy tables: rows parted and gathered by sheet, key texts, and what is reported.

#include <array>

#include "clsRunTest.h"
#include "modTidyFailures.h"

namespace quillon {
namespace {

class TidyRun : public clsRunTest {
 protected:
  /// Runs tables over the report; gives the CSV file, with "/" for its line ends.
  std::string Run(const std::string& sTables, std::string_view sReport) {
    Input(sReport);
    Specification(sTables);
    account = FileAccount();
    return OneLine(Csv());
  }
  std::string File(const std::string& sName) { return OneLine(folder.Read(sName)); }
  static std::string OneLine(std::string s) {
    for (size_t n = s.find("\r\n"); n != std::string::npos; n = s.find("\r\n")) s.replace(n, 2, "/");
    return s;
  }
};

constexpr const char* kReport = "A 1 x\nB 2 y\nA 3 z\n\nB 4 w\n";

TEST_F(TidyRun, PartsFilesBySheet) {
  const std::string sA = "[Table 1]\nLike=\\A\nPlaces=3 5\nNames=No|Text\n";
  const std::string sB = "[Table 2]\nLike=B\nPlaces=5 3\nNames=Text|Sum\n";
  EXPECT_EQ(Run(sA + "Sheet=As\n" + sB + "Sheet=All b\n", kReport), "");
  EXPECT_EQ(File("out-As.csv"), "No,Text/1,x/3,z/");
  EXPECT_EQ(File("out-All b.csv"), "Text,Sum/y,2/w,4/");
  EXPECT_EQ(Run(sA + sB + "Sheet=Bs\n", kReport), "No,Text/1,x/3,z/");
  EXPECT_EQ(File("out-Bs.csv"), "Text,Sum/y,2/w,4/");
  EXPECT_EQ(TakeCodes(), Codes{});
}

TEST_F(TidyRun, NamesFilesOfSheetsByTheOutput) {
  const std::string sTable = "[Table 1]\nPlaces=1\nSheet=As\n";
  for (const auto& [sOutput, sFile] :
       {std::pair{"out.v1.txt", "out.v1-As.txt"}, {"plain", "plain-As"}, {"x.", "x-As."}}) {
    gsOutputFile = folder.Path(sOutput);
    Run(sTable, "a\n");
    EXPECT_EQ(File(sFile), "a/") << sOutput;
  }
}

TEST_F(TidyRun, GathersTablesOfOneSheetInTheOrderOfTheReport) {
  struct Case {
    const char* sWhat;
    std::string sTables;
    const char* sReport;
    const char* sCsv;
  };
  const Case cases[] = {
      {"columns of one name together",
       "[Table 1]\nLike=\\A\nPlaces=3 5\nNames=No|Text\n[Table 2]\nLike=B\nPlaces=5 3\n"
       "Names=Text|Sum\n",
       kReport, "No,Text,Sum/1,x,/,y,2/3,z,/,w,4/"},
      {"a record that waits for more holds those below",
       "[Table 1]\nLike=\\A\nPlaces=1-3 5\nNames=No|Text\nJoin=up\nDrop=B\n[Table 2]\nLike=B\nPlaces=1-3\nNames=No\n",
       "A 1 x\n    y\nB 2\nA 3 z\n    w\n", "No,Text/A 1,x y/B 2,/A 3,z w/"},
      {"names printed above, one table below the other",
       "[Table 1]\nReadStartLine=ONE\nReadStartLineOffset=1\nReadEndLine=TWO\nReadEndLineOffset=-1\nNeeds=A digits\n"
       "Places=1-3 5-8\nNames=^\n[Table 2]\nReadStartLine=TWO\nReadStartLineOffset=1\nNeeds=B digits\nPlaces=1-3 5-8\n"
       "Names=^\n",
       "ONE\n\nNo  Text\n1   x\nTWO\n\nText  No\ny   2\n", "No,Text/1,x/2,y/"},
      {"a name twice in a table",
       "[Table 1]\nLike=\\A\nPlaces=3 5\nNames=v|v\n[Table 2]\nLike=B\nPlaces=5 3\nNames=v|v\n", kReport,
       "v,v/1,x/y,2/3,z/w,4/"},
      {"no names, no heading row", "[Table 1]\nLike=\\A\nPlaces=3 5\n[Table 2]\nLike=B\nPlaces=1\n", kReport,
       "1,x/B,/3,z/B,/"},
      {"a sheet without rows still has its names", "[Table 1]\nLike=C\nPlaces=3 5\nNames=a|b\nOptional=yes\n", kReport,
       "a,b/"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Run(c.sTables, c.sReport), c.sCsv) << c.sWhat;
    EXPECT_EQ(TakeReports(), "") << c.sWhat;
  }
}

TEST_F(TidyRun, WritesPlainNumbersAndDatesToFiles) {
  EXPECT_EQ(
      Run("[Table 1]\nPlaces=1-9 11-18 20-\nTypes=A number, B date DD.MM.YY, C text\nBlank=-\nNames=\"x\"|b|c,d\n",
          " 1,234.5- 31.12.24 a, \"b\"\n      -   1.2.50   \xC3\xA4\nnone      32.12.24 =c\n"),
      "\"\"\"x\"\"\",b,\"c,d\"/-1234.5,2024-12-31,\"a, \"\"b\"\"\"/,1950-02-01,\xC3\xA4/none,32.12.24,=c/");
  EXPECT_EQ(TakeCodes(), Codes{kTidyMisfits});
  EXPECT_EQ(account.tidy.lMisfits, 2);
  EXPECT_EQ(account.tidy.lRecords, 3);
}

TEST_F(TidyRun, TellsTextsAndRowsThatArentThere) {
  struct Case {
    const char* sKeys;
    Codes codes;
    bool bFatal;
    const char* sCsv;
  };
  const Case cases[] = {
      {"ReadStartLine=NONE\n", {-5604}, true, ""},
      {"ReadStartLine=NONE\nOptional=yes\n", {}, false, ""},
      {"ReadEndLine=NONE\n", {-5605}, true, ""},
      {"ReadEndLine=NONE\nUntil=blank\n", {}, false, "A 1 x/B 2 y/A 3 z/"},
      {"ReadStartLine=B 4\nReadEndLine=A 1\n", {-5605}, true, ""},
      {"ReadStartLine=B 4\nReadEndLine=B 4\n", {-5605}, true, ""},
      {"ReadStartLine=B\nReadEndLine=NONE\nRepeat=yes\n", {}, false, "B 2 y/A 3 z/B 4 w/"},
      {"Like=9\n", {kTidyNoRow}, false, ""},
      {"Like=9\nOptional=yes\n", {}, false, ""},
      {"[Heading 1.1]\nText=NONE\n", {kTidyNoHeading}, false, "NONE,/,A 1 x/,B 2 y/,A 3 z/,B 4 w/"},
  };
  for (const Case& c : cases) {
    recipe.ExportSpecs.FatalProcessError = false;
    const std::string sCsv = Run(std::string("[Table 1]\nPlaces=1-\n") + c.sKeys, kReport);
    EXPECT_EQ(sCsv, c.sCsv) << c.sKeys;
    EXPECT_EQ(TakeCodes(), c.codes) << c.sKeys;
    EXPECT_EQ(recipe.ExportSpecs.FatalProcessError, c.bFatal) << c.sKeys;
  }
}

TEST_F(TidyRun, CountsEveryLineOnce) {
  Run("[Table 1]\nReadEndLine=END\nNeeds=A digits\nPlaces=1-3 5-9\nJoin=up\nDrop=page\nTotals=sum\n[Heading 1.1]\n"
      "Text=DEPT\n",
      "DEPT 1\n001 a\n    b\n---\n002 c\npage 2\n    sum\n\nleft\nEND\nout\n003 d\n");
  const std::array<int64_t, kTidyLineKinds> wanted{2, 0, 1, 1, 1, 2, 2, 2, 1};
  EXPECT_EQ(account.tidy.lines, wanted) << "row, further, joined, heading, total, dropped, left out, outside, blank";
  EXPECT_EQ(account.lLinesRead, 12);
}

TEST_F(TidyRun, GivesSheetsOfAWorkbookTheirTables) {
  Input(kReport);
  Specification(
      "[Table 1]\nLike=\\A\nPlaces=3 5\nNames=No|Text\nWriteColumn=B\n[Table 2]\nLike=B\nPlaces=5 3\n"
      "Names=Text|No\nSheet=Bs\n[Table 3]\nNeeds=B number\nPlaces=1 3\nNames=Kind|No\nSheet=Bs\n");
  Sheet();
  EXPECT_EQ(workbook.Sheet(1), "|No|Text/|1|x/|3|z") << TakeReports();
  ASSERT_EQ(workbook.SheetName(3), "Bs");
  EXPECT_EQ(workbook.Sheet(3), "Text|No|Kind/|1|A/y|2/|2|B/|3|A/w|4/|4|B");
}

}  // namespace
}  // namespace quillon
