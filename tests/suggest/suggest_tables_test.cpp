#include <gtest/gtest.h>

#include "clsSuggestTest.h"

namespace quillon {
namespace {

using SuggestTablesTest = clsSuggestTest;

std::string Page(int nDepartment, int nFirst, int nRows) {
  std::string sPage = "ACME LTD                               PAGE " + std::to_string(nDepartment) +
                      "\n\nNo    Name                 Gross        Net\n--------------------------------------------\n"
                      "DEPARTMENT: " +
                      std::to_string(100 + nDepartment) + "\n";
  for (int i = 0; i < nRows; ++i) {
    const std::string sNo = std::to_string(nFirst + i);
    sPage += sNo + "  " + (i % 2 == 0 ? "Adler, Ann      " : "Zander, Bernd   ") + "   $1,0" +
             std::to_string(10 + i % 80) + ".50   " + (i % 3 == 0 ? "(17.25)" : " 117.25") + "\n";
  }
  return sPage + "DEPARTMENT TOTALS      $20,110.50   2217.25\n\n";
}

TEST_F(SuggestTablesTest, MakesOneTableOfPagesAndGroups) {
  Suggest(Page(1, 1001, 8) + Page(2, 2001, 5) + Page(3, 3001, 11));
  EXPECT_EQ(got.sNames, "DEPARTMENT|No|Name|Gross|Net|") << suggestion.Text();
  ASSERT_EQ(got.rows.size(), 24U) << suggestion.Text();
  EXPECT_EQ(got.rows[0], "101|1001|Adler, Ann|1010.50|-17.25|");
  EXPECT_EQ(got.rows[9], "102|2002|Zander, Bernd|1011.50|117.25|");
  EXPECT_EQ(got.rows[23], "103|3011|Adler, Ann|1020.50|117.25|");
  EXPECT_FALSE(suggestion.LooksIncomplete());
}

TEST_F(SuggestTablesTest, HoldsForTheNextMonth) {
  Suggest(Page(1, 1001, 8) + Page(2, 2001, 5));
  const clsSuggestedRows next = Run(Page(4, 4001, 3) + Page(5, 5001, 40) + Page(6, 6001, 1));
  EXPECT_EQ(next.rows.size(), 44U) << suggestion.Text();
}

TEST_F(SuggestTablesTest, LeavesHeadingsOutWhereTheyAreNotWanted) {
  SuggestChoices choices;
  choices.sHeadings = "none";
  Suggest(Page(1, 1001, 8) + Page(2, 2001, 5), choices);
  EXPECT_EQ(got.sNames, "No|Name|Gross|Net|");
}

TEST_F(SuggestTablesTest, FillsWhatIsPrintedOnceForAGroup) {
  Suggest(
      "10-Dec-01 Checking balance      Assets:Checking          $ 1,000.00\n"
      "                                Assets:Savings           $ 5,200.00\n"
      "                                Equity:Opening          $ -6,200.00\n"
      "10-Dec-20 Organic Co-op         Expense:Food                $ 37.50\n"
      "                                Assets:Checking            $ -37.50\n"
      "11-Jan-02 Grocery Store         Expense:Food                $ 65.00\n"
      "                                Assets:Checking            $ -65.00\n");
  ASSERT_EQ(got.rows.size(), 7U) << suggestion.Text();
  EXPECT_EQ(got.rows[2], "2010-12-01|Checking balance|Equity:Opening|-6200.00|");
}

TEST_F(SuggestTablesTest, JoinsWrappedTexts) {
  Suggest(
      "Code     Material               Amount\n"
      "7001     Lamp brass steel        10.50\n"
      "         square\n"
      "7002     Oring zinc              11.50\n"
      "7003     Motor                   12.50\n"
      "         large blue\n"
      "7004     Insulator copper left   13.50\n"
      "         hollow\n"
      "7005     Key rubber              14.50\n"
      "7006     Timer spare             15.50\n");
  ASSERT_EQ(got.rows.size(), 6U) << suggestion.Text();
  EXPECT_EQ(got.rows[0], "7001|Lamp brass steel square|10.50|");
  EXPECT_EQ(got.rows[1], "7002|Oring zinc|11.50|");
}

TEST_F(SuggestTablesTest, WritesNoValueOfOneRecordIntoTheRecipe) {
  std::string sReport = "No      Name       Amount    Date\n";
  for (int i = 0; i < 12; ++i) {
    sReport += std::to_string(700100 + i) + "  Weber      1" + std::to_string(10 + i) + ".50    2026-01-1" +
               std::to_string(i % 9) + "\n";
  }
  Suggest(sReport + "7x0199  Weber      199.50    2026-01-11\n");
  EXPECT_EQ(got.rows.size(), 13U) << suggestion.Text();
  EXPECT_EQ(suggestion.Text().find("7x0199"), std::string::npos) << suggestion.Text();
}

TEST_F(SuggestTablesTest, FindsNothingInProseAndInNothing) {
  Suggest("");
  EXPECT_EQ(suggestion.Chosen(), 0U);
  Suggest("This program is told by its shape.\nNothing of it is a table, and no line has a figure.\n\nThe end.\n");
  EXPECT_TRUE(suggestion.tables.empty() || suggestion.tables.front().bDoubtful);
}

}  // namespace
}  // namespace quillon
