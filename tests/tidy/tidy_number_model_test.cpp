// Numbers and dates against plain models, on every road that the readers have for them.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "modTidyValues.h"

namespace quillon {
namespace {

const TidyTyping kPlainNumber{TidyType::Number, false, 0, {}};

/// What is read of a text, all in one: "plain value/10^decimals", "plain unscaled", "-" for no number.
std::string Read(const std::string& sText, const TidyTyping& typing = kPlainNumber) {
  std::string sPlain;
  const auto number = ReadTidyNumber(sText, typing, &sPlain);
  if (!number) return "-";
  const std::string sScaled = number->bScaled ? std::to_string(number->nValue) : "unscaled";
  return sPlain + " " + sScaled + "/10^" + std::to_string(number->nDecimals);
}

bool AllDigits(std::string_view s) {
  return std::all_of(s.begin(), s.end(), [](char ch) { return ch >= '0' && ch <= '9'; });
}

/// Takes the separators out of a whole part; False if its groups aren't of three.
bool Ungroup(std::string& sWhole) {
  if (sWhole.find(',') == std::string::npos) return AllDigits(sWhole);
  const size_t nFirst = sWhole.find(',');
  if (nFirst == 0 || nFirst > 3 || (sWhole.size() - nFirst) % 4 != 0) return false;
  for (size_t i = nFirst; i < sWhole.size(); ++i) {
    if ((sWhole[i] == ',') != ((i - nFirst) % 4 == 0)) return false;
  }
  sWhole.erase(std::remove(sWhole.begin(), sWhole.end(), ','), sWhole.end());
  return AllDigits(sWhole);
}

/// The rule for figures with a minus in front at most, as Read() tells it.
std::string Model(std::string sText) {
  const bool bMinus = sText.starts_with('-');
  if (bMinus) sText.erase(0, 1);
  const size_t nPoint = std::min(sText.find('.'), sText.size());
  std::string sWhole = sText.substr(0, nPoint);
  const std::string sDecimals = sText.substr(std::min(nPoint + 1, sText.size()));
  if (!Ungroup(sWhole) || !AllDigits(sDecimals) || sWhole.size() + sDecimals.size() == 0) return "-";
  sWhole.erase(0, std::min(sWhole.find_first_not_of('0'), sWhole.size()));
  const std::string sDigits = sWhole + sDecimals;
  const bool bZero = sDigits.find_first_not_of('0') == std::string::npos;
  const std::string sSign = bMinus && !bZero ? "-" : "";
  std::string sValue = sDigits.size() > 18 ? "unscaled" : sSign + std::to_string(std::stoll("0" + sDigits));
  return sSign + (sWhole.empty() ? "0" : sWhole) + (sDecimals.empty() ? "" : "." + sDecimals) + " " + sValue + "/10^" +
         std::to_string(sDecimals.size());
}

/// Figures without a sign: most nearly right, with separators and points also where they don't belong.
std::string Figures(std::mt19937& random) {
  const auto below = [&](unsigned n) { return static_cast<unsigned>(random() % n); };
  std::string s;
  for (unsigned nGroups = 1 + below(7), i = 0; i < nGroups; ++i) {
    if (i > 0) s += below(20) == 0 ? "." : ",";
    for (unsigned n = below(12) == 0 ? below(9) : i == 0 ? 1 + below(3) : 3; n > 0; --n)
      s += static_cast<char>('0' + (below(3) == 0 ? 0 : below(10)));
  }
  if (below(3) == 0) s.erase(std::remove(s.begin(), s.end(), ','), s.end());
  if (below(2) == 0) s += '.' + std::to_string(random()).substr(0, below(10));
  if (below(8) == 0) s.insert(below(static_cast<unsigned>(s.size()) + 1), 1, ".,0"[below(3)]);
  return s;
}

TEST(TidyNumberModel, EveryRoadReadsTheSameFigures) {
  std::mt19937 random(20241231);
  int nNumbers = 0;
  for (int i = 0; i < 60000; ++i) {
    const std::string s = Figures(random);
    if (s.empty()) continue;
    const std::string sWanted = Model(s);
    nNumbers += sWanted == "-" ? 0 : 1;
    ASSERT_EQ(Read(s), sWanted) << s;
    ASSERT_EQ(Read("-" + s), Model("-" + s)) << s;
    for (const std::string& sSame : {"+" + s, "$" + s, s + "%", "  " + s + " ", "**" + s, s + " DR", s + "+"})
      ASSERT_EQ(Read(sSame), sWanted) << sSame;
    for (const std::string& sSame : {"(" + s + ")", s + "-", s + " CR", "$ -" + s, "-$" + s})
      ASSERT_EQ(Read(sSame), Model("-" + s)) << sSame;
    std::string sComma = s;
    for (char& ch : sComma) ch = ch == ',' ? '.' : ch == '.' ? ',' : ch;
    ASSERT_EQ(Read(sComma, {TidyType::Number, true, 0, {}}), sWanted) << sComma;
  }
  EXPECT_GT(nNumbers, 20000);
  EXPECT_LT(nNumbers, 50000);
}

TEST(TidyNumberModel, ImpliedDecimalsMoveThePointOfWhatPrintsNone) {
  const TidyTyping hundredths{TidyType::Number, false, 2, {}};
  std::mt19937 random(7);
  for (int i = 0; i < 5000; ++i) {
    const std::string sDigits = std::to_string(random() >> (random() % 32));
    const std::string sPadded = sDigits.size() < 3 ? std::string(3 - sDigits.size(), '0') + sDigits : sDigits;
    const std::string sWanted = sPadded.substr(0, sPadded.size() - 2) + "." + sPadded.substr(sPadded.size() - 2);
    ASSERT_EQ(Read(sDigits, hundredths), Model(sWanted)) << sDigits;
    ASSERT_EQ(Read(sDigits + "-", hundredths), Model("-" + sWanted)) << sDigits;
    ASSERT_EQ(Read(sDigits + ".5", hundredths), Model(sDigits + ".5")) << "a point that is printed counts";
  }
}

TEST(TidyNumberModel, NothingElseIsANumber) {
  for (const std::string sText :
       {"1,2E5",    "1,E5",     "12,34E+05", "1,234,5D3", "1E5,000", "1.5E",  "1.5E+", "E5",   "1E2.5",
        "1E12345",  "(5",       "5)",        "(-5)",      "-5-",     "-5 CR", "(5)-",  "+-5",  "$$5",
        "$5$",      "5%%",      "5 6",       "1 234",     "1/2",     "1/ ",   "1:30",  "0x10", "1_0",
        "\xC2\xBD", "\xD9\xA3", "5\xC2\xA0", "()",        "( )",     "$-",    "-%",    "**",   "CR",
        "- CR",     ",",        ".",         "-.",        "1..2",    "NaN",   "inf",   "1'234"})
    EXPECT_EQ(Read(sText), "-") << sText;
  const std::pair<std::string, std::string> numbers[] = {{"1,234E5", "1234E5"},
                                                         {"1,234.5E-2", "1234.5E-2"},
                                                         {"12E5", "12E5"},
                                                         {"( 5.00 )", "-5.00"},
                                                         {"\xE2\x82\xAC 5", "5"},
                                                         {"5 \xC2\xA3", "5"},
                                                         {"(\xC2\xA5"
                                                          "12)",
                                                          "-12"},
                                                         {"12,345 1/", "12345"},
                                                         {"2/ $1,000", "1000"},
                                                         {"- 5", "-5"},
                                                         {"*******0.00-", "0.00"},
                                                         {"00.10", "0.10"}};
  for (const auto& [sText, sPlain] : numbers)
    EXPECT_EQ(Read(sText).substr(0, sPlain.size() + 1), sPlain + " ") << sText;
}

TEST(TidyNumberModel, ANumberThatIsNoneLeavesNoTraceOfTheOneBefore) {
  std::string sPlain;
  for (const std::string_view sText : {"1234", "-7.50", "99,999.99CR"}) {
    ASSERT_TRUE(ReadTidyNumber(sText, kPlainNumber, &sPlain));
    const std::string sBefore = sPlain;
    EXPECT_FALSE(ReadTidyNumber("", kPlainNumber, &sPlain));
    EXPECT_FALSE(ReadTidyNumber("   ", kPlainNumber, &sPlain));
    EXPECT_EQ(sPlain, sBefore) << "a text that is none says nothing";
  }
}

std::string Date(std::string_view sText, std::string_view sForm) {
  std::string sPlain = "-";
  return ReadTidyDate(sText, sForm, sPlain) ? sPlain : sPlain + "none";
}

std::string Digits(int nValue, size_t nWidth, char fill = '0') {
  const std::string s = std::to_string(nValue);
  return s.size() < nWidth ? std::string(nWidth - s.size(), fill) + s : s;
}

/// One day of the calendar, or of none, in all forms.
void ExpectDay(int y, int m, int d) {
  using namespace std::chrono;
  const bool bOk = year_month_day{year{y}, month{static_cast<unsigned>(m)}, day{static_cast<unsigned>(d)}}.ok();
  const std::string sY = Digits(y, 4);
  const std::string sM = Digits(m, 2);
  const std::string sD = Digits(d, 2);
  const std::string sWanted = bOk ? sY + "-" + sM + "-" + sD : "-none";
  const std::string sM1 = std::to_string(m);
  const std::string sD1 = std::to_string(d);
  EXPECT_EQ(Date(sD + "." + sM + "." + sY, "DD.MM.YYYY"), sWanted);
  EXPECT_EQ(Date(sD1 + "." + sM1 + "." + sY, "DD.MM.YYYY"), sWanted);
  EXPECT_EQ(Date(Digits(m, 2, ' ') + "/" + Digits(d, 2, ' ') + "/" + sY, "MM/DD/YYYY"), sWanted);
  EXPECT_EQ(Date(sY + sM + sD, "YYYYMMDD"), sWanted);
  EXPECT_EQ(Date(sY + "-" + sM + "-" + sD + " 7:05:09", "YYYY-MM-DD HH:NN:SS"), bOk ? sWanted + " 07:05:09" : sWanted);
  if (m < 1 || m > 12) return;
  const std::string sName =
      std::string("JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC").substr(static_cast<size_t>(m) * 3 - 3, 3);
  EXPECT_EQ(Date(sD1 + "-" + sName + "-" + sY, "DD-MMM-YYYY"), sWanted);
  EXPECT_EQ(Date(sD + sName + sY, "DDMMMYYYY"), sWanted);
}

TEST(TidyDateModel, FollowsTheCalendarInEveryForm) {
  for (const int y : {1900, 1999, 2000, 2023, 2024, 2100}) {
    for (int m = 0; m <= 13; ++m) {
      for (int d = 0; d <= 32; ++d) ExpectDay(y, m, d);
    }
  }
}

TEST(TidyDateModel, TakesNoOtherText) {
  const std::pair<std::string_view, std::string_view> none[] = {{"01.02.2024", "DD.MM.YY"},
                                                                {"01.02.24", "DD.MM.YYYY"},
                                                                {"0102024", "DDMMYYYY"},
                                                                {"01/02/2024", "DD.MM.YYYY"},
                                                                {"1.2.2024.", "DD.MM.YYYY"},
                                                                {"", "DD.MM.YYYY"},
                                                                {"Mai 1, 2024", "MMM DD, YYYY"},
                                                                {"2024-01-01 24:00", "YYYY-MM-DD HH:NN"},
                                                                {"2024-01-01 10:60", "YYYY-MM-DD HH:NN"},
                                                                {"2024-01-01", "YYYY-MM-DD HH"},
                                                                {"-1.02.2024", "DD.MM.YYYY"},
                                                                {"01.02.0024", "DD.MM.YYYY"}};
  for (const auto& [sText, sForm] : none) EXPECT_EQ(Date(sText, sForm), "-none") << sText << " as " << sForm;
  const std::vector<std::vector<std::string_view>> dates = {
      {"2024-02-29", "", "2024-02-29"},
      {"29.2.24", "", "2024-02-29"},
      {"02/29/24", "", "2024-02-29"},
      {"29/02/2024", "", "2024-02-29"},
      {"1-Mar-50", "", "1950-03-01"},
      {"1 March 2049", "", "2049-03-01"},
      {"September 9, 2024", "MMM DD, YYYY", "2024-09-09"},
      {"9 sep 2024", "DD MMM YYYY", "2024-09-09"},
      {"  31.12.24 ", "DD.MM.YY", "2024-12-31"},
      {"490101", "YYMMDD", "2049-01-01"},
      {"500101", "YYMMDD", "1950-01-01"},
      {"2024-01-01T10:00:00.25", "YYYY-MM-DDTHH:NN:SS", "2024-01-01 10:00:00.25"}};
  for (const auto& date : dates) EXPECT_EQ(Date(date[0], date[1]), date[2]) << date[0];
}

}  // namespace
}  // namespace quillon
