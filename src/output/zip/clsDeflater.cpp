#include "clsDeflater.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <system_error>
#include <vector>

#include "clsSideThread.h"
#include "clsSpool.h"
#include "modEventLoop.h"

namespace quillon {

namespace {

constexpr size_t kMostAtOnce = size_t{1} << 20;
constexpr size_t kMostIdle = 2;
constexpr int64_t kLargeBytes = int64_t{4} << 20;  // less is packed in the time that a thread takes to be made

}  // namespace

struct clsDeflater::Stream {
  isal_zstream zip{};
  std::vector<uint8_t> level = std::vector<uint8_t>(ISAL_DEF_LVL1_DEFAULT);
  std::array<uint8_t, size_t{64} << 10> out{};
};

std::vector<std::unique_ptr<clsDeflater::Stream>>& clsDeflater::Idle() {
  static std::vector<std::unique_ptr<Stream>> streams;
  return streams;
}

clsDeflater::clsDeflater(clsSpool& spool) : spool_(spool) {
  if (Idle().empty()) {
    stream_ = std::make_unique<Stream>();
  } else {
    stream_ = std::move(Idle().back());
    Idle().pop_back();
  }
  isal_zstream& zip = stream_->zip;
  isal_deflate_init(&zip);
  zip.level = 1;
  zip.level_buf = stream_->level.data();
  zip.level_buf_size = static_cast<uint32_t>(stream_->level.size());
}

clsDeflater::~clsDeflater() = default;

void clsDeflater::Run() {
  isal_zstream& zip = stream_->zip;
  do {
    zip.next_out = stream_->out.data();
    zip.avail_out = static_cast<uint32_t>(stream_->out.size());
    isal_deflate(&zip);
    // The library deals in unsigned bytes, the spool in characters.
    spool_.Write({reinterpret_cast<const char*>(stream_->out.data()), stream_->out.size() - zip.avail_out});
  } while (zip.avail_out == 0);
}

void clsDeflater::Pack(std::string_view sPiece) {
  isal_zstream& zip = stream_->zip;
  // The library takes a pointer to bytes that it doesn't change.
  auto* const pBytes = reinterpret_cast<uint8_t*>(const_cast<char*>(sPiece.data()));
  nCrc_ = crc32_gzip_refl(nCrc_, pBytes, sPiece.size());
  zip.next_in = pBytes;
  zip.avail_in = static_cast<uint32_t>(sPiece.size());
  Run();
}

void clsDeflater::MoveAside() {
  try {
    side_ = std::make_unique<clsSideThread>([this](std::string_view sPiece) { Pack(sPiece); });
  } catch (const std::system_error&) {
    UseSideThreads(false);  // There is none to be had; it goes without.
  }
}

void clsDeflater::Write(std::string_view sBytes) {
  while (!sBytes.empty()) {
    const std::string_view sPiece = sBytes.substr(0, kMostAtOnce);
    if (side_ == nullptr && nSize_ >= kLargeBytes && UsesSideThreads()) MoveAside();
    if (side_ != nullptr) {
      side_->Put(sPiece);
    } else {
      Pack(sPiece);
    }
    nSize_ += static_cast<int64_t>(sPiece.size());
    sBytes.remove_prefix(sPiece.size());
    nSinceTurn_ += sPiece.size();
    if (nSinceTurn_ < kMostAtOnce) continue;
    nSinceTurn_ = 0;
    RunEvents();
  }
}

void clsDeflater::Close(bool bLast) {
  if (side_ != nullptr) side_->Finish();
  side_.reset();
  isal_zstream& zip = stream_->zip;
  zip.next_in = nullptr;
  zip.avail_in = 0;
  zip.flush = bLast ? NO_FLUSH : SYNC_FLUSH;
  zip.end_of_stream = bLast ? 1 : 0;
  Run();
  if (Idle().size() < kMostIdle) Idle().push_back(std::move(stream_));
  stream_.reset();
}

uint32_t CombineCrc(uint32_t nFirst, uint32_t nSecond, int64_t nSecondBytes) {
  return static_cast<uint32_t>(crc32_combine(nFirst, nSecond, static_cast<z_off_t>(nSecondBytes)));
}

}  // namespace quillon
