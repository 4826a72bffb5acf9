#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "clsReportCut.h"
#include "clsSectionFile.h"
#include "clsTidyReport.h"

namespace quillon {

/// One look at a report through the tidy tables of a recipe: what each line is, and the records of the current table.
/// For clsRecipeCut.
class clsTidyLook : private clsTidyListener {
 public:
  /// The request names the current table; it outlives the look.
  clsTidyLook(const PreviewRequest& request, clsSectionFile& recipe);
  /// False if the recipe has no tidy table: then nothing was looked at.
  bool Look(CutPicture& picture);

 private:
  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) override;
  void Record(const TidyRecord& record) override;
  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override;

  bool ReadTables();
  void ReadReport(CutPicture& picture);
  void DrawTables(CutPicture& picture) const;
  void NoteKinds(const clsTidyReport& report, CutPicture& picture) const;

  /// What stands at a line, from line 1 on.
  struct SeenLine {
    TidyLineKind kind;
    size_t nTable;
  };
  const PreviewRequest& request_;
  clsSectionFile& recipe_;
  std::vector<TidyTable> tables_;
  size_t nCurrent_ = 0;
  std::string sFault_;
  std::vector<SeenLine> seen_;
  int64_t lFirstRow_ = 0;  ///< Of the current table
  std::vector<std::string> titles_;
  std::vector<PointedColumn> columns_;
  std::vector<bool> numbers_;
  std::vector<PreviewRow> records_;
};

}  // namespace quillon
