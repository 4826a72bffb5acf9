#include <gtest/gtest.h>

#include "clsSuggestTest.h"
#include "modColumnNames.h"

namespace quillon {
namespace {

struct NameCase {
  const char* pWhat;
  std::string sAbove;
  Strings names;
  std::vector<size_t> lines;
};

using ColumnNamesTest = clsSuggestTest;

const char* const kRows =
    "1001   Adler, Ann         1,010.50     17.25\n"
    "1002   Zander, Bernd         12.00    117.25\n"
    "1003   Li, Bo               999.99      0.00\n"
    "1004   Meyer-Dietz, Eva       1.50     -3.25\n";

TEST_F(ColumnNamesTest, ReadsWhatIsPrintedAboveTheColumns) {
  const NameCase cases[] = {
      {"one line", "No     Name                  Gross       Net\n", {"No", "Name", "Gross", "Net"}, {0}},
      {"a line drawn below",
       "No     Name                  Gross       Net\n----   ----\n",
       {"No", "Name", "Gross", "Net"},
       {0}},
      {"two lines",
       "Staff                        Gross       Net\nNo     Name                   pay       pay\n",
       {"Staff No", "Name", "Gross pay", "Net pay"},
       {0, 1}},
      {"names with blanks",
       "No     Name and title   Gross amount  Net amt\n",
       {"No", "Name and title", "Gross amount", "Net amt"},
       {0}},
      {"years", "No     Name                   2024      2025\n", {"No", "Name", "2024", "2025"}, {0}},
      {"beyond ASCII", "Nº     Größe                  総額       Été\n", {"Nº", "Größe", "総額", "Été"}, {0}},
      {"bars between", "No   | Name             |    Gross |     Net\n", {"No", "Name", "Gross", "Net"}, {0}},
      {"a title above",
       "ACME LTD                     PAGE 1\n\nNo     Name                  Gross       Net\n",
       {"No", "Name", "Gross", "Net"},
       {2}},
      {"a column without a name", "No     Name                  Gross\n", {"No", "Name", "Gross", ""}, {0}},
      {"labels with values", "Plant: Oslo           Shift: 1\n", {"", "", "", ""}, {}},
      {"another table's row", "9999   Total        9,010.50     97.25\n", {"", "", "", ""}, {}},
      {"nothing", "", {"", "", "", ""}, {}},
  };
  for (const NameCase& c : cases) {
    const clsReportSample& report = Sample(c.sAbove + kRows);
    const size_t nRow = report.Lines().size() - 4;
    const std::vector<size_t> rows{nRow, nRow + 1, nRow + 2, nRow + 3};
    const clsTableShape shape(report, rows);
    ASSERT_EQ(shape.Columns().size(), 4U) << c.pWhat;
    const std::vector<size_t> lines = HeadingLines(report, shape, nRow, 0);
    EXPECT_EQ(lines, c.lines) << c.pWhat;
    Strings names;
    for (const std::u32string& sName : NamesOfColumns(report, shape, lines)) names.push_back(Utf8Of(sName));
    EXPECT_EQ(names, c.names) << c.pWhat;
    EXPECT_TRUE(HeadingLines(report, shape, nRow, nRow).empty()) << c.pWhat << ": looks above the line it may";
  }
}

}  // namespace
}  // namespace quillon
