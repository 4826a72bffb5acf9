// The two sinks for the rows of an engine: a CSV file and a sheet.

#include <gtest/gtest.h>

#include <vector>

#include "clsCsvRowSink.h"
#include "clsSheetRowSink.h"
#include "clsTempFolder.h"
#include "modExcelLink.h"

namespace quillon {
namespace {

using Fields = std::vector<std::string_view>;

std::string Csv(const CsvRules& rules, const std::vector<Fields>& rows, const clsCodePage& page) {
  clsTempFolder folder;
  clsOutputFile file;
  Failure failure;
  EXPECT_TRUE(file.Open(folder.Path("out.csv"), failure));
  clsCsvRowSink sink(file, rules, page);
  for (const Fields& row : rows) EXPECT_TRUE(sink.PutRow({row, &clsCodePage::Utf8()}));
  EXPECT_TRUE(file.Commit(failure));
  return folder.Read("out.csv");
}

TEST(RowSink, WritesCsvByTheRules) {
  const clsCodePage& page = clsCodePage::Windows1252();
  const std::vector<Fields> rows{{"", "a", ""}, {" x ", "b,c", "d\"e"}, {"\xC3\xA9", "=1", "\xCE\xA9"}};
  EXPECT_EQ(Csv({}, rows, page), ",a,\r\n x ,\"b,c\",\"d\"\"e\"\r\n\xE9,=1,?\r\n");
  EXPECT_EQ(Csv({.bJoinEmpty = true}, rows, page).substr(0, 3), "a,\r");
  EXPECT_EQ(Csv({.bTrim = true, .bSafe = true}, rows, page), ",a,\r\nx,\"b,c\",\"d\"\"e\"\r\n\xE9,\"'=1\",?\r\n");
  EXPECT_EQ(Csv({.bTrim = true, .bJoinEmpty = true}, {{"  ", "a"}, {"", "a"}}, page), ",a\r\na\r\n")
      << "what was there before the trimming counts";
}

TEST(RowSink, WritesCellsWhereTheEngineSaysAndTellsOfRefusedOnes) {
  const std::unique_ptr<clsWorkbook> pWorkbook = NewExcelWorkbook(kFormatXlsx, {.typing = {}, .bReadBack = true});
  int nRefused = 0;
  clsSheetRowSink sink(*pWorkbook, {.bTrim = true, .lMostRows = 6}, [&](const Failure&) { return ++nRefused < 2; });
  const std::vector<int32_t> columns{2, 20000, 4};
  sink.Begin(5, columns);
  EXPECT_TRUE(sink.PutRow({Fields{" a ", "lost", "\xE9"}, &clsCodePage::Windows1252()}));
  EXPECT_FALSE(sink.PutRow({Fields{"b", "lost", "not reached"}})) << "the second refusal ends the rows";
  EXPECT_FALSE(sink.PutRow({Fields{"below the last row"}}));
  EXPECT_EQ(nRefused, 3);
  const auto cell = [&](int64_t lRow, int nColumn) {
    std::string sText;
    Failure failure;
    EXPECT_TRUE(pWorkbook->ReadCell(1, lRow, nColumn, sText, failure));
    return sText;
  };
  EXPECT_EQ(cell(5, 2) + cell(5, 4) + cell(6, 2) + cell(6, 4),
            "a\xC3\xA9"
            "b");
}

}  // namespace
}  // namespace quillon
