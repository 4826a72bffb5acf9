// Rows of a CSV report: quoting, separators, the options, and the fast way against the plain one.

#include <algorithm>
#include <random>

#include "clsCsvRowSink.h"
#include "clsRowFields.h"
#include "clsRunTest.h"
#include "clsTableTarget.h"

namespace quillon {
namespace {

class CsvRows : public clsRunTest {
 protected:
  /// All lines of the input as one table.
  std::string Convert(const std::string& sText, const std::vector<std::string>& columns) {
    Input("TOP\n" + sText + "\nEND");
    Specification(Table(1, "TOP", 1, "END", -1, columns));
    return Csv();
  }
};

TEST_F(CsvRows, QuotesAndJoinsFields) {
  struct Case {
    const char* sRow;
    int32_t lSeparator;
    const char* sWanted;
  };
  const Case cases[] = {
      {"a,b cd", 44, "\"a,b \",cd "},
      {"a\"b cd", 44, "\"a\"\"b \",cd "},
      {"a,b cd", 9, "\"a,b \"\tcd "},
      {"a;b cd", 59, "a;b ;cd "},
      {"abcd", 44, "abcd, "},  // the blank that closes the row
      {"abc", 44, "abc ,"},    // the line ends before column 2: an empty string
      {"", 44, ""},
      {"ab\tcd", 44, "ab  ,    cd "},
      {"a\xE9", 233, "a\xE9 \xE9"},
  };
  for (const Case& c : cases) {
    options.lDelimitationCharacter = c.lSeparator;
    EXPECT_EQ(Convert(c.sRow, {"1 4 A", "5 11 B"}), std::string(c.sWanted) + "\r\n") << c.sRow;
  }
  options.lDelimitationCharacter = 44;
  EXPECT_EQ(Convert("ab\nabcd", {"4 4 A", "1 1 B", "3 3 C"}), "a, \r\nd,a,c\r\n") << "leading empty fields lose theirs";
  EXPECT_EQ(Convert("ab", {"1 1 A", "2 2 ABC"}), "a,b\r\n");
  EXPECT_EQ(host.messages.size(), 1u) << "letters that are none show a box, though nothing comes of them";
}

TEST_F(CsvRows, TrimsAndDefusesIfAsked) {
  options.bTrimFields = true;
  EXPECT_EQ(Convert("       b\n  \na , c", {"1 3 A", "4 6 B", "7 9 C"}), ",,b\r\n,,\r\n\"a ,\",c,\r\n")
      << "no field moves";
  options.bTrimFields = false;
  options.bSafeCsv = true;
  EXPECT_EQ(Convert("=1+2\n -5 \n+1,0\n-a\"b\n@x  \n$5", {"1 4 A"}),
            "\"'=1+2\"\r\n -5 \r\n\"+1,0\"\r\n\"'-a\"\"b\"\r\n\"'@x  \"\r\n$5 \r\n");
}

TEST_F(CsvRows, WritesInTheCodePageOfTheReport) {
  const std::string sUtf8 =
      "\xC3\xA9"
      "b\xE2\x82\xAC"
      "d";
  options.text.pCodePage = nullptr;
  EXPECT_EQ(Convert(sUtf8, {"1 1 A", "2 3 B"}), "\xC3\xA9,b\xE2\x82\xAC\r\n");
  EXPECT_EQ(account.pCodePage, &clsCodePage::Utf8());
  options.text.pCodePage = &clsCodePage::Windows1252();
  Input("\xEF\xBB\xBFTOP\n" + sUtf8 + "\xCE\xA9\nEND");
  EXPECT_EQ(Csv(), "\xE9,b\x80\r\n") << "a marked file into the job's page";
  Specification(Table(1, "TOP", 1, "END", -1, {"1 5 A"}));
  EXPECT_EQ(Csv(),
            "\xE9"
            "b\x80"
            "d?\r\n");
  EXPECT_EQ(account.lCharactersLost, 1);
}

TEST_F(CsvRows, CountsWhatStandsBehindTheLastColumn) {
  Convert("abcdef g\nab\nabc", {"1 2 A"});
  EXPECT_EQ(account.tables[0].loss.lBehind, 6);
  options.text.pCodePage = nullptr;
  Convert("ab\xC3\xA9\xC3\xA9 \nab", {"1 2 A"});
  EXPECT_EQ(account.tables[0].loss.lBehind, 2);
}

/// A row of up to 80 characters that mean something to CSV or to the cutting, or any.
std::string RandomRow(std::mt19937& random, bool bUtf8) {
  static const std::string_view kPieces[] = {",",  "\"", "=", "\t",       " ",   "   ",
                                             "-5", "+x", "@", "1,234.50", "abc", "\""};
  std::string s;
  const size_t nMost = random() % 81;
  while (s.size() < nMost) {
    const auto n = random() % 20;
    if (n < std::size(kPieces)) {
      s += kPieces[n];
    } else if (n < 14) {
      const auto byte = static_cast<char>(random() % 256);
      s += byte == '\n' || byte == '\r' ? ' ' : byte;
    } else {
      s += n < 16 && bUtf8 ? "\xC3\xA9" : "word";
    }
  }
  return s;
}

TEST_F(CsvRows, GivesTheSameBytesTheFastAndThePlainWay) {
  constexpr int kTables = 1000, kRows = 100;
  std::mt19937 random(20240102);
  for (const char* sPage : {"windows-1252", "cp437", "ISO-8859-7", "UTF-8"}) {
    const clsCodePage& page = *clsCodePage::Find(sPage);
    options.text.pCodePage = &page;
    Failure failure;
    clsOutputFile fast, plain;
    ASSERT_TRUE(fast.Open(folder.Path("fast"), failure) && plain.Open(folder.Path("plain"), failure));
    std::string sText;
    for (int nRow = 0; nRow < kTables * kRows; ++nRow) sText += RandomRow(random, !page.IsSingleByte()) + "\n";
    clsLineReader reader;
    ASSERT_TRUE(reader.Open(folder.Write(sPage, sText), options.text, failure));
    for (int nTable = 0; nTable < kTables; ++nTable) {
      options.bTrimFields = nTable % 4 == 1;
      std::vector<clsColumn> columns(1 + random() % 6);
      for (clsColumn& column : columns) {
        column.ReadColumnStart = static_cast<int32_t>(1 + random() % 60);
        column.ReadColumnEnd = column.ReadColumnStart + static_cast<int32_t>(random() % 40);
      }
      if (nTable % 9 == 0) columns.back().ReadColumnEnd = 2147483647;
      const CsvRules rules = RecipeCsvRules(options, ",");
      int nNoted[2] = {0, 0};
      clsCsvRowSink fastRows(fast, rules, page, [&] { ++nNoted[0]; });
      clsCsvRowSink plainRows(
          plain, rules, page, [&] { ++nNoted[1]; }, clsCsvRowSink::Road::Plain);
      clsRowFields fastFields(context, columns);
      clsRowFields plainFields(context, columns, false);
      ASSERT_TRUE(fastFields.IsQuick());
      for (int nRow = 0; nRow < kRows; ++nRow) {
        gLineProcessor().ReadRowPeriod1Only(context, &reader, nTable % 3 == 0 ? 0 : 8);
        clsRow& row = gLineProcessor().RowCollection[0];
        ASSERT_TRUE(fastFields.Cut(row) && fastRows.PutRow(fastFields.Row()));
        ASSERT_TRUE(plainFields.Cut(row) && plainRows.PutRow(plainFields.Row()));
      }
      ASSERT_EQ(nNoted[0], nNoted[1]) << "fields that begin with an equal sign";
    }
    ASSERT_TRUE(fast.Commit(failure) && plain.Commit(failure));
    std::string sFast, sPlain;
    ASSERT_TRUE(ReadWholeFile(folder.Path("fast"), sFast, SIZE_MAX / 4, failure));
    ASSERT_TRUE(ReadWholeFile(folder.Path("plain"), sPlain, SIZE_MAX / 4, failure));
    const auto nSame = static_cast<size_t>(
        std::mismatch(sFast.begin(), sFast.end(), sPlain.begin(), sPlain.end()).first - sFast.begin());
    EXPECT_TRUE(sFast == sPlain) << sPage << ": " << sFast.substr(nSame, 60) << " is not " << sPlain.substr(nSame, 60);
    EXPECT_GT(sFast.size(), 100000u);
    std::filesystem::remove(folder.Path("fast"));
    std::filesystem::remove(folder.Path("plain"));
  }
  for (clsRow& row : gLineProcessor().RowCollection) row.Clear();
}

TEST_F(CsvRows, TakesRowsOfAnyLength) {
  const std::string sLong(3 << 20, '"');
  const std::string sCsv = Convert("x\n" + sLong, {"1 2147483647 A"});
  EXPECT_EQ(sCsv.size(), std::string("x \r\n").size() + 2 * sLong.size() + 2 + 1 + 2);
  std::vector<std::string> columns;
  for (int i = 0; i < 16000; ++i) columns.push_back(std::to_string(1 + i % 700) + " 700 A");
  EXPECT_EQ(Convert("x", columns).substr(0, 4), "x , ");
}

}  // namespace
}  // namespace quillon
