#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "clsTemporaryFile.h"
#include "modFailure.h"

namespace quillon {

/// A file in the making. It is written as a clsTemporaryFile in the target's folder and takes the target's place when
/// Commit succeeds, synced to disk where it replaces another; until then, and if anything fails, the old file stays
/// whole. A target that is no ordinary file (a pipe, a device) is written straight. Links are followed, also to a file
/// that isn't there yet: what a link names is replaced, not the link.
///
/// Nobody but the owner can read the file before it is whole. A new file then has the permissions that the caller's
/// umask leaves; one that replaces another has the other's owner, group, permissions and access list, as far as the
/// system lets the caller give them: a group that can't be kept gets no more than everybody.
class clsOutputFile {
 public:
  clsOutputFile() = default;
  clsOutputFile(const clsOutputFile&) = delete;
  clsOutputFile& operator=(const clsOutputFile&) = delete;
  ~clsOutputFile();  ///< Removes what was not committed

  /// sPath is a path text. False with the reason; a file that nobody may write is EACCES, for the superuser too.
  bool Open(std::string_view sPath, Failure& failure);
  bool IsOpen() const { return Handle() >= 0; }
  /// Buffered. A failure is kept and given by Commit; writing goes on without effect.
  void Write(std::string_view sBytes) {
    if (sBytes.size() > kBufferBytes - nUsed_) return WriteSlow(sBytes);
    sBytes.copy(buffer_.get() + nUsed_, sBytes.size());
    nUsed_ += sBytes.size();
  }
  /// Space for at least nBytes (at most kBufferBytes); the caller fills it and says by Used how much it took.
  char* Reserve(size_t nBytes) {
    if (nBytes > kBufferBytes - nUsed_) Flush();
    return buffer_.get() + nUsed_;
  }
  void Used(size_t nBytes) { nUsed_ += nBytes; }
  const Failure& LastFailure() const { return failure_; }
  /// Bytes taken so far.
  int64_t BytesWritten() const { return nFlushed_ + static_cast<int64_t>(nUsed_); }

  bool Commit(Failure& failure);
  /// Gives up: nothing is left of the new file.
  void Discard();

  static constexpr size_t kBufferBytes = size_t{1} << 20;

 private:
  void WriteSlow(std::string_view sBytes);
  void Flush();
  void OpenTarget();
  bool TakeItsPlace();
  int Handle() const { return temporary_.IsOpen() ? temporary_.Handle() : nStraight_; }

  int nStraight_ = -1;  ///< A target that is written straight
  clsTemporaryFile temporary_;
  std::string sTarget_;             ///< Host path, links resolved
  std::unique_ptr<char[]> buffer_;  ///< kBufferBytes, untouched where not used
  size_t nUsed_ = 0;
  int64_t nFlushed_ = 0;
  Failure failure_;
};

/// Writes a whole file in the manner of clsOutputFile.
bool WriteWholeFile(std::string_view sPath, std::string_view sBytes, Failure& failure);
/// Reads a whole ordinary file of at most nMaxBytes.
bool ReadWholeFile(std::string_view sPath, std::string& sBytes, size_t nMaxBytes, Failure& failure);

}  // namespace quillon
