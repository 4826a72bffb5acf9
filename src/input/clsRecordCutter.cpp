#include "clsRecordCutter.h"

#include <algorithm>

#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kCountBytes = 4;
constexpr char kEbcdicNel = '\x15';
constexpr char kEbcdicLf = '\x25';

unsigned ByteAt(std::string_view s, size_t n) {
  return static_cast<unsigned char>(s[n]);
}

size_t LineEnd(std::string_view s, bool bEbcdic) {
  if (!bEbcdic) return s.find('\n');
  const auto found = std::find_if(s.begin(), s.end(), [](char c) { return c == kEbcdicNel || c == kEbcdicLf; });
  return found == s.end() ? std::string_view::npos : static_cast<size_t>(found - s.begin());
}

}  // namespace

size_t CountedLength(std::string_view sFour) {
  constexpr unsigned kLargestSegment = 3;
  if (sFour.size() < kCountBytes || ByteAt(sFour, 2) > kLargestSegment || ByteAt(sFour, 3) != 0) return 0;
  const size_t nLength = ByteAt(sFour, 0) << 8 | ByteAt(sFour, 1);
  return nLength < kCountBytes ? 0 : nLength;
}

clsRecordCutter::clsRecordCutter(RecordForm form, size_t nLength, bool bEbcdic)
    : form_(form), nLength_(nLength), bEbcdic_(bEbcdic) {}

void clsRecordCutter::Take(std::string_view sBlock, const Sink& sink) {
  std::string sJoined;
  std::string_view s = sBlock;
  if (!sKept_.empty()) {
    sJoined = std::move(sKept_);
    sJoined.append(sBlock);
    s = sJoined;
  }
  while (!s.empty() && sFault_.empty()) {
    const size_t nDone = Cut(s, sink);
    if (nDone == 0) break;
    s.remove_prefix(nDone);
  }
  sKept_.assign(s);
  if (sKept_.size() > kMostBytes) sFault_ = Translate("a record is too long; say how the records end");
}

size_t clsRecordCutter::Cut(std::string_view s, const Sink& sink) {
  if (form_ == RecordForm::Lines) return CutLine(s, sink);
  if (form_ != RecordForm::Fixed) return CutCounted(s, sink);
  if (s.size() < nLength_) return 0;
  Give(s.substr(0, nLength_), sink);
  return nLength_;
}

size_t clsRecordCutter::CutLine(std::string_view s, const Sink& sink) {
  const size_t nEnd = LineEnd(s, bEbcdic_);
  if (nEnd == std::string_view::npos) return 0;
  std::string_view sRecord = s.substr(0, nEnd);
  while (sRecord.ends_with('\r')) sRecord.remove_suffix(1);
  Give(sRecord, sink);
  return nEnd + 1;
}

/// Records, and the blocks around them, begin with their length; long records lie there in segments.
size_t clsRecordCutter::CutCounted(std::string_view s, const Sink& sink) {
  if (s.size() < kCountBytes) return 0;
  const size_t nLength = CountedLength(s);
  const bool bBlock = form_ == RecordForm::Blocks && nInBlock_ == 0;
  if (nLength == 0 || (!bBlock && form_ == RecordForm::Blocks && static_cast<int64_t>(nLength) > nInBlock_)) {
    sFault_ = Translate("the records have no lengths in front") + " (" + Translate("record") + " " +
              std::to_string(lRecords_ + 1) + ")";
    return 0;
  }
  if (bBlock) {
    nInBlock_ = static_cast<int64_t>(nLength - kCountBytes);
    return kCountBytes;
  }
  if (s.size() < nLength) return 0;
  nInBlock_ -= form_ == RecordForm::Blocks ? static_cast<int64_t>(nLength) : 0;
  const std::string_view sRecord = s.substr(kCountBytes, nLength - kCountBytes);
  // 0 a whole record, 1 its first segment, 3 one in the middle, 2 the last.
  const unsigned segment = ByteAt(s, 2);
  if (segment == 0) {
    Give(sRecord, sink);
    return nLength;
  }
  if (segment == 1) sSpanned_.clear();
  sSpanned_.append(sRecord);
  if (segment == 2) Give(sSpanned_, sink);
  return nLength;
}

void clsRecordCutter::Give(std::string_view sRecord, const Sink& sink) {
  ++lRecords_;
  sink(sRecord);
}

void clsRecordCutter::End(const Sink& sink) {
  if (!sFault_.empty() || sKept_.empty()) return;
  const bool bMark = sKept_.find_first_not_of(std::string_view("\x1A\0", 2)) == std::string::npos;
  if (bMark) return;
  if (form_ == RecordForm::Lines) return Give(sKept_, sink);
  if (form_ == RecordForm::Fixed) {
    // A short last record is what a transfer leaves of trailing blanks.
    return Give(sKept_, sink);
  }
  sFault_ = Translate("the last record is cut off");
}

}  // namespace quillon
