#pragma once

#include <string_view>
#include <vector>

#include "clsCodePage.h"
#include "modCutPlan.h"

namespace quillon {

/// Cuts rows by a plan, byte by byte or, for UTF-8, character by character. Nothing is allocated per row.
class clsRowCutter {
 public:
  /// The plan must outlive the cutter. The page is that of the rows.
  clsRowCutter(const CutPlan& plan, const clsCodePage& page);

  /// Cuts one row (bytes of the page, without line end), which must live as long as its fields are asked for.
  void Cut(std::string_view sRow);
  /// The fields of the last row in output order, trimmed: views into the row. A row that ends early gives empty ones.
  const std::vector<std::string_view>& Fields() const { return fields_; }

 private:
  void CutBytes(std::string_view sRow);
  void CutChars(std::string_view sRow);

  const CutPlan& plan_;
  bool bBytes_;
  std::vector<std::string_view> fields_;
  std::vector<size_t> offsets_;  ///< Byte offsets of the plan's edges in the row, for UTF-8
};

/// The value without the pad characters on one side.
std::string_view TrimPad(std::string_view sValue, TrimSide side, std::string_view sPad);

}  // namespace quillon
