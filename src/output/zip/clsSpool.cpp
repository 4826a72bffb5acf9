#include "clsSpool.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "clsOutputFile.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

constexpr size_t kChunkBytes = size_t{1} << 20;
constexpr size_t kCopyBytes = size_t{256} << 10;

}  // namespace

clsSpool::~clsSpool() {
  Clear();
}

void clsSpool::Clear() {
  if (nHandle_ >= 0) close(nHandle_);
  nHandle_ = -1;
  nInFile_ = nSize_ = 0;
  chunks_.clear();
  tail_ = {};
  failure_ = {};
}

std::string& clsSpool::Chunk() {
  if (!chunks_.empty() && chunks_.back().size() < kChunkBytes) return chunks_.back();
  std::string& chunk = chunks_.size() < kMemoryBytes / kChunkBytes ? chunks_.emplace_back() : tail_;
  if (chunk.size() == kChunkBytes) {
    Flush(chunk);
    chunk.clear();
  }
  // A small file needs no whole chunk.
  if (&chunk == &tail_ || chunks_.size() > 1) chunk.reserve(kChunkBytes);
  return chunk;
}

void clsSpool::Write(std::string_view sBytes) {
  while (!sBytes.empty() && !failure_.Failed()) {
    std::string& chunk = Chunk();
    const std::string_view sPiece = sBytes.substr(0, kChunkBytes - chunk.size());
    chunk.append(sPiece);
    nSize_ += static_cast<int64_t>(sPiece.size());
    sBytes.remove_prefix(sPiece.size());
  }
}

void clsSpool::Flush(std::string_view sBytes) {
  if (nHandle_ < 0) nHandle_ = OpenNamelessFile();
  if (nHandle_ < 0 || !WriteHandle(nHandle_, sBytes.data(), sBytes.size()))
    failure_ = SystemFailure("temporary file", errno);
  nInFile_ += static_cast<int64_t>(sBytes.size());
}

size_t clsSpool::ReadAt(int64_t nOffset, char* pBytes, size_t nBytes) {
  if (failure_.Failed() || nOffset < 0 || nOffset >= nSize_) return 0;
  const size_t nChunk = static_cast<size_t>(nOffset) / kChunkBytes;
  if (nChunk < chunks_.size()) return chunks_[nChunk].copy(pBytes, nBytes, static_cast<size_t>(nOffset) % kChunkBytes);
  const int64_t nInTail = nOffset - static_cast<int64_t>(kMemoryBytes);
  if (nInTail >= nInFile_) return tail_.copy(pBytes, nBytes, static_cast<size_t>(nInTail - nInFile_));
  nBytes = static_cast<size_t>(std::min<int64_t>(static_cast<int64_t>(nBytes), nInFile_ - nInTail));
  const int64_t nRead = ReadHandleAt(nHandle_, pBytes, nBytes, nInTail);
  if (nRead > 0) return static_cast<size_t>(nRead);
  failure_ = SystemFailure("temporary file", nRead < 0 ? errno : EIO);
  return 0;
}

bool clsSpool::CopyTo(clsOutputFile& file, Failure& failure) {
  for (const std::string& chunk : chunks_) file.Write(chunk);
  if (nSize_ > static_cast<int64_t>(kMemoryBytes)) {
    std::vector<char> piece(kCopyBytes);
    for (auto nOffset = static_cast<int64_t>(kMemoryBytes); nOffset < nSize_ && !failure_.Failed();) {
      const size_t nRead = ReadAt(nOffset, piece.data(), piece.size());
      file.Write({piece.data(), nRead});
      nOffset += static_cast<int64_t>(nRead);
    }
  }
  if (failure_.Failed()) failure = failure_;
  return !failure_.Failed();
}

}  // namespace quillon
