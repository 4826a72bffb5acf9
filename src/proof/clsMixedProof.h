#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsReportProof.h"

namespace quillon {

/// A table that takes a block of lines as they stand, all of them as rows.
struct CutTable {
  int32_t lNumber = 1;                    ///< n of [Table n]
  int64_t lFirstLine = 0, lLastLine = 0;  ///< 0: it isn't there
  std::vector<TidyPlace> places;
  std::vector<std::string> names;  ///< Of the columns, for messages
};

/// Follows a report line by line, once the kind of each is known.
class clsLineFollower {
 public:
  virtual ~clsLineFollower() = default;
  virtual void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) = 0;
};

/// The proof of a report that is read by tidy tables, by tables that take blocks, or by both. Lines of blocks are rows.
/// Totals that stand among them are told by what their rows usually look like, so reports with blocks are read twice:
///
///   if (proof.MustLearn()) each line: Learn; LearnedAll
///   each line: by the reading of tidy tables, whose listener this is; or Line with what is known without them
///   Finish
class clsMixedProof : public clsTidyListener {
 public:
  clsMixedProof(const std::vector<TidyTable>& tidy, std::vector<CutTable> cuts, clsPrintedTotals::Limits limits,
                clsLineFollower* pFollower = nullptr);

  bool MustLearn() const { return !cuts_.empty(); }
  void Learn(int64_t lLine, std::string_view sLine);
  void LearnedAll();

  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) override;
  void Row(const TidyRecord& row) override { proof_.Row(row); }
  void StretchStarts(size_t nTable, int64_t lLine) override { proof_.StretchStarts(nTable, lLine); }
  void StretchEnds(size_t nTable, int64_t lLine) override { proof_.StretchEnds(nTable, lLine); }
  void HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) override;
  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override;
  /// A line of a report without tidy tables.
  void Line(int64_t lLine, std::string_view sLine);

  void AddLeft(const TidyLeft& left) { proof_.AddLeft(left); }
  ReportProof Finish() { return proof_.Finish(); }

 private:
  static bool IsBlank(std::string_view sLine);
  struct Stretch {
    int64_t lFirst, lLast;
    size_t nCut;
  };
  /// Parts that do not overlap.
  static std::vector<Stretch> StretchesOf(const std::vector<CutTable>& cuts);
  bool CutOf(int64_t lLine, size_t& nCut) const;
  void CutRow(size_t nCut, int64_t lLine, std::string_view sLine);

  std::vector<CutTable> cuts_;
  std::vector<Stretch> stretches_;  ///< Of the lines that blocks take, ascending; where several do, of the first block
  size_t nTidy_;
  std::vector<TidyTable>
      tables_;  ///< All; those of blocks have no places, as their loss is measured where they are cut
  clsLineFollower* pFollower_;
  std::vector<clsRowProfile> profiles_;  ///< Of the blocks
  clsReportProof proof_;
  TidyRecord record_;  ///< Kept for its memory
};

}  // namespace quillon
