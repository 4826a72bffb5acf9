#include "clsZipWriter.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <utility>

#include "clsDeflater.h"
#include "clsOutputFile.h"
#include "clsSpool.h"

namespace quillon {

namespace {

constexpr int64_t kFirstZipTime = 315532800;  // 1980-01-01: a zip knows no earlier one
constexpr int64_t kLastZipTime = 4354819199;  // 2107-12-31
constexpr int64_t kWide = 0xFFFFFFFF;         // This and more goes into the 64-bit fields
constexpr uint16_t kDeflateVersion = 20, kWideVersion = 45;

/// Little-endian fields in a row.
class Fields {
 public:
  Fields& Put(uint64_t nValue, int nBytes) {
    for (int i = 0; i < nBytes; ++i) sBytes_.push_back(static_cast<char>((nValue >> (8 * i)) & 0xFF));
    return *this;
  }
  Fields& Put16(uint64_t nValue) { return Put(nValue, 2); }
  Fields& Put32(uint64_t nValue) { return Put(nValue, 4); }
  Fields& Put64(int64_t nValue) { return Put(static_cast<uint64_t>(nValue), 8); }
  /// The value, or the mark that it stands in the 64-bit field.
  Fields& PutNarrow(int64_t nValue) { return Put32(static_cast<uint64_t>(std::min(nValue, kWide))); }
  Fields& PutText(std::string_view sText) {
    sBytes_.append(sText);
    return *this;
  }
  const std::string& Bytes() const { return sBytes_; }

 private:
  std::string sBytes_;
};

uint32_t DosTime(int64_t nSeconds) {
  const auto moment = static_cast<std::time_t>(std::clamp(nSeconds, kFirstZipTime, kLastZipTime));
  std::tm parts{};
  gmtime_r(&moment, &parts);
  const int nDate = (parts.tm_year - 80) << 9 | (parts.tm_mon + 1) << 5 | parts.tm_mday;
  const int nTime = parts.tm_hour << 11 | parts.tm_min << 5 | parts.tm_sec / 2;
  return static_cast<uint32_t>(nDate) << 16 | static_cast<uint32_t>(nTime);
}

}  // namespace

namespace {

int64_t SourceDateOr(int64_t nElse) {
  const char* const epoch = std::getenv("SOURCE_DATE_EPOCH");
  if (epoch == nullptr || *epoch == '\0') return nElse;
  char* pEnd = nullptr;
  const int64_t nSeconds = std::strtoll(epoch, &pEnd, 10);
  return *pEnd == '\0' ? std::clamp(nSeconds, int64_t{0}, kLastZipTime) : nElse;
}

}  // namespace

int64_t PackageTime() {
  return SourceDateOr(kFirstZipTime);
}

int64_t CreationTime() {
  return SourceDateOr(std::time(nullptr));
}

clsZipWriter::clsZipWriter(clsOutputFile& file) : file_(file), nTime_(DosTime(PackageTime())) {}

void clsZipWriter::Add(std::string_view sName, std::string_view sContent) {
  clsSpool spool;
  clsDeflater deflater(spool);
  deflater.Write(sContent);
  deflater.Close(true);
  Failure ignored;  // What is in memory cannot fail, and the file keeps its own failure.
  AddSpooled({std::string(sName), 8, deflater.Crc(), deflater.Size(), 0}, {&spool}, ignored);
}

bool clsZipWriter::AddSpooled(ZipPart part, std::initializer_list<clsSpool*> spools, Failure& failure) {
  part.nPackedSize = 0;
  for (const clsSpool* pSpool : spools) part.nPackedSize += pSpool->Size();
  BeginPacked(std::move(part));
  for (clsSpool* pSpool : spools)
    if (!pSpool->CopyTo(file_, failure)) return false;
  return true;
}

void clsZipWriter::BeginPacked(ZipPart part) {
  entries_.push_back({std::move(part), file_.BytesWritten()});
  WriteLocalHead(entries_.back().part);
}

void clsZipWriter::WriteLocalHead(const ZipPart& part) {
  Fields extra;
  const bool bWide = part.nSize >= kWide || part.nPackedSize >= kWide;
  // A local head has both sizes or none in its 64-bit field.
  if (bWide) extra.Put16(1).Put16(16).Put64(part.nSize).Put64(part.nPackedSize);
  Fields head;
  head.Put32(0x04034B50).Put16(bWide ? kWideVersion : kDeflateVersion).Put16(0).Put16(part.nMethod).Put32(nTime_);
  head.Put32(part.nCrc).PutNarrow(bWide ? kWide : part.nPackedSize).PutNarrow(bWide ? kWide : part.nSize);
  head.Put16(part.sName.size()).Put16(extra.Bytes().size()).PutText(part.sName).PutText(extra.Bytes());
  file_.Write(head.Bytes());
}

void clsZipWriter::WriteCentralEntry(const Entry& entry) {
  const ZipPart& part = entry.part;
  Fields wide;
  if (part.nSize >= kWide) wide.Put64(part.nSize);
  if (part.nPackedSize >= kWide) wide.Put64(part.nPackedSize);
  if (entry.nOffset >= kWide) wide.Put64(entry.nOffset);
  Fields extra;
  if (!wide.Bytes().empty()) extra.Put16(1).Put16(wide.Bytes().size()).PutText(wide.Bytes());
  const uint16_t nVersion = wide.Bytes().empty() ? kDeflateVersion : kWideVersion;
  Fields head;
  head.Put32(0x02014B50).Put16(nVersion).Put16(nVersion).Put16(0).Put16(part.nMethod).Put32(nTime_);
  head.Put32(part.nCrc).PutNarrow(part.nPackedSize).PutNarrow(part.nSize).Put16(part.sName.size());
  head.Put16(extra.Bytes().size()).Put16(0).Put16(0).Put16(0).Put32(0).PutNarrow(entry.nOffset);
  file_.Write(head.PutText(part.sName).PutText(extra.Bytes()).Bytes());
}

void clsZipWriter::Finish() {
  const int64_t nStart = file_.BytesWritten();
  for (const Entry& entry : entries_) WriteCentralEntry(entry);
  const int64_t nEnd = file_.BytesWritten(), nCount = static_cast<int64_t>(entries_.size());
  Fields tail;
  if (nStart >= kWide || nEnd - nStart >= kWide || nCount >= 0xFFFF) {
    tail.Put32(0x06064B50).Put64(44).Put16(kWideVersion).Put16(kWideVersion).Put32(0).Put32(0);
    tail.Put64(nCount).Put64(nCount).Put64(nEnd - nStart).Put64(nStart);
    tail.Put32(0x07064B50).Put32(0).Put64(nEnd).Put32(1);
  }
  const auto nShownCount = static_cast<uint64_t>(std::min<int64_t>(nCount, 0xFFFF));
  tail.Put32(0x06054B50).Put16(0).Put16(0).Put16(nShownCount).Put16(nShownCount);
  file_.Write(tail.PutNarrow(nEnd - nStart).PutNarrow(nStart).Put16(0).Bytes());
}

}  // namespace quillon
