// Tables of a sheet, and what else follows its data, from one month's report to the next.

#include <tuple>
#include <utility>
#include <vector>

#include "clsPackageFixture.h"
#include "modTablePart.h"
#include "modXmlText.h"

namespace quillon {
namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string Cell(std::string_view sPlace, std::string_view sText) {
  std::string sOut = "<c r=\"" + std::string(sPlace) + "\" t=\"inlineStr\"><is><t>";
  AppendXmlText(sOut, sText);
  return sOut + "</t></is></c>";
}

/// Rows of texts in columns A and B.
std::string DataOf(const Rows& rows) {
  std::string sOut;
  for (size_t i = 0; i < rows.size(); ++i) {
    const std::string sRow = std::to_string(i + 1);
    sOut += "<row r=\"" + sRow + "\">";
    for (size_t k = 0; k < rows[i].size(); ++k)
      if (!rows[i][k].empty()) sOut += Cell(std::string(1, static_cast<char>('A' + k)) + sRow, rows[i][k]);
    sOut += "</row>";
  }
  return sOut;
}

std::string TablePart(std::string_view sName, std::string_view sRef, std::string_view sAttributes,
                      std::string_view sFilter, std::string_view sColumns) {
  std::string sOut = "<table xmlns=\"" + std::string(kMain) + "\" id=\"1\" displayName=\"" + std::string(sName) +
                     "\" ref=\"" + std::string(sRef) + "\" " + std::string(sAttributes) + ">";
  if (!sFilter.empty()) sOut += "<autoFilter ref=\"" + std::string(sFilter) + "\"/>";
  return sOut + "<tableColumns>" + std::string(sColumns) + "</tableColumns></table>";
}

constexpr std::string_view kTwoColumns =
    "<tableColumn id=\"1\" name=\"Item\" totalsRowLabel=\"Sum\"/>"
    "<tableColumn id=\"2\" name=\"Amount\" totalsRowFunction=\"sum\"/>";
const Rows kMonth = {{"Item", "Amount"}, {"a", "1"}, {"b", "2"}, {"c", "3"}};

class ExistingTables : public clsPackageFixture {
 protected:
  /// A book whose first sheet has the rows and a table in each of the parts.
  void MakeTables(const Rows& rows, const std::vector<std::string>& tables, std::string_view sWorkbook = {}) {
    Parts parts = GoodParts();
    parts["xl/one.xml"] = Sheet(DataOf(rows));
    parts["xl/two.xml"] = Sheet("<row r=\"1\"><c r=\"A1\"><f>SUM(T[Amount])</f></c></row>");
    parts["xl/workbook.xml"] = WorkbookOf(sWorkbook);
    std::string sRelations;
    for (size_t i = 0; i < tables.size(); ++i) {
      const std::string sPart = "t" + std::to_string(i + 1) + ".xml";
      parts["xl/" + sPart] = tables[i];
      sRelations += Relation(sPart, "table", sPart);
    }
    parts["xl/_rels/one.xml.rels"] = Relations(sRelations);
    Make(parts);
  }
  /// Writes the rows to the first sheet, emptied before or not, and gives the notes.
  std::vector<std::string> Report(const Rows& rows, bool bClear = true, int64_t nRow = 1) {
    Failure failure;
    const auto workbook = Open(failure);
    EXPECT_NE(workbook, nullptr) << failure.sText;
    if (bClear) {
      EXPECT_TRUE(workbook->ClearContents(1, *workbook->ActiveUsedRange(), failure));
    }
    for (const auto& row : rows) {
      for (size_t k = 0; k < row.size(); ++k)
        EXPECT_TRUE(workbook->WriteCell(1, nRow, static_cast<int>(k) + 1, row[k], failure)) << failure.sText;
      ++nRow;
    }
    EXPECT_TRUE(workbook->SaveAs(folder_.Path("book.xlsx"), kFormatXlsx, failure)) << failure.sText;
    return workbook->Notes();
  }
  XlsxTable Table(std::string_view sPart = "xl/t1.xml") {
    XlsxTable table;
    EXPECT_TRUE(ReadTablePart(Part(sPart), table));
    return table;
  }
  std::string Shown(int64_t nRow, int nColumn) {
    Failure failure;
    std::string sText;
    EXPECT_TRUE(Open(failure)->ReadCell(1, nRow, nColumn, sText, failure)) << failure.sText;
    return sText;
  }
};

Rows MonthOf(size_t nRows) {
  Rows rows = {{"Item", "Amount"}};
  for (size_t i = 0; i < nRows; ++i) rows.push_back({"item", std::to_string(i)});
  return rows;
}

TEST_F(ExistingTables, GrowAndShrinkWithTheRowsMonthAfterMonth) {
  MakeTables(kMonth, {TablePart("T", "A1:B4", "", "A1:B4", kTwoColumns)});
  for (const auto& [nRows, sRef] : std::vector<std::pair<size_t, std::string>>{
           {1, "A1:B2"}, {7, "A1:B8"}, {0, "A1:B2"}, {2000, "A1:B2001"}, {3, "A1:B4"}}) {
    Report(MonthOf(nRows));
    EXPECT_EQ(CellRangeText(Table().range), sRef);
    EXPECT_NE(Part("xl/t1.xml").find("<autoFilter ref=\"" + sRef + "\""), std::string::npos) << sRef;
  }
}

TEST_F(ExistingTables, TotalsStandBelowTheRowsAndNowhereElse) {
  Rows rows = kMonth;
  rows.push_back({"Sum", "6"});
  MakeTables(rows, {TablePart("T", "A1:B5", "totalsRowCount=\"1\"", "A1:B4", kTwoColumns)});
  int64_t nOld = 5;
  for (const auto& [nRows, nTotals] : std::vector<std::pair<size_t, int64_t>>{{1, 3}, {6, 8}, {0, 3}, {3, 5}}) {
    Report(MonthOf(nRows));
    EXPECT_EQ(Table().range.nBottom, nTotals);
    EXPECT_EQ(Shown(nTotals, 1), "Sum");
    const std::string sSheet = Part("xl/one.xml"), sFormula = "<f>SUBTOTAL(109,T[Amount])</f>";
    const size_t nFormula = sSheet.find("<c r=\"B" + std::to_string(nTotals) + "\"");
    ASSERT_NE(nFormula, std::string::npos);
    EXPECT_EQ(sSheet.find(sFormula), sSheet.find("<f>", nFormula)) << "in its row";
    EXPECT_EQ(sSheet.find(sFormula), sSheet.rfind(sFormula)) << "once";
    const std::string sFilter = "<autoFilter ref=\"A1:B" + std::to_string(nTotals - 1) + "\"";
    EXPECT_NE(Part("xl/t1.xml").find(sFilter), std::string::npos) << "sorting leaves the totals where they are";
    if (nOld > nTotals) {
      EXPECT_EQ(Shown(nOld, 1), "") << "last month's totals";
    }
    nOld = nTotals;
  }
}

TEST_F(ExistingTables, WithoutClearingTakeInWhatIsWrittenRightBelow) {
  for (const auto& [nRow, sTotals, sRef] : std::vector<std::tuple<int64_t, std::string, std::string>>{
           {5, "", "A1:B6"}, {6, "", "A1:B4"}, {5, "totalsRowCount=\"1\"", "A1:B4"}}) {
    MakeTables(kMonth, {TablePart("T", "A1:B4", sTotals, "", kTwoColumns)});
    Report({{"d", "4"}, {"e", "5"}}, false, nRow);
    EXPECT_EQ(CellRangeText(Table().range), sRef) << nRow << sTotals;
    EXPECT_EQ(Shown(2, 1), "a");
  }
}

TEST_F(ExistingTables, NeverRunIntoTheNextOneAndCountWhatLiesBehind) {
  Rows rows = kMonth;
  rows.insert(rows.end(), {{}, {"Item", "Amount"}, {"x", "7"}});
  MakeTables(rows, {TablePart("T", "A1:B4", "", "", kTwoColumns), TablePart("U", "A6:B7", "", "", kTwoColumns)});
  EXPECT_TRUE(Report(MonthOf(9)).empty()) << "each row lies in one of them";
  EXPECT_EQ(CellRangeText(Table().range), "A1:B5");
  EXPECT_EQ(CellRangeText(Table("xl/t2.xml").range), "A6:B10");
  EXPECT_EQ(Shown(6, 1), "item") << "the cell keeps what was written, as the second table's heading";

  MakeTables(kMonth, {TablePart("T", "A1:B4", "totalsRowCount=\"1\"", "", kTwoColumns)});
  EXPECT_EQ(Report(MonthOf(6), false), std::vector<std::string>{"Rows that lie behind the end of a table: 3"});
  EXPECT_EQ(CellRangeText(Table().range), "A1:B4");
}

TEST_F(ExistingTables, RowsWithBlanksAloneLieBehindNoTable) {
  MakeTables(kMonth, {TablePart("T", "A1:B4", "totalsRowCount=\"1\"", "", kTwoColumns)});
  const Rows rows = {{"Item", "Amount"}, {"a", "1"}, {"b", "2"}, {"c", "3"}, {"  ", ""}, {"d", "4"}, {"", "   "}};
  EXPECT_EQ(Report(rows, false), std::vector<std::string>{"Rows that lie behind the end of a table: 1"});
}

TEST_F(ExistingTables, ColumnsThatAreWorkedOutGetTheirFormulaInEachRow) {
  const std::string sColumns = std::string(kTwoColumns) +
                               "<tableColumn id=\"3\" name=\"Twice\"><calculatedColumnFormula>T[[#This Row],[Amount]]*2"
                               "</calculatedColumnFormula></tableColumn>";
  const Rows rows = {{"Item", "Amount", "Twice"}, {"a", "1", "2"}, {"b", "2", "4"}};
  // The cells of column C that hold the formula, with "Amount" called as it is given.
  const auto cells = [this](const std::string& sAmount) {
    const std::string sSheet = Part("xl/one.xml"), sFormula = "\"><f>T[[#This Row],[" + sAmount + "]]*2</f></c>";
    std::string sCells;
    for (size_t n = sSheet.find(sFormula); n != std::string::npos; n = sSheet.find(sFormula, n + 1)) {
      const size_t nPlace = sSheet.rfind("r=\"", n) + 3;
      sCells += sSheet.substr(nPlace, n - nPlace) + " ";
    }
    return sCells;
  };
  MakeTables(rows, {TablePart("T", "A1:C3", "", "A1:C3", sColumns)});
  for (const auto& [nRows, sCells] :
       std::vector<std::pair<size_t, std::string>>{{4, "C2 C3 C4 C5 "}, {1, "C2 "}, {2, "C2 C3 "}}) {
    Report(MonthOf(nRows));
    EXPECT_EQ(cells("Amount"), sCells);
    EXPECT_EQ(CellRangeText(Table().range), "A1:C" + std::to_string(nRows + 1));
    EXPECT_EQ(Shown(1, 3), "Twice") << "no column of the report";
  }
  Report({{"d", "4"}}, false, 4);
  EXPECT_EQ(cells("Amount"), "C2 C3 C4 ") << "below the others";
  Report({{"Item", "Net"}, {"a", "1"}, {"b", "2", "own"}});
  EXPECT_EQ(cells("Net"), "C2 ") << "by the new heading, and not over what the report has there";
  EXPECT_EQ(Shown(3, 3), "own");
}

TEST_F(ExistingTables, ColumnsBearTheNamesOfTheirHeadings) {
  struct Case {
    std::string sFirst, sSecond, sFirstName, sSecondName, sFormula;
  };
  for (const Case& row : std::vector<Case>{{"Item", "Net", "Item", "Net", "SUM(T[Net])"},
                                           {"Net", "NET", "Net", "NET (2)", "SUM(T[NET (2)])"},
                                           {"Column2", "", "Column2", "Column2 (2)", "SUM(T[Column2 (2)])"},
                                           {"", "   ", "Column1", "Column2", "SUM(T[Column2])"},
                                           {"\xC3\x84", "\xC3\xA4", "\xC3\x84", "\xC3\xA4 (2)", "SUM(T[\xC3\xA4 (2)])"},
                                           {"2024", "=A1+1", "2024", "=A1+1", "SUM(T[=A1+1])"},
                                           {"Amount", "Item", "Amount", "Item", "SUM(T[Item])"},
                                           {"a", "[#1'@]", "a", "[#1'@]", "SUM(T['['#1'''@']])"},
                                           {"a", "_x0041_ \"<&>\"\n\tb", "a", "_x0041_ \"<&>\"\n\tb", ""}}) {
    MakeTables(kMonth, {TablePart("T", "A1:B4", "", "", kTwoColumns)});
    Report({{row.sFirst, row.sSecond}, {"a", "1"}});
    const XlsxTable table = Table();
    ASSERT_EQ(table.columns.size(), 2U);
    EXPECT_EQ(table.columns[0].sName, row.sFirstName);
    EXPECT_EQ(table.columns[1].sName, row.sSecondName);
    EXPECT_EQ(Shown(1, 1), row.sFirstName) << "a cell and its column bear one name";
    EXPECT_EQ(Shown(1, 2), row.sSecondName);
    EXPECT_NE(Part("xl/one.xml").find("<c r=\"B1\" t=\"inlineStr\""), std::string::npos) << "a name is a text";
    EXPECT_NE(Part("xl/two.xml").find("<f>" + row.sFormula), std::string::npos) << Part("xl/two.xml");
  }
}

TEST_F(ExistingTables, DamagedOnesAreRefusedAndTheFileStays) {
  const std::string sGood = TablePart("T", "A1:B4", "", "", kTwoColumns);
  const std::string sThird = "<tableColumn id=\"3\" name=\"Far\"/>";
  std::string sMany;
  for (int i = 0; i <= kMaxSheetColumns; ++i) sMany += "<tableColumn name=\"c" + std::to_string(i) + "\"/>";
  for (const std::string& sPart :
       {std::string(), std::string("<table/>"), "<list" + sGood.substr(6), sGood.substr(0, sGood.size() - 3),
        TablePart("T", "A0:B4", "", "", kTwoColumns), TablePart("T", "A1:XFE4", "", "", kTwoColumns),
        TablePart("T", "A1:B1048577", "", "", kTwoColumns), TablePart("T", "", "", "", kTwoColumns),
        TablePart("T", "A1:B4", "", "", std::string(kTwoColumns) + sThird),
        TablePart("T", "A1:C4", "", "", kTwoColumns), TablePart("T", "A1:XFD4", "", "", sMany),
        TablePart("T", "A1:B4", "", "", "")}) {
    MakeTables(kMonth, {sPart});
    const std::string sBefore = folder_.Read("book.xlsx");
    Failure failure;
    const auto workbook = Open(failure);
    ASSERT_NE(workbook, nullptr) << failure.sText;
    EXPECT_TRUE(workbook->WriteCell(1, 1, 1, "x", failure)) << failure.sText;
    EXPECT_FALSE(workbook->SaveAs(folder_.Path("book.xlsx"), kFormatXlsx, failure)) << sPart.substr(0, 300);
    EXPECT_NE(failure.sText.find("xl/t1.xml: The existing workbook is damaged."), std::string::npos) << failure.sText;
    EXPECT_TRUE(folder_.Read("book.xlsx") == sBefore) << sPart.substr(0, 300);
  }
}

TEST_F(ExistingTables, NamesThatCoveredExactlyTheDataCoverTheNewData) {
  // What it is before a report of 7 rows in the place of 3, and after.
  const std::vector<std::pair<std::string, std::string>> names = {
      {"One!$A$1:$B$4", "One!$A$1:$B$8"},         {"One!$A$2:$B$4", "One!$A$2:$B$8"},
      {"'one'!$B$2:$B$4", "'one'!$B$2:$B$8"},     {"One!$A$1:$B$3", "One!$A$1:$B$3"},
      {"One!$A$1:$C$4", "One!$A$1:$C$4"},         {"One!$A$3:$B$4", "One!$A$3:$B$4"},
      {"Two!$A$1:$B$4", "Two!$A$1:$B$4"},         {"One!$A:$B", "One!$A:$B"},
      {"\"One!$A$1:$B$4\"", "\"One!$A$1:$B$4\""}, {"One!$A$1:$B$4,One!$D$1", "One!$A$1:$B$4,One!$D$1"},
      {"[1]One!$A$1:$B$4", "[1]One!$A$1:$B$4"}};
  std::string sNames = "<definedNames>";
  for (size_t i = 0; i < names.size(); ++i)
    sNames += "<definedName name=\"n" + std::to_string(i) + "\">" + names[i].first + "</definedName>";
  MakeTables(kMonth, {}, sNames + "</definedNames>");
  Report(MonthOf(7));
  const std::string sBook = Part("xl/workbook.xml");
  for (size_t i = 0; i < names.size(); ++i) {
    const std::string sMark = "name=\"n" + std::to_string(i) + "\">";
    const size_t nStart = sBook.find(sMark) + sMark.size();
    EXPECT_EQ(sBook.substr(nStart, sBook.find('<', nStart) - nStart), names[i].second);
  }
}

TEST_F(ExistingTables, AFilterFollowsAndMergedOrProtectedCellsAreTold) {
  Parts parts = GoodParts();
  parts["xl/one.xml"] = Sheet(DataOf(kMonth),
                              "<sheetProtection sheet=\"1\"/><autoFilter ref=\"A1:B4\"/>"
                              "<mergeCells count=\"1\"><mergeCell ref=\"A6:B7\"/></mergeCells>");
  Make(parts);
  const std::vector<std::string> notes = Report({{"Item", "Amount"},
                                                 {"a", "1"},
                                                 {"b", "1"},
                                                 {"c", "1"},
                                                 {"d", "1"},
                                                 {"first is seen", "hidden"},
                                                 {"  ", ""},
                                                 {"e", "1"}});
  EXPECT_EQ(notes, (std::vector<std::string>{"Sheet \"One\" is protected, and was written all the same",
                                             "Values that lie in merged cells, where only the first is seen: 1"}));
  EXPECT_NE(Part("xl/one.xml").find("<autoFilter ref=\"A1:B8\"/>"), std::string::npos);
  EXPECT_EQ(Shown(6, 2), "hidden") << "the value is there all the same";
}

}  // namespace
}  // namespace quillon
