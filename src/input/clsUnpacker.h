#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "clsByteSource.h"
#include "modPacked.h"

namespace quillon {

/// What a decoder may take and fill; it moves both on.
struct UnpackBuffers {
  std::string_view sIn;
  char* pOut = nullptr;
  size_t nOut = 0;

  void Take(size_t nIn, size_t nGiven) {
    sIn.remove_prefix(nIn);
    pOut += nGiven;
    nOut -= nGiven;
  }
};

/// One library's decoder of one stream.
class clsUnpackDecoder {
 public:
  enum class Step { More, StreamEnd, Damaged };

  clsUnpackDecoder() = default;
  clsUnpackDecoder(const clsUnpackDecoder&) = delete;
  clsUnpackDecoder& operator=(const clsUnpackDecoder&) = delete;
  virtual ~clsUnpackDecoder() = default;

  /// Begins the next stream. False if the library refuses.
  virtual bool Begin() = 0;
  /// Takes and fills as much as it can.
  virtual Step Run(UnpackBuffers& buffers) = 0;
};

/// Null for what is no stream (None, Zip).
std::unique_ptr<clsUnpackDecoder> MakeUnpackDecoder(Packing packing);

/// The text of a file of one or more compressed streams, by the rules of OpenPacked.
class clsUnpacker : public clsByteSource {
 public:
  clsUnpacker(Packing packing, int nHandle, std::string_view sPath);

  size_t Read(char* pBytes, size_t nBytes) override;
  int64_t BytesTaken() const override { return nPos_ - static_cast<int64_t>(sIn_.size()); }

 private:
  bool Refill();
  bool NextStream();
  size_t Fail(std::string_view sText);

  Packing packing_;
  int nHandle_;
  std::string sPath_;
  std::unique_ptr<clsUnpackDecoder> decoder_;
  bool bInStream_ = false;
  int64_t nPos_ = 0;  ///< Byte of the file behind block_
  std::vector<char> block_;
  std::string_view sIn_;  ///< Of block_, not yet taken
};

}  // namespace quillon
