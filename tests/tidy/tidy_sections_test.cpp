// Sections of recipes: how they are told apart, and those that are doubled, astray or misnamed.

#include <gtest/gtest.h>

#include "clsTidyTrial.h"
#include "modTidySections.h"

namespace quillon {
namespace {

/// "Table 1{Names=a,Fill=B} Line 1.2{}"
std::string Sections(std::string_view sText) {
  std::string sOut;
  for (const TidySection& section : SectionsOfText(sText)) {
    std::string sKeys;
    for (const auto& [sKey, sValue] : section.keys) sKeys.append(sKeys.empty() ? "" : ",").append(sKey + "=" + sValue);
    sOut.append(sOut.empty() ? "" : " ").append(section.sName + "{" + sKeys + "}");
  }
  return sOut;
}

TEST(TidySections, AreReadByTheRulesOfSectionFiles) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", ""},
      {"a=1\n[T]\nb=2", "T{b=2}"},
      {"[T]\r\na=1 \r\n b = 2\r\n", "T{a=1,b= 2}"},
      {"x [ T ] y\na=1", "T{a=1}"},
      {"[T]\na=1;b=2\n;c=3\n ; d=4\ne=;", "T{a=1,e=}"},
      {"[T]\na=b=c\nnone\n=v", "T{a=b=c,=v}"},
      {"[T]\na=1\n[]\nb=2\n[U]\nc=3", "T{a=1} U{c=3}"},
      {"[T]\na=1\nb=[\nc=2", "T{a=1}"},
      {"[T]\na=1\n[T]\nb=2\n[T", "T{a=1} T{b=2}"},
  };
  for (const auto& [sText, sWanted] : cases) EXPECT_EQ(Sections(sText), sWanted) << sText;
}

TEST(TidySections, PartsAreNamedByTableAndNumber) {
  struct Case {
    std::string_view sName;
    bool bKind;
    std::string_view sTable;
    int32_t lPart;
  };
  const Case cases[] = {
      {"Line 1.2", true, "1", 2},         {"Line 12.1000", true, "12", 1000},
      {"Line 1.99999", true, "1", 99999}, {"Line 1.100000", true, "1", 0},
      {"Line 1", true, "1", 0},           {"Line 1.", true, "1", 0},
      {"Line .2", true, "", 0},           {"Line 1.0", true, "1", 0},
      {"Line 1.02", true, "1", 0},        {"Line 01.2", true, "01", 0},
      {"Line 1.2.3", true, "1", 0},       {"Line 1. 2", true, "1", 0},
      {"Line -1.2", true, "-1", 0},       {"Line ", true, "", 0},
      {"line 1.2", false, "", 0},         {"Lines 1.2", false, "", 0},
      {"Line1.2", false, "", 0},
  };
  for (const Case& c : cases) {
    std::string sTable;
    int32_t lPart = 0;
    EXPECT_EQ(PartOfName(c.sName, "Line ", sTable, lPart), c.bKind) << c.sName;
    EXPECT_EQ(sTable, c.sTable) << c.sName;
    EXPECT_EQ(lPart, c.lPart) << c.sName;
  }
}

TEST(TidySections, MistakesInNamesAreSaid) {
  struct Case {
    std::string_view sSections;
    int32_t lCode;
    std::string_view sSays;
  };
  const Case cases[] = {
      {"[Tabel 2]\nPlaces=1-", kTidyBadSection, "write it as [Table 1]"},
      {"[Table2]\nPlaces=1-", kTidyBadSection, "[Table2]"},
      {"[table 2]\nNames=a", kTidyBadSection, "write it as [Table 1]"},
      {"[heading 1.1]\nText=a", kTidyBadSection, "write it as [Heading 1.1]"},
      {"[Heading1.1]\nText=a", kTidyBadSection, "write it as [Heading 1.1]"},
      {"[Heading 1.0]\nText=a", kTidyBadSection, "write it as [Heading 1.1]"},
      {"[Heading 1.01]\nText=a", kTidyBadSection, "[Heading 1.01]"},
      {"[Heading 1.1.1]\nText=a", kTidyBadSection, "[Heading 1.1.1]"},
      {"[Lines 1.2]\nPlaces=1-", kTidyBadSection, "write it as [Line 1.2]"},
      {"[Line 1.100000]\nPlaces=1-", kTidyBadSection, "[Line 1.100000]"},
      {"[Line 1.1001]\nPlaces=1-", kTidyTooMuch, "1001"},
      {"[Line 1.2]\nText=a\n[Heading 1.2]\nText=b\n[Line 1.2]\nText=c", kTidyTwice, "[Line 1.2] stands twice"},
      {"[Heading 2.1]\nText=a", kTidyStraySection, "[Heading 2.1] belongs to no table"},
      {"[Line 10.2]\nText=a", kTidyStraySection, "[Line 10.2]"},
      {"[Line 1.2]\nText=a\nFill=A", kTidyUnknownKey, "Fill"},
      {"[Heading 1.1]\nText=a\nRepeat=yes", kTidyUnknownKey, "Repeat"},
  };
  for (const Case& c : cases) {
    const clsTidyTrial trial("[Table 1]\nPlaces=1-\n" + std::string(c.sSections), "x\n");
    EXPECT_EQ(trial.fault.lCode, c.lCode) << c.sSections << ": " << trial.fault.sText;
    EXPECT_NE(trial.fault.sText.find(c.sSays), std::string::npos) << c.sSections << ": " << trial.fault.sText;
    EXPECT_TRUE(trial.rows.empty()) << c.sSections;
  }
}

TEST(TidySections, OthersMayBeCalledAsTheyLike) {
  for (const std::string_view sSections :
       {"[-Heading 1.1]\nText=a", "[Notes]\nText=about the report", "[General]\nName=x\nNames=y",
        "[Headings]\nColour=a", "[Tabel 2]\nReadThis=1", "[Heading 1.1000]\nText=a",
        "[Line 1.2]\nText=a\n[Heading 1.2]\nText=b", "[Title 1]\nText=Report\nWriteColumn=A",
        "[Table 1 Col 1]\nReadColumnStart=1\nWriteColumn=A"}) {
    const clsTidyTrial trial("[Table 1]\nPlaces=1-\nNames=a\n" + std::string(sSections), "x\n");
    EXPECT_FALSE(trial.fault.IsSet()) << sSections << ": " << trial.fault.sText;
    EXPECT_EQ(trial.rows.size(), 1U) << sSections;
  }
  const clsTidyTrial plain("[Table 1]\nReadStartLine=a\nParsing=-\n[Headings 1.1]\nText=x\n[Tabel 2]\nWriteColumn=A",
                           "a\n");
  EXPECT_FALSE(plain.fault.IsSet()) << "without a tidy table nothing is misnamed";
}

}  // namespace
}  // namespace quillon
