#include "modFormula.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

std::string Repeated(std::string_view sPiece, int nTimes) {
  std::string sText;
  for (int i = 0; i < nTimes; ++i) sText += sPiece;
  return sText;
}

/// The tokens in one line, as "A1 1 + SUM/1".
std::string Postfix(std::string_view sFormula) {
  std::vector<FormulaToken> tokens;
  if (ParseFormula(sFormula, tokens) != FormulaVerdict::WellFormed) return "none";
  std::string sLine;
  for (const FormulaToken& token : tokens) {
    if (!sLine.empty()) sLine += ' ';
    switch (token.kind) {
      case FormulaTokenKind::Number:
        sLine += std::to_string(static_cast<int>(token.nValue));
        break;
      case FormulaTokenKind::Boolean:
        sLine += token.nValue > 0 ? "yes" : "no";
        break;
      case FormulaTokenKind::Missing:
        sLine += "missing";
        break;
      case FormulaTokenKind::Sign:
        sLine += "sign" + token.sText;
        break;
      case FormulaTokenKind::Percent:
        sLine += "percent";
        break;
      case FormulaTokenKind::Parentheses:
        sLine += "paren";
        break;
      case FormulaTokenKind::Function:
        sLine += std::string(token.pFunction->sName) + "/" + std::to_string(token.nCount);
        break;
      case FormulaTokenKind::Array:
        sLine += "array" + std::to_string(token.items.size()) + "by" + std::to_string(token.nCount);
        break;
      case FormulaTokenKind::Cell:
      case FormulaTokenKind::Area:
        sLine += token.sText + "!" + std::to_string(token.reference.nTop) + "," + std::to_string(token.reference.nLeft);
        if (token.kind == FormulaTokenKind::Area)
          sLine += ":" + std::to_string(token.reference.nBottom) + "," + std::to_string(token.reference.nRight);
        break;
      default:
        sLine += token.sText;
    }
  }
  return sLine;
}

TEST(modFormula, accepts_what_a_spreadsheet_accepts) {
  for (const char* sFormula : {"A1+B1",
                               "$A$1*2",
                               "a1",
                               "SUM(A1:A10)",
                               "sum( A1 , 2 )",
                               "-A1",
                               "--1",
                               "+-2",
                               "1.5E+3",
                               ".5",
                               "5%%",
                               "2^-1",
                               "\"a\"\"b\"&\"c\"",
                               "A1<>B1",
                               "Sheet2!A1",
                               "'My sheet'!A1:B2",
                               "'It''s'!$A:$C",
                               "A:C",
                               "1:3",
                               "$1:$3",
                               "#N/A",
                               "#DIV/0!",
                               "{1,2;-3,\"x\"}",
                               "TRUE",
                               "FALSE()",
                               "IF(A1,,3)",
                               "XFD1048576",
                               "PI()",
                               "LOG10(A1)",
                               "LOG10",
                               "((((A1))))",
                               "HYPERLINK(\"#Sheet2!A1\",\"there\")",
                               "SUMIFS(A:A,B:B,1)",
                               "COUNTIF(OFFSET(A1,1,1),\">2\")",
                               "ROW()",
                               "12/31/2024",
                               "\xC3\x9C"
                               "bersicht!A1",
                               "SUMIF(#REF!,1)"})
    EXPECT_EQ(CheckFormula(sFormula), FormulaVerdict::WellFormed) << sFormula;
}

TEST(modFormula, leaves_a_report_line_text) {
  for (const char* sFormula :
       {"",     "====", " = =",   "A1+",      "abc def",    "A1 B1",  "abc",      "Total",       "1,2",  "SUM(A1",
        "SUM)", "()",   "*5",     "12abc",    "1E",         "\"open", "'open!A1", "A0",          "XFE1", "A1048577",
        "A1:B", "A:1",  "Foo(1)", "SUM (A1)", "Sheet 2!A1", "A1!B2",  "R1C1!A1",  "Table1[Col]", "@A1",  "{1,2;3}",
        "{A1}", "{}",   "A1,B1",  "1:0",      "A1:B2:C3",   "--",     "#WRONG!",  "1e999"})
    EXPECT_EQ(CheckFormula(sFormula), FormulaVerdict::NotAFormula) << sFormula;
}

TEST(modFormula, refuses_arguments_that_would_have_to_be_repaired) {
  for (const char* sFormula : {"SUM()", "PI(1)", "IF(1)", "IF(1,2,3,4)", "ROUND(1)", "MID(\"a\",1)", "COUNTIF(\"a\",1)",
                               "SUMIF(1,2)", "ROW(5)", "OFFSET(1,1,1)", "COUNTIFS(A1:A2,1,B1:B2)", "SUMIFS(A:A,B:B)",
                               "SUMIFS(A:A,B:B,1,2,3)", "SUBTOTAL(9,1)", "COUNTBLANK(A1+1)"})
    EXPECT_EQ(CheckFormula(sFormula), FormulaVerdict::NotAFormula) << sFormula;
}

TEST(modFormula, tells_what_reaches_outside) {
  for (const char* sFormula :
       {"cmd|'/c calc'!A1", "'cmd'|'/c calc'!A1", "MSEXCEL|'\\..\\x.exe'!''", "[Book1.xlsx]Sheet1!A1", "[1]Sheet1!A1+1",
        "'C:\\x\\[b.xls]S'!A1", "'http://host/b.xls'!A1", "WEBSERVICE(\"http://host\")", "_xlfn.WEBSERVICE(A1)",
        "HYPERLINK(\"http://host\",\"x\")", "HYPERLINK(A1)", "HYPERLINK(\"#\"&A1)", "RTD(\"a\",\"b\",\"c\")",
        "1+CALL(\"a\",\"b\")", "SUM(A1,REGISTER.ID(\"a\",\"b\"))", "EXEC(\"a\")", "importxml(\"a\",\"b\")"})
    EXPECT_EQ(CheckFormula(sFormula), FormulaVerdict::ReachesOutside) << sFormula;
}

TEST(modFormula, bounds_depth_length_and_texts) {
  EXPECT_EQ(CheckFormula(Repeated("(", 60) + "1" + Repeated(")", 60)), FormulaVerdict::WellFormed);
  EXPECT_EQ(CheckFormula(Repeated("(", 100000) + "1" + Repeated(")", 100000)), FormulaVerdict::NotAFormula);
  EXPECT_EQ(CheckFormula(Repeated("ABS(", 1000) + "1" + Repeated(")", 1000)), FormulaVerdict::NotAFormula);
  EXPECT_EQ(CheckFormula("1" + Repeated("+1", 4000)), FormulaVerdict::WellFormed);
  EXPECT_EQ(CheckFormula("1" + Repeated("+1", 4100)), FormulaVerdict::NotAFormula);
  EXPECT_EQ(CheckFormula("\"" + Repeated("x", 255) + "\""), FormulaVerdict::WellFormed);
  EXPECT_EQ(CheckFormula("\"" + Repeated("x", 256) + "\""), FormulaVerdict::NotAFormula);
  EXPECT_EQ(CheckFormula("SUM(1" + Repeated(",1", 254) + ")"), FormulaVerdict::WellFormed);
  EXPECT_EQ(CheckFormula("SUM(1" + Repeated(",1", 255) + ")"), FormulaVerdict::NotAFormula);
}

TEST(modFormula, gives_tokens_in_postfix_order) {
  EXPECT_EQ(Postfix("A1+B2*3"), "!1,1 !2,2 3 * +");
  EXPECT_EQ(Postfix("-2^2"), "2 sign- 2 ^");
  EXPECT_EQ(Postfix("2^3^4"), "2 3 ^ 4 ^");
  EXPECT_EQ(Postfix("-5%"), "5 sign- percent");
  EXPECT_EQ(Postfix("(1-2)-3>=4&\"x\""), "1 2 - paren 3 - 4 x & >=");
  EXPECT_EQ(Postfix("IF(Sheet2!B3:A1,,{1,2;3,4})"), "Sheet2!1,1:3,2 missing array4by2 IF/3");
  EXPECT_EQ(Postfix("SUM('It''s'!C:D,2:1)"), "It's!1,3:1048576,4 !1,1:2,16384 SUM/2");
}

TEST(modFormula, knows_whether_the_sheets_are_there) {
  const std::vector<std::string> names = {"Sheet1", "My sheet"};
  EXPECT_TRUE(FormulaSheetsExist("A1+sheet1!B1", names));
  EXPECT_TRUE(FormulaSheetsExist("\"other!\"&'my sheet'!B1:C2", names));
  EXPECT_FALSE(FormulaSheetsExist("A1+Sheet2!B1", names));
}

}  // namespace
}  // namespace quillon
