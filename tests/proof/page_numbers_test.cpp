#include "clsPageNumbers.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillon {
namespace {

std::string OrderOf(const std::string& sLines) {
  clsPageNumbers pages;
  std::istringstream lines(sLines);
  int64_t lLine = 0;
  for (std::string sLine; std::getline(lines, sLine);) pages.Line(++lLine, sLine);
  const PageOrder order = pages.Order();
  if (order.lPages == 0) return "";
  return std::to_string(order.lPages) + " from line " + std::to_string(order.lLine) + ": " +
         std::to_string(order.lNumber) + " behind " + std::to_string(order.lBefore);
}

/// A heading for each number, with the word in front of it.
std::string Headings(const std::string& sWord, const std::vector<int>& numbers) {
  std::string sLines;
  for (const int n : numbers) sLines += "MILL & SONS      " + sWord + std::to_string(n) + "\n";
  return sLines;
}

struct Case {
  std::vector<int> numbers;
  std::string sWant;
};

TEST(PageNumbers, TellWhereAPageDoesNotFollow) {
  const std::vector<Case> cases{
      {{1, 2, 3, 4}, ""},
      {{1, 2, 4, 3, 5}, "3 from line 3: 4 behind 2"},
      {{2, 1, 3}, "1 from line 3: 3 behind 1"},
      {{2, 1}, "1 from line 2: 1 behind 2"},
      {{3, 2, 1}, "1 from line 2: 2 behind 3"},
      {{1, 5, 3, 4, 2, 6}, "4 from line 2: 5 behind 1"},
      {{1, 2, 3, 5, 6}, "1 from line 4: 5 behind 3"},
      {{117, 118, 119}, ""},
      {{117, 119, 118, 120}, "3 from line 2: 119 behind 117"},
      // Heads and feet print the same number; parts of a report begin anew.
      {{1, 1, 2, 2, 3, 3}, ""},
      {{1, 2, 3, 1, 2, 1, 2}, ""},
      {{0, 1, 2, 0, 1}, ""},
      {{1, 2, 3, 1, 2, 4, 3, 5, 6}, "3 from line 6: 4 behind 2"},
      // Numbers that don't count pages.
      {{7, 3, 12, 3, 40}, ""},
      {{1, 2, 1, 3, 2, 4, 3, 5, 4}, ""},
      {{1, 9}, ""},
  };
  for (const Case& one : cases) {
    const std::string sLines = Headings("PAGE ", one.numbers);
    EXPECT_EQ(OrderOf(sLines), one.sWant) << sLines;
  }
}

TEST(PageNumbers, AreKnownByTheWordInFrontOfThem) {
  const std::string sWant = "3 from line 2: 3 behind 1";
  for (const char* sWord :
       {"Page: ", "page No. ", "SEITE ", "Seite Nr.: ", "P\xC3\xA1gina ", "P\xC3\x81GINA ", "\f PAGE     ", "Page #"}) {
    EXPECT_EQ(OrderOf(Headings(sWord, {1, 3, 2, 4})), sWant) << sWord;
  }
  for (const char* sWord :
       {"PAGES ", "HOMEPAGE ", "PAGE 4-", "Page 2.", "Page A", "SHEET ", "PAGE 12345678", "PAGE OF "}) {
    EXPECT_EQ(OrderOf(Headings(sWord, {1, 3, 2, 4})), "") << sWord;
  }
  EXPECT_EQ(OrderOf("Page 1 of 3\nPage 3/3\nPage 2/3\nPage 4 of 3\n"), sWant);
}

TEST(PageNumbers, MentionedInTextsSayNothing) {
  EXPECT_EQ(OrderOf("PAGE 1\nPAGE 2\n   see page 9\nPAGE 3\nPAGE 4\n"), "");
  EXPECT_EQ(OrderOf("see page 4 for details\n   as page 2 says\nshown on page 3\nand again on page 5\n"), "");
}

}  // namespace
}  // namespace quillon
