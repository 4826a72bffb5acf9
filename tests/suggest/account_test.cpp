#include <gtest/gtest.h>

#include "clsCellDoubts.h"
#include "clsSuggestTest.h"

namespace quillon {
namespace {

/// Rows of one table, each with its own number.
std::string Rows(int nFirst, int nRows) {
  std::string sRows;
  for (int i = nFirst; i < nFirst + nRows; ++i) {
    sRows += std::to_string(10001 + i) + "   " +
             (i % 3 == 0   ? "Adler, Ann   "
              : i % 3 == 1 ? "Li, Bo       "
                           : "Zander, Cleo ") +
             "   " + std::to_string(10 + i % 80) + ".50\n";
  }
  return sRows;
}
const std::string kNames = "No      Name            Amount\n";

class SuggestAccountTest : public clsSuggestTest {
 protected:
  /// Whether a reason holds all of these texts.
  bool HasReason(const Strings& texts) const {
    const Strings reasons = suggestion.Reasons();
    return std::any_of(reasons.begin(), reasons.end(), [&](const std::string& sReason) {
      return std::all_of(texts.begin(), texts.end(),
                         [&](const std::string& s) { return sReason.find(s) != std::string::npos; });
    });
  }
};

TEST_F(SuggestAccountTest, CountsRowsPagesAndLinesOfAllTheReport) {
  std::string sReport =
      "ACME\n" + kNames + Rows(0, 3) + "\fACME\n\fACME\n" + kNames + Rows(3, 2) + "\f" + kNames + Rows(5, 4);
  Suggest(sReport);
  ASSERT_EQ(suggestion.Chosen(), 1U) << suggestion.Text();
  const FoundTable& table = suggestion.tables.front();
  EXPECT_EQ(table.lRows, 9);
  EXPECT_EQ(table.lPages, 3) << "the second page has no rows";
  EXPECT_EQ(table.lFirstLine, 3);
  EXPECT_EQ(table.lLastLine, 15);
  EXPECT_EQ(suggestion.lLines, 15);
  EXPECT_FALSE(suggestion.LooksIncomplete()) << suggestion.Text();
  Failure failure;
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(CountTables(folder.Path("r.txt"), {false, nullptr}, 8, suggestion, failure)) << failure.sText;
    EXPECT_EQ(suggestion.tables.front().lRows, 9) << "counts anew, not on";
    EXPECT_EQ(suggestion.tables.front().lPages, 3);
    EXPECT_EQ(suggestion.tables.front().lFirstLine, 3);
  }
}

TEST_F(SuggestAccountTest, CountsRowsThatTheSampleHasNot) {
  const int nRows = static_cast<int>(clsReportSample::kMostLines) + 500;
  Suggest(kNames + Rows(0, nRows) + "TOTAL\n");
  EXPECT_FALSE(suggestion.bWholeSample);
  EXPECT_EQ(suggestion.tables.front().lRows, nRows);
  EXPECT_EQ(suggestion.tables.front().lLastLine, nRows + 1);
  EXPECT_EQ(got.rows.size(), static_cast<size_t>(nRows));
}

struct DoubtCase {
  const char* pWhat;
  std::string sReport;
  int64_t lLeftOut;  ///< Lines left out though like rows
  Strings reason;    ///< What a reason says; none: nothing looks incomplete
};

TEST_F(SuggestAccountTest, TellsWhatSpeaksAgainstATable) {
  const DoubtCase cases[] = {
      {"all is well", kNames + Rows(0, 12), 0, {}},
      {"feet of pages", kNames + Rows(0, 12) + "Page 1 of 2\n" + kNames + Rows(12, 12) + "Page 2 of 2\n", 0, {}},
      {"totals that agree", kNames + Rows(0, 12) + "Total                  192.00\n", 0, {}},
      {"lines drawn between rows", kNames + Rows(0, 12) + "----   ----   -------\n" + Rows(12, 12), 0, {}},
      {"figures that no column has",
       kNames + Rows(0, 12) + "  77 88    99 11 22      33    44\n" + Rows(12, 12),
       1,
       {"1 line left out", "line 14", "77 88"}},
      {"notes between many rows",
       kNames + Rows(0, 4) + "see the letter\n" + Rows(4, 4) + "not yet paid\n" + Rows(8, 4) + "left us\n" +
           Rows(12, 1),
       3,
       {"3 lines left out", "line 6", "see the letter"}},
      {"fields of one width without names",
       "7348 DN-53 93114\n1978 FL-57 87969\n7302 HK-27 63117\n3588 GL-08 80553\n"
       "7451 FK-48 45963\n4224 AN-07 17118\n3677 EK-84 58411\n7555 EL-04 68593\n",
       0,
       {"fixed columns without names"}},
  };
  for (const DoubtCase& c : cases) {
    Suggest(c.sReport);
    EXPECT_EQ(suggestion.leftOut.lLines, c.lLeftOut) << c.pWhat << "\n" << suggestion.Text();
    EXPECT_EQ(suggestion.LooksIncomplete(), !c.reason.empty()) << c.pWhat << "\n" << suggestion.Text();
    EXPECT_EQ(HasReason(c.reason), suggestion.LooksIncomplete()) << c.pWhat << "\n" << suggestion.Text();
  }
}

class clsHeardCells : public clsTidyListener {
 public:
  void TableStarts(size_t, const std::vector<TidyColumnInfo>& columns) override { doubts.TableStarts(columns); }
  void Row(const TidyRecord& row) override { doubts.Row(row); }
  clsCellDoubts doubts;
};

TEST_F(SuggestAccountTest, DoubtsCellsThatTakeMoreThanTheirOwn) {
  std::vector<TidyTable> tables;
  TidyFault fault;
  ASSERT_TRUE(ReadTidyRecipe("[Table 1]\nPlaces=1-4 5-16 17-\nNames=No|Item|Fee\nTypes=A auto, B text, C number\n",
                             tables, fault))
      << fault.sText;
  clsHeardCells heard;
  clsTidyReport run(tables, heard);
  for (const char* const pLine :
       {"1001Lamp        10.50", "1002Copper-44.25", "1003Oring-2     11.50", "7x04Valve", "10 5Motor       12.50"}) {
    run.Line(pLine);
  }
  run.End();
  EXPECT_EQ(heard.doubts.Doubts(),
            (Strings{"1 value of a column of numbers with other texts, the first on line 5: 10 5",
                     "1 text may run into an empty number column, the first on line 2: Copper-44.25"}));
}

TEST_F(SuggestAccountTest, TakesWordsOfProvedTotalsThatTellNextMonthToo) {
  Suggest(kNames + Rows(0, 3) + "Sub-total               34.50\n" + Rows(3, 3) + "Sub-total               43.50\n" +
          Rows(6, 4) + "Sub-total               72.00\nGrand total            150.00\n");
  ASSERT_EQ(got.rows.size(), 10U) << suggestion.Text();
  EXPECT_EQ(suggestion.tables.front().tidy.totals, (Strings{"Sub-total", "Grand total"})) << suggestion.Text();
}

TEST_F(SuggestAccountTest, KeepsReportsFromWritingSectionsIntoTheRecipe) {
  Suggest(kNames + Rows(0, 12) + "[Table 1] 77 88    99 11 22      33    44\n" + Rows(12, 12));
  ASSERT_GT(suggestion.leftOut.lLines, 0) << suggestion.Text();
  const std::string sText = suggestion.Text();
  EXPECT_EQ(sText.find("[Table 1] 77"), std::string::npos) << sText;
  EXPECT_EQ(got.rows.size(), 24U) << sText;
}

}  // namespace
}  // namespace quillon
