#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillon {

/// The bytes of an open file, by their place. Its first ones are kept on demand: what is read of them again comes from
/// memory.
class clsFileBytes {
 public:
  clsFileBytes() = default;
  clsFileBytes(const clsFileBytes&) = delete;
  clsFileBytes& operator=(const clsFileBytes&) = delete;
  ~clsFileBytes() { Close(); }

  /// Takes the handle, which is closed with the object; below 0 for none.
  void Use(int nHandle);
  void Close();
  bool IsOpen() const { return nHandle_ >= 0; }
  int Handle() const { return nHandle_; }

  /// Of this file and those used later so many bytes are kept once they were read from the front on.
  void KeepFirst(size_t nBytes) { nMost_ = nBytes; }
  /// Reads up to nBytes; fewer at the file's end, and where the kept ones end. Below 0 with errno.
  int64_t ReadAt(char* pBytes, size_t nBytes, int64_t nOffset);

 private:
  int nHandle_ = -1;
  size_t nMost_ = 0;
  std::vector<char> kept_;
};

}  // namespace quillon
