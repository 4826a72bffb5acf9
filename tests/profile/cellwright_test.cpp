#include <gtest/gtest.h>
#include <sys/stat.h>

#include "clsTempFolder.h"
#include "clsWorkbook.h"
#include "modCellwright_DLL.h"
#include "modSettings.h"

namespace quillon {
namespace {

class Engine : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetProfileGlobals();
    OverrideSystemCodePage(&clsCodePage::Windows1252(), false);
    OptInputFileTypeSet(21);
    OptOutputFileTypeSet(kFormatCsv);
    OptOutputFileSet(folder.Path("out.csv").c_str());
  }
  void TearDown() override {
    ResetProfileGlobals();
    OverrideSystemCodePage(nullptr, false);
  }
  static void Widths(std::initializer_list<int32_t> widths) {
    int32_t lColumn = 0;
    for (const int32_t lWidth : widths) OptInputFixedWidthCharacterCountSet(++lColumn, lWidth);
  }
  static void Trim(int16_t iColumn, const char* sPad, int16_t iSide) {
    OptInputFixedWidthPadCharacter(iColumn, sPad);
    OptInputFixedWidthJustification(iColumn, iSide);
  }
  int32_t Run(std::string_view sInput) {
    OptInputFileSet(folder.Write("in.txt", sInput).c_str());
    return ConvertFile();
  }
  /// What the conversion of the text writes; the failure's text if it fails.
  std::string Csv(std::string_view sInput) {
    const int32_t lResult = Run(sInput);
    return lResult == 0 ? folder.Read("out.csv") : std::to_string(lResult) + " " + ErrorText();
  }
  static std::string ErrorText(int32_t lSize = 256) {
    std::string sBuffer(static_cast<size_t>(lSize), '#');
    GetErrorString(0, sBuffer.data(), lSize);
    return sBuffer.c_str();
  }
  static std::string Utf16(std::u16string_view sText, bool bBig) {
    std::string sOut;
    for (const char16_t unit : sText) {
      const char bytes[] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
      sOut += {bytes[bBig ? 1 : 0], bytes[bBig ? 0 : 1]};
    }
    return sOut;
  }

  clsTempFolder folder;
};

TEST_F(Engine, RowsAreCutByTheirCounts) {
  EXPECT_EQ(Csv("abc\n\nd"), "abc\r\n\r\nd\r\n");  // no counts: a line is one column
  Widths({2, 3, 1});
  EXPECT_EQ(Csv("aabbbc and more\r\na\n\naabb"), "aa,bbb,c\r\na,,\r\n,,\r\naa,bb,\r\n");
  EXPECT_EQ(LastTally().lRowsRead, 4);
  Widths({2, -3, 1});
  EXPECT_EQ(Csv("aabbbc"), "aa,c\r\n");
  Widths({-2, -1, 1});  // -1 amid the list is a column of one character, at its end the list's close
  EXPECT_EQ(Csv("aaxbcc"), "b\r\n");
  Widths({2, -1, -1});
  EXPECT_EQ(Csv("aabbbc"), "aa\r\n");
  Widths({-1, -1, -1});
  EXPECT_EQ(Csv("aabbbc"), "aabbbc\r\n");
  Widths({-6});
  EXPECT_EQ(Csv("aabbbc\n"), "\r\n");
  Widths({2147483647, -2147483647, 5});
  EXPECT_EQ(Csv("aabbbc"), "aabbbc,\r\n");
}

TEST_F(Engine, ColumnsStandByTheirOrderEqualOnesAsInTheInput) {
  Widths({1, 1, 1, 1});
  EXPECT_EQ(Csv("abcd"), "a,b,c,d\r\n");
  const int16_t order[] = {9, -2, 9, 0};
  for (int16_t i = 0; i < 4; ++i) OptFixedWidthColumnOrder(static_cast<int16_t>(i + 1), order[i]);
  EXPECT_EQ(Csv("abcd"), "b,d,a,c\r\n");
}

TEST_F(Engine, GatheringBeginsAtTheStartCell) {
  Widths({1, -1, 1});
  OptFixedWidthColumnOrder(1, 3);
  OptFixedWidthColumnOrder(3, 1);
  struct Case {
    const char* sCell;
    const char* sCsv;
    bool bNoted;
  };
  for (const Case& c : std::initializer_list<Case>{{"A1", "3,1\r\n6,4\r\n9,7\r\n", false},
                                                   {"b2", "6\r\n9\r\n", false},
                                                   {" $C$3 ", "9\r\n", false},
                                                   {"D1", "\r\n\r\n\r\n", false},
                                                   {"A4", "", false},
                                                   {"", "3,1\r\n6,4\r\n9,7\r\n", true},
                                                   {"4B", "3,1\r\n6,4\r\n9,7\r\n", true},
                                                   {"A0", "3,1\r\n6,4\r\n9,7\r\n", true},
                                                   {"ZZZ99999999", "3,1\r\n6,4\r\n9,7\r\n", true}}) {
    EXPECT_EQ(OptXLSRangeSet(c.sCell) < 0, c.bNoted) << c.sCell;
    EXPECT_EQ(Csv("123\n456\n789\n"), c.sCsv) << c.sCell;
    EXPECT_EQ(!LastTally().sNote.empty(), c.bNoted) << c.sCell;
  }
  EXPECT_EQ(LastTally().sNote, "The start cell is no cell reference such as B4, so A1 was taken: [ZZZ99999999]");
  OptXLSRangeSet("A3");
  Csv("123\n456\n789\n");
  EXPECT_EQ(LastTally().lRowsRead, 3);
  EXPECT_EQ(LastTally().lRowsWritten, 1);
}

TEST_F(Engine, AllPadsAreTrimmedFromTheOneSide) {
  Widths({6, 6, 6, 6, 20, 20});
  Trim(1, " ", 1);
  Trim(2, " ", 2);
  Trim(3, "0", 1);
  Trim(4, "\xFF", 1);
  Trim(5, "*", 1);
  Trim(6, "*", 2);
  const std::string sStars(19, '*');
  EXPECT_EQ(Csv("  1 2 "
                " a b  "
                "000700"
                " \xFF\xFF   " +
                sStars.substr(2) + "x**" + "x" + sStars),
            "1 2 , a b,700, \xFF\xFF   ,x**,x\r\n");
  EXPECT_EQ(Csv("            000000\xFF\xFF\xFF\xFF\xFF\xFF****************************************"),
            ",,,\xFF\xFF\xFF\xFF\xFF\xFF,,\r\n");
}

TEST_F(Engine, TheQuotingModesAndSeparators) {
  Widths({4, 4, 4});
  struct Case {
    int32_t lMode, lSeparator;
    const char* sCsv;
  };
  for (const Case& c : std::initializer_list<Case>{{0, 44, "a,b ,c\"d ,;\re \r\n"},
                                                   {1, 44, "\"a,b \",\"c\"\"d \",\";\re \"\r\n"},
                                                   {7, 44, "\"a,b \",\"c\"\"d \",\";\re \"\r\n"},
                                                   {2, 44, "\"a,b \",\"c\"\"d \",\";\re \"\r\n"},
                                                   {1, 59, "a,b ;\"c\"\"d \";\";\re \"\r\n"},
                                                   {1, 9, "a,b \t\"c\"\"d \"\t\";\re \"\r\n"},
                                                   {0, 167,
                                                    "a,b \xA7"
                                                    "c\"d \xA7;\re \r\n"},
                                                   {0, 0, "a,b ,c\"d ,;\re \r\n"},
                                                   {0, 300, "a,b ,c\"d ,;\re \r\n"}}) {
    OptUseDoubleQuotesSet(c.lMode);
    OptDelimiterUsedSet(c.lSeparator);
    EXPECT_EQ(Csv("a,b c\"d ;\re \n"), c.sCsv) << c.lMode << ' ' << c.lSeparator;
  }
}

TEST_F(Engine, ValuesThatWouldRunAreCalmedWhereAsked) {
  Widths({6, 6, 6});
  Trim(1, " ", 1);
  const std::string_view sInput = "  =1+1 -1.50 @x,y \n";
  EXPECT_EQ(Csv(sInput), "=1+1, -1.50,\" @x,y \"\r\n");
  Cellwright().Change().bSafeCsv = true;
  EXPECT_EQ(Csv(sInput), "\"'=1+1\", -1.50,\"' @x,y \"\r\n");
  OptUseDoubleQuotesSet(0);
  EXPECT_EQ(Csv(sInput), "\"'=1+1\", -1.50,\"' @x,y \"\r\n") << "raw, a value could bring on a cell of its own";
}

TEST_F(Engine, Utf16IsReadInEitherOrder) {
  OptInputFileTypeSet(42);
  OptOutputFileTypeSet(kFormatCsvUtf8);
  Widths({2, 3});
  Trim(2, "\xE9", 2);
  const std::u16string sText = u"\u00E4\U0001F600b\u00E9\u00E9x\r\nzz\u20AC\r\n\u001A\0\0";
  const std::string sCsv = "\xEF\xBB\xBF\u00E4\U0001F600,b\r\nzz,\u20AC\r\n";
  EXPECT_EQ(Csv(Utf16(sText, false)), sCsv);
  EXPECT_EQ(Csv(Utf16(u"\uFEFF" + sText, false)), sCsv);
  EXPECT_EQ(Csv(Utf16(u"\uFEFF" + sText, true)), sCsv);
  EXPECT_EQ(Csv(Utf16(u"a\rb\r", false)),
            "\xEF\xBB\xBF"
            "a,\r\nb,\r\n");
  EXPECT_EQ(Csv(""), "\xEF\xBB\xBF");
  OptOutputFileTypeSet(kFormatCsv);
  EXPECT_EQ(Csv(Utf16(u"\u20AC\u0416!", false)), "\x80?,!\r\n");
  EXPECT_EQ(LastTally().lCharsLost, 1);
}

TEST_F(Engine, BrokenUtf16IsReplacedAndCounted) {
  OptInputFileTypeSet(42);
  OptOutputFileTypeSet(kFormatCsvUtf8);
  const char16_t lone[] = {'a', 0xDC00, 'b', 0xD800, 'c', 0xD800, 0xD83D, 0xDE00, '\n', 0xD800, 0};
  EXPECT_EQ(Csv(Utf16(lone, false) + "x"),
            "\xEF\xBB\xBF"
            "a\uFFFDb\uFFFDc\uFFFD\U0001F600\r\n\uFFFD\uFFFD\r\n");
  EXPECT_EQ(LastTally().lCharsReplaced, 5);
}

TEST_F(Engine, AMarkMakesTheInputUtf8AndItsCharactersGoToTheSystemsPage) {
  Widths({2, 2});
  EXPECT_EQ(Csv("\xEF\xBB\xBF\u00E4\u00F6\u00FC\u0416\n"), "\xE4\xF6,\xFC?\r\n");
  EXPECT_EQ(LastTally().lCharsLost, 1);
  OverrideSystemCodePage(&clsCodePage::Utf8(), false);
  Trim(2, "\xFC", 1);  // codes of single characters are then those of windows-1252
  EXPECT_EQ(Csv("\u00E4\u00F6\u00FC\u0416\u00DF\n"), "\u00E4\u00F6,\u0416\r\n");
}

TEST_F(Engine, AFailureHasItsCodeAndTextAndLeavesTheOutput) {
  folder.Write("out.csv", "old");
  const auto Fails = [&](int32_t lResult, std::string_view sSays) {
    EXPECT_EQ(Run("new\n"), lResult);
    EXPECT_NE(ErrorText().find(sSays), std::string::npos) << ErrorText();
    EXPECT_EQ(folder.Read("out.csv"), "old");
  };
  OptOutputFileTypeSet(0);
  Fails(-3, "expected a name with .CSV, .XLS or .XLSX: " + folder.Path("out.csv").substr(0, 10));
  OptOutputFileTypeSet(kFormatCsv);
  OptInputFileTypeSet(22);
  Fails(-1, "expected 21 (single-byte text) or 42 (UTF-16 text): 22");
  OptInputFileTypeSet(21);
  chmod(folder.Path("out.csv").c_str(), 0444);
  Fails(6, "because of its attributes");
  chmod(folder.Path("out.csv").c_str(), 0644);
  OptOutputFileSet(folder.Path().c_str());
  Fails(-4, "directory");
  OptOutputFileSet(folder.Path("no/such/folder.csv").c_str());
  Fails(-4, "No such file");
  OptOutputFileSet(folder.Path("out.csv").c_str());
  for (const int32_t lType : {21, 42}) {
    OptInputFileTypeSet(lType);
    OptInputFileSet(folder.Path("missing.txt").c_str());
    EXPECT_EQ(ConvertFile(), -2);
    OptInputFileSet(folder.Path().c_str());
    EXPECT_EQ(ConvertFile(), -2);
  }
  EXPECT_EQ(folder.Read("out.csv"), "old");
  Widths({1});
  EXPECT_EQ(OptInputFixedWidthCharacterCountSet(0, 5), -7);
  EXPECT_EQ(OptInputFixedWidthCharacterCountSet(2147483647, 5), -7);
}

TEST_F(Engine, AReportThatASheetCannotHoldIsRefusedWhole) {
  OptOutputFileTypeSet(kFormatXls);
  OptOutputFileSet(folder.Path("out.xls").c_str());
  std::string sLong;
  for (int64_t n = 0; n < kMaxXlsRows; ++n) sLong += "a\n";
  EXPECT_EQ(Run(sLong), 0);
  EXPECT_EQ(Run(sLong + "\n"), -6);
  EXPECT_TRUE(ErrorText().ends_with("Row 65537: a sheet of this kind ends at row 65536")) << ErrorText();
  OptOutputFileSet(folder.Path("new.xls").c_str());
  EXPECT_EQ(Run("a\n" + std::string(kMaxCellChars + 1, 'b')), -6);
  EXPECT_EQ(LastTally().lCellsFailed, 1);
  for (int32_t n = 1; n <= kMaxXlsColumns + 1; ++n) OptInputFixedWidthCharacterCountSet(n, 1);
  EXPECT_EQ(Run("a\n"), -5);
  EXPECT_TRUE(ErrorText().ends_with(": 257 > 256")) << ErrorText();
  EXPECT_FALSE(folder.Has("new.xls"));
}

TEST_F(Engine, ALongErrorTextKeepsItsHeadAndItsReason) {
  OptInputFileSet(("/" + std::string(150, 'd') + "/\u00E4" + std::string(150, 'e')).c_str());
  ASSERT_EQ(ConvertFile(), -2);
  for (const int32_t lSize : {100, 101, 102, 256}) {
    const std::string sText = ErrorText(lSize);
    EXPECT_EQ(sText.find("The input file can't be read: /d"), 0U) << sText;
    EXPECT_LT(sText.size(), static_cast<size_t>(lSize));
    EXPECT_NE(sText.find("..."), std::string::npos);
    EXPECT_TRUE(sText.ends_with(": No such file or directory")) << sText;
  }
  EXPECT_EQ(ErrorText(5), "The ");
}

}  // namespace
}  // namespace quillon
