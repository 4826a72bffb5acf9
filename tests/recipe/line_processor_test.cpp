// Rows, their tabs and the fields cut out of them.

#include "clsRunTest.h"
#include "modRows.h"

namespace quillon {
namespace {

TEST(Tabs, FillToTheStopAndMayHaveNoWidth) {
  struct Case {
    const char* sText;
    int32_t lSize;
    std::string sWanted;
  };
  const Case cases[] = {
      {"\tx", 8, "        x"},
      {"\t\tx", 8, std::string(16, ' ') + "x"},
      {"1234567\tx", 8, "1234567 x"},
      {"12345678\tx", 8, "12345678x"},
      {"123456789\tx", 8, "123456789       x"},
      {"a\tb\tc", 1, "abc"},
      {"a\tb", 4, "a   b"},
      {"\xC3\xA9\tb", 4, "\xC3\xA9   b"},
      {"a\tb", 0, ""},
      {"", 8, ""},
  };
  for (const Case& c : cases) EXPECT_EQ(ExpandTabs(c.sText, c.lSize), c.sWanted) << c.sText;
  std::string sOut;
  EXPECT_FALSE(AppendExpanded("\t", 2000000000, false, sOut)) << "no memory is spent on what no row can hold";
}

class LineProcessor : public clsRunTest {
 protected:
  std::string Read(std::string_view sBytes, int32_t tab_size = 8) {
    reader_.OpenMemory(sBytes, options.text);
    gLineProcessor().ReadRowPeriod1Only(context, &reader_, tab_size);
    return gLineProcessor().RowCollection[0].Text();
  }
  std::string Field(int32_t lOperator, int32_t lStart, int32_t lEnd) {
    std::string sField;
    return gLineProcessor().ProcessField(context, lOperator, lStart, lEnd, sField) ? sField : "(failure)";
  }
  void Rows(std::initializer_list<std::string_view> rows) {
    size_t n = 0;
    for (const std::string_view sRow : rows) gLineProcessor().RowCollection[n++].SetText(sRow);
    recipe.InputFileLast = static_cast<int32_t>(n);
  }
  void TearDown() override {
    for (clsRow& row : gLineProcessor().RowCollection) row.Clear();
    clsRunTest::TearDown();
  }
  clsLineReader reader_;
};

TEST_F(LineProcessor, ClosesARowWithABlankBeforeItsTabs) {
  EXPECT_EQ(Read("ab"), "ab ");
  EXPECT_EQ(Read("ab \n"), "ab ");
  EXPECT_EQ(Read("\nab"), "");
  EXPECT_EQ(Read("ab\t"), "ab       ");
  EXPECT_EQ(Read("a\t"), "a        ") << "eight to the stop and the blank behind";
  EXPECT_EQ(Read("a\tb", 0), "a\tb ");
}

TEST_F(LineProcessor, CutsFieldsByCharacter) {
  Read("0123456789");
  EXPECT_EQ(Field(0, 8, 20), "789 ");
  EXPECT_EQ(Field(0, 11, 11), " ");
  EXPECT_EQ(Field(0, 12, 20), "");
  EXPECT_EQ(Field(1, 1, 2147483647), "0123456789 ");
  EXPECT_EQ(Field(9, 5, 4), "") << "the operator isn't looked at";
  EXPECT_EQ(TakeReports(), "");
  EXPECT_EQ(Field(9, 4, 4), "");
  EXPECT_EQ(TakeReports(), "Warning [-5402]: Invalid operator found!\n");
  recipe.InputFileLast = 2;
  EXPECT_EQ(Field(0, 1, 4), "") << "one period's row leaves the others empty";
  recipe.InputFileLast = 13;
  EXPECT_EQ(Field(0, 1, 4), "(failure)");
}

TEST_F(LineProcessor, CutsUnicodeRowsInAnyOrder) {
  std::string sRow;
  for (int i = 0; i < 300; ++i) sRow += i % 3 == 0 ? "\xE2\x82\xAC" : "x";
  gLineProcessor().RowCollection[0].SetText(sRow + "\xFF!");
  EXPECT_EQ(Field(0, 301, 302), "\xFF!") << "a stray byte is a character";
  EXPECT_EQ(Field(0, 193, 195), "\xE2\x82\xACxx");
  EXPECT_EQ(Field(0, 1, 4), "\xE2\x82\xACxx\xE2\x82\xAC");
  EXPECT_EQ(Field(0, 400, 500), "");
}

TEST_F(LineProcessor, FindsTheBlankBehindAUnicodeRowWhereItStands) {
  options.text.pCodePage = &clsCodePage::Utf8();
  std::string sRow;
  for (int n = 0; n < 10; ++n) sRow += "\xC3\xA9";
  sRow += "\n";
  Read(sRow);
  clsRow& row = gLineProcessor().RowCollection[0];
  EXPECT_EQ(row.Field(15, 20), "") << "the blank behind the row is its character 11";
  EXPECT_EQ(row.Field(10, 20), "\xC3\xA9 ");
}

TEST_F(LineProcessor, AddsAndAveragesOverThePeriods) {
  struct Case {
    std::initializer_list<std::string_view> rows;
    int32_t lOperator;
    const char* sFormat;
    const char* sWanted;
  };
  const Case cases[] = {
      {{"1,000.50", "2"}, 2, "", "1002.5"},
      {{"1,000.50", "2"}, 2, "NearestCent", "1,002.50"},
      {{"1,000.50", "2"}, 2, "NearestDollar", "1,003"},
      {{"1,000.50", "2"}, 2, "nearestcent", "1002.5"},
      {{"00012.50"}, 2, "", "12.5"},
      {{"(12)", "5-", "$1"}, 2, "", "-16"},
      {{"0.33335", "0.33335"}, 2, "", "0.6668"},
      {{"1", "x ", "3"}, 2, "NearestCent", "x "},
      {{"1", "x", ""}, 2, "", ""},
      {{"1", "2", "2"}, 3, "", "1.6666666666666667"},
      {{"1", "2"}, 3, "NearestDollar", "2"},
      {{"1", "2"}, 0, "NearestCent", "2"},
      {{"1", "2"}, 1, "", "1"},
      {{"922337203685477.5807", "0.0001"}, 2, "", "(failure)"},
      {{"922337203685478"}, 2, "", "(failure)"},
  };
  for (const Case& c : cases) {
    Rows(c.rows);
    recipe.WriteDataFormat = c.sFormat;
    EXPECT_EQ(Field(c.lOperator, 1, 30), c.sWanted) << *c.rows.begin() << " " << c.lOperator;
  }
  recipe.InputFileFirst = 2;
  recipe.InputFileLast = 1;
  EXPECT_EQ(Field(2, 1, 30), "0");
  EXPECT_EQ(Field(3, 1, 30), "(failure)");
}

TEST_F(LineProcessor, ReadsALineOfEachPeriod) {
  Input("a\nb\tc\n", 1);
  recipe.InputFileName[1] = folder.Path("gone");
  Input("x", 3);
  recipe.InputFileLast = 3;
  auto& rows = gLineProcessor().RowCollection;
  EXPECT_TRUE(gLineProcessor().ReadRow(context, 2, 4));
  EXPECT_EQ(rows[0].Text(), "b   c") << "no blank behind";
  EXPECT_EQ(rows[2].Text(), "");
  EXPECT_EQ(TakeReports(), "Error [-5401]: Text File [" + folder.Path("gone") + "] does not exist!\n");
  EXPECT_TRUE(gLineProcessor().ReadRow(context, 0, 4));
  EXPECT_EQ(rows[0].Text(), "b   c") << "no slot changes";
  EXPECT_EQ(TakeReports(), "Error [-5400]: Invalid Row number! [0]\n");
  recipe.InputFileLast = 1;
  EXPECT_TRUE(gLineProcessor().ReadRow(context, 32767, 4));
  EXPECT_FALSE(gLineProcessor().ReadRow(context, 32768, 4));
}

TEST_F(LineProcessor, ReadsLinesByNumber) {
  const std::string sPath = folder.Write("lines", "1\n2\n3\n");
  std::vector<std::string> lines{"a", "b", "c", "d"};
  file_read(host, lines, sPath, options.text, 2, 4);
  EXPECT_EQ(lines, (std::vector<std::string>{"2", "3", "c", "d"})) << "entries not reached keep what they held";
  EXPECT_TRUE(host.messages.empty());
  file_read(host, lines, sPath, options.text, 0, 1);
  EXPECT_EQ(lines[0], "2");
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages[0].sText, " invalid start_line in utilities.file_read!");
  EXPECT_EQ(host.messages[0].icon, MessageIcon::Critical);
}

}  // namespace
}  // namespace quillon
