#include "modRunningSum.h"

#include <gtest/gtest.h>

#include <limits>

#include "clsPrintedTotals.h"

namespace quillon {
namespace {

RunningSum Of(const std::vector<TidyNumber>& numbers) {
  RunningSum sum;
  for (const TidyNumber& number : numbers) sum.Add(number);
  return sum;
}

std::string Since(const RunningSum& now, const RunningSum& before, int nDecimals) {
  int64_t nSum = 0;
  return SumSince(now, before, nDecimals, nSum) ? std::to_string(nSum) : "can't be told";
}

TEST(RunningSum, IsToldInTheDecimalsAskedFor) {
  struct Case {
    std::vector<TidyNumber> numbers;
    int nDecimals;
    const char* pWanted;
  };
  constexpr int64_t kBillion = 1000000000;
  const Case cases[] = {
      {{{15, 1, true}, {2, 0, true}, {25, 2, true}}, 2, "375"},
      {{{15, 1, true}, {2, 0, true}, {25, 2, true}}, 1, "38"},
      {{{15, 1, true}, {2, 0, true}, {25, 2, true}}, 4, "37500"},
      {{{-25, 1, true}}, 0, "-3"},
      {{{-24, 1, true}}, 0, "-2"},
      {{{499999999, 9, true}}, 0, "0"},
      {{{500000000, 9, true}}, 0, "1"},
      {{{1, 9, true}, {1, 10, true}}, 9, "can't be told"},
      {{{1, 0, false}}, 0, "can't be told"},
      {{}, 3, "0"},
      {{{9, 0, true}}, 18, "9000000000000000000"},
      {{{-10, 0, true}}, 18, "can't be told"},
      {{{9 * kBillion, 0, true}, {0, 9, true}}, 9, "9000000000000000000"},
      {{{10 * kBillion, 0, true}, {0, 9, true}}, 0, "can't be told"},
      // Only the sum has to fit, in whatever order it comes about.
      {{{9 * kBillion * kBillion / 10, 0, true}, {1, 0, true}, {-9 * kBillion * kBillion / 10, 0, true}}, 1, "10"},
  };
  for (const Case& c : cases) EXPECT_EQ(Since(Of(c.numbers), {}, c.nDecimals), c.pWanted) << c.nDecimals;
}

TEST(RunningSum, DifferencesAreRightWhateverCameBefore) {
  RunningSum sum;
  for (int i = 0; i < 30; ++i) sum.Add(TidyNumber{900000000000000000, 0, true});
  sum.Add(TidyNumber{0, 0, false});
  const RunningSum before = sum;
  EXPECT_EQ(Since(before, {}, 0), "can't be told");
  sum.Add(TidyNumber{-7, 0, true});
  EXPECT_EQ(Since(sum, before, 0), "-7") << "what came before needn't fit";
  const RunningSum whole = Of({{5, 0, true}});
  RunningSum finer = whole;
  finer.Add(TidyNumber{5, 3, true});
  EXPECT_EQ(Since(finer, whole, 3), "5") << "the scale grew in between";
  EXPECT_EQ(Since(finer, whole, 2), "1");
  finer.Add(TidyNumber{0, 0, false});
  EXPECT_EQ(Since(finer, whole, 3), "can't be told");
}

TEST(RunningSum, SumsOfOtherRowsComeAndGoWhole) {
  const RunningSum coarse = Of({{3, 0, true}, {4, 0, true}});
  const RunningSum fine = Of({{125, 2, true}, {0, 0, false}});
  for (const auto& [first, second] : {std::pair{coarse, fine}, std::pair{fine, coarse}}) {
    RunningSum both = first;
    both.Add(second);
    EXPECT_EQ(both.lRows, 3);
    EXPECT_EQ(both.lUnscaled, 1);
    EXPECT_EQ(both.last.nValue, first.last.nValue);
    both.TakeAway(fine);
    EXPECT_EQ(Since(both, {}, 2), "700");
    EXPECT_EQ(both.lRows, 2);
  }
  EXPECT_EQ(Magnitude(std::numeric_limits<int64_t>::min()), uint64_t{1} << 63);
}

/// Tables of one column each; rows by table, then lines that are no rows of any.
struct TwoTables {
  explicit TwoTables(const std::vector<std::string>& names) {
    for (size_t i = 0; i < names.size(); ++i) {
      tables.emplace_back(std::vector<ProofColumn>{{names[i], 11, 22, true, {}}}, std::vector<std::string>(),
                          clsPrintedTotals::Limits{.nAgreeing = 9, .nDisagreeing = 9});
    }
    for (size_t i = 0; i < names.size(); ++i) tables[i].ShareSums(shared, i);
  }
  void Row(size_t nTable, int64_t nCents) {
    tables[nTable].Add(0, {nCents, 2, true});
    tables[nTable].RowEnds(++lLine);
  }
  void Line(const std::string& sLine) {
    ++lLine;
    for (clsPrintedTotals& table : tables) table.Line(lLine, sLine);
  }
  std::string Told() {
    std::string sText;
    for (clsPrintedTotals& table : tables) {
      const TotalsAccount account = table.Finish();
      sText += std::to_string(account.lAgree) + "/" + std::to_string(account.lDisagree) + " ";
    }
    return sText;
  }

  clsSharedSums shared;
  std::vector<clsPrintedTotals> tables;
  int64_t lLine = 0;
};

TEST(SharedSums, ATotalOfAllTablesIsTheLastOnes) {
  struct Case {
    std::vector<std::string> names;
    const char *pTotal, *pWanted;
  };
  const Case cases[] = {
      {{"Gross", "Gross"}, "ALL          2,000.75", "0/0 1/0 "},
      {{"Gross", "Gross"}, "ALL          2,000.76", "0/0 0/0 "},
      {{"Gross", "Net"}, "ALL          2,000.75", "0/0 0/0 "},
      {{"", ""}, "ALL          2,000.75", "0/0 0/0 "},
      {{"Gross", "Gross", "Net"}, "ALL          2,000.75", "0/0 1/0 0/0 "},
      {{"Gross", "Gross"}, "STORES         500.25", "0/0 1/0 "},
  };
  for (const Case& c : cases) {
    TwoTables tables(c.names);
    tables.Row(1, 20025);
    tables.Row(0, 100000);
    tables.Row(0, 50050);
    tables.Row(1, 30000);
    tables.Line(c.pTotal);
    EXPECT_EQ(tables.Told(), c.pWanted) << c.pTotal;
  }
}

}  // namespace
}  // namespace quillon
