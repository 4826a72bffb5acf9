#include <gtest/gtest.h>

#include "clsCodePage.h"
#include "modCollections.h"
#include "modNumbers.h"
#include "modStrings.h"
#include "modText.h"

namespace quillon {
namespace {

TEST(IsNumericText, AcceptsTheFormsOfPrintedNumbersAndNothingElse) {
  for (const char* s : {"0", " 12 ", "+5", "5-", "-5", "1,234.50", "(12)", "$5", "$ -1,000.00", "-$3", "1.5E+3", "1e5",
                        ".5", "5.", "12.50-", "($7.25)", "1,2,3"}) {
    EXPECT_TRUE(IsNumericText(s)) << s;
  }
  for (const char* s : {"",    "  ",  ".",   "-",   "(12",     "12)", "(-12)", "1.2.3", "12a", "1E",  "E5",
                        "1 2", "--1", "-1-", "$$1", "1.5,000", ",5",  "0x1F",  "1/2",   "nan", "inf", "\t5"}) {
    EXPECT_FALSE(IsNumericText(s)) << s;
  }
}

TEST(ParseScaled, KeepsFourDecimalsExactlyAndTellsOverflow) {
  struct Case {
    const char* s;
    const char* sText;
  };
  for (const Case& c : {Case{"00012.50", "12.5"},
                        {"1,000.50", "1000.5"},
                        {"(12)", "-12"},
                        {"-0", "0"},
                        {"0.00005", "0"},
                        {"0.00015", "0.0002"},
                        {"0.00025", "0.0002"},
                        {"9.99995", "10"},
                        {"0.000051", "0.0001"},
                        {"1.5E+3", "1500"},
                        {"15E-1", "1.5"},
                        {"1E-900", "0"},
                        {"922,337,203,685,477.5807", "922337203685477.5807"},
                        {"-922337203685477.5808", "-922337203685477.5808"}}) {
    ScaledNumber value = 0;
    ASSERT_EQ(ParseScaled(c.s, value), ScaleStatus::Ok) << c.s;
    EXPECT_EQ(ScaledText(value), c.sText) << c.s;
  }
  ScaledNumber value = 0;
  EXPECT_EQ(ParseScaled("922337203685477.5808", value), ScaleStatus::Overflow);
  EXPECT_EQ(ParseScaled("1E300", value), ScaleStatus::Overflow);
  EXPECT_EQ(ParseScaled("abc", value), ScaleStatus::NotNumeric);
  EXPECT_FALSE(AddScaled(INT64_MAX, 1));
}

TEST(Formats, GroupAndRoundHalvesAwayFromZero) {
  EXPECT_EQ(FormatGrouped("1002.5", 2), "1,002.50");
  EXPECT_EQ(FormatGrouped("1002.5", 0), "1,003");
  EXPECT_EQ(FormatGrouped("-1234567.005", 2), "-1,234,567.01");
  EXPECT_EQ(FormatGrouped("999.995", 2), "1,000.00");
  EXPECT_EQ(FormatGrouped("-0.001", 2), "0.00");
  EXPECT_EQ(FormatGrouped("n/a", 2), "n/a");
  EXPECT_EQ(FormatOneDecimal(0), "0.0");
  EXPECT_EQ(FormatOneDecimal(12.25), "12.3");
  EXPECT_EQ(ShortestDouble(4.0 / 3), "1.3333333333333333");
}

TEST(WholeNumbers, RoundHalvesToEvenAndMustFit32Bits) {
  EXPECT_EQ(ParseWholeNumber("44"), 44);
  EXPECT_EQ(ParseWholeNumber("2.5"), 2);
  EXPECT_EQ(ParseWholeNumber("3.5"), 4);
  EXPECT_EQ(ParseWholeNumber("-2147483648"), INT32_MIN);
  EXPECT_FALSE(ParseWholeNumber("2147483648"));
  EXPECT_FALSE(ParseWholeNumber("x"));
  EXPECT_FALSE(ParseWholeNumber(""));
  EXPECT_EQ(LeadingNumber(" 12x"), 12);
  EXPECT_EQ(LeadingNumber("abc"), 0);
  EXPECT_EQ(ParseDouble("1,5", 9), 1.5) << "a decimal comma, by the second try";
  EXPECT_EQ(ParseDouble("1,234.50", 9), 1234.5);
  EXPECT_EQ(ParseDouble("zz", 9), 9);
}

TEST(Text, CountsAndCutsCharactersNotBytes) {
  const std::string s = "Łódź\xFF!";
  EXPECT_EQ(CharCount(s), 6U);
  EXPECT_EQ(MidChars(s, 2, 2), "ód");
  EXPECT_EQ(MidChars(s, 5, 1), "\xFF");
  EXPECT_EQ(MidChars(s, 7, 1), "");
  EXPECT_EQ(MidChars("abc", 0, 2), "");
  EXPECT_EQ(ReverseString("aŁb"), "bŁa");
  EXPECT_EQ(UpperText("straße żÿя"), "STRAßE ŻŸЯ");
  EXPECT_EQ(FindNoCase("xÄb", "äB"), 1U);
  EXPECT_EQ(ReplaceAllNoCase("%AppData%\\x", "%APPDATA%", "/c"), "/c\\x");
  EXPECT_FALSE(IsValidUtf8("\xC0\x80"));
  EXPECT_FALSE(IsValidUtf8("\xED\xA0\x80"));
}

TEST(CodePage, BringsEachByteInAndOutUnchanged) {
  for (const char* sName :
       {"windows-1252", "ISO-8859-8", "cp437", "cp850", "ISO-8859-1", "ISO-8859-2", "ISO-8859-15"}) {
    const clsCodePage* const pPage = clsCodePage::Find(sName);
    ASSERT_NE(pPage, nullptr) << sName;
    std::string sAll;
    for (int i = 0; i < 256; ++i) sAll += static_cast<char>(static_cast<unsigned char>(i));
    EXPECT_EQ(pPage->FromUtf8(pPage->ToUtf8(sAll)), sAll) << sName;
  }
  EXPECT_EQ(clsCodePage::Find("CP437")->ToUtf8("\x8E\x9B"), "Ä¢");
  EXPECT_EQ(clsCodePage::Windows1252().CharOf(0x81), char32_t{0x81});
  for (const char* sName : {"no-such", "EBCDIC-US", "UTF-16", "EUC-JP", "auto", ""}) {
    EXPECT_EQ(clsCodePage::Find(sName), nullptr) << sName;
  }
  std::string sOut;
  EXPECT_EQ(clsCodePage::Windows1252().Encode("a€漢", sOut), 1U);
  EXPECT_EQ(sOut, "a\x80?");
  EXPECT_EQ(&DetectCodePage("plain"), &clsCodePage::Windows1252());
  EXPECT_EQ(&DetectCodePage("Zażółć"), &clsCodePage::Utf8());
  EXPECT_EQ(&DetectCodePage("caf\xE9"), &clsCodePage::Windows1252());
}

TEST(Strings, FollowTheirOwnRules) {
  EXPECT_EQ(TrimAtNull("abc"), "ab");
  EXPECT_EQ(TrimAtNull(std::string_view("ab\0c", 4)), "ab");
  EXPECT_EQ(TrimAtNull(""), "");
  EXPECT_EQ(RemoveDoubleQuotes("\"C:\\a b\"x\""), "C:\\a bx");
  setenv("TZ", "UTC", 1);
  tzset();
  EXPECT_EQ(ExpandDateStamps("[Y]-[M]-[D] [YMD] [MDY] [H][I][S] [HIS] [y]", 1704164645),
            "2024-01-02 20240102 01022024 030405 030405 [y]");
  std::string s = "x";
  AppendRepeated(s, "ab", 2);
  AppendRepeated(s, "ab", -1);
  EXPECT_EQ(s, "xabab");
}

TEST(SortCollection, OrdersWithoutRegardToCaseAndKeepsTheSpelling) {
  EXPECT_EQ(SortCollection({"b", "A", "c"}, false), (std::vector<std::string>{"A", "b", "c"}));
  EXPECT_EQ(SortCollection({"b", "A", "c", "B"}, true), (std::vector<std::string>{"A", "B", "b", "c"}));
  std::vector<std::string> many;
  for (int i = 0; i < 1000; ++i) many.push_back(std::to_string((i * 7919) % 1000));
  std::vector<std::string> expected = many;
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(SortCollection(many, false), expected);
  EXPECT_TRUE(SortCollection({}, false).empty());
}

}  // namespace
}  // namespace quillon
