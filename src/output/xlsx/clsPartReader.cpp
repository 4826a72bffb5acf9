#include "clsPartReader.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <zip.h>

#include <algorithm>
#include <array>

#include "modEventLoop.h"

namespace quillon {

struct clsPartReader::Unpacker {
  // Not made of zeros: the two are some 150 KB, and a workbook has many parts.
  inflate_state state;
  std::array<uint8_t, size_t{64} << 10> in;
  bool bDeflated = true;
  bool bInputEnds = false;
  uint64_t nGiven = 0;
  uint32_t nCrc = 0;
};

clsPartReader::clsPartReader(zip_file* pFile, const PackagePart& part, bool bPacked)
    : pFile_(pFile), nSize_(part.nSize), nCrc_(part.nCrc) {
  if (bPacked) return;
  unpacker_ = std::make_unique_for_overwrite<Unpacker>();
  isal_inflate_init(&unpacker_->state);
  unpacker_->bDeflated = part.nMethod == ZIP_CM_DEFLATE;
}

clsPartReader::~clsPartReader() {
  if (pFile_ != nullptr) zip_fclose(pFile_);
}

int64_t clsPartReader::Read(char* pBuffer, size_t nBytes) {
  constexpr size_t kMostAtOnce = size_t{1} << 20;
  RunEvents();
  nBytes = std::min(nBytes, kMostAtOnce);
  if (unpacker_ == nullptr) return zip_fread(pFile_, pBuffer, nBytes);
  const int64_t nRead = unpacker_->bDeflated ? Unpack(pBuffer, nBytes) : zip_fread(pFile_, pBuffer, nBytes);
  if (nRead < 0) return -1;
  // The library takes a pointer to bytes that it doesn't change.
  unpacker_->nCrc = crc32_gzip_refl(unpacker_->nCrc, reinterpret_cast<uint8_t*>(pBuffer), static_cast<uint64_t>(nRead));
  unpacker_->nGiven += static_cast<uint64_t>(nRead);
  const bool bEnd = nRead == 0 && nBytes > 0;
  const bool bSound = bEnd ? unpacker_->nGiven == nSize_ && unpacker_->nCrc == nCrc_ : unpacker_->nGiven <= nSize_;
  return bSound ? nRead : -1;
}

/// False on failure.
bool clsPartReader::Refill() {
  inflate_state& state = unpacker_->state;
  if (state.avail_in > 0 || unpacker_->bInputEnds) return true;
  const int64_t nRead = zip_fread(pFile_, unpacker_->in.data(), unpacker_->in.size());
  if (nRead < 0) return false;
  unpacker_->bInputEnds = nRead == 0;
  state.next_in = unpacker_->in.data();
  state.avail_in = static_cast<uint32_t>(nRead);
  return true;
}

int64_t clsPartReader::Unpack(char* pBuffer, size_t nBytes) {
  inflate_state& state = unpacker_->state;
  state.next_out = reinterpret_cast<uint8_t*>(pBuffer);
  state.avail_out = static_cast<uint32_t>(nBytes);
  while (state.avail_out > 0 && state.block_state != ISAL_BLOCK_FINISH) {
    if (!Refill()) return -1;
    const uint32_t nRoom = state.avail_out;
    if (isal_inflate(&state) < 0) return -1;
    // Cut short: nothing more goes in, and nothing comes out.
    if (unpacker_->bInputEnds && state.avail_out == nRoom && state.block_state != ISAL_BLOCK_FINISH) return -1;
  }
  return static_cast<int64_t>(nBytes - state.avail_out);
}

}  // namespace quillon
