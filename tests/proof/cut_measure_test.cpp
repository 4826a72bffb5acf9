#include <gtest/gtest.h>

#include "clsCutMeasure.h"

namespace quillon {
namespace {

std::string Lost(clsCutMeasure& measure, std::string_view sRow) {
  const CharacterLoss& loss = measure.Text(sRow, 1);
  return std::to_string(loss.lInFront) + " " + std::to_string(loss.lBetween) + " " + std::to_string(loss.lBehind) +
         " " + std::to_string(loss.lCuts);
}

TEST(CutMeasure, TellsInFrontBetweenBehindAndCutApartAndBlanksAreNoLoss) {
  const std::vector<TidyPlace> places{{8, 10}, {3, 5}};
  clsCutMeasure measure(places);
  EXPECT_EQ(Lost(measure, "  abc  def     "), "0 0 0 0");
  EXPECT_EQ(Lost(measure, "x abc  def  yz"), "1 0 2 0");
  EXPECT_EQ(Lost(measure, "1234567890123"), "2 2 3 4");
  EXPECT_EQ(Lost(measure, "  abc"), "0 0 0 0");
  // Umlauts are one character each, a no-break space is a blank, and rules have no values to be cut.
  EXPECT_EQ(Lost(measure, "\xC3\xA4 \xC3\xA4\xC3\xA4\xC3\xA4\xC2\xA0 def"), "1 0 0 0");
  EXPECT_EQ(Lost(measure, "-------------"), "2 2 3 0");
  EXPECT_EQ(measure.Loss().Characters(), 18);
  EXPECT_EQ(measure.Loss().lFirstLine, 1);
}

TEST(CutMeasure, BarsThatEveryRowHasAreNoLossOfAllRows) {
  const std::vector<TidyPlace> places{{1, 3}, {7, 9}};
  clsCutMeasure measure(places);
  EXPECT_EQ(Lost(measure, "abc | def |"), "0 1 1 0");
  EXPECT_EQ(Lost(measure, "gh  | i   |"), "0 1 1 0");
  EXPECT_EQ(measure.Loss().Characters(), 0);
  EXPECT_EQ(measure.Loss().lSame, 4);
}

TEST(CutMeasure, TouchingAndOpenColumnsAreCutAtTheirEdgesAlone) {
  const std::vector<TidyPlace> places{{1, 3}, {4, 6}, {9, 0}};
  clsCutMeasure measure(places);
  EXPECT_EQ(Lost(measure, "abcdef  and all the rest"), "0 0 0 1");
  EXPECT_EQ(measure.Cuts(), std::vector<int32_t>{3});
  EXPECT_EQ(Lost(measure, "ab def-"), "0 1 0 1");
}

TEST(CutMeasure, WhereColumnsMayTouchOnlyTheirOuterEdgesCut) {
  const std::vector<TidyPlace> places{{1, 3}, {4, 6}};
  clsCutMeasure measure(places, clsCutMeasure::Touching::IsNone);
  EXPECT_EQ(Lost(measure, "abcdef"), "0 0 0 0");
  EXPECT_EQ(measure.Cuts(), std::vector<int32_t>{3}) << "who marks them hears of it";
  EXPECT_EQ(Lost(measure, "abcdefg"), "0 0 1 1");
  EXPECT_EQ(measure.Loss().lCuts, 1);
}

TEST(CutMeasure, RowsThatTheColumnsHoldCountForWhatIsTheSameInEveryRow) {
  const std::vector<TidyPlace> places{{1, 3}};
  clsCutMeasure measure(places);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Lost(measure, "abc |"), "0 0 1 0");
  measure.RowsWithin(1);
  EXPECT_FALSE(measure.Loss().Any());
  measure.RowsWithin(1);
  EXPECT_EQ(measure.Loss().lBehind, 3);
}

}  // namespace
}  // namespace quillon
