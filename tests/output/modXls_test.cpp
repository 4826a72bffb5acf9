#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "clsXlsCellTable.h"
#include "clsXlsStringTable.h"
#include "modText.h"
#include "modXlsBytes.h"
#include "modXlsFormula.h"
#include "modXlsRecords.h"
#include "modXlsText.h"

namespace quillon {
namespace {

TEST(XlsBytes, AreLittleEndianAndNeverReadBeyondTheEnd) {
  std::string sBytes;
  PutU8(sBytes, 0xFE);
  PutU16(sBytes, 0x1234);
  PutU32(sBytes, 0x89ABCDEF);
  Put(sBytes, 1.5);
  EXPECT_EQ(sBytes.substr(0, 7), "\xFE\x34\x12\xEF\xCD\xAB\x89");
  EXPECT_EQ(GetU16(sBytes, 1), 0x1234);
  EXPECT_EQ(GetF64(sBytes, 7), 1.5);
  EXPECT_EQ(GetU32(sBytes, sBytes.size() - 3), 0U);
  EXPECT_EQ(GetU32(sBytes, std::numeric_limits<size_t>::max()), 0U);
  SetAt(sBytes, sBytes.size() - 1, uint16_t{7});
  EXPECT_EQ(GetF64(sBytes, 7), 1.5);
}

TEST(XlsText, TakesTheNarrowestFormAndComesBack) {
  for (const std::string sText : {"", "plain", "Gr\xC3\xBC\xC3\x9F", "5 \xE2\x82\xAC", "\xF0\x9F\x99\x82"}) {
    std::string sRecord, sBack;
    PutXlsString(sRecord, sText, 2);
    EXPECT_TRUE(GetXlsString(sRecord, 0, 2, sBack));
    EXPECT_EQ(sBack, sText);
    EXPECT_FALSE(GetXlsString(std::string_view(sRecord).substr(0, sRecord.size() - 1), 0, 2, sBack));
  }
  EXPECT_EQ(Utf16Count("\xF0\x9F\x99\x82"), 2U);
}

TEST(XlsNumbers, AreShortenedOnlyWhereTheyComeBackExactly) {
  uint32_t nRk = 0;
  for (const double nValue : {0.0, 1.0, -1.0, 12.5, 0.1, -0.07, 536870911.0, 5368709.11, 1e300, -2.0e20, 1234567.89}) {
    if (!RkOfNumber(nValue, nRk)) continue;
    EXPECT_EQ(NumberOfRk(nRk), nValue);
  }
  EXPECT_TRUE(RkOfNumber(1234567.89, nRk));
  EXPECT_FALSE(RkOfNumber(0.123, nRk));
  EXPECT_FALSE(RkOfNumber(123456789012.0, nRk));
  ASSERT_TRUE(RkOfNumber(-0.0, nRk));
  EXPECT_TRUE(std::signbit(NumberOfRk(nRk)));
}

TEST(XlsStrings, SplitIntoRecordsComeBackWholeAlsoBehindAnExistingTable) {
  clsXlsStrings first;
  for (int i = 0; i < 3000; ++i) first.Add("text " + std::to_string(i));
  first.Add(std::string(20000, 'x'));
  std::string sWide;
  for (int i = 0; i < 15000; ++i) sWide += "\xE2\x82\xAC";
  EXPECT_EQ(first.Add(sWide), 3001U);
  EXPECT_EQ(first.Add("text 7"), 7U);
  std::string sStream;
  clsXlsStringTable().Write(first, 0, sStream);

  clsXlsStringTable table;
  ASSERT_TRUE(table.Parse(sStream, 0));
  clsXlsStrings second;
  second.Add(sWide + "!");
  second.Add("last");
  std::string sMore;
  table.Write(second, 0, sMore);
  clsXlsStringTable both;
  ASSERT_TRUE(both.Parse(sMore, 0));
  EXPECT_EQ(both.Count(), 3004U);
  EXPECT_EQ(both.Text(2999), "text 2999");
  EXPECT_EQ(both.Text(3000), std::string(20000, 'x'));
  EXPECT_EQ(both.Text(3001), sWide);
  EXPECT_EQ(both.Text(3002), sWide + "!");
  EXPECT_EQ(both.Text(3003), "last");
  clsXlsRecordReader reader(sMore, 0);
  XlsRecord record;
  while (reader.Next(record)) EXPECT_LE(record.sData.size(), xls::kMaxRecordData);
  EXPECT_FALSE(reader.Broken());

  // A count beyond what is there, and a string that reaches beyond it.
  SetAt(sMore, 8, uint32_t{4000000});
  EXPECT_FALSE(clsXlsStringTable().Parse(sMore, 0));
  EXPECT_FALSE(clsXlsStringTable().Parse(std::string_view(sMore).substr(0, 5000), 0));
}

TEST(XlsFormula, BecomesTokensOrIsRefusedWhole) {
  const auto Tokens = [](std::string_view sFormula) {
    std::string sOut;
    AppendXlsFormula(sFormula, sOut);
    return sOut;
  };
  using namespace std::string_view_literals;
  EXPECT_EQ(Tokens("A1+$B$2"), "\x0B\0\x44\0\0\0\xC0\x44\1\0\1\0\x03"sv);
  // What SUM takes are references; an array function hands its wish down to what is calculated for it.
  EXPECT_EQ(Tokens("SUM(A1:A2)"), "\x0D\0\x25\0\0\1\0\0\xC0\0\xC0\x42\1\4\0"sv);
  EXPECT_EQ(Tokens("SUMPRODUCT(A1:A2*2)"), "\x11\0\x65\0\0\1\0\0\xC0\0\xC0\x1E\2\0\5\x42\1\xE4\0"sv);
  for (const std::string_view sFormula : {"A70000", "XFD1", "Sheet2!A1", "{1,2}", "A1+", "XLOOKUP(A1,B1:B2,C1:C2)"})
    EXPECT_EQ(Tokens(sFormula), "") << sFormula;
  EXPECT_EQ(Tokens("\"" + std::string(256, 'x') + "\""), "");
}

TEST(XlsCellTable, JoinsNeighboursAndIndexesBlocksOfRows) {
  clsXlsCellTable table;
  table.StartRow(3);
  table.AddNumber(1, 15, 1);
  table.AddNumber(2, 16, 2);
  table.AddNumber(4, 15, 3);
  table.AddBlank(5, 20);
  table.AddBlank(6, 20);
  table.StartRow(80);
  table.AddNumber(0, 15, 0.123);
  table.Finish();
  std::vector<uint16_t> ids;
  clsXlsRecordReader reader(table.Bytes(), 0);
  XlsRecord record;
  while (reader.Next(record)) ids.push_back(record.nId);
  EXPECT_EQ(ids, (std::vector<uint16_t>{xls::kRow, xls::kMulRk, xls::kRk, xls::kMulBlank, xls::kDbCell, xls::kRow,
                                        xls::kNumber, xls::kDbCell}));
  const std::string sIndex = table.Index(1000, 500);
  EXPECT_EQ(sIndex.size(), table.IndexBytes());
  EXPECT_EQ(GetU32(sIndex, 8), 3U);
  EXPECT_EQ(GetU32(sIndex, 12), 81U);
  ASSERT_EQ(sIndex.size(), 20U + 3 * 4);  // rows 4 to 35, 36 to 67 (none), 68 to 99
  for (size_t nEntry = 20; nEntry < 32; nEntry += 4) {
    const size_t nDbCell = GetU32(sIndex, nEntry) - 1000;
    EXPECT_EQ(GetU16(table.Bytes(), nDbCell), xls::kDbCell);
    EXPECT_EQ(GetU16(table.Bytes(), nDbCell - GetU32(table.Bytes(), nDbCell + 4)), xls::kRow);
  }
}

}  // namespace
}  // namespace quillon
