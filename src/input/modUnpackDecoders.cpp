// The decoders of clsUnpacker, one for each library.

#include <bzlib.h>
#include <isa-l/igzip_lib.h>
#include <lzma.h>
#include <zstd.h>

#include <algorithm>
#include <limits>

#include "clsUnpacker.h"

namespace quillon {

namespace {

using Step = clsUnpackDecoder::Step;

/// What a window or dictionary may take: far more than the tools' largest levels ask for.
constexpr uint64_t kMostMemory = uint64_t{256} << 20;
constexpr int kMostWindowLog = 27;

uint32_t Counted(size_t nBytes) {
  return static_cast<uint32_t>(std::min<size_t>(nBytes, std::numeric_limits<uint32_t>::max()));
}

// The libraries deal in unsigned bytes, or in texts that they promise not to change.
uint8_t* Unsigned(const char* pBytes) {
  return reinterpret_cast<uint8_t*>(const_cast<char*>(pBytes));
}

class clsGzipDecoder : public clsUnpackDecoder {
 public:
  bool Begin() override {
    isal_inflate_init(&state_);
    state_.crc_flag = ISAL_GZIP;  // header and check sum are looked at
    return true;
  }
  Step Run(UnpackBuffers& buffers) override {
    state_.next_in = Unsigned(buffers.sIn.data());
    state_.avail_in = Counted(buffers.sIn.size());
    state_.next_out = Unsigned(buffers.pOut);
    state_.avail_out = Counted(buffers.nOut);
    const uint32_t nIn = state_.avail_in;
    const uint32_t nOut = state_.avail_out;
    const int nResult = isal_inflate(&state_);
    buffers.Take(nIn - state_.avail_in, nOut - state_.avail_out);
    if (nResult < 0) return Step::Damaged;
    return state_.block_state == ISAL_BLOCK_FINISH ? Step::StreamEnd : Step::More;
  }

 private:
  inflate_state state_{};
};

class clsZstdDecoder : public clsUnpackDecoder {
 public:
  bool Begin() override {
    if (stream_ == nullptr) stream_.reset(ZSTD_createDStream());
    return stream_ != nullptr && ZSTD_isError(ZSTD_initDStream(stream_.get())) == 0U &&
           ZSTD_isError(ZSTD_DCtx_setParameter(stream_.get(), ZSTD_d_windowLogMax, kMostWindowLog)) == 0U;
  }
  Step Run(UnpackBuffers& buffers) override {
    ZSTD_inBuffer in{buffers.sIn.data(), buffers.sIn.size(), 0};
    ZSTD_outBuffer out{buffers.pOut, buffers.nOut, 0};
    const size_t nResult = ZSTD_decompressStream(stream_.get(), &out, &in);
    buffers.Take(in.pos, out.pos);
    if (ZSTD_isError(nResult) != 0U) return Step::Damaged;
    return nResult == 0 ? Step::StreamEnd : Step::More;
  }

 private:
  struct Free {
    void operator()(ZSTD_DStream* pStream) const { ZSTD_freeDStream(pStream); }
  };
  std::unique_ptr<ZSTD_DStream, Free> stream_;
};

class clsXzDecoder : public clsUnpackDecoder {
 public:
  ~clsXzDecoder() override { lzma_end(&stream_); }
  bool Begin() override { return lzma_stream_decoder(&stream_, kMostMemory, LZMA_FAIL_FAST) == LZMA_OK; }
  Step Run(UnpackBuffers& buffers) override {
    stream_.next_in = Unsigned(buffers.sIn.data());
    stream_.avail_in = buffers.sIn.size();
    stream_.next_out = Unsigned(buffers.pOut);
    stream_.avail_out = buffers.nOut;
    const lzma_ret result = lzma_code(&stream_, LZMA_RUN);
    buffers.Take(buffers.sIn.size() - stream_.avail_in, buffers.nOut - stream_.avail_out);
    if (result == LZMA_STREAM_END) return Step::StreamEnd;
    return result == LZMA_OK || result == LZMA_BUF_ERROR ? Step::More : Step::Damaged;
  }

 private:
  lzma_stream stream_ = LZMA_STREAM_INIT;
};

class clsBzip2Decoder : public clsUnpackDecoder {
 public:
  ~clsBzip2Decoder() override { BZ2_bzDecompressEnd(&stream_); }
  bool Begin() override {
    BZ2_bzDecompressEnd(&stream_);
    stream_ = {};
    return BZ2_bzDecompressInit(&stream_, 0, 0) == BZ_OK;
  }
  Step Run(UnpackBuffers& buffers) override {
    stream_.next_in = const_cast<char*>(buffers.sIn.data());
    stream_.avail_in = Counted(buffers.sIn.size());
    stream_.next_out = buffers.pOut;
    stream_.avail_out = Counted(buffers.nOut);
    const unsigned nIn = stream_.avail_in;
    const unsigned nOut = stream_.avail_out;
    const int nResult = BZ2_bzDecompress(&stream_);
    buffers.Take(nIn - stream_.avail_in, nOut - stream_.avail_out);
    if (nResult == BZ_STREAM_END) return Step::StreamEnd;
    return nResult == BZ_OK ? Step::More : Step::Damaged;
  }

 private:
  bz_stream stream_{};
};

}  // namespace

std::unique_ptr<clsUnpackDecoder> MakeUnpackDecoder(Packing packing) {
  switch (packing) {
    case Packing::Gzip:
      return std::make_unique<clsGzipDecoder>();
    case Packing::Zstd:
      return std::make_unique<clsZstdDecoder>();
    case Packing::Xz:
      return std::make_unique<clsXzDecoder>();
    case Packing::Bzip2:
      return std::make_unique<clsBzip2Decoder>();
    case Packing::None:
    case Packing::Zip:
      break;
  }
  return nullptr;
}

}  // namespace quillon
