#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsCutMeasure.h"
#include "clsLineShapes.h"
#include "clsPageNumbers.h"
#include "clsPrintedTotals.h"
#include "clsRowProfile.h"
#include "clsTidyReport.h"
#include "modProofModel.h"

namespace quillon {

/// Listens to the reading of tidy tables and accounts for the report: each line, what the cuts leave of the rows, and
/// the totals that are printed. Memory doesn't grow with the report.
class clsReportProof : public clsTidyListener {
 public:
  /// The tables must outlive the object.
  clsReportProof(const std::vector<TidyTable>& tables, clsPrintedTotals::Limits limits);

  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) override;
  void Row(const TidyRecord& row) override;
  void HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) override;
  void StretchStarts(size_t nTable, int64_t lLine) override;
  void StretchEnds(size_t nTable, int64_t lLine) override;
  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override;

  /// A row that doesn't look like the others of its table, and so may be a total among them. To be called in place of
  /// Row, before its Line.
  void MayBeTotal(int64_t lLine, std::string_view sLine);
  /// Whether a row of the table prints sums of the rows above it, and so may be a total.
  bool IsOfSums(size_t nTable, int64_t lLine, std::string_view sLine);

  /// What the cut of a table left, as its reading counted.
  void AddLeft(const TidyLeft& left);
  /// To be called once, behind the last line.
  ReportProof Finish();

 private:
  /// A column of rows that may hold numbers. A wider one reaches into the next column.
  struct SumColumn {
    size_t nColumn = 0, nRoom = 0;
  };
  struct Table {
    bool bStarted = false, bProof = false;
    bool bRows = false, bHeard = false;  ///< Rows came; lines behind them may be totals of theirs
    std::vector<TidyColumnInfo> columns;
    std::vector<size_t> groupColumns;  ///< Levels and filled columns: a change of theirs begins a group
    std::vector<SumColumn> sumColumns;
    std::vector<size_t> groupValues;  ///< Hashes of their last cells
    size_t nHeadings = 0;
    int64_t lStretch = 0, lStretchEnd = 0;  ///< First line of its last stretch; its last, 0 while it goes on
    std::vector<clsPrintedTotals> totals;   ///< One, once the table started
    std::vector<clsRowProfile> profile;
  };
  /// What waits for its line: rows and headings are told before the lines above them may be.
  struct Event {
    int64_t lLine = 0;
    size_t nTable = 0;
    size_t nLevel = 0;            ///< Of a group that begins; kRow: a row
    size_t nFirst = 0, nEnd = 0;  ///< Its numbers
  };
  using Kinds = std::vector<std::pair<size_t, size_t>>;

  void QueueGroups(Table& table, const TidyRecord& row);
  void CountReaching(int64_t lLine);
  void QueueNumbers(const Table& table, const TidyRecord& row);
  void Catch(int64_t lLine);
  void Hear(size_t nTable);
  bool IsPast(size_t nTable, int64_t lLine) const;
  size_t OtherLine(int64_t lLine, std::string_view sLine);
  enum class Likeness : uint8_t { None, Weak, Row };
  bool IsEarly();
  Likeness LikenessOf(std::string_view sLine, TidyLineKind kind) const;
  void AddIfLikeRow(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nClass);
  void FinishTable(size_t nTable, ReportProof& proof);
  void FinishShapes(ReportProof& proof) const;
  static void CountShapes(ReportProof& proof);

  const std::vector<TidyTable>& tidy_;
  clsPrintedTotals::Limits limits_;
  clsSharedSums shared_;
  std::vector<Table> tables_;
  std::set<size_t> heard_;                       ///< Tables that lines may be totals of: others aren't asked
  std::set<std::pair<int64_t, size_t>> starts_;  ///< Of the last stretch of each table
  size_t nGrown_ = 0;  ///< So many tables from the first on have rows enough to tell others by
  std::array<int64_t, kTidyLineKinds> lines_{};
  CharacterLoss loss_;
  int64_t lDivided_ = 0, lDividedLine_ = 0;
  std::array<clsLineShapes, kTidyLineKinds> shapes_;  ///< By kind of line
  std::map<Kinds, size_t> classes_;  ///< Kinds of totals that a line may be of, and their class among the shapes
  clsPageNumbers pages_;
  bool bRounds_ = false;  ///< A line says that the report's numbers are rounded
  std::vector<Event> events_;
  size_t nNext_ = 0;
  std::vector<std::pair<size_t, TidyNumber>> numbers_;
  Kinds kinds_;  ///< Kept for its memory
};

}  // namespace quillon
