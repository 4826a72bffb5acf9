#include <gtest/gtest.h>

#include "modProofSummary.h"
#include "modProofText.h"
#include "modTidyKeys.h"

namespace quillon {
namespace {

ReportProof Whole() {
  ReportProof proof;
  proof.lines[static_cast<size_t>(TidyLineKind::Row)] = 12;
  proof.lines[static_cast<size_t>(TidyLineKind::Blank)] = 3;
  proof.lTotalsAgree = 2;
  return proof;
}

ShapeOfLines Shape(TidyLineKind kind, bool bLikeRow, bool bFigures, bool bMeant) {
  ShapeOfLines shape;
  shape.sShape = "99 AAA";
  shape.lLines = 2;
  shape.lFirstLine = 7;
  shape.kind = kind;
  shape.bLikeRow = bLikeRow;
  shape.bFigures = bFigures;
  shape.bMeant = bMeant;
  return shape;
}

TEST(ProofText, NothingIsLostIsSaidOnlyIfNothingSpeaksAgainstIt) {
  EXPECT_EQ(VerdictText(Whole(), true, true), "Nothing is lost.");
  EXPECT_EQ(VerdictText(Whole(), true, false), "Not all values are what their columns say.");
  EXPECT_EQ(VerdictText(Whole(), false, true), "Something is missing or lost.");
  ReportProof doubtful = Whole();
  doubtful.lFigureLines = 1;
  doubtful.lFirstFigures = 4;
  EXPECT_EQ(VerdictText(doubtful, true, true),
            "Something may be missing: 1 line of figures in no table (first on line 4).");
  doubtful.pages = {2, 204, 5, 2};
  EXPECT_EQ(VerdictText(doubtful, true, true),
            "Something may be missing: 1 line of figures in no table (first on line 4), 2 pages that don't follow the "
            "one before (line 204: page 5 behind page 2).");
  doubtful.lTotalsDisagree = 1;
  EXPECT_EQ(VerdictText(doubtful, true, true), "Not all printed totals agree with the rows.");
  doubtful.lLikeRows = 2;
  EXPECT_EQ(VerdictText(doubtful, true, true), "Something is missing or lost: 2 lines that look like rows.");
}

TEST(ProofText, SumsAreWrittenAsTheTotalBesideThem) {
  const auto text = [](const std::string& sPrinted, const std::string& sSummed) {
    return SummedText({1, 0, TotalVerdict::Disagrees, sPrinted, sSummed});
  };
  EXPECT_EQ(text("5,140.00", "-1234100.00"), "-1,234,100.00");
  EXPECT_EQ(text("(5.140,00)", "4100.00"), "4.100,00");
  EXPECT_EQ(text("140.00CR", "4100.00"), "4100.00");
  EXPECT_EQ(text("12,345", "999"), "999");
  EXPECT_EQ(text("12,345", "9999"), "9,999");
}

TEST(ProofSummary, ShowsKindsAndThePlacesThatNeedALook) {
  ProofSummary summary = SummaryOf(Whole(), true, true);
  EXPECT_EQ(summary.mood, ProofMood::Whole);
  ASSERT_EQ(summary.kinds.size(), 1U) << "blank lines are of no kind";
  EXPECT_EQ(summary.kinds[0].second, 12);
  EXPECT_EQ(summary.sTotals, "2 printed totals agree");
  EXPECT_TRUE(summary.places.empty());

  ReportProof proof = Whole();
  proof.lLikeRows = proof.lFigureLines = 2;
  proof.lTotalsDisagree = 1;
  proof.shapes = {Shape(TidyLineKind::LeftOut, true, false, false), Shape(TidyLineKind::Outside, false, true, false),
                  Shape(TidyLineKind::Outside, false, false, false)};
  proof.totals.push_back({1, "Gross", {20, 2, TotalVerdict::Disagrees, "5.00", "4.00"}});
  proof.pages = {1, 14, 3, 1};
  summary = SummaryOf(proof, true, true);
  EXPECT_EQ(summary.mood, ProofMood::Missing);
  ASSERT_EQ(summary.places.size(), 4U);
  EXPECT_TRUE(summary.places[0].bMissing);
  EXPECT_FALSE(summary.places[1].bMissing);
  EXPECT_EQ(summary.places[2].lLine, 14) << "a page that doesn't follow";
  EXPECT_EQ(summary.places[3].sText, "line 20, column Gross: printed 5.00, rows 4.00");
}

TEST(ProofSummary, WordsOfTotalsMakeAKeyThatARecipeCanHold) {
  ReportProof proof = Whole();
  proof.words = {{1, "DEPT TOTAL"}, {2, "ALL"}, {1, "SUM [A|B;"}};
  EXPECT_EQ(TotalsKey(proof, 1), "DEPT TOTAL|SUM \\x5BA\\x7CB\\x3B");
  EXPECT_EQ(TotalsKey(proof, 3), "");
}

TEST(ProofSummary, ARecipeReadsTheWordsOfTotalsAsTheyWerePrinted) {
  const std::vector<std::string> words{"TOTAL [net]; all|each", "a = b", "\"SUM\"", "  TOTAL ", "Summe \xC3\x84"};
  ReportProof proof;
  for (const std::string& sWord : words) proof.words.emplace_back(1, sWord);
  std::vector<TidyTable> tables;
  TidyFault fault;
  ASSERT_TRUE(
      ReadTidyRecipe("[Table 1]\nNeeds=A digits\nPlaces=1-4\nTotals=" + TotalsKey(proof, 1) + "\n", tables, fault))
      << fault.sText;
  EXPECT_EQ(tables.at(0).totals, words);
}

TEST(ProofSummary, ShowsNoMoreThanAPanelHolds) {
  ReportProof proof = Whole();
  proof.shapes.assign(5000, Shape(TidyLineKind::LeftOut, true, false, false));
  proof.lLikeRows = 10000;
  proof.lTotalsDisagree = 5000;
  proof.totals.assign(5000, {1, "Gross", {20, 2, TotalVerdict::Disagrees, "5.00", "4.00"}});
  const ProofSummary summary = SummaryOf(proof, true, true);
  EXPECT_LT(summary.places.size(), 1000U);
  EXPECT_EQ(summary.places.front().lLine, 7);
  EXPECT_EQ(summary.places.back().lLine, 20) << "totals are told beside the lines";
}

}  // namespace
}  // namespace quillon
