#include <gtest/gtest.h>

#include "clsSuggestTest.h"
#include "modRecordsByLabel.h"

namespace quillon {
namespace {

using RecordsTest = clsSuggestTest;

struct RecordCase {
  const char* pWhat;
  std::string sReport, sNames;
  Strings rows;
};

void PrintTo(const RecordCase& c, std::ostream* pOut) {
  *pOut << c.pWhat;
}

class SuggestedRecordsTest : public clsSuggestTest, public testing::WithParamInterface<RecordCase> {};

TEST_P(SuggestedRecordsTest, MakesARowOfEachRecord) {
  Suggest(GetParam().sReport);
  EXPECT_EQ(got.sNames, GetParam().sNames) << suggestion.Text();
  EXPECT_EQ(got.rows, GetParam().rows) << suggestion.Text();
}

const RecordCase kForms[] = {
    {"labels that some records lack",
     "Name: Dietz\nCity: Oslo\nBorn: 1990-01-31\n\n"
     "Name: Meyer\nBorn: 1991-12-01\n\n"
     "Name: Li\nCity: Bergen\nBorn: 1985-06-30\n\n"
     "Name: Adler\nCity: Narvik\n",
     "Name|City|Born|",
     {"Dietz|Oslo|1990-01-31|", "Meyer||1991-12-01|", "Li|Bergen|1985-06-30|", "Adler|Narvik||"}},
    {"two labels of a line",
     "CITY ..... : Oslo     POSTED: 2026-05-01\nSUM ...... : 12.50\n\n"
     "CITY ..... : Bergen   POSTED: 2026-05-02\nSUM ...... : 7.25-\n\n"
     "CITY ..... : Å        POSTED: 2026-05-13\nSUM ...... : 1,000.00\n",
     "CITY|POSTED|SUM|",
     {"Oslo|2026-05-01|12.50|", "Bergen|2026-05-02|-7.25|", "Å|2026-05-13|1000.00|"}},
    {"equals signs, values with colons",
     "Host = alpha\nStart = 10:30\nNote = a: b = c\n\n"
     "Host = beta\nStart = 11:45\nNote = none\n\n"
     "Host = gamma\nStart = 23:59\nNote = x = y\n",
     "Host|Start|Note|",
     {"alpha|10:30|a: b = c|", "beta|11:45|none|", "gamma|23:59|x = y|"}},
    {"labels that pictures and recipes would misread",
     "TAX 9A.X_: 1\nA;B [x]: one\nÄ|Ö: u\n\nTAX 9A.X_: 2\nA;B [x]: two\nÄ|Ö: v\n\nTAX 9A.X_: 30\nA;B [x]: three\nÄ|Ö: "
     "w\n",
     "TAX 9A.X_|A;B [x]|Ä|Ö|",
     {"1|one|u|", "2|two|v|", "30|three|w|"}},
    {"one name twice in a line",
     "Item: A17     Date: 2026-01-01     Date: 2026-01-31\nText: Lamp\n\n"
     "Item: B2      Date: 2026-02-01     Date: 2026-02-28\nText: Motor\n\n"
     "Item: C300    Date: 2026-03-01     Date: 2026-03-31\nText: Key\n",
     "Item|Date|Date 2|Text|",
     {"A17|2026-01-01|2026-01-31|Lamp|", "B2|2026-02-01|2026-02-28|Motor|", "C300|2026-03-01|2026-03-31|Key|"}},
    {"a list of labels",
     "Opened: 10:30\nClosed: 18:00\nCashier: Dietz\nRegister: 7\nOwner: Adler: Sons\nCity: Oslo\n",
     "Label|Value|",
     {"Opened|10:30|", "Closed|18:00|", "Cashier|Dietz|", "Register|7|", "Owner|Adler: Sons|", "City|Oslo|"}},
};
INSTANTIATE_TEST_SUITE_P(Forms, SuggestedRecordsTest, testing::ValuesIn(kForms));

const RecordCase kSeveralLines[] = {
    {"two lines a record",
     "1001  Adler, Ann       2026-01-31\n      12 Long Street        Oslo\n"
     "1002  Zander, Bernd    2026-02-28\n      7 High Road           Bergen\n"
     "1003  Li, Bo           2026-03-01\n      100 Station Square    Narvik\n"
     "1004  Meyer, Eva       2026-03-02\n      3 Port Way            Bodo\n"
     "1005  Dietz, Max       2026-03-03\n      44 Hill Lane          Tromso\n"
     "1006  Weber, Ida       2026-03-09\n      5 Mill Yard           Hamar\n",
     "Number|Text|Date|Text 2|Text 3|",
     {"1001|Adler, Ann|2026-01-31|12 Long Street|Oslo|", "1002|Zander, Bernd|2026-02-28|7 High Road|Bergen|",
      "1003|Li, Bo|2026-03-01|100 Station Square|Narvik|", "1004|Meyer, Eva|2026-03-02|3 Port Way|Bodo|",
      "1005|Dietz, Max|2026-03-03|44 Hill Lane|Tromso|", "1006|Weber, Ida|2026-03-09|5 Mill Yard|Hamar|"}},
    {"names in as many lines",
     "No    Name             Born\n      Street                City\n\n"
     "1001  Adler, Ann       1986-01-31\n      12 Long Street        Oslo\n\n"
     "1002  Zander, Bernd    1990-02-28\n      7 High Road           Bergen\n\n"
     "1003  Li, Bo           1977-03-01\n      100 Station Square    Narvik\n\n"
     "1004  Meyer, Eva       1969-03-02\n      3 Port Way            Bodo\n\n"
     "1005  Dietz, Max       2001-03-03\n      44 Hill Lane          Tromso\n",
     "No|Name|Born|Street|City|",
     {"1001|Adler, Ann|1986-01-31|12 Long Street|Oslo|", "1002|Zander, Bernd|1990-02-28|7 High Road|Bergen|",
      "1003|Li, Bo|1977-03-01|100 Station Square|Narvik|", "1004|Meyer, Eva|1969-03-02|3 Port Way|Bodo|",
      "1005|Dietz, Max|2001-03-03|44 Hill Lane|Tromso|"}},
};
INSTANTIATE_TEST_SUITE_P(SeveralLines, SuggestedRecordsTest, testing::ValuesIn(kSeveralLines));

const RecordCase kSideBySide[] = {
    {"a list in two halves",
     "No    Name        Amount    No    Name        Amount\n"
     "1001  Adler        10.50    1004  Meyer         4.00\n"
     "1002  Zander        2.25    1005  Dietz       150.75\n"
     "1003  Li          300.00    1006  Weber         6.50\n"
     "1007  Ost           7.00\n",
     "No|Name|Amount|",
     {"1001|Adler|10.50|", "1004|Meyer|4.00|", "1002|Zander|2.25|", "1005|Dietz|150.75|", "1003|Li|300.00|",
      "1006|Weber|6.50|", "1007|Ost|7.00|"}},
    {"months are no halves",
     "No    Name       Jan     Feb     Mar\n"
     "1001  Adler    10.50   11.50   12.50\n"
     "1002  Zander    2.25    3.25    4.25\n"
     "1003  Li      300.00  301.00  302.00\n"
     "1004  Meyer     1.00    2.00    3.00\n",
     "No|Name|Jan|Feb|Mar|",
     {"1001|Adler|10.50|11.50|12.50|", "1002|Zander|2.25|3.25|4.25|", "1003|Li|300.00|301.00|302.00|",
      "1004|Meyer|1.00|2.00|3.00|"}},
    {"labels, the last block short",
     "Ann Adler           Bernd Zander        Bo Li\n"
     "12 Long Street      7 High Road         1 Station Square\n"
     "0150 Oslo           5003 Bergen         8514 Narvik\n\n"
     "Eva Meyer           Max Dietz           Ida Größe\n"
     "3 Port Way          44 Hill Lane        5 Mill Yard\n"
     "8001 Bodø           9008 Tromsø         2315 Hamar\n\n"
     "Kim Ost             Jo West             Al Nord\n"
     "1 East Row          2 West Row          3 North Row\n"
     "1001 Oslo           1002 Oslo           1003 Oslo\n\n"
     "Su Last\n"
     "9 End Row\n"
     "9999 Nowhere\n",
     "Text|Text 2|Text 3|",
     {"Ann Adler|12 Long Street|0150 Oslo|", "Bernd Zander|7 High Road|5003 Bergen|",
      "Bo Li|1 Station Square|8514 Narvik|", "Eva Meyer|3 Port Way|8001 Bodø|", "Max Dietz|44 Hill Lane|9008 Tromsø|",
      "Ida Größe|5 Mill Yard|2315 Hamar|", "Kim Ost|1 East Row|1001 Oslo|", "Jo West|2 West Row|1002 Oslo|",
      "Al Nord|3 North Row|1003 Oslo|", "Su Last|9 End Row|9999 Nowhere|"}},
};
INSTANTIATE_TEST_SUITE_P(SideBySide, SuggestedRecordsTest, testing::ValuesIn(kSideBySide));

const RecordCase kSplit[] = {
    {"commas",
     "No,Name,Amount\n1,Adler,10.50\n20,Zander and Sons,2.25\n3,Li,300.00\n400,,1.00\n5,Größe,6.50\n",
     "No|Name|Amount|",
     {"1|Adler|10.50|", "20|Zander and Sons|2.25|", "3|Li|300.00|", "400||1.00|", "5|Größe|6.50|"}},
    {"semicolons beside decimal commas",
     "No;Name;Sum\n1;Adler;1.010,50\n20;Zander;2,25\n3;Li;300,00\n400;Weber-Meyer;1,00\n5;Ost;6,50\n",
     "No|Name|Sum|",
     {"1|Adler|1010.50|", "20|Zander|2.25|", "3|Li|300.00|", "400|Weber-Meyer|1.00|", "5|Ost|6.50|"}},
    {"bars with blanks around",
     "No | Name | City\n1 | Adler, Ann | Oslo\n20 | Zander, Bernd | Bergen\n3 | Li | Narvik\n400 | | Bodo\n5 | Ost | "
     "X\n",
     "No|Name|City|",
     {"1|Adler, Ann|Oslo|", "20|Zander, Bernd|Bergen|", "3|Li|Narvik|", "400||Bodo|", "5|Ost|X|"}},
    {"blanks",
     "alpha 1 22.5 700\nbetagamma 100 3.25 8\nx 20 1000.5 9999\nlonger 3 4.75 10\nyy 4444 5.5 123456\nz 5 16.5 2\n",
     "Text|Number|Number 2|Number 3|",
     {"alpha|1|22.5|700|", "betagamma|100|3.25|8|", "x|20|1000.5|9999|", "longer|3|4.75|10|", "yy|4444|5.5|123456|",
      "z|5|16.5|2|"}},
};
INSTANTIATE_TEST_SUITE_P(Split, SuggestedRecordsTest, testing::ValuesIn(kSplit));

TEST_F(RecordsTest, FindsNoFormsInOtherLines) {
  struct {
    const char* pWhat;
    std::string sReport;
  } const cases[] = {
      {"two records", "Name: A\nCity: B\nBorn: C\n\nName: D\nCity: E\nBorn: F\n"},
      {"one label alone", "Name: A\n\nName: B\n\nName: C\n\nName: D\n"},
      {"times", "10:30 a\n10:31 b\n10:32 c\n10:33 d\n"},
      {"labels are few among other lines",
       "Name: A\nCity: B\nx\ny\nz\nv\nName: C\nCity: D\nx\ny\nz\nv\nName: E\nCity: F\nx\ny\nz\nv\nName: G\n"},
      {"nothing", ""},
  };
  for (const auto& c : cases) {
    const clsReportSample& report = Sample(c.sReport);
    std::vector<bool> taken(report.Lines().size());
    EXPECT_TRUE(FindRecordsByLabel(report, taken).empty()) << c.pWhat;
    EXPECT_EQ(std::count(taken.begin(), taken.end(), true), 0) << c.pWhat;
  }
}

TEST_F(RecordsTest, GivesRowsTheLabelsBelowThem) {
  const clsReportSample& report = Sample(
      "1001  Adler    10.50\n  Name: Ann\n  Note: late\n"
      "1002  Zander    2.25\n  Name: Bernd\n"
      "1003  Li      300.00\n  Name: Bo\n  Note: paid\n");
  FoundTable table;
  table.rows = {0, 3, 5};
  table.tidy.row.names = {"No", "Name", "Amount"};
  std::vector<bool> taken(report.Lines().size());
  for (const size_t n : table.rows) taken[n] = true;
  ASSERT_TRUE(AttachLabelledLines(report, taken, table));
  ASSERT_EQ(table.tidy.lines.size(), 2U);
  EXPECT_EQ(table.tidy.lines[0].part.names, Strings{"Name 2"}) << "values of one name would become one";
  EXPECT_EQ(table.tidy.lines[1].part.names, Strings{"Note"});
  EXPECT_EQ(table.furtherLines, (std::vector<size_t>{1, 4, 6, 2, 7}));
  FoundTable bare;
  bare.rows = {0, 3, 5};
  EXPECT_FALSE(AttachLabelledLines(report, std::vector<bool>(report.Lines().size(), true), bare)) << "lines are taken";
  EXPECT_TRUE(bare.tidy.lines.empty());
}

}  // namespace
}  // namespace quillon
