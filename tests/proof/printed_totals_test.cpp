#include <gtest/gtest.h>

#include <sstream>

#include "clsPrintedTotals.h"
#include "modText.h"

namespace quillon {
namespace {

/// A report whose rows begin with a digit and whose groups begin with "GROUP"; all other lines are none of them.
/// Columns: text 1-10, Gross 11-22, Tax 23-32.
TotalsAccount Proof(const std::string& sReport, std::vector<std::string> words = {}) {
  std::vector<ProofColumn> columns{{"Name", 1, 10, false, {}}, {"Gross", 11, 22, true, {}}, {"Tax", 23, 32, true, {}}};
  clsPrintedTotals totals(columns, std::move(words), {.nAgreeing = 100, .nDisagreeing = 100});
  std::istringstream lines(sReport);
  int64_t lLine = 0;
  for (std::string sLine; std::getline(lines, sLine);) {
    ++lLine;
    if (sLine.starts_with("GROUP")) totals.GroupBegins(0);
    if (sLine.empty() || !IsAsciiDigit(sLine[0])) {
      totals.Line(lLine, sLine);
      continue;
    }
    for (size_t i = 1; i < columns.size(); ++i) {
      const auto number =
          ReadTidyNumber(MidChars(sLine, columns[i].nStart, columns[i].nEnd - columns[i].nStart + 1), {}, nullptr);
      if (number) totals.Add(i, *number);
    }
    totals.RowEnds(lLine);
  }
  return totals.Finish();
}

std::string Told(const TotalsAccount& account) {
  std::string sText = std::to_string(account.lAgree) + " agree, " + std::to_string(account.lLastDigit) + " nearly, " +
                      std::to_string(account.lDisagree) + " not";
  for (const PrintedTotal& total : account.totals) {
    if (total.verdict == TotalVerdict::Agrees) continue;
    sText += "; line " + std::to_string(total.lLine) + " column " + std::to_string(total.nColumn) + ": " +
             total.sPrinted + " for " + total.sSummed;
  }
  return sText;
}

const std::string kRegister =
    "GROUP A\n"
    "1 Ann         1,000.00    100.00\n"
    "2 Bob           500.50     50.05\n"
    "DEPT TOTAL    1,500.50    150.05\n"
    "GROUP B\n"
    "3 Cy           -200.25     20.00\n"
    "4 Dan         2,000.00     80.00\n"
    "DEPT TOTAL    1,799.75    100.00\n"
    "GRAND TOTAL   3,300.25    250.05\n";

std::string Without(std::string sReport, const std::string& sBegin) {
  const size_t nFrom = sReport.find(sBegin);
  return sReport.erase(nFrom, sReport.find('\n', nFrom) + 1 - nFrom);
}

TEST(PrintedTotals, GroupsAndTheWholeAgreeWithoutAnyKey) {
  const TotalsAccount account = Proof(kRegister);
  EXPECT_EQ(Told(account), "6 agree, 0 nearly, 0 not");
  EXPECT_EQ(account.lLines, 3);
  EXPECT_EQ(account.words, (std::vector<std::string>{"DEPT TOTAL", "GRAND TOTAL"}));
}

TEST(PrintedTotals, ALostRowIsNamedWithLineColumnAndBothValues) {
  const std::string sReport = Without(kRegister, "3 Cy");
  const std::vector<std::string> words{"DEPT TOTAL", "GRAND TOTAL"};
  EXPECT_EQ(Told(Proof(sReport, words)),
            "2 agree, 0 nearly, 4 not; line 7 column 1: 1,799.75 for 2000.00; line 7 column 2: 100.00 for 80.00; "
            "line 8 column 1: 3,300.25 for 3500.50; line 8 column 2: 250.05 for 230.05");
  // No word tells that the only line of the whole is a total: it takes half of the votes.
  EXPECT_EQ(Proof(sReport).lDisagree, 2);
  std::string sChanged = kRegister;
  sChanged.replace(sChanged.find("500.50"), 6, "600.50");
  EXPECT_EQ(Proof(sChanged, words).lDisagree, 2);
}

TEST(PrintedTotals, WhatIsNoTotalRaisesNoAlarm) {
  EXPECT_EQ(Told(Proof("1 Ann         1,000.00    100.00\n2 Bob           500.00     50.00\n"
                       "Page                 2\nLimit         9,000.00\nLimit         8,000.00\n"
                       "5 Cy            100.00     10.00\nPage                 3\n")),
            "0 agree, 0 nearly, 0 not");
  // An average and a count of the rows, below totals that are relied on.
  EXPECT_EQ(Told(Proof("1 Ann         1,000.00    100.00\n2 Bob           500.00     50.00\n"
                       "TOTAL         1,500.00     75.00\nTOTAL ROWS           2\n",
                       {"TOTAL"})),
            "1 agree, 0 nearly, 0 not");
}

TEST(PrintedTotals, RoundingIsToldApart) {
  EXPECT_EQ(Told(Proof("1 Ann           333.33    100.4\n2 Bob           333.33    100.4\n"
                       "3 Cy            333.33    100.4\nTOTAL         1,000.00      301\n")),
            "1 agree, 1 nearly, 0 not; line 4 column 1: 1,000.00 for 999.99");
}

TEST(PrintedTotals, PagesAndRunningSumsAreSums) {
  EXPECT_EQ(Told(Proof("1 A              10.00      1.00\n2 B              20.00      2.00\n"
                       "PAGE TOTAL       30.00      3.00\nCARRIED          30.00      3.00\n"
                       "3 C              40.00      4.00\n"
                       "PAGE TOTAL       40.00      4.00\nCARRIED          70.00      7.00\n")),
            "8 agree, 0 nearly, 0 not");
}

TEST(PrintedTotals, ASumWiderThanItsColumnBelongsToTheFreeOneBesideIt) {
  EXPECT_EQ(
      Told(Proof("1 A         987,654.00      1.00\n2 B         987,654.00      2.00\nTOTAL       1,975,308.00\n")),
      "1 agree, 0 nearly, 0 not");
}

TEST(PrintedTotals, SignsOfAllFormsCount) {
  EXPECT_EQ(Told(Proof("1 A            100.00-    (5.00)\n2 B            40.00CR      2.00\n"
                       "TOTAL          140.00-    (3.00)\n")),
            "2 agree, 0 nearly, 0 not");
}

TEST(PrintedTotals, NumbersBeyondAllIntegersAreLeftOut) {
  std::vector<ProofColumn> columns{{"N", 1, 40, true, {}}};
  clsPrintedTotals totals(columns, {"TOTAL"}, {});
  for (int i = 0; i < 30; ++i) totals.Add(0, {900000000000000000, 0, true});
  totals.Add(0, {0, 0, false});
  totals.RowEnds(1);
  totals.Line(2, "TOTAL 5");
  EXPECT_EQ(totals.Finish().Found(), 0);
}

TEST(PrintedTotals, ManyDifferentWordsTakeNoMoreMemoryThanAllowed) {
  std::string sReport = "1 A              10.00      1.00\n2 B              20.00      2.00\n";
  for (size_t i = 0; i < clsPrintedTotals::kMostKinds + 100; ++i) {
    std::string sWord;
    for (size_t n = i; sWord.size() < 4; n /= 26) sWord += static_cast<char>('a' + n % 26);
    sReport += sWord + "                 5.55\n";
  }
  EXPECT_EQ(Told(Proof(sReport + "SUM              30.00      3.00\n", {"SUM"})), "2 agree, 0 nearly, 0 not");
}

}  // namespace
}  // namespace quillon
