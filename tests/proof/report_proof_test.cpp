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

}  // namespace
}  // namespace quillon
