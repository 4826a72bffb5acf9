#include <gtest/gtest.h>

#include "clsSectionFile.h"
#include "clsTempFolder.h"
#include "modReportPreview.h"
#include "modSuggestRecipe.h"

namespace quillon {
namespace {

class SuggestRecipeTest : public testing::Test {
 protected:
  SuggestedRecipe Suggest(std::string_view sReport) {
    SuggestedRecipe recipe;
    Failure failure;
    EXPECT_TRUE(SuggestRecipe(folder.Write("r.txt", sReport), {false, nullptr}, 8, recipe, failure)) << failure.sText;
    return recipe;
  }
  /// What the recipe's own text gives for a table.
  ReportPreview Cut(const SuggestedRecipe& recipe, int32_t lTable) {
    PreviewRequest request{.sInput = folder.Path("r.txt"), .text = {false, nullptr}};
    request.lTable = lTable;
    request.bWholeTable = true;
    clsSectionFile file;
    file.OpenMemory(recipe.Text(), {});
    return PreviewByRecipe(request, file);
  }

  clsTempFolder folder;
};

using Cells = std::vector<std::string>;

constexpr std::string_view kPages =
    "STAFF LIST                 Page 1\n"
    "Name        Year     Pay\n"
    "Office:\n"
    "Ann Brown   2001  $ 1.00\n"
    "Bob Gray    2011 $ 20.00\n"
    "  part time\n"
    "Cid White   1999  $ 3.00\n"
    "STAFF LIST                 Page 2\n"
    "Name        Year     Pay\n"
    "Dan Green   2001  $ 4.00\n"
    "Eve Black   2004 $ 55.00\n"
    "Flo Amber   2005  $ 6.00\n"
    "STAFF LIST                 Page 3\n";

TEST_F(SuggestRecipeTest, MakesTheTablesOfThePagesOneWithoutTheirHeadings) {
  const SuggestedRecipe recipe = Suggest(kPages);
  ASSERT_EQ(recipe.tables.size(), 1U);
  const SuggestedTable& table = recipe.tables[0];
  ASSERT_EQ(table.sections.size(), 2U);
  EXPECT_EQ(table.sections[0].lFirstLine, 3) << "the caption belongs to the table, the heading doesn't";
  EXPECT_EQ(table.sections[0].lLastLine, 7);
  EXPECT_EQ(table.sections[1].lFirstLine, 10);
  EXPECT_EQ(table.sections[1].lLastLine, 12);
  EXPECT_EQ(table.lRows, 8);
  EXPECT_EQ(table.lColumns, 3) << "words by chance under each other and currency signs make no column";
  EXPECT_TRUE(recipe.leftOut.empty());
}

TEST_F(SuggestRecipeTest, ConvertsAsItStands) {
  const SuggestedRecipe recipe = Suggest(kPages);
  for (int32_t i = 0; i < 2; ++i) {
    const ReportPreview cut = Cut(recipe, i + 1);
    const SuggestedSection& section = recipe.tables.at(0).sections.at(static_cast<size_t>(i));
    EXPECT_EQ(cut.sFault, "");
    EXPECT_EQ(cut.lFirstLine, section.lFirstLine);
    EXPECT_EQ(cut.lLastLine, section.lLastLine);
    EXPECT_FALSE(cut.Loses());
  }
  EXPECT_EQ(Cut(recipe, 2).rows.at(1).cells.at(2).find("$ 55.00"), 0U);
}

TEST_F(SuggestRecipeTest, KeepsTablesWithOtherHeadingsApart) {
  const std::string sRows = "ann  2001   1.00\nbob  2011  20.00\ncid  1999   3.00\n";
  const SuggestedRecipe recipe =
      Suggest("Staff  Year   Pay\n" + sRows + "\nShips  Built  Tons\n" + sRows + "\nStaff  Year   Pay\n" +
              "dan  2001   1.00\neve  2011  20.00\nflo  1999  3.00\n");
  ASSERT_EQ(recipe.tables.size(), 2U);
  EXPECT_EQ(recipe.tables[0].sections.size(), 2U) << "what comes again under the same heading is one";
  EXPECT_EQ(recipe.tables[1].sections.at(0).lFirstLine, 7);
}

TEST_F(SuggestRecipeTest, TakesPageHeadingsAlongBeforeItDropsAPage) {
  std::string sReport;
  int nRow = 100000;
  for (int nPage = 0; nPage < 1100; ++nPage) {
    sReport += "LEDGER                       A VERY WIDE HEADING\nAccount      Sum\n-------      ---\n";
    for (int i = 0; i < 3; ++i, ++nRow)
      sReport += std::to_string(nRow) + "     " + std::to_string(nRow % 900 + 100) + "\n";
  }
  const SuggestedRecipe recipe = Suggest(sReport);
  ASSERT_EQ(recipe.tables.size(), 1U);
  EXPECT_TRUE(recipe.tables[0].bWithFurniture);
  ASSERT_EQ(recipe.tables[0].sections.size(), 1U);
  const ReportPreview cut = Cut(recipe, 1);
  EXPECT_EQ(cut.lFirstLine, 4);
  EXPECT_EQ(cut.lLastLine, 6600);
  EXPECT_EQ(cut.lLeftOut, 0);
}

TEST_F(SuggestRecipeTest, TellsOfARowThatIsShifted) {
  const SuggestedRecipe recipe = Suggest(
      "Staff     Year   Pay   Sum\nann       2001   1.00  5.00\nbob       2011   2.00  4.00\ncid       1999   3.00  "
      "3.00\n"
      "a longer name    2001   4.00  2.00\n"
      "dan       2001   1.00  5.00\neve       2011   2.00  4.00\nflo       1999   3.00  3.00\n");
  ASSERT_EQ(recipe.tables.size(), 1U);
  EXPECT_EQ(recipe.tables[0].sections.size(), 2U);
  ASSERT_EQ(recipe.leftOut.size(), 1U);
  EXPECT_EQ(recipe.leftOut[0].lFirstLine, 5);
  EXPECT_NE(recipe.Text().find("; Left out: line 5, as"), std::string::npos);
}

TEST_F(SuggestRecipeTest, FindsOneRowUnderItsHeading) {
  const SuggestedRecipe recipe = Suggest(
      "Invoice 17\n\nNo  Goods         Count   Price     Sum\n\n1   Paint 5 red      12   10.00  120.00\n\nTotal "
      "120.00\n");
  ASSERT_EQ(recipe.tables.size(), 1U);
  EXPECT_EQ(recipe.tables[0].lColumns, 5) << "words one blank apart are one field";
  EXPECT_EQ(Cut(recipe, 1).rows.at(0).cells.at(1).substr(0, 11), "Paint 5 red");
  EXPECT_EQ(Suggest("Invoice 17\n\n1   Paint 5 red      12   10.00  120.00\n\nTotal 120.00\n").tables.size(), 0U);
}

TEST_F(SuggestRecipeTest, TakesNoKeyTextThatARecipeCannotHold) {
  // The texts next to the table have "[", ";" or the name of a key in them, or stood further up before.
  const SuggestedRecipe recipe = Suggest(
      "Again\nParsing notes\n\nAlpha here\nwith [brackets]\na; b; c\nParsing of it\nAgain\n"
      "ab 100 1.50\ncd 200 2.50\nef 300 3.50\nAgain\n");
  ASSERT_EQ(recipe.tables.size(), 1U);
  EXPECT_EQ(recipe.tables[0].sections.at(0).sStartLine, "Alpha here");
  EXPECT_EQ(recipe.tables[0].sections.at(0).lStartOffset, 5);
  EXPECT_EQ(Cut(recipe, 1).lFirstLine, 9);
  EXPECT_EQ(Cut(recipe, 1).lRows, 3);
  // A recipe takes this text for a value that isn't there.
  const SuggestedRecipe missing = Suggest("Heading here\nab 100 1.50\ncd 200 2.50\nef 300 3.50\n-999999\n");
  ASSERT_EQ(missing.tables.size(), 1U);
  EXPECT_NE(missing.tables[0].sections.at(0).sEndLine, "-999999");
  EXPECT_EQ(Cut(missing, 1).lRows, 3);
}

TEST_F(SuggestRecipeTest, FindsNothingInProseAndBytes) {
  EXPECT_TRUE(Suggest("").tables.empty());
  EXPECT_TRUE(
      Suggest("In 1999 we had 3 of them.\nNow, in 2024, there are more than 1200.\nIt is late.\n").tables.empty());
  std::string sBytes;
  for (int i = 0; i < 20000; ++i) sBytes += static_cast<char>((i * 7919) >> 3);
  EXPECT_LE(Suggest(sBytes).tables.size(), 1U);
}

}  // namespace
}  // namespace quillon
