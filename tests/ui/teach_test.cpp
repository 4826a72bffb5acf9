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

}  // namespace
}  // namespace quillon
