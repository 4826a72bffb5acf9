// Many tables over one report: those that sleep miss nothing.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "clsTidyReport.h"

namespace quillon {
namespace {

/// What is told of each table, and of each line.
class clsStory : public clsTidyListener {
 public:
  void Record(const TidyRecord& record) override {
    std::string& sTold = tables[record.nTable];
    sTold += std::to_string(record.lLine) + "-" + std::to_string(record.lLastLine);
    for (const TidyCell& cell : record.cells) sTold.append("|").append(cell.sPlain);
    sTold += "\n";
  }
  void StretchStarts(size_t nTable, int64_t lLine) override {
    tables[nTable] += "from " + std::to_string(lLine) + "\n";
  }
  void StretchEnds(size_t nTable, int64_t lLine) override { tables[nTable] += "to " + std::to_string(lLine) + "\n"; }
  void HeadingChanges(size_t nTable, size_t, int64_t lLine) override {
    tables[nTable] += "heading " + std::to_string(lLine) + "\n";
  }
  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override {
    EXPECT_EQ(lLine, static_cast<int64_t>(lines.size()) + 1);
    texts.emplace_back(sLine);
    lines.push_back(kind);
    owners.push_back(nTable);
  }

  std::map<size_t, std::string> tables;
  std::vector<std::string> texts;
  std::vector<TidyLineKind> lines;
  std::vector<size_t> owners;
};

clsStory Read(const std::vector<TidyTable>& tables, const std::vector<std::string>& report) {
  clsStory story;
  clsTidyReport reading(tables, story);
  for (const std::string& sLine : report) reading.Line(sLine);
  reading.End();
  for (size_t i = 0; i < tables.size(); ++i) {
    const TidyTableState& state = reading.State(i);
    story.tables[i] += std::to_string(state.lRecords) + (state.bStarted ? " started" : "") +
                       (state.bEnded ? " ended" : "") + " near " + std::to_string(state.lNearLine);
  }
  return story;
}

class clsRandomTables {
 public:
  explicit clsRandomTables(unsigned nSeed) : random_(nSeed) {}

  TidyTable Table(int32_t lNumber) {
    TidyTable table;
    table.lNumber = lNumber;
    if (Chance(9)) table.sStartLine = Word();
    table.lStartOffset = Chance(2) ? -1 : static_cast<int32_t>(Below(3));
    if (Chance(7)) table.sEndLine = Word();
    table.lEndOffset = -static_cast<int32_t>(Below(3));
    table.bRepeat = Chance(5);
    table.bUntilBlank = Chance(3);
    table.row.needs = {{1, {{TidyKind::Number, {}}}}};
    table.row.cut.places = {{{1, 6}, {7, 12}}};
    if (Chance(4)) table.row.names = {"^"};
    if (Chance(3)) table.join = Chance(5) ? TidyJoin::Up : TidyJoin::Down;
    if (Chance(5)) AddHeading(table);
    return table;
  }

  std::string Line() {
    if (Chance(1)) return Chance(5) ? "" : "\f";
    if (Chance(5)) return "item  " + std::to_string(Below(1000));
    return Chance(5) ? Word() + "  " + Word() : " " + Word();
  }

 private:
  bool Chance(unsigned nOfTen) { return Below(10) < nOfTen; }
  unsigned Below(unsigned n) { return static_cast<unsigned>(random_() % n); }
  std::string Word() { return std::string("K") + static_cast<char>('A' + Below(14)); }
  void AddHeading(TidyTable& table) {
    TidyPart heading;
    if (Chance(8)) {
      heading.texts = {Word(), Word()};
    } else {
      heading.likes = {"_KA"};
    }
    table.headings.push_back(heading);
  }

  std::mt19937 random_;
};

/// Alone a table sees every line, so each must read there what it reads among the others.
TEST(TidyManyTables, ReadWhatEachReadsAlone) {
  for (unsigned nSeed = 0; nSeed < 60; ++nSeed) {
    clsRandomTables random(nSeed);
    std::vector<TidyTable> tables;
    for (int32_t lNumber = 1; lNumber <= 12; ++lNumber) tables.push_back(random.Table(lNumber));
    std::vector<std::string> report;
    for (int n = 0; n < 120; ++n) report.push_back(random.Line());
    const clsStory together = Read(tables, report);
    std::vector<TidyLineKind> kinds(report.size(), TidyLineKind::Blank);
    for (size_t i = 0; i < tables.size(); ++i) {
      const clsStory alone = Read({tables[i]}, report);
      ASSERT_EQ(together.tables.at(i), alone.tables.at(0)) << "seed " << nSeed << ", table " << i;
      for (size_t n = 0; n < kinds.size(); ++n) kinds[n] = std::min(kinds[n], alone.lines[n]);
    }
    ASSERT_EQ(together.lines, kinds) << "seed " << nSeed;
    ASSERT_EQ(together.texts, report);
  }
}

/// The cost follows the lines: a table that waits for its text, or is over, isn't asked.
TEST(TidyManyTables, AreAskedForTheirOwnLinesAlone) {
  class clsAsked : public clsTidyListener {
   public:
    void TableLine(size_t, int64_t, std::string_view, TidyLineKind) override { ++lAsked; }
    int64_t lAsked = 0;
  };
  constexpr int kTables = 200;
  std::vector<TidyTable> tables(kTables);
  for (int i = 0; i < kTables; ++i) {
    tables[static_cast<size_t>(i)].sStartLine = "TABLE " + std::to_string(1000 + i);
    tables[static_cast<size_t>(i)].sEndLine = "END";
    tables[static_cast<size_t>(i)].lEndOffset = -1;
    tables[static_cast<size_t>(i)].row.cut.places = {{{1, 6}}};
  }
  clsAsked asked;
  clsTidyReport reading(tables, asked);
  for (int i = 0; i < kTables; ++i) {
    for (const std::string& sLine : {"TABLE " + std::to_string(1000 + i), std::string("row"), std::string("END")})
      reading.Line(sLine);
  }
  reading.End();
  EXPECT_EQ(reading.Lines(TidyLineKind::Row), 2 * kTables);
  EXPECT_LT(asked.lAsked, 10 * kTables);
}

}  // namespace
}  // namespace quillon
