#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "modFailure.h"

namespace quillon {

class clsOutputFile;
class clsSpool;

/// A part of a package as it stands in the file: its bytes are deflated (method 8) or stored (0).
struct ZipPart {
  std::string sName;
  uint16_t nMethod = 8;
  uint32_t nCrc = 0;
  int64_t nSize = 0;        ///< Of the content
  int64_t nPackedSize = 0;  ///< Of the bytes in the file
};

/// Writes a zip package part by part: local heads with sizes, the central directory at the end, zip64 only where a size
/// or offset asks for it. Same parts, same bytes: the time stamp is that of SOURCE_DATE_EPOCH, else 1980-01-01.
class clsZipWriter {
 public:
  explicit clsZipWriter(clsOutputFile& file);
  clsZipWriter(const clsZipWriter&) = delete;
  clsZipWriter& operator=(const clsZipWriter&) = delete;

  /// Deflates and writes a part that is at hand.
  void Add(std::string_view sName, std::string_view sContent);
  /// A part whose packed bytes stand in spools, one behind the other; nPackedSize is taken from them.
  bool AddSpooled(ZipPart part, std::initializer_list<clsSpool*> spools, Failure& failure);
  /// The head of a part; the caller then writes exactly nPackedSize bytes to the file.
  void BeginPacked(ZipPart part);
  void Finish();

 private:
  struct Entry {
    ZipPart part;
    int64_t nOffset = 0;
  };
  void WriteLocalHead(const ZipPart& part);
  void WriteCentralEntry(const Entry& entry);

  clsOutputFile& file_;
  uint32_t nTime_;
  std::vector<Entry> entries_;
};

/// Seconds since 1970 of SOURCE_DATE_EPOCH, else of 1980-01-01: the time stamp of a package's parts.
int64_t PackageTime();
/// The same of SOURCE_DATE_EPOCH, else of now: when a workbook says that it was made.
int64_t CreationTime();

}  // namespace quillon
