#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsCutMeasure.h"
#include "clsLineShapes.h"
#include "clsPrintedTotals.h"
#include "clsRowProfile.h"
#include "clsTidyReport.h"

namespace quillon {

/// A printed total of one of several tables.
struct TableTotal {
  int32_t lTable = 0;   ///< n of [Table n]
  std::string sColumn;  ///< Its name, or its letter in the table
  PrintedTotal total;
};

/// What became of all lines, characters and totals of a report.
struct ReportProof {
  /// Lines by kind; totals that were proved are no longer left out or outside.
  std::array<int64_t, kTidyLineKinds> lines{};
  CharacterLoss loss;
  int64_t lDivided = 0;      ///< Words that two touching columns share
  int64_t lDividedLine = 0;  ///< The first of them
  int64_t lTotalsAgree = 0, lTotalsLastDigit = 0, lTotalsDisagree = 0;
  std::vector<TableTotal> totals;                      ///< By table and line
  std::vector<std::pair<int32_t, std::string>> words;  ///< For Totals= of a table: they found lines that agree alone
  std::vector<ShapeOfLines> shapes;                    ///< Of lines left out or outside of all tables
  int64_t lLikeRows = 0;                               ///< Such lines that look like rows
  int64_t lFirstLikeRow = 0;                           ///< The first line of them

  /// Adds the counts of another report, and its totals as far as a message may want them.
  void Add(const ReportProof& other);
  int64_t Lines(TidyLineKind kind) const { return lines[static_cast<size_t>(kind)]; }
  int64_t Totals() const { return lTotalsAgree + lTotalsLastDigit + lTotalsDisagree; }
};

/// Listens to the reading of tidy tables and accounts for the report: each line, what the cuts leave of the rows, and
/// the totals that are printed. Memory doesn't grow with the report.
class clsReportProof : public clsTidyListener {
 public:
  /// The tables must outlive the object.
  clsReportProof(const std::vector<TidyTable>& tables, clsPrintedTotals::Limits limits);

  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) override;
  void Row(const TidyRecord& row) override;
  void HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) override;
  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override;

  /// A row that doesn't look like the others of its table, and so may be a total among them. To be called in place of
  /// Row, before its Line.
  void MayBeTotal(int64_t lLine, std::string_view sLine);

  /// What the cut of a table left, as its reading counted.
  void AddLeft(const TidyLeft& left);
  /// To be called once, behind the last line.
  ReportProof Finish();

 private:
  struct Table {
    bool bStarted = false, bProof = false;
    std::vector<TidyColumnInfo> columns;
    std::vector<size_t> groupColumns;  ///< Levels and filled columns: a change of theirs begins a group
    std::vector<size_t> groupValues;   ///< Hashes of their last cells
    size_t nHeadings = 0;
    std::vector<clsPrintedTotals> totals;  ///< One, once the table started
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
  void QueueNumbers(const Table& table, const TidyRecord& row);
  void Catch(int64_t lLine);
  size_t OtherLine(int64_t lLine, std::string_view sLine);
  void FinishTable(size_t nTable, ReportProof& proof);

  const std::vector<TidyTable>& tidy_;
  clsPrintedTotals::Limits limits_;
  std::vector<Table> tables_;
  std::array<int64_t, kTidyLineKinds> lines_{};
  CharacterLoss loss_;
  int64_t lDivided_ = 0, lDividedLine_ = 0;
  clsLineShapes leftOut_, outside_;
  std::map<Kinds, size_t> classes_;  ///< Kinds of totals that a line may be of, and their class among the shapes
  std::vector<Event> events_;
  size_t nNext_ = 0;
  std::vector<std::pair<size_t, TidyNumber>> numbers_;
  Kinds kinds_;  ///< Kept for its memory
};

}  // namespace quillon
