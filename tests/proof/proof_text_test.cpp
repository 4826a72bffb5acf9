#include <gtest/gtest.h>

#include "modProofText.h"

namespace quillon {
namespace {

ReportProof Whole() {
  ReportProof proof;
  proof.lines[static_cast<size_t>(TidyLineKind::Row)] = 12;
  proof.lines[static_cast<size_t>(TidyLineKind::Blank)] = 3;
  proof.lTotalsAgree = 2;
  return proof;
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

}  // namespace
}  // namespace quillon
