#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "modCellTyping.h"

namespace quillon {
namespace {

struct Case {
  std::string_view sText;
  std::string_view sExpected;  ///< Kind, digits, format as "n 1234.50 #,##0.00"; formula as "f A1"; "t" text, "" empty
};

std::string Described(std::string_view sText, const CellTypingOptions& options) {
  std::string sScratch;
  const TypedCell cell = TypeCell(sText, options, sScratch);
  switch (cell.kind) {
    case CellKind::Empty:
      return "";
    case CellKind::Text:
      return cell.sText == sText ? "t" : "changed text";
    case CellKind::Number:
    case CellKind::Date: {
      // The digits go into an .xlsx, the value into an .xls: they must be the same number.
      EXPECT_DOUBLE_EQ(std::stod(std::string(cell.sDigits)), cell.nValue) << sText;
      std::string sOut = cell.kind == CellKind::Number ? "n " : "d ";
      sOut.append(cell.sDigits);
      if (!cell.sFormat.empty()) sOut.append(" ").append(cell.sFormat);
      return sOut;
    }
    case CellKind::Boolean:
      return cell.nValue == 1 ? "b TRUE" : "b FALSE";
    case CellKind::Formula:
      return "f " + std::string(cell.sText);
  }
  return "error";
}

void Check(const std::vector<Case>& cases, const CellTypingOptions& options = {}) {
  for (const Case& row : cases) EXPECT_EQ(Described(row.sText, options), row.sExpected) << "[" << row.sText << "]";
}

TEST(CellTyping, PlainNumbersKeepTheirDigits) {
  Check({{"0", "n 0"},
         {"7", "n 7"},
         {"  42 ", "n 42"},
         {"-12", "n -12"},
         {"12345678901", "n 12345678901"},
         {"123456789012", "n 123456789012 0"},
         {"123456789012345", "n 123456789012345 0"},
         {"1234567890123456", "t"},
         {"12.50", "n 12.50 0.00"},
         {"-0.5", "n -0.5 0.0"},
         {"0.00", "n 0.00 0.00"},
         {"0.000000000012345", "n 0.000000000012345 0.000000000000000"},
         {"0.0000000000123456", "t"},
         {"123456789.123456", "n 123456789.123456 0.000000"},
         {"123456789.1234567", "t"},
         {".5", "n 0.5 .0"},
         {"-.50", "n -0.50 .00"},
         {"5.", "t"},
         {".", "t"},
         {"-", "t"},
         {"1.2.3", "t"}});
}

TEST(CellTyping, LeadingZerosStayTextUnlessTheyMayGo) {
  Check({{"007", "t"}, {"00", "t"}, {"-01", "t"}, {"00.5", "t"}, {"0,123", "t"}, {"$007", "t"}});
  CellTypingOptions options;
  options.bDropLeadingZeros = true;
  Check({{"007", "n 7"}, {"00", "n 0"}, {"-0012.50", "n -12.50 0.00"}, {"0001234567890123456", "t"}}, options);
}

TEST(CellTyping, SeparatorsCountOnlyInTheirPlaces) {
  Check({{"1,234", "n 1234 #,##0"},
         {"-1,234,567.8", "n -1234567.8 #,##0.0"},
         {"1,234.50", "n 1234.50 #,##0.00"},
         {"12,34", "t"},
         {"1234,567", "t"},
         {",123", "t"},
         {"-,123", "t"},
         {"1,,234", "t"},
         {"1,234,", "t"},
         {"1.234,50", "t"},
         {"1,234.5,6", "t"}});
}

TEST(CellTyping, SignsShowWhereTheyStood) {
  Check({{"+5", "n 5 +0;-0"},
         {"12.50-", "n -12.50 0.00;0.00-"},
         {"12.50 -", "n -12.50 0.00;0.00 -"},
         {"7+", "n 7 0+;0-"},
         {"- 5", "n -5 0;- 0"},
         {"(12)", "n -12 0;(0)"},
         {"(  1,234.50 )", "n -1234.50 #,##0.00;( #,##0.00 )"},
         {"-0", "n 0 0;-0;-0"},
         {"0.00-", "n 0.00 0.00;0.00-;0.00-"},
         {"(0)", "n 0 0;(0);(0)"},
         {"(12", "t"},
         {"12)", "t"},
         {"-(12)", "t"},
         {"--5", "t"},
         {"-5-", "t"},
         {"1-2", "t"},
         {"5CR", "t"},
         {"5 DR", "t"}});
}

TEST(CellTyping, CurrencyPercentAndExponentAreShownByTheFormat) {
  Check({{"$5", "n 5 \"$\"0"},
         {"-$5.00", "n -5.00 \"$\"0.00"},
         {"$-5", "n -5 \"$\"0;\"$\"-0"},
         {"$ -1,000.00", "n -1000.00 \"$\" #,##0.00;\"$\" -#,##0.00"},
         {"$   37.50", "n 37.50 \"$\" 0.00"},
         {"($5)", "n -5 \"$\"0;(\"$\"0)"},
         {"\xE2\x82\xAC 9.90", "n 9.90 \"\xE2\x82\xAC\" 0.00"},
         {"\xC2\xA3"
          "3",
          "n 3 \"\xC2\xA3\"0"},
         {"$", "t"},
         {"$$5", "t"},
         {"\xC2\xA9"
          "5",
          "t"},
         {"7%", "n 0.07 0%"},
         {"12.5 %", "n 0.125 0.0 %"},
         {"-150%", "n -1.50 0%"},
         {"0.25%-", "n -0.0025 0.00%;0.00%-"},
         {"%7", "t"},
         {"7%%", "t"},
         {"$7%", "t"},
         {"1.5E+3", "n 1.5E+3 0.0E+0"},
         {"-2.50E-12", "n -2.50E-12 0.00E+00"},
         {"6.02E23", "n 6.02E23 0.00E-00"},
         {"1E5", "t"},
         {"1E+05", "n 1E+05 0E+00"},
         {"15.0E+3", "t"},
         {"1.5e+3", "t"},
         {"1.5E+", "t"},
         {"2E-0", "n 2 0\"E-0\""},
         {"1.5E+999", "t"},
         {"1.2E+308", "t"}});
}

TEST(CellTyping, FullDatesOfTheCalendarBecomeDates) {
  Check({{"12/31/2024", "d 45657 mm\\/dd\\/yyyy"},
         {"1/5/2024", "d 45296 m\\/d\\/yyyy"},
         {"01/5/24", "d 45296 mm\\/d\\/yy"},
         {"10/5/24", "d 45570 m\\/d\\/yy"},
         {"2-29-2024", "d 45351 m\\-d\\-yyyy"},
         {"02/29/2023", "t"},
         {"02/29/1900", "t"},
         {"02/28/1900", "t"},
         {"03/01/1900", "d 61 mm\\/dd\\/yyyy"},
         {"12/31/9999", "d 2958465 mm\\/dd\\/yyyy"},
         {"12/31/29", "d 47483 mm\\/dd\\/yy"},
         {"12/31/30", "d 11323 mm\\/dd\\/yy"},
         {"2024-12-31", "d 45657 yyyy\\-mm\\-dd"},
         {"2024/1/5", "d 45296 yyyy\\/m\\/d"},
         {"31/12/2024", "t"},
         {"31.12.24", "t"},
         {"1.2.24", "t"},
         {"12/31-2024", "t"},
         {"12/31/024", "t"},
         {"12/5", "t"},
         {"2024-13-01", "t"},
         {"1/1/2024 10:00", "t"},
         {"10:30", "t"},
         {"MAR1", "t"}});
  CellTypingOptions options;
  options.bDayFirst = true;
  Check({{"31.12.24", "d 45657 dd\\.mm\\.yy"}, {"31/12/2024", "d 45657 dd\\/mm\\/yyyy"}, {"12/31/2024", "t"}}, options);
}

TEST(CellTyping, WordsFormulasAndTexts) {
  Check({{"TRUE", "b TRUE"},
         {" FALSE", "b FALSE"},
         {"True", "t"},
         {"#N/A", "t"},
         {"=A1+B1", "f A1+B1"},
         {"  =SUM(A1:A9) ", "f SUM(A1:A9)"},
         {"=====", "t"},
         {"= = =", "t"},
         {"=", "t"},
         {"'x", "t"},
         {"", ""},
         {"   ", ""},
         {" kept  ", "t"},
         {"12 Main St", "t"},
         {"\x01", "t"}});
}

TEST(CellTyping, AllTextLeavesEveryTextAsItIs) {
  CellTypingOptions options;
  options.bAllText = true;
  Check({{"12", "t"}, {"=A1", "t"}, {"TRUE", "t"}, {"  ", "t"}, {"", ""}}, options);
}

TEST(CellTyping, AFormulaThatReachesOutsideIsTextAndCounted) {
  std::string sScratch;
  const TypedCell cell = TypeCell("=cmd|' /C calc'!A0", {}, sScratch);
  EXPECT_EQ(cell.kind, CellKind::Text);
  EXPECT_TRUE(cell.bRefusedFormula);
}

}  // namespace
}  // namespace quillon
