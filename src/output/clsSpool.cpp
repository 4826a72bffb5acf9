#include "clsSpool.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <vector>

#include "clsOutputFile.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

constexpr size_t kCopyBytes = size_t{256} << 10;

int OpenNamelessIn(const char* folder) {
  const int nHandle = OpenHandle(folder, O_TMPFILE | O_RDWR, 0600);
  if (nHandle >= 0) return nHandle;
  // Some file systems have no nameless files.
  std::string sName = std::string(folder) + "/quillon-XXXXXX";
  const int nNamed = mkostemp(sName.data(), O_CLOEXEC);
  if (nNamed >= 0) unlink(sName.c_str());
  return nNamed;
}

int OpenNameless() {
  const char* const chosen = std::getenv("TMPDIR");
  if (chosen != nullptr && *chosen != '\0') {
    const int nHandle = OpenNamelessIn(chosen);
    if (nHandle >= 0) return nHandle;
  }
  // /tmp is memory on many systems.
  const int nHandle = OpenNamelessIn("/var/tmp");
  return nHandle >= 0 ? nHandle : OpenNamelessIn("/tmp");
}

}  // namespace

clsSpool::~clsSpool() {
  Clear();
}

void clsSpool::Clear() {
  if (nHandle_ >= 0) close(nHandle_);
  nHandle_ = -1;
  nFlushed_ = 0;
  buffer_.clear();
  failure_ = {};
}

void clsSpool::Write(std::string_view sBytes) {
  if (failure_.Failed()) return;
  if (buffer_.size() + sBytes.size() > kMemoryBytes) Flush();
  if (sBytes.size() <= kMemoryBytes) {
    buffer_.append(sBytes);
    return;
  }
  for (; !sBytes.empty() && !failure_.Failed(); sBytes.remove_prefix(std::min(kMemoryBytes, sBytes.size()))) {
    buffer_.assign(sBytes.substr(0, kMemoryBytes));
    Flush();
  }
}

void clsSpool::Flush() {
  if (nHandle_ < 0) nHandle_ = OpenNameless();
  if (nHandle_ < 0 || !WriteHandle(nHandle_, buffer_.data(), buffer_.size()))
    failure_ = SystemFailure("temporary file", errno);
  nFlushed_ += static_cast<int64_t>(buffer_.size());
  buffer_.clear();
}

size_t clsSpool::ReadAt(int64_t nOffset, char* pBytes, size_t nBytes) {
  if (failure_.Failed() || nOffset >= Size()) return 0;
  if (nOffset >= nFlushed_) return buffer_.copy(pBytes, nBytes, static_cast<size_t>(nOffset - nFlushed_));
  nBytes = static_cast<size_t>(std::min<int64_t>(static_cast<int64_t>(nBytes), nFlushed_ - nOffset));
  const int64_t nRead = ReadHandleAt(nHandle_, pBytes, nBytes, nOffset);
  if (nRead > 0) return static_cast<size_t>(nRead);
  failure_ = SystemFailure("temporary file", nRead < 0 ? errno : EIO);
  return 0;
}

bool clsSpool::CopyTo(clsOutputFile& file, Failure& failure) {
  std::vector<char> piece(static_cast<size_t>(std::min<int64_t>(Size(), kCopyBytes)));
  for (int64_t nOffset = 0; nOffset < Size() && !failure_.Failed();) {
    const size_t nRead = ReadAt(nOffset, piece.data(), piece.size());
    file.Write({piece.data(), nRead});
    nOffset += static_cast<int64_t>(nRead);
  }
  if (failure_.Failed()) failure = failure_;
  return !failure_.Failed();
}

}  // namespace quillon
