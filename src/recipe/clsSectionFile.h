#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineReader.h"

namespace quillon {

/// A section file that is open for reading: the whole file in memory, a present line, and an index of its headers, so
/// that reading all of its sections costs no more than the file is long.
class clsSectionFile {
 public:
  static constexpr size_t kMaxBytes = size_t{256} << 20;
  /// Reads past the end of the file before counts that stand in it are believed no more.
  static constexpr int32_t kMaxMissing = 16384;

  /// False with the reason if the file can't be read or is larger than kMaxBytes; the file is closed then and every
  /// value reads as its default.
  bool Open(std::string_view sPath, const TextFileOptions& options, Failure& failure);
  /// The same from bytes in memory, which needn't outlive the call.
  bool OpenMemory(std::string_view sBytes, const TextFileOptions& options);
  bool IsOpen() const { return bOpen_; }

  void Rewind() { nLine_ = 0; }
  bool AtEnd() const { return nLine_ >= starts_.size(); }
  /// The next line as UTF-8, valid as long as the file is open; False at the end.
  bool ReadLine(std::string_view& sLine);
  /// Lines read or passed so far: the number of the line read last, from 1.
  size_t LineNumber() const { return nLine_; }
  /// Goes on to the line behind the next header of that name; to the end, and False, if none follows.
  bool SeekSection(std::string_view section);
  /// False once kMaxMissing values were looked for in vain up to the end of the file. To be asked before reading one
  /// more section that a count in the file promises, so that a lying count costs neither time nor memory.
  bool MayReadOn() const { return lMissing_ <= kMaxMissing; }
  void NoteMissing() { ++lMissing_; }

 private:
  struct Header {
    uint32_t nLine, nName, nLength;  ///< Line index; place and length of the name in sText_
  };
  bool Load(clsLineReader& reader);
  void IndexHeaders();
  std::string_view Name(const Header& header) const;
  size_t FindHeader(std::string_view section);

  bool bOpen_ = false;
  bool bIndexed_ = false;
  std::string sText_;             ///< All lines, without line ends
  std::vector<uint32_t> starts_;  ///< Where each line starts in sText_
  std::vector<Header> headers_;   ///< In their order
  std::vector<uint32_t> byName_;  ///< Indexes in headers_: by name, then line
  size_t nBehind_ = 0;            ///< Index of the header behind the one found last
  size_t nLine_ = 0;
  int32_t lMissing_ = 0;
};

}  // namespace quillon
