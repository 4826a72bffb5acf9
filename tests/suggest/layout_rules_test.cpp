#include <gtest/gtest.h>

#include "clsSuggestTest.h"

namespace quillon {
namespace {

struct LayoutCase {
  const char* pWhat;
  std::string sReport;
  std::string sNames;  ///< Of all columns of all tables
  size_t nRows;        ///< Of all tables
  Strings rows;        ///< That are among them
};

const std::string kRegion =
    "City     Name        Item    Amount\n\n"
    "REGION NO:  686  Finance\n"
    "Essen    Leo Iwata   5241    662,47\n"
    "         Ann Costa   1834    481,10\n"
    "Riga     Jan Kovac   6356    600,33\n"
    "Milan    Eve Zander  2108    636,82\n"
    "                     8965    706,80\n"
    "Oslo     Bo Gruber   5183    670,51\n"
    "* REGION TOTAL *            3758,03\n";

const std::string kSections =
    "Mill & Sons\n\nSECTION 1 - STOCK LIST\n Emp     State          Fees\n =============================\n"
    " 6895006 HELD        1793.84\n 1223606 SENT        6534.84\n 7085067 SENT        7397.02\n"
    " 6081389 OPEN        1494.47\n\n"
    "SECTION 2 - OPEN ITEMS\nREF  LOT      SITE          AMOUNT  QTY   BALANCE\n"
    "127  FN-2406  Hull        5,726.37    8     68.79\n863  HM-3179  Milan       1,298.64    2     90.02\n"
    "253  CL-6925  Riga        5,993.02    3     51.75\n098  AL-2277  Porto         734.40    9     67.43\n\n"
    "SECTION 3 - PAYMENTS\nCode    Plant     Due           Debit      Net\n"
    "4078    Genoa     2020-01-08  9104.85   602.47\n2207    Riga      2020-09-14  8008.22  2463.33\n"
    "6922    Leeds     2020-05-21   595.58   117.76\n";

class LayoutRulesTest : public clsSuggestTest, public testing::WithParamInterface<LayoutCase> {};

TEST_P(LayoutRulesTest, BecomesItsRows) {
  const LayoutCase& c = GetParam();
  Suggest(c.sReport);
  EXPECT_EQ(got.sNames, c.sNames) << suggestion.Text();
  EXPECT_EQ(got.rows.size(), c.nRows) << suggestion.Text();
  for (const std::string& sRow : c.rows)
    EXPECT_EQ(std::count(got.rows.begin(), got.rows.end(), sRow), 1) << sRow << "\n" << suggestion.Text();
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, LayoutRulesTest,
    testing::Values(
        LayoutCase{"a decimal comma that only the totals tell",
                   "No    Name     Balance\n3011  Cable    863,993\n0835  Joint    593,873\n6116  Motor    716,530\n"
                   "0157  Valve    913,632\nTOTAL        3.088,028\n",
                   "No|Name|Balance|",
                   4,
                   {"3011|Cable|863.993|"}},
        LayoutCase{"a decimal comma behind a zero",
                   "NO: 36\nNAME: Ann Lee\nVALUE: 474,556\n\nNO: 82\nNAME: Bo Li\nVALUE: 781,709\n\n"
                   "NO: 60\nNAME: Cy Fox\nVALUE: -0,018\n\nNO: 87\nNAME: Di Orr\nVALUE: 987,043\n",
                   "NO|NAME|VALUE|",
                   4,
                   {"36|Ann Lee|474.556|", "60|Cy Fox|-0.018|"}},
        LayoutCase{"labels that lack stand in the order of the other records",
                   "NO     LOT      AMOUNT\n2765   DK-365    47.53\n       ORDER: EM-73\n       CONTACT: Quist\n"
                   "3377   BM-217   208.58\n       CONTACT: Novak\n2662   HK-776   500.48\n       DEPOT: Aachen\n"
                   "       ORDER: DK-56\n       CONTACT: Gruber\n5750   HM-957   637.09\n       DEPOT: Fulda\n"
                   "       ORDER: AM-12\n",
                   "NO|LOT|AMOUNT|DEPOT|ORDER|CONTACT|",
                   4,
                   {"2662|HK-776|500.48|Aachen|DK-56|Gruber|"}},
        LayoutCase{"labels with dates are no table",
                   "No    Site    Debit\n8649  Essen   36.42\n      DUE: 20200818\n      CITY: Split\n"
                   "1509  Milan   52.40\n      CITY: Kiel\n5174  Dover   75.78\n      DUE: 20200603\n      CITY: Kiel\n"
                   "6822  Fulda   82.89\n      DUE: 20200428\n      CITY: Hull\n",
                   "No|Site|Debit|DUE|CITY|",
                   4,
                   {"8649|Essen|36.42|2020-08-18|Split|", "1509|Milan|52.40||Kiel|"}},
        LayoutCase{"titles above tables of their own are none",
                   kSections,
                   "Emp|State|Fees|REF|LOT|SITE|AMOUNT|QTY|BALANCE|Code|Plant|Due|Debit|Net|",
                   11,
                   {}},
        LayoutCase{"one heading of a group, and a second column printed once",
                   kRegion,
                   "REGION NO No|REGION NO|City|Name|Item|Amount|",
                   6,
                   {"686|Finance|Milan|Eve Zander|8965|706.80|"}},
        LayoutCase{"bars of which one is out of place",
                   "Id | Lot | Value | Hours\n0022 | HN-32 | 12.69 | 30\n7803 | EM-76 | 16.13 | 80\n"
                   "9115 | GN-05 | -9.80 | 62\n1491 | EK-23 | 162.75 | 58\n4121 | EN-77 | 88.10 | 71\n"
                   "6292 | GL-63 | 12.39 | 28\n0681 | FL-51 | 42.15 | 15\n",
                   "Id|Lot|Value|Hours|",
                   7,
                   {"1491|EK-23|162.75|58|"}},
        LayoutCase{"one blank between pieces whose edges are common in most lines",
                   "8899 FM-5201 Milan 25.972 1\n4913 HN-1283 Cadiz 85.015 2\n1220 DK-4376 Split 50.076 3\n"
                   "2101 GM-0929 Dover 33.687 7\n9518 AM-3908 Aachen -29.948 9\n2866 BL-2869 Dover -44.255 2\n"
                   "9018 EN-6789 Porto 24.895 1\n5862 CL-5344 Boston 70.536 4\n7484 HK-5568 Kiel 50.513 2\n",
                   "Number|Text|Text 2|Number 2|Number 3|",
                   9,
                   {"9518|AM-3908|Aachen|-29.948|9|", "7484|HK-5568|Kiel|50.513|2|"}},
        LayoutCase{"three rows that are all of the report",
                   "09900 31-MAR-20 2942.687\n51643 26-NOV-20 7464.940\n06585 25-NOV-20 4888.889\n",
                   "Text|Date|Number|",
                   3,
                   {}},
        LayoutCase{
            "a row whose figures aren't known",
            "Emp   Material  Batch      Value  Balance  Pieces\n8934  Filter    HM-31   98440.71    92.64       4\n"
            "8874  Gasket    HN-64   63720.48    84.36       8\n8051  Key       HN-54   57842.99    84.13       5\n"
            "4737  Relay     DM-31        N/A      N/A       6\n\nEND OF LIST\n",
            "Emp|Material|Batch|Value|Balance|Pieces|",
            4,
            {"4737|Relay|DM-31|||6|"}},
        LayoutCase{"a text over all of an empty column",
                   "EMP   ARTICLE      QTY    NET\n0391  DrillCable   462   9.90\n1711  Sensor       860  23.32\n"
                   "5223  PumpNozzleInsula  12.13\n3236  Cable             13.88\n4922  Gasket       375   1.92\n"
                   "8199  Relay        482  33.45\n5210  HingeDrill   475  76.84\n4697  Pump         112  45.78\n",
                   "EMP|ARTICLE|QTY|NET|",
                   8,
                   {"5223|PumpNozzleInsula||12.13|"}}));

}  // namespace
}  // namespace quillon
