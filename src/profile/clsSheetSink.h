#pragma once

#include <string>
#include <string_view>

#include "clsRowCutter.h"
#include "clsWorkbook.h"

namespace quillon {

/// Takes the rows of a conversion to a workbook: cuts each and writes its fields into the next row of sheet 1.
class clsSheetSink {
 public:
  /// Workbook and plan must outlive the sink. The page is that of the rows.
  clsSheetSink(clsWorkbook& workbook, const CutPlan& plan, const clsCodePage& page, int64_t nMostRows)
      : workbook_(workbook), page_(page), cutter_(plan, page), nMostRows_(nMostRows) {}

  /// False at the first row or cell that the sheet refuses: what lacks a value must not pass for a converted report.
  bool PutRow(std::string_view sRow);
  int64_t CharsBehind() const { return cutter_.CharsBehind(); }
  /// The refused place and the reason, "Row 65537: ..."; "" if there was none.
  const std::string& Refusal() const { return sRefusal_; }

 private:
  clsWorkbook& workbook_;
  const clsCodePage& page_;
  clsRowCutter cutter_;
  std::string sUtf8_;
  int64_t nMostRows_;
  int64_t nRow_ = 0;
  std::string sRefusal_;
};

}  // namespace quillon
