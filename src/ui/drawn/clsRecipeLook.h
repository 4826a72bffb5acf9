#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsReportCut.h"
#include "clsSectionFile.h"

namespace quillon {

/// Fields of a preview, in the order of the report.
std::vector<CutField> FieldsOf(const ReportPreview& preview);

/// One look at a report through a recipe: makes the picture of it. For clsRecipeCut.
class clsRecipeLook {
 public:
  /// The request names the current table; both outlive the look. sRecipe is UTF-8.
  clsRecipeLook(const PreviewRequest& request, std::string_view sRecipe);
  CutPicture Look();

 private:
  bool ReadLines();
  void DrawTable(const ReportPreview& preview);
  void DrawNeighbours();
  void DrawKey(const PreviewKey& key);
  CutLine* LineAt(int64_t lLine);
  void Note(std::string sText, bool bWarning = false);
  void NoteBounds();
  void NoteLosses();

  const PreviewRequest& request_;
  clsSectionFile recipe_;
  ReportPreview current_;
  CutPicture picture_;
};

}  // namespace quillon
