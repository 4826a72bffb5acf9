// One report read by many roads: key texts found in one pass against one by one, and lines gone to against passed over.

#include <gtest/gtest.h>

#include <random>

#include "clsReport.h"
#include "clsTempFolder.h"

namespace quillon {
namespace {

std::string RandomText(std::mt19937& random, size_t nMost, std::string_view sFrom) {
  std::string s;
  for (size_t n = random() % (nMost + 1); n > 0; --n) s += sFrom[random() % sFrom.size()];
  return s;
}

/// What a reader of its own finds behind lAfter rows.
int64_t PlainLineOf(const std::string& sPath, const TextFileOptions& options, const std::string& sText,
                    int64_t lAfter) {
  clsLineReader reader;
  Failure failure;
  EXPECT_TRUE(reader.Open(sPath, options, failure));
  reader.SkipRows(lAfter);
  std::string_view sRow;
  const bool bCan = reader.CodePage().CanEncode(sText);
  return bCan && reader.FindRow(reader.CodePage().FromUtf8(sText), {}, sRow) > 0 ? reader.RowNumber() : 0;
}

TEST(Report, FindsManyTextsAtOnceAsOneByOne) {
  const clsTempFolder folder;
  std::mt19937 random(7);
  for (int nRound = 0; nRound < 150; ++nRound) {
    const bool bCr = nRound % 10 == 9;
    const std::string_view sBytes = bCr ? "ab<>\r" : "aab<>1\xE9\n\n\r";
    const TextFileOptions options{.bUnix = nRound % 3 == 0, .pCodePage = &clsCodePage::Windows1252()};
    const std::string sMark = nRound % 4 == 0 && !bCr ? "\xEF\xBB\xBF" : "";
    const std::string sPath = folder.Write("r" + std::to_string(nRound), sMark + RandomText(random, 3000, sBytes));
    std::vector<std::string> texts{"", "\xC3\xA9", "\xCE\xA9", "\r", "a\r"};
    for (size_t n = random() % 40; n > 0; --n) texts.push_back(RandomText(random, 1 + random() % 9, "ab<>1"));
    clsReport report(sPath, options);
    Failure failure;
    ASSERT_TRUE(report.Open(failure));
    if (nRound % 2 == 0) report.Expect(texts);
    for (const std::string& sText : texts) {
      ASSERT_EQ(report.LineOf(sText), PlainLineOf(sPath, options, sText, 0)) << nRound << " [" << sText << "]";
      const auto lAfter = static_cast<int64_t>(random() % 400);
      ASSERT_EQ(report.LineBehind(sText, lAfter), PlainLineOf(sPath, options, sText, lAfter)) << nRound;
    }
  }
}

TEST(Report, GoesToAnyLineAndCountsAll) {
  const clsTempFolder folder;
  std::mt19937 random(8);
  std::string sText;
  std::vector<std::string> rows;
  constexpr int64_t kRows = 200000;  // more than the places that are kept, and some blocks
  for (int64_t n = 1; n <= kRows; ++n) {
    rows.push_back(std::to_string(n) + std::string(random() % 7, 'x'));
    sText += rows.back() + "\n";
  }
  clsReport report(folder.Write("r", sText), {});
  Failure failure;
  ASSERT_TRUE(report.Open(failure));
  std::vector<std::string> texts;
  for (int n = 0; n < 70000; ++n) texts.push_back(rows[static_cast<size_t>(2 * n)] + "x");
  report.Expect(texts);
  EXPECT_EQ(report.LineOf("17"), 17);
  for (int i = 0; i < 2000; ++i) {
    const auto lLine = static_cast<int64_t>(1 + random() % kRows);
    std::string_view sRow;
    ASSERT_TRUE(report.SeekLine(lLine) && report.Reader().ReadRow(sRow));
    ASSERT_EQ(sRow, rows[static_cast<size_t>(lLine) - 1]);
    ASSERT_EQ(report.Reader().RowNumber(), lLine);
    if (i == 1000) {
      EXPECT_EQ(report.CountLines(), kRows);
    }
  }
  EXPECT_TRUE(report.SeekLine(kRows + 1) && report.Reader().AtEnd());
  EXPECT_FALSE(report.SeekLine(kRows + 2));
}

}  // namespace
}  // namespace quillon
