// What is said of lines by pointing at them becomes keys of a tidy table.

#include <gtest/gtest.h>

#include "clsTableTeacher.h"
#include "clsTempFolder.h"
#include "modMendTables.h"
#include "modPayroll.h"
#include "modPointedText.h"
#include "modTidyColumns.h"
#include "modTidyEdits.h"
#include "modTidyKeys.h"

namespace quillon {
namespace {

class Teach : public ::testing::Test {
 protected:
  void Read(const std::string& sReport) {
    Failure failure;
    ASSERT_TRUE(report_.Read(folder_.Write("report.txt", sReport), {}, 8, failure)) << failure.sText;
  }
  /// The first line that holds the text.
  PointedLine With(std::u32string_view sText) const {
    for (size_t n = 0; n < report_.Lines().size(); ++n) {
      if (report_.Lines()[n].sText.find(sText) != std::u32string_view::npos) return {static_cast<int64_t>(n) + 1, 0, 0};
    }
    ADD_FAILURE();
    return {};
  }
  std::string Key(std::string_view sRecipe, const TidyTable& before, const TidyTable& after) const {
    std::string sText(sRecipe);
    for (const TextEdit& edit : TidyEdits(sText, before, after)) sText = edit.Applied(sText);
    return sText;
  }

  clsTempFolder folder_;
  clsReportSample report_;
  std::string sFault_;
};

TEST_F(Teach, OneRowTellsAllAndTotalsAreNone) {
  Read(Payroll());
  clsTableTeacher teacher(report_, {});
  EXPECT_FALSE(teacher.Names(With(U"EMPL."), sFault_)) << "there are no columns yet";
  ASSERT_TRUE(teacher.Row(With(U"MILLER"), sFault_)) << sFault_;
  EXPECT_EQ(RowsTaken(report_, teacher.Table()).size(), 9U);
  EXPECT_EQ(teacher.Table().row.ColumnCount(), 5U);
  EXPECT_EQ(teacher.Table().row.TypeOf(4).type, TidyType::Number);
  ASSERT_TRUE(teacher.Names(With(U"NO.   NAME"), sFault_)) << sFault_;
  const std::vector<std::string> names{"EMPL. NO.", "NAME", "GROSS PAY", "TAX", "NET PAY"};
  EXPECT_EQ(teacher.Table().row.ColumnNames(), names);
  EXPECT_FALSE(teacher.Row({2, 0, 0}, sFault_)) << "a blank line";
  EXPECT_EQ(RowsTaken(report_, teacher.Table()).size(), 9U);
}

TEST_F(Teach, ARowThatWasNotTakenWidensTheTable) {
  Read("A1   10.00  one\nA2   20.00  two\nA3    x     three\nA4   30.00  four\nend of it\n");
  clsTableTeacher teacher(report_, {});
  ASSERT_TRUE(teacher.Row({1, 0, 0}, sFault_)) << sFault_;
  EXPECT_EQ(RowsTaken(report_, teacher.Table()), (std::vector<size_t>{0, 1, 3}));
  ASSERT_TRUE(teacher.Row({3, 0, 0}, sFault_)) << sFault_;
  EXPECT_EQ(RowsTaken(report_, teacher.Table()), (std::vector<size_t>{0, 1, 2, 3}));
}

TEST_F(Teach, ALineFarDownTeachesAlongWithTheBeginning) {
  std::string sReport;
  for (int i = 10000; i < 50000; ++i) sReport += "A" + std::to_string(i) + "  10.00  one\n";
  constexpr int64_t kFar = 40003;
  sReport += "ITEM    PRICE  NAME\n\nA50000  10.50  two\nA50001     x   two\n";
  Failure failure;
  ASSERT_TRUE(report_.Read(folder_.Write("report.txt", sReport), {}, 8, failure, kFar)) << failure.sText;
  EXPECT_EQ(report_.IndexOf(1), 0U);
  ASSERT_LT(report_.IndexOf(kFar), report_.Lines().size());
  EXPECT_EQ(Utf8Of(report_.Lines()[report_.IndexOf(kFar)].sText), "A50000  10.50  two");
  EXPECT_EQ(report_.IndexOf(20000), report_.Lines().size()) << "between the parts";
  EXPECT_EQ(report_.IndexOf(kFar + 2), report_.Lines().size());
  EXPECT_EQ(report_.IndexOf(0), report_.Lines().size());
  EXPECT_FALSE(report_.IsWhole());
  clsTableTeacher teacher(report_, {});
  ASSERT_TRUE(teacher.Row({kFar, 0, 0}, sFault_)) << sFault_;
  EXPECT_TRUE(teacher.Names({kFar - 2, 0, 0}, sFault_)) << sFault_;
  EXPECT_EQ(teacher.Table().row.ColumnNames(), (std::vector<std::string>{"ITEM", "PRICE", "NAME"}));
  EXPECT_EQ(RowsTaken(report_, teacher.Table()).front(), 0U);
  EXPECT_FALSE(teacher.Row({20000, 0, 0}, sFault_));
}

TEST_F(Teach, HeadingsAreFoundByLabelOrShape) {
  Read(Payroll());
  clsTableTeacher teacher(report_, {});
  ASSERT_TRUE(teacher.Row(With(U"MILLER"), sFault_)) << sFault_;
  PointedLine line = With(U"DEPARTMENT NUMBER");
  ASSERT_TRUE(teacher.Heading(line, sFault_));
  line.lFirst = 24;
  line.lLast = 28;
  ASSERT_TRUE(teacher.Heading(line, sFault_));
  const std::vector<TidyPart>& headings = teacher.Table().headings;
  ASSERT_EQ(headings.size(), 2U);
  EXPECT_EQ(headings[0].texts.front(), "DEPARTMENT NUMBER:");
  EXPECT_TRUE(headings[0].cut.places.empty());
  EXPECT_EQ(headings[0].names.front(), "DEPARTMENT NUMBER");
  EXPECT_EQ(headings[1].names.front(), "DEPARTMENT NUMBER 2");
  EXPECT_EQ(headings[1].cut.places.front().front().nStart, 24);
  EXPECT_FALSE(teacher.Heading(With(U"MILLER"), sFault_)) << "rows look like it";
  EXPECT_EQ(teacher.Table().headings.size(), 2U);
}

TEST_F(Teach, LinesAreLeftOutByATextThatNoRowHolds) {
  Read("A  10\nA  20\nA SUM  30\nB  40\nA SUM  40\n");
  clsTableTeacher teacher(report_, {});
  ASSERT_TRUE(teacher.Row({1, 0, 0}, sFault_)) << sFault_;
  ASSERT_TRUE(teacher.LeaveOut({3, 0, 0}, sFault_)) << sFault_;
  EXPECT_EQ(teacher.Table().drops, (std::vector<std::string>{"A SUM"}));
  EXPECT_EQ(RowsTaken(report_, teacher.Table()), (std::vector<size_t>{0, 1, 3}));
}

TEST_F(Teach, AMemoBecomesAFurtherLineOfItsRecord) {
  Read(Payroll());
  clsTableTeacher teacher(report_, {});
  EXPECT_FALSE(teacher.Further(With(U"MEMO"), sFault_)) << "no row stands above it";
  ASSERT_TRUE(teacher.Row(With(U"MILLER"), sFault_)) << sFault_;
  ASSERT_TRUE(teacher.Further(With(U"MEMO"), sFault_)) << sFault_;
  ASSERT_EQ(teacher.Table().lines.size(), 1U);
  EXPECT_EQ(teacher.Table().lines[0].part.texts.front(), "MEMO:");
}

TEST_F(Teach, NamesOfFurtherLinesStandOnce) {
  Read("A1   10.00\n     MEMO: x   y\nA2   20.00\n     MEMO: z\nA3   30.00\n     of Rome   Italy\n");
  clsTableTeacher teacher(report_, {});
  ASSERT_TRUE(teacher.Row({1, 0, 0}, sFault_)) << sFault_;
  ASSERT_TRUE(teacher.Further({2, 0, 0}, sFault_)) << sFault_;
  ASSERT_TRUE(teacher.Further({4, 0, 0}, sFault_)) << sFault_;
  ASSERT_TRUE(teacher.Further({6, 0, 0}, sFault_)) << sFault_;
  const std::vector<TidyFurtherLine>& lines = teacher.Table().lines;
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].part.names, (std::vector<std::string>{"MEMO"}));
  EXPECT_EQ(lines[1].part.names, (std::vector<std::string>{"MEMO 2"}));
  EXPECT_EQ(lines[2].part.names, (std::vector<std::string>{"Line 4", "Line 4.2"}));
  EXPECT_EQ(lines[2].part.likes, (std::vector<std::string>{"_____A"}));
}

TEST_F(Teach, ALessonIsTakenWholeOrNotAtAll) {
  Read("A1   10.00\n\nA2   20.00\nB  7\n=====\n");
  clsTableTeacher teacher(report_, {});
  ASSERT_TRUE(teacher.Row({1, 0, 0}, sFault_)) << sFault_;
  using Method = bool (clsTableTeacher::*)(const PointedLine&, std::string&);
  struct Case {
    const char* pWhat;
    Method method;
    PointedLine line;
  };
  const Case cases[] = {
      {"a row below the report", &clsTableTeacher::Row, {6, 0, 0}},
      {"a row above it", &clsTableTeacher::Row, {0, 0, 0}},
      {"a blank heading", &clsTableTeacher::Heading, {2, 0, 0}},
      {"a row as a heading", &clsTableTeacher::Heading, {3, 1, 2}},
      {"nothing of a line as a heading", &clsTableTeacher::Heading, {4, 50, 60}},
      {"a row as a further line", &clsTableTeacher::Further, {3, 0, 0}},
      {"strokes that are no words", &clsTableTeacher::LeaveOut, {5, 0, 0}},
      {"blanks that were dragged over", &clsTableTeacher::LeaveOut, {4, 2, 3}},
      {"nothing that was dragged over", &clsTableTeacher::LeaveOut, {4, 50, 60}},
  };
  for (const Case& c : cases) {
    sFault_.clear();
    EXPECT_FALSE((teacher.*c.method)(c.line, sFault_)) << c.pWhat;
    EXPECT_FALSE(sFault_.empty()) << c.pWhat;
    EXPECT_EQ(RowsTaken(report_, teacher.Table()), (std::vector<size_t>{0, 2})) << c.pWhat;
    EXPECT_TRUE(teacher.Table().headings.empty() && teacher.Table().lines.empty() && teacher.Table().drops.empty());
  }
}

TEST(TidyEdits, LeaveWhatTheyDoNotTouch) {
  const std::string sRecipe =
      "[Header]\r\nProduct=QLN-B\r\n; mine\r\n[Table 1]\r\nNeeds=A digits ; why\r\nOther=x\r\nParsing=-- --\r\n\r\n"
      "[Table 2]\r\nLike=9\r\n";
  TidyTable before;
  before.row.needs = {{0, {{TidyKind::Digits, {}}}}};
  before.sParsing = "-- --";
  TidyTable after = before;
  after.sParsing.clear();
  after.row.cut.places = {{{1, 2}, {4, 0}}};
  after.row.needs.push_back({1, {{TidyKind::Any, {}}}});
  TidyPart heading;
  heading.texts = {"Dept"};
  after.headings.push_back(heading);
  std::string sText = sRecipe;
  for (const TextEdit& edit : TidyEdits(sText, before, after)) sText = edit.Applied(sText);
  EXPECT_EQ(sText,
            "[Header]\r\nProduct=QLN-B\r\n; mine\r\n[Table 1]\r\nNeeds=A digits, B any; why\r\nOther=x\r\n"
            "Places=1-2 4-\r\n\r\n[Heading 1.1]\r\nText=Dept\r\n[Table 2]\r\nLike=9\r\n");
}

TEST(TidyColumns, KeepTheirNamesAndKindsWhenOneIsSplit) {
  TidyTable table;
  table.row.cut.places = {{{1, 4}, {6, 20}, {22, 0}}};
  table.row.names = {"No", "Name", "Net"};
  table.row.types = {{TidyType::Text, false, 0, {}}, {TidyType::Text, false, 0, {}}, {TidyType::Number, false, 0, {}}};
  table.row.needs = {{2, {{TidyKind::Number, {}}}}};
  table.fills = {1, 2};
  ASSERT_TRUE(CanMoveColumns(table));
  ChangeColumns(table, {CutStep::Split, 1, 12, {{1, 4}, {6, 12}, {13, 20}, {22, 90}}});
  EXPECT_EQ(table.row.names, (std::vector<std::string>{"No", "Name", "", "Net"}));
  EXPECT_EQ(table.row.TypeOf(3).type, TidyType::Number);
  EXPECT_EQ(table.row.needs[0].column, 3U);
  EXPECT_EQ(table.fills, (std::vector<TidyColumn>{1, 3}));
  EXPECT_EQ(table.row.cut.places[0].back().nEnd, 0) << "the last one stays open";
  ChangeColumns(table, {CutStep::Merge, 1, 4, {{1, 4}, {6, 20}, {22, 90}}});
  EXPECT_EQ(table.row.names, (std::vector<std::string>{"No", "Name", "Net"}));
  EXPECT_EQ(table.row.needs[0].column, 2U);
}

TEST(PointedText, TellsAValueFromItsLabel) {
  const PointedValue behind = ValueAt(U"RUN DATE  12/31/24   PAGE  3", 11, 18);
  EXPECT_EQ(behind.sLabel, U"RUN DATE");
  EXPECT_TRUE(behind.bBehindLabel);
  const PointedValue inside = ValueAt(U"FROM 01/24 TO 02/24", 6, 10);
  EXPECT_EQ(inside.sLabel, U"FROM");
  EXPECT_FALSE(inside.bBehindLabel) << "the piece goes on behind it";
  const PointedValue none = ValueAt(U"   824 SECURITY", 4, 15);
  EXPECT_TRUE(none.sLabel.empty());
  EXPECT_EQ(none.sLike, "___999");
  EXPECT_EQ(none.lLast, 0);
}

TEST(PointedText, PiecesArePartedByTwoBlanks) {
  std::string sAll;
  for (const TextPiece& piece : PiecesOf(U"  No. of   units  \u00C4pfel x")) {
    sAll += std::to_string(piece.lFirst) + "-" + std::to_string(piece.lLast) + " " + Utf8Of(piece.sText) + "|";
  }
  EXPECT_EQ(sAll, "3-8 No. of|12-16 units|19-25 \u00C4pfel x|");
  EXPECT_TRUE(PiecesOf(U"").empty());
  EXPECT_TRUE(PlacesOfPieces(U"   ").empty());
  const std::vector<TidyPlace> places = PlacesOfPieces(U" a  b c   d");
  ASSERT_EQ(places.size(), 3U);
  EXPECT_EQ(places[0].nEnd, 4);
  EXPECT_EQ(places[1].nStart, 5);
  EXPECT_EQ(places[2].nEnd, 0);
  EXPECT_EQ(Characters(U"ab cd", 2, 4), U"b c");
  EXPECT_EQ(Characters(U"ab cd", 2, 3), U"b") << "no blanks at its ends";
  for (const auto& [lFirst, lLast] : {std::pair{0, 3}, {6, 9}, {4, 3}, {-2, -1}}) {
    EXPECT_EQ(Characters(U"ab cd", lFirst, lLast), U"") << lFirst;
  }
}

TEST(PointedText, NamesGoToTheColumnsTheyStandOver) {
  const std::vector<TidyPlace> places{{1, 5}, {8, 12}, {15, 0}};
  const auto told = [&](int32_t lFirst, std::u32string_view sText) {
    std::string sAll;
    const auto lLast = lFirst + static_cast<int32_t>(sText.size()) - 1;
    for (const auto& [nColumn, sPart] : PartsOver({lFirst, lLast, sText}, places)) {
      sAll += std::to_string(nColumn) + "=" + sPart + " ";
    }
    return sAll;
  };
  EXPECT_EQ(told(2, U"NO"), "0=NO ");
  EXPECT_EQ(told(3, U"NO. OF UNITS"), "0=NO. 1=OF UNITS ");
  EXPECT_EQ(told(7, U"X"), "1=X ") << "the nearest";
  EXPECT_EQ(told(6, U"X"), "0=X ");
  EXPECT_EQ(told(13, U"A B"), "2=A B ");
  EXPECT_EQ(told(80, U"FAR OUT"), "2=FAR OUT ");
  EXPECT_EQ(told(1, U"AB CDEFGHIJ K"), "0=AB 1=CDEFGHIJ K ");
}

TEST(PointedText, WordsWithoutDigitsTheLongestFirst) {
  const auto told = [](std::u32string_view sLine) {
    std::string sAll;
    for (const std::u32string& sWord : WordsOf(sLine)) sAll += Utf8Of(sWord) + "|";
    return sAll;
  };
  EXPECT_EQ(told(U"SUM 12 OF ALL  A1 ITEMS  ==="), "OF ALL|ITEMS|SUM|");
  EXPECT_EQ(told(U"12  3.4 ---"), "");
  EXPECT_EQ(told(U"\u00C4 b  cd"), "\u00C4 b|cd|");
}

TEST(PointedText, APictureTakesItsOwnSignsForThemselves) {
  EXPECT_EQ(PictureOf(U" a\u00C4_9.\\-", 8), "_AA\\_9\\.\\\\-");
  EXPECT_EQ(PictureOf(U"ab", 9), "AA");
  EXPECT_EQ(PictureOf(U"ab", 0), "");
}

TEST(PointedText, WhatIsPointedAtIsFoundAgain) {
  struct Case {
    std::u32string_view sLine;
    int32_t lFirst, lLast;
    std::u32string_view sLabel;
    bool bBehind;
    int32_t lWantedFirst, lWantedLast;
  };
  const Case cases[] = {
      {U"DEPT: 12 Sales", 0, 0, U"DEPT:", true, 7, 0},  {U"DEPT: 12 Sales", 10, 14, U"DEPT:", false, 10, 0},
      {U"DEPT: 12 Sales", 7, 8, U"DEPT:", false, 7, 8}, {U"DEPT:   12   PAGE 3", 0, 0, U"DEPT:", true, 9, 13},
      {U"ACME   PAGE 3", 0, 0, U"ACME", true, 8, 0},    {U"ACME   PAGE 3", 13, 13, U"PAGE", true, 13, 0},
      {U"1/2/24   ACME", 1, 6, U"", false, 1, 9},
  };
  for (const Case& c : cases) {
    const PointedValue value = ValueAt(c.sLine, c.lFirst, c.lLast);
    EXPECT_EQ(Utf8Of(value.sLabel), Utf8Of(c.sLabel)) << Utf8Of(c.sLine) << c.lFirst;
    EXPECT_EQ(value.bBehindLabel && !value.sLabel.empty(), c.bBehind) << Utf8Of(c.sLine) << c.lFirst;
    EXPECT_EQ(value.lFirst, c.lWantedFirst) << Utf8Of(c.sLine) << c.lFirst;
    EXPECT_EQ(value.lLast, c.lWantedLast) << Utf8Of(c.sLine) << c.lFirst;
  }
  EXPECT_EQ(WithoutColon(U"NO. OF. : .="), U"NO. OF");
  EXPECT_EQ(WithoutColon(U": :"), U"");
}

}  // namespace
}  // namespace quillon
