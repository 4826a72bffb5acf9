#include "clsReportCut.h"

#include <gtest/gtest.h>

#include "clsDesktopFixture.h"
#include "clsRecipeCut.h"
#include "frmExportBuilder.h"

namespace quillon {
namespace {

using Fields = std::vector<CutField>;

std::string Said(const std::optional<CutChange>& change) {
  if (!change) return "nothing";
  static const char* const kSteps[] = {"resize ", "split ", "insert ", "merge ", "remove "};
  std::string s = kSteps[static_cast<int>(change->step)] + std::to_string(change->nField) + ":";
  for (const CutField& f : change->fields) s += " " + std::to_string(f.lStart) + "-" + std::to_string(f.lEnd);
  return s;
}

constexpr CutRules kRuler{true, true, 2};
constexpr CutRules kProfile{false, false, 1};

TEST(CutFields, BoundariesMoveBetweenTheirNeighbours) {
  const Fields fields{{1, 5}, {6, 8}, {11, 12}};  // boundaries 0, 5, 8, 10, 12
  ASSERT_EQ(BoundariesOf(fields, kRuler).size(), 5U);
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 1, 3)), "resize 0: 1-3 4-8 11-12");
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 1, 99)), "resize 0: 1-6 7-8 11-12") << "two characters stay";
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 2, 99)), "resize 1: 1-5 6-10 11-12") << "up to the next field";
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 3, 1)), "resize 2: 1-5 6-8 9-12");
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 3, 99)), "resize 2: 1-5 6-8 12-12") << "the last one may have one";
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 0, 2)), "resize 0: 3-5 6-8 11-12");
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 4, 1 << 30)), "resize 2: 1-5 6-8 11-32767");
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 1, 3, true)), "resize 0: 1-3 6-8 11-12");
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 1, 6, true)), "resize 1: 1-5 7-8 11-12");
  EXPECT_EQ(Said(MoveBoundary({{1, 3}, {4, 9}}, kProfile, 0, 5, true)), "resize 0: 1-5 6-9") << "no gaps there";
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 1, 5)), "nothing");
  EXPECT_EQ(Said(MoveBoundary(fields, kRuler, 5, 5)), "nothing");
  EXPECT_EQ(BoundariesOf({{1, 1}, {2, 9}}, kProfile).size(), 2U) << "the left edge can't be moved";
}

TEST(CutFields, BoundariesSplitFieldsAndMakeNewOnes) {
  const Fields fields{{3, 6}, {9, 10}};
  EXPECT_EQ(Said(AddBoundary(fields, kRuler, 4)), "split 0: 3-4 5-6 9-10");
  EXPECT_EQ(Said(AddBoundary(fields, kRuler, 5)), "nothing") << "one character is no field with another behind it";
  EXPECT_EQ(Said(AddBoundary(fields, kRuler, 3)), "nothing");
  EXPECT_EQ(Said(AddBoundary(fields, kRuler, 2)), "insert 0: 1-2 3-6 9-10");
  EXPECT_EQ(Said(AddBoundary(fields, kRuler, 8)), "insert 1: 3-6 7-8 9-10");
  EXPECT_EQ(Said(AddBoundary(fields, kRuler, 15)), "insert 2: 3-6 9-10 11-15");
  EXPECT_EQ(Said(AddBoundary(fields, kRuler, 10)), "nothing");
  EXPECT_EQ(Said(AddBoundary({{1, 4}, {5, 5}}, kRuler, 9)), "nothing") << "the last field would be too narrow";
  EXPECT_EQ(Said(AddBoundary({{1, 4}, {5, 5}}, kProfile, 9)), "insert 2: 1-4 5-5 6-9");
  EXPECT_EQ(Said(AddBoundary({}, kRuler, 7)), "insert 0: 1-7");
}

TEST(CutFields, RemovedBoundariesJoinWhatTheyParted) {
  const Fields fields{{3, 5}, {6, 8}, {11, 12}};  // boundaries 2, 5, 8, 10, 12
  EXPECT_EQ(Said(RemoveBoundary(fields, kRuler, 0)), "resize 0: 1-5 6-8 11-12");
  EXPECT_EQ(Said(RemoveBoundary(fields, kRuler, 1)), "merge 0: 3-8 11-12");
  EXPECT_EQ(Said(RemoveBoundary(fields, kRuler, 2)), "resize 1: 3-5 6-10 11-12");
  EXPECT_EQ(Said(RemoveBoundary(fields, kRuler, 3)), "resize 2: 3-5 6-8 9-12");
  EXPECT_EQ(Said(RemoveBoundary(fields, kRuler, 4)), "remove 2: 3-5 6-8");
  EXPECT_EQ(Said(RemoveBoundary({{1, 5}}, kRuler, 1)), "remove 0:");
  EXPECT_EQ(Said(RemoveBoundary({{1, 5}}, kProfile, 0)), "nothing");
}

TEST(RulerOfFields, WritesWhatTheAnalyserReadsBack) {
  struct Case {
    Fields fields;
    const char *pDrawn, *pRuler;
  };
  for (const Case& c :
       {Case{{{1, 5}, {6, 8}}, "", "---- ---"}, Case{{{3, 4}, {5, 5}}, "", "  - -"},
        Case{{{1, 3}, {6, 9}}, "AAA  BBBB", "AA   BBBB"}, Case{{{1, 7}, {8, 9}}, "+-- ---", "+----- --"},
        Case{{{1, 4}, {5, 6}}, "=R", "--- --"}, Case{{}, "---", "-"}, Case{{{4, 4}}, "", "   X"}}) {
    EXPECT_EQ(RulerOfFields(c.fields, c.pDrawn), c.pRuler);
  }
}

class RecipeCut : public clsDesktopFixture {
 protected:
  void SetUp() override {
    clsDesktopFixture::SetUp();
    Load();
    form_.bUnix = true;
    Report("STOCK\nBolts   12 x\nNut    100\nEND\nMORE\nab cd\nLAST\n");
    editor_.Get("txtFileEditor").sText =
        "[Header]\r\n[Table 1]\r\nReadStartLine=STOCK\r\nReadStartLineOffset=1\r\nReadEndLine=END\r\n"
        "ReadEndLineOffset=-1\r\nParsing=----- ----; by hand\r\nWriteColumn=A\r\n\r\n[Table 2]\r\n"
        "ReadStartLine=MORE\r\nReadStartLineOffset=1\r\nReadEndLine=LAST\r\nReadEndLineOffset=-1\r\nParsing=\r\n"
        "WriteColumn=C\r\n";
    cut_.Update();
  }
  void Report(std::string_view sBytes) { form_.Get("cbInputFile").sText = folder_.Write("r.txt", sBytes); }
  std::string Line(int nTable) {
    const std::string& s = editor_.Get("txtFileEditor").sText;
    const size_t n = s.find("Parsing", s.find("[Table " + std::to_string(nTable)));
    return s.substr(n, s.find("\r\n", n) - n);
  }
  bool Notes(std::string_view sText) {
    return std::any_of(cut_.Picture().notes.begin(), cut_.Picture().notes.end(),
                       [&](const CutNote& note) { return note.sText.find(sText) != std::string::npos; });
  }
  void ReplaceInEditor(std::string_view sFrom, std::string_view sTo) {
    std::string& s = editor_.Get("txtFileEditor").sText;
    s.replace(s.find(sFrom), sFrom.size(), sTo);
    cut_.Update();
  }
  frmExportBuilder editor_{form_};
  clsRecipeCut source_{editor_};
  clsReportCut cut_{source_};
};

TEST_F(RecipeCut, TellsTheLinesOfATidyTableApart) {
  Report("ACME\nDEPT: 12 Sales\n 7 Ann     10.00\n   of Rome\n 9 Bob     12.50\nTOTAL      22.50\nstray 7\n");
  editor_.Get("txtFileEditor").sText =
      "[Table 1]\r\nNeeds=A digits, C number\r\nPlaces=1-2 4-9 10-16\r\nNames=No|Name|Gross\r\n"
      "Types=A text, C number\r\nTotals=TOTAL\r\n[Heading 1.1]\r\nText=DEPT:\r\nNames=Dept\r\n"
      "[Line 1.2]\r\nLike=___X\r\nPlaces=4-\r\nNames=Town\r\n";
  cut_.Update();
  const CutPicture& picture = cut_.Picture();
  ASSERT_EQ(picture.lines.size(), 7U) << picture.sFault;
  std::vector<CutKind> kinds;
  for (const CutLine& line : picture.lines) kinds.push_back(line.kind);
  using enum CutKind;
  EXPECT_EQ(kinds, (std::vector<CutKind>{LeftOut, Heading, Row, Further, Row, Total, LeftOut}));
  EXPECT_EQ(picture.titles, (std::vector<std::string>{"Dept", "No", "Name", "Gross", "Town"}));
  ASSERT_EQ(picture.cells.size(), 2U);
  EXPECT_EQ(picture.cells[0].cells, (std::vector<std::string>{"12 Sales", "7", "Ann", "10.00", "of Rome"}));
  EXPECT_EQ(picture.InFront(), 0);
  EXPECT_TRUE(Notes("Row lines: 2;  Further lines: 1;  Headings: 1;  Totals: 1;  Left out: 2"));
  ReplaceInEditor("Needs=A digits", "Needs=Z digits");
  EXPECT_TRUE(cut_.Picture().notes.front().bWarning);
}

TEST_F(RecipeCut, ColumnsOfATidyTableAreMovedNamedAndTyped) {
  Report("DEPT: 12\n 7 Ann     10.00\n 9 Bob     12.50\n   Cid     14.00\n");
  std::string& sText = editor_.Get("txtFileEditor").sText;
  sText =
      "[Table 1]\r\nNeeds=C number\r\nPlaces=1-2 4-9 10-16\r\nNames=No|Name|Gross\r\n[Heading 1.1]\r\nText=DEPT:\r\n";
  cut_.Update();
  ASSERT_TRUE(cut_.CanEdit());
  const auto says = [&](std::string_view sKey) { return sText.find(sKey) != std::string::npos; };
  ASSERT_TRUE(cut_.Move(cut_.BoundaryAt(9), 8));
  EXPECT_TRUE(says("Places=1-2 4-8 9-16\r\n")) << sText;
  ASSERT_TRUE(cut_.Remove(cut_.BoundaryAt(2)));
  EXPECT_TRUE(says("Places=1-3 4-8 9-16\r\n") && says("Names=No|Name|Gross\r\n")) << "the gap was taken in";
  ASSERT_TRUE(cut_.Remove(cut_.BoundaryAt(3)));
  EXPECT_TRUE(says("Places=1-8 9-16\r\n") && says("Names=No|Gross\r\n") && says("Needs=B number\r\n")) << sText;
  ASSERT_TRUE(cut_.Add(3));
  EXPECT_TRUE(says("Places=1-3 4-8 9-16\r\n") && says("Needs=C number\r\n")) << sText;
  ASSERT_EQ(cut_.Picture().columns.size(), 4U);
  cut_.TeachColumn(cut_.Picture().columns[0], {.sName = "Department", .type = {}, .bFill = {}});
  cut_.TeachColumn(cut_.Picture().columns[1], {.sName = {}, .type = {}, .bFill = true});
  cut_.TeachColumn(cut_.Picture().columns[3], {.sName = {}, .type = TidyType::Number, .bFill = {}});
  EXPECT_TRUE(says("Text=DEPT:\r\nNames=Department\r\n") && says("Fill=A\r\n") && says("Types=A-B auto, C number"))
      << sText;
  EXPECT_EQ(cut_.Picture().cells.back().cells, (std::vector<std::string>{"12", "9", "Cid", "14.00"}));
}

TEST_F(RecipeCut, TheWholeReportIsAtHand) {
  std::string sReport;
  for (int i = 1; i <= 5000; ++i) sReport += std::to_string(i) + (i == 4321 ? " odd\n" : " row\n");
  Report(sReport);
  editor_.Get("txtFileEditor").sText = "[Table 1]\r\nLike=9|99|999|9999_A\r\nDrop=odd\r\nPlaces=1-4 6-\r\n";
  cut_.Update();
  for (int i = 0; i < 1000 && cut_.WorkOn(5); ++i) {
  }
  EXPECT_EQ(cut_.Lines(), 5000);
  ASSERT_NE(cut_.Line(4321), nullptr);
  EXPECT_EQ(cut_.Line(4321)->sText, "4321 odd");
  EXPECT_EQ(cut_.Line(4321)->kind, CutKind::Dropped);
  EXPECT_EQ(cut_.Line(4999)->nTable, 0);
  EXPECT_EQ(cut_.Line(5001), nullptr);
  EXPECT_EQ(cut_.Find("ODD", 0, true), 4321);
  EXPECT_EQ(cut_.Find("odd", 4321, true), 0);
  EXPECT_EQ(cut_.Find("row", 4321, false), 4320);
  ASSERT_NE(cut_.Proof(), nullptr);
  EXPECT_EQ(cut_.Proof()->Lines(TidyLineKind::Dropped), 1);
}

TEST_F(RecipeCut, BlocksOfLinesAreProvedWhenThatIsAsked) {
  Report("STOCK\nBolts   12 x\nNuts    40\nNuts    50\nTotal  102\nEND\nTabs    77\n");
  cut_.Update();
  EXPECT_TRUE(cut_.MustAskForProof());
  EXPECT_EQ(cut_.Proof(), nullptr);
  cut_.Prove();
  ASSERT_NE(cut_.Proof(), nullptr);
  EXPECT_EQ(cut_.Proof()->Lines(TidyLineKind::Row), 4);
  EXPECT_EQ(cut_.Proof()->lLikeRows, 1) << "below the table";
  EXPECT_EQ(cut_.Proof()->loss.lBehind, 1);
  cut_.Update();
  EXPECT_NE(cut_.Proof(), nullptr) << "nothing has changed";
  ReplaceInEditor("----- ----", "----- ------");
  EXPECT_EQ(cut_.Proof(), nullptr);
  cut_.Prove();
  ASSERT_NE(cut_.Proof(), nullptr);
  EXPECT_EQ(cut_.Proof()->loss.lBehind, 0);
}

TEST_F(RecipeCut, ALessonIsCountedOverTheWholeReport) {
  std::string sReport;
  constexpr int kRows = 60000;
  for (int i = 0; i < kRows; ++i) {
    sReport += std::to_string(10000 + i) + "  Ann       " + std::to_string(100 + i % 800) + ".50\n";
    if (i == kRows - 20) sReport += "of Rome  Italy\n";
  }
  Report(sReport);
  editor_.Get("txtFileEditor").sText = "[Header]\r\n";
  cut_.Update();
  const auto readAll = [&] {
    while (cut_.WorkOn(5)) {
    }
  };
  cut_.Teach(Lesson::Row, {kRows - 30, 0, 0});
  readAll();
  EXPECT_TRUE(Notes("Rows now: 60000; before: 0")) << cut_.Picture().notes.front().sText;
  cut_.Teach(Lesson::LeaveOut, {kRows - 30, 1, 5});
  readAll();
  EXPECT_TRUE(Notes("Rows now: 59999; before: 60000; No longer rows: 1; First on line: 59970"))
      << cut_.Picture().notes.front().sText;
}

TEST_F(RecipeCut, ShowsTablesBoundariesLossesAndCells) {
  const CutPicture& picture = cut_.Picture();
  ASSERT_EQ(picture.lines.size(), 7U);
  EXPECT_EQ(picture.lines[0].nTable, -1);
  EXPECT_EQ(picture.lines[0].lKeyAt, 1);
  EXPECT_EQ(picture.lines[0].lKeyLength, 5);
  EXPECT_EQ(picture.lines[1].nTable, picture.nCurrent);
  EXPECT_EQ(picture.lines[1].sMarks, "           !");
  EXPECT_EQ(picture.lines[2].sMarks, "");
  EXPECT_EQ(picture.Fields(), (Fields{{1, 6}, {7, 10}}));
  ASSERT_EQ(picture.cells.size(), 2U);
  EXPECT_EQ(picture.cells[0].cells, (std::vector<std::string>{"Bolts ", "  12"}));
  EXPECT_TRUE(Notes("Table 1/2; Lines: 2-3"));
  EXPECT_TRUE(Notes("Characters left out: 1"));
}

TEST_F(RecipeCut, WritesMovedAddedAndRemovedBoundariesIntoTheParsingLine) {
  EXPECT_TRUE(cut_.Move(cut_.BoundaryAt(6), 8));
  EXPECT_EQ(Line(1), "Parsing=------- --; by hand");
  EXPECT_EQ(cut_.Boundaries().at(static_cast<size_t>(cut_.Selected())).lAfter, 8);
  EXPECT_TRUE(cut_.MoveSelected(-1));
  EXPECT_TRUE(cut_.Add(14));
  EXPECT_EQ(Line(1), "Parsing=------ -- ----; by hand");
  EXPECT_FALSE(Notes("Characters left out"));
  EXPECT_TRUE(cut_.Remove(cut_.BoundaryAt(7)));
  EXPECT_EQ(Line(1), "Parsing=--------- ----; by hand") << "the field took in its neighbour";
  EXPECT_FALSE(cut_.Add(14)) << "there is one";
  EXPECT_TRUE(editor_.bDirty);
  EXPECT_EQ(Line(2), "Parsing=");
}

TEST_F(RecipeCut, TheCaretChoosesTheTable) {
  editor_.nCaret = editor_.Get("txtFileEditor").sText.find("[Table 2]") + 3;
  cut_.Update();
  EXPECT_TRUE(Notes("Table 2/2"));
  EXPECT_TRUE(cut_.CanEdit()) << "nothing is drawn yet";
  EXPECT_TRUE(cut_.Add(3) && cut_.AddBehindSelected());
  EXPECT_EQ(Line(2), "Parsing=-- ----------");
  EXPECT_EQ(cut_.Picture().titles, (std::vector<std::string>{"C", "D"}));
  cut_.ChooseTableOf(2);
  EXPECT_TRUE(Notes("Table 1/2"));
  EXPECT_EQ(editor_.Get("txtFileEditor").lSelStart, 10);
}

TEST_F(RecipeCut, ALineBecomesTheFirstOrLastRow) {
  Report("Stock of today\n\nBolts   12 x\nNut    100\nScrew    7\n\nTotal  119\nTotal  119\n");
  cut_.Update();
  ASSERT_TRUE(cut_.CanBound()) << "though nothing is found yet";
  cut_.Bound(true, 3);
  cut_.Bound(false, 5);
  const std::string& sText = editor_.Get("txtFileEditor").sText;
  EXPECT_NE(sText.find("ReadStartLine=Stock of today\r\nReadStartLineOffset=2\r\n"), std::string::npos) << sText;
  EXPECT_NE(sText.find("ReadEndLine=Total\r\nReadEndLineOffset=-2\r\n"), std::string::npos) << sText;
  EXPECT_TRUE(Notes("Table 1/2; Lines: 3-5"));
  cut_.Bound(true, 99);
  EXPECT_TRUE(Notes("No text near this line"));
  editor_.Get("txtFileEditor").sText = "[Header]\r\n";
  cut_.Update();
  EXPECT_FALSE(cut_.CanBound());
}

TEST_F(RecipeCut, WorkedOutFieldsAreShownBeforeTheyAreTaken) {
  cut_.WorkOut();
  ASSERT_TRUE(cut_.HasProposal());
  EXPECT_EQ(cut_.Picture().Fields(), (Fields{{1, 7}, {8, 11}, {12, 13}}));
  EXPECT_EQ(cut_.Picture().cells.at(0).cells.size(), 3U);
  EXPECT_FALSE(cut_.Add(3)) << "a proposal is taken or dropped as it is";
  cut_.WorkOut();
  EXPECT_EQ(cut_.Picture().Fields(), (Fields{{1, 6}, {7, 11}, {12, 13}}));
  cut_.DropProposal();
  EXPECT_EQ(cut_.Picture().Fields(), (Fields{{1, 6}, {7, 10}}));
  cut_.WorkOut();
  cut_.TakeProposal();
  EXPECT_EQ(Line(1), "Parsing=------ --- --; by hand");
  ReplaceInEditor("ReadStartLine=STOCK", "ReadStartLine=NONE");
  cut_.WorkOut();
  EXPECT_FALSE(cut_.HasProposal());
  EXPECT_TRUE(Notes("ReadStartLine is not in the report"));
}

TEST_F(RecipeCut, KeyTextsThatAreNotThereAreTold) {
  ReplaceInEditor("ReadEndLine=END", "ReadEndLine=FIN");
  EXPECT_TRUE(Notes("ReadEndLine \"FIN\": Not found"));
  EXPECT_EQ(cut_.Picture().Fields(), (Fields{{1, 6}, {7, 10}})) << "a drawn ruler is shown all the same";
  EXPECT_TRUE(cut_.Move(cut_.BoundaryAt(6), 7));
  ReplaceInEditor("------ ---", "=");
  EXPECT_FALSE(cut_.CanEdit()) << "what couldn't be worked out must not be drawn over";
  EXPECT_FALSE(cut_.CanLookFurther());
}

TEST_F(RecipeCut, ReportsThatAreNoneOrGoAreTold) {
  std::filesystem::remove(folder_.Path("r.txt"));
  cut_.Update();
  EXPECT_EQ(cut_.Picture().lines.size(), 7U);
  EXPECT_TRUE(Notes("What is shown was read before."));
  Report("");
  cut_.Update();
  EXPECT_TRUE(Notes("The report is empty."));
  Report(std::string("\0\1\2STOCK\n", 9));
  cut_.Update();
  EXPECT_TRUE(Notes("control characters"));
  form_.Get("cbInputFile").sText = folder_.Path("*.none");
  cut_.Update();
  EXPECT_NE(cut_.Picture().sFault.find("Choose one input file"), std::string::npos);
}

TEST_F(RecipeCut, SearchesNoFurtherThanItMustUntilAsked) {
  const std::string sFiller(size_t{1} << 20, 'x');
  std::string sReport;
  for (int64_t l = 0; l <= clsRecipeCut::kSearched; l += static_cast<int64_t>(sFiller.size()))
    sReport += sFiller + "\n";
  Report(sReport + "STOCK\nab    cd\nEND\n");
  cut_.Update();
  EXPECT_TRUE(Notes("Megabytes searched so far: 4"));
  ASSERT_TRUE(cut_.CanLookFurther());
  cut_.LookFurther();
  EXPECT_FALSE(cut_.CanLookFurther());
  EXPECT_EQ(cut_.Picture().cells.size(), 1U);
}

}  // namespace
}  // namespace quillon
