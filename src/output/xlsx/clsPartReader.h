#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct zip_file;

namespace quillon {

/// An entry of a package in its order; names as they stand, "xl/workbook.xml".
struct PackagePart {
  std::string sName;
  uint64_t nSize = 0;
  uint64_t nPacked = 0;
  uint32_t nCrc = 0;
  uint16_t nMethod = 0;
};

/// A stream of one part's bytes.
class clsPartReader {
 public:
  /// The part's text, or its packed bytes as they stand in the file, from the entry opened as packed.
  clsPartReader(zip_file* pFile, const PackagePart& part, bool bPacked);
  clsPartReader(const clsPartReader&) = delete;
  clsPartReader& operator=(const clsPartReader&) = delete;
  ~clsPartReader();
  /// Bytes read, 0 at the end, below 0 on failure: also where the size or the checksum turns out wrong at the end.
  int64_t Read(char* pBuffer, size_t nBytes);

 private:
  struct Unpacker;
  int64_t Unpack(char* pBuffer, size_t nBytes);
  bool Refill();

  zip_file* pFile_;
  std::unique_ptr<Unpacker> unpacker_;  ///< Null where bytes come as they stand
  uint64_t nSize_ = 0;                  ///< That the text is to have
  uint32_t nCrc_ = 0;
};

}  // namespace quillon
