#include <gtest/gtest.h>

#include "clsTidyTrial.h"
#include "modTidyText.h"

namespace quillon {
namespace {

struct Mistake {
  std::string_view sRecipe;
  int32_t lCode;
  std::string_view sSays;  ///< A part of the text
};

TEST(TidyKeys, SayWhereAMistakeIsAndWhatMayBeMeant) {
  const std::vector<Mistake> mistakes = {
      {"[Table 1]\nNeds=A any\nPlaces=1-5", kTidyUnknownKey,
       "[Table 1] has a key that there isn't: `Neds`; did you mean `Needs`?"},
      {"[Table 1]\nPlaces=1-5\n[Heading 1.1]\nTxt=A", kTidyUnknownKey, "[Heading 1.1]"},
      {"[Table 1]\nPlaces=1-5\n[Heading 1.1]\nPlaces=1-4", kTidyMissingKey, "Text, Like or Needs"},
      {"[Table 1]\nPlaces=1-5\n[Heading 2.1]\nText=A", kTidyStraySection, "[Heading 2.1] belongs to no table"},
      {"[Table 1]\nPlaces=1-5\n[Line 1.1]\nText=A", kTidyBadSection, "write it as [Line 1.2]"},
      {"[Table 1]\n[Line 1. 1.2]\nPlaces=1-", kTidyBadSection, "write it as [Line 1.2]"},
      {"[Table 1]\nPlaces=1-5\n[Heading 1]\nText=A", kTidyBadSection, "write it as [Heading 1.1]"},
      {"[Table 1]\nPlaces=1-5\n[headings 1.1]\nText=A", kTidyBadSection, "write it as [Heading 1.1]"},
      {"[Table 1]\nPlaces=1-5\n[Heading 1.1]\nText=A\n[Heading 1.1]\nText=B", kTidyTwice, "[Heading 1.1]"},
      {"[Table 1]\nPlaces=1-5\n[Heading 1.1]\nText=A\nNames=^", kTidyBadValue, "above a column"},
      {"[Table 1]\nPlaces=0-5", kTidyBadPlace, "`0-5`"},
      {"[Table 1]\nPlaces=9-5", kTidyBadPlace, "`9-5`"},
      {"[Table 1]\nPlaces=1-32768", kTidyBadPlace, "`1-32768`"},
      {"[Table 1]\nPlaces=1-5 7-9\nNeeds=C any", kTidyNoColumn, "there is no column C; the last one is B"},
      {"[Table 1]\nPlaces=1-5\nFill=B", kTidyNoColumn, "Fill"},
      {"[Table 1]\nPlaces=1-5 7-9\nTypes=A-C text", kTidyNoColumn, "Types"},
      {"[Table 1]\nPlaces=1-5 7-9\nNames=a|b|c", kTidyManyNames, "3 names for 2 columns"},
      {"[Table 1]\nPlaces=1-5\nNeeds=A numbr", kTidyBadValue, "did you mean `number`?"},
      {"[Table 1]\nPlaces=1-5\nTypes=A date", kTidyBadValue, "asks for its form"},
      {"[Table 1]\nPlaces=1-5\nPlaces=1-6", kTidyBadValue, "stands twice"},
      {"[Table 1]\nSplit=,", kTidyMissingKey, "Names"},
      {"[Table 1]\nPlaces=1-5\nRepeat=yes", kTidyMissingKey, "ReadStartLine"},
      {"[Table 1]\nPlaces=1-5\nRepeat=ja", kTidyBadValue, "there are yes no"},
      {"[Table 1]\nPlaces=1-5\nSheet=a/b", kTidyBadValue, "`a/b`"},
      {"[Table 1]\nPlaces=1-5\nReadStartLineOffset=two", kTidyBadValue, "`two`"},
  };
  for (const Mistake& mistake : mistakes) {
    const clsTidyTrial trial(mistake.sRecipe, "");
    EXPECT_EQ(trial.fault.lCode, mistake.lCode) << mistake.sRecipe << ": " << trial.fault.sText;
    EXPECT_NE(trial.fault.sText.find(mistake.sSays), std::string::npos) << mistake.sRecipe << ": " << trial.fault.sText;
  }
}

TEST(TidyKeys, AreFoundByTheirExactNamesAndMakeATableTidy) {
  const auto sections = SectionsOfText(
      "[Table 1]\nReadStartLine=a\nParsing=---\n[Table 2]\nNames=Blank|Fill\nBlank=x;y\n[Table "
      "3]\nWriteColumn=A\n[Line 3.2]\nPlaces=1-");
  EXPECT_FALSE(IsTidyTable(sections, 1));
  EXPECT_TRUE(IsTidyTable(sections, 2));
  EXPECT_TRUE(IsTidyTable(sections, 3));
  EXPECT_FALSE(clsTidyTrial("[Table 1]\nPlaces=1-\n[-Heading 1.1]\nText=A\n[-Table 2]\nPlaces=1", "").fault.IsSet());
  TidyTable table;
  TidyFault fault;
  ASSERT_FALSE(ReadTidyTable(sections, 2, table, fault));  // two names for one column
  EXPECT_EQ(table.row.blanks, (Rows{"x"}));
}

TEST(TidyKeys, TakeWhatAFileCantHoldAsEscapes) {
  const clsTidyTrial trial("[Table 1]\nLike=\\x5B9]\nPlaces=1-\nNames=a\\x7Cb\nDrop=\\x3B", "[1] x\n[2] ;\n1 y\n");
  EXPECT_EQ(trial.rows, (Rows{"[1] x"}));
  EXPECT_EQ(trial.names, (Rows{"a|b"}));
  EXPECT_EQ(TidyEscaped(" [a|b]; "), "\\x20\\x5Ba\\x7Cb]\\x3B\\x20");
  for (const std::string_view sText : {"\\x41", "C:\\xy", "\\", "\\\\x5B", " \\x20"}) {
    EXPECT_EQ(TidyUnescaped(TidyEscaped(sText)), sText);
  }
}

TEST(TidyKeys, StayLinearForHugeValues) {
  std::string sPlaces;
  std::string sHeadings;
  for (int i = 1; i <= 32000; ++i) sPlaces += " " + std::to_string(i);
  for (int i = 1; i <= 1000; ++i)
    sHeadings += "[Heading 1." + std::to_string(i) + "]\nText=H" + std::to_string(i) + ":\n";
  const clsTidyTrial trial("[Table 1]\nPlaces=" + sPlaces + "\nNeeds=A digits\n" + sHeadings,
                           "H7: x\n1" + std::string(31998, '2') + "3\n");
  ASSERT_FALSE(trial.fault.IsSet()) << trial.fault.sText;
  ASSERT_EQ(trial.rows.size(), 1U);
  EXPECT_TRUE(trial.rows[0].ends_with("|2|3"));
  const clsTidyTrial picture("[Table 1]\nPlaces=1-\nLike=" + std::string(10001, '9'), "");
  EXPECT_EQ(picture.fault.lCode, kTidyTooMuch);
}

}  // namespace
}  // namespace quillon
