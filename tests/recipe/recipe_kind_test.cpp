#include "modRecipeKind.h"

#include <gtest/gtest.h>

#include "modSectionFile.h"

namespace quillon {
namespace {

clsSectionFile Opened(std::string_view sBytes) {
  clsSectionFile file;
  file.OpenMemory(sBytes, {});
  return file;
}

TEST(RecipeKind, RefusesTheOtherFormWithTheOptionThatTakesIt) {
  const std::string sLong = "[Header]\nProduct=QLN\nFileType=RECIPE\n[Table 1]\n";
  const std::string sSpec = "[Header]\nProduct=QLN\nFileType=EXPORT SPEC\n";
  const std::string sShort = "[Table 1]\nParsing=--\n";
  struct Case {
    std::string sText;
    bool bLongWanted;
    const char* sWrong;
  };
  for (const Case& c : {
           Case{sLong, true, ""},
           Case{sLong, false, "r is a long-form recipe; name it by --specification"},
           Case{sShort, false, ""},
           Case{sShort, true, "r is a recipe of the short form; name it by --recipe"},
           Case{sSpec, true,
                "r is an export specification; name the long-form recipe that uses it, by --specification"},
           Case{sSpec, false,
                "r is an export specification; name the long-form recipe that uses it, by --specification"},
           Case{"[Header]\nFileType=RECIPE\nCodePage=cp273\n[Table 1]\n", false, ""},
           Case{"", false, ""},
           Case{"", true, ""},
       }) {
    clsSectionFile recipe = Opened(c.sText);
    EXPECT_EQ(WrongKindOfRecipe(recipe, "r", c.bLongWanted), c.sWrong) << c.sText;
  }
}

TEST(RecipeKind, TellsWhyAKeyReadsAsMissing) {
  struct Case {
    const char *sText, *sWhy;
  };
  for (const Case& c : {
           Case{"", "There is no such section: [Table 1]"},
           Case{"[table 1]\nKey=x\n[Table 2]\n",
                "There is no such section: [Table 1]; the recipe has [table 1], [Table 2]"},
           Case{"[Table 1]\nOther=x\n[Table 2]\nKey=x\n", "The section has no such key: [Table 1] Key"},
           Case{"[Table 1]\nkey=x\n", "The section has no such key: [Table 1] Key"},
           Case{"[Table 1]\nOther=a [b\nKey=x\n", "Line 2: a [ in a value ends the section: Other=a [b"},
           Case{"\n[Table 1]\r\nKey0=x\r\nKey=y\r\n",
                "Line 3: it holds the name of the key that is looked for, and hides it further down: Key0=x"},
           Case{"[Table 1]\nOther=see Key\nKey=y\n",
                "Line 2: it holds the name of the key that is looked for, and hides it further down: Other=see Key"},
           Case{"[Table 1]\nKey=;x\n", "Line 2: a ; begins a comment, so no value is left: Key=;x"},
           Case{"[Table 1]\nKey=  \nKey=x\n", "Line 2: the key has no value: Key=  "},
           Case{"[Table 1]\n[Table 1]\nKey=x\n", "The section has no such key: [Table 1] Key"},
       }) {
    clsSectionFile recipe = Opened(c.sText);
    ASSERT_EQ(ReadKeyFromFile(recipe, "Table 1", "Key", "none"), "none") << c.sText;
    EXPECT_EQ(WhyMissing(recipe, "Table 1", "Key"), c.sWhy) << c.sText;
  }
}

std::string Hints(std::string_view sText) {
  clsSectionFile recipe = Opened(sText);
  std::string sAll;
  for (const std::string& sHint : RecipeHints(recipe)) sAll += sHint + "\n";
  return sAll;
}

TEST(RecipeKind, HintsAtTablesThatNoRunLooksAt) {
  struct Case {
    const char *sText, *sHints;
  };
  for (const Case& c : {
           Case{"", ""},
           Case{"[Header]\n[Table 1]\n[ Table 2 ]\n[Table 3]\n[Tables]\n[Table of x]\n", ""},
           Case{"[Table 1]\n[Table 1]\n[Table 2]\n",
                "Line 2: [Table 1] stands twice, and the first one alone is read\n"},
           Case{"[Table 1]\n[Table 2]\n[Table 1]\n[Table 2]\n[Table 3]\n",
                "Line 3: [Table 1] stands twice, and the first one alone is read\n"
                "Line 4: [Table 2] stands twice, and the first one alone is read\n"},
           Case{"[Table 1]\n[TABLE 2]\n[Table 3]\n", "Line 2: [TABLE 2] is no table; write [Table 2]\n"},
           Case{"[Table1]\n[Table  2]\n",
                "Line 1: [Table1] is no table; write [Table 1]\nLine 2: [Table  2] is no table; write [Table 2]\n"},
           Case{"[Table 1]\n[Table 3]\n",
                "Line 2: [Table 3] stands where [Table 2] is wanted; number the tables from 1 with no gap\n"},
           Case{"[Table 0]\n[Table 1]\n",
                "Line 1: [Table 0] stands where [Table 1] is wanted; number the tables from 1 with no gap\n"
                "Line 2: [Table 1] stands where [Table 2] is wanted; number the tables from 1 with no gap\n"},
       }) {
    EXPECT_EQ(Hints(c.sText), c.sHints) << c.sText;
  }
}

TEST(RecipeKind, HintsAtBlanksInFrontOfARulerWhereTheyAreAHabit) {
  const std::string sHint =
      "Line 3: the blanks behind the = of Parsing belong to the ruler and move all its columns; write Parsing= with no "
      "blank\n";
  EXPECT_EQ(Hints("[Table 1]\nReadStartLine= STOCK\nParsing= -- --\n"), sHint);
  EXPECT_EQ(Hints("[Table 1]\nReadStartLine=STOCK\nParsing = -- --\n"), sHint);
  EXPECT_EQ(Hints("[Table 1]\nReadStartLine=STOCK\nParsing= -- --\n"), "") << "the first column is passed over";
  EXPECT_EQ(Hints("[Table 1]\nReadStartLine= STOCK\nParsing=-- --\n"), "");
  EXPECT_EQ(Hints("[Table 1]\nReadStartLine= STOCK\n[Table 2]\nParsing= -- --\n"), "") << "habits of another table";
}

}  // namespace
}  // namespace quillon
