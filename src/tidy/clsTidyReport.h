#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "clsGapTexts.h"
#include "modTidyModel.h"
#include "modTidyValues.h"

namespace quillon {

/// What a line of a report is. Each line that isn't blank is exactly one of them; where several tables have a say the
/// first of this list counts.
enum class TidyLineKind : uint8_t { Row, Further, Joined, Heading, Total, Dropped, LeftOut, Outside, Blank };
constexpr size_t kTidyLineKinds = 9;

/// Where a column of a table's records comes from.
enum class TidySource : uint8_t { Heading, Level, Row, Further };

/// A column of a table's records, in the order of the output: headings, levels, the row's own, those of further lines.
struct TidyColumnInfo {
  TidySource source = TidySource::Row;
  size_t nPart = 0;       ///< Which heading or further line, from 0
  TidyColumn column = 0;  ///< Column of that part, from 0: A, B ...
  std::string sName;      ///< "" for none; "^" until the first row has told it
  TidyTyping typing;      ///< Skip columns are none of these
  int32_t nStart = 0,
          nEnd = 0;  ///< Places of the row's own columns; 0 where there are none; nEnd 0 also for an open one
};

enum class TidyCellKind : uint8_t {
  Empty,   ///< Nothing is printed, or a text that means nothing
  Text,    ///< Of a column of type Text or Auto
  Number,  ///< Of a column of type Number, and one
  Date,
  Misfit  ///< Neither empty nor what its column's type says
};
struct TidyCell {
  TidyCellKind kind = TidyCellKind::Empty;
  std::string_view sPrinted;  ///< As the report has it, blanks around it aside
  std::string_view sPlain;    ///< As a CSV file has it: "-1234.50", "2024-12-31", else as printed
  TidyNumber number;          ///< Of a Number
};

/// A record. Views are good during the call that hands it out.
struct TidyRecord {
  size_t nTable = 0;            ///< Index of the table
  int64_t lLine = 0;            ///< Of its row, from 1
  int64_t lLastLine = 0;        ///< Of its last further or joined line
  std::vector<TidyCell> cells;  ///< As many as Columns()
};

/// Listens to a report as it is read. Calls for one table come in the order of its lines, with two exceptions that the
/// single calls tell. All do nothing where they aren't overridden.
class clsTidyListener {
 public:
  virtual ~clsTidyListener() = default;

  /// The first row of a table was found; names that are printed above it are known from here on. Comes before all of
  /// the table's rows and records.
  virtual void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns);
  /// A row, as it stands on its line: further and joined lines don't show yet (those joined from above do). Comes at
  /// once, before any call for a line below.
  virtual void Row(const TidyRecord& row);
  /// The record of a row is complete. Comes when the next row, the end of the stretch, a changed heading or 100,000
  /// lines end it, at once where nothing can be added to it; so a line below its row may come before it.
  virtual void Record(const TidyRecord& record);
  /// Heading k (from 0) of a table has another value than before; those behind it are empty now.
  virtual void HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine);
  /// A stretch of the table begins or ends at this line (both included).
  virtual void StretchStarts(size_t nTable, int64_t lLine);
  virtual void StretchEnds(size_t nTable, int64_t lLine);
  /// What a table makes of a line, once for each line and table, blank lines included. A line that goes in front of
  /// the row below (Join=down), and all behind it, come with that row. Where there are several tables, those that
  /// neither began nor may begin at a line aren't asked for it, and it is outside of them.
  virtual void TableLine(size_t nTable, int64_t lLine, std::string_view sLine, TidyLineKind kind);
  /// What the line is for the report, once for each line and in their order; as soon as all tables know it. nTable: the
  /// table whose kind it is, 0 for one that is outside of all.
  virtual void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable);
  /// A group was longer than memory is given to it, so its record, or what was to be joined, ends at this line.
  virtual void GroupTooLong(size_t nTable, int64_t lLine);
};

/// What the columns left of rows: characters other than blanks, known behind the report's last line, and words that two
/// touching columns share.
struct TidyLeft {
  GapCharacters lost, same;  ///< Same: bars and labels that stand beside the columns in every row
  int64_t lDivided = 0;      ///< Such words
  int64_t lDividedLine = 0;
};

/// What one table did, for messages and closing lines.
struct TidyTableState {
  bool bStarted = false, bEnded = false;  ///< Its start and end texts were found (or it has none)
  int64_t lFirstLine = 0, lLastLine = 0;  ///< Of its first and last stretch; 0 if there was none
  int64_t lRecords = 0;
  int64_t lMisfits = 0;  ///< Cells of number and date columns that stayed text
  int64_t lMisfitLine = 0;
  std::string sMisfit;                  ///< The first of them
  size_t nMisfitColumn = 0;             ///< Index among the columns
  std::string sMisfitColumn;            ///< Its name, or its letters in its part where it has none
  std::vector<int64_t> headingsFound;   ///< Lines that were heading k
  int64_t lGapLines = 0, lGapLine = 0;  ///< Rows with a letter or digit between two columns, and the first
  TidyLeft left;
  int64_t lNearLine = 0;                  ///< Without any row: the line that fits best ...
  TidyColumn nearColumn = kNoTidyColumn;  ///< ... and the column that fails; none: it is the picture that doesn't fit
};

/// Reads tables out of a report, line by line, in memory that doesn't grow with it.
///
/// Order of the tests of a line: heading, dropped or total by its words, further line at its distance, row, other
/// further line, drawn, level, joined, left out.
class clsTidyReport {
 public:
  /// The most lines that a record or a group of lines to be joined may have.
  static constexpr int64_t kMaxGroup = 100000;

  /// The tables must have been read without a fault, with rulers turned into places; they and the listener must outlive
  /// the object.
  clsTidyReport(const std::vector<TidyTable>& tables, clsTidyListener& listener);
  clsTidyReport(const clsTidyReport&) = delete;
  clsTidyReport& operator=(const clsTidyReport&) = delete;
  ~clsTidyReport();

  /// The next line of the report: UTF-8, tabs expanded to true stops, no line end. Form feeds in front take no room.
  void Line(std::string_view sLine);
  /// Behind the last line.
  void End();

  const std::vector<TidyColumnInfo>& Columns(size_t nTable) const;
  const TidyTableState& State(size_t nTable) const;
  /// Lines of each kind so far.
  int64_t Lines(TidyLineKind kind) const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace quillon
