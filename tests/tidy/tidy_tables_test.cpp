// Whole recipes over little reports: what each key makes of hard lines.

#include <gtest/gtest.h>

#include <random>

#include "clsTidyTrial.h"

namespace quillon {
namespace {

struct Case {
  std::string_view sWhat;
  std::string_view sRecipe;  ///< Behind "[Table 1]"
  std::string_view sReport;
  Rows rows;
  std::string_view sKinds = {};  ///< "" where they don't matter
};

void ExpectRows(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    const clsTidyTrial trial("[Table 1]\n" + std::string(c.sRecipe), c.sReport);
    EXPECT_FALSE(trial.fault.IsSet()) << c.sWhat << ": " << trial.fault.sText;
    EXPECT_EQ(trial.rows, c.rows) << c.sWhat;
    if (!c.sKinds.empty()) {
      EXPECT_EQ(trial.kinds, c.sKinds) << c.sWhat;
    }
  }
}

/// A row of random cells, some empty, some numbers of several lengths.
std::vector<std::string> SparseCells(std::mt19937& random, size_t nColumns) {
  std::vector<std::string> cells;
  for (size_t i = 0; i < nColumns; ++i) {
    const bool bEmpty = random() % 5 < 2;
    cells.push_back(bEmpty ? "" : std::to_string(1 + random() % (random() % 2 == 0 ? 9 : 9999)));
  }
  return cells;
}

TEST(TidyTables, SparseCellsNeverTakeANumberReadBefore) {
  std::mt19937 random(31);
  const std::string sReads = "Needs=A letters, B-E number|blank\nTypes=A text, B-E number\nNames=a|b|c|d|e\n";
  const std::string sKeys[] = {"Places=1-2 4-8 9-13 15-19 20-\n", "Split=,\n",
                               "Places=1-2 4-8 9-13 15-19 20-\nJoin=up\n"};
  std::string sPrinted, sSplit;
  Rows wanted;
  for (int i = 0; i < 400; ++i) {
    const auto cells = SparseCells(random, 4);
    std::string sLine = "x";
    std::string sRow = "x";
    sSplit += "x";
    for (size_t n = 0; n < cells.size(); ++n) {
      constexpr size_t kEnds[] = {8, 13, 19, 24};
      sLine.append(kEnds[n] - sLine.size() - cells[n].size(), ' ').append(cells[n]);
      sRow += "|" + cells[n];
      sSplit += "," + cells[n];
    }
    sPrinted += sLine + "\n";
    sSplit += "\n";
    wanted.push_back(sRow);
  }
  for (const std::string& sCut : sKeys)
    EXPECT_EQ(clsTidyTrial("[Table 1]\n" + sReads + sCut, sCut[0] == 'S' ? sSplit : sPrinted).rows, wanted) << sCut;
}

TEST(TidyTables, NumbersOfOneCellStayOutOfAnother) {
  ExpectRows({
      {"a blank text, a mark and nothing below a number",
       "Places=1-3 5-9\nNeeds=B number|\"T\"|blank\nTypes=B number\n"
       "Blank=---|*\n",
       "aaa  1.50\nbbb   ---\nccc     T\nddd\neee     *\nfff 2,000\n",
       {"aaa|1.50", "bbb|", "ccc|T", "ddd|", "eee|", "fff|2000"}},
      {"filled from above, also by a mark",
       "Places=1-3 5-9\nNeeds=A letters\nTypes=B number\nFill=B\n",
       "aaa  1.50\nbbb\nccc     \"\nddd   (2)\neee\n",
       {"aaa|1.50", "bbb|1.50", "ccc|1.50", "ddd|-2", "eee|-2"}},
      {"panels, one of them empty",
       "Places=1-3 5-8 | 11-13 15-18\nNeeds=A letters, B number|blank\nTypes=B number\n",
       "aaa   10  bbb   20\nccc       ddd   30\neee   40  fff\n          ggg    5\n",
       {"aaa|10", "bbb|20", "ccc|", "ddd|30", "eee|40", "fff|", "ggg|5"}},
      {"the same place twice, as text and as number",
       "Places=1-5 1-5\nNeeds=B number\nTypes=A text, B number\n",
       "1,5 \n1,500\n  (7)\n",
       {"1,500|1500", "(7)|-7"}},
      {"a number by its own column's form",
       "Places=1-8 10-17\nNeeds=A-B number\nTypes=A number comma, B number /100\n",
       "1.234,50     1250\n1,234.50     1250\n",
       {"1234.50|12.50"}},
      {"a further line adds to what was blank",
       "Places=1-3 5-9\nNeeds=A digits\nNames=No|Sum\nTypes=A text, B number\n"
       "Blank=n/a\n[Line 1.2]\nText=sum:\nNames=Sum\n",
       "001   n/a\n sum: 5.00\n002  7.00\n",
       {"001|5.00", "002|7.00"}},
  });
}

TEST(TidyTables, PlacesKeepToTheirCharacters) {
  ExpectRows({
      {"any order, single characters, touching",
       "Places=7- 1-3 4 5-6\n",
       "abcdefghi j\n  c ef\n     f\n",
       {"ghi j|abc|d|ef", "|c||ef", "|||f"}},
      {"letters in a gap go on to the next blank",
       "Places=1-4 6-9 11-\nTypes=text\n",
       "abcdefg  hi jk\nabcd-fg   hi\nabcd f    hi\nabcdefghijkl mn\n",
       {"abcdefg|hi|jk", "abcd|fg|hi", "abcd|f|hi", "abcdefghijkl||mn"}},
      {"a sign behind a number is its own",
       "Places=1-3 5-8 10-13\nTypes=B-C number\nNeeds=A letters\n",
       "aaa 1.50- 7.25-\nbbb 1.50 (7.25)\n",
       {"aaa|-1.50|-7.25", "bbb|1.50|-7.25"}},
      {"characters of more than one byte",
       "Places=1-3 5-6 8-\nNeeds=B number\n",
       "\u00e4\u00f6\u00fc 12 \u6771\u4eac\n\u6771\u4eac\u90fd\u5e81 7 x\n\u00e4   34\n",
       {"\u00e4\u00f6\u00fc|12|\u6771\u4eac", "\u6771\u4eac\u90fd\u5e81|7|x", "\u00e4|34|"}},
      {"signs of currency go to the number behind",
       "Places=1-6 8-12 14-18\nTypes=B-C number\nNeeds=C number\n",
       "ab   $  5.00 \u20ac 7.00\nUS$   $5.00   $7.00\n",
       {"ab|5.00|7.00", "US$|5.00|7.00"}},
      {"a form feed in front has no width", "Places=1-2 4\n", "\fab 1\ncd 2\r\n", {"ab|1", "cd|2"}},
      {"an empty report", "Places=1-\n", "", {}},
      {"blank lines alone", "Places=1-\n", "\n  \n\f\n", {}, "..."},
  });
}

TEST(TidyTables, PicturesAndNeedsAskTogether) {
  ExpectRows({
      {"kinds of a picture",
       "Like=9A_X.-\nPlaces=1-\n",
       "1b x -\n1\u00e4 \u00e4 -z\n1b xx\n b x -\n1b   -\n1b xx-\n",
       {"1b x -", "1\u00e4 \u00e4 -z", "1b xx-"}},
      {"what means something may mean itself",
       "Like=\\9\\_|\\\\\\x7C\nPlaces=1-\n",
       "9_a\n1 a\n\\|b\n\\xb\n",
       {"9_a", "\\|b"}},
      {"a blank behind the line's end", "Like=X_\nPlaces=1-\n", "a\nab\na b\n", {"a", "a b"}},
      {"both must hold",
       "Like=99\nNeeds=B \"up\"|number\nPlaces=1-2 4-\n",
       "01 up\n02 7\n03 down\nx4 up\n05\n",
       {"01|up", "02|7"}},
      {"every column", "Needs=number\nPlaces=1-2 4-5\n", "1  2\n3\n4  x\n  5\n6  7\n", {"1|2", "6|7"}},
      {"blank is blank, and no text for it",
       "Needs=A any, B blank\nPlaces=1-2 4-5\nBlank=-\n",
       "a\nb  -\nc  d\n",
       {"a|"}},
      {"drawn lines are no rows",
       "Places=1-\n",
       "---\n- a -\n=== ===\n-\n\u2500\u2500\u2500\n+--+\n",
       {"- a -", "-"},
       "DRDRDD"},
  });
}

TEST(TidyTables, SplitPartsByTextsBlanksAndGaps) {
  ExpectRows({
      {"empty pieces count, more of them go to the last",
       "Split=,\nNames=a|b|c\n",
       "1,,3\n,2\n1,2,3,4,\n  x  ,y\n",
       {"1||3", "|2|", "1|2|3,4,", "x|y|"}},
      {"blanks", "Split=blanks\nNames=a|b|c\n", "  1   2 3  4 \n5\n", {"1|2|3  4", "5||"}},
      {"gaps", "Split=gaps\nNames=a|b\n", "a b  c d\na b   c  d\na b\n", {"a b|c d", "a b|c  d", "a b|"}},
      {"a longer text", "Split=->\nNames=a|b\n", "x->y\nx-y>->z\n->\n->w\n", {"x|y", "x-y>|z", "|w"}},
      {"columns by types", "Split=\\x3B\nTypes=A text, C skip, B number\n", "a;1;x;y\n;(2)\n", {"a|1", "|-2"}},
      {"skipped ones part too", "Split=/\nNames=a|b|c\nTypes=B skip\n", "1/2/3\n", {"1|3"}},
  });
}

TEST(TidyTables, JoinedLinesStayWithTheirRow) {
  const std::string_view sUp = "Needs=A digits\nPlaces=1-3 5-9 11-15\nJoin=up\n";
  ExpectRows({
      {"blank, drawn and heading lines end it",
       "Needs=A digits\nPlaces=1-3 5-9\nJoin=up\n[Heading 1.1]\nText=DEPT\n",
       "    lost\n001 a\n    b\n\n    no\n002 c\nDEPT 1\n    no\n003 d\n    e\n===\n    no\n",
       {"|001|a b", "|002|c", "1|003|d e"},
       "LRJ.LRHLRJDL"},
      {"a dropped line does not",
       "Needs=A digits\nPlaces=1-3 5-9\nJoin=up\nDrop=page\n",
       "001 a\n    page\n    b\n",
       {"001|a b"},
       "RDJ"},
      {"column by column, over several lines",
       sUp,
       "001 a     x\n    b     y\n          z\n    c\n",
       {"001|a b c|x y z"}},
      {"what is joined to a number of one line",
       "Needs=A digits\nPlaces=1-3 5-9\nTypes=B number\nJoin=up\n",
       "001  5.00\n       CR\n002  6.00\n",
       {"001|-5.00", "002|6.00"}},
      {"split when all is there",
       "Like=K\nSplit=/\nNames=a|b|c\nTypes=C number\nJoin=up\n",
       "K1/long\ntext/5.00\nK2/x/7\n\nK3/\n/1\n",
       {"K1|long text|5.00", "K2|x|7", "K3||1"}},
      {"the whole line to one column",
       "Needs=A digits\nPlaces=1-3 5-6 8-\nJoin=up B\n",
       "001 a  b\n  c  d\n",
       {"001|a c  d|b"}},
      {"down, in front of the row's text",
       "Needs=B number\nPlaces=1-8 10-12\nJoin=down\n",
       "one\n two\nthree    1\nfour     2\nfive\n---\nsix      3\n",
       {"one two three|1", "four|2", "six|3"},
       "JJRRLDR"},
      {"down, not from beside the column",
       "Needs=C number\nPlaces=1-3 5-9 11-13\nTypes=A skip, B text, C number\n"
       "Join=down\n",
       "    ab\nPAGE 1 of nine\n001 c     1\nxx\n002 d     2\n",
       {"c|1", "d|2"},
       "LLRLR"},
  });
}

TEST(TidyTables, LevelsFollowTheIndent) {
  const std::string_view sTwo = "Needs=B number\nPlaces=1-12 14-15\nNames=Item|X\nLevels=A One|Two\n";
  ExpectRows({
      {"levels close those as far in",
       sTwo,
       "a\n b\n  r          1\n c\n  r          2\nd\n r           3\n",
       {"a|b|r|1", "a|c|r|2", "d||r|3"}},
      {"deeper ones go to the last", sTwo, "a\n b\n  c\n   r         1\n", {"a|c|r|1"}},
      {"a row as far in belongs to the level right above only",
       sTwo,
       "a\nr            1\ns            2\n",
       {"a||r|1", "||s|2"}},
      {"further in than the first row: a total",
       sTwo,
       "a\n b\n  r          1\n   sum       2\n",
       {"a|b|r|1", "a||sum|2"}},
      {"a record that waits keeps its level",
       "Needs=B digits\nPlaces=1-6 8\nLevels=A Up\n[Line 1.2]\nText=n:\n",
       "top\n a     1\n n: x\nend\n b     2\n",
       {"top|a|1|x", "end|b|2|"},
       "HRFHR"},
      {"a changed heading closes all",
       "Needs=B number\nPlaces=1-12 14-15\nLevels=A One\n[Heading 1.1]\nText=DEPT\n",
       "DEPT 1\na\n r           1\nDEPT 1\n r           2\nDEPT 2\n r           3\n",
       {"1|a|r|1", "1|a|r|2", "2||r|3"}},
      {"the colon of a level is none of its name",
       "Needs=B number\nPlaces=1-12 14-15\nLevels=A One\nJoin=down\n",
       "long\nname:\n wrapped\n row         1\n",
       {"long name|wrapped row|1"},
       "JHJR"},
      {"rows are levels",
       "Needs=A number\nPlaces=1-2 4-\nNames=X|Item\nLevels=B rows Up\n",
       " 1 a\n 2  b\n 3   c\n 4  d\n 5 e\n 6  f\n",
       {"1||a", "2|a|b", "3|b|c", "4|a|d", "5||e", "6|e|f"}},
  });
}

TEST(TidyTables, HeadingsAndFilledCells) {
  const std::string_view sFill = "Needs=B number\nPlaces=1-3 5-6\nFill=A\nBlank=--\n[Heading 1.1]\nText=DEPT\n";
  ExpectRows({
      {"filled until a heading's value changes",
       sFill,
       "DEPT    1\naaa  1\n     2\n--   3\n\"    4\nDEPT    1\n     5\nDEPT    2\n     6\nbbb  7\n     8\n",
       {"1|aaa|1", "1|aaa|2", "1|aaa|3", "1|aaa|4", "1|aaa|5", "2||6", "2|bbb|7", "2|bbb|8"}},
      {"a new value empties those of higher numbers",
       "Needs=A digits\nPlaces=1-\n[Heading 1.1]\nText=Div\n[Heading 1.3]\nText=Desk\n[Heading 1.2]\nText=Dept\n",
       "Div A\nDept B\nDesk C\n1\nDept B\n2\nDept D\n3\nDiv E  Desk F\n4\nDiv E\n5\n",
       {"A|B|C|1", "A|B|C|2", "A|D||3", "E||F|4", "E||F|5"}},
      {"label, end text, leader",
       "Needs=A digits\nPlaces=1-3\n[Heading 1.1]\nText=Run:|Start\nBefore=hrs\n"
       "[Heading 1.2]\nText=Name\n",
       "Run:  12:30 hrs  x\nName  A B..  z\n1\nStart 5hrs\nName:\n2\nRun: 7  y\nRun:\n3\n",
       {"12:30|A B|1", "5||2", "7||3"}},
      {"by shape, and by shape and text",
       "Needs=A digits\nPlaces=1-3 5-\n[Heading 1.1]\nLike=A_9\nPlaces=3-\n"
       "[Heading 1.2]\nText=T\nLike=_\nPlaces=2-5\n",
       "x 1\n T9\nT8\n001 a\ny 2\n002 T\n 03 b T\n",
       {"1|T9|001|a", "2||002|T", "2|03 b|03|b T"},
       "HHLRHRR"},
      {"before the stretch counts, behind it doesn't",
       "ReadStartLine=BEGIN\nReadEndLine=END\nNeeds=A digits\nPlaces=1-\n[Heading 1.1]\nText=Dept\n",
       "Dept 1\nBEGIN\n1\nEND\nDept 2\nBEGIN\n2\n",
       {"1|1"},
       "HLRLOOO"},
      {"typed, and blank",
       "Needs=A digits\nPlaces=1-\n[Heading 1.1]\nText=On\nTypes=A date DD.MM.YY\nBlank=n.a\n",
       "On 1.2.24\n1\nOn n.a\n2\n",
       {"2024-02-01|1", "|2"}},
  });
}

TEST(TidyTables, FurtherLinesByDistanceAndByText) {
  const std::string_view sTwo = "Needs=A digits\nPlaces=1-3 5-\nNames=No|Name\n";
  ExpectRows({
      {"the line at its distance is none else",
       "Needs=A digits\nPlaces=1-3 5-\nNames=No|Name\nDrop=XX\n"
       "[Line 1.2]\nPlaces=1-\nNames=Next\n",
       "001 a\n002 b\n003 c\n004 d XX\n005 e\n---\n006 f\n\n007 g\n",
       {"001|a|002 b", "003|c|", "005|e|---", "006|f|", "007|g|"},
       "RFRDRFR.R"},
      {"rows come before other further lines",
       "Needs=A digits\nPlaces=1-3 5-\nNames=No|Name\n[Line 1.2]\nLike=9\n"
       "Places=1-\nNames=Note\n",
       "1note\n001 a\n2note\n002 b\n3\n",
       {"001|a|2note", "002|b|", "3||"},
       "LRFRR"},
      {"a second line that fits is added",
       "Needs=A digits\nPlaces=1-3 5-\nNames=No|Name\n[Line 1.2]\nText=tel|fax\n"
       "Names=Call\n[Line 1.3]\nText=aka\nNames=Name\n",
       "001 a\n tel 1\n aka b\n fax 2\n aka\n002 c\n",
       {"001|a b|1 2", "002|c|"},
       "RFFFFR"},
      {"the order of sections is that of numbers",
       "Needs=A digits\nPlaces=1-3 5-\nNames=No|Name\n[Line 1.10]\nText=ten\n"
       "[Line 1.9]\nText=nine\n",
       "001 a\n ten 10\n nine 9\n",
       {"001|a|9|10"}},
      {"a blank line between counts, none before a row",
       "Needs=A digits\nPlaces=1-3 5-\n[Line 1.3]\nPlaces=1-5\n",
       "\nx\n001 a\n\ncity\n002 b\n\n\n003 c\n",
       {"001|a|city", "002|b|", "003|c|"},
       ".LR.FR..R"},
      {"without one they are left out", sTwo, "001 a\n tel 1\n", {"001|a"}, "RL"},
      {"two lines side by side",
       "Places=1-3 5-6 | 9-11 13-14\nNeeds=A letters, B digits\n"
       "[Line 1.2]\nLike=__X|__________X\nPlaces=3-6 | 11-14\nNames=More\n",
       "aaa  1  bbb  2\n  c       d\nccc  3  ddd  4\n          e\n",
       {"aaa|1|c", "bbb|2|d", "ccc|3|", "ddd|4|e"}},
  });
}

TEST(TidyTables, StretchesBeginAgainAndEnd) {
  const std::string_view sReport = "0\nBEGIN\n\n1\n2\n\n3\nBEGIN\n4\nEND\n5\n";
  ExpectRows({
      {"until blank, but not in front of a row",
       "ReadStartLine=BEGIN\nUntil=blank\nNeeds=A digits\nPlaces=1-\n",
       sReport,
       {"1", "2"},
       "OL.RR.OOOOO"},
      {"again, to the end text",
       "ReadStartLine=BEGIN\nReadEndLine=END\nRepeat=yes\nUntil=blank\nNeeds=A digits\n"
       "Places=1-\n",
       sReport,
       {"1", "2", "4"}},
      {"the last one may lack its end",
       "ReadStartLine=BEGIN\nReadEndLine=END\nRepeat=yes\nNeeds=A digits\nPlaces=1-\n",
       "BEGIN\n1\nEND\n2\nBEGIN\n3\n",
       {"1", "3"},
       "LRLOLR"},
      {"a start text inside of a stretch with an end begins none",
       "ReadStartLine=BEGIN\nReadEndLine=END\nReadStartLineOffset=1\nReadEndLineOffset=-1\nRepeat=yes\nPlaces=1-\n",
       "BEGIN\n1\nBEGIN\n2\nEND\nBEGIN\n3\nEND\n",
       {"1", "BEGIN", "2", "3"}},
      {"the end text is looked for behind the start",
       "ReadStartLine=T\nReadEndLine=T\nReadStartLineOffset=1\n"
       "ReadEndLineOffset=-1\nPlaces=1-\n",
       "T\na\nT\nb\n",
       {"a"}},
      {"Optional and nowhere", "ReadStartLine=NONE\nOptional=yes\nPlaces=1-\n", "a\n\n", {}, "O."},
      {"a start behind the report", "ReadStartLine=a\nReadStartLineOffset=9\nPlaces=1-\n", "a\nb\n", {}, "OO"},
      {"an end in front of its text, and a blank line between them",
       "ReadStartLine=B\nReadEndLine=E\nReadEndLineOffset=-3\nRepeat=yes\nUntil=blank\nNeeds=A digits\nPlaces=1-\n",
       "B\n1\n\n7\nB\n2\n3\n4\nE\n5\nB\n6\n9\n\n8\nE\nB\n1\n",
       {"1", "2", "6", "9", "1"},
       "LR.OLROOOOLRR.OOLR"},
      {"begins in front of its text, again behind a blank line",
       "ReadStartLine=B\nReadStartLineOffset=-2\nRepeat=yes\nUntil=blank\nNeeds=A digits\nPlaces=1-\n",
       "0\n1\nB\n2\n\n3\n5\nB\n4\n\n6\n",
       {"0", "1", "2", "3", "5", "4"},
       "RRLR.RRLR.O"},
      {"records end with their stretch",
       "ReadStartLine=BEGIN\nReadEndLine=END\nReadEndLineOffset=-1\nRepeat=yes\n"
       "Needs=A digits\nPlaces=1-2 4-\nJoin=up\n",
       "BEGIN\n01 a\n   b\nEND\n   c\nBEGIN\n   d\n02 e\n   f\n",
       {"01|a b", "02|e f"},
       "LRJOOLLRJ"},
  });
}

TEST(TidyTables, NamesArePrintedAbove) {
  const auto names = [](std::string_view sKeys, std::string_view sReport) {
    const clsTidyTrial trial("[Table 1]\nNeeds=B number\nPlaces=1-8 10-14 16-\n" + std::string(sKeys), sReport);
    return trial.names.empty() ? "" : trial.names.front();
  };
  EXPECT_EQ(names("Names=^", "Title\n\nItem      Gross  Net\n--------  -----\n\na         1.00\n"), "Item|Gross|Net");
  EXPECT_EQ(names("Names=No|^|x", "a  b\nItem      Gross\na         1.00\n"), "No|Gross|x");
  EXPECT_EQ(names("Names=^", "one\ntwo\nthree\nfour\na         1.00\n"), "two three four||");
  EXPECT_EQ(names("Names=^|^|^", "Item  No Sum\na         1.00\n"), "Item|No Sum|");
  EXPECT_EQ(names("Names=a|b", "a         1.00\n"), "a|b|");
}

}  // namespace
}  // namespace quillon
