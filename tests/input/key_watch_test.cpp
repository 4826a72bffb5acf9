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
    std::vector<std::string> texts{text(9, "ab"), text(4, "ab"), text(2, "ab")};
    // One by one, and all at once.
    while (i % 3 == 0 && texts.size() < 12) texts.push_back(text(5, "ab"));
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

TEST(KeyWatch, LooksForNoMoreThanItCanTell) {
  clsKeyWatch watch;
  const std::string sLong(clsKeyWatch::kLongest + 1, 'x');
  watch.Expect({"", "two\nlines", "cr\r", sLong, "\xC3\x84", "a", "a", "b", "c", "d", "e", "f"});
  for (const std::string& sText : {std::string(), std::string("two\nlines"), std::string("cr\r"), sLong}) {
    EXPECT_EQ(watch.RowOf(sText), nullptr) << sText;
  }
  EXPECT_EQ(watch.TextCount(), 7);
  watch.Start(0);
  watch.Look("\xC3");
  watch.Look("\x84\n\nfed");
  watch.Look("");
  EXPECT_FALSE(watch.IsDone());
  watch.Look("cba");
  EXPECT_TRUE(watch.IsDone());
  EXPECT_EQ(watch.RowOf("\xC3\x84")->lRow, 1);
  for (const char* const pText : {"a", "b", "c", "d", "e", "f"}) {
    ASSERT_NE(watch.RowOf(pText), nullptr) << pText;
    EXPECT_EQ(watch.RowOf(pText)->lRow, 3) << pText;
    EXPECT_EQ(watch.RowOf(pText)->nOffset, 4) << pText;
  }
  clsKeyWatch full;
  full.Expect({std::string(clsKeyWatch::kLongest, 'x')});
  for (size_t i = 0; i < clsKeyWatch::kMostBytes / 1000; ++i)
    full.Expect({std::string(990, 'y') + std::to_string(100000 + i)});
  full.Expect({"too many", "too many, too" + std::string(2000, 'z')});
  EXPECT_EQ(full.RowOf("too many, too" + std::string(2000, 'z')), nullptr);
}

TEST(KeyWatch, AnotherStartKnowsNothingOfTheFileBefore) {
  clsKeyWatch watch;
  watch.Expect({"TOTAL", "END"});
  watch.Start(0);
  watch.Look("\n\nTOTAL\nTO");
  watch.Start(1000);
  EXPECT_EQ(watch.RowOf("TOTAL")->lRow, 0);
  watch.Look("TAL\n");
  EXPECT_EQ(watch.RowOf("TOTAL")->lRow, 0) << "its beginning was another file's";
  watch.Look("E\nND TOTA");
  watch.Look("L END");
  EXPECT_EQ(watch.RowOf("TOTAL")->lRow, 3);
  EXPECT_EQ(watch.RowOf("TOTAL")->nOffset, 1006);
  EXPECT_EQ(watch.RowOf("END")->lRow, 3) << "no text goes across a line's end";
}

}  // namespace
}  // namespace quillon
