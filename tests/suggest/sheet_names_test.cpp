#include <gtest/gtest.h>

#include "modSuggestTables.h"

namespace quillon {
namespace {

/// A table: its columns' names, the name of its sheet, whether it is chosen.
FoundTable TableOf(const std::vector<std::string>& names, const std::string& sSheet = {}, bool bChosen = true) {
  FoundTable table;
  table.tidy.row.names = names;
  table.tidy.sSheet = sSheet;
  table.bChosen = bChosen;
  return table;
}

struct SheetCase {
  const char* pWhat;
  std::vector<FoundTable> tables;
  std::vector<std::string> sheets;
};

TEST(SheetNamesTest, GivesTablesOfOtherColumnsTheirOwnSheets) {
  const std::vector<std::string> people{"No", "Name"};
  const std::vector<std::string> stock{"No", "Stock"};
  const std::vector<std::string> none{"", ""};
  const SheetCase cases[] = {
      {"one table", {TableOf(people)}, {""}},
      {"other columns", {TableOf(people), TableOf(stock)}, {"", "Table 2"}},
      {"the same columns",
       {TableOf(people), TableOf(stock), TableOf(people), TableOf(stock)},
       {"", "Table 2", "", "Table 2"}},
      {"columns without names are not known to be the same", {TableOf(none), TableOf(none)}, {"", "Table 2"}},
      {"names in another order", {TableOf(people), TableOf({"Name", "No"})}, {"", "Table 2"}},
      {"a person's names stay",
       {TableOf(people, "Staff"), TableOf(stock, "Table of stock")},
       {"Staff", "Table of stock"}},
      {"those of the same columns join a person's", {TableOf(people, "Staff"), TableOf(people)}, {"Staff", "Staff"}},
      {"names of its own are given anew", {TableOf(people, "Table 3"), TableOf(stock, "Table 4")}, {"", "Table 2"}},
      {"those that are off count behind the chosen ones",
       {TableOf(people), TableOf(stock, "", false), TableOf(none), TableOf(none, "Mine", false)},
       {"", "Table 3", "Table 2", "Mine"}},
      {"none is chosen", {TableOf(people, "", false), TableOf(stock, "", false)}, {"Table 1", "Table 2"}},
  };
  for (const SheetCase& c : cases) {
    TableSuggestion suggestion;
    suggestion.tables = c.tables;
    for (int i = 0; i < 2; ++i) {
      suggestion.NameSheets();
      std::vector<std::string> sheets;
      for (const FoundTable& table : suggestion.tables) sheets.push_back(table.tidy.sSheet);
      EXPECT_EQ(sheets, c.sheets) << c.pWhat << ", time " << i + 1;
    }
  }
}

TEST(SheetNamesTest, TakesNoNameThatAPersonGaveAnotherTable) {
  TableSuggestion suggestion;
  suggestion.tables = {TableOf({"A"}, "Staff"), TableOf({"B"}), TableOf({"A"})};
  suggestion.NameSheets();
  EXPECT_EQ(suggestion.tables[1].tidy.sSheet, "Table 2");
  EXPECT_EQ(suggestion.tables[2].tidy.sSheet, "Staff");
}

}  // namespace
}  // namespace quillon
