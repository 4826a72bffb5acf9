#include "clsLineReader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>

#include "clsOutputFile.h"
#include "clsTempFolder.h"

namespace quillon {
namespace {

using Rows = std::vector<std::string>;

Rows RowsOf(std::string_view sBytes, bool bUnix, bool bFromFile) {
  const clsTempFolder folder;
  TextFileOptions options;
  options.bUnix = bUnix;
  clsLineReader reader;
  Failure failure;
  if (bFromFile) {
    EXPECT_TRUE(reader.Open(folder.Write("a.txt", sBytes), options, failure)) << failure.sText;
  } else {
    reader.OpenMemory(sBytes, options);
  }
  Rows rows;
  for (std::string_view sRow; reader.ReadRow(sRow);) rows.emplace_back(sRow);
  EXPECT_TRUE(reader.AtEnd());
  return rows;
}

TEST(LineReader, EndsRowsAsEachKindOfFileHasThem) {
  struct Case {
    const char* sName;
    std::string sBytes;
    Rows off, on;
  };
  const std::string sNul("a\0b\n", 4);
  const Case cases[] = {
      {"empty", "", {}, {}},
      {"only ends", "\r\n\r\n", {"", ""}, {"", ""}},
      {"no end at the end", "a\nb", {"a", "b"}, {"a", "b"}},
      {"CR CR LF", "a\r\r\nb\r\r\n", {"a", "b"}, {"a", "b"}},
      {"stray CR", "a\rb\r\nc\n", {"a\rb", "c"}, {"ab", "c"}},
      {"CR at the very end", "a\nb\r", {"a", "b\r"}, {"a", "b"}},
      {"CR only", "a\rb\r", {"a", "b"}, {"ab"}},
      {"end-of-file mark", std::string("a\n\x1A\x1A\0\0", 6), {"a"}, {"a"}},
      {"mark behind an open row", "a\nb\x1A", {"a", "b"}, {"a", "b"}},
      {"mark in the middle",
       "a\x1A"
       "b\n",
       {"a\x1A"
        "b"},
       {"a\x1A"
        "b"}},
      {"NULs without a mark", std::string("a\n\0\0", 4), {"a", std::string(2, '\0')}, {"a", std::string(2, '\0')}},
      {"NUL inside", sNul, {std::string("a\0b", 3)}, {std::string("a\0b", 3)}},
      {"UTF-8 mark",
       "\xEF\xBB\xBF"
       "a\n",
       {"a"},
       {"a"}},
  };
  for (const Case& c : cases) {
    for (const bool bFile : {false, true}) {
      EXPECT_EQ(RowsOf(c.sBytes, false, bFile), c.off) << c.sName;
      EXPECT_EQ(RowsOf(c.sBytes, true, bFile), c.on) << c.sName;
    }
  }
}

TEST(LineReader, ReadsTheSameWhateverFallsOnABlocksEdge) {
  std::mt19937 random(7);
  for (int nRound = 0; nRound < 20; ++nRound) {
    std::string sBytes;
    while (sBytes.size() < 600000) {
      const size_t nLength = random() % 50 == 0 ? random() % 300000 : random() % 100;
      sBytes.append(nLength, static_cast<char>('a' + random() % 26)).append(random() % 3 == 0 ? "\r\n" : "\n");
    }
    EXPECT_EQ(RowsOf(sBytes, false, true), RowsOf(sBytes, false, false));
  }
}

TEST(LineReader, FindsTheSameRowFastAndRowByRow) {
  const clsTempFolder folder;
  std::string sBytes;
  for (int i = 1; i <= 100000; ++i) sBytes += "row " + std::to_string(i) + (i % 7 == 0 ? "\r\n" : "\n");
  const std::string sFile = folder.Write("a.txt", sBytes);
  for (const char* sNeedle : {"row 1", "row 99999", "ow 4711", "", "none", "row 100000"}) {
    int64_t nFound[2] = {};
    int64_t nRow[2] = {};
    for (const bool bUnix : {false, true}) {
      TextFileOptions options;
      options.bUnix = bUnix;
      clsLineReader reader;
      Failure failure;
      ASSERT_TRUE(reader.Open(sFile, options, failure));
      reader.SkipRows(3);
      std::string_view sRow;
      nFound[bUnix] = reader.FindRow(sNeedle, "", sRow);
      nRow[bUnix] = reader.RowNumber();
      EXPECT_TRUE(nFound[bUnix] == 0 || sRow.find(sNeedle) != std::string_view::npos);
    }
    EXPECT_EQ(nFound[0], nFound[1]) << sNeedle;
    EXPECT_EQ(nRow[0], nRow[1]) << sNeedle;
  }
}

TEST(LineReader, FindsTheCodePageByContentAlsoAcrossBlocks) {
  const clsTempFolder folder;
  TextFileOptions options;
  options.pCodePage = nullptr;
  Failure failure;
  const auto pageOf = [&](const std::string& sBytes) {
    clsLineReader reader;
    EXPECT_TRUE(reader.Open(folder.Write("a.txt", sBytes), options, failure));
    return &reader.CodePage();
  };
  std::string sPolish;
  while (sPolish.size() < 700000) sPolish += "xŁódź\n";
  EXPECT_EQ(pageOf(sPolish), &clsCodePage::Utf8());
  EXPECT_EQ(pageOf(sPolish + "\xE9"), &clsCodePage::Windows1252());
  EXPECT_EQ(pageOf(std::string(700000, 'a') + "\n"), &clsCodePage::Windows1252());
}

TEST(Reading, RefusesWhatIsNoOrdinaryFile) {
  const clsTempFolder folder;
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  for (const std::string& sPath : {folder.Path("missing"), folder.Path(), folder.Path("pipe")}) {
    clsLineReader reader;
    Failure failure;
    EXPECT_FALSE(reader.Open(sPath, {}, failure));
    EXPECT_NE(failure.sText.find(sPath), std::string::npos);
    std::string sBytes;
    EXPECT_FALSE(ReadWholeFile(sPath, sBytes, 1000, failure));
  }
}

}  // namespace
}  // namespace quillon
