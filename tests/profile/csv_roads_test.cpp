#include <gtest/gtest.h>

#include <random>

#include "clsCsvRowSink.h"
#include "clsRowCutter.h"
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

TEST(CsvRoads, GiveTheSameBytesWithRoomAndWithout) {
  clsTempFolder folder;
  const clsCodePage* const pages[] = {&clsCodePage::Windows1252(), clsCodePage::Find("cp437"), &clsCodePage::Utf8()};
  for (unsigned nSeed = 0; nSeed < 90; ++nSeed) {
    TwoRoads roads(nSeed);
    const clsCodePage& pageIn = *pages[nSeed % 3];
    const clsCodePage& pageOut = *pages[nSeed / 3 % 3];
    CsvRules rules;
    rules.quoting = static_cast<CsvQuoting>(nSeed / 9 % 3);
    rules.sSeparator = nSeed % 2 == 0 ? "," : ";";
    rules.bTrim = nSeed % 5 == 0;
    rules.bJoinEmpty = nSeed % 7 == 0;
    const CutPlan plan = roads.Plan(pageIn);
    Failure failure;
    clsOutputFile files[3];
    ASSERT_TRUE(files[0].Open(folder.Path("quick"), failure) && files[1].Open(folder.Path("tight"), failure) &&
                files[2].Open(folder.Path("plain"), failure));
    clsCsvRowSink sinks[3] = {{files[0], rules, pageOut},
                              {files[1], rules, pageOut},
                              {files[2], rules, pageOut, {}, clsCsvRowSink::Road::Plain}};
    clsRowCutter cutter(plan, pageIn);
    for (int i = 0; i < 300; ++i) {
      // At the exact end of its own allocation, so that a sanitizer sees each byte read behind it.
      const std::string sRow = roads.Row(pageIn);
      std::vector<char> row(sRow.begin(), sRow.end());
      std::vector<char> roomy = row;
      roomy.resize(row.size() + SinkRow::kRoom, '"');
      cutter.Cut({roomy.data(), row.size()}, true);
      EXPECT_TRUE(sinks[0].PutRow(cutter.Row()));
      cutter.Cut({row.data(), row.size()}, false);
      EXPECT_TRUE(sinks[1].PutRow(cutter.Row()) && sinks[2].PutRow(cutter.Row()));
    }
    for (clsOutputFile& file : files) ASSERT_TRUE(file.Commit(failure));
    ASSERT_EQ(folder.Read("quick"), folder.Read("plain")) << "seed " << nSeed;
    ASSERT_EQ(folder.Read("tight"), folder.Read("plain")) << "seed " << nSeed;
    EXPECT_EQ(sinks[0].CharsLost(), sinks[2].CharsLost());
    EXPECT_EQ(sinks[1].CharsLost(), sinks[2].CharsLost());
  }
}

TEST(CsvRoads, ARowLargerThanTheBufferTakesThePlainOne) {
  clsTempFolder folder;
  const size_t nRow = clsOutputFile::kBufferBytes + 5;
  const CutPlan plan = MakeCutPlan({}, 1, clsCodePage::Windows1252());
  clsOutputFile file;
  Failure failure;
  ASSERT_TRUE(file.Open(folder.Path("out"), failure));
  clsCsvRowSink sink(file, {.quoting = CsvQuoting::Always}, clsCodePage::Windows1252());
  clsRowCutter cutter(plan, clsCodePage::Windows1252());
  const std::string sRow(nRow, '"');
  cutter.Cut(sRow, false);
  sink.PutRow(cutter.Row());
  ASSERT_TRUE(file.Commit(failure));
  EXPECT_EQ(folder.Read("out"), std::string(2 * nRow + 2, '"') + "\r\n");
}

}  // namespace
}  // namespace quillon
