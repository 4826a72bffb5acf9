#include "clsKeyWatch.h"

#include <gtest/gtest.h>

#include <random>

namespace quillon {
namespace {

clsKeyWatch::Row FirstRowWith(std::string_view sFile, const std::string& sText, int64_t nStart) {
  clsKeyWatch::Row row;
  size_t nRow = 0;
  for (int64_t lRow = 1; nRow < sFile.size(); ++lRow) {
    const size_t nEnd = std::min(sFile.find('\n', nRow), sFile.size());
    if (sFile.substr(nRow, nEnd - nRow).find(sText) != std::string_view::npos) {
      return {lRow, nStart + static_cast<int64_t>(nRow)};
    }
    nRow = nEnd + 1;
  }
  return row;
}

TEST(KeyWatch, FindsTheFirstRowOfEachTextHoweverTheFileComes) {
  std::mt19937 random(7);
  const auto upTo = [&random](size_t n) { return std::uniform_int_distribution<size_t>(0, n)(random); };
  const auto text = [&](size_t nMost, std::string_view sLetters) {
    std::string s;
    for (size_t n = upTo(nMost); n > 0; --n) s += sLetters[upTo(sLetters.size() - 1)];
    return s;
  };
  int nFound = 0;
  for (int i = 0; i < 3000; ++i) {
    const std::string sFile = text(120, "aaab\n");
    const std::vector<std::string> texts{text(9, "ab"), text(4, "ab"), text(2, "ab")};
    clsKeyWatch watch;
    watch.Expect(texts);
    watch.Start(3);
    for (size_t nAt = 0; nAt < sFile.size();) {
      const size_t n = 1 + upTo(i % 2 == 0 ? 3 : 40);
      watch.Look(std::string_view(sFile).substr(nAt, n));
      nAt += n;
    }
    for (const std::string& sText : texts) {
      if (sText.empty()) continue;
      const clsKeyWatch::Row wanted = FirstRowWith(sFile, sText, 3);
      ASSERT_NE(watch.RowOf(sText), nullptr);
      ASSERT_EQ(watch.RowOf(sText)->lRow, wanted.lRow) << sFile << "|" << sText;
      ASSERT_EQ(watch.RowOf(sText)->nOffset, wanted.nOffset) << sFile << "|" << sText;
      nFound += wanted.lRow > 1 ? 1 : 0;
    }
  }
  EXPECT_GT(nFound, 500);
}

}  // namespace
}  // namespace quillon
