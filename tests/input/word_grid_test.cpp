#include "clsWordGrid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace quillon {
namespace {

using Page = std::vector<PlacedWord>;

constexpr double kWidth = 5, kHeight = 10;

/// A word of typewriter letters at a column and line of a page whose corner is at 20, 30.
PlacedWord At(double dColumn, double dLine, const std::string& sText, size_t nChars = 0) {
  const double dLeft = 20 + dColumn * kWidth;
  const double dTop = 30 + dLine * kHeight;
  const auto dChars = static_cast<double>(nChars > 0 ? nChars : sText.size());
  return {dLeft, dTop, dLeft + dChars * kWidth, dTop + 8, sText};
}

std::string Placed(std::vector<Page> pages, clsWordGrid& grid) {
  for (const Page& page : pages) grid.Measure(page);
  grid.EndMeasure();
  std::string sOut;
  for (Page& page : pages) grid.Place(page, sOut);
  return sOut;
}

/// The pages of a list that comes in blocks of so many bytes, a word a line: "text left top right bottom".
std::string Listed(std::string_view sList, size_t nBlock) {
  clsWordList list;
  std::string sAll;
  for (size_t n = 0; n < sList.size(); n += nBlock) {
    list.Take(sList.substr(n, nBlock), [&](Page& words) {
      for (const PlacedWord& w : words) {
        sAll += w.sText;
        for (const double d : {w.dLeft, w.dTop, w.dRight, w.dBottom}) sAll += " " + std::to_string(std::lround(d));
        sAll += "\n";
      }
      sAll += "--\n";
    });
  }
  return sAll;
}

TEST(WordList, GivesTheSamePagesHoweverTheListComes) {
  const std::string sList =
      "<doc>\n<page width=\"612\" height=\"792\">\n"
      "    <word xMin=\"10.2\" yMin=\"20\" xMax=\"30\" yMax=\"28.9\">R&amp;D</word>\n"
      "    <word xMin=\"40\" yMin=\"20\" xMax=\"70\" yMax=\"29\">&lt;\"&quot;&#39;&gt;&amp;lt;</word>\n"
      "    <word xMin=\"80\" yMin=\"20\" xMax=\"90\" yMax=\"29\">\xE2\x88\x92"
      "5\xC2\xAD\xC3\x84\xC2\xA0\xE2\x80\x99x</word>\n"
      "</page>\n<page>\n</page>\n<page>\n"
      "<word xMin=\"1e999\" yMin=\"nan\" xMax=\"-inf\" yMax=\"-\">far</word>\n"
      "<word xMin=\"9e8\" yMin=\"-9e8\" xMax=\"x\" yMax=\"1\">farther</word>\n"
      "<word xMin=\"1\" yMin=\"2\" xMax=\"3\" yMax=\"4\"></word>\n"
      "<word xMin=\"1\" yMin=\"2\" xMax=\"3\" yMax=\"4\">torn\n"
      "</page>\n<page>\n<word xMin=\"1\" yMin=\"1\" xMax=\"2\" yMax=\"2\">of no page</word>\n";
  const std::string sWanted =
      "R&D 10 20 30 29\n<\"\"'>&lt; 40 20 70 29\n-5-\xC3\x84 'x 80 20 90 29\n--\n--\n"
      "far 0 0 0 0\nfarther 1000000 -1000000 0 1\n--\n";
  for (const size_t nBlock : {size_t{1}, size_t{2}, size_t{7}, size_t{64}, sList.size()}) {
    EXPECT_EQ(Listed(sList, nBlock), sWanted) << nBlock;
  }
}

TEST(WordGrid, ColumnsStandAtTheSamePlaceOnEachPage) {
  clsWordGrid grid;
  const std::string sText = Placed({{At(4, 1, "No"), At(10, 1, "Gross"), At(4, 2, "17"), At(12, 2, "1.5")},
                                    {},
                                    {At(12, 3, "2.5"), At(0, 1, "TOTAL")}},
                                   grid);
  EXPECT_EQ(sText, "    No    Gross\n    17      1.5\n\f\fTOTAL\n\n            2.5\n");
  EXPECT_EQ(grid.Pages(), 3);
  EXPECT_EQ(grid.EmptyPages(), 1);
  EXPECT_EQ(grid.Words(), 6);
  EXPECT_EQ(grid.MovedWords(), 0);
}

TEST(WordGrid, TheOrderOfTheListDoesNotMatter) {
  Page page;
  for (int nLine = 0; nLine < 4; ++nLine) {
    for (int nColumn = 0; nColumn < 3; ++nColumn) {
      page.push_back(At(nColumn * 9, nLine, std::to_string(1000 + nLine * 10 + nColumn)));
    }
  }
  clsWordGrid straight;
  const std::string sWanted = Placed({page}, straight);
  EXPECT_EQ(sWanted.substr(0, 23), "1000     1001     1002\n");
  std::reverse(page.begin(), page.end());
  clsWordGrid turned;
  EXPECT_EQ(Placed({page}, turned), sWanted);
}

TEST(WordGrid, LettersOfOtherSizesDoNotWidenTheGrid) {
  PlacedWord title = At(0, 0, "ACME");
  title.dRight = title.dLeft + 4 * 14;
  title.dTop -= 6;
  title.dBottom += 6;
  PlacedWord wide = At(8, 2, "22222222");
  wide.dRight += 0.3;  // the next to nothing by which fonts round
  clsWordGrid grid;
  EXPECT_EQ(Placed({{title, At(0, 1, "aaaaaaaa"), At(20, 1, "bbbbbbbb"), wide, At(20, 2, "33333333")}}, grid),
            "ACME\naaaaaaaa            bbbbbbbb\n        22222222    33333333\n");
}

TEST(WordGrid, TurnedWordsAreCountedAndLeftOut) {
  PlacedWord turned = At(2, 0, "DRAFT");
  turned.dRight = turned.dLeft + 8;
  turned.dBottom = turned.dTop + 30;
  turned.dLeft -= 15;
  turned.dRight -= 15;
  // Of one or two letters a box can't tell.
  PlacedWord narrow = At(6, 1, "Il");
  narrow.dRight = narrow.dLeft + 4;
  clsWordGrid grid;
  EXPECT_EQ(Placed({{turned, At(0, 0, "row 12345"), narrow}}, grid), "row 12345\n      Il\n");
  EXPECT_EQ(grid.TurnedWords(), 1);
  EXPECT_EQ(grid.Words(), 3);
}

TEST(WordGrid, WordsNeverRunIntoEachOther) {
  clsWordGrid grid;
  // Next to each other by less than a column, over each other, and letters of several bytes, which are one place each.
  EXPECT_EQ(Placed({{At(0, 0, "abcd"), At(4.3, 0, "efgh"), At(6, 0, "ij"), At(20, 0, "end")},
                    {At(0, 0, "\xC3\x84\xC3\x96\xC3\x9C", 3), At(4, 0, "next")}},
                   grid),
            "abcd efgh ij        end\n\f\xC3\x84\xC3\x96\xC3\x9C next\n");
  EXPECT_EQ(grid.MovedWords(), 2);
}

TEST(WordGrid, PiecesOfAWordAreOneAndBoldPassesVanish) {
  clsWordGrid grid;
  // "TOTAL" drawn letter by letter and each twice, a number in two pieces, a word with its shadow, and a number over
  // another one, which is none.
  Page page{At(8, 0, "1,2"),      At(11.1, 0, "34.50"), At(20, 0, "Net"),
            At(20.1, 0.1, "Net"), At(30, 0, "17"),      At(30, 0, "18")};
  for (const double dShift : {0.0, 0.1}) {
    for (size_t i = 0; i < 5; ++i) page.push_back(At(static_cast<double>(i) + dShift, 0, std::string(1, "TOTAL"[i])));
  }
  EXPECT_EQ(Placed({page}, grid), "TOTAL   1,234.50    Net       17 18\n");
  EXPECT_EQ(grid.DoubledWords(), 6);
  EXPECT_EQ(grid.MovedWords(), 1);
}

TEST(WordGrid, APageThatWasMadeUpTakesNoMoreThanAPrintedOne) {
  clsWordGrid grid;
  const std::string sText = Placed(
      {{At(0, 0, "abcdefgh"), At(0, 1, "abcdefgh"), {1e6, 1e6, 1e6, 1e6, "far"}, {-1e6, 0, -1e6, 0, "near"}}}, grid);
  EXPECT_LT(sText.size(), 20000U);
  for (const char* const pWord : {"abcdefgh", "far", "near"}) EXPECT_NE(sText.find(pWord), std::string::npos) << pWord;
}

}  // namespace
}  // namespace quillon
