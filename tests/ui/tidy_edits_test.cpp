// A tidy table that was changed by hand goes back into the text of its recipe.

#include "modTidyEdits.h"

#include <gtest/gtest.h>

#include <functional>

#include "modRecipeOfTables.h"
#include "modTidyColumns.h"
#include "modTidyKeys.h"

namespace quillon {
namespace {

using Edit = std::function<void(TidyTable& table)>;

TidyTable TableOf(const std::string& sRecipe, int32_t lTable = 1) {
  TidyTable table;
  TidyFault fault;
  EXPECT_TRUE(ReadTidyTable(SectionsOfText(sRecipe), lTable, table, fault)) << fault.sText << "\n" << sRecipe;
  return table;
}

/// The recipe after an edit of one of its tables. What it says then is what the edit made of the table.
std::string Edited(const std::string& sRecipe, const Edit& edit, int32_t lTable = 1) {
  const TidyTable before = TableOf(sRecipe, lTable);
  TidyTable after = before;
  edit(after);
  std::string sText = sRecipe;
  for (const TextEdit& change : TidyEdits(sText, before, after)) sText = change.Applied(sText);
  EXPECT_EQ(RecipeOfTable(TableOf(sText, lTable), 1), RecipeOfTable(after, 1)) << sText;
  std::vector<TidyTable> tables;
  TidyFault fault;
  EXPECT_TRUE(ReadTidyRecipe(sText, tables, fault)) << fault.sText << "\n" << sText;
  return sText;
}

TidyPart Labelled(const std::string& sText) {
  TidyPart part;
  part.texts = {sText};
  part.names = {"of " + sText};
  return part;
}

TEST(TidyEdits, ReachPartsWhoseNumbersLeaveSomeOut) {
  const std::string sRecipe =
      "[Table 1]\nNeeds=A digits\nPlaces=1-4 6-9\n[Heading 1.2]\nText=DEPT:\nNames=Dept\n"
      "[Heading 1.7]\nText=RUN:\nNames=Run\n[Line 1.3]\nPlaces=3-\nNames=Town\n[Line 1.9]\nText=MEMO:\nNames=Memo\n";
  const auto without = [](std::string sText, const std::string& sLines) {
    const size_t nAt = sText.find(sLines);
    return nAt == std::string::npos ? "not there: " + sLines : sText.erase(nAt, sLines.size());
  };
  struct Case {
    Edit edit;
    const char *pAdded, *pGone;
  };
  const Case cases[] = {
      {[](TidyTable& t) {
         NameColumn(t, {ColumnSource::Heading, 1, 0}, "Date");
       },
       "Names=Date\n", "Names=Run\n"},
      {[](TidyTable& t) {
         NameColumn(t, {ColumnSource::Heading, 0, 0}, "Unit");
       },
       "Names=Unit\n", "Names=Dept\n"},
      {[](TidyTable& t) {
         NameColumn(t, {ColumnSource::Further, 0, 0}, "City");
       },
       "Names=City\n", "Names=Town\n"},
      {[](TidyTable& t) {
         NameColumn(t, {ColumnSource::Further, 1, 0}, "Note");
       },
       "Names=Note\n", "Names=Memo\n"},
      {[](TidyTable& t) { t.headings.push_back(Labelled("SITE")); }, "[Heading 1.8]\nText=SITE\nNames=of SITE\n", ""},
      {[](TidyTable& t) {
         t.lines.push_back({9, Labelled("SEE")});
       },
       "[Line 1.10]\nText=SEE\nNames=of SEE\n", ""},
      {[](TidyTable& t) { t.headings.pop_back(); }, "", "[Heading 1.7]\nText=RUN:\nNames=Run\n"},
      {[](TidyTable& t) { t.lines.pop_back(); }, "", "[Line 1.9]\nText=MEMO:\nNames=Memo\n"},
  };
  for (const Case& c : cases) {
    const std::string sText = Edited(sRecipe, c.edit);
    EXPECT_EQ(without(sText, c.pAdded), without(sRecipe, c.pGone)) << "nothing else is touched";
  }
}

TEST(TidyEdits, FindTheirPlaceInTextsOfAnyForm) {
  const Edit name = [](TidyTable& t) { NameColumn(t, {ColumnSource::Row, 0, 0}, "No"); };
  const Edit drop = [](TidyTable& t) { t.drops = {"SUM [a|b;"}; };
  const Edit head = [](TidyTable& t) { t.headings.push_back(Labelled("DEPT:")); };
  struct Case {
    const char* pRecipe;
    Edit edit;
    const char* pWanted;
  };
  const Case cases[] = {
      {"[Table 1]\nNeeds=A digits\nPlaces=1-4", name, "[Table 1]\nNeeds=A digits\nPlaces=1-4\nNames=No\n"},
      {"[Table 1]\nNeeds=A digits\nPlaces=1-4", head,
       "[Table 1]\nNeeds=A digits\nPlaces=1-4\n[Heading 1.1]\nText=DEPT:\nNames=of DEPT:\n"},
      {"[Table 1]\r\nPlaces=1-4\r\nDrop=SUM\r\n", drop, "[Table 1]\r\nPlaces=1-4\r\nDrop=SUM \\x5Ba\\x7Cb\\x3B\r\n"},
      {"[Table 1]\nPlaces = 1-4 ; wide\n Names = Nr ; mine\n; Names=old\n", name,
       "[Table 1]\nPlaces = 1-4 ; wide\n Names =No; mine\n; Names=old\n"},
      {"[ Table 1 ] the rows\nPlaces=1-4\n\n; the end\n", name,
       "[ Table 1 ] the rows\nPlaces=1-4\nNames=No\n\n; the end\n"},
      {"[Table 1]\nPlaces=1-4\n[-Table 2]\nNames=x\n", name, "[Table 1]\nPlaces=1-4\nNames=No\n[-Table 2]\nNames=x\n"},
      {"[Header]\nProduct=x\n[Table 1]\nPlaces=1-4\n", name, "[Header]\nProduct=x\n[Table 1]\nPlaces=1-4\nNames=No\n"},
      {"[Heading 1.1]\nText=A\n[Table 1]\nPlaces=1-4\n", [](TidyTable& t) { t.headings.clear(); },
       "[Table 1]\nPlaces=1-4\n"},
      {"[Table 1]\nPlaces=1-4\n[Heading 1.1] ; see [x]\nText=A\n; of it\n", [](TidyTable& t) { t.headings.clear(); },
       "[Table 1]\nPlaces=1-4\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(Edited(c.pRecipe, c.edit), c.pWanted) << c.pRecipe;
}

TEST(TidyEdits, KeepToTheirTable) {
  std::string sRecipe;
  for (const std::string sNumber : {"1", "2", "11"}) {
    sRecipe += "[Table " + sNumber + "]\nPlaces=1-4\n[Heading " + sNumber + ".1]\nText=A\nNames=x\n";
  }
  sRecipe.replace(sRecipe.find("[Table 11]"), 10, "[Table 3]");
  sRecipe.replace(sRecipe.find("[Heading 11.1]"), 14, "[Heading 3.1]");
  const std::string sText = Edited(
      sRecipe,
      [](TidyTable& t) {
        t.headings[0].names = {"y"};
        t.headings.push_back(Labelled("B"));
        t.row.names = {"No"};
      },
      2);
  EXPECT_EQ(
      sText,
      "[Table 1]\nPlaces=1-4\n[Heading 1.1]\nText=A\nNames=x\n[Table 2]\nPlaces=1-4\nNames=No\n[Heading 2.1]\n"
      "Text=A\nNames=y\n[Heading 2.2]\nText=B\nNames=of B\n[Table 3]\nPlaces=1-4\n[Heading 3.1]\nText=A\nNames=x\n");
}

TEST(TidyEdits, ATableIsAddedOnALineOfItsOwn) {
  const auto added = [](const std::string& sRecipe) { return AddedTable(sRecipe, 2).Applied(sRecipe); };
  EXPECT_EQ(added(""), "[Table 2]\r\n");
  EXPECT_EQ(added("[Table 1]"), "[Table 1]\r\n[Table 2]\r\n");
  EXPECT_EQ(added("[Table 1]\nLike=9"), "[Table 1]\nLike=9\n[Table 2]\n");
  EXPECT_EQ(added("[Table 1]\r\n"), "[Table 1]\r\n[Table 2]\r\n");
}

TidyTable Stock(int32_t nLastEnd) {
  TidyTable table;
  table.row.cut.places = {{{1, 4}, {6, 20}, {21, nLastEnd}}};
  table.row.names = {"No", "Name", "Net"};
  table.row.needs = {{0, {{TidyKind::Digits, {}}}}, {2, {{TidyKind::Number, {}}}}};
  table.fills = {0, 2};
  table.join = TidyJoin::Up;
  table.joinColumn = 1;
  table.levelColumn = 2;
  return table;
}

std::string Told(const TidyTable& table) {
  std::string sText;
  for (const TidyPlace& place : table.row.cut.places.front()) {
    sText += std::to_string(place.nStart) + "-" + (place.nEnd > 0 ? std::to_string(place.nEnd) : "") + " ";
  }
  for (const std::string& sName : table.row.ColumnNames()) sText += sName + "|";
  for (const TidyNeed& need : table.row.needs) sText += " needs " + ColumnLetters(need.column);
  for (const TidyColumn column : table.fills) sText += " fills " + ColumnLetters(column);
  if (table.joinColumn != kNoTidyColumn) sText += " join " + ColumnLetters(table.joinColumn);
  if (table.levelColumn != kNoTidyColumn) sText += " level " + ColumnLetters(table.levelColumn);
  return sText;
}

TEST(TidyColumns, AHandAtABoundaryTakesAllOfTheColumnAlong) {
  constexpr CutRules kRules{.bGaps = true, .bEmpty = false, .lNarrowest = 1};
  const std::vector<CutField> fields{{1, 4}, {6, 20}, {21, 90}};  // boundaries 0, 4, 5, 20, 90
  struct Case {
    const char* pWhat;
    std::optional<CutChange> change;
    const char* pWanted;
  };
  const Case cases[] = {
      {"the last column takes in the one before and stays open", RemoveBoundary(fields, kRules, 3),
       "1-4 6- No|Name| needs A fills A join B"},
      {"its left edge moves", MoveBoundary(fields, kRules, 3, 18),
       "1-4 6-18 19- No|Name|Net| needs A needs C fills A fills C join B level C"},
      {"its right edge moves", MoveBoundary(fields, kRules, 4, 70),
       "1-4 6-20 21-70 No|Name|Net| needs A needs C fills A fills C join B level C"},
      {"it is split", AddBoundary(fields, kRules, 30),
       "1-4 6-20 21-30 31- No|Name|Net|| needs A needs C fills A fills C join B level C"},
      {"it goes", RemoveBoundary(fields, kRules, 4), "1-4 6-20 No|Name| needs A fills A join B"},
      {"another stands behind it", AddBoundary(fields, kRules, 99),
       "1-4 6-20 21-90 91-99 No|Name|Net|| needs A needs C fills A fills C join B level C"},
      {"another stands in a gap", AddBoundary(fields, kRules, 5),
       "1-4 5-5 6-20 21- No||Name|Net| needs A needs D fills A fills D join C level D"},
      {"a gap is taken in", RemoveBoundary(fields, kRules, 1),
       "1-5 6-20 21- No|Name|Net| needs A needs C fills A fills C join B level C"},
  };
  for (const Case& c : cases) {
    ASSERT_TRUE(c.change) << c.pWhat;
    TidyTable table = Stock(0);
    ChangeColumns(table, *c.change);
    EXPECT_EQ(Told(table), c.pWanted) << c.pWhat;
  }
}

TEST(TidyColumns, CanBeMovedWhereEachStandsOnceAndBehindTheOther) {
  struct Case {
    std::vector<std::vector<TidyPlace>> places;
    bool bCan;
  };
  const Case cases[] = {
      {{}, false},
      {{{{1, 4}, {5, 0}}}, true},
      {{{{1, 4}, {4, 8}}}, false},
      {{{{5, 8}, {1, 4}}}, false},
      {{{{1, 0}, {5, 8}}}, false},
      {{{{1, 4}}, {{5, 8}}}, false},
  };
  for (const Case& c : cases) {
    TidyTable table;
    table.row.cut.places = c.places;
    EXPECT_EQ(CanMoveColumns(table), c.bCan);
  }
}

TEST(TidyColumns, ATypeForAllStaysThatOfTheOthers) {
  TidyTable table = TableOf("[Table 1]\nPlaces=1-4 6-9 11-14\nTypes=number\n");
  TypeColumn(table, {ColumnSource::Row, 0, 1}, {TidyType::Text, false, 0, {}});
  table = TableOf(RecipeOfTable(table, 1));
  EXPECT_EQ(table.row.TypeOf(0).type, TidyType::Number);
  EXPECT_EQ(table.row.TypeOf(1).type, TidyType::Text);
  EXPECT_EQ(table.row.TypeOf(2).type, TidyType::Number);
  for (const bool bFill : {true, true, false, false, true}) FillColumn(table, 2, bFill);
  FillColumn(table, 0, true);
  EXPECT_EQ(table.fills, (std::vector<TidyColumn>{0, 2}));
}

TEST(TidyColumns, NamesReachTheirColumnAcrossSkippedOnes) {
  TidyTable table = TableOf("[Table 1]\nPlaces=1-4 6-9 11-14\nTypes=B skip\nNames=No|Net\n");
  NameColumn(table, {ColumnSource::Row, 0, 2}, "Gross | net; [x]");
  EXPECT_EQ(TableOf(RecipeOfTable(table, 1)).row.ColumnNames(),
            (std::vector<std::string>{"No", "", "Gross | net; [x]"}));
}

}  // namespace
}  // namespace quillon
