// A whole report under the hand: its lines as they are asked for, and a pass over all of them.

#include <gtest/gtest.h>

#include "clsReportPass.h"
#include "clsReportText.h"
#include "clsTempFolder.h"

namespace quillon {
namespace {

class ReportLines : public ::testing::Test {
 protected:
  PreviewRequest Request(std::string_view sBytes, std::string_view sName = "r.txt") {
    PreviewRequest request;
    request.sInput = folder_.Write(sName, sBytes);
    request.text.pCodePage = &clsCodePage::Utf8();
    request.text.lMostBytes = 10;  // of a look, which this is none of
    return request;
  }
  static std::string Report(int nLines) {
    std::string sText;
    for (int i = 1; i <= nLines; ++i)
      sText += "line " + std::to_string(i) + (i % 700 == 0 ? " Total \xC3\x84\n" : "\n");
    return sText;
  }
  std::string Lines(int64_t lFirst, int64_t lLast) {
    std::string sText;
    for (const PreviewRow& row : text_.Lines(lFirst, lLast)) sText += std::to_string(row.lLine) + ":" + row.sText + "|";
    return sText;
  }

  clsTempFolder folder_;
  clsReportText text_;
};

TEST_F(ReportLines, AreReadWhereverTheyStand) {
  ASSERT_TRUE(text_.Open(Request(Report(3210))));
  EXPECT_EQ(Lines(3209, 9999), "3209:line 3209|3210:line 3210|") << "before any line is counted";
  EXPECT_EQ(Lines(999, 1002), "999:line 999|1000:line 1000|1001:line 1001|1002:line 1002|");
  EXPECT_EQ(Lines(1, 2), "1:line 1|2:line 2|");
  EXPECT_EQ(Lines(2001, 2001), "2001:line 2001|");
  for (const auto& [lFirst, lLast] :
       {std::pair<int64_t, int64_t>{0, 5}, {-3, 1}, {5, 4}, {3211, 3300}, {999999, 1000000}}) {
    EXPECT_EQ(Lines(lFirst, lLast), "") << lFirst;
  }
  int nSteps = 0;
  while (text_.CountOn(2000)) {
    ASSERT_LT(++nSteps, 100);
    EXPECT_EQ(Lines(5, 5), "5:line 5|") << "in between";
  }
  EXPECT_GE(nSteps, 2);
  EXPECT_EQ(text_.Counted(), 3210);
  EXPECT_EQ(Lines(3000, 3001), "3000:line 3000|3001:line 3001|");
}

TEST_F(ReportLines, AreFoundInBothDirections) {
  ASSERT_TRUE(text_.Open(Request(Report(3210))));  // 700, 1400, 2100, 2800
  struct Case {
    const char* pText;
    int64_t lFrom;
    bool bForward;
    int64_t lWanted;
  };
  const Case cases[] = {
      {"total", 0, true, 700},
      {"total", 700, true, 1400},
      {"total", 2800, true, 0},
      {"total", 3211, false, 2800},
      {"total", 2800, false, 2100},
      {"TOTAL", 2001, false, 1400},
      {"total", 1001, false, 700},
      {"total", 700, false, 0},
      {"total", 1, false, 0},
      {"\xC3\xA4", 0, true, 700},
      {"line 3210", 0, true, 3210},
      {"line 1", 2, false, 1},
      {"line 2001", 2000, true, 2001},
      {"", 0, true, 0},
      {"\n", 0, true, 0},
  };
  for (const Case& c : cases) EXPECT_EQ(text_.Find(c.pText, c.lFrom, c.bForward), c.lWanted) << c.pText << c.lFrom;
}

TEST_F(ReportLines, AreShownWithStopsAndNoLongerThanAPageIs) {
  std::string sWide;
  for (int i = 0; i < 3000; ++i) sWide += "\xF0\x9F\x93\x84";
  PreviewRequest request = Request("a\tb  \n" + sWide + "\nlast");
  request.lTabSize = 4;
  ASSERT_TRUE(text_.Open(request));
  EXPECT_EQ(Lines(1, 1), "1:a   b|");
  EXPECT_TRUE(text_.Lines(2, 2).at(0).sText == sWide.substr(0, 4 * clsReportText::kCharacters));
  EXPECT_EQ(Lines(3, 3), "3:last|");
  request.lTabSize = 8;
  ASSERT_TRUE(text_.Open(request));
  EXPECT_EQ(Lines(1, 1), "1:a       b|");
}

TEST_F(ReportLines, AChangedReportIsReadAnew) {
  ASSERT_TRUE(text_.Open(Request(Report(1500))));
  while (text_.CountOn(1 << 20)) {
  }
  EXPECT_EQ(text_.Counted(), 1500);
  ASSERT_TRUE(text_.Open(Request("short\n")));
  EXPECT_EQ(Lines(1, 9), "1:short|");
  EXPECT_EQ(Lines(1200, 1300), "");
  EXPECT_EQ(text_.Counted(), 1);
  PreviewRequest none;
  none.sInput = folder_.Path("none.txt");
  EXPECT_FALSE(text_.Open(none));
  EXPECT_EQ(Lines(1, 9), "");
  EXPECT_FALSE(text_.CountOn(100));
  EXPECT_EQ(text_.Find("short", 0, true), 0);
  ASSERT_TRUE(text_.Open(Request("")));
  EXPECT_EQ(Lines(1, 9), "");
  EXPECT_FALSE(text_.CountOn(100));
}

constexpr std::string_view kTidy = "[Table 1]\nNeeds=A digits, B number\nPlaces=1-2 4-9\nTotals=TOTAL\n";

std::string Told(const clsReportPass& pass) {
  std::string sText;
  for (const clsReportPass::ToldLine& line : pass.Lines()) {
    sText += line.kind == TidyLineKind::Row ? 'r' : line.kind == TidyLineKind::Total ? 't' : '-';
  }
  return sText + " " + std::to_string(pass.Proof().lTotalsAgree) + "/" + std::to_string(pass.Proof().lTotalsDisagree);
}

std::string Passed(clsReportPass& pass) {
  for (int n = 0; n < 10000 && !pass.Step(5); ++n) {
  }
  return Told(pass);
}

TEST_F(ReportLines, APassTellsEachOfThemAndTheProof) {
  clsReportPass pass;
  const std::string sReport = "STOCK\n 1   2.50\n 2   4.00\nTOTAL 6.50\n";
  ASSERT_TRUE(pass.Begin(Request(sReport), kTidy));
  EXPECT_FALSE(pass.IsDone());
  EXPECT_EQ(Passed(pass), "-rrt 1/0") << "however little a look would read";
  EXPECT_TRUE(pass.Step(0)) << "nothing is left to read";
  EXPECT_EQ(Told(pass), "-rrt 1/0");
  ASSERT_TRUE(pass.Begin(Request("TOTAL\n 7   1.00\n"), kTidy));
  EXPECT_FALSE(pass.IsDone());
  EXPECT_EQ(Passed(pass).substr(1), "r 0/0") << "nothing of the report before";
}

TEST_F(ReportLines, APassBeginsWithTidyTablesAlone) {
  const PreviewRequest request = Request(" 1   2.50\n");
  PreviewRequest none = request;
  none.sInput = folder_.Path("none.txt");
  struct Case {
    const char* pWhat;
    PreviewRequest request;
    std::string sRecipe;
    bool bBegins;
  };
  const std::string sTidy(kTidy);
  const Case cases[] = {
      {"tidy", request, sTidy, true},
      {"no recipe", request, "", false},
      {"a table of another kind", request, sTidy + "[Table 2]\nReadStartLine=A\nReadEndLine=B\nParsing=---\n", false},
      {"a mistake", request, "[Table 1]\nNeed=A digits\nPlaces=1-2\n", false},
      {"no report", none, sTidy, false},
  };
  for (const Case& c : cases) EXPECT_EQ(clsReportPass().Begin(c.request, c.sRecipe), c.bBegins) << c.pWhat;
}

}  // namespace
}  // namespace quillon
