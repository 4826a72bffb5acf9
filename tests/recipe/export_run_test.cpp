// Runs of a specification: blocks found, rows and titles written, failures carried over.

#include "clsRunTest.h"

namespace quillon {
namespace {

class ExportRun : public clsRunTest {
 protected:
  /// "01" to "30", key texts TOP on line 10 and END on line 20.
  void Numbered(const char* sEnd = "\n") {
    std::string s;
    for (int i = 1; i <= 30; ++i) {
      s += (i < 10 ? "0" : "") + std::to_string(i) +
           (i == 10   ? " TOP"
            : i == 20 ? " END"
                      : "") +
           (i < 30 ? "\n" : sEnd);
    }
    Input(s);
  }
};

TEST_F(ExportRun, TakesTheLinesBetweenTheKeyTexts) {
  struct Case {
    const char* sStart;
    int lStart;
    const char* sEnd;
    int lEnd;
    const char* sWanted;  // first and last line of the rows
    const char* sReports;
  };
  const Case cases[] = {
      {"TOP", 2, "END", -1, "12-19", ""},
      {"TOP", 0, "TOP", 0, "10-10", ""},
      {"TOP", 0, "END", 500, "10-30", ""},
      {"TOP", 0, "END", 2147483647, "10-30", ""},
      {"TOP", -10, "END", 0, "", ""},
      {"TOP", -12, "TOP", -11, "", ""},
      {"1", 0, "END", 0, "01-20", ""},  // a key text stands anywhere in a line
      {"Top", 0, "END", 0, "", "Error [-5604]: Error in Table specs: Cannot find ReadStartLine: Top\n"},
      {"TOP", 0, "\xE2\x82\xAC!", 0, "",
       "Error [-5605]: Error in Table specs: Cannot find ReadEndLine: \xE2\x82\xAC!\n"},
      {"END", 0, "TOP", 0, "",
       "Error [-5606]: Error in Table specs: ReadEndLine key text [TOP] was found before ReadStartLine key text "
       "[END]\n"},
      {"END", 11, "END", 12, "", ""},  // behind the end of the file
  };
  Numbered();
  options.pRecipePage = &clsCodePage::Utf8();
  for (const Case& c : cases) {
    Specification(Table(1, c.sStart, c.lStart, c.sEnd, c.lEnd, {"1 2 A"}));
    const std::string sCsv = Csv();
    EXPECT_EQ(sCsv.empty() ? "" : sCsv.substr(0, 2) + "-" + sCsv.substr(sCsv.size() - 4, 2), c.sWanted) << c.sStart;
    EXPECT_EQ(TakeReports(), c.sReports);
    EXPECT_EQ(recipe.ExportSpecs.FatalProcessError, *c.sReports != '\0');
    EXPECT_EQ(account.lLinesRead, 30);
    EXPECT_EQ(account.lLinesInTables, static_cast<int64_t>(sCsv.size() / 4));
    EXPECT_TRUE(account.bOutputWritten);
  }
  EXPECT_NE(account.sWalkEnded, "") << "no report tells a start behind the end, so the account does";
}

TEST_F(ExportRun, GivesUnixRowsBehindTheEndAsEmptyOnes) {
  options.text.bUnix = true;
  Numbered();
  Specification(Table(1, "END", 15, "END", 20, {"1 2 A"}));
  EXPECT_EQ(Csv(), "\r\n");
  EXPECT_EQ(account.lLinesInTables, 0);
}

TEST_F(ExportRun, StacksTablesAndTitlesAndCountsTheLines) {
  Numbered("");
  Specification("[Title 1]\nWriteSheet=1\nWriteColumn=B\nTotalLines=3\nText1=Top\nText2=\nText3=Low\n" +
                Table(1, "TOP", 0, "TOP", 1, {"1 2 A", "4 6 C"}) + Table(2, "TOP", 1, "TOP", 2, {"2 2 AA"}) +
                "[Title 2]\nWriteSheet=2\nWriteColumn=A\nTotalLines=1\nText1=Two\n");
  recipe.Sheet1Name = "Ledger";
  recipe.Sheet2Name = std::string(30, 'x');
  EXPECT_EQ(Sheet(), "|Top//|Low/10||TOP/11||/" + std::string(26, '|') + "1/" + std::string(26, '|') + "2");
  EXPECT_EQ(workbook.Sheet(2), "Two");
  EXPECT_EQ(workbook.names, (std::vector<std::string>{"Ledger (P1)", "Sheet2"})) << "a refused name is left out";
  EXPECT_EQ(account.namesRefused.size(), 1U);
  EXPECT_EQ(workbook.sFont, "Courier New");
  const clsTable& second = recipe.ExportSpecs.TablesCollection[1];
  EXPECT_EQ(second.WriteTableTopRow, 6);
  EXPECT_EQ(second.WriteTableBottomRow, 7);
  EXPECT_EQ(recipe.ExportSpecs.getWritePointer(host, 1), 8);
  EXPECT_EQ(recipe.ExportSpecs.ProcessedTables, 2);
  EXPECT_FALSE(gbProcessing);
  ASSERT_EQ(account.tables.size(), 2u);
  EXPECT_EQ(account.tables[0].lFirstLine, 10);
  EXPECT_EQ(account.tables[1].lLastLine, 12);
  EXPECT_EQ(account.tables[1].loss.lBehind, 0);
  Csv();
  EXPECT_EQ(account.sWalkEnded, "A title needs a workbook");
  EXPECT_EQ(folder.Read("out.csv"), "");
  EXPECT_TRUE(gbProcessing) << "a section that died leaves it so";
}

TEST_F(ExportRun, KeepsTheRowsOfEarlierTables) {
  Numbered();
  Specification(Table(1, "TOP", 0, "TOP", 1, {"1 2 A", "3 7 B"}) + Table(2, "NONE", 0, "END", 0, {"1 2 A"}) +
                Table(3, "TOP", 0, "END", 0, {"1 2 A"}));
  EXPECT_EQ(Csv(), "10, TOP \r\n11, \r\n");
  EXPECT_EQ(TakeCodes(), Codes{-5604});
  EXPECT_EQ(recipe.ExportSpecs.ProcessedTables, 1);
  EXPECT_TRUE(gbProcessing);
  EXPECT_EQ(account.lLinesInTables, 2);
  EXPECT_EQ(host.sCaption, "Quillon - Text to Excel/CSV File Conversion");
}

TEST_F(ExportRun, FindsABadColumnOnTheFirstRow) {
  Numbered();
  Specification(Table(1, "TOP", 0, "END", 0, {"1 2 A", "5 4 B", "1 1 C"}));
  EXPECT_EQ(Sheet(), "10");
  EXPECT_EQ(TakeReports(),
            "Error [-5607]: Invalid table specs (column 2): ReadColumnStart is smaller than 1 or larger than "
            "ReadColumnEnd!\n");
  EXPECT_EQ(recipe.ExportSpecs.getWritePointer(host, 1), 1);
  EXPECT_EQ(Csv(), "");
}

TEST_F(ExportRun, AsksWhetherAPauseEndsIt) {
  Numbered();
  Specification(Table(1, "TOP", 0, "END", 0, {"1 2 A"}) + Table(2, "TOP", 0, "END", 0, {"1 2 A"}));
  int nTurns = 0;
  host.onEvents = [&] { gbPauseRequested = gbPauseRequested || ++nTurns == 5; };
  EXPECT_EQ(Csv(), "10\r\n11\r\n12\r\n");
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages[0].sText, "Do you want to terminate the process?");
  EXPECT_EQ(host.messages[0].icon, MessageIcon::Question);
  EXPECT_TRUE(gbPauseRequested);
  EXPECT_FALSE(gbProcessing);
  EXPECT_EQ(recipe.ExportSpecs.ProcessedTables, 1);
  host.answer = MessageAnswer::No;
  nTurns = 0;
  EXPECT_EQ(Csv().size(), 22u * 4);
  EXPECT_FALSE(gbPauseRequested);
  EXPECT_EQ(host.messages.size(), 2u);
}

TEST_F(ExportRun, AsksAboutAPauseInTheSearchAndKeepsTheTablesBeforeIt) {
  std::string sText = "TOP\n1\nEND\n";
  while (sText.size() < size_t{2} << 20) sText += "a line between the tables\n";
  Input(sText + "LATE\n2\nEND\n");
  Specification(Table(1, "TOP", 1, "TOP", 1, {"1 1 A"}) + Table(2, "LATE", 1, "LATE", 1, {"1 1 A"}));
  int nTurns = 0;
  host.onEvents = [&] { gbPauseRequested = gbPauseRequested || ++nTurns == 6; };
  host.answer = MessageAnswer::No;
  EXPECT_EQ(Csv(), "1\r\n2\r\n");
  EXPECT_EQ(host.messages.size(), 1u);
  host.answer = MessageAnswer::Yes;
  nTurns = 0;
  EXPECT_EQ(Csv(), "1\r\n");
  EXPECT_EQ(host.messages.size(), 2u);
  EXPECT_TRUE(host.reports.empty() && account.bOutputWritten && !gbProcessing);
}

TEST_F(ExportRun, GivesAnInterruptedOutputUp) {
  Numbered();
  folder.Write("out.csv", "old");
  Specification(Table(1, "TOP", 0, "END", 0, {"1 2 A"}));
  host.onEvents = [&] { gbPauseRequested = gbAbandonOutput = true; };
  EXPECT_EQ(Csv(), "old");
  EXPECT_FALSE(account.bOutputWritten);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(ExportRun, WarnsOfOperatorsAndEqualSigns) {
  Input("TOP\n  =A1 00012.50 \n  =B1 x        \nEND\n");
  Specification(Table(1, "TOP", 1, "END", -1, {"1 6 A duplicate", "7 15 B sum"}));
  EXPECT_EQ(Sheet(), "  =A1 |12.5/  =B1 |x        ");
  EXPECT_EQ(host.reports[1].bShowMessageBox, false);
  EXPECT_EQ(TakeReports(),
            "Warning [-5004]: Unrecognized operator: [DUPLICATE]\n"
            "Warning [-5005]: Source Data field begins with Equal Sign! This may not be accepted by Excel!\n"
            "Warning [-5004]: Unrecognized operator: [DUPLICATE]\n");
  EXPECT_EQ(recipe.ExportSpecs.TablesCollection[0].ColumnsCollection[1].PeriodOperator, "SUM");
  Specification(Table(1, "TOP", 1, "END", -1, {"1 6 A"}));
  EXPECT_EQ(Csv(), "  =A1 \r\n  =B1 \r\n");
  ASSERT_EQ(host.reports.size(), 1u);
  EXPECT_TRUE(host.reports[0].bShowMessageBox);
  EXPECT_EQ(account.lEqualSigns, 2);
}

TEST_F(ExportRun, GoesOnBehindACellThatFails) {
  Numbered();
  Specification(Table(1, "TOP", 0, "TOP", 3, {"1 2 A", "4 6 B"}));
  workbook.nLastRow = 2;
  EXPECT_EQ(Sheet(), "10|TOP/11|");
  EXPECT_EQ(TakeReports(), "Warning [-5006]: Excel: Warning: [-1] Cell: outside\n");
  EXPECT_EQ(account.tables[0].lCellsFailed, 4);
  EXPECT_EQ(recipe.ExportSpecs.ProcessedTables, 1);
}

TEST_F(ExportRun, TellsWhyThereIsNoOutput) {
  Numbered();
  Specification(Table(1, "TOP", 0, "TOP", 0, {"1 2 A"}));
  for (const int32_t lFormat : {6, 51}) {
    gsOutputFile = folder.Path(lFormat == 6 ? "none/out.csv" : "none/out.xlsx");
    RunRecipe(context, lFormat);
    EXPECT_EQ(TakeCodes().back(), -5006) << lFormat;
    EXPECT_FALSE(account.bOutputWritten);
    EXPECT_NE(account.failure.sText.find("none/out"), std::string::npos);
  }
  gsOutputFile = folder.Path("out.csv");
  recipe.InputFileName[0] = folder.Path();
  Csv();
  EXPECT_EQ(TakeCodes(), Codes{-5006}) << "a folder is no report";
  Numbered();
  options.lDelimitationCharacter = 256;
  Specification(Table(1, "TOP", 0, "TOP", 0, {"1 2 A", "3 4 B"}));
  EXPECT_EQ(Csv(), "");
  EXPECT_EQ(TakeCodes(), Codes{-5309});
  EXPECT_FALSE(account.bOutputWritten) << "the old output is worth more than an empty one";
}

TEST_F(ExportRun, TakesRowsOfAllPeriodsIfAsked) {
  Input("TOP\na 1\nb 2\nEND\n", 1);
  Input("top\nx 10\n", 2);
  recipe.InputFileLast = 2;
  Specification(Table(1, "TOP", 1, "END", -1, {"1 1 A", "2 4 B SUM"}));
  EXPECT_EQ(Sheet(), "|/|") << "period 1 alone leaves the last one empty";
  options.bAllPeriods = true;
  EXPECT_EQ(Csv(), "x,11\r\n\r\n") << "a period that has ended gives an empty field, which is no number";
}

TEST_F(ExportRun, RefusesASequenceThatDoesNotAddUp) {
  Specification("[Title 1]\nWriteSheet=1\nWriteColumn=A\nTotalLines=1\nText1=x\n");
  recipe.ExportSpecs.SectionSequenceCollection = {"Titles"};
  EXPECT_EQ(Sheet(), "");
  EXPECT_EQ(TakeReports(), "Error [-5308]: Invalid Section type specified!\n");
  EXPECT_TRUE(gbProcessing);
  recipe.ExportSpecs.SectionSequenceCollection.clear();
  Sheet();
  EXPECT_EQ(TakeReports(), "Error [-5307]: Invalid Section Count!\n");
}

}  // namespace
}  // namespace quillon
