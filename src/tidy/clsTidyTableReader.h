#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsTidyColumns.h"
#include "clsTidyCutter.h"
#include "clsTidyHeadings.h"
#include "clsTidyLevels.h"
#include "clsTidyMatcher.h"
#include "clsTidyReport.h"
#include "clsTidyStretch.h"

namespace quillon {

/// What takes the kinds of a table's lines, one call for each line in their order.
class clsTidyLineSink {
 public:
  virtual ~clsTidyLineSink() = default;
  virtual void Classified(size_t nTable, int64_t lLine, std::string_view sLine, TidyLineKind kind) = 0;
};

/// Reads one table out of a report; see clsTidyReport.
class clsTidyTableReader {
 public:
  clsTidyTableReader(const TidyTable& table, size_t nTable, clsTidyListener& listener, clsTidyLineSink& sink);
  clsTidyTableReader(const clsTidyTableReader&) = delete;
  clsTidyTableReader& operator=(const clsTidyTableReader&) = delete;

  void Arrives(int64_t lLine, std::string_view sLine);
  void End(int64_t lLines);

  /// One of these texts stands on every line that an idle table may begin at or take a heading from.
  std::vector<std::string> KeyTexts() const;
  /// True if no line concerns the table until one holds a key text again. lLastKey: the last line that did.
  bool IsIdle(int64_t lLastKey) const;
  /// Lines from the one that is told on are known to be outside; none arrives until Wakes.
  int64_t Sleeps();
  /// Lines from this one on arrive again.
  void Wakes(int64_t lLine) { lFirst_ = lLine; }

  const std::vector<TidyColumnInfo>& Columns() const { return columns_.All(); }
  const TidyTableState& State() const { return state_; }

 private:
  /// A record that more lines may be added to.
  struct Open {
    bool bOpen = false;
    int64_t lLine = 0, lLastLine = 0;
    std::vector<std::string> values;
    std::string sWhole;  ///< The lines as one, where it is split at its end
  };
  /// A line that waits for the row below.
  struct Waiting {
    int64_t lLine;
    std::string sLine;
    TidyLineKind kind;
    bool bJoins;  ///< Goes in front of the row's text
  };

  void Process(int64_t lLine, std::string_view sLine);
  TidyLineKind Classify(int64_t lLine, bool bIn);
  TidyLineKind TakeBlank(int64_t lLine, bool bIn);
  TidyLineKind TakeHeading(int64_t lLine, bool bIn);
  void Tell(int64_t lLine, std::string_view sLine, TidyLineKind kind);

  bool FindRecords(int64_t lLine);
  void NoteNearMiss(int64_t lLine, bool bPicture, size_t nFailing, TidyColumn failing);
  void StartRow(int64_t lLine);
  void StartTable();
  void TakeRecord(int64_t lLine, size_t nGroup);
  void PutInFront(std::vector<std::string_view>& cells);
  void GatherWaiting();
  void FillCells(std::vector<std::string_view>& cells, std::vector<std::string>& above) const;
  size_t IndentOf(std::string_view sCell) const;

  bool AddByDistance(int64_t lLine);
  bool AddByShape(int64_t lLine);
  void AddFurther(size_t nPart, int64_t lLine);
  static void Append(std::string& sValue, std::string_view sPiece);
  void AddTo(Open& open, size_t nValue, std::string_view sPiece);
  bool OpensLevel(int64_t lLine);
  bool JoinUp(int64_t lLine);
  bool WaitForRow();
  void EndJoin();
  void ReleaseWaiting(bool bJoined);
  void Flush();
  void EndLongGroup(int64_t lLine);
  bool IsOpen() const;

  /// bMatched: the values are those of the line that was held against the needs last.
  void Build(TidyRecord& record, std::span<const std::string_view> values, bool bMatched);
  void Finish(Open& open);
  void CountMisfits(const TidyRecord& record);
  void StartStretch(int64_t lLine);
  void EndStretch(int64_t lLine);
  void EndUntil(int64_t lLine);

  const TidyTable& table_;
  const size_t nTable_;
  clsTidyListener& listener_;
  clsTidyLineSink& sink_;
  clsTidyMatcher matcher_;
  clsTidyCutter cutter_;
  clsTidyColumns columns_;
  clsTidyHeadings headings_;
  clsTidyLevels levels_;
  static constexpr size_t kNoPart = static_cast<size_t>(-1);
  std::vector<clsTidyPartReader> further_;
  std::vector<size_t> byDistance_;  ///< Which further line is that many lines below its row
  clsTidyStretch stretch_;
  TidyTableState state_;
  clsGapTexts gaps_;

  std::vector<std::string> ring_;  ///< Lines that arrived and aren't processed yet
  std::string_view arriving_;
  int64_t lArriving_ = 0;
  int64_t lFirst_ = 1;    ///< The first line since it woke
  const bool bMaySleep_;  ///< Its key texts tell all lines that concern it when it is idle

  clsTidyLine line_;
  bool bInStretch_ = false;
  bool bRowInStretch_ = false;
  bool bStarted_ = false;
  bool bJoinEnded_ = true;                            ///< No line can be joined to the row above
  bool bWaits_ = false;                               ///< The line in hand waits for the row below
  const bool bKeeps_;                                 ///< Records may grow
  TidyColumn downColumn_ = 0;                         ///< The first text column
  std::vector<std::vector<std::string_view>> cells_;  ///< By group
  std::vector<size_t> fitting_;                       ///< Groups of the line that are records
  std::vector<Open> open_;                            ///< By group
  std::vector<Waiting> waiting_;
  std::vector<std::vector<std::string>> fills_;  ///< By group and column: the value above
  std::string sInFront_;
  size_t nFrontIndent_ = 0;
  int64_t lFrontLine_ = 0;

  TidyRecord record_;
  bool bHeadingsNew_ = true;  ///< The record in hand has yet to get the values of the headings
  std::vector<std::string_view> values_, pieces_;
  std::vector<std::string> plains_;  ///< By column: backs the plain forms of the record in hand
};

}  // namespace quillon
