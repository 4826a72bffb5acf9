#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "clsCodePage.h"
#include "modFailure.h"

namespace quillon {

/// The fields of one row, views that are good for the call alone.
struct SinkRow {
  std::span<const std::string_view> fields;
  const clsCodePage* pPage = &clsCodePage::Utf8();  ///< Of the fields' bytes
};

/// Where the rows of an engine go: a sheet or a CSV file. The engine cuts and orders, the sink writes.
///
/// Begin says where the next rows go; then PutRow is called for each of them.
class clsRowSink {
 public:
  /// Takes a field that could not be written. False ends the rows.
  using Refused = std::function<bool(const Failure&)>;

  clsRowSink() = default;
  clsRowSink(const clsRowSink&) = delete;
  clsRowSink& operator=(const clsRowSink&) = delete;
  virtual ~clsRowSink() = default;

  /// The rows from here on go to sheet row lRow and those below it, field i to column columns[i] (from 1). A file of
  /// rows has no places: there rows and fields stand one behind the other as they come.
  virtual void Begin(int64_t lRow, std::span<const int32_t> columns) = 0;
  /// False if no further row is wanted: Refused said so.
  virtual bool PutRow(const SinkRow& row) = 0;
  /// Characters that the output's code page lacks, each of which became "?".
  virtual int64_t CharsLost() const { return 0; }
};

}  // namespace quillon
