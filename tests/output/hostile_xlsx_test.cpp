// Packages that are damaged, or made to do harm: one reason with advice, the file as it was.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "clsPackageFixture.h"
#include "clsXlsxStyles.h"
#include "clsXmlScanner.h"
#include "modFormulaText.h"
#include "modSheetFacts.h"

namespace quillon {
namespace {

class HostileXlsx : public clsPackageFixture {
 protected:
  /// The workbook doesn't open; the reason says where and what to do.
  void ExpectRefused(std::string_view sCase, std::string_view sReason) {
    const std::string sBefore = folder_.Read("book.xlsx");
    Failure failure;
    EXPECT_EQ(Open(failure), nullptr) << sCase;
    EXPECT_TRUE(failure.Failed()) << sCase;
    EXPECT_NE(failure.sText.find("book.xlsx"), std::string::npos) << failure.sText;
    EXPECT_NE(failure.sText.find(sReason), std::string::npos) << sCase << ": " << failure.sText;
    EXPECT_TRUE(folder_.Read("book.xlsx") == sBefore) << sCase;
  }
  /// Bytes of every place of sOld in the file become sNew.
  void Patch(std::string_view sOld, std::string_view sNew, size_t nBehind = 0) {
    std::string sBytes = folder_.Read("book.xlsx");
    for (size_t n = sBytes.find(sOld); n != std::string::npos; n = sBytes.find(sOld, n + 1))
      sBytes.replace(n + nBehind, sNew.size(), sNew);
    folder_.Write("book.xlsx", sBytes);
  }
};

TEST_F(HostileXlsx, a_package_cut_anywhere_is_refused) {
  Make(GoodParts());
  const std::string sWhole = folder_.Read("book.xlsx");
  for (size_t nLength = 1; nLength < sWhole.size(); nLength += 13) {
    folder_.Write("book.xlsx", sWhole.substr(0, nLength));
    ExpectRefused(std::to_string(nLength), "damaged");
  }
}

TEST_F(HostileXlsx, entries_that_could_do_harm_are_refused) {
  constexpr std::string_view kLocal = "PK\3\4", kCentral = "PK\1\2";
  for (const char* pName : {"../evil.xml", "xl/../../evil.xml", "/etc/evil.xml", "C:evil.xml", "xl\\..\\..\\evil"}) {
    Parts parts = GoodParts();
    parts[pName] = "x";
    Make(parts);
    ExpectRefused(pName, "damaged");
  }
  Parts twice = GoodParts();
  twice["xl/ONE.xml"] = "x";
  Make(twice);
  ExpectRefused("the same name twice", "damaged");

  Make(GoodParts());
  Patch(kLocal, std::string_view("\1\0", 2), 6);
  Patch(kCentral, std::string_view("\1\0", 2), 8);
  ExpectRefused("encrypted", "encrypted");

  Make(GoodParts());
  Patch(kLocal, std::string_view("\x0C\0", 2), 8);
  Patch(kCentral, std::string_view("\x0C\0", 2), 10);
  ExpectRefused("another packing", "damaged");

  Parts bomb = GoodParts();
  bomb["xl/worksheets/bomb.xml"] = std::string(size_t{64} << 20, '\0');
  Make(bomb);
  ExpectRefused("a bomb", "larger than can be changed safely");

  Parts many = GoodParts();
  for (int i = 0; i < 20001; ++i) many["xl/media/" + std::to_string(i)] = "";
  Make(many);
  ExpectRefused("too many", "larger than can be changed safely");
}

TEST_F(HostileXlsx, a_package_without_a_sound_workbook_is_refused) {
  for (const auto& [sName, sContent] : Parts{{"_rels/.rels", Relations("")},
                                             {"xl/workbook.xml", "<workbook/>"},
                                             {"xl/workbook.xml", "<workbook xmlns=\"urn:other\"/>"},
                                             {"xl/workbook.xml", "\1\2binary"},
                                             {"xl/_rels/workbook.xml.rels", "<Relationships><"}}) {
    Parts parts = GoodParts();
    parts[sName] = sContent;
    Make(parts);
    ExpectRefused(sName, "workbook");
  }
}

TEST(XmlScanner, a_plain_value_taken_at_once_leads_to_the_same_tokens_as_step_by_step) {
  struct Case {
    std::string sCell;
    std::optional<std::string_view> sValue;
  };
  const auto walk = [](const std::string& sXml, size_t nBlock, bool bAtOnce, std::optional<std::string>& sValue) {
    size_t nGiven = 0;
    clsXmlScanner scanner([&](char* pBuffer, size_t nBytes) {
      const size_t nNow = std::min({nBytes, nBlock, sXml.size() - nGiven});
      nGiven += sXml.copy(pBuffer, nNow, nGiven);
      return static_cast<int64_t>(nNow);
    });
    while (scanner.Next() != XmlToken::End && scanner.Token() != XmlToken::Failed && !scanner.IsMain("c")) continue;
    const auto sTaken = bAtOnce ? scanner.TakePlainValue() : std::nullopt;
    if (sTaken) sValue = *sTaken;
    while (scanner.Token() != XmlToken::Failed && scanner.Token() != XmlToken::End &&
           (scanner.Token() != XmlToken::EndTag || scanner.LocalName() != "c"))
      scanner.Next();
    std::string sTokens;
    do sTokens += std::to_string(scanner.Offset()) + std::string(scanner.Raw()) + std::to_string(scanner.Depth()) + "|";
    while (scanner.Token() != XmlToken::Failed && scanner.Next() != XmlToken::End);
    return sTokens;
  };
  for (const Case& row : std::vector<Case>{{"<c r=\"A1\"><v>12</v></c>", "12"},
                                           {"<c><v></v></c>", ""},
                                           {"<c><v>1</v ></c>", {}},
                                           {"<c><v>1</v></c >", {}},
                                           {"<c><v>&lt;</v></c>", {}},
                                           {"<c><v>&own;</v></c>", {}},
                                           {"<c><v a=\"b\">1</v></c>", {}},
                                           {"<c><v>1</v><v>2</v></c>", {}},
                                           {"<c><v>1</v></cc>", {}},
                                           {"<c><v>1</v></d>", {}},
                                           {"<c><f>1</f><v>1</v></c>", {}},
                                           {"<c/><v>1</v>", {}},
                                           {"<x:c><v>1</v></x:c>", {}},
                                           {"<c xmlns=\"urn:other\"><v>1</v></c><c><v>2</v></c>", "2"}}) {
    const std::string sXml =
        "<w xmlns=\"" + std::string(kMain) + "\" xmlns:x=\"" + std::string(kMain) + "\">" + row.sCell + "<c/></w>";
    std::optional<std::string> sValue, sNone;
    EXPECT_EQ(walk(sXml, sXml.size(), true, sValue), walk(sXml, sXml.size(), false, sNone)) << row.sCell;
    EXPECT_EQ(sValue, row.sValue) << row.sCell;
    for (size_t nBlock = 1; nBlock < sXml.size(); ++nBlock)
      EXPECT_EQ(walk(sXml, nBlock, true, sValue), walk(sXml, nBlock, false, sNone)) << row.sCell << nBlock;
  }
}

TEST_F(HostileXlsx, a_damaged_sheet_fails_every_write_and_leaves_the_file) {
  std::string sDeep;
  for (int i = 0; i < 10000; ++i) sDeep += "<a>";
  std::string sTooLong(clsXmlScanner::kMaxTokenBytes + (size_t{1} << 20), 'x');
  for (size_t i = 0; i < sTooLong.size(); i += 16) sTooLong[i] = static_cast<char>('a' + i * i / 256 % 23);
  for (const std::string& sXml : {Sheet("<row r=\"2\"/><row r=\"1\"/>"),
                                  Sheet("<row r=\"2\"/><row r=\"2\"/>"),
                                  Sheet("<row r=\"0\"/>"),
                                  Sheet("<row r=\"1048577\"/>"),
                                  Sheet("<row r=\"1\"><c r=\"B1\"/><c r=\"A1\"/></row>"),
                                  Sheet("<row r=\"1\"><c r=\"A1\"/><c r=\"A1\"/></row>"),
                                  Sheet("<row r=\"1\"><c r=\"A2\"/></row>"),
                                  Sheet("<row r=\"1\"><c xmlns=\"urn:other\" r=\"A1\"/><c r=\"B1\"/></row>"),
                                  Sheet("<row r=\"1\"><c r=\"XFE1\"/></row>"),
                                  Sheet("<row r=\"1\"><c r=\"A1\"></row>"),
                                  Sheet("<row r=1/>"),
                                  Sheet("<row r=\"1\" r/>"),
                                  Sheet("<row r=\"1\" r=\"1\"/>"),
                                  Sheet("<row r=\"1\"><c r=\"A1\" s=\"0\" s=\"1\"/></row>"),
                                  Sheet("<row r=\"1\"><c r=\"A1\"></c x></row>"),
                                  Sheet("&own;"),
                                  Sheet("&#0;"),
                                  Sheet("&#xD800;"),
                                  Sheet("<"),
                                  Sheet(sDeep),
                                  Sheet(sTooLong),
                                  Sheet("</sheetData><sheetData>"),
                                  std::string("<worksheet/>"),
                                  std::string(),
                                  "<!DOCTYPE w [<!ENTITY e \"x\">]>" + Sheet("&e;"),
                                  "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + Sheet(""),
                                  Sheet("") + "<again/>",
                                  Sheet("").substr(0, 100),
                                  "text" + Sheet("")}) {
    Parts parts = GoodParts();
    parts["xl/one.xml"] = sXml;
    const std::string sPath = Make(parts);
    const std::string sBefore = folder_.Read("book.xlsx");
    Failure failure;
    const auto workbook = Open(failure);
    ASSERT_NE(workbook, nullptr) << failure.sText;
    for (int64_t nRow = 1; nRow <= 2; ++nRow) {
      EXPECT_FALSE(workbook->WriteCell(1, nRow, 1, "x", failure)) << sXml.substr(0, 300);
      EXPECT_NE(failure.sText.find("xl/one.xml: The existing workbook is damaged."), std::string::npos);
    }
    EXPECT_FALSE(workbook->ActiveUsedRange());
    EXPECT_FALSE(workbook->SaveAs(sPath, kFormatXlsx, failure)) << "nothing of what was to be written is in it";
    EXPECT_TRUE(folder_.Read("book.xlsx") == sBefore);
  }
}

TEST_F(HostileXlsx, a_wrong_checksum_is_found_before_anything_is_written) {
  const std::string sPath = Make(GoodParts());
  std::string sBytes = folder_.Read("book.xlsx");
  // The checksum stands 16 bytes into the entry of the list at the end, and its name 46 bytes in.
  const size_t nName = sBytes.rfind("xl/one.xml");
  sBytes[nName - 46 + 16] ^= 1;
  folder_.Write("book.xlsx", sBytes);
  Failure failure;
  const auto workbook = Open(failure);
  ASSERT_NE(workbook, nullptr) << failure.sText;
  EXPECT_FALSE(workbook->WriteCell(1, 1, 1, "x", failure));
  EXPECT_TRUE(workbook->WriteCell(2, 1, 1, "x", failure)) << failure.sText;
}

TEST_F(HostileXlsx, limits_of_the_sheet_and_missing_sheets_fail_the_one_write) {
  Make(GoodParts());
  Failure failure;
  const auto workbook = Open(failure);
  ASSERT_NE(workbook, nullptr);
  EXPECT_EQ(workbook->SheetCount(), 2);
  for (const int nSheet : {0, 3, -1}) EXPECT_FALSE(workbook->WriteCell(nSheet, 1, 1, "x", failure));
  EXPECT_FALSE(workbook->WriteCell(1, kMaxSheetRows + 1, 1, "x", failure));
  EXPECT_FALSE(workbook->WriteCell(1, 1, kMaxSheetColumns + 1, "x", failure));
  EXPECT_FALSE(workbook->WriteCell(1, 1, 1, std::string(kMaxCellChars + 1, 'x'), failure));
  EXPECT_NE(failure.sText.find("32767"), std::string::npos);
  EXPECT_TRUE(workbook->WriteCell(1, kMaxSheetRows, kMaxSheetColumns, std::string(kMaxCellChars, 'x'), failure));
  EXPECT_FALSE(workbook->SetSheetName(1, "two", failure));
  EXPECT_FALSE(workbook->SetSheetName(1, "a/b", failure));
}

TEST_F(HostileXlsx, a_used_range_of_a_million_rows_is_cleared_as_one) {
  Parts parts = GoodParts();
  parts["xl/one.xml"] =
      Sheet("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"1048576\"><c r=\"XFD1048576\"><v>1</v></c></row>");
  const std::string sPath = Make(parts);
  Failure failure;
  const auto workbook = Open(failure);
  const auto range = workbook->ActiveUsedRange();
  ASSERT_TRUE(range);
  EXPECT_EQ(range->nBottom, kMaxSheetRows);
  EXPECT_EQ(range->nRight, kMaxSheetColumns);
  EXPECT_TRUE(workbook->ClearContents(1, *range, failure));
  EXPECT_TRUE(workbook->WriteCell(1, 2, 2, "x", failure));
  EXPECT_TRUE(workbook->SaveAs(sPath, kFormatXlsx, failure)) << failure.sText;
  const auto again = Open(failure);
  EXPECT_EQ(again->ActiveUsedRange()->nBottom, 2);
}

TEST_F(HostileXlsx, a_file_that_another_program_changed_is_not_overwritten) {
  const std::string sPath = Make(GoodParts());
  Failure failure;
  const auto workbook = Open(failure);
  EXPECT_TRUE(workbook->WriteCell(1, 1, 1, "x", failure));
  std::filesystem::remove(sPath);
  folder_.Write("book.xlsx", "other");
  EXPECT_FALSE(workbook->SaveAs(sPath, kFormatXlsx, failure));
  EXPECT_NE(failure.sText.find("Run again."), std::string::npos);
  EXPECT_EQ(folder_.Read("book.xlsx"), "other");
}

TEST(modFormulaText, shifts_relative_references_alone) {
  for (const auto& [sFormula, sShifted] :
       std::map<std::string, std::string>{{"A1+$A1+A$1+$A$1", "C2+$A2+C$1+$A$1"},
                                          {"SUM(A1:B2)&\"A1\"", "SUM(C2:D3)&\"A1\""},
                                          {"'A1 x'!A1+Sheet2!B2+[1]S!A1", "'A1 x'!C2+Sheet2!D3+[1]S!C2"},
                                          {"A:B+1:2", "C:D+2:3"},
                                          {"SUM(Old!A1:Old!B2)", "SUM(Old!C2:Old!D3)"},
                                          {"LOG10(A1)+Table1[A1]+a1_x+1.5E3", "LOG10(C2)+Table1[A1]+a1_x+1.5E3"},
                                          {"XFC1", "#REF!"}})
    EXPECT_EQ(ShiftedFormula(sFormula, 1, 2), sShifted);
  EXPECT_EQ(ShiftedFormula("A1", -1, 0), "#REF!");
}

TEST(modFormulaText, renames_sheets_and_columns_wherever_they_are_named) {
  const FormulaRenames renames{{{"Old", "It's"}}, {{"T", "a]b", "c#d"}}};
  for (const auto& [sFormula, sRenamed] :
       std::map<std::string, std::string>{{"Old!A1+'old'!B2", "'It''s'!A1+'It''s'!B2"},
                                          {"Older!A1+\"Old!A1\"+Old+Old(1)", "Older!A1+\"Old!A1\"+Old+Old(1)"},
                                          {"Old:Last!A1+'First:Old'!A1", "'It''s:Last'!A1+'First:It''s'!A1"},
                                          {"[1]Old!A1+'[1]Old'!A1+[1]!Old", "[1]Old!A1+'[1]Old'!A1+[1]!Old"},
                                          {"SUM(Old!A1:Old!B2)", "SUM('It''s'!A1:'It''s'!B2)"},
                                          {"T[a']b]+U[a']b]+[2]!T[a']b]", "T[c'#d]+U[a']b]+[2]!T[a']b]"},
                                          {"T[[#All],[a']b]:[e]]+T[@[a']b]]", "T[[#All],[c'#d]:[e]]+T[@[c'#d]]"},
                                          {"'open", "'open"},
                                          {"T[[a", "T[[a"}})
    EXPECT_EQ(RenamedFormula(sFormula, renames), sRenamed);
}

TEST(Styles, AFormatIsDerivedFromOneWhoseAttributeHoldsAnAngle) {
  clsXlsxStyles styles;
  ASSERT_TRUE(styles.Load("<styleSheet xmlns=\"" + std::string(kMain) +
                          "\"><cellXfs count=\"1\"><xf numFmtId=\"0\" note=\"=>\"/></cellXfs></styleSheet>"));
  EXPECT_EQ(styles.Derive(0, "0.00"), 1);
  clsXlsxStyles again;
  ASSERT_TRUE(again.Load(styles.Bytes()));
  EXPECT_EQ(again.Count(), 2u);
  EXPECT_EQ(again.KindOf(1), FormatKind::Number);
  EXPECT_EQ(KindOfFormatCode("GENERAL"), FormatKind::General);
  EXPECT_EQ(KindOfFormatCode("General\" kg\""), FormatKind::Number) << "somebody chose the unit";
}

TEST(Styles, WhatStandsBehindAnEmptyListIsNoneOfIt) {
  clsXlsxStyles styles;
  ASSERT_TRUE(styles.Load("<styleSheet xmlns=\"" + std::string(kMain) +
                          "\"><cellXfs></cellXfs><cellStyles><xf numFmtId=\"9\"/></cellStyles></styleSheet>"));
  EXPECT_EQ(styles.Count(), 0u);
}

TEST(Styles, ListsGivenTwiceOrOutOfOrderAreRefused) {
  const std::string sFormats = "<cellXfs count=\"1\"><xf numFmtId=\"0\"/></cellXfs>";
  for (const std::string& sLists : {sFormats + "<numFmts/>", sFormats + sFormats, "<numFmts/><numFmts/>" + sFormats}) {
    clsXlsxStyles styles;
    EXPECT_FALSE(styles.Load("<styleSheet xmlns=\"" + std::string(kMain) + "\">" + sLists + "</styleSheet>")) << sLists;
  }
}

}  // namespace
}  // namespace quillon
