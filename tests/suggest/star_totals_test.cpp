#include <gtest/gtest.h>

#include "clsSuggestTest.h"
#include "modStarTotals.h"

namespace quillon {
namespace {

using Lines = std::vector<size_t>;
using StarTotalsTest = clsSuggestTest;

TEST_F(StarTotalsTest, CountsTheStarsThatALineBeginsWith) {
  const clsReportSample& report =
      Sample("* ONE 1\n   ** TWO 2\n***** FIVE 5\n****** SIX 6\n*\n**\n*ONE 1\nONE * 1\n*-* 1\n\n* *\n");
  const size_t stars[] = {1, 2, 5, 0, 0, 0, 0, 0, 0, 0, 1};
  for (size_t n = 0; n < std::size(stars); ++n) EXPECT_EQ(StarsInFront(report.Lines()[n]), stars[n]) << "line " << n;
}

TEST_F(StarTotalsTest, TakesLinesThatHaveTheSumsOfTheRowsAboveThem) {
  struct {
    const char* pWhat;
    std::string sReport;
    Lines totals;
  } const cases[] = {
      {"two levels",
       "Ann       1.50   3\n"
       "Bob       2.25   4\n"
       "* OSLO    3.75   7\n"
       "Cid      10.00   1\n"
       "* BERGEN 10.00   1\n"
       "** ALL   13.75   8\n",
       {2, 4, 5}},
      {"a wider total ends the groups in it",
       "Ann       1.00\n"
       "** ALL    1.00\n"
       "Bob       2.00\n"
       "* OSLO    2.00\n"
       "** ALL    2.00\n",
       {1, 3, 4}},
      {"signs in front and behind, thousands, beside their column",
       "Ann      1,000.50\n"
       "Bob        500.25-\n"
       "*  OSLO   500.25\n"
       "Cid       -100.00\n"
       "Dan        (50.00)\n"
       "*  BERG    150.00-\n",
       {2, 5}},
      {"one sum proves nothing", "Ann   1.50\nBob   2.00\n* ALL 3.50\n", {}},
      {"most must add up", "A 1\nB 2\n* X 3\nA 1\n* X 1\nA 1\n* X 2\nA 1\n* X 9\n", {}},
      {"one in three may be wrong", "A 1\nB 2\n* X 3\nA 1\n* X 1\nA 1\n* X 2\n", {2, 4, 6}},
      {"one column of two is wrong", "Ann     1 3\nBob     2 4\n* OSLO  3 8\nCid     1 1\n* BERG  1 2\n", {}},
      {"stars mark rows", "* Ann   1.50\n* Bob   2.00\n* Cid   3.50\n* Dan   7.00\n", {}},
      {"stars without figures are no totals", "Ann    1\n* none\nBob    2\n* OSLO 3\nCid    4\n* BERG 4\n", {3, 5}},
      {"too large to add up", "A 9223372036854775807\nB 9223372036854775807\n* X 2\nA 1\n* X 1\nA 2\n* X 2\n", {}},
      {"nothing", "", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(FindStarTotals(Sample(c.sReport)), c.totals) << c.pWhat;
}

TEST_F(StarTotalsTest, SuggestsTheRowsWithoutTheirTotals) {
  Suggest(
      "City        Name          Units    Amount\n\n"
      "Oslo        Ann Adler         3    120.50\n"
      "Oslo        Bert Zander       4     80.25\n"
      "*           OSLO              7    200.75\n"
      "Bergen      Cedric Web        1     10.00\n"
      "Bergen      Dan Dietz         2     20.00\n"
      "Bergen      Eve Meyer         3     30.00\n"
      "*           BERGEN            6     60.00\n"
      "**          ALL              13    260.75\n");
  EXPECT_EQ(got.sNames, "City|Name|Units|Amount|");
  EXPECT_EQ(got.rows, (Strings{"Oslo|Ann Adler|3|120.50|", "Oslo|Bert Zander|4|80.25|", "Bergen|Cedric Web|1|10.00|",
                               "Bergen|Dan Dietz|2|20.00|", "Bergen|Eve Meyer|3|30.00|"}))
      << suggestion.Text();
  EXPECT_FALSE(suggestion.LooksIncomplete()) << suggestion.Text();
}

}  // namespace
}  // namespace quillon
