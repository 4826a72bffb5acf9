#include <gtest/gtest.h>

#include "modTidyValues.h"

namespace quillon {
namespace {

std::string Plain(std::string_view sText, TidyTyping typing = {TidyType::Number, false, 0, {}}) {
  std::string sPlain;
  return ReadTidyNumber(sText, typing, &sPlain) ? sPlain : "-";
}

TEST(TidyValues, NumbersBecomePlain) {
  const std::vector<std::pair<std::string_view, std::string_view>> cases = {
      {"1,234.50", "1234.50"},
      {"1,234.50-", "-1234.50"},
      {"(5.00)", "-5.00"},
      {"$ -6,200.00", "-6200.00"},
      {"-$5", "-5"},
      {"12.50CR", "-12.50"},
      {"12.50 DR", "12.50"},
      {"***1,234.50", "1234.50"},
      {"7%", "7"},
      {"(1.25)%", "-1.25"},
      {"1.25%-", "-1.25"},
      {"-0.00", "0.00"},
      {".50", "0.50"},
      {"007", "7"},
      {"1/ 12,345", "12345"},
      {"-.839D-03", "-0.839E-03"},
      {"1.5E+3", "1.5E+3"},
      {"+5", "5"},
      {"5.00 $", "5.00"},
      {"0", "0"},
      {"-7", "-7"},
      {"5.", "5"},
      {"12345678901234567890.5", "12345678901234567890.5"}};
  for (const auto& [sText, sPlain] : cases) EXPECT_EQ(Plain(sText), sPlain) << sText;
  for (const std::string_view sText :
       {"", "-", "1,23", "12,34.5", "1.2.3", "A1", "1-2", "12/31", "--5", "(5", "5-6", "$", "E5", "1E", "%", "*"}) {
    EXPECT_EQ(Plain(sText), "-") << sText;
  }
}

TEST(TidyValues, NumbersFollowTheirColumnsForm) {
  EXPECT_EQ(Plain("1.234,56-", {TidyType::Number, true, 0, {}}), "-1234.56");
  EXPECT_EQ(Plain("1 234,56", {TidyType::Number, true, 0, {}}), "1234.56");
  EXPECT_EQ(Plain("0000000125", {TidyType::Number, false, 2, {}}), "1.25");
  EXPECT_EQ(Plain("7", {TidyType::Number, false, 2, {}}), "0.07");
  const auto number = ReadTidyNumber("1,234.50-", {}, nullptr);
  ASSERT_TRUE(number && number->bScaled);
  EXPECT_EQ(number->nValue, -123450);
  EXPECT_EQ(number->nDecimals, 2);
  EXPECT_FALSE(ReadTidyNumber("1.5E+3", {}, nullptr)->bScaled);
}

TEST(TidyValues, DatesFollowTheirForm) {
  const auto date = [](std::string_view sText, std::string_view sForm) {
    std::string sPlain = "-";
    ReadTidyDate(sText, sForm, sPlain);
    return sPlain;
  };
  EXPECT_EQ(date("31.12.24", "DD.MM.YY"), "2024-12-31");
  EXPECT_EQ(date("1.2.49", "DD.MM.YY"), "2049-02-01");
  EXPECT_EQ(date("01.02.50", "DD.MM.YY"), "1950-02-01");
  EXPECT_EQ(date("20240229", "YYYYMMDD"), "2024-02-29");
  EXPECT_EQ(date("20230229", "YYYYMMDD"), "-");
  EXPECT_EQ(date("999999999999122024", "DDDDDDDDDDDDMMYYYY"), "-") << "no part has so many digits";
  EXPECT_EQ(date("02-Mar-09", "DD-MMM-YY"), "2009-03-02");
  EXPECT_EQ(date("99  9  2 19  0  0.5", "YY MM DD HH NN SS"), "1999-09-02 19:00:00.5");
  EXPECT_EQ(date("12/31/2024", ""), "2024-12-31");
  EXPECT_EQ(date("12/31/2024 x", "MM/DD/YYYY"), "-");
  EXPECT_EQ(date("13/31/2024", "MM/DD/YYYY"), "-");
  EXPECT_EQ(date("31.12.2", "DD.MM.YY"), "-");
  EXPECT_EQ(date("9  9  2", "YY MM DD"), "2009-09-02");
}

}  // namespace
}  // namespace quillon
