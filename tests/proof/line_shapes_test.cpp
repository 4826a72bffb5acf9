#include <gtest/gtest.h>

#include "clsLineShapes.h"
#include "clsRowProfile.h"
#include "modLineShape.h"

namespace quillon {
namespace {

TEST(LineShape, ShowsDigitsAndLettersByTheirPlaces) {
  EXPECT_EQ(LineShape("0012 Ann      1,234.50-"), "9999 AAA   9,999.99-");
  EXPECT_EQ(LineShape("Schr\xC3\xB6"
                      "dinger 7"),
            "AAAA 9");
  EXPECT_LE(LineShape(std::string(5000, '-')).size(), 60U);
}

TEST(LineShape, LinesThatDifferInTheirValuesAloneAreOfOneShape) {
  EXPECT_EQ(LineShapeKey("  12  Ann Baker   1,234.50"), LineShapeKey("1234  Bo Van Dyck       4.50"));
  EXPECT_NE(LineShapeKey("12  Ann"), LineShapeKey("12 Ann"));
  EXPECT_NE(LineShapeKey("12  Ann"), LineShapeKey("                12  Ann"));
}

TEST(LineShape, ARowHasFiguresApartAndMoreOfThemThanTexts) {
  struct Case {
    const char* pLine;
    bool bSeveral, bCounts;
  };
  const Case cases[] = {
      {"", false, false},
      {"Ann Baker   1,234.50   10.00", true, false},
      {"Ann   Baker   1,234.50   10.00", false, false},
      {"Ann 1,234.50 10.00", false, false},
      {"1,234.50-  (5.00)  7.00CR  $3", true, false},
      {"CR  DR  -  ---", false, false},
      {"(5  5)  x", false, false},
      {"1.5E+07  2.5D-03", true, false},
      {"In 1998, 12. and 13; were", false, false},
      {"Page: 1   of: 9", false, false},
      {"7 8 9 10 11", true, false},
      {"00/00/T/12/00/31/07", true, false},
      {"abc/1/d2/e3/f4/g5/h6", false, false},
      {"\xC3\x84rger   1   5", true, false},
      {"  1     2     3", true, true},
      {"1", false, false},
      {"1  2  50", true, false},
      {"1  2  3  4  99  100", true, true},
      {"Item   2023     2022", true, true},
      {"2023  2025", true, false},
      {"2023  2022  500", true, false},
      {"Name   12/31/23   2023", true, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(HasSeveralFigures(c.pLine), c.bSeveral) << c.pLine;
    EXPECT_EQ(CountsColumns(c.pLine), c.bCounts) << c.pLine;
  }
}

TEST(LineShape, KeysPartLinesThatAreNotAlike) {
  const std::string sKey = LineShapeKey("12  Ann Baker   4.50");
  for (const char* const pSame : {"1  A   (1,234.50)-",
                                  "12  Ann\xC2\xA0"
                                  "Baker Cid  $ 4.50",
                                  "9  \xC3\x84  12/31/24"}) {
    EXPECT_EQ(LineShapeKey(pSame), sKey) << pSame;
  }
  for (const char* const pOther : {"12  Ann Baker 4.50", "12 Ann Baker   4.50", "12  Ann  Baker   4.50",
                                   "12  Ann4   4.50", "12  ----   4.50", "12  Ann Baker   4.50  x", "12  Ann Baker"}) {
    EXPECT_NE(LineShapeKey(pOther), sKey) << pOther;
  }
  EXPECT_EQ(LineShapeKey(" \xC2\xA0 "), "");
  std::string sLong;
  for (int i = 0; i < 5000; ++i) sLong += "a  7  ";
  EXPECT_LT(LineShapeKey(sLong).size(), 300U);
}

TEST(LineShapes, ThoseThatLookLikeRowsComeFirstThenTheMostFrequent) {
  clsRowProfile rows({{"No", 1, 5, false, {}}, {"Name", 7, 16, false, {}}, {"Gross", 18, 27, true, {}}});
  for (int i = 0; i < 20; ++i) rows.Row("12345 Ann        1,234.50");
  clsLineShapes shapes;
  for (int i = 1; i <= 9; ++i) shapes.Add(i, "Page " + std::to_string(i));
  shapes.Add(10, "    9 Zoe            17.00");
  // Printed again word for word: a heading, whatever its columns hold.
  shapes.Add(11, "12345 Heading          2024");
  shapes.Add(12, "12345 Heading          2024");
  shapes.Add(13, "Total              1,234.50", 7);
  int64_t lOut = 0;
  const auto sorted = shapes.Sorted([&](std::string_view sLine) { return rows.LooksLikeRow(sLine); },
                                    [](size_t nClass) { return nClass == 7; }, lOut);
  EXPECT_EQ(lOut, 1);
  ASSERT_EQ(sorted.size(), 3U);
  EXPECT_TRUE(sorted[0].bLikeRow);
  EXPECT_EQ(sorted[0].lFirstLine, 10);
  EXPECT_EQ(sorted[0].sShape, "   9 AAA   99.99");
  EXPECT_FALSE(sorted[1].bLikeRow);
  EXPECT_EQ(sorted[1].lLines, 9);
  EXPECT_FALSE(sorted[2].bLikeRow);
}

TEST(LineShapes, MoreShapesThanAreKeptAreCounted) {
  clsLineShapes shapes;
  int64_t lLine = 0;
  std::string sLine;
  for (size_t i = 0; i < clsLineShapes::kMost + 50; ++i) {
    sLine.clear();
    for (size_t n = i + 1; n > 0; n /= 2) sLine += n % 2 == 0 ? "a  " : "7  ";
    shapes.Add(++lLine, sLine);
  }
  int64_t lOut = 0;
  int64_t lLines = 0;
  const auto sorted = shapes.Sorted([](std::string_view) { return false; }, [](size_t) { return false; }, lOut);
  for (const ShapeOfLines& shape : sorted) lLines += shape.lLines;
  EXPECT_EQ(sorted.size(), clsLineShapes::kMost);
  EXPECT_EQ(lLines, lLine);
}

}  // namespace
}  // namespace quillon
