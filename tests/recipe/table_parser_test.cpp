#include "clsTableParser.h"

#include <algorithm>
#include <random>

#include "clsRecipeTest.h"

namespace quillon {
namespace {

class TableParser : public clsRecipeTest {
 protected:
  /// Another text under the name of the one before.
  std::string Report(const std::string& sText) {
    context.pReports->Close();
    return folder.Write("r.txt", sText);
  }
  /// Reads the rows between the lines TOP and END.
  clsTableParser Read(const std::string& sRows, int32_t tab_size = 8) {
    clsTableParser parser;
    parser.ReadFromFile(context, Report("TOP\n" + sRows + "END\n"), "TOP", 1, "END", -1, tab_size);
    return parser;
  }
  std::string Fields(std::string_view sTemplate) {
    std::vector<int32_t> starts, ends;
    std::vector<std::string> ops;
    const bool bFound = clsTableParser::analyze_template(host, sTemplate, starts, ends, ops);
    EXPECT_EQ(bFound, !starts.empty());
    EXPECT_EQ(starts.size(), ends.size());
    std::string sOut;
    for (size_t i = 0; i < starts.size(); ++i) {
      sOut += std::to_string(starts[i]) + "-" + std::to_string(ends[i]) + ops[i] + " ";
    }
    return sOut;
  }
};

TEST_F(TableParser, FieldsEndWithTheBlankBehindThem) {
  EXPECT_EQ(Fields(""), "");
  EXPECT_EQ(Fields("    "), "");
  EXPECT_EQ(Fields("--- --"), "1-4 5-6 ");
  EXPECT_EQ(Fields("--- -"), "1-4 5-5 ");
  EXPECT_EQ(Fields("-"), "1-1 ");
  EXPECT_EQ(Fields("  +-- -+  "), "3-6Sum 7-9 ");
  EXPECT_EQ(Fields("\xC3\xA4\xC3\xB6 x"), "1-3 4-4 ") << "positions are characters";
  EXPECT_EQ(TakeCodes(), Codes{});
  std::string sMany;
  for (int32_t i = 0; i <= clsTableParser::kMaxFields; ++i) sMany += "- ";
  EXPECT_EQ(Fields(sMany), "");
  EXPECT_EQ(TakeCodes(), Codes{-5700});
}

TEST_F(TableParser, WorksOutARulerFromTheRows) {
  const clsTableParser parser = Read("Cash     1,200\nRent       300\n");
  EXPECT_EQ(parser.MarkerTopLoc, 1);
  EXPECT_EQ(parser.MarkerBotLoc, 4);
  EXPECT_EQ(parser.DataTopLoc, 2);
  EXPECT_EQ(parser.DataBotLoc, 3);
  ASSERT_EQ(parser.TableWidth, 15);
  EXPECT_EQ(parser.VariableToFixedTemplate(host, std::string(15, '=')), "-------- ----- ");
  EXPECT_EQ(parser.VariableToFixedTemplate(host, std::string(14, '=') + "R"), "---- --------- ");
  EXPECT_EQ(parser.VariableToFixedTemplate(host, "-- -- ========R"), "-- -- -------- ")
      << "a drawn field stays as it is";
  EXPECT_EQ(parser.VariableToFixedTemplate(host, "   "), "");
}

TEST_F(TableParser, FindsTheTableByItsKeyTexts) {
  struct Case {
    const char *sText, *sTop, *sBottom;
    int32_t topOffset, botOffset, lTop, lBottom, lWidth;
  };
  for (const Case& c : {
           Case{"a\nTOTAL x\nb", "TOTAL x", "TOTAL", 0, 0, 2, 2, 8},  // one line is both
           Case{"a\nTOTAL x\nTOTAL\n", "TOTAL x", "TOTAL", 0, 0, 2, 3, 8},
           Case{"END\nTOP\nb", "TOP", "END", 0, 0, 0, 0, 0},  // an end text before the start text
           Case{"TOP\nb", "TOP", "END", 0, 0, 0, 0, 0},
           Case{"x\nTOP\n", "TOP", "", 0, 5, 2, 7, 4},          // rows behind the end of the file are empty
           Case{"TOP\na\nEND", "TOP", "END", 2, -2, 3, 1, 0},   // no rows
           Case{"TOP\n\n\nEND", "TOP", "END", 1, -1, 2, 3, 0},  // empty rows only
       }) {
    clsTableParser parser;
    parser.ReadFromFile(context, Report(c.sText), c.sTop, c.topOffset, c.sBottom, c.botOffset, 0);
    EXPECT_EQ(parser.DataTopLoc, c.lTop) << c.sText;
    EXPECT_EQ(parser.DataBotLoc, c.lBottom) << c.sText;
    EXPECT_EQ(parser.TableWidth, c.lWidth) << c.sText;
  }
  EXPECT_EQ(TakeCodes(), Codes{});
}

TEST_F(TableParser, RefusesMoreRowsThanItHolds) {
  std::string sRows;
  for (int i = 0; i < clsTableParser::kMaxRows; ++i) sRows += "a b\n";
  EXPECT_EQ(Read(sRows).TableWidth, 4);
  EXPECT_EQ(Read(sRows + "c\n").TableWidth, 0);
  ASSERT_EQ(host.reports.size(), 1U);
  EXPECT_EQ(host.reports[0].sErr1, "Error [-5701]");
  EXPECT_EQ(host.reports[0].sErr2, "A table must have no more than 9999 rows!");
}

TEST_F(TableParser, ReportsFailuresOfTheSystemByTheirNumber) {
  clsTableParser parser;
  std::string sText(32766, '\n');
  parser.ReadFromFile(context, Report(sText + "TOP\nEND\n"), "TOP", 1, "END", 0, 8);
  EXPECT_EQ(parser.DataTopLoc, 32768);
  EXPECT_EQ(parser.TableWidth, 0);
  parser.ReadFromFile(context, folder.Path("none.txt"), "TOP", 1, "END", 0, 8);
  ASSERT_EQ(TakeCodes(), (Codes{6, ENOENT}));
  parser.ReadFromFile(context, folder.Path("r.txt"), "TOP", INT32_MAX, "END", 0, 8);
  parser.ReadFromFile(context, Report("TOP\nx\ty\nEND\n"), "TOP", 0, "END", 0, INT32_MAX);
  EXPECT_EQ(parser.TableWidth, 0) << "a tab as wide as no report";
  EXPECT_EQ(host.reports[0].sErr2, "Error: [6] Overflow");
  EXPECT_FALSE(host.reports[0].bShowMessageBox);
  EXPECT_EQ(TakeCodes(), (Codes{6, 14}));
  parser.ReadFromFile(context, folder.Path("r.txt"), "TOP", -1, "END", 0, 8);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].sText, " invalid start_line in utilities.file_read!");
  EXPECT_EQ(parser.TableWidth, 0);
}

TEST_F(TableParser, CountsCharactersInEveryCodePage) {
  EXPECT_EQ(Read("Z\xFCrich 1\na\xA0 b   2\n").VariableToFixedTemplate(host, "========="), "------ - ")
      << "a no-break space is a blank";
  options.text.pCodePage = &clsCodePage::Utf8();
  const clsTableParser parser = Read("Z\xC3\xBCrich 1\na\xC2\xA0 b   2\n");
  EXPECT_EQ(parser.TableWidth, 9);
  EXPECT_EQ(parser.VariableToFixedTemplate(host, "========="), "------ - ");
}

/// The analyser as it is told, row by row and column by column.
class PlainParser {
 public:
  std::vector<std::string> rows;
  size_t nWidth = 0;

  void Add(std::string sRow, int tab_size) {
    if (tab_size > 0) sRow = ExpandTabs(sRow, tab_size);
    if (!sRow.empty() && sRow.back() != ' ') sRow += ' ';
    nWidth = std::max(nWidth, sRow.size());
    rows.push_back(std::move(sRow));
  }
  void Pad() {
    for (std::string& sRow : rows) sRow.resize(nWidth, ' ');
  }
  std::string Segment(size_t nStart, size_t nPieceWidth, bool bLeft) const {
    std::vector<std::string> pieces;
    for (const std::string& sRow : rows) {
      pieces.push_back(sRow.substr(std::min(nStart - 1, sRow.size()), nPieceWidth));
      if (bLeft) std::reverse(pieces.back().begin(), pieces.back().end());
    }
    std::string s = BuildTemplate(pieces, nPieceWidth);
    if (!bLeft) return s;
    std::reverse(s.begin(), s.end());
    if (s.size() >= 2 && s[0] == ' ') s = "-" + s.substr(1, s.size() - 2) + " ";
    return s;
  }

 private:
  static std::string ExpandTabs(const std::string& sText, int tab_size) {
    std::string sOut;
    size_t nStop = 1;
    for (const char c : sText) {
      if (c != '\t') {
        sOut += c;
        continue;
      }
      nStop += static_cast<size_t>(tab_size);
      while (sOut.size() >= nStop) nStop += static_cast<size_t>(tab_size);
      sOut.append(nStop - sOut.size() - 1, ' ');
    }
    return sOut;
  }
  static bool IsColumnBlank(const std::vector<std::string>& pieces, size_t nColumn) {
    return std::all_of(pieces.begin(), pieces.end(), [&](const std::string& s) {
      return nColumn > s.size() || s[nColumn - 1] == ' ' || s[nColumn - 1] == '\xA0';
    });
  }
  static std::string BuildTemplate(const std::vector<std::string>& pieces, size_t nPieceWidth) {
    std::string sOut;
    for (size_t nPos = 0; nPos < nPieceWidth;) {
      size_t nEnd = nPieceWidth;
      bool bBlankBlock = false, bOccupied = false, bBlanks = false, bDone = false;
      for (size_t n = nPos + 1; n <= nPieceWidth && !bDone; ++n) {
        const bool bBlank = IsColumnBlank(pieces, n);
        if (bBlank) nEnd = n;
        if (bBlank && bOccupied) {
          bBlankBlock = false;
          bDone = true;
        } else if (bBlank) {
          bBlankBlock = bBlanks = true;
        } else if (bBlanks) {
          bDone = true;
        } else {
          bOccupied = true;
        }
      }
      if (!bDone) bBlankBlock = false;
      sOut += std::string(nEnd - nPos - 1, '-') + (bBlankBlock ? '-' : ' ');
      nPos = nEnd;
    }
    return sOut;
  }
};

TEST_F(TableParser, AgreesWithThePlainAlgorithmOnRandomTables) {
  std::mt19937 random(20240102);
  const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  for (int nRound = 0; nRound < 400; ++nRound) {
    const int tab_size = below(10) - 1;
    const int nBlankShare = below(90);
    PlainParser plain;
    std::string sRows;
    for (int nRow = below(6); nRow >= 0; --nRow) {
      std::string sRow;
      for (int n = below(24); n > 0; --n) sRow += below(100) < nBlankShare ? " \xA0\t  "[below(5)] : 'x';
      sRows += sRow + "\n";
      plain.Add(sRow, tab_size);
    }
    plain.Pad();
    const clsTableParser parser = Read(sRows, tab_size);
    ASSERT_EQ(static_cast<size_t>(parser.TableWidth), plain.nWidth);
    const int lStart = 1 + below(std::max(1, parser.TableWidth) + 3);
    const int lWidth = 1 + below(20);
    const bool bLeft = below(2) == 0;
    // A field of its own behind a drawn one; it may reach beyond the table.
    std::string sTemplate = lStart > 2 ? "-" + std::string(static_cast<size_t>(lStart) - 2, ' ') : std::string();
    const size_t nFrom = sTemplate.size() + 1;
    sTemplate += "=" + std::string(static_cast<size_t>(lWidth), bLeft ? 'L' : 'R');
    const std::string sHead = nFrom > 1 ? "- " + std::string(nFrom - 3, ' ') : std::string();
    EXPECT_EQ(parser.VariableToFixedTemplate(host, sTemplate),
              sHead + plain.Segment(nFrom, static_cast<size_t>(lWidth) + 1, bLeft))
        << "round " << nRound << "\n"
        << sRows;
  }
}

}  // namespace
}  // namespace quillon
