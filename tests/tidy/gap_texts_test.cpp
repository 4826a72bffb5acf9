#include "clsGapTexts.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

/// What stands in the gap behind the first column, one text a row; "" for none.
struct Gap {
  std::vector<std::string> rows;
  char cBefore = ' ', cBehind = ' ';
};

std::string Settled(const Gap& gap) {
  clsGapTexts texts;
  int64_t lLine = 10;
  for (const std::string& sText : gap.rows) {
    texts.Take(1, GapSide::Between, sText, static_cast<int64_t>(sText.size()), gap.cBefore, gap.cBehind, ++lLine);
    texts.RowEnds();
  }
  GapCharacters lost, same;
  texts.Settle(lost, same);
  EXPECT_EQ(lost.Sum(), lost.lBetween);
  return "lost " + std::to_string(lost.Sum()) + " from " + std::to_string(lost.lFirstLine) + ", same " +
         std::to_string(same.Sum()) + " from " + std::to_string(same.lFirstLine);
}

TEST(GapTexts, WhatEveryRowHasIsNoLoss) {
  const std::string sLong(81, '=');
  struct Case {
    const char* pWhat;
    Gap gap;
    const char* pWanted;
  };
  const Case cases[] = {
      {"a bar in each row", {{"|", "|", "|", "|"}}, "lost 0 from 0, same 4 from 11"},
      {"three quarters are enough", {{"", "|", "|", "|"}}, "lost 0 from 0, same 3 from 12"},
      {"less are not", {{"|", "|", ""}}, "lost 2 from 11, same 0 from 0"},
      {"another text in one row", {{"kg", "kg", "lb", "kg"}}, "lost 2 from 13, same 6 from 11"},
      {"all are different", {{"a", "b", "c"}}, "lost 3 from 11, same 0 from 0"},
      {"a stroke in the only row", {{"|"}}, "lost 0 from 0, same 1 from 11"},
      {"a word in the only row", {{"of"}}, "lost 2 from 11, same 0 from 0"},
      {"an umlaut in the only row", {{"\xC3\xA4"}}, "lost 2 from 11, same 0 from 0"},
      {"the side of an amount", {{"CR", "CR", "CR"}}, "lost 6 from 11, same 0 from 0"},
      {"a digit cut off", {{"7", "7", "7"}, '1'}, "lost 3 from 11, same 0 from 0"},
      {"a sign cut off", {{"-", "-", "-"}, '5'}, "lost 3 from 11, same 0 from 0"},
      {"a sign in front of a number", {{"$", "$", "$"}, ' ', '5'}, "lost 3 from 11, same 0 from 0"},
      {"a bar between values", {{"|", "|", "|"}, '1', 'a'}, "lost 0 from 0, same 3 from 11"},
      {"signs on both sides", {{"kg", "kg", "kg"}, ')', '('}, "lost 0 from 0, same 6 from 11"},
      {"too long for a label", {{sLong, sLong}}, "lost 162 from 11, same 0 from 0"},
      {"nothing at all", {{"", ""}}, "lost 0 from 0, same 0 from 0"},
  };
  for (const Case& c : cases) EXPECT_EQ(Settled(c.gap), c.pWanted) << c.pWhat;
}

TEST(GapTexts, GapsAndSidesAreCountedApart) {
  clsGapTexts texts;
  for (int64_t l = 1; l <= 4; ++l) {
    texts.Take(0, GapSide::InFront, "|", 1, ' ', ' ', l);
    texts.Take(1, GapSide::Between, l % 2 == 0 ? ":" : "", 1, ' ', ' ', l);
    texts.Take(2, GapSide::Between, l % 2 != 0 ? ":" : "", 1, ' ', ' ', l);
    texts.Take(3, GapSide::Behind, "x y", 2, ' ', ' ', l);
    texts.RowEnds();
  }
  GapCharacters lost, same;
  texts.Settle(lost, same);
  EXPECT_EQ(lost.lBetween, 4) << "half of the rows in each of two gaps";
  EXPECT_EQ(lost.Sum(), 4);
  EXPECT_EQ(lost.lFirstLine, 1);
  EXPECT_EQ(same.lInFront, 4);
  EXPECT_EQ(same.lBehind, 8);
}

TEST(GapTexts, MoreTextsThanAreKeptAreAllLost) {
  clsGapTexts texts;
  for (int64_t l = 1; l <= 1000; ++l) {
    const std::string sText = "n" + std::to_string(l);
    texts.Take(0, GapSide::Behind, sText, 2, ' ', ' ', l);
    texts.RowEnds();
  }
  GapCharacters lost, same;
  texts.Settle(lost, same);
  EXPECT_EQ(lost.lBehind, 2000);
  EXPECT_EQ(lost.lFirstLine, 1);
  EXPECT_EQ(same.Sum(), 0);
}

}  // namespace
}  // namespace quillon
