#include <gtest/gtest.h>

#include <random>

#include "clsCsvSink.h"
#include "clsTempFolder.h"
#include "modText.h"

namespace quillon {
namespace {

/// Random widths, pads, sides and rows; the quick road and the plain one must give the same bytes.
class TwoRoads {
 public:
  explicit TwoRoads(unsigned nSeed) : random_(nSeed) {}

  CutPlan Plan(const clsCodePage& page) {
    std::vector<CellwrightColumn> columns(1 + Below(14));
    for (CellwrightColumn& column : columns) {
      const int32_t widths[] = {1, 3, 8, 15, 16, 17, 31, 33, 50};
      column.lCount = widths[Below(std::size(widths))] * (Below(6) == 0 ? -1 : 1);
      column.inputPad = static_cast<unsigned char>(" 0x\xE4\xFF"[Below(5)]);
      column.lInputSide = static_cast<int32_t>(Below(3));
      column.lOrder = static_cast<int32_t>(Below(20));
    }
    return MakeCutPlan(columns, 1 + static_cast<int32_t>(Below(2)), page);
  }

  std::string Row(const clsCodePage& page) {
    static constexpr std::string_view kBytes = "   000xxabc,;\"\r\t\xE4\xC4\x80";
    std::string sRow;
    for (size_t n = Below(4) == 0 ? Below(20) : Below(260); n > 0; --n) {
      const size_t nRun = Below(8) == 0 ? Below(40) : 1;
      const char c = kBytes[Below(Below(3) == 0 ? kBytes.size() : 12)];
      sRow.append(nRun, c);
    }
    while (!sRow.empty() && sRow.back() == '\r') sRow.pop_back();
    return page.IsSingleByte() || Below(4) == 0 ? sRow : clsCodePage::Windows1252().ToUtf8(sRow);
  }

  size_t Below(size_t n) { return random_() % n; }

 private:
  std::mt19937 random_;
};

TEST(FastCsv, GivesTheBytesOfThePlainRoad) {
  clsTempFolder folder;
  const clsCodePage* const pages[] = {&clsCodePage::Windows1252(), clsCodePage::Find("cp437"), &clsCodePage::Utf8()};
  for (unsigned nSeed = 0; nSeed < 90; ++nSeed) {
    TwoRoads roads(nSeed);
    const clsCodePage& pageIn = *pages[nSeed % 3];
    const clsCodePage& pageOut = *pages[nSeed / 3 % 3];
    CsvRules rules;
    rules.quoting = static_cast<CsvQuoting>(nSeed / 9 % 3);
    rules.sSeparator = nSeed % 2 == 0 ? "," : ";";
    const CutPlan plan = roads.Plan(pageIn);
    Failure failure;
    clsOutputFile files[2];
    ASSERT_TRUE(files[0].Open(folder.Path("quick"), failure) && files[1].Open(folder.Path("plain"), failure));
    clsCsvSink quick(files[0], plan, rules, pageIn, pageOut, {});
    clsCsvSink plain(files[1], plan, rules, pageIn, pageOut, {.bQuick = false});
    for (int i = 0; i < 300; ++i) {
      // At the exact end of its own allocation, so that a sanitizer sees each byte read behind it.
      const std::string sRow = roads.Row(pageIn);
      const std::vector<char> row(sRow.begin(), sRow.end());
      const std::string_view sView(row.data(), row.size());
      EXPECT_TRUE(quick.PutRow(sView) && plain.PutRow(sView));
    }
    ASSERT_TRUE(files[0].Commit(failure) && files[1].Commit(failure));
    ASSERT_EQ(folder.Read("quick"), folder.Read("plain")) << "seed " << nSeed;
    EXPECT_EQ(quick.CharsLost(), plain.CharsLost());
  }
}

TEST(FastCsv, ARowLargerThanTheBufferTakesThePlainRoad) {
  clsTempFolder folder;
  const size_t nRow = clsOutputFile::kBufferBytes + 5;
  const CutPlan plan = MakeCutPlan({}, 1, clsCodePage::Windows1252());
  clsOutputFile file;
  Failure failure;
  ASSERT_TRUE(file.Open(folder.Path("out"), failure));
  clsCsvSink sink(file, plan, {.quoting = CsvQuoting::Always}, clsCodePage::Windows1252(), clsCodePage::Windows1252(),
                  {});
  sink.PutRow(std::string(nRow, '"'));
  ASSERT_TRUE(file.Commit(failure));
  EXPECT_EQ(folder.Read("out"), std::string(2 * nRow + 2, '"') + "\r\n");
}

}  // namespace
}  // namespace quillon
