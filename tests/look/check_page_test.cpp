#include "clsCheckPage.h"

#include <gtest/gtest.h>

#include "clsTempFolder.h"
#include "modProofText.h"

namespace quillon {
namespace {

const std::string kRecipe =
    "[Table 1]\nNeeds=A digits, C number\nPlaces=1-4 6-13 15-24 26-31\nNames=No|Name|Gross|Tax\n"
    "Types=A text, C-D number\n"
    "Totals=TOTAL\n";

std::string PageOf(const std::string& sReport) {
  const clsTempFolder folder;
  const PreviewRequest request{.sInput = folder.Write("r.txt", sReport), .text = {false, nullptr}};
  clsSectionFile recipe;
  recipe.OpenMemory(kRecipe, {});
  const ReportCheck check = CheckReport(request, recipe, {}, nullptr);
  EXPECT_EQ(check.sFault, "");
  clsCheckPage page(check, {}, {"<r>.txt", "r.rcp", VerdictText(check.proof, true, true), false});
  recipe.OpenMemory(kRecipe, {});
  CheckReport(request, recipe, {}, &page);
  return page.Finish();
}

std::string Row(int n, const std::string& sGross) {
  const std::string sNumber = std::to_string(n);
  return std::string(4 - sNumber.size(), '0') + sNumber + " Ann     " + std::string(11 - sGross.size(), ' ') + sGross +
         "  25.50";
}

size_t CountOf(const std::string& sText, const std::string& sPart) {
  size_t nCount = 0;
  for (size_t n = sText.find(sPart); n != std::string::npos; n = sText.find(sPart, n + 1)) ++nCount;
  return nCount;
}

bool Holds(const std::string& sText, const std::string& sPart) {
  return sText.find(sPart) != std::string::npos;
}

TEST(CheckPage, ShowsLinesByKindCellsLossAndTotals) {
  const std::string sPage =
      PageOf("A < B & \"C\"\n\n" + Row(1, "1,000.00") + "  x<y\n" + Row(2, "500.50") +
             "\n     TOTAL      1,500.50\n00O3 Bob          200.00  25.50\n     TOTAL        200.00\n");
  EXPECT_TRUE(sPage.starts_with(clsCheckPage::kBegins));
  EXPECT_TRUE(Holds(sPage, "<title>&lt;r&gt;.txt</title>"));
  EXPECT_TRUE(Holds(sPage, "<p>7 lines: 2 rows, 2 totals, 2 left out, 1 blank.</p>")) << sPage;
  EXPECT_TRUE(Holds(sPage, "<div class=\"left\" data-n=\"1\">A &lt; B &amp; &quot;C&quot;</div>"));
  EXPECT_TRUE(Holds(sPage, "<div class=\"row\" data-n=\"3\"><i>0001</i> <i>Ann     </i>"));
  EXPECT_TRUE(Holds(sPage, "<b class=\"lost\">x&lt;y</b>"));
  EXPECT_TRUE(Holds(sPage, "<div class=\"like\" data-n=\"6\">00O3 Bob"));
  EXPECT_TRUE(Holds(sPage, "1,500.50  <span class=\"good\">&#10003; Gross</span></div>"));
  EXPECT_TRUE(Holds(sPage, "<span class=\"bad\">&#10007; Gross: rows "));
  EXPECT_LT(sPage.find("&#10007;"), sPage.find("&#10003;")) << "what disagrees comes first";
  EXPECT_FALSE(Holds(sPage, "<script")) << "no script, no other file";
  EXPECT_FALSE(Holds(sPage, "http"));
}

TEST(CheckPage, ALongReportIsShownAtThePlacesThatMatter) {
  std::string sReport;
  for (int i = 1; i <= 2500; ++i) sReport += Row(i, "10.00") + "\n     TOTAL          10.00\n";
  const std::string sLost = "25O1 Bob          200.00  25.50\n";
  const std::string sPage = PageOf(sReport + sLost + Row(2502, "10.00") + "\n");
  EXPECT_TRUE(Holds(sPage, "<p>Only the places that matter are shown.</p>"));
  EXPECT_TRUE(Holds(sPage, "<div class=\"gap\" data-n=\"\">"));
  EXPECT_TRUE(Holds(sPage, "<div class=\"like\" data-n=\"5001\">25O1 Bob"));
  EXPECT_EQ(CountOf(sPage, "<tr><td class=\"num\">"), 30U + 1U) << "totals, and the shape of the line";
  EXPECT_TRUE(Holds(sPage, "<p>2470 more agree.</p>"));
  EXPECT_LT(sPage.size(), 40'000U);
}

}  // namespace
}  // namespace quillon
