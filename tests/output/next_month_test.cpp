// The next report into a workbook that is there: what its cells are then, and how they show.

#include <array>
#include <filesystem>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "clsPackageFixture.h"
#include "clsSheetCursor.h"
#include "clsXlsxStyles.h"
#include "clsXmlScanner.h"
#include "modColumnTyping.h"
#include "modExcelLink.h"
#include "modSettling.h"
#include "modShownByCode.h"

namespace quillon {
namespace {

struct Written {
  int64_t nRow;
  int nColumn;
  std::string sText;
};

struct SheetCell {
  int64_t nRow = 0;
  int nColumn = 0;
  std::string sType, sCode, sContent;
  bool operator==(const SheetCell&) const = default;
};

/// Cells of a sheet that hold something.
std::vector<SheetCell> CellsIn(const std::string& sPath, std::string_view sSheet = "xl/worksheets/sheet1.xml") {
  clsXlsxStyles styles;
  EXPECT_TRUE(styles.Load(PartIn(sPath, "xl/styles.xml")));
  const std::string sBytes = PartIn(sPath, sSheet);
  clsXmlScanner scanner(sBytes);
  clsSheetCursor cursor;
  std::vector<SheetCell> cells;
  SheetCell cell;
  while (scanner.Next() != XmlToken::End && scanner.Token() != XmlToken::Failed) {
    const auto event = cursor.Look(scanner);
    EXPECT_NE(event, clsSheetCursor::Event::Damaged);
    if (event == clsSheetCursor::Event::Cell)
      cell = {
          cursor.Row(), cursor.Column(), scanner.AttributeText("t"), std::string(styles.CodeOf(cursor.Style())), {}};
    if (scanner.Token() != XmlToken::Text || !cursor.InSheetData()) continue;
    cells.push_back(cell);
    cells.back().sContent = std::string(scanner.Parent()) + "=";
    scanner.AppendText(cells.back().sContent);
  }
  EXPECT_EQ(scanner.Token(), XmlToken::End);
  return cells;
}

void PrintTo(const SheetCell& cell, std::ostream* pOut) {
  *pOut << cell.nRow << "," << cell.nColumn << " " << cell.sType << "[" << cell.sCode << "]" << cell.sContent;
}

constexpr std::string_view kTexts[] = {"12",
                                       "1,234.50",
                                       "(7)",
                                       "7%",
                                       "12/31/2024",
                                       "1/2/24",
                                       "13/2/24",
                                       "007",
                                       "5.",
                                       "12.5E+3",
                                       "TRUE",
                                       "=A1+1",
                                       "=No!A1",
                                       "  ",
                                       " a  b ",
                                       "$5",
                                       "2024-12-31",
                                       "=====",
                                       "<&>\"",
                                       "\x01_x0041_",
                                       "1.5E+3",
                                       "-0",
                                       "12345678901234567",
                                       "\xC3\xA9\xE2\x82\xAC",
                                       "#N/A"};

/// Cells row by row, at most places empty, with texts of every kind.
std::vector<Written> SomeCells(std::mt19937& chance) {
  std::vector<Written> cells;
  const int nKinds = 1 + static_cast<int>(chance() % std::size(kTexts));
  const int64_t nRows = 1 + static_cast<int64_t>(chance() % 30);
  for (int64_t nRow = 1 + static_cast<int64_t>(chance() % 3); nRow <= nRows; ++nRow)
    for (int nColumn = 1; nColumn <= 30; ++nColumn)
      if (chance() % 3 == 0)
        cells.push_back({nRow, nColumn, std::string(kTexts[(chance() % static_cast<unsigned>(nKinds))])});
  return cells;
}

void Write(clsWorkbook& workbook, const std::vector<Written>& cells, int64_t nTable, const std::string& sPath) {
  Failure failure;
  bool bBegun = false;
  for (const Written& cell : cells) {
    if (cell.nRow >= nTable && !std::exchange(bBegun, true)) workbook.BeginTable(1);
    EXPECT_TRUE(workbook.WriteCell(1, cell.nRow, cell.nColumn, cell.sText, failure)) << failure.sText;
  }
  EXPECT_TRUE(workbook.SaveAs(sPath, kFormatXlsx, failure)) << failure.sText;
}

TEST(NextMonth, ASheetOfOurOwnIsTheSameWrittenAnewMergedOrNew) {
  clsTempFolder folder;
  std::mt19937 chance(20);
  for (int nRound = 0; nRound < 15; ++nRound) {
    const auto last = SomeCells(chance), next = SomeCells(chance);
    const auto nTable = static_cast<int64_t>(chance() % 40);
    Write(*NewExcelWorkbook(kFormatXlsx, {}), last, nTable, folder.Path("old.xlsx"));
    Write(*NewExcelWorkbook(kFormatXlsx, {}), next, nTable, folder.Path("new.xlsx"));
    for (const bool bLookFirst : {false, true}) {
      const auto workbook = OpenExcelWorkbook(folder.Path("old.xlsx"), {});
      Failure failure;
      std::string sText;
      // A sheet that was looked into is merged.
      if (bLookFirst) {
        EXPECT_TRUE(workbook->ReadCell(1, 1, 1, sText, failure));
      }
      EXPECT_TRUE(workbook->ClearContents(1, *workbook->ActiveUsedRange(), failure));
      Write(*workbook, next, nTable, folder.Path(bLookFirst ? "merged.xlsx" : "anew.xlsx"));
    }
    ASSERT_EQ(CellsIn(folder.Path("anew.xlsx")), CellsIn(folder.Path("new.xlsx"))) << nRound;
    ASSERT_EQ(CellsIn(folder.Path("merged.xlsx")), CellsIn(folder.Path("new.xlsx"))) << nRound;
  }
}

TEST(NextMonth, NothingOfTheOldReportIsLeftInTheFile) {
  clsTempFolder folder;
  for (const char* const pName : {"a.xlsx", "a.xls"}) {
    const int32_t lFormat = OutputFormatOfPath(pName);
    for (const std::string sText : {"a secret of January", "of February"}) {
      Failure failure;
      const auto workbook = OpenExcelWorkbook(folder.Path(pName), {});
      EXPECT_TRUE(workbook->ClearContents(1, *workbook->ActiveUsedRange(), failure));
      EXPECT_TRUE(workbook->WriteCell(1, 1, 1, sText, failure));
      EXPECT_TRUE(workbook->SaveAs(folder.Path(pName), lFormat, failure)) << failure.sText;
    }
    std::string sAll = folder.Read(pName);
    if (lFormat == kFormatXlsx) sAll = PartIn(folder.Path(pName), "xl/worksheets/sheet1.xml");
    EXPECT_NE(sAll.find("of February"), std::string::npos) << pName;
    EXPECT_EQ(sAll.find("secret"), std::string::npos) << pName;
  }
}

class NextMonthPackage : public clsPackageFixture {
 protected:
  /// A1 in a number format of the user's, with 1 in it.
  void MakeWith(std::string_view sCode) {
    Parts parts = GoodParts();
    std::string sEscaped;
    AppendEscaped(sCode, sEscaped);
    parts["xl/styles.xml"] = "<styleSheet xmlns=\"" + std::string(kMain) +
                             "\"><numFmts count=\"1\"><numFmt numFmtId=\"170\" formatCode=\"" + sEscaped +
                             "\"/></numFmts><cellXfs count=\"2\"><xf numFmtId=\"0\"/><xf numFmtId=\"170\" "
                             "fillId=\"7\"/></cellXfs></styleSheet>";
    parts["xl/_rels/workbook.xml.rels"] =
        Relations(Relation("a", "worksheet", "one.xml") + Relation("b", "worksheet", "two.xml") +
                  Relation("c", "styles", "styles.xml"));
    parts["xl/one.xml"] = Sheet("<row r=\"1\"><c r=\"A1\" s=\"1\"><v>1</v></c></row>");
    Make(parts);
  }
  static void AppendEscaped(std::string_view sText, std::string& sOut) {
    for (const char ch : sText) sOut += ch == '"' ? "&quot;" : std::string(1, ch);
  }
  /// What A1 shows when the text was written to it, and the notes.
  std::string Shown(std::string_view sText, bool bClear, std::vector<std::string>& notes) {
    Failure failure;
    auto workbook = Open(failure);
    if (bClear) {
      EXPECT_TRUE(workbook->ClearContents(1, {1, 1, 1, 1}, failure));
    }
    EXPECT_TRUE(workbook->WriteCell(1, 1, 1, sText, failure) &&
                workbook->SaveAs(folder_.Path("book.xlsx"), kFormatXlsx, failure));
    notes = workbook->Notes();
    const std::vector<SheetCell> cells = CellsIn(folder_.Path("book.xlsx"), "xl/one.xml");
    EXPECT_EQ(cells.size(), 1U);
    if (cells.empty() || cells[0].sType == "inlineStr") return "a text";
    std::string sShown;
    EXPECT_TRUE(AppendShownByCode(cells[0].sContent.substr(2), cells[0].sCode, sShown)) << cells[0].sCode;
    sShown.erase(sShown.find_last_not_of(' ') + 1);
    return sShown;
  }
  bool KeepsTheFormat() { return Part("xl/one.xml").find("<c r=\"A1\" s=\"1\"") != std::string::npos; }
};

/// A number format of the user's, a text of the report, and whether the cell keeps the one for the other.
struct FormatCase {
  std::string_view sCode, sText;
  bool bKept;
};
constexpr FormatCase kFormatCases[] = {{"\"$\"#,##0.00", "$1,234.50", true},
                                       {"\"$\"#,##0.00", "$1,234.5", false},
                                       {"\"$\"#,##0", "1,234.50", false},
                                       {"#,##0;[Red]-#,##0", "-1,234", true},
                                       {"#,##0;[Red]\\(#,##0\\)", "(1,234)", true},
                                       {"#,##0;[Red]\\(#,##0\\)", "-1,234", false},
                                       {"0%", "7%", true},
                                       {"0%", "7", false},
                                       {"0%", "7.5%", false},
                                       {"0.0E+0", "1.5E+3", true},
                                       {"yyyy\\-mm\\-dd", "2024-12-31", true},
                                       {"yyyy\\-mm\\-dd", "12/31/2024", false},
                                       {"#,##0.00", "2024-12-31", false},
                                       {"yyyy\\-mm\\-dd", "1,234", false},
                                       {"#,##0,", "1,234", false},
                                       {"[>9]0;0.0", "10", false},
                                       {"0 \"kg\"", "12", false},
                                       {"0.00_)", "12.50", true}};

TEST_F(NextMonthPackage, AnEmptiedCellShowsTheValueAsTheReportDoes) {
  for (const FormatCase& row : kFormatCases) {
    MakeWith(row.sCode);
    std::vector<std::string> notes;
    EXPECT_EQ(Shown(row.sText, true, notes), row.sText) << row.sCode;
    EXPECT_EQ(KeepsTheFormat(), row.bKept) << row.sCode << " " << row.sText;
    EXPECT_EQ(notes.size(), row.bKept ? 0U : 1U) << row.sCode << " " << row.sText;
    const std::string sStyles = Part("xl/styles.xml");
    EXPECT_EQ(sStyles.find("fillId=\"7\"") != sStyles.rfind("fillId=\"7\""), !row.bKept) << "the fill stays";
  }
}

TEST_F(NextMonthPackage, ACellThatWasNotEmptiedTakesOnlyWhatItsFormatIsFor) {
  for (const auto& [sCode, sText, sShown] :
       std::vector<std::array<std::string_view, 3>>{{"0%", "7", "a text"},
                                                    {"0%", "7%", "7%"},
                                                    {"#,##0.00", "7", "7.00"},
                                                    {"#,##0.00", "2024-12-31", "a text"},
                                                    {"yyyy\\-mm\\-dd", "12/31/2024", "2024-12-31"},
                                                    {"yyyy\\-mm\\-dd", "45657", "a text"},
                                                    {"@", "7", "a text"}}) {
    MakeWith(sCode);
    std::vector<std::string> notes;
    EXPECT_EQ(Shown(sText, false, notes), sShown) << sCode << " " << sText;
    EXPECT_TRUE(KeepsTheFormat()) << sCode;
    EXPECT_TRUE(notes.empty());
  }
}

/// The days of a column's cells, "t" for a text, and "?" behind them if nobody knows the order for sure.
std::string Dates(const std::vector<std::string_view>& texts, const CellTypingOptions& options) {
  clsCellStore cells;
  int64_t nRow = 0;
  for (const std::string_view sText : texts) cells.Write(++nRow, 1, sText);
  clsSheetTyping typing(options);
  typing.NoteAll(cells);
  typing.Decide();
  std::string sAll, sScratch, sShown;
  for (nRow = 1; nRow <= static_cast<int64_t>(texts.size()); ++nRow) {
    const TypedCell cell = TypeCell(texts[static_cast<size_t>(nRow) - 1], options, typing.RuleOf(nRow, 1), sScratch);
    sShown.clear();
    if (cell.kind == CellKind::Date) AppendShownByCode(cell.sDigits, "yyyy-mm-dd", sShown);
    sAll += (sAll.empty() ? "" : " ") + (sShown.empty() ? "t" : sShown);
  }
  return sAll + (typing.OrderIsOpen() ? " ?" : "");
}

TEST(DateOrder, IsToldByTheColumnElseByTheLocale) {
  struct Case {
    std::vector<std::string_view> texts;
    std::string_view sMonthUsual, sDayUsual;
  };
  for (const Case& row : std::vector<Case>{
           {{"1/2/24"}, "2024-01-02 ?", "2024-02-01 ?"},
           {{"1/2/24", "13/2/24"}, "2024-02-01 2024-02-13", "2024-02-01 2024-02-13"},
           {{"2/13/24", "1/2/24"}, "2024-02-13 2024-01-02", "2024-02-13 2024-01-02"},
           {{"13/2/24", "2/13/24"}, "t t", "t t"},
           {{"1/2/24", "1/1/240"}, "t t", "t t"},
           {{"1/2/24", "13-2-24"}, "2024-01-02 2024-02-13 ?", "2024-02-01 2024-02-13 ?"},
           {{"1.2.24"}, "t", "2024-02-01 ?"},
           {{"1.2.24", "13.2.24"}, "2024-02-01 2024-02-13", "2024-02-01 2024-02-13"},
           {{"2.13.24"}, "t", "t"},
           {{"2/29/24", "2/29/23"}, "t t", "t t"},
           {{"2024/1/2", "2024/13/2"}, "t t", "t t"},
           {{"2024-01-02"}, "2024-01-02", "2024-01-02"},
           {{"12/31/29", "1/1/30"}, "2029-12-31 1930-01-01", "2029-12-31 1930-01-01"},
           {{" 13/2/24", "1/2/24  ", "", "note"}, "2024-02-13 2024-02-01 t t", "2024-02-13 2024-02-01 t t"}}) {
    EXPECT_EQ(Dates(row.texts, {}), row.sMonthUsual) << row.texts[0];
    EXPECT_EQ(Dates(row.texts, {.bDayFirst = true}), row.sDayUsual) << row.texts[0];
  }
}

TEST(DateOrder, ThatWasChosenHoldsWhateverTheColumnOrLocaleSay) {
  for (const bool bLocale : {false, true})
    for (const auto& [sOrder, texts, sExpected] :
         std::vector<std::tuple<std::string_view, std::vector<std::string_view>, std::string_view>>{
             {"mdy", {"1/2/24"}, "2024-01-02"},
             {"MDY", {"13/2/24", "1/2/24"}, "t t"},
             {"dmy", {"1/2/24", "1-2-2024", "1.2.24"}, "2024-02-01 2024-02-01 2024-02-01"},
             {"DmY", {"2/13/24"}, "t"},
             {"ymd", {"24/1/2", "24-01-02", "24.1.2"}, "2024-01-02 2024-01-02 2024-01-02"},
             {"ymd", {"24/13/1"}, "t"},
             {"dmy", {"2024-01-02"}, "2024-01-02"}}) {
      const auto order = DateOrderOf(sOrder);
      ASSERT_TRUE(order) << sOrder;
      EXPECT_EQ(Dates(texts, {.bDayFirst = bLocale, .order = *order}), sExpected) << sOrder << texts[0];
    }
  for (const std::string_view sWord : {"", "ydm", "mdyy", "m/d/y", "auto"}) EXPECT_FALSE(DateOrderOf(sWord)) << sWord;
}

TEST(DateOrder, OfOneTableSaysNothingOfTheNext) {
  clsTempFolder folder;
  Failure failure;
  for (const char* const pName : {"a.xlsx", "a.xls"}) {
    for (const bool bTwo : {false, true}) {
      std::filesystem::remove(folder.Path(pName));
      auto workbook = OpenExcelWorkbook(folder.Path(pName), {});
      EXPECT_TRUE(workbook->WriteCell(1, 1, 1, "13/2/24", failure));
      if (bTwo) workbook->BeginTable(1);
      EXPECT_TRUE(workbook->WriteCell(1, 2, 1, "1/2/24", failure));
      EXPECT_TRUE(workbook->SaveAs(folder.Path(pName), OutputFormatOfPath(pName), failure)) << failure.sText;
      const std::vector<std::string> notes = workbook->Notes();
      ASSERT_EQ(notes.size(), bTwo ? 1U : 0U) << pName;
      if (!bTwo) continue;
      EXPECT_EQ(notes[0], "Dates that can be read both ways were taken as month before day, as is usual here");
    }
  }
}

}  // namespace
}  // namespace quillon
