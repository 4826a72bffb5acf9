#include "modRecipeText.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

std::string Set(std::string_view sRecipe, std::string_view sValue, int32_t lTable = 1) {
  const auto edit = SetTableKey(sRecipe, lTable, "Parsing", sValue);
  return edit ? edit->Applied(sRecipe) : "nothing";
}

TEST(RecipeText, SetsTheValueThatTheReaderFinds) {
  EXPECT_EQ(Set("[Table 1]\r\nParsing=--- \r\nx=1", "- -"), "[Table 1]\r\nParsing=- - \r\nx=1");
  EXPECT_EQ(Set("[Table 1]\n Parsing = ---  ; why\n", " -"), "[Table 1]\n Parsing = -  ; why\n");
  EXPECT_EQ(Set("a\n[ Table 1 ] b\nParsing=\n[Table 2]\nParsing=--", "-"),
            "a\n[ Table 1 ] b\nParsing=-\n[Table 2]\nParsing=--");
  EXPECT_EQ(Set("[Table 1]\nParsing=-\n[Table 2]\nParsing=--", "---", 2),
            "[Table 1]\nParsing=-\n[Table 2]\nParsing=---");
  EXPECT_EQ(Set("é\r[Table 1]\rParsing=é", "-"), "é\r[Table 1]\rParsing=-") << "lines that end at CR";
  EXPECT_EQ(Set("[Table 2]\n", "-"), "nothing");
}

TEST(RecipeText, AddsALineWhereNothingHidesIt) {
  EXPECT_EQ(Set("[Table 1]", "-"), "[Table 1]\r\nParsing=-\r\n");
  EXPECT_EQ(Set("[Table 1]\r\nReadStartLine=Parsing\r\nParsing=--\r\n", "-"),
            "[Table 1]\r\nParsing=-\r\nReadStartLine=Parsing\r\nParsing=--\r\n");
  EXPECT_EQ(Set("[Table 1]\nParsing=-[-\n", "-"), "[Table 1]\nParsing=-\nParsing=-[-\n");
}

TEST(RecipeText, FindsTheTableOfAPlace) {
  constexpr std::string_view kRecipe = "[Header]\n[Table 2]\na\n[Table 2 Col 1]\n[Table 1]\nb\n";
  EXPECT_EQ(TableAt(kRecipe, 0), 2);
  EXPECT_EQ(TableAt(kRecipe, 20), 2);
  EXPECT_EQ(TableAt(kRecipe, kRecipe.find("[Table 1]")), 1);
  EXPECT_EQ(TableAt(kRecipe, kRecipe.size()), 1);
  EXPECT_EQ(TableAt("nothing", 3), 1);
  EXPECT_EQ(PlaceOfTable(kRecipe, 1), kRecipe.find("[Table 1]"));
  EXPECT_EQ(PlaceOfTable(kRecipe, 3), std::nullopt);
}

}  // namespace
}  // namespace quillon
