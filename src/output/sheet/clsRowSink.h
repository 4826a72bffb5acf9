#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <utility>

#include "clsCodePage.h"
#include "modFailure.h"

namespace quillon {

/// The fields of one row, views that are good for the call alone.
struct SinkRow {
  /// Bytes behind a field that are copied and looked at in blocks.
  static constexpr size_t kRoom = 16;

  std::span<const std::string_view> fields;
  const clsCodePage* pPage = &clsCodePage::Utf8();  ///< Of the fields' bytes
  bool bAscii = false;                              ///< They are known to be ASCII, whatever the page
  bool bRoom = false;                               ///< kRoom bytes behind each field may be read, whatever they are
};

/// Where the rows of an engine go: a sheet or a CSV file. The engine cuts and orders, the sink writes.
///
/// Begin says where the next rows go; then PutRow is called for each of them.
class clsRowSink {
 public:
  /// Takes a field that could not be written. False ends the rows.
  using Refused = std::function<bool(const Failure&)>;
  using Noted = std::function<void()>;

  /// noted: called for each field that begins with an equal sign, blanks in front aside.
  explicit clsRowSink(Noted noted = {}) : noted_(std::move(noted)) {}
  clsRowSink(const clsRowSink&) = delete;
  clsRowSink& operator=(const clsRowSink&) = delete;
  virtual ~clsRowSink() = default;

  /// The rows from here on go to sheet row lRow and those below it, field i to column columns[i] (from 1). A file of
  /// rows has no places: there rows and fields stand one behind the other as they come.
  virtual void Begin(int64_t lRow, std::span<const int32_t> columns) = 0;
  /// False if no further row is wanted: Refused said so.
  virtual bool PutRow(const SinkRow& row) = 0;
  /// The first fields of a row whose further ones could not be taken, so that the rows end here. A sheet keeps them; a
  /// file takes whole rows alone.
  virtual void PutBroken(const SinkRow& row) = 0;
  /// Characters that the output's code page lacks, each of which became "?".
  virtual int64_t CharsLost() const { return 0; }

 protected:
  void Note(std::string_view sField) const {
    if (!noted_) return;
    const size_t nFirst = sField.find_first_not_of(' ');
    if (nFirst != std::string_view::npos && sField[nFirst] == '=') noted_();
  }

 private:
  Noted noted_;
};

}  // namespace quillon
