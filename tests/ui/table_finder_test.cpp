// Tables that were found, what a person chooses of them, and the recipe of that choice.

#include "clsTableFinder.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "clsTempFolder.h"
#include "modPayroll.h"
#include "modTidyKeys.h"

namespace quillon {
namespace {

// As they are listed: the one of more rows first.
constexpr size_t kStock = 0, kPay = 1;

class TableFinder : public ::testing::Test {
 protected:
  bool Find(const std::string& sReport) {
    PreviewRequest request;
    request.sInput = folder_.Write("report.txt", sReport);
    return finder_.Find(request, sFault_);
  }
  std::vector<TidyTable> Tables(const std::string& sRecipe) {
    std::vector<TidyTable> tables;
    TidyFault fault;
    EXPECT_TRUE(ReadTidyRecipe(sRecipe, tables, fault)) << fault.sText << "\n" << sRecipe;
    return tables;
  }
  long Ticked() const {
    return std::count_if(finder_.Tables().begin(), finder_.Tables().end(), [](const auto& t) { return t.bTicked; });
  }
  static std::string Stock() {
    std::string sText = "\fSTOCK ON HAND\n\nItem     Count\n";
    for (int i = 11; i < 31; ++i) sText += "bolt-" + std::to_string(i) + "   " + std::to_string(i * 17) + "\n";
    return sText;
  }

  clsTempFolder folder_;
  clsTableFinder finder_;
  std::string sFault_;
};

TEST_F(TableFinder, NothingThatStandsInColumnsIsToldWithTheReason) {
  EXPECT_FALSE(Find("Dear reader,\nthis letter has no table.\n"));
  EXPECT_EQ(sFault_, "No table was found: no lines of the report stand in columns.");
  EXPECT_TRUE(finder_.Tables().empty());
  EXPECT_FALSE(finder_.AnyTicked());
  ASSERT_TRUE(Find(Payroll()));
  PreviewRequest none;
  none.sInput = folder_.Path("none.txt");
  sFault_.clear();
  EXPECT_FALSE(finder_.Find(none, sFault_));
  EXPECT_FALSE(sFault_.empty());
  EXPECT_TRUE(finder_.Tables().empty()) << "nothing of the report before";
}

TEST_F(TableFinder, NamesGoIntoTheRecipeWhateverTheyHold) {
  ASSERT_TRUE(Find(Payroll() + Stock())) << sFault_;
  ASSERT_EQ(Ticked(), 2) << "what is doubtful stands behind, and is not";
  EXPECT_EQ(finder_.Tables()[kPay].lRows, 9);
  EXPECT_EQ(finder_.Tables()[kPay].lPages, 3);
  EXPECT_EQ(finder_.Tables()[kStock].lRows, 20);
  const std::string sName = "Net | pay; [x] ^";
  const size_t nLast = finder_.Tables()[kPay].columns.size() - 1;
  finder_.NameColumn(kPay, nLast, sName);
  finder_.NameTable(kPay, "Pay; May");
  finder_.NameTable(kStock, "Stock");
  EXPECT_EQ(finder_.Tables()[kPay].columns[nLast].sName, sName);
  const std::vector<TidyTable> tables = Tables(finder_.Recipe(sFault_));
  ASSERT_EQ(tables.size(), 2U) << sFault_;
  EXPECT_EQ(tables[kPay].row.ColumnNames().at(nLast), sName);
  EXPECT_EQ(tables[kPay].row.ColumnNames().size(), nLast + 1);
  EXPECT_EQ(tables[kPay].sSheet, "Pay; May");
  EXPECT_EQ(tables[kStock].sSheet, "Stock");
}

TEST_F(TableFinder, OnlyWhatIsTickedIsInTheRecipe) {
  ASSERT_TRUE(Find(Payroll() + Stock())) << sFault_;
  ASSERT_EQ(Ticked(), 2) << "what is doubtful stands behind, and is not";
  ASSERT_FALSE(finder_.Tables()[kPay].headings.empty());
  const size_t nHeadings = Tables(finder_.Recipe(sFault_)).at(kPay).headings.size();
  finder_.TickHeading(kPay, 0, false);
  EXPECT_EQ(Tables(finder_.Recipe(sFault_)).at(kPay).headings.size(), nHeadings - 1);
  finder_.TickHeading(kPay, 0, true);
  EXPECT_EQ(Tables(finder_.Recipe(sFault_)).at(kPay).headings.size(), nHeadings);
  finder_.Tick(kPay, false);
  EXPECT_TRUE(finder_.AnyTicked());
  std::vector<TidyTable> tables = Tables(finder_.Recipe(sFault_));
  ASSERT_EQ(tables.size(), 1U);
  EXPECT_EQ(tables[0].row.ColumnCount(), 2U);
  int32_t lNumber = 0;
  EXPECT_EQ(Tables(finder_.RecipeWith(kPay, lNumber)).size(), 2U) << "one more, to look at";
  EXPECT_EQ(lNumber, 2) << "its number among those of the recipe";
  EXPECT_EQ(Tables(finder_.RecipeWith(kStock, lNumber)).size(), 1U);
  EXPECT_EQ(lNumber, 1);
  EXPECT_FALSE(finder_.Tables()[kPay].bTicked) << "looking ticks nothing";
  finder_.Tick(kStock, false);
  EXPECT_FALSE(finder_.AnyTicked());
}

TEST_F(TableFinder, LinesThatLookLikeRowsAndAreInNoTableAreListed) {
  std::string sText = "No       Name    Amount\n";
  for (int i = 1; i <= 40; ++i) {
    sText += std::to_string(10000 + i) + "    Ann     1.50\n";
    if (i == 30) sText += "  77 88    99 11 22      33    44\n";
  }
  ASSERT_TRUE(Find(sText)) << sFault_;
  EXPECT_TRUE(finder_.LooksIncomplete());
  const ProofGroup leftOut = finder_.LeftOut();
  EXPECT_EQ(leftOut.sTitle, "Lines that look like rows and are in no table: 1");
  ASSERT_EQ(leftOut.entries.size(), 1U);
  EXPECT_EQ(leftOut.entries[0].sText, "1  (Line 32: 77 88    99 11 22      33    44)");
  EXPECT_EQ(leftOut.entries[0].lLine, 32);
}

TEST_F(TableFinder, AReportThatWentAwayIsToldWhenItIsReadAgain) {
  ASSERT_TRUE(Find(Payroll() + Stock())) << sFault_;
  std::filesystem::remove(folder_.Path("report.txt"));
  EXPECT_NE(finder_.Recipe(sFault_), "") << "nothing is to be counted anew";
  finder_.Tick(kStock, false);
  EXPECT_EQ(finder_.Recipe(sFault_), "");
  EXPECT_FALSE(sFault_.empty());
}

}  // namespace
}  // namespace quillon
