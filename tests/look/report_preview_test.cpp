#include <gtest/gtest.h>

#include "clsTempFolder.h"
#include "modFiles.h"
#include "modReportPreview.h"
#include "modSettings.h"

namespace quillon {
namespace {

class ReportPreviewTest : public testing::Test {
 protected:
  ~ReportPreviewTest() override { ResetFoundationGlobals(); }

  /// A report of the lines, looked at through one table.
  ReportPreview Look(std::string_view sReport, std::string_view sStart, std::string_view sEnd,
                     std::string_view sParsing) {
    request.sInput = folder.Write("r.txt", sReport);
    const std::string sRecipe = "[Table 1]\nReadStartLine=" + std::string(sStart) + "\nReadStartLineOffset=1\n" +
                                "ReadEndLine=" + std::string(sEnd) +
                                "\nReadEndLineOffset=-1\nParsing=" + std::string(sParsing) + "\nWriteColumn=Z\n";
    clsSectionFile recipe;
    recipe.OpenMemory(sRecipe, {});
    return PreviewByRecipe(request, recipe);
  }

  clsTempFolder folder;
  PreviewRequest request{.sInput = {}, .text = {false, nullptr}};
};

using Cells = std::vector<std::string>;

TEST_F(ReportPreviewTest, ShowsRowsCellsAndTheRulerOfATable) {
  const ReportPreview preview = Look("Head\nSTOCK\nBolts   12\nNuts\t 7\nEND\n", "STOCK", "END", "=");
  EXPECT_EQ(preview.sFault, "");
  EXPECT_EQ(preview.sRuler, "------- -- ");
  ASSERT_EQ(preview.rows.size(), 2U);
  EXPECT_EQ(preview.rows[0].lLine, 3);
  EXPECT_EQ(preview.rows[0].cells, (Cells{"Bolts   ", "12 "}));
  EXPECT_EQ(preview.rows[1].sText, "Nuts     7");
  ASSERT_EQ(preview.columns.size(), 2U);
  EXPECT_EQ(preview.columns[1].sLetters, "AA");
  EXPECT_EQ(preview.lLastLine, 4);
  EXPECT_FALSE(preview.Loses());
}

TEST_F(ReportPreviewTest, MarksWhatTheCutLoses) {
  // Row 1: "Bolts" runs over the boundary at 4. Row 2: a gap at 5 holds a character. Row 3: 3 characters behind.
  // Row 4 is a rule and row 5 just fits.
  const ReportPreview preview =
      Look("TOP\nBoltsX12\nNut  . 12\nNut    12 abc\n---------\nNut   123\nEND\n", "TOP", "END", "---    ---");
  ASSERT_EQ(preview.rows.size(), 5U);
  EXPECT_EQ(preview.rows[0].cuts, (std::vector<int32_t>{4, 7}));
  EXPECT_EQ(LossMarks(preview.rows[0], preview.columns), "   ^!!^");
  EXPECT_EQ(preview.rows[1].lLeftOut, 1);
  EXPECT_EQ(preview.rows[1].lBehind, 0);
  EXPECT_EQ(preview.rows[2].lBehind, 3);
  EXPECT_EQ(LossMarks(preview.rows[2], preview.columns), "          !!!");
  EXPECT_TRUE(preview.rows[3].cuts.empty());
  EXPECT_EQ(preview.lCuts, 3) << "the value of the last row begins before its column";
  EXPECT_EQ(preview.lFirstLossLine, 2);
}

TEST_F(ReportPreviewTest, CountsCharactersNotBytes) {
  const ReportPreview preview = Look("TOP\nKöln 12\nEND\n", "TOP", "END", "---- --");
  ASSERT_EQ(preview.rows.size(), 1U);
  EXPECT_EQ(preview.rows[0].cells, (Cells{"Köln ", "12"}));
  EXPECT_FALSE(preview.Loses());
}

TEST_F(ReportPreviewTest, SaysWhyThereAreNoRows) {
  struct Case {
    const char *sStart, *sEnd, *sParsing, *sFault;
  };
  for (const Case& c : {Case{"NONE", "END", "--", "ReadStartLine is not in the report"},
                        Case{"TOP", "NONE", "--", "ReadEndLine is not in the report"},
                        Case{"END", "TOP", "--", "The table would end before it starts"},
                        Case{"TOP", "END", "", "Parsing gives no columns. Line 6: the key has no value: Parsing="},
                        Case{"", "END", "--", "Invalid ReadStartLine! Line 2: the key has no value: ReadStartLine="}}) {
    const ReportPreview preview = Look("TOP\nab\ncd\nEND\n", c.sStart, c.sEnd, c.sParsing);
    EXPECT_EQ(preview.sFault, c.sFault);
    EXPECT_TRUE(preview.rows.empty());
  }
  request.lTable = 2;
  EXPECT_EQ(Look("TOP\nEND\n", "TOP", "END", "--").sFault, "The recipe has no table of this number");
}

TEST_F(ReportPreviewTest, ReadsNoFurtherThanWhatItShows) {
  std::string sReport = "TOP\n";
  for (int i = 0; i < 1000; ++i) sReport += "ab cd\n";
  sReport += "xyabcd\nEND\n";
  request.lRows = 3;
  ReportPreview preview = Look(sReport, "TOP", "END", "-- --");
  EXPECT_EQ(preview.rows.size(), 3U);
  EXPECT_TRUE(preview.bMore);
  EXPECT_EQ(preview.end.place, KeyPlace::FurtherDown);
  EXPECT_EQ(preview.lLastLine, 0);
  request.bWholeTable = true;
  preview = Look(sReport, "TOP", "END", "-- --");
  EXPECT_EQ(preview.rows.size(), 3U);
  EXPECT_EQ(preview.lRows, 1001);
  EXPECT_EQ(preview.lLastLine, 1002);
  EXPECT_EQ(preview.lFirstLossLine, 1002);
}

TEST_F(ReportPreviewTest, SaysThatAColumnHasNoPlaceOnTheSheet) {
  const ReportPreview preview = Look("TOP\nab\nEND\n", "TOP", "END", std::string(1400, '-').replace(1, 1, " "));
  EXPECT_EQ(preview.sFault, "") << "Z and AA";
  std::string sRuler;
  for (int i = 0; i < 700; ++i) sRuler += "- ";
  EXPECT_EQ(Look("TOP\nab\nEND\n", "TOP", "END", sRuler).sFault, "Write Column must be (A-Z)!");
}

TEST_F(ReportPreviewTest, StopsWhereTheLookIsBounded) {
  std::string sReport = "TOP\n";
  for (int i = 0; i < 1000; ++i) sReport += "ab cd\n";
  sReport += "END\n";
  request.text.lMostBytes = 100;  // in the middle of a row
  request.bFindEnd = true;
  ReportPreview preview = Look(sReport, "TOP", "END", "-- --");
  EXPECT_EQ(preview.sFault, "");
  EXPECT_EQ(preview.end.place, KeyPlace::NotReached);
  EXPECT_EQ(preview.rows.size(), 16U);
  EXPECT_TRUE(preview.bMore);
  EXPECT_EQ(preview.rows.back().cells, (Cells{"ab ", "cd"}));
  EXPECT_EQ(Look(sReport, "END", "END", "-- --").start.place, KeyPlace::NotReached);
  EXPECT_EQ(Look(sReport, "TOP", "END", "=").sFault,
            "The table's end is not in the part of the report that was searched");
  request.text.lMostBytes = int64_t{1} << 20;
  preview = Look(sReport, "TOP", "END", "-- --");
  EXPECT_EQ(preview.lLastLine, 1001) << "found far behind the rows that are kept";
  EXPECT_EQ(preview.rows.size(), 20U);
  const ReportStretches stretches = ReadStretches(request, {{1, 2}, {1002, 1009}}, 4);
  ASSERT_EQ(stretches.rows.size(), 3U);
  EXPECT_EQ(stretches.rows[1].sText, "ab c");
  EXPECT_EQ(stretches.rows[2].lLine, 1002);
  EXPECT_FALSE(stretches.bMore);
}

TEST_F(ReportPreviewTest, TellsNumbersFromWhatOnlyLooksLikeThem) {
  request.bWholeTable = true;
  const ReportPreview preview =
      Look("TOP\n  12\n1.2.3\n9CR\nred\n1.547D+02\n10.101.1.27\n0010.4077.4169\n5D10\n1.234.567,00\n\nEND\n", "TOP",
           "END", "--------------");
  const CellCensus& census = preview.columns.at(0).census;
  EXPECT_EQ(census.lNumbers, 1);
  EXPECT_EQ(census.lTexts, 8);
  EXPECT_EQ(census.lLikeNumbers, 4) << "an address or a code doesn't";
  EXPECT_EQ(census.sLikeNumber, "1.2.3");
  EXPECT_EQ(census.lLikeNumberLine, 3);
  EXPECT_EQ(census.lEmpty, 1);
}

TEST_F(ReportPreviewTest, ShowsTheCutOfAProfile) {
  gsDataFolder = folder.Path();
  folder.Write(
      "Profiles/P.txt",
      "1\t4\t[48] 0\tRight\tNo\t2\t\t\n2\t2\t[32] Space\tLeft\tYes\t\t\t\n3\t5\t[32] Space\tLeft\tNo\t1\t\t\n");
  request.sInput = folder.Write("r.txt", "0012xxNuts  \n0100yyBoltsand\n");
  const ReportPreview preview = PreviewByProfile(request, "P");
  EXPECT_EQ(preview.sFault, "");
  EXPECT_EQ(preview.sRuler, "|---|.|----");
  ASSERT_EQ(preview.rows.size(), 2U);
  EXPECT_EQ(preview.rows[0].cells, (Cells{"Nuts", "12"}));
  EXPECT_EQ(preview.rows[1].lBehind, 3);
  EXPECT_EQ(preview.columns[1].sLetters, "");
  folder.Write("Profiles/P.txt", "1\t4\n");
  EXPECT_NE(PreviewByProfile(request, "P").sFault, "");
}

}  // namespace
}  // namespace quillon
