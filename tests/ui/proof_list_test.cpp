// The proof as lists and sentences of the window.

#include "modProofList.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

ShapeOfLines Shape(int64_t lLine, bool bLikeRow) {
  ShapeOfLines shape;
  shape.sShape = "99\x1B AAA";
  shape.sFirst = "   12\x07 Ann " + std::string(500, 'x');
  shape.lLines = 2;
  shape.lFirstLine = lLine;
  shape.bLikeRow = bLikeRow;
  return shape;
}

TableTotal Total(int64_t lLine, TotalVerdict verdict) {
  return {1, "Gross", {lLine, 2, verdict, "5.00", "4.00"}};
}

std::string Told(const ProofGroup& group) {
  std::string sText = group.sTitle + (group.bWarning ? "!" : "");
  for (const ProofEntry& entry : group.entries) {
    sText += "\n" + entry.sText + " @" + std::to_string(entry.lLine) + (entry.bWarning ? "!" : "");
  }
  return sText;
}

TEST(ProofList, GroupsWithoutAnEntryAreLeftOut) {
  EXPECT_TRUE(ListProof({}).empty());
  ReportProof proof;
  proof.lines[static_cast<size_t>(TidyLineKind::Blank)] = 9;
  EXPECT_TRUE(ListProof(proof).empty()) << "blank lines are of no kind";
  proof.lines[static_cast<size_t>(TidyLineKind::LeftOut)] = 1;
  proof.lines[static_cast<size_t>(TidyLineKind::Row)] = 12;
  const std::vector<ProofGroup> groups = ListProof(proof);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_FALSE(groups[0].bWarning);
  EXPECT_EQ(Told(groups[0]), "Lines by kind\nRow lines: 12 @0\nLeft out: 1 @0");
  proof.pages = {.lPages = 1, .lLine = 40, .lNumber = 7, .lBefore = 5};
  EXPECT_EQ(Told(ListProof(proof)[0]),
            "Lines by kind!\nRow lines: 12 @0\nLeft out: 1 @0\nPages that don't follow the page before: 1 (5, 7) @40!");
  EXPECT_TRUE(IsProofBad(proof));
}

TEST(ProofList, TotalsThatDisagreeComeFirstHoweverManyAgree) {
  ReportProof proof;
  proof.lTotalsAgree = 2;
  proof.lTotalsLastDigit = proof.lTotalsDisagree = 1;
  using enum TotalVerdict;
  proof.totals = {Total(3, Agrees), Total(4, LastDigit), Total(5, Agrees), Total(6, Disagrees)};
  EXPECT_EQ(Told(ListProof(proof).at(0)),
            "Printed totals!\n2  agree @0\n1  agree but for the last digit @0\n1  disagree @0!\n"
            "Line 6, Gross: printed 5.00, the rows give 4.00 @6!\n"
            "Line 4, Gross: printed 5.00, the rows give 4.00 (the last digit) @4\n"
            "Line 3, Gross: printed 5.00 @3\nLine 5, Gross: printed 5.00 @5");
  proof.totals.insert(proof.totals.begin(), 20000, Total(2, Agrees));
  const ProofGroup group = ListProof(proof).at(0);
  EXPECT_LE(group.entries.size(), 500U);
  EXPECT_EQ(group.entries[3].lLine, 6);
}

TEST(ProofList, LinesInNoTableAreShownByTheirBeginningsAndNoOrdersToAScreen) {
  ReportProof proof;
  proof.lLikeRows = 2;
  proof.shapes = {Shape(7, true), Shape(4, false)};
  ProofGroup group = ListProof(proof).at(0);
  ASSERT_EQ(group.entries.size(), 2U);
  EXPECT_TRUE(group.bWarning);
  EXPECT_EQ(group.entries[0].lLine, 7);
  EXPECT_TRUE(group.entries[0].bWarning);
  EXPECT_EQ(group.entries[0].sText.substr(0, 46), "Looks like a row: 2  99? AAA  (Line 7: 12? Ann");
  EXPECT_FALSE(group.entries[1].bWarning);
  EXPECT_EQ(group.entries[1].sText.substr(0, 28), "2  99? AAA  (Line 4: 12? Ann");
  EXPECT_LT(group.entries[1].sText.size(), 200U);
  proof.shapes.insert(proof.shapes.end(), 5000, Shape(9, false));
  group = ListProof(proof).at(0);
  EXPECT_LE(group.entries.size(), 500U);
  EXPECT_EQ(group.entries[0].lLine, 7);
}

TEST(ProofList, AGroupWarnsIfOneOfItsEntriesDoes) {
  struct Case {
    ReportProof proof;
    const char *pList, *pSentence;
    bool bBad;
  };
  std::vector<Case> cases(3);
  cases[0] = {{}, "What the columns cut or leave!\nValues cut: 3 @8!", "Values cut: 3", true};
  cases[0].proof.loss.lCuts = 3;
  cases[0].proof.loss.lFirstLine = 8;
  cases[1] = {{}, "What the columns cut or leave!\nWords divided by columns that touch: 2 @9!", "", false};
  cases[1].proof.lDivided = 2;
  cases[1].proof.lDividedLine = 9;
  cases[2] = {{}, "What the columns cut or leave!\nCharacters behind the last column: 5 @4!", "", true};
  cases[2].proof.loss.lBehind = 5;
  cases[2].proof.loss.lFirstLine = 4;
  for (const Case& c : cases) {
    EXPECT_EQ(Told(ListProof(c.proof).at(0)), c.pList);
    EXPECT_EQ(LossSentence(c.proof), c.pSentence);
    EXPECT_EQ(IsProofBad(c.proof), c.bBad) << c.pList;
  }
}

TEST(ProofList, SentencesCountOneAndMany) {
  struct Case {
    int64_t lAgree, lLastDigit, lDisagree;
    const char* pWanted;
  };
  for (const Case& c :
       {Case{0, 0, 0, ""}, Case{1, 0, 0, "1 total agrees"}, Case{0, 1, 1, "1 total agrees, 1 total disagrees"},
        Case{3, 1, 2, "4 totals agree, 2 totals disagree"}, Case{0, 0, 1, "1 total disagrees"}}) {
    ReportProof proof;
    proof.lTotalsAgree = c.lAgree;
    proof.lTotalsLastDigit = c.lLastDigit;
    proof.lTotalsDisagree = c.lDisagree;
    EXPECT_EQ(ProofSentence(proof), c.pWanted);
    EXPECT_EQ(IsProofBad(proof), c.lDisagree > 0);
  }
}

}  // namespace
}  // namespace quillon
