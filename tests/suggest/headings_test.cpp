#include <gtest/gtest.h>

#include "clsSuggestTest.h"
#include "modGroupTitles.h"

namespace quillon {
namespace {

using HeadingsTest = clsSuggestTest;

/// A report of groups: what stands above each, and its rows.
std::string Groups(const Strings& headings, int nRows = 4) {
  std::string sReport = "No     Name            Amount\n";
  int n = 0;
  for (const std::string& sHeading : headings) {
    sReport += sHeading + "\n";
    for (int i = 0; i < nRows; ++i, ++n) {
      sReport += std::to_string(1001 + n * 7) + "   " +
                 (n % 3 == 0   ? "Adler, Ann   "
                  : n % 3 == 1 ? "Li, Bo       "
                               : "Zander, Cleo ");
      sReport += "   " + std::to_string(10 + n) + ".50\n";
    }
    sReport += "\n";
  }
  return sReport;
}

struct HeadingCase {
  const char* pWhat;
  Strings headings;
  std::string sNames, sFirst, sLast;  ///< Names of the columns, the headings' values in the first and the last row
};

void PrintTo(const HeadingCase& c, std::ostream* pOut) {
  *pOut << c.pWhat;
}

class GroupHeadingsTest : public clsSuggestTest, public testing::WithParamInterface<HeadingCase> {};

TEST_P(GroupHeadingsTest, GivesEachRowTheValuesAboveItsGroup) {
  const HeadingCase& c = GetParam();
  Suggest(Groups(c.headings));
  EXPECT_EQ(got.sNames, c.sNames + "No|Name|Amount|") << suggestion.Text();
  ASSERT_EQ(got.rows.size(), c.headings.size() * 4) << suggestion.Text();
  EXPECT_EQ(got.rows.front(), c.sFirst + "1001|Adler, Ann|10.50|") << suggestion.Text();
  EXPECT_TRUE(got.rows.back().starts_with(c.sLast)) << got.rows.back() << "\n" << suggestion.Text();
  // Next month has other groups, some of one row alone.
  Strings next{c.headings.back(), c.headings.front()};
  const clsSuggestedRows rows = Run(Groups(next, 1));
  ASSERT_EQ(rows.rows.size(), 2U) << suggestion.Text();
  EXPECT_TRUE(rows.rows.front().starts_with(c.sLast)) << rows.rows.front() << "\n" << suggestion.Text();
  EXPECT_TRUE(rows.rows.back().starts_with(c.sFirst)) << rows.rows.back() << "\n" << suggestion.Text();
}

const HeadingCase kHeadingCases[] = {
    {"label", {"Department: Sales", "Department: Stores", "Department: Port"}, "Department|", "Sales|", "Port|"},
    {"label with dots", {"Dept ...... Sales", "Dept ...... Stores", "Dept ...... Port"}, "Dept|", "Sales|", "Port|"},
    {"two labels of a line",
     {"Plant: Oslo      Shift: 1", "Plant: Bergen    Shift: 2", "Plant: Narvik    Shift: 1"},
     "Plant|Shift|",
     "Oslo|1|",
     "Narvik|1|"},
    {"two lines",
     {"Plant: Oslo\nForeman: Dietz", "Plant: Bergen\nForeman: Meyer", "Plant: Narvik\nForeman: Weber"},
     "Plant|Foreman|",
     "Oslo|Dietz|",
     "Narvik|Weber|"},
    {"number and name",
     {"DEPARTMENT 824 Security", "DEPARTMENT 825 Stores and yard", "DEPARTMENT 831 Port"},
     "DEPARTMENT No|DEPARTMENT|",
     "824|Security|",
     "831|Port|"},
    {"continued on the next page",
     {"Department: Sales", "Department: Sales (continued)", "Department: Port", "Department: Port (continued)"},
     "Department|",
     "Sales|",
     "Port|"},
    {"beyond ASCII", {"Größe: klein", "Größe: übergroß", "Größe: 中"}, "Größe|", "klein|", "中|"},
    {"a date",
     {"Posted: 31.01.2026", "Posted: 28.02.2026", "Posted: 01.03.2026"},
     "Posted|",
     "2026-01-31|",
     "2026-03-01|"},
    {"signs that pictures read", {"TAX A_X.: one", "TAX A_X.: two", "TAX A_X.: three"}, "TAX A_X|", "one|", "three|"},
    {"brackets", {"[Kind]: one", "[Kind]: two", "[Kind]: three"}, "[Kind]|", "one|", "three|"},
    {"values that hold a colon", {"Slot: 10:30", "Slot: 11:45", "Slot: 23:00"}, "Slot|", "10:30|", "23:00|"},
};
INSTANTIATE_TEST_SUITE_P(All, GroupHeadingsTest, testing::ValuesIn(kHeadingCases));

TEST_F(HeadingsTest, TakesLinesOfSeveralValuesForRecordsAboveTheirItems) {
  Suggest(
      "Order     Customer          Date\n"
      "   Item   Text              Units    Price\n"
      "-------------------------------------------\n"
      "A1001     Adler Ltd         2026-01-31\n"
      "   7001   Lamp brass            3    10.50\n"
      "   7002   Oring zinc           12     1.25\n"
      "A1002     Zander and Sons   2026-02-01\n"
      "   7003   Motor                 1   312.50\n"
      "A1007     Meyer             2026-02-03\n"
      "   7001   Lamp brass            5    10.50\n"
      "   7009   Key rubber          100     0.25\n"
      "   7010   Timer                 2    99.00\n");
  ASSERT_EQ(got.rows.size(), 6U) << suggestion.Text();
  EXPECT_EQ(got.rows[0], "A1001|Adler Ltd|2026-01-31|7001|Lamp brass|3|10.50|") << suggestion.Text();
  EXPECT_EQ(got.rows[2], "A1002|Zander and Sons|2026-02-01|7003|Motor|1|312.50|");
  EXPECT_EQ(got.rows[5], "A1007|Meyer|2026-02-03|7010|Timer|2|99.00|");
  EXPECT_EQ(got.sNames.substr(0, 20), "Order|Customer|Date|") << suggestion.Text();
}

TEST_F(HeadingsTest, TellsTitlesOfGroupsFromRows) {
  struct {
    const char* pWhat;
    std::vector<size_t> lines, rows;
    bool bTitles;
  } const cases[] = {
      {"in front of groups", {0, 4, 8}, {1, 2, 3, 5, 6, 7, 9, 10, 11}, true},
      {"below the first rows", {4, 8}, {1, 2, 3, 5, 6, 7, 9, 10, 11}, false},
      {"one above each row", {0, 4, 8}, {1, 5, 9}, false},
      {"rows below one alone", {0, 4, 8}, {1, 2, 3}, false},
  };
  const clsReportSample& report =
      Sample("Dept  10  Sales\na 1\nb 2\nc 3\nDept  20  Stores\nd 4\ne 5\nf 6\nDept  30  Port\ng 7\nh 8\ni 9\nj 1\n");
  for (const auto& c : cases) EXPECT_EQ(AreTitlesOf(report, c.lines, c.rows), c.bTitles) << c.pWhat;
}

}  // namespace
}  // namespace quillon
