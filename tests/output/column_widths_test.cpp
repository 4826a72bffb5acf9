// Widths of columns: what a user has chosen stays, all else grows to show the values.

#include "modColumnWidths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "clsPackageFixture.h"
#include "modXlsColumns.h"
#include "modXlsLayout.h"

namespace quillon {
namespace {

std::string Rewritten(std::string_view sList, const std::vector<uint8_t>& longest, bool bAnew) {
  const std::string sPart =
      "<worksheet xmlns=\"" + std::string(kMain) + "\" xmlns:x=\"" + std::string(kMain) + "\">" + std::string(sList);
  clsXmlScanner scanner(sPart);
  scanner.Next();
  scanner.Next();
  std::string sOut;
  return clsColumnWidths(longest, bAnew).Rewrite(scanner, sOut) ? sOut : "damaged";
}

std::string List(std::string_view sEntries) {
  return "<cols>" + std::string(sEntries) + "</cols>";
}

struct ListCase {
  std::string sEntries;
  std::vector<uint8_t> longest;
  std::string sExpected;
};

TEST(ColumnWidths, GrowWhereNobodyHasChosenThem) {
  const std::string sOwn = "<col min=\"2\" max=\"2\" width=\"12\" customWidth=\"1\"/>";
  const std::string sOurs = "<col min=\"1\" max=\"1\" width=\"20.625\" customWidth=\"1\"/>";
  const std::string sHidden = "<col min=\"1\" max=\"1\" width=\"9\" hidden=\"1\" style=\"3\"/>";
  for (const ListCase& row : std::vector<ListCase>{
           {"<col min=\"1\" max=\"3\" width=\"9.14\"/>",
            {0, 20},
            "<col min=\"1\" max=\"1\" width=\"9.14\"/><col min=\"2\" max=\"2\" width=\"20.625\" customWidth=\"1\"/>"
            "<col min=\"3\" max=\"3\" width=\"9.14\"/>"},
           {sOwn, {0, 60}, sOwn},
           {sOwn, {9, 60, 8}, "<col min=\"1\" max=\"1\" width=\"9.625\" customWidth=\"1\"/>" + sOwn},
           {sOurs, {12}, sOurs},
           {sOurs, {20}, sOurs},
           {sOurs, {21}, "<col min=\"1\" max=\"1\" width=\"21.625\" customWidth=\"1\"/>"},
           {sHidden, {15}, "<col min=\"1\" max=\"1\" width=\"15.625\" hidden=\"1\" style=\"3\" customWidth=\"1\"/>"},
           {"<col min=\"3\" max=\"3\" width=\"30\"/><!-- kept -->",
            {0, 10, 25, 11},
            "<col min=\"2\" max=\"2\" width=\"10.625\" customWidth=\"1\"/><col min=\"3\" max=\"3\" width=\"30\"/>"
            "<!-- kept --><col min=\"4\" max=\"4\" width=\"11.625\" customWidth=\"1\"/>"},
           {"<col min=\"1\" max=\"16384\" width=\"9\"/>",
            {20, 20},
            "<col min=\"1\" max=\"1\" width=\"20.625\" customWidth=\"1\"/>"
            "<col min=\"2\" max=\"2\" width=\"20.625\" customWidth=\"1\"/><col min=\"3\" max=\"16384\" width=\"9\"/>"},
           {"", {0, 9}, "<col min=\"2\" max=\"2\" width=\"9.625\" customWidth=\"1\"/>"},
           {"", {8, 0}, ""}})
    EXPECT_EQ(Rewritten(List(row.sEntries), row.longest, false), List(row.sExpected)) << row.sEntries;
}

TEST(ColumnWidths, AreMadeAnewInAFileOfOurOwn) {
  const std::string sEntries =
      "<col min=\"1\" max=\"1\" width=\"20.625\" customWidth=\"1\"/><col min=\"2\" max=\"2\" width=\"33.625\"/>";
  EXPECT_EQ(Rewritten(List(sEntries), {12, 0, 3}, true),
            List("<col min=\"1\" max=\"1\" width=\"12.625\" customWidth=\"1\"/><col min=\"2\" max=\"2\" "
                 "width=\"33.625\"/><col min=\"3\" max=\"3\" width=\"8.625\" customWidth=\"1\"/>"));
  EXPECT_EQ(clsColumnWidths({0, 0}, true).NewList(""), "");
  EXPECT_EQ(clsColumnWidths({8, 9}, false).NewList("x:"),
            "<x:cols><x:col min=\"2\" max=\"2\" width=\"9.625\" customWidth=\"1\"/></x:cols>");
}

TEST(ColumnWidths, StrangeListsAreCopiedAndDamagedOnesTold) {
  for (const std::string sEntry :
       {"<col/>", "<col min=\"0\" max=\"2\"/>", "<col min=\"3\" max=\"2\"/>", "<col min=\"-1\" max=\"x\"/>",
        "<col min=\"99999999999\" max=\"1\"/>", "<other min=\"1\" max=\"1\"/>"})
    EXPECT_EQ(Rewritten(List(sEntry), {8}, false), List(sEntry));
  const std::string sHuge = "<col min=\"2\" max=\"4294967295\" width=\"40\"/>";
  EXPECT_EQ(Rewritten(List(sHuge), {0, 30}, false), List(sHuge));
  EXPECT_EQ(Rewritten("<cols/>", {0, 9}, false), List("<col min=\"2\" max=\"2\" width=\"9.625\" customWidth=\"1\"/>"));
  EXPECT_EQ(Rewritten("<x:cols></x:cols>", {9}, false),
            "<x:cols><x:col min=\"1\" max=\"1\" width=\"9.625\" customWidth=\"1\"/></x:cols>");
  for (const std::string_view sCut : {"<cols><col min=\"1\"", "<cols><col min=\"1\" max=\"1\"/>", "<cols></other>"})
    EXPECT_EQ(Rewritten(sCut, {9}, false), "damaged") << sCut;
}

/// A COLINFO as the tests name it.
struct XlsColumn {
  unsigned nFirst, nLast, nWidth, nXf = 15, nFlags = 0;
  bool operator==(const XlsColumn&) const = default;
};

std::string HeadOf(const std::vector<XlsColumn>& columns) {
  const XlsSheetHead head = MakeSheetHead({}, 0, 1, 0, 1);
  std::string sOut = head.sBof, sColumns;
  for (const XlsColumn& column : columns) {
    std::string sData;
    for (const unsigned n : {column.nFirst, column.nLast, column.nWidth, column.nXf, column.nFlags, 0U})
      PutU16(sData, n);
    PutRecord(sColumns, xls::kColInfo, sData);
  }
  XlsRecord record;
  for (clsXlsRecordReader reader(head.sRest, 0); reader.Next(record);) {
    if (record.nId == xls::kDimensions) sOut += sColumns;
    PutRecord(sOut, record.nId, record.sData);
  }
  return sOut;
}

/// The columns of a head, and that they stand together where a reader looks for them.
std::vector<XlsColumn> ColumnsIn(std::string_view sHead) {
  std::vector<XlsColumn> columns;
  std::vector<uint16_t> ids;
  XlsRecord record;
  clsXlsRecordReader reader(sHead, 0);
  while (reader.Next(record)) {
    if (ids.empty() || ids.back() != record.nId) ids.push_back(record.nId);
    if (record.nId != xls::kColInfo) continue;
    const auto at = [&record](size_t n) { return unsigned{GetU16(record.sData, 2 * n)}; };
    columns.push_back({at(0), at(1), at(2), at(3), at(4)});
  }
  EXPECT_FALSE(reader.Broken());
  EXPECT_EQ(std::count(ids.begin(), ids.end(), xls::kColInfo), columns.empty() ? 0 : 1);
  EXPECT_LT(std::find(ids.begin(), ids.end(), xls::kDefColWidth), std::find(ids.begin(), ids.end(), xls::kDimensions));
  EXPECT_EQ(ids.back(), xls::kDimensions) << "the last record of the head stays the last";
  return columns;
}

TEST(XlsColumns, GrowWhereNobodyHasChosenThem) {
  struct Case {
    std::vector<XlsColumn> columns;
    std::vector<uint8_t> longest;
    bool bAnew;
    std::vector<XlsColumn> expected;
  };
  const auto wide = [](unsigned nChars) { return XlsColumnWidth(nChars); };
  for (const Case& row :
       std::vector<Case>{{{}, {0, 8}, false, {}},
                         {{}, {0, 20}, false, {{1, 1, wide(20), 21}}},
                         {{}, {20, 20, 9}, false, {{0, 1, wide(20), 21}, {2, 2, wide(9), 21}}},
                         {{{0, 2, 3000, 17, 1}}, {60, 60}, false, {{0, 2, 3000, 17, 1}}},
                         {{{0, 2, wide(10), 17, 1}},
                          {0, 30},
                          false,
                          {{0, 0, wide(10), 17, 1}, {1, 1, wide(30), 17, 1}, {2, 2, wide(10), 17, 1}}},
                         {{{0, 0, wide(30)}}, {10}, false, {{0, 0, wide(30)}}},
                         {{{0, 0, wide(30)}}, {10}, true, {{0, 0, wide(10)}}},
                         {{{0, 255, 2340}}, {9, 20}, false, {{0, 0, wide(9)}, {1, 1, wide(20)}, {2, 255, 2340}}},
                         {{{0, 0xFFFF, wide(8)}}, {9}, false, {{0, 0, wide(9)}, {1, 255, wide(8)}}}}) {
    const std::string sHead = WithColumnWidths(HeadOf(row.columns), row.longest, row.bAnew, 21);
    EXPECT_EQ(ColumnsIn(sHead), row.expected) << testing::PrintToString(row.longest);
  }
}

TEST(XlsColumns, ShortRecordsDoNoHarm) {
  std::string sHead = HeadOf({}), sShort;
  PutRecord(sShort, xls::kColInfo, std::string_view("\0\0\xFF", 3));
  PutRecord(sShort, xls::kColInfo, {});
  sHead.insert(sHead.size() - 18, sShort);
  EXPECT_EQ(WithColumnWidths(sHead, std::vector<uint8_t>{8}, false, 15), sHead);
  EXPECT_EQ(ColumnsIn(WithColumnWidths(sHead, std::vector<uint8_t>{0, 30}, false, 15)).back(),
            (XlsColumn{1, 1, XlsColumnWidth(30)}));
}

}  // namespace
}  // namespace quillon
