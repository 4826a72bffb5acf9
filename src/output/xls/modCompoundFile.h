#pragma once
// The compound file around an .xls workbook, read and written by libgsf.

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "modFailure.h"

namespace quillon {

/// A compound file that is open for reading. It is looked over before the library sees it: sizes, sector chains and the
/// number of directory entries.
class clsCompoundFile {
 public:
  clsCompoundFile();
  clsCompoundFile(const clsCompoundFile&) = delete;
  clsCompoundFile& operator=(const clsCompoundFile&) = delete;
  ~clsCompoundFile();

  bool Open(const std::string& sHostPath, Failure& failure);
  /// Name of a stream at the top as the file spells it, found in any case; "" if there is none.
  std::string FindStream(std::string_view sName) const;
  /// The whole stream; False if it is damaged or isn't there.
  bool ReadStream(const std::string& sName, std::string& sBytes) const;

  /// Gives the file's memory back if it holds one stream, that was read, and nothing else.
  void CloseIfAlone();
  bool IsOpen() const;

  struct Impl;

 private:
  friend bool SaveCompoundFile(std::string_view, const clsCompoundFile*, std::string_view,
                               std::span<const std::string_view>, Failure&);
  std::unique_ptr<Impl> impl_;
};

/// Writes, in the manner of clsOutputFile, a compound file with the one stream, made of the pieces, and with all else
/// that the source holds (which may be null): other streams, storages, class ids. No time stamps of its own.
bool SaveCompoundFile(std::string_view sPath, const clsCompoundFile* pSource, std::string_view sStream,
                      std::span<const std::string_view> pieces, Failure& failure);

/// True if the sizes and chains of a compound file hold together: header, sector tables, directory.
bool CompoundFileIsSound(std::string_view sFile);

}  // namespace quillon
