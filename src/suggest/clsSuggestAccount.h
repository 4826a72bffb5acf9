#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "clsCellDoubts.h"
#include "clsReportProof.h"
#include "clsRowLikeness.h"
#include "modFindTables.h"
#include "modSuggestTables.h"

namespace quillon {

/// Accounts for a report that suggested tables are run over: their rows, the totals that prove them, and all that makes
/// them doubtful. Memory doesn't grow with the report.
class clsSuggestAccount : public clsTidyListener {
 public:
  /// Tables and found ones belong together one by one, and must outlive the object. bStarTotals: lines that begin with
  /// stars are totals, whether the proof knows them or not.
  clsSuggestAccount(const std::vector<TidyTable>& tables, std::vector<FoundTable*> found, bool bStarTotals);

  /// The next line is the first of a page.
  void PageBegins() { ++lPage_; }
  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) override;
  void Row(const TidyRecord& row) override;
  void StretchStarts(size_t nTable, int64_t lLine) override { proof_.StretchStarts(nTable, lLine); }
  void StretchEnds(size_t nTable, int64_t lLine) override { proof_.StretchEnds(nTable, lLine); }
  void HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) override;
  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override;

  /// To be called once, behind the last line. Sets what the tables took, the words of proved totals, doubts, and the
  /// lines that were left out though they look like rows.
  void Finish(const clsTidyReport& run, LeftOutRows& leftOut);

 private:
  /// Lines of the same words that stand between rows and are nothing.
  struct Stray {
    int64_t lLines = 0, lFirstLine = 0;
    std::string sFirst;
    bool bSame = true;  ///< All are the first one again: the foot of a page
  };
  struct Table {
    clsCellDoubts cells;
    Stray swallowed;                        ///< Further and joined lines that look like rows
    std::vector<std::string> rowsOfTotals;  ///< Rows that hold a word for totals
  };

  bool LooksLikeRow(std::string_view sLine);
  bool IsFurniture(std::string_view sLine) const;
  void AddTotal(std::string_view sLine);
  void AddSwallowed(int64_t lLine, std::string_view sLine, size_t nTable);
  int64_t LinesWith(std::string_view sText) const;
  bool StandsInRow(std::string_view sText) const;
  void TakePending();
  void AddStray(int64_t lLine, std::string_view sLine);
  void SetTotals(const ReportProof& proof);
  void SetDoubts(const clsTidyReport& run);
  void SetLeftOut(const ReportProof& proof, LeftOutRows& leftOut);
  bool IsBalance(int64_t lLines);
  bool IsProvedTotal(std::string_view sLine) const;
  bool IsStarTotal(std::string_view sLine);

  const std::vector<TidyTable>& tidy_;
  std::vector<FoundTable*> found_;
  bool bStarTotals_;
  int64_t lPage_ = 1;
  std::vector<int64_t> pageOf_;  ///< Of the last row of each table
  clsReportProof proof_;
  std::vector<Table> tables_;
  std::vector<clsRowLikeness> likeness_;
  std::unordered_map<std::string, Stray> pending_, strays_;  ///< Since the last row, and between rows
  std::unordered_map<std::string, Stray> totalLines_;        ///< Lines of totals
  std::unordered_map<std::string, int64_t> above_;  ///< Lines above the first row; those that come again head pages
  std::vector<std::string> totals_;                 ///< Words of proved totals
  bool bRowSeen_ = false;
  size_t nLastTable_ = 0;  ///< Of the last row
  std::u32string characters_;
  std::vector<LineMark> marks_;
};

}  // namespace quillon
