#include "clsUnpacker.h"

#include <cerrno>

#include "modSystemIo.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kBlockBytes = size_t{256} << 10;

}  // namespace

clsUnpacker::clsUnpacker(Packing packing, int nHandle, std::string_view sPath)
    : packing_(packing), nHandle_(nHandle), sPath_(sPath), decoder_(MakeUnpackDecoder(packing)), block_(kBlockBytes) {
  bInStream_ = decoder_ != nullptr && decoder_->Begin();
  if (!bInStream_) failure_ = SystemFailure(sPath_, ENOMEM);
}

size_t clsUnpacker::Fail(std::string_view sText) {
  failure_ = OwnFailure(sPath_, std::string(NameOf(packing_)) + ": " + std::string(sText));
  return 0;
}

/// False at the end of the file and on a failure.
bool clsUnpacker::Refill() {
  const int64_t nGot = ReadHandleAt(nHandle_, block_.data(), block_.size(), nPos_);
  if (nGot < 0) failure_ = SystemFailure(sPath_, errno);
  sIn_ = {block_.data(), static_cast<size_t>(std::max<int64_t>(nGot, 0))};
  nPos_ += static_cast<int64_t>(sIn_.size());
  return !sIn_.empty();
}

/// Behind a stream stand another, NULs up to the end of a tape's block, or nothing.
bool clsUnpacker::NextStream() {
  do {
    sIn_.remove_prefix(std::min(sIn_.find_first_not_of('\0'), sIn_.size()));
  } while (sIn_.empty() && Refill());
  if (sIn_.empty()) return false;
  bInStream_ = decoder_->Begin();
  return bInStream_;
}

size_t clsUnpacker::Read(char* pBytes, size_t nBytes) {
  UnpackBuffers buffers{sIn_, pBytes, nBytes};
  while (!failure_.Failed() && buffers.nOut == nBytes) {
    if (!bInStream_ && !NextStream()) return 0;
    if (sIn_.empty()) Refill();
    if (failure_.Failed()) return 0;
    const bool bAtEnd = sIn_.empty();
    buffers.sIn = sIn_;
    const clsUnpackDecoder::Step step = decoder_->Run(buffers);
    const bool bIdle = buffers.sIn.size() == sIn_.size() && buffers.nOut == nBytes;
    sIn_ = buffers.sIn;
    if (step == clsUnpackDecoder::Step::Damaged) return Fail(Translate("the file is damaged"));
    bInStream_ = step != clsUnpackDecoder::Step::StreamEnd;
    if (bInStream_ && bIdle && bAtEnd) return Fail(Translate("the file ends too early"));
    if (bInStream_ && bIdle && !bAtEnd) return Fail(Translate("the file is damaged"));
  }
  return nBytes - buffers.nOut;
}

}  // namespace quillon
