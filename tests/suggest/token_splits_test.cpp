#include <gtest/gtest.h>

#include "clsSuggestTest.h"
#include "modDigitSplits.h"
#include "modTokenSplits.h"

namespace quillon {
namespace {

/// The text of a split: last place of the left column, first place of the right one.
std::string TextOf(const std::optional<TokenSplit>& split) {
  return split ? std::to_string(split->lLeftLast) + "-" + std::to_string(split->lRightFirst) : "none";
}

struct SplitCase {
  const char* pWhat;
  std::string sRows;
  int32_t lLast;
  const char* pSplit;
};

using TokenSplitsTest = clsSuggestTest;

TEST_F(TokenSplitsTest, PartsATextAndTheNumberBehindIt) {
  const SplitCase cases[] = {
      {"texts of changing length", "Lamp        12\nMotor      112\nOring zinc   3\nKey rubber  55\n", 13, "9-11"},
      {"places count characters", "Öl grün     12\nMötör      112\nÖring zinc   3\nKey rübber  55\n", 13, "9-11"},
      {"a sign behind the number", "Lamp       12-\nMotor      11-\nOring zinc  3\nKey         5-\n", 13, "9-11"},
      {"numbers of a ragged edge", "Lamp 12\nMotor 1120\nOring zinc 31\nKey 55555555\n", 13, "none"},
      {"no text", "    12\n   112\n  1112\n     2\n", 5, "none"},
      {"three rows tell nothing", "Lamp        12\nMotor      112\nOring zinc   3\n", 13, "none"},
      {"words over the numbers' place", "Lamp        12\nMotor      112\nOring zinc zzz\nInsulators zzz\n", 13, "none"},
  };
  for (const SplitCase& c : cases) {
    const clsReportSample& report = Sample(c.sRows);
    EXPECT_EQ(TextOf(SplitAtNumber(report, all, 0, c.lLast)), c.pSplit) << c.pWhat;
  }
}

TEST_F(TokenSplitsTest, PartsBehindAValueOfOneForm) {
  const SplitCase cases[] = {
      {"date and word", "07/03/24TERM\n07/04/24FULL\n07/05/24TERM\n07/06/24PART\n", 11, "7-8"},
      {"long date and word", "07.03.2024Ärger\n08.03.2024Öl\n09.03.2024Term\n10.03.2024Full\n", 14, "9-10"},
      {"one row's date is none", "07/03/24TERM\n07/04/24FULL\n47/95/24TERM\n07/06/24PART\n", 11, "none"},
      {"amounts that touch", "18.82-3285.89\n17.00 1285.00\n11.50-9285.17\n10.99 3285.89\n", 12, "4-5"},
      {"sign and word", "132.24-P\n118.00 Q\n111.50-P\n210.99 R\n", 7, "6-7"},
      {"decimal commas", "18,82AB1\n17,00CD2\n11,50EF3\n10,99GH4\n", 7, "4-5"},
      {"letters for signs", "132.24CR\n118.00DR\n111.50CR\n210.99DR\n", 7, "none"},
      {"signs alone", "132.24-\n118.00-\n111.50\n210.99-\n", 6, "none"},
      {"exponents", "1.25E+03\n1.75E-01\n2.50E+11\n9.99E+00\n", 7, "none"},
      {"thousands", "1.250.000\n2.750.000\n3.125.500\n9.990.125\n", 8, "none"},
      {"points and commas", "18.82AB1\n17,00CD2\n11.50EF3\n10,99GH4\n", 7, "none"},
      {"a short row", "18.82AB1\n17\n11.50EF3\n10.99GH4\n", 7, "none"},
  };
  for (const SplitCase& c : cases) {
    const clsReportSample& report = Sample(c.sRows);
    EXPECT_EQ(TextOf(SplitBehindForm(report, all, 0, c.lLast)), c.pSplit) << c.pWhat;
  }
}

/// Eight rows of digits around dates, the last of which ends in sLast.
std::string DigitRows(const std::string& sInFront, const std::string& sBehind, const std::string& sLast) {
  std::string sRows;
  for (int i = 0; i < 8; ++i) {
    sRows += sInFront + std::to_string(7 - i) + "2024" + (i == 7 ? sLast : "123" + std::to_string(i % 2)) + sBehind +
             std::to_string(i) + "\n";
  }
  return sRows;
}

TEST_F(TokenSplitsTest, PartsAtADateInsideOfDigits) {
  // The digits in front are 4567, so that no date begins earlier.
  const clsReportSample& report = Sample(DigitRows("4567", "888", "0229"));
  EXPECT_EQ(TextOf(SplitAtPlainDate(report, all, 0, 16)), "4-5");
  EXPECT_EQ(TextOf(SplitAtPlainDate(report, all, 5, 16)), "12-13");
  EXPECT_EQ(TextOf(SplitAtPlainDate(report, all, 5, 12)), "none") << "a date alone";
  for (const char* pLast : {"1301", "0132", "0001", "1200"}) {
    const clsReportSample& noDates = Sample(DigitRows("4567", "888", pLast));
    EXPECT_EQ(TextOf(SplitAtPlainDate(noDates, all, 0, 16)), "none") << pLast;
  }
}

TEST_F(TokenSplitsTest, TellsFurtherWordsFromColumns) {
  struct {
    const char* pWhat;
    std::string sRows;
    bool bTail;
  } const cases[] = {
      {"long texts go on", "Lamp brass\nMoto steel\nKey\nRing zinc\nBus\n", true},
      {"a text that stops short with another behind", "Lamp brass\nMot  steel\nKey\nOring\n", false},
      {"codes of one width", "Lamp\nMoto\nBolt grey\nRing\n", false},
      {"all have both", "Lamp grey\nMoto blue\nBolt grey\n", false},
  };
  for (const auto& c : cases) {
    const clsReportSample& report = Sample(c.sRows);
    EXPECT_EQ(IsTail(report, all, 0, 3, 5, 9), c.bTail) << c.pWhat;
  }
}

}  // namespace
}  // namespace quillon
