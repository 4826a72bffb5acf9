#pragma once

#include <limits>
#include <string>
#include <vector>

#include "clsRowSink.h"
#include "clsWorkbook.h"

namespace quillon {

/// Rows of an engine as cells of a workbook's sheet.
class clsSheetRowSink : public clsRowSink {
 public:
  struct Options {
    int nSheet = 1;
    bool bTrim = false;                                       ///< Blanks around fields go
    bool bWriteEmpty = true;                                  ///< An empty field empties its cell
    int64_t lMostRows = std::numeric_limits<int64_t>::max();  ///< A row further down is refused, whatever it holds
  };

  /// The workbook outlives the sink. Rows go from row 1 on, fields from column 1 on, until Begin says otherwise.
  clsSheetRowSink(clsWorkbook& workbook, const Options& options, Refused refused, Noted noted = {})
      : clsRowSink(std::move(noted)), workbook_(workbook), options_(options), refused_(std::move(refused)) {}

  void Begin(int64_t lRow, std::span<const int32_t> columns) override;
  bool PutRow(const SinkRow& row) override;
  void PutBroken(const SinkRow& row) override { PutRow(row); }

 private:
  bool PutField(size_t nField, std::string_view sField, const clsCodePage& page);

  clsWorkbook& workbook_;
  Options options_;
  Refused refused_;
  int64_t lRow_ = 1;  ///< Of the next row
  std::vector<int32_t> columns_;
  std::string sUtf8_;
};

}  // namespace quillon
