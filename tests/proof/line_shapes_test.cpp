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
