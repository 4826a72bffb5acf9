#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "modInputOptions.h"

namespace quillon {

/// Cuts the bytes of a file, which come block by block, into its records.
class clsRecordCutter {
 public:
  /// Longer records of lines mean that these are none.
  static constexpr size_t kMostBytes = size_t{16} << 20;

  /// form is none of Auto; nLength that of Fixed. bEbcdic: lines end at NEL and at LF as that page has them, and CRs
  /// before those belong to the end.
  clsRecordCutter(RecordForm form, size_t nLength, bool bEbcdic);

  using Sink = std::function<void(std::string_view sRecord)>;
  void Take(std::string_view sBlock, const Sink& sink);
  void End(const Sink& sink);
  /// Why the bytes are none of this form; "" if they are.
  const std::string& Fault() const { return sFault_; }
  int64_t Records() const { return lRecords_; }

 private:
  /// How many bytes at the front were dealt with; 0 if more are needed.
  size_t Cut(std::string_view s, const Sink& sink);
  size_t CutLine(std::string_view s, const Sink& sink);
  size_t CutCounted(std::string_view s, const Sink& sink);
  void Give(std::string_view sRecord, const Sink& sink);

  RecordForm form_;
  size_t nLength_;
  bool bEbcdic_;
  int64_t nInBlock_ = 0;  ///< Bytes left of a block
  std::string sKept_;
  std::string sSpanned_;  ///< Of a record in segments
  int64_t lRecords_ = 0;
  std::string sFault_;
};

/// How many bytes the four bytes in front of a record or block say it takes, those included; 0 if they are none.
size_t CountedLength(std::string_view sFour);

}  // namespace quillon
