#include <gtest/gtest.h>

#include <numeric>
#include <sstream>

#include "clsReportProof.h"
#include "modTidyKeys.h"

namespace quillon {
namespace {

const std::string kRecipe =
    "[Table 1]\n"
    "Needs=A digits, C number\n"
    "Places=1-4 6-13 15-24 26-33\n"
    "Names=No|Name|Gross|Tax\n"
    "Types=A text, C-D number\n"
    "Totals=DEPT TOTAL|GRAND TOTAL\n"
    "[Heading 1.1]\n"
    "Text=DEPT:\n"
    "Names=Dept\n";

const std::string kReport =
    "PAYROLL                          PAGE 1\n"
    "No   Name          Gross      Tax\n"
    "\n"
    "DEPT: Sales\n"
    "0001 Ann        1,000.00   100.00\n"
    "0002 Bob          500.50    50.05\n"
    "     DEPT TOTAL 1,500.50   150.05\n"
    "\n"
    "DEPT: Stores\n"
    "0003 Cy           200.25    20.00\n"
    "0004 Dan        2,000.00    80.00\n"
    "     DEPT TOTAL 2,200.25   100.00\n"
    "     GRAND TOTAL3,700.75   250.05\n"
    "-- end --\n";

ReportProof Proof(const std::string& sReport, const std::string& sRecipe = kRecipe) {
  std::vector<TidyTable> tables;
  TidyFault fault;
  EXPECT_TRUE(ReadTidyRecipe(sRecipe, tables, fault)) << fault.sText;
  clsReportProof proof(tables, {.nAgreeing = 100, .nDisagreeing = 100});
  clsTidyReport report(tables, proof);
  std::istringstream lines(sReport);
  for (std::string sLine; std::getline(lines, sLine);) report.Line(sLine);
  report.End();
  for (size_t i = 0; i < tables.size(); ++i) proof.AddLeft(report.State(i).left);
  return proof.Finish();
}

std::string Changed(std::string sText, const std::string& sFrom, const std::string& sTo) {
  const size_t nFrom = sText.find(sFrom);
  return nFrom == std::string::npos ? "not there: " + sFrom : sText.replace(nFrom, sFrom.size(), sTo);
}

TEST(ReportProof, EachLineIsOfOneKindAndAllTotalsAgree) {
  const ReportProof proof = Proof(kReport);
  EXPECT_EQ(proof.Lines(TidyLineKind::Row), 4);
  EXPECT_EQ(proof.Lines(TidyLineKind::Heading), 2);
  EXPECT_EQ(proof.Lines(TidyLineKind::Total), 3);
  EXPECT_EQ(proof.Lines(TidyLineKind::LeftOut), 3);
  EXPECT_EQ(std::accumulate(proof.lines.begin(), proof.lines.end(), int64_t{0}), 14);
  EXPECT_EQ(proof.lTotalsAgree, 6);
  EXPECT_EQ(proof.Totals(), 6);
  EXPECT_EQ(proof.lLikeRows, 0);
  EXPECT_FALSE(proof.loss.Any());
}

TEST(ReportProof, TotalsThatNoKeyNamesAreFoundAndTheirWordsTold) {
  const ReportProof proof = Proof(kReport, Changed(kRecipe, "Totals=DEPT TOTAL|GRAND TOTAL\n", ""));
  EXPECT_EQ(proof.lTotalsAgree, 6);
  EXPECT_EQ(proof.Lines(TidyLineKind::Total), 3);
  EXPECT_EQ(proof.words.size(), 2U);
}

TEST(ReportProof, AHeadingIsNoRowWhereItsColumnsHoldOtherThings) {
  // Three columns of four hold what they usually do.
  const std::string sDate = "SHOP Ann          20200119   119.05\n";
  const std::string sRecipe = kRecipe + "[Heading 1.2]\nLike=AAAA_AAA____\nPlaces=19-26\nNames=As of\n";
  ReportProof proof = Proof(sDate + kReport, sRecipe);
  EXPECT_EQ(proof.Lines(TidyLineKind::Heading), 3);
  EXPECT_EQ(proof.lLikeRows, 0);
  // A row without a value is one all the same.
  proof = Proof(Changed(kReport, "0004 Dan ", "     Dan "), kRecipe + "[Heading 1.2]\nText=Dan\nNames=Other\n");
  EXPECT_EQ(proof.Lines(TidyLineKind::Heading), 3);
  EXPECT_EQ(proof.lLikeRows, 1);
}

TEST(ReportProof, AFurtherLineOfAFormHasAnotherLabelThanItsRows) {
  std::string sForms;
  for (const char* sNo : {"41", "42", "43"}) sForms += std::string("ITEM: ") + sNo + "  WHO: Ann\nCOST: 17  PAY: Due\n";
  const std::string sRecipe =
      "[Table 1]\nLike=ITEM:\nPlaces=7-8 16-\nNames=Item|Who\nTypes=A-B text\n[Line 1.2]\nPlaces=7-8 "
      "16-\nNames=Cost|Paid\n";
  EXPECT_EQ(Proof(sForms, sRecipe).lMeantLikeRows, 0);
  // The second of two rows is no further line.
  EXPECT_GT(Proof(Changed(sForms, "COST: 17  PAY: Due", "ITEM: 44  WHO: Bob"), sRecipe).lMeantLikeRows, 0);
}

TEST(ReportProof, ADroppedRowMayHaveFewerWordsThanTheOthers) {
  const std::string sRecipe =
      "[Table 1]\nNeeds=B digits, C number\nFill=A\nPlaces=1-8 10-13 15-20 22-27\nNames=Who|No|Credit|Subtotal\n"
      "Types=A-B text, C-D number\nDrop=0003\n";
  const ReportProof proof = Proof(
      "Ann      0001   1.00   1.00\nBob      0002   2.00\n         0003   7.50\n         0004   4.00   9.00\n"
      "Cy       0005   5.00\n         0006   6.00   6.00\n",
      sRecipe);
  EXPECT_EQ(proof.lMeantLikeRows, 1);
}

TEST(ReportProof, ANumberThatReachesIntoTheNextColumnTookItsValue) {
  const std::string sRecipe =
      "[Table 1]\nNeeds=A digits\nPlaces=1-4 6-8 12-15\nNames=No|Fees|Gross\nTypes=A text, B-C number /100\n";
  EXPECT_FALSE(Proof("0001 123456 1500\n0002 123    1500\n", sRecipe).loss.Any()) << "it sticks out of its column";
  const ReportProof proof = Proof("0001 123    1500\n0002 1234561500\n0003 1234561501\n", sRecipe);
  EXPECT_EQ(proof.loss.lCuts, 2);
  EXPECT_EQ(proof.loss.lFirstLine, 2);
}

TEST(ReportProof, PagesThatDoNotFollowAreTold) {
  const ReportProof proof = Proof("PAYROLL   PAGE 1\nPAYROLL   PAGE 2\n" + Changed(kReport, "PAGE 1", "PAGE 4"));
  EXPECT_EQ(proof.pages.lPages, 0) << "the numbers stand at other places";
  const std::string sHead = "PAYROLL                          PAGE ";
  const ReportProof told = Proof(sHead + "1\n" + sHead + "2\n" + Changed(kReport, "PAGE 1", "PAGE 4"));
  EXPECT_EQ(told.pages.lPages, 1);
  EXPECT_EQ(told.pages.lLine, 3);
  EXPECT_EQ(told.lTotalsAgree, 6);
}

TEST(ReportProof, ARowThatIsLeftOutLooksLikeOneAndSpoilsTheTotals) {
  const ReportProof proof = Proof(Changed(kReport, "0003 Cy ", "OO03 Cy "));
  EXPECT_EQ(proof.lLikeRows, 1);
  EXPECT_EQ(proof.lFirstLikeRow, 10);
  EXPECT_EQ(proof.lTotalsDisagree, 4);
  ASSERT_FALSE(proof.totals.empty());
  EXPECT_EQ(proof.shapes.front().sFirst, "OO03 Cy           200.25    20.00");
  EXPECT_TRUE(proof.shapes.front().bLikeRow);
}

TEST(ReportProof, CharactersThatNoColumnTakesAreCounted) {
  const ReportProof proof =
      Proof(Changed(kReport, "0002 Bob          500.50", "0002 Bob     x    500.50"), Changed(kRecipe, "6-13", "6-12"));
  EXPECT_EQ(proof.loss.lBetween, 1);
  EXPECT_EQ(proof.loss.lFirstLine, 6);
}

TEST(ReportProof, RowsThatWaitForLinesAboveThemAreSummedInTheirPlace) {
  const std::string sRecipe =
      "[Table 1]\nNeeds=B number\nJoin=down\nPlaces=1-20 21-30\nNames=Item|Amount\nTypes=A text, B number\n";
  const ReportProof proof = Proof(
      "Paper                    10.00\n"
      "Ink                      20.00\n"
      "Folders, wide and\n"
      "narrow                   30.00\n"
      "\n"
      "                         60.00\n",
      sRecipe);
  EXPECT_EQ(proof.Lines(TidyLineKind::Joined), 1);
  EXPECT_EQ(proof.lTotalsDisagree, 0);
}

TEST(ReportProof, RowsThatAreSwallowedAsSomethingElseAreTold) {
  const auto after = [](const std::string& sKeys, const std::string& sTail = "") {
    return Changed(kRecipe, "Needs=A digits, C number\n", "Needs=A digits, C number, B \"n\"\n" + sKeys) + sTail;
  };
  // Cy and Bob have no n in their names.
  EXPECT_EQ(Proof(kReport, after("")).lLikeRows, 2);
  EXPECT_EQ(Proof(kReport, after("Join=up\n")).lLikeRows, 2);
  EXPECT_EQ(Proof(kReport, after("", "[Heading 1.2]\nText=Cy\n")).lLikeRows, 2);
  const ReportProof further = Proof(kReport, after("", "[Line 1.2]\nLike=9\nPlaces=1-\n"));
  EXPECT_EQ(further.lMeantLikeRows, 1) << "the one in front of any record of its group is left out";
  EXPECT_EQ(further.lLikeRows, 1);
  const ReportProof dropped = Proof(kReport, after("Drop=Cy|Bob|TOTAL\n"));
  EXPECT_EQ(dropped.lMeantLikeRows, 2) << "a total that is dropped is none of them";
  EXPECT_EQ(dropped.lFirstMeant, 6);
}

TEST(ReportProof, LinesOfFiguresInNoTableMayBeRows) {
  const ReportProof proof = Proof(kReport + "\nStock  12  13.50  14\nPage 3 of 4\n12 Main Street, 4711 Eastvale\n");
  EXPECT_EQ(proof.lFigureLines, 1);
  EXPECT_EQ(proof.lFirstFigures, 16);
  EXPECT_EQ(proof.lLikeRows, 0);
}

TEST(ReportProof, RowsThatAreSplitHaveLookAndTotalsToo) {
  const std::string sRecipe = "[Table 1]\nNeeds=A digits\nSplit=,\nNames=No|Name|Gross\nTypes=A-B text, C number\n";
  const ReportProof proof = Proof("1,Ann,10.50\n2,Bob,20.25\nX3,Cy,5.00\n,TOTAL,30.75\n", sRecipe);
  EXPECT_EQ(proof.lTotalsAgree, 1);
  EXPECT_EQ(proof.lLikeRows, 0) << "two of three columns are not enough";
  EXPECT_EQ(Proof("1,Ann,10.50\n2,Bob,20.25\nEnd\n3,Cy,5.00\n", Changed(sRecipe, "Needs", "ReadEndLine=End\nNeeds"))
                .lLikeRows,
            1);
  const ReportProof blanks =
      Proof("1 Ann 10.50\n2 Bob 20.25\nTOTAL 30.75\n", Changed(sRecipe, "Split=,", "Split=blanks"));
  EXPECT_EQ(blanks.lTotalsAgree, 1);
}

TEST(ReportProof, ATotalMayBeTheSumOverTables) {
  std::string sRecipe;
  for (const std::string sTable : {"1", "2"}) {
    sRecipe += "[Table " + sTable + "]\nReadStartLine=PART " + sTable +
               "\nReadEndLine=END\nNeeds=A letters, B number\n" +
               "Drop=ALL\nPlaces=1-10 11-20\nNames=Item|Sales\nTypes=A text, B number\n" +
               (sTable == "2" ? "Totals=ALL\n" : "");
  }
  const std::string sReport =
      "PART 1\nPaper        100.00\nInk          150.00\nEND\n"
      "PART 2\nPens          20.00\nGlue          30.00\nEND\n\nALL          300.00\n";
  const ReportProof proof = Proof(sReport, sRecipe);
  EXPECT_EQ(proof.lTotalsAgree, 1);
  EXPECT_EQ(proof.lTotalsDisagree, 0);
  EXPECT_EQ(Proof(Changed(sReport, " 30.00", " 31.00"), sRecipe).lTotalsDisagree, 1);
}

TEST(ReportProof, SumsOverTablesTakeColumnsOfOneNameAlone) {
  std::string sRecipe;
  for (const std::string sTable : {"1", "2", "3"}) {
    sRecipe += "[Table " + sTable + "]\nReadStartLine=PART " + sTable +
               "\nReadEndLine=END\nNeeds=A letters, B number\nDrop=ALL\nPlaces=1-10 11-20 21-30\nNames=Item|" +
               (sTable == "2" ? "Cost|Sales" : "Sales|Sales") + "\nTypes=A text, B-C number\n";
  }
  // A second column of a name is not added to the sums over tables, nor is what has another name.
  const std::string sReport =
      "PART 1\nPaper        100.00     31.00\nInk           50.00     32.00\nEND\n"
      "PART 2\nPens          20.00    7.125\nGlue          30.00    3.125\nEND\n"
      "PART 3\nRope         200.00     11.00\nTape          40.00     12.00\nEND\n\nALL         400.25\n";
  const ReportProof proof = Proof(sReport, sRecipe);
  EXPECT_EQ(proof.lTotalsAgree, 1) << "100 + 50 + 7.125 + 3.125 + 200 + 40, told by the last table";
  EXPECT_EQ(proof.lTotalsDisagree, 0);
  EXPECT_EQ(Proof(Changed(sReport, "400.25", "440.00"), sRecipe).lTotalsAgree, 0);
}

TEST(ReportProof, ATableThatGoesOnIsAskedForTotalsAgain) {
  std::string sRecipe;
  for (const std::string sTable : {"A", "B"}) {
    sRecipe += std::string("[Table ") + (sTable == "A" ? "1" : "2") + "]\nReadStartLine=PART " + sTable +
               "\nReadEndLine=END " + sTable + "\nRepeat=yes\nNeeds=A letters, B number\nDrop=SUM\n" +
               "Places=1-10 11-20\nNames=Item|" + sTable + "\nTypes=A text, B number\n";
  }
  const std::string sFirst = "PART A\nPaper        100.00\nInk           50.00\nEND A\n";
  const std::string sOther = "PART B\nPens          20.00\nGlue          30.00\nEND B\n";
  const std::string sTotal = "SUM OF A     150.00\n";
  EXPECT_EQ(Proof(sFirst + sTotal + sOther, sRecipe).lTotalsAgree, 1);
  EXPECT_EQ(Proof(sFirst + sOther + sTotal, sRecipe).lTotalsAgree, 0) << "another table began";
  EXPECT_EQ(Proof(sFirst + sOther + "PART A\nRope          10.00\nEND A\nSUM OF A     160.00\n", sRecipe).lTotalsAgree,
            1);
}

TEST(ReportProof, AReportThatSaysSoMayRoundItsTotals) {
  const std::string sRecipe =
      "[Table 1]\nNeeds=A letters, B number\nDrop=Total\nTotals=Total\nPlaces=1-10 11-20\nTypes=B number\n";
  const std::string sReport =
      "Tax           1001\nDuty          1002\nFees          1003\nRent          1004\nFines         1005\nTotal       "
      "  5018\n";
  EXPECT_EQ(Proof(sReport, sRecipe).lTotalsDisagree, 1);
  const ReportProof rounded = Proof(sReport + "Detail may not add to totals.\n", sRecipe);
  EXPECT_EQ(rounded.lTotalsDisagree, 0);
  EXPECT_EQ(rounded.lTotalsLastDigit, 1);
  EXPECT_EQ(Proof(Changed(sReport, "5018", "5028") + "Detail may not add to totals.\n", sRecipe).lTotalsDisagree, 1);
}

TEST(ReportProof, WhatStandsBesideTheColumnsInEveryRowIsNoLoss) {
  const std::string sRecipe = "[Table 1]\nNeeds=A digits\nPlaces=2-4 8-12\nNames=No|Name\n";
  const ReportProof bars = Proof(":001 | Ann  |\n:002 | Bob  |\n:003 | Cy   |\n", sRecipe);
  EXPECT_FALSE(bars.loss.Any());
  EXPECT_EQ(bars.loss.lSame, 9);
  // The first digit of each number, and a sign, are pieces of values.
  EXPECT_EQ(Proof("1001 | Ann\n1002 | Bob\n1003 | Cy\n", sRecipe).loss.lInFront, 3);
  EXPECT_EQ(Proof("-001 | Ann\n-002 | Bob\n-003 | Cy\n", sRecipe).loss.lInFront, 3);
  const ReportProof one = Proof(":001 | Ann  |\n:002 x Bob  |\n:003 | Cy   |\n:004 | Di   |\n", sRecipe);
  EXPECT_EQ(one.loss.lBetween, 1);
  EXPECT_EQ(one.loss.lFirstLine, 2);
}

TEST(ReportProof, APanelThatIsNotTakenIsLoss) {
  const std::string sRecipe = "[Table 1]\nNeeds=A digits\nPlaces=1-3 5-8 | 12-14 16-19\nNames=No|Name\n";
  EXPECT_FALSE(Proof("001 Ann    002 Bob\n003 Cy     004 Dan\n005 Eve\n", sRecipe).loss.Any());
  EXPECT_EQ(Proof("001 Ann    002 Bob\n003 Cy     0O4 Dan\n005 Eve\n", sRecipe).loss.lBehind, 6);
}

}  // namespace
}  // namespace quillon
