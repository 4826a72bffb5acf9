#pragma once

#include <string_view>
#include <vector>

#include "clsCodePage.h"
#include "clsRowSink.h"
#include "modCutPlan.h"

namespace quillon {

/// Cuts rows by a plan, byte by byte or, for UTF-8, character by character. Nothing is allocated per row.
class clsRowCutter {
 public:
  /// The plan must outlive the cutter. The page is that of the rows.
  clsRowCutter(const CutPlan& plan, const clsCodePage& page);

  /// Cuts one row (bytes of the page, without line end), which must live as long as its fields are asked for. bRoom:
  /// SinkRow::kRoom bytes behind it may be read.
  void Cut(std::string_view sRow, bool bRoom = false);
  /// What was cut last, as a sink takes it.
  SinkRow Row() const { return {fields_, &page_, bAscii_, bRoom_}; }
  /// The fields of the last row in output order, trimmed: views into the row. A row that ends early gives empty ones.
  const std::vector<std::string_view>& Fields() const { return fields_; }

 private:
  void CutBytes(std::string_view sRow);
  void CutChars(std::string_view sRow);
  /// Adds what stands behind the last column of a row.
  void AddBehind(std::string_view sRest);

  const CutPlan& plan_;
  const clsCodePage& page_;
  bool bBytes_;
  bool bAscii_ = false;
  bool bRoom_ = false;
  std::vector<std::string_view> fields_;
  std::vector<size_t> offsets_;  ///< Byte offsets of the plan's edges in the row, for UTF-8
};

/// The value without the pad characters on one side.
std::string_view TrimPad(std::string_view sValue, TrimSide side, std::string_view sPad);

}  // namespace quillon
