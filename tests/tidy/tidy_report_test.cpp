#include <gtest/gtest.h>

#include "clsTidyTrial.h"

namespace quillon {
namespace {

TEST(TidyReport, TellsRowsFromOtherLinesAndCarriesHeadings) {
  const clsTidyTrial trial(
      "[Table 1]\nNeeds=A digits, B letters, C number\nPlaces=3-6 8-15 16-24\nNames=No|Name|Gross\nTypes=A text, C "
      "number\nTotals=TOTAL\nDrop=NOTE\n"
      "[Heading 1.1]\nText=DEPT:\nPlaces=7-8 10-20\nNames=Dept|Department",
      "PAGE 1\nDEPT: 10 Sales\n-----\n  0007 ANNA     1,000.00\n  0012 BOB         (5.50)\n       TOTAL      "
      "994.50\n\nPAGE 2\nDEPT: 10 Sales\n"
      "  0013 CARL        12.00\nDEPT: 20\n  9999 NOTE        99.00\n  0014 DORA         1.00-\n");
  EXPECT_EQ(trial.names, (Rows{"Dept|Department|No|Name|Gross"}));
  EXPECT_EQ(trial.rows, (Rows{"10|Sales|0007|ANNA|1000.00", "10|Sales|0012|BOB|-5.50", "10|Sales|0013|CARL|12.00",
                              "20||0014|DORA|-1.00"}));
  EXPECT_EQ(trial.kinds, "LHDRRT.LHRHDR");
}

TEST(TidyReport, FindsItsStretches) {
  const std::string_view sReport = "a1\nBEGIN\nb1\nb2\nEND\nc1\nBEGIN\nd1\n\nd2\nEND\ne1\n";
  const auto rows = [&](std::string_view sKeys) {
    return clsTidyTrial("[Table 1]\nLike=A9\nPlaces=1-2\n" + std::string(sKeys), sReport).rows;
  };
  EXPECT_EQ(rows(""), (Rows{"a1", "b1", "b2", "c1", "d1", "d2", "e1"}));
  EXPECT_EQ(rows("ReadStartLine=BEGIN"), (Rows{"b1", "b2", "c1", "d1", "d2", "e1"}));
  EXPECT_EQ(rows("ReadEndLine=END"), (Rows{"a1", "b1", "b2"}));
  EXPECT_EQ(rows("ReadStartLine=BEGIN\nReadEndLine=END"), (Rows{"b1", "b2"}));
  EXPECT_EQ(rows("ReadStartLine=BEGIN\nReadEndLine=END\nRepeat=yes"), (Rows{"b1", "b2", "d1", "d2"}));
  EXPECT_EQ(rows("ReadStartLine=BEGIN\nReadStartLineOffset=2\nReadEndLine=END\nReadEndLineOffset=1"),
            (Rows{"b2", "c1"}));
  EXPECT_EQ(rows("ReadStartLine=BEGIN\nReadStartLineOffset=-1\nReadEndLine=END\nReadEndLineOffset=-2"),
            (Rows{"a1", "b1"}));
  EXPECT_EQ(rows("ReadStartLine=BEGIN\nRepeat=yes\nUntil=blank"), (Rows{"b1", "b2", "c1", "d1"}));
  EXPECT_EQ(rows("ReadStartLine=END\nReadEndLine=BEGIN\nReadEndLineOffset=-1\nRepeat=yes"), (Rows{"c1", "e1"}));
  EXPECT_EQ(rows("ReadStartLine=NOWHERE"), Rows());
}

TEST(TidyReport, AddsFurtherLinesToTheirRecords) {
  const clsTidyTrial trial(
      "[Table 1]\nLike=999\nPlaces=1-3 5-\nNames=No|Text\n[Line 1.2]\nText=tel:\nNames=Phone\n[Line "
      "1.3]\nLike=_+\nPlaces=3-\nNames=Text",
      "001 one\n + more\n tel: 555  x\n + and\n002 two\nstray\n tel: 7\n");
  EXPECT_EQ(trial.rows, (Rows{"001|one more and|555", "002|two|7"}));
  EXPECT_EQ(trial.kinds, "RFFFRLF");
  const clsTidyTrial distance(
      "[Table 1]\nNeeds=A digits\nPlaces=1-3 5-\nNames=No|Text\n[Line 1.2]\nPlaces=1-\nNames=Street\n[Line "
      "1.3]\nPlaces=1-\nNames=City",
      "001 one\n12 Main\n\nx99 Oak\n002 two\n13 High\nRome\n");
  EXPECT_EQ(distance.rows, (Rows{"001|one|12 Main|", "002|two|13 High|Rome"}));
}

TEST(TidyReport, JoinsWrappedLines) {
  EXPECT_EQ(clsTidyTrial("[Table 1]\nNeeds=A digits\nPlaces=1-3 5-10 12-\nJoin=up",
                         "001 aaa    x\n    bbb    y\n    ccc\n-----\n    no\n002 d\n")
                .rows,
            (Rows{"001|aaa bbb ccc|x y", "002|d|"}));
  EXPECT_EQ(
      clsTidyTrial("[Table 1]\nNeeds=A digits\nPlaces=1-3 5-10 12-\nJoin=up C", "001 aaa    x\n  all of   it\n").rows,
      (Rows{"001|aaa|x all of   it"}));
  EXPECT_EQ(clsTidyTrial("[Table 1]\nLike=K\nSplit=/\nNames=a|b|c|d\nJoin=up", "K1/2/\n3/4\nK5/6\n").rows,
            (Rows{"K1|2|3|4", "K5|6||"}));
  const clsTidyTrial down(
      "[Table 1]\nNeeds=B number\nPlaces=1-12 14-20\nTypes=A text, B number\nJoin=down",
      "A page heading that is wide\nlong\n name         5\nother        6\nlost\n\nlast         7\n");
  EXPECT_EQ(down.rows, (Rows{"long name|5", "other|6", "last|7"}));
  EXPECT_EQ(down.kinds, "LJRRL.R");
}

TEST(TidyReport, TurnsIndentationIntoColumns) {
  EXPECT_EQ(
      clsTidyTrial("[Table 1]\nNeeds=B number\nPlaces=1-18 19-30\nNames=Item|X\nLevels=A Group|Sub",
                   "Assets\n Cash\n  till             1\n  bank             2\n   Total Cash      3\n land             "
                   " 4\nDebts\n loans             5\n")
          .rows,
      (Rows{"Assets|Cash|till|1", "Assets|Cash|bank|2", "Assets||Total Cash|3", "Assets||land|4", "Debts||loans|5"}));
  EXPECT_EQ(clsTidyTrial("[Table 1]\nNeeds=A number\nPlaces=1-5 7-\nNames=X|Account\nLevels=B rows Parent",
                         "    1 all\n    2   part\n    3     bit\n    4   other\n    5 more\n")
                .rows,
            (Rows{"1||all", "2|all|part", "3|part|bit", "4|all|other", "5||more"}));
}

TEST(TidyReport, ReadsWideValuesAndRecordsSideBySide) {
  const std::string_view sKeys = "[Table 1]\nNeeds=C number\nPlaces=1-5 7-10 12-16\nTypes=C number";
  EXPECT_EQ(clsTidyTrial(sKeys, "abcdefg h     12\nab    cd  123456\nab    cd   12345\nab  $ cd      1\n").rows,
            (Rows{"abcdefg|h|12", "ab|cd|123456", "ab|cd|12345", "ab  $|cd|1"}));
  EXPECT_EQ(clsTidyTrial("[Table 1]\nPlaces=1-4 6-9 | 12-15 17-20\nNames=a|b", "one  1     two  2\nthree 3\n").rows,
            (Rows{"one|1", "two|2", "three|3"}));
  EXPECT_EQ(clsTidyTrial("[Table 1]\nPlaces=1-3 5-8\nFill=A\nBlank=n/a\n", "abc x\n    y\n\"   n/a\n").rows,
            (Rows{"abc|x", "abc|y", "abc|"}));
  EXPECT_EQ(clsTidyTrial("[Table 1]\nNeeds=B number\nPlaces=1-6 8-12\nNames=^",
                         "\nStation  Long\nName    Limit\n=============\nBath       12\n")
                .names,
            (Rows{"Station Name|Long Limit"}));
  EXPECT_EQ(
      clsTidyTrial("[Table 1]\nNeeds=B number\nPlaces=1-4 6-9\n", "Gro\u00df    1\n\u00e4\u00f6\u00fc\u00df    22\n")
          .rows,
      (Rows{"Gro\u00df|1", "\u00e4\u00f6\u00fc\u00df|22"}));
}

TEST(TidyReport, TakesWhatReachesIntoAGapToTheColumnInFront) {
  const std::string_view sKeys = "[Table 1]\nPlaces=1-5 7-10 12-\nNeeds=A any\nTypes=";
  const std::string_view sReport = "abcd  X123 z\nabcd XX12  z\nabcd 12345 z\n";
  // To the next blank, and the next column begins behind it; but a number is none of the text in front of its column.
  EXPECT_EQ(clsTidyTrial(std::string(sKeys) + "text", "abcd XX12  z\nab cdefgh  z\n").rows,
            (Rows{"abcd XX12||z", "ab cdefgh||z"}));
  EXPECT_EQ(clsTidyTrial(std::string(sKeys) + "B number", sReport).rows,
            (Rows{"abcd|X123|z", "abcd XX12||z", "abcd|12345|z"}));
  // Records side by side: the next one begins right behind the column.
  EXPECT_EQ(clsTidyTrial("[Table 1]\nPlaces=1-4 6-7 | 8-11 13-14", "Ann  12Bob   7\nCarl  3Dora 99\n").rows,
            (Rows{"Ann|12", "Bob|7", "Carl|3", "Dora|99"}));
}

TEST(TidyReport, SplitsAtTextsThatHoldBlanks) {
  EXPECT_EQ(clsTidyTrial("[Table 1]\nSplit=\\x20\\x7C\\x20\nNames=a|b|c", "x |  | z\n | y | k | l\n").rows,
            (Rows{"x||z", "|y|k | l"}));
  EXPECT_EQ(clsTidyTrial("[Table 1]\nSplit=gaps\nNames=a|b", "  x y   z  k\n").rows, (Rows{"x y|z  k"}));
}

TEST(TidyReport, ReadsSectionsByTheirNumbersAndLabels) {
  // The second line below, none between; a label gives its value and its name.
  const clsTidyTrial trial(
      "[Table 1]\nNeeds=A digits\nPlaces=1-3 5-10\nNames=No|Text\nBlank=---\n[Line 1.3]\nPlaces=1-9\nNames=City\n"
      "[Line 1.4]\nText=tel:\n[Line 1.5]\nText=see\nNames=Text",
      "001 aa\nskipped\nRome:\n tel: 55..  x\n002 bb\n\nBath\n see ---\n");
  EXPECT_EQ(trial.names, (Rows{"No|Text|City|tel"}));
  EXPECT_EQ(trial.rows, (Rows{"001|aa|Rome:|55", "002|bb|Bath|"}));
}

TEST(TidyReport, KeepsToWhatIsAskedOfARow) {
  // A heading may be a row too, but not where it holds a text that is dropped.
  const clsTidyTrial heading(
      "[Table 1]\nNeeds=A digits\nPlaces=1-3 5-\nNames=No|Text\nDrop=X\n[Heading 1.1]\nLike=9\nPlaces=5-",
      "001 aa\n002 Xb\n003 cc\n");
  EXPECT_EQ(heading.rows, (Rows{"aa|001|aa", "cc|003|cc"}));
  // A picture that fits makes a row of a line that has nothing in its columns.
  EXPECT_EQ(clsTidyTrial("[Table 1]\nLike=ITEM\nPlaces=8-\n[Line 1.2]\nPlaces=3-", "ITEM\n  a\nITEM   x\n").rows,
            (Rows{"|a", "x|"}));
  // Of several records in a line each has its own above.
  EXPECT_EQ(clsTidyTrial("[Table 1]\nPlaces=1-3 5 | 7-9 11\nFill=A\n", "abc x def y\n    z     w\n").rows,
            (Rows{"abc|x", "def|y", "abc|z", "def|w"}));
  EXPECT_EQ(clsTidyTrial("[Table 1]\nPlaces=1-3 5-8\nFill=A\nBlank=do.\n", "abc x\ndo. y\n\"   z\n").rows,
            (Rows{"abc|x", "abc|y", "abc|z"}));
  EXPECT_EQ(clsTidyTrial("[Table 1]\nPlaces=1-\nTypes=A date MMM DD, YYYY", "Jan 5, 2024\n").rows,
            (Rows{"2024-01-05"}));
}

TEST(TidyReport, SaysWhatDoesNotFit) {
  const clsTidyTrial trial("[Table 1]\nNeeds=A digits, B number\nPlaces=1-3 5-9", "abc\n123 none\n");
  EXPECT_EQ(trial.report->State(0).lNearLine, 2);
  EXPECT_EQ(trial.report->State(0).nearColumn, 1U);
  const clsTidyTrial misfit("[Table 1]\nNeeds=A digits\nPlaces=1-3 5-9\nTypes=B number", "123 none\n124 5\n");
  EXPECT_EQ(misfit.rows, (Rows{"123|none", "124|5"}));
  EXPECT_EQ(misfit.report->State(0).lMisfits, 1);
  EXPECT_EQ(misfit.report->State(0).lMisfitLine, 1);
}

TEST(TidyReport, TellsEachLineOnceForAllTables) {
  const clsTidyTrial trial(
      "[Table 1]\nLike=A\nPlaces=1-\n[Table 2]\nReadStartLine=9\nReadStartLineOffset=-1\nLike=9\nPlaces=1-",
      "a\nb b\n9\n\n---\nxx 1\n");
  EXPECT_EQ(trial.kinds, "RRR.DR");
  EXPECT_EQ(trial.rows, (Rows{"a", "b b", "9", "xx 1"}));
}

}  // namespace
}  // namespace quillon
